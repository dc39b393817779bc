// SPDX-License-Identifier: MIT
// zera/crypt.hpp: printable encryption under a pass phrase. It keeps a text from being read by chance and is
// no protection against an attacker.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "argument.hpp"
#include "bytes.hpp"
#include "objects.hpp"

namespace zera::crypt {

/// How cipher bytes are written.
enum class form : int { decimal = 0, hexadecimal = 1 };

/// Encrypts a text; nothing for failure. As #ZERA_TOOLS_ENC_STRING_L_UC: of each character only the low byte.
[[nodiscard]] inline std::optional<std::wstring> encrypt(const argument& pass_phrase,
                                                         std::wstring_view plain) {
  zera::detail::wide_object in, out;
  if (!in.set(plain) || ZERA_TOOLS_ENC_STRING_L_UC(pass_phrase, in.ref(), out.ref()) < 0) return std::nullopt;
  return out.str();
}
/// As #ZERA_TOOLS_ENC_STRING_L.
[[nodiscard]] inline std::optional<std::string> encrypt(const ansi_argument& pass_phrase,
                                                        std::string_view plain) {
  zera::detail::narrow_object in, out;
  if (!in.set(plain) || ZERA_TOOLS_ENC_STRING_L(pass_phrase, in.ref(), out.ref()) < 0) return std::nullopt;
  return out.str();
}

/// The first 8 characters of the cipher text. As #ZERA_TOOLS_ENC_STRING_S_UC.
[[nodiscard]] inline std::optional<std::wstring> encrypt_short(const argument& pass_phrase,
                                                               std::wstring_view plain) {
  zera::detail::wide_object in, out;
  if (!in.set(plain) || ZERA_TOOLS_ENC_STRING_S_UC(pass_phrase, in.ref(), out.ref()) < 0) return std::nullopt;
  return out.str();
}
/// As #ZERA_TOOLS_ENC_STRING_S.
[[nodiscard]] inline std::optional<std::string> encrypt_short(const ansi_argument& pass_phrase,
                                                              std::string_view plain) {
  zera::detail::narrow_object in, out;
  if (!in.set(plain) || ZERA_TOOLS_ENC_STRING_S(pass_phrase, in.ref(), out.ref()) < 0) return std::nullopt;
  return out.str();
}

/// Decrypts a text; nothing when it cannot be read. As #ZERA_TOOLS_DEC_STRING_UC.
[[nodiscard]] inline std::optional<std::wstring> decrypt(const argument& pass_phrase, const argument& text) {
  zera::detail::wide_object out;
  if (ZERA_TOOLS_DEC_STRING_UC(pass_phrase, text, out.ref()) < 0) return std::nullopt;
  return out.str();
}
/// Of at most 99 bytes. As #ZERA_TOOLS_DEC_STRING.
[[nodiscard]] inline std::optional<std::string> decrypt(const ansi_argument& pass_phrase,
                                                        std::string_view text) {
  zera::detail::narrow_object in, out;
  if (!in.set(text) || ZERA_TOOLS_DEC_STRING(pass_phrase, in.ref(), out.ref()) < 0) return std::nullopt;
  return out.str();
}

/// Encrypts bytes into a text. As #ZERA_TOOLS_ENC_UC.
[[nodiscard]] inline std::optional<std::wstring> encrypt_bytes(const bytes& pass_phrase, const bytes& plain,
                                                               form as = form::hexadecimal) {
  zera::detail::bytes_object key, in;
  zera::detail::wide_object out;
  if (!key.set(pass_phrase.data, pass_phrase.size) || !in.set(plain.data, plain.size)) return std::nullopt;
  if (ZERA_TOOLS_ENC_UC(key.ref(), in.ref(), out.ref(), static_cast<BOOL>(as)) < 0) return std::nullopt;
  return out.str();
}

/// Decrypts a text of hexadecimal digits into bytes. As #ZERA_TOOLS_DEC_UC.
[[nodiscard]] inline std::optional<std::vector<unsigned char>> decrypt_bytes(const bytes& pass_phrase,
                                                                             const argument& text) {
  zera::detail::bytes_object key, out;
  if (!key.set(pass_phrase.data, pass_phrase.size)) return std::nullopt;
  if (ZERA_TOOLS_DEC_UC(key.ref(), text, TRUE, out.ref()) < 0) return std::nullopt;
  return out.vector();
}
/// As #ZERA_TOOLS_DEC, of at most half as many bytes as the text has characters.
[[nodiscard]] inline std::optional<std::vector<unsigned char>> decrypt_bytes(const ansi_argument& pass_phrase,
                                                                             const ansi_argument& text) {
  std::vector<unsigned char> plain(text.size() / 2 + 1);
  const int count = ZERA_TOOLS_DEC(pass_phrase, text, TRUE, plain.data(), static_cast<UINT>(plain.size()));
  if (count < 0) return std::nullopt;
  plain.resize(static_cast<std::size_t>(count));
  return plain;
}

}  // namespace zera::crypt
