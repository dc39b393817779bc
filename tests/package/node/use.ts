// SPDX-License-Identifier: MIT
// How a host in TypeScript uses the typings. What tests.js lists of the module is appended.
import * as zera from './zeratools';

const library: zera.Library = zera.open({ library: 'ZERATools.dll' });
const { path, exists }: { path: string; exists: boolean } = library.settingsFile();
library.saveLanguage(zera.languages.italian, path);
const language: number = library.language(path);
const texts: string | undefined = library.loadLanguage(language, null)?.text(7);
const plain: string | null = library.decrypt('pass phrase', library.encrypt('pass phrase', 'licence'));
const bytes: Uint8Array | null = library.decryptBytes(new Uint8Array(4), library.encryptBytes(new Uint8Array(4), new Uint8Array(9)));
const getName = library.bind('ZERA_TOOLS_FILE_GET_NAME_UC');
const name: string = zera.takeText((buffer, capacity) => getName(path, buffer, capacity), 64);
const length: number = zera.scope((own) => {
  const text = own(new zera.WideString('text'));
  library.bind(117)(name, text);
  return text.length;
});
const mayRaise: boolean = getName.raises.length > 0;
export { bytes, exists, length, mayRaise, plain, texts };

// @ts-expect-error a pass phrase is a text
library.encrypt(1, 'plain');
// @ts-expect-error null is an answer
const always: string = library.decrypt('pass phrase', 'x');
// @ts-expect-error there is no such export of the module
zera.close();
// @ts-expect-error an address belongs to the object
new zera.Thread().address = 0;
// @ts-expect-error a NUL-terminated text is no argument of objects' own
getName({});

