// SPDX-License-Identifier: MIT
// ZERATools for hosts in JavaScript (zeratools.js).
//
// A wrong type is a TypeError, a value that cannot be is a RangeError, each with the place and what was expected, and
// the library is not called then. What the library itself raises ends the process: the page "Hosts in Node.js".

/** The languages of the user interface, by their stored numbers. */
export const languages: {
  readonly german: 0; readonly english: 1; readonly french: 2; readonly dutch: 3; readonly italian: 4;
  readonly spanish: 5; readonly portuguese: 6; readonly swedish: 7; readonly norwegian: 8; readonly chinese: 9;
  readonly korean: 10; readonly japanese: 11; readonly bulgarian: 12;
};

/** A module's handle (`HMODULE`); null is the executable of the process. */
export type ModuleHandle = number | bigint | null;

/** Loads the library and its list of exports; unless told, from beside zeratools.js or the package around it. */
export function open(files?: { library?: string; exports?: string }): Library;

/** The loaded library. */
export interface Library {
  /** The version of the list of exports. */
  readonly version: string;

  /** What the list of exports (share/zeratools/exports.json) says of each, by name. */
  readonly exports: ReadonlyMap<string, Export>;

  /** Gives an export as a function, bound by its name or by its ordinal. */
  bind(nameOrOrdinal: string | number): BoundExport;

  /** Finds the settings file. `path` is where it is, or will be. `ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC` */
  settingsFile(module?: ModuleHandle): { path: string; exists: boolean; copied: boolean };

  /** Names the data folders; null if the module has no path. `ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC` */
  dataFolders(module?: ModuleHandle): { common: string; user: string } | null;

  /** Reads the language from a settings file. `ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC` */
  language(file: string): number;

  /** Saves the language, 0 to 12, in a settings file. `ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC` */
  saveLanguage(language: number, file: string): void;

  /** Loads a language's module; null for none, as for German. `ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL` */
  loadLanguage(language: number, module?: ModuleHandle): LanguageModule | null;

  /**
   * Encrypts a text of characters up to U+00FF. `ZERA_TOOLS_ENC_STRING_L_UC`
   * Of the pass phrase too only the low byte of each character counts.
   */
  encrypt(passPhrase: string | null, plain: string): string;

  /** Decrypts a text; null if it is no cipher text. `ZERA_TOOLS_DEC_STRING_UC` */
  decrypt(passPhrase: string | null, cipher: string): string | null;

  /** Encrypts bytes into hexadecimal digits. `ZERA_TOOLS_ENC_UC` */
  encryptBytes(passPhrase: Uint8Array, plain: Uint8Array): string;

  /** Decrypts hexadecimal digits into bytes; null if they are none. `ZERA_TOOLS_DEC_UC` */
  decryptBytes(passPhrase: Uint8Array, cipher: string): Uint8Array | null;
}

/** One export, as the list says. */
export interface Export {
  readonly name: string;
  readonly partner: string | null;
  readonly ordinal: number;
  readonly group: string;
  readonly summary: string;
  readonly result: { readonly type: string; readonly text: string };
  readonly raises: readonly string[];
  readonly arguments: readonly {
    readonly name: string;
    readonly type: string;
    readonly direction: 'in' | 'out' | 'inout';
    readonly optional: boolean;
    readonly encoding?: 'utf-16' | 'utf-8' | 'ansi';
    readonly unit?: string;
    readonly text: string;
  }[];
}

/**
 * What an export's argument takes: for a text a string, for a buffer a Uint8Array (a Buffer is one), for a pointer to
 * a number a typed array, for an object one of the classes below, and null where the list says "optional". A string
 * object or byte array that is only read may be given as a string or Uint8Array.
 */
export type Value =
  | string | number | bigint | boolean | null | Uint8Array | Int32Array | BigInt64Array | BigUint64Array
  | WideString | AnsiString | Bytes | Thread;

/** An export as a function. Of an address it gives the number, null for none. */
export interface BoundExport {
  (...values: Value[]): any;
  readonly ordinal: number;
  /** The exceptions that it is documented to raise, besides exhausted memory. */
  readonly raises: readonly string[];
}

export type Writer = (buffer: Uint8Array, capacity: number) => void;

/** Calls an export with a buffer for UTF-16 text, which holds `before` first, and gives the text in it then. */
export function takeText(call: Writer, capacity?: number, before?: string): string;

/** The same for text in the ANSI code page. */
export function takeAnsi(call: Writer, capacity?: number, before?: string): string;

/** Calls a function with one that takes objects over, and disposes of those when it ends, by an error too. */
export function scope<T>(call: (own: <O extends { dispose(): void }>(object: O) => O) => T): T;

/** A string object in UTF-16. It may hold NULs. */
export class WideString {
  constructor(text?: string);
  text: string;
  bytes: Uint8Array;
  readonly length: number;
  readonly address: number;
  dispose(): void;
}

/** A string object in the ANSI code page, or of other bytes where an export says so, such as UTF-8. */
export class AnsiString {
  constructor(text?: string);
  /** The text, in the ANSI code page. */
  text: string;
  bytes: Uint8Array;
  readonly length: number;
  readonly address: number;
  dispose(): void;
}

/** A byte array. What it held is wiped when it changes and at its end. */
export class Bytes {
  constructor(data?: Uint8Array);
  data: Uint8Array;
  readonly length: number;
  readonly address: number;
  dispose(): void;
}

/** A thread object; without an identifier that of the calling thread. */
export class Thread {
  constructor(id?: number);
  readonly address: number;
  dispose(): void;
}

/** A loaded language module. */
export interface LanguageModule {
  readonly handle: number;
  /** A text of its string table; empty for none. */
  text(id: number): string;
  dispose(): void;
}

/** The number of string buffers that are not given back: 0 once every string is disposed of. */
export function buffersInUse(): number;

/** The number of objects that are not disposed of. */
export function objectsInUse(): number;
