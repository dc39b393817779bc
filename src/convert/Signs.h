// SPDX-License-Identifier: MIT
// Signs.h: how the degree and the micro sign are written in each multi-byte code page. Data only.
#pragma once

namespace convert {

// U+00B0 and U+00B5; in Latin-1 text the bytes have the same values.
inline constexpr wchar_t kDegree = 0xB0;
inline constexpr wchar_t kMicro = 0xB5;

// What is written for a sign.
struct Sign {
  const char* bytes;
  // Everything before the sign is dropped.
  bool dropsTextBefore;
};

// The signs in one code page of the C runtime; 0 is what it calls a locale without a multi-byte one.
struct Signs {
  int codePage;
  Sign micro;
  Sign degree;
};

// KEPT FOR HOSTS: a degree sign under a double-byte code page drops the text before it. Hosts that show
// or store what they got so far would see other texts if it were kept.
inline constexpr Signs kSigns[] = {
    {0, {"\xB5", false}, {"\xB0", false}},          {932, {"\x83\xCA", false}, {"\x81\x8B", true}},
    {936, {"\xA6\xCC", false}, {"\xA1\xE3", true}}, {949, {"\xA5\xEC", false}, {"\xA1\xC6", true}},
    {950, {"\xA3\x67", false}, {"\xA2\x58", true}},
};

inline constexpr Signs kOtherSigns = {-1, {"u", false}, {"deg", false}};

constexpr Signs SignsOfLatin1(int codePage) {
  for (const Signs& signs : kSigns) {
    if (signs.codePage == codePage) return signs;
  }
  return kOtherSigns;
}

// KEPT FOR HOSTS: under the Thai code page the degree sign of UTF-16 text is dropped, while that of
// Latin-1 text becomes "deg". Hosts compare texts that older versions wrote.
constexpr Signs SignsOfUtf16(int codePage) {
  Signs signs = SignsOfLatin1(codePage);
  if (codePage == 874) signs.degree = {"", false};
  return signs;
}

}  // namespace convert
