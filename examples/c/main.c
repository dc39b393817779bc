// SPDX-License-Identifier: MIT
// A host in C: it finds its settings file, reads and saves its language, counts its starts, encrypts a text,
// and binds one export by ordinal.
#include <ZERATools/Objects.h>
#include <stdio.h>

// The place of the settings file. On the very first start there is no file yet; the path is the one in the
// user's data folder then, and the write check makes its folders.
static int find_settings(ZERA_WSTRING* settings) {
  const int exists = ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(NULL, settings);
  wchar_t name[MAX_PATH];
  ZERA_TOOLS_FILE_GET_NAME_EXT_UC(zera_wstring_text(settings), name, MAX_PATH);
  printf("settings file: %ls, %s\n", name, exists ? "found" : "new");
  return exists || ZERA_TOOLS_FILE_CHECK_WRITE_UC(zera_wstring_text(settings));
}

// Printable cipher text, for a settings file. It hides a text from a casual reader, no more.
static void keep_licence(const wchar_t* file) {
  ZERA_WSTRING plain, cipher;
  zera_wstring_make(&plain);
  zera_wstring_make(&cipher);
  if (zera_wstring_set(&plain, L"licence 4711") &&
      ZERA_TOOLS_ENC_STRING_L_UC(L"pass phrase", &plain, &cipher) > 0) {
    ZERA_TOOLS_WRITE_STRING_UC(L"Licence", L"Text", file, zera_wstring_text(&cipher));
    printf("stored: %ls\n", zera_wstring_text(&cipher));
    ZERA_TOOLS_DEC_STRING_UC(L"pass phrase", zera_wstring_text(&cipher), &plain);
    printf("read:   %ls\n", zera_wstring_text(&plain));
  }
  zera_wstring_free(&cipher);
  zera_wstring_free(&plain);
}

int main(void) {
  ZERA_WSTRING settings;
  zera_wstring_make(&settings);
  if (!find_settings(&settings)) {
    fprintf(stderr, "there is no place for settings\n");
    return 1;
  }
  const wchar_t* const file = zera_wstring_text(&settings);

  // German, the default, at the first start; Italian from the next one on.
  printf("language: %d\n", ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(file));
  ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(4, file);

  // A number with its default and its limits.
  const int starts = ZERA_TOOLS_READ_INT_UC(L"Program", L"Starts", file, 0, 0, 1000000) + 1;
  ZERA_TOOLS_WRITE_INT_UC(L"Program", L"Starts", file, starts);
  printf("start number %d\n", starts);

  // Text of any language: what the file's code page cannot express is kept beside it as UTF-8.
  wchar_t user[64];
  ZERA_TOOLS_WRITE_STRING_UC(L"User", L"Name", file, L"\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2");
  ZERA_TOOLS_READ_STRING_UC(L"User", L"Name", file, L"", user, sizeof user / sizeof *user);
  printf("name kept: %s\n", wcscmp(user, L"\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2") == 0 ? "yes" : "no");

  keep_licence(file);

  // The same export by its number, as hosts bind that load the library when they need it.
  typedef double(__cdecl * RoundDouble)(double value, int decimals);
  const HMODULE library = GetModuleHandleW(L"ZERATools.dll");
  const RoundDouble round_double =
      (RoundDouble)(void*)GetProcAddress(library, MAKEINTRESOURCEA(ZERA_TOOLS_ROUND_DOUBLE_ORDINAL));
  printf("2.345 in two decimals: %.2f\n", round_double(2.345, 2));

  zera_wstring_free(&settings);
  printf("buffers left: %ld\n", zera_string_buffers_in_use());
  return 0;
}
