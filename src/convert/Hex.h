// SPDX-License-Identifier: MIT
// Hex.h: UTF-16 text as hexadecimal numbers, one for each code unit, separated by single blanks.
// Text only, no platform calls.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace convert {

// A byte's two digits, a blank and a NUL, the first in the lowest 16 bits: one store writes all four.
constexpr auto HexBytes() {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::array<std::uint64_t, 0x100> bytes = {};
  for (unsigned i = 0; i < bytes.size(); ++i) {
    bytes[i] =
        std::uint64_t(kDigits[i >> 4]) | std::uint64_t(kDigits[i & 0xF]) << 16 | std::uint64_t(' ') << 32;
  }
  return bytes;
}
inline constexpr auto kHexBytes = HexBytes();

// The number of digits of a code unit as "%X" writes it: upper case, no leading zeros.
constexpr int HexLength(wchar_t unit) {
  return 1 + (unit > 0xF) + (unit > 0xFF) + (unit > 0xFFF);
}

// Writes these digits and a blank, and gives the end. `to` has room for kHexRoom characters.
inline constexpr int kHexRoom = 6;
inline wchar_t* FormatHex(wchar_t unit, wchar_t* to) {
  const auto put = [&to](unsigned byte, bool oneDigit, int count) {
    const std::uint64_t text = kHexBytes[byte] >> (oneDigit ? 16 : 0);
    std::memcpy(to, &text, sizeof text);
    to += oneDigit ? count - 1 : count;
  };
  if (unit > 0xFF) put(unit >> 8, unit <= 0xFFF, 2);
  put(unit & 0xFF, unit <= 0xF, 3);
  return to;
}

// The value of a hexadecimal digit of either case; 16 for any other character.
constexpr unsigned HexDigit(wchar_t one) noexcept {
  if (one >= L'0' && one <= L'9') return static_cast<unsigned>(one - L'0');
  const unsigned letter = (static_cast<unsigned>(one) | 0x20u) - L'a';
  return letter < 6 ? letter + 10 : 16;
}

// Reads a piece that is nothing but up to eight hexadecimal digits. False for any other.
inline bool ReadPlainHex(const wchar_t* piece, std::size_t length, unsigned int& number) {
  constexpr std::size_t kMost = 8;
  if (length == 0 || length > kMost) return false;
  number = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const unsigned digit = HexDigit(piece[i]);
    if (digit > 15) return false;
    number = number << 4 | digit;
  }
  return true;
}

// Cuts a text at single blanks, from the left, and hands over each piece (start, length). The first
// empty piece ends the text: a leading or a trailing blank, or the second of two in a row.
template <class Visit>
void ForEachHexPiece(const wchar_t* text, const wchar_t* textEnd, Visit visit) {
  for (const wchar_t* start = text;;) {
    const wchar_t* end = start;
    while (end < textEnd && *end != L' ') ++end;
    if (end == start) return;
    visit(start, static_cast<std::size_t>(end - start));
    if (end == textEnd) return;
    start = end + 1;
  }
}

}  // namespace convert
