// SPDX-License-Identifier: MIT
// zera/settings_text.hpp: the text of a settings file in memory.
#pragma once

#include <cstddef>
#include <string>

#include "../../ZERATools.h"
#include "argument.hpp"

namespace zera {

namespace detail {

template <class Char>
struct line_exports;

template <>
struct line_exports<wchar_t> {
  using text = const wchar_t*;
  static int section(text name, wchar_t* at, std::size_t room, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_SECTION_UC(name, at, room, n);
  }
  static int put(text key, wchar_t* at, std::size_t room, text value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_STRING_UC(key, at, room, value, n);
  }
  static int put(text key, wchar_t* at, std::size_t room, int value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_INT_UC(key, at, room, value, n);
  }
  static int put(text key, wchar_t* at, std::size_t room, unsigned int value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_UINT_UC(key, at, room, value, n);
  }
  static int put(text key, wchar_t* at, std::size_t room, double value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_DOUBLE_UC(key, at, room, value, n);
  }
  static int put(text key, wchar_t* at, std::size_t room, float value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_FLOAT_UC(key, at, room, value, n);
  }
};

template <>
struct line_exports<char> {
  using text = const char*;
  static int section(text name, char* at, std::size_t room, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_SECTION(name, at, room, n);
  }
  static int put(text key, char* at, std::size_t room, text value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_STRING(key, at, room, value, n);
  }
  static int put(text key, char* at, std::size_t room, int value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_INT(key, at, room, value, n);
  }
  static int put(text key, char* at, std::size_t room, unsigned int value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_UINT(key, at, room, value, n);
  }
  static int put(text key, char* at, std::size_t room, double value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_DOUBLE(key, at, room, value, n);
  }
  static int put(text key, char* at, std::size_t room, float value, std::size_t* n) {
    return ZERA_TOOLS_BUFWRITE_FLOAT(key, at, room, value, n);
  }
};

}  // namespace detail

/// Puts the lines of a settings file together, in a buffer that has room for every line.
template <class Char>
class basic_settings_text {
  using exports = detail::line_exports<Char>;
  using in = basic_argument<Char>;

 public:
  /// Adds the line of a section. As #ZERA_TOOLS_BUFWRITE_SECTION_UC and #ZERA_TOOLS_BUFWRITE_SECTION.
  basic_settings_text& section(const in& name) {
    return line(name.size() + 4, [&](Char* at, std::size_t room, std::size_t* count) {
      exports::section(name.get(), at, room, count);
    });
  }
  /// Adds the line of a number. As #ZERA_TOOLS_BUFWRITE_INT_UC, #ZERA_TOOLS_BUFWRITE_UINT_UC,
  /// #ZERA_TOOLS_BUFWRITE_DOUBLE_UC and #ZERA_TOOLS_BUFWRITE_FLOAT_UC, and their plain partners.
  basic_settings_text& set(const in& key, int value) { return number(key, value); }
  basic_settings_text& set(const in& key, unsigned int value) { return number(key, value); }
  basic_settings_text& set(const in& key, double value) { return number(key, value); }
  basic_settings_text& set(const in& key, float value) { return number(key, value); }
  /// Adds the line of a text, and that of its companion where it needs one. As #ZERA_TOOLS_BUFWRITE_STRING_UC
  /// and #ZERA_TOOLS_BUFWRITE_STRING.
  basic_settings_text& set(const in& key, const in& value) {
    // The text, and its UTF-8 bytes, at most three a character, under a longer key.
    return line(2 * key.size() + 4 * value.size() + 16, [&](Char* at, std::size_t room, std::size_t* count) {
      exports::put(key.get(), at, room, value.get(), count);
    });
  }

  /// The lines so far.
  [[nodiscard]] const std::basic_string<Char>& str() const noexcept { return text_; }

 private:
  template <class Number>
  basic_settings_text& number(const in& key, Number value) {
    // The longest number has 309 digits before the point and 10 behind it.
    return line(key.size() + 330, [&](Char* at, std::size_t room, std::size_t* count) {
      exports::put(key.get(), at, room, value, count);
    });
  }

  template <class Call>
  basic_settings_text& line(std::size_t room, Call call) {
    const std::size_t before = text_.size();
    std::size_t count = 0;
    text_.resize(before + room);
    call(text_.data() + before, room, &count);
    text_.resize(before + count);
    return *this;
  }

  std::basic_string<Char> text_;
};

using settings_text = basic_settings_text<wchar_t>;
using ansi_settings_text = basic_settings_text<char>;

}  // namespace zera
