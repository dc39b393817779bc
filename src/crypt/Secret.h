// SPDX-License-Identifier: MIT
// Secret.h: memory for pass phrases and plain bytes, wiped before it is given back.
#pragma once

#include <cstdlib>

#include "afxtempl.h"

namespace crypt {

using ByteArray = CArray<BYTE, const BYTE&>;

/// Empties an array and wipes what it held.
inline void WipeAndEmpty(ByteArray& bytes) noexcept {
  if (bytes.GetData() && bytes.GetSize() > 0) {
    ::SecureZeroMemory(bytes.GetData(), static_cast<SIZE_T>(bytes.GetSize()));
  }
  bytes.RemoveAll();
}

/// A byte array of the library's own. It is sized once: growing would leave copies behind.
class SecretBytes : public ByteArray {
 public:
  SecretBytes() noexcept = default;
  /// The bytes of a text without its terminator, of UTF-16 text the low byte of each unit; a null text
  /// counts as empty.
  template <class Char>
  explicit SecretBytes(const Char* text) : SecretBytes(text, Length(text)) {}
  template <class Char>
  SecretBytes(const Char* text, INT_PTR length) {
    SetSize(length);
    for (INT_PTR i = 0; i < length; ++i) m_pData[i] = static_cast<BYTE>(text[i]);
  }
  ~SecretBytes() override { WipeAndEmpty(*this); }

 private:
  template <class Char>
  static INT_PTR Length(const Char* text) noexcept {
    INT_PTR length = 0;
    if (text) {
      while (text[length]) ++length;
    }
    return length;
  }
};

/// The buffer in which bytes are encrypted and decrypted, zero at first.
class WorkBuffer {
 public:
  explicit WorkBuffer(std::size_t size) noexcept
      : capacity_(size > kLeast ? size : kLeast), bytes_(static_cast<BYTE*>(std::calloc(capacity_, 1))) {}
  WorkBuffer(const WorkBuffer&) = delete;
  WorkBuffer& operator=(const WorkBuffer&) = delete;
  ~WorkBuffer() {
    if (bytes_) ::SecureZeroMemory(bytes_, capacity_);
    std::free(bytes_);
  }

  /// Null when memory is exhausted.
  BYTE* data() noexcept { return bytes_; }
  std::size_t capacity() const noexcept { return capacity_; }

 private:
  // KEPT FOR HOSTS: the stream cipher needs no room beyond the data, but a provider put in by a host's
  // machine sees this capacity and may rely on it.
  static constexpr std::size_t kLeast = 256;

  std::size_t capacity_;
  BYTE* bytes_;
};

}  // namespace crypt
