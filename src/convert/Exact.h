// SPDX-License-Identifier: MIT
// Exact.h: results whose length is known before they are written, straight into a buffer of that length.
#pragma once

#include <afx.h>

#include <cstdint>

#include "base/TextLength.h"

namespace convert {

// The longest text that a string object holds.
inline constexpr std::size_t kLongestText = 0x7FFFFFEF;

// A text that is read while a result is written: where it lies in the result's own buffer, a copy of it. A
// null text is an empty one.
template <class Char>
class Source {
 public:
  template <class Result>
  Source(const Char* text, const CStringT<Result>& result) : text_(text), length_(0) {
    if (!text) return;
    length_ = base::TextLength(text);
    const auto address = [](const void* at) { return reinterpret_cast<std::uintptr_t>(at); };
    if (address(text) > address(result.GetString() + result.GetAllocLength()) ||
        address(text + length_) < address(result.GetString())) {
      return;
    }
    copy_.SetString(text, static_cast<int>(length_));
    text_ = copy_.GetString();
  }

  const Char* begin() const noexcept { return text_; }
  const Char* end() const noexcept { return text_ + length_; }
  std::size_t length() const noexcept { return length_; }

 private:
  const Char* text_;
  std::size_t length_;
  CStringT<Char> copy_;
};

// Lets `write` fill a buffer of `length` characters.
template <class Char, class Write>
void StoreExactly(CStringT<Char>& result, std::size_t length, Write write) {
  if (length > kLongestText) AfxThrowMemoryException();
  if (length == 0) {
    result.Empty();
    return;
  }
  write(result.GetBuffer(static_cast<int>(length)));
  result.ReleaseBufferSetLength(static_cast<int>(length));
}

}  // namespace convert
