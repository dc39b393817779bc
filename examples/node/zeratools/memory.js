// SPDX-License-Identifier: MIT
// Memory of the process, in which the objects lie that cross the boundary. An address is a number here.
'use strict';
const koffi = require('koffi');

const kernel = koffi.load('kernel32.dll');
const runtime = koffi.load('ucrtbase.dll'); // the library's own: its heap holds byte arrays
const heap = kernel.func('uintptr_t GetProcessHeap()')();
const heapAlloc = kernel.func('uintptr_t HeapAlloc(uintptr_t heap, uint32_t flags, size_t bytes)');
const heapReAlloc = kernel.func('uintptr_t HeapReAlloc(uintptr_t heap, uint32_t flags, uintptr_t block, size_t bytes)');
const heapFree = kernel.func('int HeapFree(uintptr_t heap, uint32_t flags, uintptr_t block)');
const copyFrom = runtime.func('void memcpy(_Out_ void* to, uintptr_t from, size_t bytes)');
const copyTo = runtime.func('memcpy', 'void', ['uintptr_t', 'void *', 'size_t']);
const ZEROED = 8; // a flag of HeapAlloc

function read(address, bytes) {
  const buffer = Buffer.alloc(bytes);
  if (bytes) copyFrom(buffer, address, bytes);
  return buffer;
}
function write(address, buffer) {
  if (buffer.length) copyTo(address, buffer, buffer.length);
}

module.exports = {
  kernel, runtime, read, write,
  // 0 when out of memory
  allocate: (bytes) => heapAlloc(heap, ZEROED, bytes),
  enlarge: (block, bytes) => heapReAlloc(heap, 0, block, bytes),
  free: (block) => heapFree(heap, 0, block),
  readInt: (address) => read(address, 4).readInt32LE(),
  writeInt: (address, value) => write(address, Buffer.from(Int32Array.of(value).buffer)),
  readSize: (address) => Number(read(address, 8).readBigInt64LE()),
  writeSize: (address, value) => write(address, Buffer.from(BigInt64Array.of(BigInt(value)).buffer)),
  // The address of a function in JavaScript, for as long as the process runs. The argument types are koffi's.
  callback: (resultType, argumentTypes, call) =>
    Number(koffi.address(koffi.register(call, koffi.pointer(koffi.proto(resultType, argumentTypes))))),
  outOfMemory: () => new Error('out of memory'),
};
