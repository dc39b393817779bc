// SPDX-License-Identifier: MIT
// A small viewer in C++: it finds its settings file, speaks the language that the file names, keeps the zoom
// of its view within limits, counts its starts, and stores a text encrypted.
#include <ZERATools/zera.hpp>

#include <cstdio>
#include <string>

#include "texts.h"

// German texts are the program's own; every other language has a module beside it, freed at the end.
static std::wstring greeting(zera::language language) {
  const zera::language_module texts = zera::application::load_language(language);
  wchar_t text[100] = {};
  ::LoadStringW(texts.get(), TEXT_GREETING, text, 100);
  return text;
}

// Printable cipher text, for a settings file. It hides a text from a casual reader, no more.
static void keep_licence(const zera::settings& settings) {
  const auto licence = settings.section(L"Licence");
  if (const auto cipher = zera::crypt::encrypt(L"pass phrase", L"licence 4711"))
    licence.set(L"Text", *cipher);
  const std::wstring stored = licence.get(L"Text", L"");
  std::printf("stored: %ls\n", stored.c_str());
  if (const auto plain = zera::crypt::decrypt(L"pass phrase", stored))
    std::printf("read:   %ls\n", plain->c_str());
}

int main() {
  // Where this program keeps its settings. On the very first start there is no file yet; the path is the one
  // in the user's data folder then, and the write check makes its folders.
  const auto found = zera::application::settings_file();
  if (!found.exists && !zera::file::can_write(found.path)) {
    std::fprintf(stderr, "there is no place for settings\n");
    return 1;
  }
  std::printf("settings file: %ls, %s\n", zera::path::file(found.path).c_str(),
              found.exists ? "found" : "new");
  const zera::settings settings(found.path);

  // German, the default, at the first start; Italian from the next one on.
  const zera::language language = zera::application::language(found.path);
  std::printf("language: %d\n", static_cast<int>(language));
  std::printf("greeting: %ls\n", greeting(language).c_str());
  zera::application::save_language(zera::language::italian, found.path);

  // Numbers with their defaults and their limits.
  const auto view = settings.section(L"View");
  const double zoom = view.get(L"Zoom", 1.0, {0.1, 8.0});
  view.set(L"Zoom", zoom * 20);
  std::printf("zoom: %.1f\n", zoom);
  const auto program = settings.section(L"Program");
  const int starts = program.get(L"Starts", 0, {0, 1000000}) + 1;
  program.set(L"Starts", starts);
  std::printf("start number %d\n", starts);

  // Text of any language: what the file's code page cannot express is kept beside it as UTF-8.
  const std::wstring name = L"\u039b\u03ac\u03bc\u03c0\u03c1\u03bf\u03c2";
  settings.section(L"User").set(L"Name", name);
  std::printf("name kept: %s\n", settings.section(L"User").get(L"Name", L"") == name ? "yes" : "no");

  keep_licence(settings);
  std::printf("2.345 in two decimals: %.2f\n", zera::round(2.345, 2));
  std::printf("buffers left: %ld\n", zera_string_buffers_in_use());
  return 0;
}
