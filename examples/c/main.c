// SPDX-License-Identifier: MIT
// A host in C: a settings file beside the program, read and written, and one export bound by ordinal.
#include <ZERATools.h>
#include <stdio.h>

int main(void) {
  // "...\host.exe" becomes "...\host.ini".
  wchar_t settings[MAX_PATH];
  GetModuleFileNameW(NULL, settings, MAX_PATH);
  ZERA_TOOLS_FILE_REPLACE_EXT_UC(settings, MAX_PATH, L".ini");

  wchar_t name[MAX_PATH];
  ZERA_TOOLS_FILE_GET_NAME_EXT_UC(settings, name, MAX_PATH);
  printf("settings file: %ls\n", name);

  if (!ZERA_TOOLS_FILE_CHECK_WRITE_UC(settings)) {
    fprintf(stderr, "the folder cannot be written\n");
    return 1;
  }

  // A number with its default and its limits.
  const int starts = ZERA_TOOLS_READ_INT_UC(L"Program", L"Starts", settings, 0, 0, 1000000) + 1;
  ZERA_TOOLS_WRITE_INT_UC(L"Program", L"Starts", settings, starts);
  printf("start number %d\n", starts);

  // Text of any language: what the file's code page cannot express is kept beside it as UTF-8.
  wchar_t user[64];
  ZERA_TOOLS_WRITE_STRING_UC(L"User", L"Name", settings, L"\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2");
  ZERA_TOOLS_READ_STRING_UC(L"User", L"Name", settings, L"", user, sizeof user / sizeof *user);
  printf("name kept: %s\n", wcscmp(user, L"\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2") == 0 ? "yes" : "no");

  // The same export by its number, as hosts bind that load the library when they need it.
  typedef double(__cdecl * RoundDouble)(double value, int decimals);
  const HMODULE library = GetModuleHandleW(L"ZERATools.dll");
  const RoundDouble round_double =
      (RoundDouble)(void*)GetProcAddress(library, MAKEINTRESOURCEA(ZERA_TOOLS_ROUND_DOUBLE_ORDINAL));
  printf("2.345 in two decimals: %.2f\n", round_double(2.345, 2));
  return 0;
}
