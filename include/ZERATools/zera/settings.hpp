// SPDX-License-Identifier: MIT
// zera/settings.hpp: values of a settings file, by type, with defaults and limits.
//
//   zera::settings settings{path};
//   auto view = settings.section(L"View");
//   const int left = view.get(L"Left", 100, {0, 4000});
//   view.set(L"Title", L"Łódź");
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "../../ZERATools.h"
#include "argument.hpp"

namespace zera {

/// The limits that a stored value is brought between; the default is given as it is.
template <class Number>
struct limits {
  Number minimum = std::numeric_limits<Number>::lowest();
  // In brackets: the platform's header has a macro of that name.
  Number maximum = (std::numeric_limits<Number>::max)();
};

namespace detail {

// The exports of one character type under one name each.
template <class Char>
struct settings_exports;

template <>
struct settings_exports<wchar_t> {
  using text = const wchar_t*;
  static int read(text s, text k, text f, int d, int a, int b) {
    return ZERA_TOOLS_READ_INT_UC(s, k, f, d, a, b);
  }
  static unsigned int read(text s, text k, text f, unsigned int d, unsigned int a, unsigned int b) {
    return ZERA_TOOLS_READ_UINT_UC(s, k, f, d, a, b);
  }
  static WORD read(text s, text k, text f, WORD d, WORD a, WORD b) {
    return ZERA_TOOLS_READ_WORD_UC(s, k, f, d, a, b);
  }
  static double read(text s, text k, text f, double d, double a, double b) {
    return ZERA_TOOLS_READ_DOUBLE_UC(s, k, f, d, a, b);
  }
  static float read(text s, text k, text f, float d, float a, float b) {
    return ZERA_TOOLS_READ_FLOAT_UC(s, k, f, d, a, b);
  }
  static void read(text s, text k, text f, text d, wchar_t* to, std::size_t room) {
    ZERA_TOOLS_READ_STRING_UC(s, k, f, d, to, room);
  }
  static int write(text s, text k, text f, int v) { return ZERA_TOOLS_WRITE_INT_UC(s, k, f, v); }
  static int write(text s, text k, text f, unsigned int v) { return ZERA_TOOLS_WRITE_UINT_UC(s, k, f, v); }
  static int write(text s, text k, text f, WORD v) { return ZERA_TOOLS_WRITE_WORD_UC(s, k, f, v); }
  static int write(text s, text k, text f, double v) { return ZERA_TOOLS_WRITE_DOUBLE_UC(s, k, f, v); }
  static int write(text s, text k, text f, float v) { return ZERA_TOOLS_WRITE_FLOAT_UC(s, k, f, v); }
  static int write(text s, text k, text f, text v) { return ZERA_TOOLS_WRITE_STRING_UC(s, k, f, v); }
};

template <>
struct settings_exports<char> {
  using text = const char*;
  static int read(text s, text k, text f, int d, int a, int b) {
    return ZERA_TOOLS_READ_INT(s, k, f, d, a, b);
  }
  static unsigned int read(text s, text k, text f, unsigned int d, unsigned int a, unsigned int b) {
    return ZERA_TOOLS_READ_UINT(s, k, f, d, a, b);
  }
  static WORD read(text s, text k, text f, WORD d, WORD a, WORD b) {
    return ZERA_TOOLS_READ_WORD(s, k, f, d, a, b);
  }
  static double read(text s, text k, text f, double d, double a, double b) {
    return ZERA_TOOLS_READ_DOUBLE(s, k, f, d, a, b);
  }
  static float read(text s, text k, text f, float d, float a, float b) {
    return ZERA_TOOLS_READ_FLOAT(s, k, f, d, a, b);
  }
  static void read(text s, text k, text f, text d, char* to, std::size_t room) {
    ZERA_TOOLS_READ_STRING(s, k, f, d, to, room);
  }
  static int write(text s, text k, text f, int v) { return ZERA_TOOLS_WRITE_INT(s, k, f, v); }
  static int write(text s, text k, text f, unsigned int v) { return ZERA_TOOLS_WRITE_UINT(s, k, f, v); }
  static int write(text s, text k, text f, WORD v) { return ZERA_TOOLS_WRITE_WORD(s, k, f, v); }
  static int write(text s, text k, text f, double v) { return ZERA_TOOLS_WRITE_DOUBLE(s, k, f, v); }
  static int write(text s, text k, text f, float v) { return ZERA_TOOLS_WRITE_FLOAT(s, k, f, v); }
  static int write(text s, text k, text f, text v) { return ZERA_TOOLS_WRITE_STRING(s, k, f, v); }
};

}  // namespace detail

/// One section of a settings file. It holds both names, so it may outlive the object that it came from.
template <class Char>
class basic_section {
  using exports = detail::settings_exports<Char>;
  using in = basic_argument<Char>;
  using string = std::basic_string<Char>;

 public:
  basic_section(string file, string section) : file_(std::move(file)), section_(std::move(section)) {}

  /// A number: the default when there is no value, else the value within the limits. As
  /// #ZERA_TOOLS_READ_INT_UC, #ZERA_TOOLS_READ_UINT_UC, #ZERA_TOOLS_READ_WORD_UC, #ZERA_TOOLS_READ_DOUBLE_UC
  /// and #ZERA_TOOLS_READ_FLOAT_UC, and their plain partners.
  [[nodiscard]] int get(const in& key, int otherwise, limits<int> within = {}) const {
    return number(key, otherwise, within);
  }
  [[nodiscard]] unsigned int get(const in& key, unsigned int otherwise,
                                 limits<unsigned int> within = {}) const {
    return number(key, otherwise, within);
  }
  [[nodiscard]] WORD get(const in& key, WORD otherwise, limits<WORD> within = {}) const {
    return number(key, otherwise, within);
  }
  [[nodiscard]] double get(const in& key, double otherwise, limits<double> within = {}) const {
    return number(key, otherwise, within);
  }
  [[nodiscard]] float get(const in& key, float otherwise, limits<float> within = {}) const {
    return number(key, otherwise, within);
  }

  /// A text of fewer than `room` characters. As #ZERA_TOOLS_READ_STRING_UC and #ZERA_TOOLS_READ_STRING: a
  /// longer value is cut, one with characters beyond the code page gives an empty text, and so does a default
  /// that does not fit.
  [[nodiscard]] string get(const in& key, const in& otherwise, std::size_t room = 1024) const {
    string text(room, Char());
    exports::read(section_.c_str(), key, file_.c_str(), otherwise.get(), text.data(), room);
    text.resize(std::char_traits<Char>::length(text.c_str()));
    return text;
  }

  /// Writes a number. As #ZERA_TOOLS_WRITE_INT_UC, #ZERA_TOOLS_WRITE_UINT_UC, #ZERA_TOOLS_WRITE_WORD_UC,
  /// #ZERA_TOOLS_WRITE_DOUBLE_UC and #ZERA_TOOLS_WRITE_FLOAT_UC, and their plain partners.
  bool set(const in& key, int value) const { return put(key, value); }
  bool set(const in& key, unsigned int value) const { return put(key, value); }
  bool set(const in& key, WORD value) const { return put(key, value); }
  bool set(const in& key, double value) const { return put(key, value); }
  bool set(const in& key, float value) const { return put(key, value); }
  /// Writes a text. As #ZERA_TOOLS_WRITE_STRING_UC and #ZERA_TOOLS_WRITE_STRING, which succeed in any case.
  bool set(const in& key, const in& value) const { return put(key, value.get()); }

  /// Removes a key. As #ZERA_TOOLS_WRITE_STRING_UC with a null text.
  bool remove(const in& key) const { return put(key, static_cast<const Char*>(nullptr)); }

 private:
  template <class Number>
  Number number(const in& key, Number otherwise, const limits<Number>& within) const {
    return exports::read(section_.c_str(), key.get(), file_.c_str(), otherwise, within.minimum,
                         within.maximum);
  }
  template <class Value>
  bool put(const in& key, Value value) const {
    return exports::write(section_.c_str(), key.get(), file_.c_str(), value) != 0;
  }

  string file_;
  string section_;
};

/// A settings file by its path. Nothing is opened or kept: every call goes to the file.
template <class Char>
class basic_settings {
 public:
  /// Takes the path; the file need not exist.
  explicit basic_settings(std::basic_string_view<Char> file) : file_(file) {}

  /// One section of the file.
  [[nodiscard]] basic_section<Char> section(std::basic_string_view<Char> name) const {
    return {file_, std::basic_string<Char>(name)};
  }
  /// The path.
  [[nodiscard]] const std::basic_string<Char>& file() const noexcept { return file_; }

 private:
  std::basic_string<Char> file_;
};

using settings = basic_settings<wchar_t>;
using ansi_settings = basic_settings<char>;

}  // namespace zera
