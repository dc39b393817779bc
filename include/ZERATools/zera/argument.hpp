// SPDX-License-Identifier: MIT
// zera/argument.hpp: a text on its way into an export.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace zera {

/// A zero-terminated text for the length of a call. A pointer or a string is passed on as it is; a view is
/// copied, short ones without the heap. Functions take it as `argument` (UTF-16) or `ansi_argument`; hosts
/// pass their text and need not name it.
template <class Char>
class basic_argument {
 public:
  basic_argument(const Char* text) noexcept : text_(text) {}
  basic_argument(const std::basic_string<Char>& text) noexcept : text_(text.c_str()) {}
  basic_argument(std::basic_string_view<Char> text) {
    Char* copy = short_;
    if (text.size() >= short_room) {
      long_ = std::make_unique<Char[]>(text.size() + 1);
      copy = long_.get();
    }
    text.copy(copy, text.size());
    copy[text.size()] = 0;
    text_ = copy;
  }
  basic_argument(const basic_argument&) = delete;
  basic_argument& operator=(const basic_argument&) = delete;

  [[nodiscard]] const Char* get() const noexcept { return text_; }
  operator const Char*() const noexcept { return text_; }
  [[nodiscard]] std::size_t size() const noexcept {
    return text_ ? std::char_traits<Char>::length(text_) : 0;
  }

 private:
  static constexpr std::size_t short_room = 260;

  const Char* text_;
  std::unique_ptr<Char[]> long_;
  Char short_[short_room];
};

using argument = basic_argument<wchar_t>;
using ansi_argument = basic_argument<char>;

}  // namespace zera
