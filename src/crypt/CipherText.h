// SPDX-License-Identifier: MIT
// CipherText.h: cipher bytes as text. Free of the platform.
#pragma once

#include <emmintrin.h>

#include <cstddef>

namespace crypt {

/// How many bytes, or pieces of two digits, are handled together.
inline constexpr std::size_t kTogether = 8;

/// Writes sixteen digits for eight bytes.
template <class Char>
void WriteHexTogether(const unsigned char* bytes, Char* out) noexcept {
  const __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
  const __m128i low = _mm_and_si128(block, _mm_set1_epi8(0xF));
  const __m128i high = _mm_and_si128(_mm_srli_epi16(block, 4), _mm_set1_epi8(0xF));
  const __m128i values = _mm_unpacklo_epi8(high, low);
  const __m128i letters = _mm_cmpgt_epi8(values, _mm_set1_epi8(9));
  const __m128i digits = _mm_add_epi8(_mm_add_epi8(values, _mm_set1_epi8('0')),
                                      _mm_and_si128(letters, _mm_set1_epi8('A' - '9' - 1)));
  auto* const to = reinterpret_cast<__m128i*>(out);
  if constexpr (sizeof(Char) == 1) {
    _mm_storeu_si128(to, digits);
  } else {
    _mm_storeu_si128(to, _mm_unpacklo_epi8(digits, _mm_setzero_si128()));
    _mm_storeu_si128(to + 1, _mm_unpackhi_epi8(digits, _mm_setzero_si128()));
  }
}

/// Writes two upper-case hexadecimal digits for each byte; gives the end of what was written.
template <class Char>
Char* WriteHex(const unsigned char* bytes, std::size_t count, Char* out) noexcept {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::size_t i = 0;
  for (; i + kTogether <= count; i += kTogether, out += 2 * kTogether) WriteHexTogether(bytes + i, out);
  for (; i < count; ++i) {
    *out++ = static_cast<Char>(kDigits[bytes[i] >> 4]);
    *out++ = static_cast<Char>(kDigits[bytes[i] & 15]);
  }
  return out;
}

/// Reads eight bytes from sixteen digits of either case. False, with nothing written, if a character is no
/// digit.
inline bool ReadHexTogether(const wchar_t* text, unsigned char* bytes) noexcept {
  const auto* const from = reinterpret_cast<const __m128i*>(text);
  // What is no byte becomes 0 or 0xFF here, neither of which is a digit.
  const __m128i block = _mm_packus_epi16(_mm_loadu_si128(from), _mm_loadu_si128(from + 1));
  const auto upTo = [](__m128i values, char most) {
    return _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(most)), values);
  };
  const __m128i numbers = _mm_sub_epi8(block, _mm_set1_epi8('0'));
  const __m128i letters = _mm_sub_epi8(_mm_or_si128(block, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
  const __m128i areNumbers = upTo(numbers, 9), areLetters = upTo(letters, 5);
  if (_mm_movemask_epi8(_mm_or_si128(areNumbers, areLetters)) != 0xFFFF) return false;
  const __m128i values = _mm_or_si128(_mm_and_si128(areNumbers, numbers),
                                      _mm_and_si128(areLetters, _mm_add_epi8(letters, _mm_set1_epi8(10))));
  // In each 16 bits the first digit is the low byte.
  const __m128i pairs = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8));
  const __m128i read = _mm_and_si128(pairs, _mm_set1_epi16(0xFF));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), _mm_packus_epi16(read, read));
  return true;
}

/// Writes a unit for each byte.
inline void Widen(const unsigned char* bytes, std::size_t count, wchar_t* out) noexcept {
  std::size_t i = 0;
  for (; i + kTogether <= count; i += kTogether) {
    const __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_unpacklo_epi8(block, _mm_setzero_si128()));
  }
  for (; i < count; ++i) out[i] = bytes[i];
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

}  // namespace crypt
