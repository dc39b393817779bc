// SPDX-License-Identifier: MIT
// The module for hosts in JavaScript: every object export, wrong arguments, and that nothing is left.
//   node tests.js RESULT LISTS PAGE_CODE ...
// RESULT gets what failed, LISTS what the module has, for its typings. Each PAGE_CODE is a program of a page, whose
// output stands in it as comments.
const fs = require('fs');
const koffi = require('koffi');
const { spawnSync } = require('child_process');
const { Worker, isMainThread, parentPort } = require('worker_threads');
const zera = require('./zeratools');
const { LanguageModule } = require('./zeratools/languages');
const { AnsiString, Bytes, Thread, WideString, scope, takeAnsi, takeText } = zera;

const [result, lists, ...programs] = process.argv.slice(2);
const failures = [];
let checks = 0;
const here = () => new Error().stack.split('\n').slice(3).map((line) => line.trim()).join(' ');
function equal(actual, expected) {
  ++checks;
  const [got, wanted] = [actual, expected].map((one) => (Buffer.isBuffer(one) ? one.toString('hex') : one));
  if (!Object.is(got, wanted)) failures.push(`got ${String(got)}, expected ${String(wanted)}: ${here()}`);
}
function throws(Class, pattern, call) {
  ++checks;
  try {
    call();
  } catch (error) {
    if (error.constructor === Class && pattern.test(error.message)) return;
    failures.push(`got ${error.stack}, expected ${Class.name} ${pattern}: ${here()}`);
    return;
  }
  failures.push(`nothing is thrown, expected ${pattern}: ${here()}`);
}

const library = zera.open();
const bind = (name) => library.bind(`ZERA_TOOLS_${name}`);

// Programs of their own: one that does nothing more, an export that raises, and a thread.
if (process.argv[2] === 'nothing') {
  equal(library.decrypt('p', library.encrypt('p', 'q')), 'q');
  process.exitCode = failures.length;
} else if (process.argv[2] === 'raise') {
  for (const event of ['exit', 'uncaughtException']) process.on(event, () => fs.writeFileSync(process.argv[3], event));
  try {
    bind('ENC')('p', Buffer.from('x'), 1, Buffer.alloc(20), 20, true);
  } finally {
    fs.writeFileSync(process.argv[3], 'finally');
  }
} else if (!isMainThread) {
  parentPort.postMessage([library.decrypt('p', library.encrypt('p', 'q')), zera.buffersInUse(), zera.objectsInUse()].join());
} else {
  everything().catch((error) => failures.push(error.stack)).then(() => {
    equal(zera.buffersInUse(), 0);
    equal(zera.objectsInUse(), 0);
    fs.writeFileSync(result, failures.map((one) => `${one}\n`).join(''));
    process.exitCode = failures.length || checks < 100 ? 1 : 0;
  });
}

async function everything() {
  everyExport();
  objectExports();
  applicationExports();
  threadMessage();
  wrongArguments();
  wrongValues();
  wrongObjects();
  wrongServices();
  objects();
  listModule();
  programs.forEach(runProgram);

  // Not 'ignore': under Wine koffi ends a process whose output is the null device with the same code.
  const run = (what) => spawnSync(process.execPath, [__filename, what, `${result}.raised`], { stdio: 'inherit' }).status;
  equal(run('nothing'), 0);
  equal(run('raise'), 0xc0000409);
  equal(fs.existsSync(`${result}.raised`), false);

  const worker = new Worker(__filename);
  equal(await new Promise((resolve) => worker.on('message', resolve).on('error', resolve)), 'q,0,0');
}

function everyExport() {
  equal(library.exports.size, 142);
  for (const { name, ordinal, raises } of library.exports.values()) {
    equal(library.bind(name).ordinal, ordinal);
    equal(library.bind(ordinal).name, name);
    equal(library.bind(name).raises, raises);
  }
  equal(library.bind(bind('ROUND_INT').ordinal)(2.5), 3);
  equal(bind('ROUND_UINT')(4e9), 4000000000);
  equal(bind('FILE_COPY_ALL_UC').raises.join(), 'CFileException');
  const time = BigInt64Array.of(7n);
  equal(bind('FILE_GET_TIME_MODIFIED_UC')(__filename, time), 1);
  equal(time[0] > 1000000000n, true);
  equal(bind('FILE_EXIST_UC')(null), 0);

  // Buffers and numbers are the host's own memory, not copies: of any size, and seen by other threads.
  const file = `${__dirname}\\old\\large.bin`;
  const large = Buffer.alloc(8e6, 'abcdefg');
  const count = new BigUint64Array(1);
  fs.mkdirSync(`${__dirname}\\old`, { recursive: true });
  equal(bind('FILE_FROM_BUFFER_UC')(file, large, large.length), 1);
  const again = Buffer.alloc(large.length);
  equal(bind('FILE_TO_BUFFER_UC')(file, again, again.length, count), 1);
  equal(`${count[0]} ${again.equals(large)}`, `${large.length} true`);
  fs.utimesSync(file, 1e9, 1e9); // the time of creation too, under Wine
  const abort = new Int32Array(new SharedArrayBuffer(4));
  for (const stop of [1, 0]) {
    abort[0] = stop;
    bind('FILE_DELETE_ALL_OLD_EX_UC')(file, '.bin', 60, abort);
    equal(`stop ${stop}: ${fs.existsSync(file)}`, `stop ${stop}: ${stop === 1}`);
  }
  equal(bind('FILE_GET_FREEDISK_GB_UC')('C') > 0, true);
  equal(bind('FILE_GET_FREEDISK_GB')('C') > 0, true);
}

function objectExports() {
  scope((own) => {
    const wide = own(new WideString());
    const ansi = own(new AnsiString());
    const bytes = own(new Bytes());
    const key = Buffer.from('pass');

    bind('UC_TO_MBC')('25 \u20ac', ansi);
    equal(ansi.bytes, Buffer.from([0x32, 0x35, 0x20, 0x80]));
    equal(ansi.text, '25 \u20ac');
    bind('CHAR8_TO_MBC')('abc', ansi);
    equal(ansi.text, 'abc');
    bind('CHAR8_TO_UC')('5 \u00b0', wide);
    equal(wide.text, '5 \u00b0');
    bind('STRING_MBC_TO_UTF8')('\u20ac', ansi);
    equal(ansi.bytes.toString('utf8'), '\u20ac');
    bind('STRING_UC_TO_UTF8')('\u8a2d\u{1f600}', ansi);
    equal(ansi.bytes.toString('utf8'), '\u8a2d\u{1f600}');
    bind('STRING_UTF8_TO_MBC')('\u20ac!', ansi);
    equal(ansi.text, '\u20ac!');
    bind('STRING_UTF8_TO_UC')('\u8a2d', wide);
    equal(wide.text, '\u8a2d');
    bind('STRING_UC_TO_HEX')('Hi', wide);
    equal(wide.text, '48 69');
    bind('STRING_HEX_TO_UC')('48 69', wide);
    equal(wide.text, 'Hi');
    bind('STRING_UC_TO_HEX')(null, wide);
    equal(wide.text, '');

    for (const suffix of ['', '_UC']) {
      const text = suffix ? wide : ansi;
      equal(bind(`ENC_STRING_L${suffix}`)('pass', 'zero\0inside', text), 22);
      const cipher = text.text;
      equal(cipher.length, 22);
      equal(bind(`ENC_STRING_S${suffix}`)('pass', 'zero\0inside', text), 22);
      equal(text.text, cipher.slice(0, 8));
      equal(bind(`DEC_STRING${suffix}`)('pass', cipher, text), 11);
      equal(text.text, suffix ? 'zero\0inside' : 'zero'); // the plain one ends at the zero
      // One object that is read and written.
      text.text = 'once';
      equal(bind(`ENC_STRING_L${suffix}`)('pass', text, text), 8);
      equal(text.length, 8);
    }
    equal(bind('ENC_UC')(key, Buffer.from([0, 1, 255]), wide, true), 6);
    equal(bind('DEC_UC')(own(new Bytes(key)), wide.text, 1, bytes), 3);
    equal(bytes.data, Buffer.from([0, 1, 255]));
    equal(bind('DEC_UC')(key, 'no digits', true, bytes), -1);
    equal(bytes.length, 0);

    // Texts that need many enlargements, and a manager that is asked for them.
    const long = 'x\u20ac'.repeat(50000);
    bind('STRING_UC_TO_HEX')(long, wide);
    bind('STRING_HEX_TO_UC')(wide.text, wide);
    equal(wide.text, long);
    equal(zera.buffersInUse(), 2);
  });
}

function applicationExports() {
  const { path, exists, copied } = library.settingsFile();
  equal(/\\host\.ini$/.test(path), true);
  equal(copied, false);
  scope((own) => {
    const wide = own(new WideString());
    const ansi = own(new AnsiString());
    const took = Int32Array.of(7);
    equal(bind('APPLICATION_GET_INIFILE_UC')(null, wide), +exists);
    equal(wide.text, path);
    equal(bind('APPLICATION_GET_INIFILE_MBC')(null, ansi), +exists);
    equal(ansi.text, exists ? path : '');
    equal(bind('APPLICATION_GET_INIFILE_EX_MBC')(null, ansi, took), +exists);
    equal(took[0], 0);
  });
  const folders = library.dataFolders();
  equal(`${folders.user}.ini`, path);
  equal(/ProgramData/.test(folders.common), true);

  const file = `${__dirname}\\language.ini`;
  fs.rmSync(file, { force: true });
  for (const [name, number] of Object.entries(zera.languages)) {
    library.saveLanguage(number, file);
    equal(`${name} ${library.language(file)}`, `${name} ${number}`);
  }
  equal(library.loadLanguage(zera.languages.german), null);
  // host_ITA.dll lies beside host.exe; there is no French one, and no English one instead.
  const italian = library.loadLanguage(zera.languages.italian);
  equal(italian.text(7), 'Impostazioni \u20ac');
  equal(italian.text(8), '');
  throws(RangeError, /^LanguageModule\.text: 65536 is not from 0 to 65535$/, () => italian.text(65536));
  italian.dispose();
  italian.dispose();
  throws(Error, /^this LanguageModule is used after dispose\(\)$/, () => italian.text(7));
  equal(library.loadLanguage(zera.languages.french), null);
}

function threadMessage() {
  const peek = koffi.load('user32.dll')
    .func('int PeekMessageW(_Out_ void* message, void* window, uint32_t first, uint32_t last, uint32_t remove)');
  const message = Buffer.alloc(48);
  peek(message, null, 0, 0, 0); // the thread has a queue from here on
  scope((own) => equal(bind('POSTTHREADMESSAGE')(own(new Thread()), 0x8001, 2n ** 63n, -5), 1));
  equal(peek(message, null, 0x8001, 0x8001, 1), 1);
  equal(message.readUInt32LE(8), 0x8001);
  equal(message.readBigUInt64LE(16), 2n ** 63n);
  equal(message.readBigInt64LE(24), -5n);
  equal(bind('POSTTHREADMESSAGE')(null, 0x8001, 0, 0), 0);
}

function wrongArguments() {
  const getName = bind('FILE_GET_NAME_UC');
  const out = Buffer.alloc(20);
  throws(TypeError, /^ZERA_TOOLS_FILE_GET_NAME_UC: expected 3 arguments \(path, name, capacity\), got 2$/, () => getName('a', out));
  throws(TypeError, /GET_NAME_UC, path: expected a string, got null$/, () => getName(null, out, 10));
  throws(TypeError, /path: expected a string, got a number$/, () => getName(1, out, 10));
  throws(TypeError, /path: expected a string, got undefined$/, () => getName(undefined, out, 10));
  throws(RangeError, /path: a NUL would end the text$/, () => getName('a\0b', out, 10));
  throws(TypeError, /name: expected a Uint8Array, got a string$/, () => getName('a', 'out', 10));
  throws(TypeError, /name: expected a Uint8Array, got null$/, () => getName('a', null, 10));
  throws(TypeError, /capacity: expected an integer, got a number$/, () => getName('a', out, 1.5));
  throws(RangeError, /capacity: -1 is not from 0 to 18446744073709551615$/, () => getName('a', out, -1));
  throws(RangeError, /capacity: 11, and name has room for 10$/, () => getName('a', out, 11));
  throws(RangeError, /the result does not fit/, () => getName('C:\\a long name.txt', out, 10));
  equal(getName('C:\\fits.txt', out, 10n), 1);
  throws(RangeError, /room for 10$/, () => bind('FILE_GET_EXT')('C:\\run.ini', out.subarray(10), 11));
  throws(RangeError, /room for 3$/, () => bind('FILE_FROM_BUFFER_UC')('X:\\none', Buffer.alloc(3), 4));
  throws(RangeError, /free: 6, and position has room for 5$/, () =>
    bind('BUFWRITE_SECTION_UC')('S', Buffer.alloc(11), 6, new BigUint64Array(1)));
  throws(TypeError, /count: expected a BigUint64Array, got an object of class Array$/, () =>
    bind('BUFWRITE_SECTION_UC')('S', Buffer.alloc(40), 20, [0]));
  const count = new BigUint64Array(1);
  equal(bind('BUFWRITE_SECTION_UC')('S', Buffer.alloc(40), 20, count), 1);
  equal(count[0] > 0n, true);
}

function wrongValues() {
  throws(TypeError, /value: expected a number, got a string$/, () => bind('ROUND_INT')('2'));
  throws(TypeError, /decimals: expected an integer, got a number$/, () => bind('ROUND_DOUBLE')(1, NaN));
  throws(RangeError, /decimals: 2147483648 is not from -2147483648 to 2147483647$/, () => bind('ROUND_DOUBLE')(1, 2 ** 31));
  throws(RangeError, /defaultValue: 65536 is not from 0 to 65535$/, () => bind('READ_WORD')('S', 'K', 'X:\\f.ini', 65536, 0, 9));
  throws(RangeError, /driveLetter: expected one character$/, () => bind('FILE_GET_FREEDISK_GB')('CD'));
  throws(TypeError, /driveLetter: expected a string of one character, got a number$/, () => bind('FILE_GET_FREEDISK_GB_UC')(67));
  throws(RangeError, /path: the ANSI code page lacks a character of the text$/, () => bind('FILE_EXIST')('\u8a2d'));
  throws(RangeError, /path: a NUL would end the text$/, () => bind('FILE_EXIST')('a\0'));
  throws(TypeError, /time: expected a BigInt64Array, got an object of class Int32Array$/, () =>
    bind('FILE_GET_TIME_MODIFIED_UC')('a', new Int32Array(4)));
  throws(TypeError, /abortFlag: expected an Int32Array, got a number$/, () =>
    bind('FILE_DELETE_ALL_OLD_EX_UC')('X:\\none\\', '*', 0, 0));
  throws(TypeError, /hex: expected an integer, got a string$/, () => bind('ENC')('p', null, 0, Buffer.alloc(2), 2, 'yes'));
}

function wrongObjects() {
  const toHex = bind('STRING_UC_TO_HEX');
  throws(TypeError, /result: expected a WideString, got null$/, () => toHex('a', null));
  throws(TypeError, /result: expected a WideString, got a string$/, () => toHex('a', 'b'));
  scope((own) => {
    const ansi = own(new AnsiString());
    const wide = own(new WideString('kept'));
    const bytes = own(new Bytes());
    throws(TypeError, /result: expected a WideString, got an object of class AnsiString$/, () => toHex('a', ansi));
    throws(TypeError, /plain: expected a WideString or a string, got a number$/, () => bind('ENC_STRING_L_UC')('p', 1, wide));
    throws(TypeError, /passPhrase: expected a Bytes or a Uint8Array, got a string$/, () => bind('ENC_UC')('p', bytes, wide, 1));
    throws(TypeError, /thread: expected a Thread, got an object of class Object$/, () => bind('POSTTHREADMESSAGE')({}, 0, 0, 0));
    // What was made of an argument before the wrong one is gone too.
    const before = zera.objectsInUse();
    throws(TypeError, /text: expected a WideString/, () => bind('ENC_UC')(Buffer.from('k'), Buffer.from('x'), null, 1));
    equal(zera.objectsInUse(), before);
    throws(TypeError, /^WideString\.text: expected a string, got a number$/, () => (wide.text = 1));
    throws(TypeError, /^WideString\.bytes: expected a Uint8Array, got a string$/, () => (wide.bytes = 'x'));
    throws(RangeError, /^WideString\.bytes: ends with half a character$/, () => (wide.bytes = Buffer.alloc(3)));
    throws(TypeError, /^Bytes\.data: expected a Uint8Array, got an object of class Array$/, () => (bytes.data = [1]));
    throws(RangeError, /^AnsiString\.text: the ANSI code page lacks/, () => (ansi.text = '\u8a2d'));
    equal(wide.text, 'kept');
  });
  throws(TypeError, /^WideString: expected a string, got null$/, () => new WideString(null));
  throws(TypeError, /^Bytes: expected a Uint8Array, got a string$/, () => new Bytes('x'));
  throws(RangeError, /^AnsiString: the ANSI code page lacks/, () => new AnsiString('\u8a2d'));
  throws(RangeError, /^Thread: -1 is not/, () => new Thread(-1));

  const gone = new WideString('x');
  gone.dispose();
  gone.dispose();
  throws(Error, /^this WideString is used after dispose\(\)$/, () => gone.text);
  throws(Error, /^this WideString is used after dispose\(\)$/, () => (gone.text = 'y'));
  throws(Error, /^this WideString is used after dispose\(\)$/, () => toHex('a', gone));
  const bytes = new Bytes(Buffer.from('x'));
  bytes.dispose();
  throws(Error, /^this Bytes is used after dispose\(\)$/, () => (bytes.data = Buffer.alloc(1)));
  throws(SyntaxError, /inner/, () => scope((own) => {
    own(new WideString('x'));
    throw new SyntaxError('inner');
  }));
}

function wrongServices() {
  throws(TypeError, /^bind: expected the name or the ordinal of an export, got null$/, () => library.bind(null));
  throws(RangeError, /^bind: there is no export FILE_EXIST$/, () => library.bind('FILE_EXIST'));
  throws(RangeError, /^bind: there is no export 999$/, () => library.bind(999));
  throws(Error, /none\.dll/, () => zera.open({ library: 'X:\\none.dll' }));
  throws(Error, /none\.json/, () => zera.open({ exports: 'X:\\none.json' }));
  throws(TypeError, /module: expected an integer, got a string$/, () => library.settingsFile('x'));
  throws(TypeError, /settingsFile: expected a string, got undefined$/, () => library.language());
  throws(RangeError, /settingsFile: a NUL would end the text$/, () => library.language('a\0b'));
  throws(RangeError, /^saveLanguage, language: 13 is not from 0 to 12$/, () => library.saveLanguage(13, 'x'));
  throws(TypeError, /^saveLanguage, language: expected an integer, got a string$/, () => library.saveLanguage('italian', 'x'));
  throws(RangeError, /^loadLanguage, language: -1 is not/, () => library.loadLanguage(-1));
  throws(RangeError, /^encrypt, plain: of a character above U\+00FF/, () => library.encrypt('p', '\u0141'));
  throws(TypeError, /^encrypt, plain: expected a string, got null$/, () => library.encrypt('p', null));
  throws(TypeError, /passPhrase: expected a string, got a number$/, () => library.encrypt(1, 'x'));
  throws(RangeError, /passPhrase: a NUL would end the text$/, () => library.encrypt('p\0q', 'x'));
  throws(TypeError, /^decrypt, cipher: expected a string, got null$/, () => library.decrypt('p', null));
  throws(TypeError, /passPhrase: expected a Bytes or a Uint8Array, got a string$/, () => library.encryptBytes('p', Buffer.alloc(1)));
  throws(TypeError, /plain: expected a Bytes or a Uint8Array, got a string$/, () => library.encryptBytes(Buffer.alloc(1), 'x'));
  throws(TypeError, /^decryptBytes, cipher: expected a string, got undefined$/, () => library.decryptBytes(Buffer.alloc(1)));
  equal(library.decrypt('p', 'no digits'), null);
  equal(library.decryptBytes(Buffer.from('p'), 'no digits'), null);
  equal(library.decrypt('p', ''), '');
  equal(library.decrypt(null, library.encrypt(null, '\u00e9')), '\u00e9');
  const text = Buffer.from('\u0141\u00f3d\u017a');
  equal(library.decryptBytes(Buffer.from('p'), library.encryptBytes(Buffer.from('p'), text)), text);
  equal(library.encryptBytes(new Uint8Array(), new Uint8Array()), '');

  throws(RangeError, /^takeText, capacity: 0 is not/, () => takeText(() => {}, 0));
  throws(RangeError, /^takeText, before: does not fit$/, () => takeText(() => {}, 3, 'abc'));
  throws(RangeError, /^takeAnsi, before: does not fit$/, () => takeAnsi(() => {}, 3, 'abc'));
  equal(takeText(() => {}, 3, 'ab'), 'ab');
  equal(takeAnsi((buffer) => buffer.fill(0x80), 3, 'ab'), '\u20ac\u20ac\u20ac');
}

function objects() {
  scope((own) => {
    const wide = own(new WideString());
    equal(wide.length, 0);
    equal(zera.buffersInUse(), 0);
    wide.text = 'zero\0inside \u8a2d';
    equal(wide.length, 13);
    equal(wide.text, 'zero\0inside \u8a2d');
    equal(zera.buffersInUse(), 1);
    wide.bytes = Buffer.from('ab', 'utf16le');
    equal(wide.text, 'ab');
    wide.text = '';
    equal(zera.buffersInUse(), 0);
    equal(own(new AnsiString('\u20ac')).length, 1);
    const bytes = own(new Bytes(Buffer.from([1, 2, 3])));
    const { data } = bytes;
    bytes.data = data;
    equal(bytes.data, data);
    equal(bytes.length, 3);
    equal(zera.objectsInUse(), 3);
  });
  for (let i = 0; i < 2000; ++i) scope((own) => bind('STRING_UC_TO_HEX')('again', own(new WideString('first'))));
}

// What the typings must have, as TypeScript: a name that they lack, and one that they have alone, is an error there.
function listModule() {
  const members = (Class) => {
    const names = [];
    for (let one = Class.prototype; one !== Object.prototype; one = Object.getPrototypeOf(one))
      names.push(...Object.getOwnPropertyNames(one));
    return names.filter((name) => name !== 'constructor');
  };
  const record = (name, type, names) =>
    `export const ${name}: Record<keyof ${type}, 0> = { ${[...new Set(names)].map((one) => `${one}: 0`).join(', ')} };\n`;
  let text = record('all', 'typeof zera', Object.keys(zera));
  for (const [name, value] of Object.entries({ ...zera, Library: library.constructor, LanguageModule }))
    if (/^[A-Z]/.test(name)) text += record(`of${name}`, `zera.${name}`, members(value).concat(name === 'Library' ? Object.keys(library) : []));
  text += record('languages', 'typeof zera.languages', Object.keys(zera.languages));
  text += record('one', 'zera.Export', Object.keys(library.exports.get('ZERA_TOOLS_ROUND_INT')));
  fs.writeFileSync(lists, text);
}

// A page's program writes what its comments "// prints: " say.
function runProgram(file) {
  const expected = [...fs.readFileSync(file, 'utf8').matchAll(/\/\/ prints: (.*)/g)].map((match) => match[1].trimEnd());
  const written = [];
  const { log } = console;
  console.log = (...values) => written.push(values.join(' '));
  try {
    require(file);
  } finally {
    console.log = log;
  }
  ++checks;
  if (expected.join('\n') !== written.join('\n')) failures.push(`${file} writes ${written}, expected ${expected}`);
}
