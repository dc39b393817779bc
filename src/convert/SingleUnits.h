// SPDX-License-Identifier: MIT
// SingleUnits.h: what the ANSI code page makes of single characters, asked once for each value that occurs.
//
// The conversions go character by character: a surrogate is no half of a pair here, and a lead byte is no
// half of a double-byte character. ASCII is the same in every ANSI code page and none of this business.
#pragma once

#include <afx.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

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

  // What is known of a unit without asking: null or a form without a length if nothing is.
  const Form<char>* Known(wchar_t unit) const {
    if (unit < kPageSize) return &latin_[unit % 0x80];
    const Page* const page = pages_ ? (*pages_)[unit / kPageSize] : nullptr;
    return page ? &page->forms[unit % kPageSize] : nullptr;
  }

  const Form<char>& operator[](wchar_t unit) {
    const Form<char>* const form = Known(unit);
    return form && form->known ? *form : Ask(unit);
  }

 private:
  static constexpr int kPageSize = 256;

  struct Page {
    Form<char> forms[kPageSize];
    Page* next;
  };

  const Form<char>& Ask(wchar_t unit);
  Form<char>& Place(wchar_t unit);

  // What most texts have beside ASCII. Pages for the other units are made as they are needed, and few calls
  // need one.
  Form<char> latin_[0x80] = {};
  std::optional<std::array<Page*, 0x10000 / kPageSize>> pages_;
  Page* made_ = nullptr;
};

// Bytes as UTF-16, the signs as the units of the same values.
class BytesToUtf16 {
 public:
  BytesToUtf16();

  const Form<wchar_t>* Known(char byte) const { return &forms_[byte & 0x7F]; }

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
