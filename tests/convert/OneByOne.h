// SPDX-License-Identifier: MIT
// OneByOne.h: the conversions written down plainly, character by character, each character by a platform call
// of its own. The library moves blocks and remembers what it asked for; this is what it must agree with.
#pragma once

#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace one_by_one {

// What the signs become under a multi-byte code page of the C runtime.
struct Signs {
  int page;
  const char* micro;
  const char* degree;       // of UTF-16 text
  const char* latinDegree;  // of Latin-1 text
  bool drops;               // a degree sign drops what stands before it
};

inline const Signs kSigns[] = {
    {0, "\xB5", "\xB0", "\xB0", false},
    {932, "\x83\xCA", "\x81\x8B", "\x81\x8B", true},
    {936, "\xA6\xCC", "\xA1\xE3", "\xA1\xE3", true},
    {949, "\xA5\xEC", "\xA1\xC6", "\xA1\xC6", true},
    {950, "\xA3\x67", "\xA2\x58", "\xA2\x58", true},
    {874, "u", "", "deg", false},
    {1252, "u", "deg", "deg", false},
};

inline std::string Ansi(wchar_t one) {
  const wchar_t text[] = {one, 0};
  char bytes[8];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
  return {bytes, static_cast<std::size_t>(size - 1)};
}

inline std::wstring Wide(char one) {
  const char text[] = {one, 0};
  wchar_t units[8];
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text, -1, units, 8);
  return {units, static_cast<std::size_t>(size - 1)};
}

inline std::string UcToMbc(const std::wstring& text, const Signs& signs) {
  std::string result;
  for (const wchar_t one : text) {
    if (one == 0xB0 && signs.drops) result.clear();
    result += one == 0xB0 ? signs.degree : one == 0xB5 ? signs.micro : Ansi(one);
  }
  return result;
}

inline std::string Char8ToMbc(const std::string& text, const Signs& signs) {
  std::string result;
  for (const char one : text) {
    if (one == '\xB0' && signs.drops) result.clear();
    result += one == '\xB0' ? signs.latinDegree : one == '\xB5' ? signs.micro : std::string(1, one);
  }
  return result;
}

inline std::wstring Char8ToUc(const std::string& text) {
  std::wstring result;
  for (const char one : text) {
    result += one == '\xB0' ? L"\xB0" : one == '\xB5' ? L"\xB5" : Wide(one);
  }
  return result;
}

inline std::wstring UcToHex(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t one : text) {
    wchar_t digits[8];
    ::_snwprintf(digits, 8, L"%X", static_cast<unsigned>(one));
    if (!result.empty()) result += L' ';
    result += digits;
  }
  return result;
}

inline std::wstring HexToUc(std::wstring text) {
  std::wstring result;
  while (!text.empty()) {
    const std::size_t blank = text.find(L' ');
    const std::wstring piece = text.substr(0, blank);
    if (piece.empty()) break;
    unsigned number = 0;
    // The C runtime's; the usual name is the toolchain's own here, which has another idea of long numbers.
    const bool read = ::_snwscanf(piece.c_str(), piece.size(), L"%X", &number) == 1;
    result += read ? static_cast<wchar_t>(number) : L'\0';
    text.erase(0, blank == text.npos ? blank : blank + 1);
  }
  return result;
}

}  // namespace one_by_one
