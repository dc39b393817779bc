// SPDX-License-Identifier: MIT
// What an export's argument takes, by its type in the list of exports: how it is passed (`ffi`, a type of koffi's),
// and how a value becomes that (`take`). What must go after the call is given to `own`.
'use strict';
const koffi = require('koffi');
const { AnsiString, Bytes, Thread, WideString } = require('./objects');
const { ansiBytes, checkEnded, checkInteger, checkText, wrongType } = require('./checks');

const integer = (ffi, low, high) => ({ ffi, none: 0, take: (value, where) => checkInteger(value, low, high, where) });
const real = (ffi) => ({
  ffi,
  take: (value, where) => {
    if (typeof value !== 'number') throw wrongType(where, 'a number', value);
    return value;
  },
});
const letter = (high) => ({
  ffi: 'uint16_t',
  take: (value, where) => {
    if (checkText(value, where, 'a string of one character').length !== 1)
      throw new RangeError(`${where}: expected one character`);
    return checkInteger(value.charCodeAt(0), 0, high, where);
  },
});
const text = (encode) => ({
  ffi: 'void *',
  none: null,
  take: (value, where) => Buffer.concat([encode(checkEnded(value, where), where), Buffer.alloc(2)]),
});
// Memory of JavaScript's, which stays where it is during a call.
const array = (expected, Class) => ({
  ffi: koffi.inout('void *'),
  none: null,
  take: (value, where) => {
    if (!(value instanceof Class)) throw wrongType(where, expected, value);
    return value;
  },
});
const object = (Class) => ({
  ffi: 'uintptr_t',
  none: 0,
  take: (value, where) => {
    if (!(value instanceof Class)) throw wrongType(where, `a ${Class.name}`, value);
    return value.address;
  },
});
// An object that is only read may be given as what it would be made of.
const readObject = (Class, made, isMade) => ({
  ffi: 'uintptr_t',
  take: (value, where, own) => {
    if (!isMade(value) && !(value instanceof Class)) throw wrongType(where, `a ${Class.name} or ${made}`, value);
    return (isMade(value) ? own(new Class(value)) : value).address;
  },
});
const isString = (value) => typeof value === 'string';
const isArray = (value) => value instanceof Uint8Array;

const int = integer('int32_t', -0x80000000, 0x7fffffff);
const uint = integer('uint32_t', 0, 0xffffffff);
const size = integer('size_t', 0, 2n ** 64n - 1n);
const bytes = array('a Uint8Array', Uint8Array);
const sizes = array('a BigUint64Array', BigUint64Array);
const types = {
  int,
  BOOL: { ...int, take: (value, where) => (typeof value === 'boolean' ? +value : int.take(value, where)) },
  'unsigned int': uint,
  UINT: uint,
  WORD: integer('uint16_t', 0, 0xffff),
  size_t: size,
  'unsigned __int64': size,
  HMODULE: size,
  WPARAM: size,
  LPARAM: integer('int64_t', -(2n ** 63n), 2n ** 63n - 1n),
  float: real('float'),
  double: real('double'),
  char: letter(0x7f),
  wchar_t: letter(0xffff),
  'const wchar_t*': text((value) => Buffer.from(value, 'utf16le')),
  'const char*': text(ansiBytes),
  'wchar_t*': bytes,
  'char*': bytes,
  'BYTE*': bytes,
  'const BYTE*': bytes,
  'unsigned char*': bytes,
  'const unsigned char*': bytes,
  'int*': array('an Int32Array', Int32Array),
  '__int64*': array('a BigInt64Array', BigInt64Array),
  'size_t*': sizes,
  'unsigned __int64*': sizes,
  'CStringW&': object(WideString),
  'CStringA&': object(AnsiString),
  'CArray<BYTE, const BYTE&>&': object(Bytes),
  'CWinThread*': object(Thread),
  'const CStringW&': readObject(WideString, 'a string', isString),
  'const CStringA&': readObject(AnsiString, 'a string', isString),
  'const CArray<BYTE, const BYTE&>&': readObject(Bytes, 'a Uint8Array', isArray),
};
const utf8Text = text((value) => Buffer.from(value, 'utf8'));

function argument(one) {
  const type = one.encoding === 'utf-8' && one.type === 'const char*' ? utf8Text : types[one.type];
  if (!type) throw new Error(`${one.name}: the list of exports has an argument of unknown type, ${one.type}`);
  return type;
}

const results = { void: 'void', 'void*': 'uintptr_t', HMODULE: 'uintptr_t' };

module.exports = {
  argument,
  resultType: (type) => results[type] ?? types[type].ffi,
};
