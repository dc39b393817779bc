// SPDX-License-Identifier: MIT
// Companion.h: the keys beside a text key that carry what the file's code page cannot.
#pragma once

#include <afx.h>
#include <wchar.h>

namespace profile {

inline constexpr wchar_t kUtf8Suffix[] = L"_utf8";
inline constexpr wchar_t kHexSuffix[] = L"_UC";

// The name of a key's companion.
CStringW CompanionKey(const wchar_t* key, const wchar_t* suffix);

// The value's UTF-8 bytes, each as the character that the ANSI code page has for it: written to an 8-bit
// file, the platform turns them back into those bytes. Equal to the value if that is ASCII.
CStringW ToUtf8Companion(const wchar_t* value);

// ASCII needs no companion under any code page, and no conversion to see that. A null value is an empty one.
inline bool IsAscii(const wchar_t* value) {
  while (value && *value && *value < 0x80) ++value;
  return !value || !*value;
}

// Whether a value needs its companion; a null value is an empty one.
inline bool Differs(const CStringW& companion, const wchar_t* value) {
  return ::wcscmp(companion, value ? value : L"") != 0;
}

// The way back.
CStringW FromUtf8Companion(const wchar_t* stored);

}  // namespace profile
