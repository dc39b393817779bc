// SPDX-License-Identifier: MIT
// ModulePath.h: the full path of a module, as far as a buffer on the stack holds it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>

namespace application {

template <std::size_t capacity>
class ModulePath {
 public:
  // Null stands for the executable of the process. The path is empty if it cannot be read.
  explicit ModulePath(HMODULE module) {
    length_ = ::GetModuleFileNameW(module, text_, capacity);
    if (length_ >= capacity) length_ = capacity - 1;  // cut off by the platform
    text_[length_] = 0;
  }

  std::wstring_view view() const { return {text_, length_}; }
  bool empty() const { return length_ == 0; }
  // The path without its last `count` characters, as far as it has them.
  std::wstring_view Without(std::size_t count) const {
    return {text_, length_ < count ? 0 : length_ - count};
  }

 private:
  std::size_t length_;
  wchar_t text_[capacity];
};

}  // namespace application
