// SPDX-License-Identifier: MIT
// The buffers of this host's strings, and the string manager through which the library asks for them. Its functions
// must not raise, and what they do (numbers and the process's heap) does not. The library calls them on the thread
// that called it.
'use strict';
const { allocate, callback, enlarge, free, outOfMemory, readInt, readSize, writeInt, writeSize } = require('./memory');

// What stands before the characters: manager, length, capacity, references.
const HEADER = 24;
const LENGTH = 8, CAPACITY = 12, REFERENCES = 16;
const FUNCTIONS = 5;

let inUse = 0;
const manager = allocate(8 + FUNCTIONS * 8 + HEADER + 8);
if (!manager) throw outOfMemory();
const nil = manager + 8 + FUNCTIONS * 8;

const bytesOf = (chars, charSize) =>
  chars >= 0 && chars < 0x7ffffff0 ? HEADER + (chars + 1) * charSize : 0;
function addReference(header, count) {
  const references = readInt(header + REFERENCES) + count;
  writeInt(header + REFERENCES, references);
  return references;
}

// Gives a buffer's header; 0 when out of memory.
function make(chars, charSize) {
  const bytes = bytesOf(chars, charSize);
  const header = bytes && allocate(bytes);
  if (!header) return 0;
  writeSize(header, manager);
  writeInt(header + CAPACITY, chars);
  writeInt(header + REFERENCES, 1);
  ++inUse;
  return header;
}
function giveBack(header) {
  if (header === nil) return;
  free(header);
  --inUse;
}
function resize(header, chars, charSize) {
  const bytes = bytesOf(chars, charSize);
  const larger = bytes && enlarge(header, bytes);
  if (larger) writeInt(larger + CAPACITY, chars);
  return larger;
}
function empty() {
  addReference(nil, 1);
  return nil;
}

const pointer = 'uintptr_t';
writeSize(manager, manager + 8);
[
  callback(pointer, [pointer, 'int32_t', 'int32_t'], (own, ...what) => make(...what)),
  callback('void', [pointer, pointer], (own, header) => giveBack(header)),
  callback(pointer, [pointer, pointer, 'int32_t', 'int32_t'], (own, ...what) => resize(...what)),
  callback(pointer, [pointer], empty),
  callback(pointer, [pointer], (own) => own),
].forEach((address, i) => writeSize(manager + 8 + i * 8, address));
// The empty string. Two references that nobody gives back keep it shared, so every writer takes a buffer of its own.
writeSize(nil, manager);
writeInt(nil + REFERENCES, 2);

module.exports = {
  HEADER, make, empty,
  // A buffer may be shared with a string of the library's; the last one gives it back.
  release: (header) => {
    if (addReference(header, -1) <= 0) giveBack(header);
  },
  length: (header) => readInt(header + LENGTH),
  setLength: (header, chars) => writeInt(header + LENGTH, chars),
  buffersInUse: () => inUse,
};
