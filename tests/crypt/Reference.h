// SPDX-License-Identifier: MIT
// Reference.h: the cipher once more, written from its published description, to compare with.
#pragma once

#include <string>

namespace reference {

/// The 16 bytes of the MD5 digest (RFC 1321).
std::string Md5(const std::string& bytes);

/// RC4 under a key; the same operation both ways.
std::string Rc4(const std::string& key, std::string bytes);

/// What the library makes of bytes under a pass phrase, before it is printed.
inline std::string Cipher(const std::string& passPhrase, const std::string& bytes) {
  return Rc4(Md5(passPhrase), bytes);
}

/// Two upper-case hexadecimal digits for each byte.
std::string Hex(const std::string& bytes);

/// Every byte as one UTF-16 unit.
inline std::wstring Widened(const std::string& bytes) {
  std::wstring wide;
  for (const char one : bytes) wide += static_cast<wchar_t>(static_cast<unsigned char>(one));
  return wide;
}

}  // namespace reference
