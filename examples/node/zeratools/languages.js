// SPDX-License-Identifier: MIT
// The languages of the user interface by their stored numbers, and a loaded module with the texts of one.
'use strict';
const koffi = require('koffi');
const { checkInteger } = require('./checks');
const { kernel } = require('./memory');

const loadString = koffi.load('user32.dll')
  .func('int LoadStringW(uintptr_t module, uint32_t id, _Out_ void* text, int capacity)');
const freeLibrary = kernel.func('int FreeLibrary(uintptr_t module)');
const LONGEST = 0x10000; // the length of a text in a module has 16 bits

const languages = Object.freeze({
  german: 0, english: 1, french: 2, dutch: 3, italian: 4, spanish: 5, portuguese: 6, swedish: 7, norwegian: 8,
  chinese: 9, korean: 10, japanese: 11, bulgarian: 12,
});

class LanguageModule {
  #module;
  constructor(module) {
    this.#module = module;
  }
  get handle() {
    if (!this.#module) throw new Error('this LanguageModule is used after dispose()');
    return this.#module;
  }
  text(id) {
    const buffer = Buffer.alloc(2 * LONGEST);
    const length = loadString(this.handle, checkInteger(id, 0, 0xffff, 'LanguageModule.text'), buffer, LONGEST);
    return buffer.toString('utf16le', 0, 2 * length);
  }
  dispose() {
    if (this.#module) freeLibrary(this.#module);
    this.#module = 0;
  }
}

module.exports = { LanguageModule, languages, checkLanguage: (value, where) => checkInteger(value, 0, 12, where) };
