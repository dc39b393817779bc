// SPDX-License-Identifier: MIT
// ZERATools for hosts in JavaScript: all exports with checked arguments, the objects that some of them take, and the
// services that most hosts want. zeratools.d.ts says what each does; the page "Hosts in Node.js" shows it.
'use strict';
const fs = require('fs');
const path = require('path');
const koffi = require('koffi');
const { makeExport } = require('./zeratools/bind');
const { ansiBytes, ansiText, checkEnded, checkInteger, checkText, kind } = require('./zeratools/checks');
const { LanguageModule, checkLanguage, languages } = require('./zeratools/languages');
const objects = require('./zeratools/objects');

const { Bytes, WideString, scope } = objects;
const serviceFailed = (where) => new Error(`${where}: the cryptographic service failed`);

class Library {
  #library;
  #bound = new Map();
  constructor(file, list) {
    const { version, exports } = JSON.parse(fs.readFileSync(list, 'utf8'));
    this.version = version;
    this.exports = new Map(exports.map((one) => [one.name, one]));
    try {
      this.#library = koffi.load(file);
    } catch (error) {
      throw new Error(`${file} cannot be loaded: ${error.message}`);
    }
  }

  // By name, or by ordinal.
  bind(which) {
    let bound = this.#bound.get(which);
    if (bound) return bound;
    if (typeof which !== 'string' && typeof which !== 'number')
      throw new TypeError(`bind: expected the name or the ordinal of an export, got ${kind(which)}`);
    const entry = this.exports.get(which) ?? [...this.exports.values()].find((one) => one.ordinal === which);
    if (!entry) throw new RangeError(`bind: there is no export ${which}`);
    bound = makeExport(this.#library, entry, which);
    this.#bound.set(which, bound);
    return bound;
  }
  #call(name, ...values) {
    return this.bind(`ZERA_TOOLS_${name}`)(...values);
  }

  settingsFile(module = null) {
    return scope((own) => {
      const file = own(new WideString());
      const copied = new Int32Array(1);
      const exists = this.#call('APPLICATION_GET_INIFILE_EX_UC', module, file, copied) !== 0;
      return { path: file.text, exists, copied: copied[0] !== 0 };
    });
  }
  dataFolders(module = null) {
    return scope((own) => {
      const common = own(new WideString());
      const user = own(new WideString());
      const found = this.#call('APPLICATION_GET_APPDATAFILES_UC', module, common, user);
      return found ? { common: common.text, user: user.text } : null;
    });
  }

  language(file) {
    return this.#call('APPLICATION_GET_LANGUAGE_ENUM_UC', file);
  }
  saveLanguage(language, file) {
    this.#call('APPLICATION_SAVE_LANGUAGE_UC', checkLanguage(language, 'saveLanguage, language'), file);
  }
  loadLanguage(language, module = null) {
    checkLanguage(language, 'loadLanguage, language');
    const loaded = this.#call('APPLICATION_LOAD_LANGUAGE_DLL', module, language);
    return loaded ? new LanguageModule(loaded) : null;
  }

  encrypt(passPhrase, plain) {
    if (/[^\0-\xff]/.test(checkText(plain, 'encrypt, plain')))
      throw new RangeError('encrypt, plain: of a character above U+00FF the high byte would be lost; see encryptBytes');
    return scope((own) => {
      const cipher = own(new WideString());
      if (this.#call('ENC_STRING_L_UC', passPhrase, plain, cipher) < 0) throw serviceFailed('encrypt');
      return cipher.text;
    });
  }
  decrypt(passPhrase, cipher) {
    checkText(cipher, 'decrypt, cipher');
    return scope((own) => {
      const plain = own(new WideString());
      return this.#call('DEC_STRING_UC', passPhrase, cipher, plain) < 0 ? null : plain.text;
    });
  }
  encryptBytes(passPhrase, plain) {
    return scope((own) => {
      const cipher = own(new WideString());
      if (this.#call('ENC_UC', passPhrase, plain, cipher, true) < 0) throw serviceFailed('encryptBytes');
      return cipher.text;
    });
  }
  decryptBytes(passPhrase, cipher) {
    checkText(cipher, 'decryptBytes, cipher');
    return scope((own) => {
      const plain = own(new Bytes());
      return this.#call('DEC_UC', passPhrase, cipher, true, plain) < 0 ? null : plain.data;
    });
  }
}

function find(...places) {
  const found = places.map((place) => path.join(__dirname, place)).find((place) => fs.existsSync(place));
  if (!found) throw new Error(`there is no ${places[0]} beside zeratools.js, nor in the package around it`);
  return found;
}
function open({ library, exports: list } = {}) {
  return new Library(
    library ?? find('ZERATools.dll', '../../bin/ZERATools.dll'),
    list ?? find('exports.json', '../../share/zeratools/exports.json'));
}

// Text that an export writes into a buffer of the host's.
function takeText(call, capacity = 260, before = '') {
  checkInteger(capacity, 1, 0x3fffffff, 'takeText, capacity');
  if (checkEnded(before, 'takeText, before').length >= capacity) throw new RangeError('takeText, before: does not fit');
  const buffer = Buffer.alloc(capacity * 2);
  buffer.write(before, 'utf16le');
  call(buffer, capacity);
  return buffer.toString('utf16le').replace(/\0[^]*$/, '');
}
function takeAnsi(call, capacity = 260, before = '') {
  checkInteger(capacity, 1, 0x7fffffff, 'takeAnsi, capacity');
  const bytes = ansiBytes(checkEnded(before, 'takeAnsi, before'), 'takeAnsi, before');
  if (bytes.length >= capacity) throw new RangeError('takeAnsi, before: does not fit');
  const buffer = Buffer.concat([bytes], capacity);
  call(buffer, capacity);
  const end = buffer.indexOf(0);
  return ansiText(end < 0 ? buffer : buffer.subarray(0, end));
}

module.exports = { ...objects, languages, open, takeAnsi, takeText };
