// SPDX-License-Identifier: MIT
// WideText.h: a plain export's text argument as UTF-16.
#pragma once

#include <windows.h>

#include <cstdlib>

namespace frame {

// Converts from the ANSI code page into a buffer of its own on the stack; only a text longer than
// any path goes to the heap. A null pointer becomes an empty text: this is the one place that
// decides it for all plain exports.
class WideText {
 public:
  explicit WideText(const char* text);
  WideText(const WideText&) = delete;
  WideText& operator=(const WideText&) = delete;
  ~WideText() {
    if (text_ != fixed_) std::free(text_);
  }

  operator const wchar_t*() const noexcept { return text_; }

 private:
  static constexpr int kFixed = MAX_PATH;

  wchar_t* text_ = fixed_;
  wchar_t fixed_[kFixed + 1];
};

}  // namespace frame
