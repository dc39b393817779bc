// SPDX-License-Identifier: MIT
// LocationText.h: a path that is put together on the stack.
#pragma once

#include <cstddef>
#include <string_view>

namespace application {

// Room for the longest path of an application: a shell folder (at most 259 characters), what is taken
// from a module path of 520, and a few characters between and behind.
class LocationText {
 public:
  static constexpr std::size_t kShellFolder = 260;
  static constexpr std::size_t kModulePath = 520;

  LocationText() { text_[0] = 0; }

  LocationText& Append(std::wstring_view more) {
    std::char_traits<wchar_t>::copy(text_ + length_, more.data(), more.size());
    length_ += more.size();
    text_[length_] = 0;
    return *this;
  }

  operator const wchar_t*() const { return text_; }
  std::wstring_view view() const { return {text_, length_}; }

 private:
  std::size_t length_ = 0;
  wchar_t text_[kShellFolder + kModulePath + 20];
};

}  // namespace application
