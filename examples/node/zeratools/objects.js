// SPDX-License-Identifier: MIT
// The objects that exports take, of their published layout, each in memory of its own until dispose().
'use strict';
const memory = require('./memory');
const strings = require('./strings');
const { ansiBytes, ansiText, checkInteger, checkText, wrongType } = require('./checks');

const { read, readSize, runtime, write, writeInt, writeSize } = memory;
const malloc = runtime.func('uintptr_t malloc(size_t bytes)');
const free = runtime.func('void free(uintptr_t block)');
const fill = runtime.func('void memset(uintptr_t to, int byte, size_t bytes)');
const currentThread = memory.kernel.func('uint32_t GetCurrentThreadId()');

let inUse = 0;
const release = Symbol('gives back what an object holds');
class NativeObject {
  #address;
  constructor(bytes) {
    this.#address = memory.allocate(bytes);
    if (!this.#address) throw memory.outOfMemory();
    ++inUse;
  }
  get address() {
    if (!this.#address) throw new Error(`this ${this.constructor.name} is used after dispose()`);
    return this.#address;
  }
  dispose() {
    if (!this.#address) return;
    this[release]();
    memory.free(this.#address);
    this.#address = 0;
    --inUse;
  }
  [release]() {}
}

// One pointer to characters behind their header.
class NativeString extends NativeObject {
  #charSize;
  constructor(charSize) {
    super(8);
    this.#charSize = charSize;
    writeSize(this.address, strings.empty() + strings.HEADER);
  }
  get #header() {
    return readSize(this.address) - strings.HEADER;
  }
  get length() {
    return strings.length(this.#header);
  }
  get bytes() {
    return read(readSize(this.address), this.length * this.#charSize);
  }
  set bytes(value) {
    const where = `${this.constructor.name}.bytes`;
    if (!(value instanceof Uint8Array)) throw wrongType(where, 'a Uint8Array', value);
    const chars = value.length / this.#charSize;
    if (!Number.isInteger(chars)) throw new RangeError(`${where}: ends with half a character`);
    const before = this.#header;
    const header = chars ? strings.make(chars, this.#charSize) : strings.empty();
    if (!header) throw memory.outOfMemory();
    if (chars) {
      write(header + strings.HEADER, value);
      strings.setLength(header, chars);
    }
    writeSize(this.address, header + strings.HEADER);
    strings.release(before);
  }
  [release]() {
    strings.release(this.#header);
  }
}

class WideString extends NativeString {
  constructor(text = '') {
    checkText(text, 'WideString');
    super(2);
    this.text = text;
  }
  get text() {
    return this.bytes.toString('utf16le');
  }
  set text(value) {
    this.bytes = Buffer.from(checkText(value, 'WideString.text'), 'utf16le');
  }
}

class AnsiString extends NativeString {
  constructor(text = '') {
    const bytes = ansiBytes(checkText(text, 'AnsiString'), 'AnsiString');
    super(1);
    this.bytes = bytes;
  }
  get text() {
    return ansiText(this.bytes);
  }
  set text(value) {
    this.bytes = ansiBytes(checkText(value, 'AnsiString.text'), 'AnsiString.text');
  }
}

// Table, data, size, capacity, growth. Byte arrays carry pass phrases, so they are wiped.
class Bytes extends NativeObject {
  constructor(data = new Uint8Array()) {
    if (!(data instanceof Uint8Array)) throw wrongType('Bytes', 'a Uint8Array', data);
    super(40);
    this.data = data;
  }
  get length() {
    return readSize(this.address + 16);
  }
  get data() {
    return read(readSize(this.address + 8), this.length);
  }
  set data(value) {
    const { address } = this;
    if (!(value instanceof Uint8Array)) throw wrongType('Bytes.data', 'a Uint8Array', value);
    const storage = value.length ? malloc(value.length) : 0;
    if (value.length && !storage) throw memory.outOfMemory();
    write(storage, value);
    this[release]();
    [storage, value.length, value.length].forEach((one, i) => writeSize(address + 8 + i * 8, one));
  }
  [release]() {
    const storage = readSize(this.address + 8);
    if (storage) fill(storage, 0, readSize(this.address + 24));
    free(storage);
  }
}

// Of a thread object the library reads the thread's identifier alone.
class Thread extends NativeObject {
  constructor(id = currentThread()) {
    checkInteger(id, 0, 0xffffffff, 'Thread');
    super(104);
    writeInt(this.address + 96, Number(id) | 0);
  }
}

// Calls a function with one that takes objects over, and disposes of those at the end.
function scope(call) {
  const owned = [];
  try {
    return call((one) => {
      owned.push(one);
      return one;
    });
  } finally {
    while (owned.length) owned.pop().dispose();
  }
}

module.exports = {
  AnsiString, Bytes, Thread, WideString, scope,
  buffersInUse: strings.buffersInUse,
  objectsInUse: () => inUse,
};
