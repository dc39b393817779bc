// SPDX-License-Identifier: MIT
// Shown.h: texts as reports of tests show them.
#pragma once

#include <cstdio>
#include <string>
#include <type_traits>

namespace test {

/// Text as it is shown in a report; what is not printable becomes its number.
template <class Char>
std::string Shown(const std::basic_string<Char>& text) {
  std::string shown = "\"";
  for (const Char one : text) {
    const auto unit = static_cast<unsigned>(static_cast<std::make_unsigned_t<Char>>(one));
    if (unit >= 0x20 && unit < 0x7F) {
      shown += static_cast<char>(unit);
    } else {
      char number[16];
      std::snprintf(number, sizeof number, "<%X>", unit);
      shown += number;
    }
  }
  return shown + "\"";
}

}  // namespace test
