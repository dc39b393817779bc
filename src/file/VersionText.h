// SPDX-License-Identifier: MIT
// VersionText.h: a module's version as text. No platform calls.
#pragma once

#include <cstddef>
#include <cstdint>

namespace file {

// "a.b.c.d" of four 16-bit numbers, in the digits that every code page shares.
//
// KEPT FOR HOSTS: the first number is the product version's, the other three are the file version's.
// Hosts compare these texts with ones they stored.
template <class Char>
struct VersionText {
  static constexpr std::size_t kMost = 23;

  VersionText(std::uint32_t productHigh, std::uint32_t fileHigh, std::uint32_t fileLow) {
    Append(productHigh >> 16);
    text[length++] = Char('.');
    Append(fileHigh & 0xFFFF);
    text[length++] = Char('.');
    Append(fileLow >> 16);
    text[length++] = Char('.');
    Append(fileLow & 0xFFFF);
    text[length] = Char(0);
  }

  Char text[kMost + 1];
  std::size_t length = 0;

 private:
  void Append(std::uint32_t number) {
    Char reversed[5];
    int used = 0;
    do {
      reversed[used++] = static_cast<Char>('0' + number % 10);
      number /= 10;
    } while (number != 0);
    while (used > 0) text[length++] = reversed[--used];
  }
};

}  // namespace file
