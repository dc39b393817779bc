// SPDX-License-Identifier: MIT
// CipherText.h: cipher bytes as text. Free of the platform.
#pragma once

#include <cstddef>

namespace crypt {

/// Writes two upper-case hexadecimal digits for each byte; gives the end of what was written.
template <class Char>
Char* WriteHex(const unsigned char* bytes, std::size_t count, Char* out) noexcept {
  constexpr char kDigits[] = "0123456789ABCDEF";
  for (std::size_t i = 0; i < count; ++i) {
    *out++ = static_cast<Char>(kDigits[bytes[i] >> 4]);
    *out++ = static_cast<Char>(kDigits[bytes[i] & 15]);
  }
  return out;
}

/// The characters that WriteDecimal writes.
inline std::size_t DecimalLength(const unsigned char* bytes, std::size_t count) noexcept {
  std::size_t length = count;
  for (std::size_t i = 0; i < count; ++i) {
    length += static_cast<std::size_t>(bytes[i] >= 10) + static_cast<std::size_t>(bytes[i] >= 100);
  }
  return length;
}

/// Writes the decimal value of each byte, 1 to 3 digits, with nothing between them; gives the end.
template <class Char>
Char* WriteDecimal(const unsigned char* bytes, std::size_t count, Char* out) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned value = bytes[i];
    if (value >= 100) *out++ = static_cast<Char>('0' + value / 100);
    if (value >= 10) *out++ = static_cast<Char>('0' + value / 10 % 10);
    *out++ = static_cast<Char>('0' + value % 10);
  }
  return out;
}

/// The value of a hexadecimal digit of either case; 16 for any other character.
constexpr unsigned HexDigit(wchar_t one) noexcept {
  if (one >= L'0' && one <= L'9') return static_cast<unsigned>(one - L'0');
  const unsigned letter = (static_cast<unsigned>(one) | 0x20u) - L'a';
  return letter < 6 ? letter + 10 : 16;
}

}  // namespace crypt
