// SPDX-License-Identifier: MIT
// SingleUnits.h: what the ANSI code page makes of single characters, asked once for each value that occurs.
//
// The conversions go character by character: a surrogate is no half of a pair here, and a lead byte is no
// half of a double-byte character. ASCII is the same in every ANSI code page and none of this business.
#pragma once

#include <afx.h>

#include <cstdint>
#include <cstring>

#include "Signs.h"

namespace convert {

// One character's other form, eight bytes that are written in one store.
template <class Char>
struct Form {
  // More than any code page has for one.
  static constexpr int kMost = 6 / sizeof(Char);

  Char text[kMost];
  std::uint8_t length;
  bool known;
};

// Code units in the ANSI code page, the signs as their table has them.
class UnitsToAnsi {
 public:
  explicit UnitsToAnsi(const Signs& signs);
  UnitsToAnsi(const UnitsToAnsi&) = delete;
  UnitsToAnsi& operator=(const UnitsToAnsi&) = delete;
  ~UnitsToAnsi();

  const Form<char>& operator[](wchar_t unit) {
    const Page* const page = pages_[unit / kPageSize];
    if (page && page->forms[unit % kPageSize].known) return page->forms[unit % kPageSize];
    return Ask(unit);
  }

 private:
  static constexpr int kPageSize = 256;

  struct Page {
    Form<char> forms[kPageSize];
    Page* next;
  };

  const Form<char>& Ask(wchar_t unit);

  // The first page is always in use; the others are made as they are needed.
  Page first_ = {};
  Page* made_ = nullptr;
  Page* pages_[0x10000 / kPageSize] = {&first_};
};

// Bytes as UTF-16, the signs as the units of the same values.
class BytesToUtf16 {
 public:
  BytesToUtf16();

  const Form<wchar_t>& operator[](char byte) {
    Form<wchar_t>& form = forms_[byte & 0x7F];
    if (!form.known) Ask(byte, form);
    return form;
  }

 private:
  static void Ask(char byte, Form<wchar_t>& form);

  Form<wchar_t> forms_[0x80] = {};
};

}  // namespace convert
