// SPDX-License-Identifier: MIT
// LanguageTable.h: the languages of the user interface and their codes. Text only, no platform calls.
#pragma once

#include <string_view>

namespace application {

// The numbers are what hosts store and pass.
enum class LanguageId { DEU, ENG, FRA, NLD, ITA, ESP, PTG, SVE, NOR, CHS, KOR, JPN, BGR };

// Settings files hold these codes and language modules are named after them. "GER" is what some older
// files say for German; it is never written.
inline constexpr wchar_t kCodes[][4] = {L"DEU", L"ENG", L"FRA", L"GER", L"NLD", L"ITA", L"ESP",
                                        L"PTG", L"SVE", L"NOR", L"CHS", L"KOR", L"JPN", L"BGR"};

// The code of a language number; null if there is no such language. The alias among the codes shifts the
// positions, so they are not the numbers.
inline const wchar_t* CodeOf(unsigned int number) {
  switch (static_cast<LanguageId>(number)) {
    case LanguageId::DEU:
      return kCodes[0];
    case LanguageId::ENG:
      return kCodes[1];
    case LanguageId::FRA:
      return kCodes[2];
    case LanguageId::NLD:
      return kCodes[4];
    case LanguageId::ITA:
      return kCodes[5];
    case LanguageId::ESP:
      return kCodes[6];
    case LanguageId::PTG:
      return kCodes[7];
    case LanguageId::SVE:
      return kCodes[8];
    case LanguageId::NOR:
      return kCodes[9];
    case LanguageId::CHS:
      return kCodes[10];
    case LanguageId::KOR:
      return kCodes[11];
    case LanguageId::JPN:
      return kCodes[12];
    case LanguageId::BGR:
      return kCodes[13];
  }
  return nullptr;
}

// The number of an upper-case code; German for any other text.
inline int NumberOf(std::wstring_view code) {
  for (unsigned int number = 1; const wchar_t* const known = CodeOf(number); ++number) {
    if (code == known) return static_cast<int>(number);
  }
  return static_cast<int>(LanguageId::DEU);
}

}  // namespace application
