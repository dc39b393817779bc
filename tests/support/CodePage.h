// SPDX-License-Identifier: MIT
// CodePage.h: text in letters of the ANSI code page that a test runs under.
#pragma once

#include <windows.h>

#include <string>

#include "TempFolder.h"

namespace test {

/// Text that one code page has and ASCII has not.
struct LocalText {
  UINT page;
  std::wstring wide;
  std::string bytes;  ///< in the code page; where it can, a second byte has a backslash's value
  std::string utf8;
  std::wstring small, capital;  ///< one letter in both cases; empty where letters have no case
};

/// What the ANSI code page has. Windows has more code pages than stand here; the western text is for those.
inline const LocalText& Local() {
  static const LocalText texts[] = {
      {1252, L"Gr\u00FC\u00DF\u20AC", "Gr\xFC\xDF\x80", "Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC", L"\u00E4",
       L"\u00C4"},
      {1250, L"\u017Dlu\u0165", "\x8Elu\x9D", "\xC5\xBDlu\xC5\xA5", L"\u017E", L"\u017D"},
      {1251, L"\u0436\u042F\u2116", "\xE6\xDF\xB9", "\xD0\xB6\xD0\xAF\xE2\x84\x96", L"\u0436", L"\u0416"},
      {1253, L"\u03A9\u03C3\u03AC", "\xD9\xF3\xDC", "\xCE\xA9\xCF\x83\xCE\xAC", L"\u03C9", L"\u03A9"},
      {874, L"\u0E44\u0E17\u0E22", "\xE4\xB7\xC2", "\xE0\xB9\x84\xE0\xB8\x97\xE0\xB8\xA2", L"", L""},
      {932, L"\u8868\u30BD", "\x95\x5C\x83\x5C", "\xE8\xA1\xA8\xE3\x82\xBD", L"\uFF4C", L"\uFF2C"},
      {936, L"\u4E57\u4E2D", "\x81\x5C\xD6\xD0", "\xE4\xB9\x97\xE4\xB8\xAD", L"\u03C9", L"\u03A9"},
      {949, L"\uD55C\uAE00", "\xC7\xD1\xB1\xDB", "\xED\x95\x9C\xEA\xB8\x80", L"\u03C9", L"\u03A9"},
      {950, L"\u529F\u4E2D", "\xA5\x5C\xA4\xA4", "\xE5\x8A\x9F\xE4\xB8\xAD", L"\u03C9", L"\u03A9"},
      {CP_UTF8, L"\u8868\u00FC", "\xE8\xA1\xA8\xC3\xBC", "\xE8\xA1\xA8\xC3\xBC", L"\u0436", L"\u0416"},
  };
  for (const LocalText& text : texts) {
    if (text.page == ::GetACP()) return text;
  }
  return texts[0];
}

/// What comes back from a settings file of a text's UTF-8 bytes: they are stored by way of the code page, and
/// those that form no characters of a double-byte code page are lost.
inline std::string Kept(const std::string& utf8) {
  return Ansi(Wide(utf8));
}
inline std::wstring FromUtf8Bytes(const std::string& utf8) {
  std::wstring text(utf8.size(), L'\0');
  text.resize(static_cast<std::size_t>(::MultiByteToWideChar(
      CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), text.data(), static_cast<int>(text.size()))));
  return text;
}

/// Whether a settings text needs a companion: all but ASCII does, unless UTF-8 is the ANSI code page itself.
inline bool NeedsCompanion(const std::wstring& text) {
  bool ascii = true;
  for (const wchar_t unit : text) ascii = ascii && unit < 0x80;
  return !ascii && ::GetACP() != CP_UTF8;
}

}  // namespace test
