// SPDX-License-Identifier: MIT
// EnglishNumbers.h: a point as decimal separator, whatever the user's locale.
#pragma once

#include "Platform.h"

namespace profile {

// Sets the process's LC_NUMERIC to "english" while it lives and restores the former name on every way
// out. No lock is taken: another thread that formats or parses in that moment sees English rules. `Char`
// picks the form of the locale functions.
template <class Char>
class EnglishNumbers {
 public:
  EnglishNumbers() {
    const Char* const current = Platform<Char>::SetNumericLocale(nullptr);
    // Without a name to go back to nothing is switched.
    if (!current || Platform<Char>::Length(current) >= kMostName) return;
    Platform<Char>::Copy(kept_, kMostName, current);
    if (!kept_[0]) return;
    Platform<Char>::SetNumericLocale(Platform<Char>::kEnglish);
  }
  EnglishNumbers(const EnglishNumbers&) = delete;
  EnglishNumbers& operator=(const EnglishNumbers&) = delete;
  ~EnglishNumbers() {
    if (kept_[0]) Platform<Char>::SetNumericLocale(kept_);
  }

 private:
  // The C runtime's language, country and code page together have fewer characters.
  static constexpr std::size_t kMostName = 256;

  Char kept_[kMostName] = {};
};

}  // namespace profile
