// SPDX-License-Identifier: MIT
// Numbers.h: numbers in settings files, once for both character types.
#pragma once

#include <string_view>

#include "EnglishNumbers.h"
#include "Platform.h"

namespace profile {

// Longer texts are cut by the platform.
inline constexpr DWORD kNumberSize = 256;

// "%.10f" of the largest double has 321 characters.
inline constexpr std::size_t kFormattedSize = 352;

// The minimum goes first, so it wins over a maximum below it; a NaN passes, being neither.
template <class Number>
constexpr Number Clamp(Number value, Number minimum, Number maximum) {
  if (value < minimum) return minimum;
  if (value > maximum) return maximum;
  return value;
}

// The value of a key by `convert`, clamped; the default as it is when the key is missing or empty.
template <class Char, class Number, class Bound, class Convert>
Number ReadNumber(const Char* section, const Char* key, const Char* file, Number defaultValue, Bound minimum,
                  Bound maximum, Convert convert) {
  Char text[kNumberSize] = {};
  if (Platform<Char>::Read(section, key, Platform<Char>::kEmpty, text, kNumberSize, file) == 0) {
    return defaultValue;
  }
  return static_cast<Number>(Clamp<Bound>(convert(text), minimum, maximum));
}

template <class Char>
int ReadInt(const Char* section, const Char* key, const Char* file, int defaultValue, int minimum,
            int maximum) {
  return ReadNumber(section, key, file, defaultValue, minimum, maximum, &Platform<Char>::ToInt);
}

template <class Char>
unsigned int ReadUnsigned(const Char* section, const Char* key, const Char* file, unsigned int defaultValue,
                          unsigned int minimum, unsigned int maximum) {
  return ReadNumber(section, key, file, defaultValue, minimum, maximum, &Platform<Char>::ToUnsigned);
}

// Compared as 32-bit numbers, so that 65536 is above every maximum.
template <class Char>
WORD ReadWord(const Char* section, const Char* key, const Char* file, WORD defaultValue, WORD minimum,
              WORD maximum) {
  return ReadNumber<Char, WORD, unsigned int>(section, key, file, defaultValue, minimum, maximum,
                                              &Platform<Char>::ToUnsigned);
}

template <class Char>
double EnglishToDouble(const Char* text) {
  const EnglishNumbers<Char> english;
  return Platform<Char>::ToDouble(text);
}

template <class Char>
double ReadDouble(const Char* section, const Char* key, const Char* file, double defaultValue, double minimum,
                  double maximum) {
  return ReadNumber(section, key, file, defaultValue, minimum, maximum, &EnglishToDouble<Char>);
}

// Clamped in double precision and narrowed at the end.
inline float ReadFloat(const wchar_t* section, const wchar_t* key, const wchar_t* file, float defaultValue,
                       float minimum, float maximum) {
  return ReadNumber<wchar_t, float, double>(section, key, file, defaultValue, minimum, maximum,
                                            &EnglishToDouble<wchar_t>);
}

template <class Char>
using Text = std::basic_string_view<Char>;

// The digits and the sign of a whole number, with the terminator.
inline constexpr std::size_t kMostDigits = 12;

// Writes what the C runtime writes for "%i" and "%u".
template <class Char, class Whole>
Text<Char> FormatWhole(Char (&text)[kMostDigits], Whole value) {
  Char* const end = text + kMostDigits - 1;
  Char* start = end;
  const bool negative = value < Whole(0);
  *end = Char(0);
  auto rest = negative ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
  do {
    *--start = static_cast<Char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (negative) *--start = Char('-');
  return {start, static_cast<std::size_t>(end - start)};
}

// int or unsigned int
template <class Char, class Whole>
int WriteWhole(const Char* section, const Char* key, const Char* file, Whole value) {
  Char digits[kMostDigits];
  const Char* const text = FormatWhole(digits, value).data();
  return Platform<Char>::Write(section, key, text, file);
}

// Ten decimals and a point. The locale is restored on return, before the text goes anywhere; the wide
// form of the locale functions serves both character types.
template <class Char>
void FormatDouble(Char (&text)[kFormattedSize], double value) {
  const EnglishNumbers<wchar_t> english;
  Platform<Char>::Format(text, kFormattedSize, Platform<Char>::kDouble, value);
}

// The one floating-point writer: the plain variants convert their names and come here.
inline int WriteDouble(const wchar_t* section, const wchar_t* key, const wchar_t* file, double value) {
  wchar_t text[kFormattedSize];
  FormatDouble(text, value);
  return Platform<wchar_t>::Write(section, key, text, file);
}

}  // namespace profile
