// SPDX-License-Identifier: MIT
// zera/text.hpp: conversions between UTF-16, UTF-8, the ANSI code page, Latin-1 and hexadecimal text.
#pragma once

#include <string>

#include "argument.hpp"
#include "objects.hpp"

namespace zera::text {

namespace detail {

template <class Export, class Char>
std::wstring wide(Export function, const basic_argument<Char>& text) {
  zera::detail::wide_object result;
  function(text, result.ref());
  return result.str();
}

template <class Export, class Char>
std::string narrow(Export function, const basic_argument<Char>& text) {
  zera::detail::narrow_object result;
  function(text, result.ref());
  return result.str();
}

}  // namespace detail

/// UTF-16 to the ANSI code page, with the degree and the micro sign. As #ZERA_TOOLS_UC_TO_MBC.
[[nodiscard]] inline std::string to_ansi(const argument& text) {
  return detail::narrow(ZERA_TOOLS_UC_TO_MBC, text);
}
/// The signs of Latin-1 text in the ANSI code page. As #ZERA_TOOLS_CHAR8_TO_MBC.
[[nodiscard]] inline std::string latin1_to_ansi(const ansi_argument& text) {
  return detail::narrow(ZERA_TOOLS_CHAR8_TO_MBC, text);
}
/// ANSI text with Latin-1 signs to UTF-16. As #ZERA_TOOLS_CHAR8_TO_UC.
[[nodiscard]] inline std::wstring latin1_to_utf16(const ansi_argument& text) {
  return detail::wide(ZERA_TOOLS_CHAR8_TO_UC, text);
}
/// The ANSI code page to UTF-8. As #ZERA_TOOLS_STRING_MBC_TO_UTF8.
[[nodiscard]] inline std::string ansi_to_utf8(const ansi_argument& text) {
  return detail::narrow(ZERA_TOOLS_STRING_MBC_TO_UTF8, text);
}
/// UTF-16 to UTF-8. As #ZERA_TOOLS_STRING_UC_TO_UTF8.
[[nodiscard]] inline std::string to_utf8(const argument& text) {
  return detail::narrow(ZERA_TOOLS_STRING_UC_TO_UTF8, text);
}
/// UTF-8 to the ANSI code page. As #ZERA_TOOLS_STRING_UTF8_TO_MBC.
[[nodiscard]] inline std::string utf8_to_ansi(const ansi_argument& text) {
  return detail::narrow(ZERA_TOOLS_STRING_UTF8_TO_MBC, text);
}
/// UTF-8 to UTF-16. As #ZERA_TOOLS_STRING_UTF8_TO_UC.
[[nodiscard]] inline std::wstring from_utf8(const ansi_argument& text) {
  return detail::wide(ZERA_TOOLS_STRING_UTF8_TO_UC, text);
}
/// Code units as hexadecimal numbers, "48 49". As #ZERA_TOOLS_STRING_UC_TO_HEX.
[[nodiscard]] inline std::wstring to_hex(const argument& text) {
  return detail::wide(ZERA_TOOLS_STRING_UC_TO_HEX, text);
}
/// Hexadecimal numbers to text. As #ZERA_TOOLS_STRING_HEX_TO_UC.
[[nodiscard]] inline std::wstring from_hex(const argument& text) {
  return detail::wide(ZERA_TOOLS_STRING_HEX_TO_UC, text);
}

}  // namespace zera::text
