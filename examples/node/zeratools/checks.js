// SPDX-License-Identifier: MIT
// What may be wrong with a value, said with the place (`where`) and what was expected. Values themselves are not
// shown: they may be pass phrases.
'use strict';
const { kernel } = require('./memory');

const getCodePage = kernel.func('uint32_t GetACP()');
const toAnsi = kernel.func('int WideCharToMultiByte(uint32_t page, uint32_t flags, void* text, int chars,' +
  ' _Out_ void* bytes, int capacity, void* replacement, _Out_ void* replaced)');
const fromAnsi = kernel.func('int MultiByteToWideChar(uint32_t page, uint32_t flags, void* bytes, int count,' +
  ' _Out_ void* text, int capacity)');
const UTF8 = 65001;
const EXACT = 0x400; // no similar characters instead

function kind(value) {
  if (value === null || value === undefined) return String(value);
  return typeof value === 'object' ? `an object of class ${value.constructor?.name ?? '?'}` : `a ${typeof value}`;
}
const wrongType = (where, expected, value) => new TypeError(`${where}: expected ${expected}, got ${kind(value)}`);

function checkText(value, where, expected = 'a string') {
  if (typeof value !== 'string') throw wrongType(where, expected, value);
  return value;
}
// Of texts that a zero ends.
function checkEnded(value, where) {
  if (checkText(value, where).includes('\0')) throw new RangeError(`${where}: a NUL would end the text`);
  return value;
}
function checkInteger(value, low, high, where) {
  if (typeof value !== 'bigint' && !Number.isSafeInteger(value)) throw wrongType(where, 'an integer', value);
  if (value < low || value > high) throw new RangeError(`${where}: ${value} is not from ${low} to ${high}`);
  return value;
}

function ansiBytes(text, where) {
  if (!text || getCodePage() === UTF8) return Buffer.from(text, 'utf8');
  const wide = Buffer.from(text, 'utf16le');
  const bytes = Buffer.alloc(text.length * 4);
  const replaced = new Int32Array(1);
  const count = toAnsi(0, EXACT, wide, text.length, bytes, bytes.length, null, replaced);
  if (replaced[0] || !count) throw new RangeError(`${where}: the ANSI code page lacks a character of the text`);
  return bytes.subarray(0, count);
}
function ansiText(bytes) {
  if (!bytes.length) return '';
  const wide = Buffer.alloc(bytes.length * 2);
  return wide.toString('utf16le', 0, fromAnsi(0, 0, bytes, bytes.length, wide, bytes.length) * 2);
}

module.exports = { ansiBytes, ansiText, checkEnded, checkInteger, checkText, kind, wrongType };
