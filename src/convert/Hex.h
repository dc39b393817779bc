// SPDX-License-Identifier: MIT
// Hex.h: UTF-16 text as hexadecimal numbers, one for each code unit, separated by single blanks.
// Text only, no platform calls.
#pragma once

#include <cstddef>

namespace convert {

// The most digits a code unit has.
inline constexpr int kMostHexDigits = 4;

// Writes a code unit as "%X" does: upper case, no leading zeros. Gives the number of digits.
inline int FormatHex(wchar_t unit, wchar_t (&digits)[kMostHexDigits]) {
  int count = 1;
  for (unsigned int rest = unit >> 4; rest != 0; rest >>= 4) ++count;
  for (int i = count; i > 0; unit >>= 4) digits[--i] = L"0123456789ABCDEF"[unit & 0xF];
  return count;
}

// Cuts a text at single blanks, from the left, and hands over each piece (start, length). The first
// empty piece ends the text: a leading or a trailing blank, or the second of two in a row.
template <class Visit>
void ForEachHexPiece(const wchar_t* text, Visit visit) {
  for (const wchar_t* start = text;;) {
    const wchar_t* end = start;
    while (*end && *end != L' ') ++end;
    if (end == start) return;
    visit(start, static_cast<std::size_t>(end - start));
    if (!*end) return;
    start = end + 1;
  }
}

}  // namespace convert
