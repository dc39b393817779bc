// SPDX-License-Identifier: MIT
// A host in C++: strings that the library fills, and a text that is stored encrypted.
#include <ZERATools.h>

#include <cstdio>

int main() {
  // Where this program keeps its settings. On the very first start there is no file yet; the path is
  // the one in the user's data folder then, and the write check makes its folders.
  CStringW settings;
  const bool exists = ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(nullptr, settings) != 0;
  if (!exists && !ZERA_TOOLS_FILE_CHECK_WRITE_UC(settings)) {
    std::fprintf(stderr, "there is no place for settings\n");
    return 1;
  }
  wchar_t name[MAX_PATH];
  ZERA_TOOLS_FILE_GET_NAME_EXT_UC(settings, name, MAX_PATH);
  std::printf("settings file: %ls, %s\n", name, exists ? "found" : "new");

  // UTF-16 to UTF-8 and back.
  CStringA utf8;
  ZERA_TOOLS_STRING_UC_TO_UTF8(L"25 \u00b0C", utf8);
  CStringW back;
  ZERA_TOOLS_STRING_UTF8_TO_UC(utf8, back);
  std::printf("UTF-8 bytes: %d, characters: %d\n", utf8.GetLength(), back.GetLength());

  // Printable cipher text, for a settings file. It hides a text from a casual reader, no more.
  CStringW cipher;
  CStringW plain;
  ZERA_TOOLS_ENC_STRING_L_UC(L"pass phrase", L"licence 4711", cipher);
  ZERA_TOOLS_WRITE_STRING_UC(L"Licence", L"Text", settings, cipher);
  wchar_t stored[256];
  ZERA_TOOLS_READ_STRING_UC(L"Licence", L"Text", settings, L"", stored, 256);
  ZERA_TOOLS_DEC_STRING_UC(L"pass phrase", stored, plain);
  std::printf("stored: %ls\nread:   %ls\n", stored, plain.GetString());
  return 0;
}
