// SPDX-License-Identifier: MIT
// Encrypt.h: the encryption engine: RC4 under the MD5 digest of a pass phrase.
#pragma once

#include <windows.h>

#include <wincrypt.h>

#include "Secret.h"
#include "base/Owned.h"

namespace crypt {

struct ProviderKind {
  using Handle = HCRYPTPROV;
  static Handle None() noexcept { return 0; }
  static bool Close(Handle handle) noexcept { return ::CryptReleaseContext(handle, 0) != FALSE; }
};

struct HashKind {
  using Handle = HCRYPTHASH;
  static Handle None() noexcept { return 0; }
  static bool Close(Handle handle) noexcept { return ::CryptDestroyHash(handle) != FALSE; }
};

struct KeyKind {
  using Handle = HCRYPTKEY;
  static Handle None() noexcept { return 0; }
  static bool Close(Handle handle) noexcept { return ::CryptDestroyKey(handle) != FALSE; }
};

using Provider = base::Owned<ProviderKind>;
using Hash = base::Owned<HashKind>;
using Key = base::Owned<KeyKind>;

}  // namespace crypt

/// One engine serves one call of an export, or several one after the other; never two threads at once.
class CEncrypt {
 public:
  CEncrypt() = default;
  CEncrypt(const CEncrypt&) = delete;
  CEncrypt& operator=(const CEncrypt&) = delete;
  virtual ~CEncrypt();

  /// Derives the session key from m_key.
  BOOL Init();
  /// Gives key, hash and provider back, in this order.
  void Release() noexcept;

  /// Encrypts in place, as the last block; `length` is that of the plain bytes, then of the cipher's.
  BOOL EncryptBuffer(BYTE* buffer, DWORD* length, DWORD capacity);
  /// Decrypts in place, as the last block.
  BOOL DecryptBuffer(BYTE* buffer, DWORD* length);

  /// Encrypts into text: two upper-case hexadecimal digits for each byte, or its decimal value, which
  /// cannot be read back. Gives the text's length; -1 for failure.
  int EncryptToText(const crypt::ByteArray& passPhrase, const crypt::ByteArray& plain, CStringW& text,
                    BOOL hex);
  int EncryptToText(const crypt::ByteArray& passPhrase, const crypt::ByteArray& plain, CStringA& text,
                    BOOL hex);
  /// Decrypts hexadecimal text, or with `hex` clear a text whose characters are the cipher bytes. Gives
  /// the number of plain bytes; -1 when memory is exhausted or a pair of digits cannot be read, 0 when
  /// the platform's service fails.
  int DecryptText(const crypt::ByteArray& passPhrase, const wchar_t* text, BOOL hex, crypt::ByteArray& plain);
  /// Into a string of one unit for each byte, which may hold the text. It is left alone when there are no
  /// plain bytes.
  int DecryptText(const crypt::ByteArray& passPhrase, const wchar_t* text, BOOL hex, CStringW& plain);

  /// The pass phrase. It may be given to the operations above as their own argument.
  crypt::ByteArray m_key;

 private:
  void TakePassPhrase(const crypt::ByteArray& passPhrase);
  template <class Char>
  int Encrypt(const crypt::ByteArray& passPhrase, const crypt::ByteArray& plain, CStringT<Char>& text,
              BOOL hex);
  template <class Take>
  int Decrypt(const crypt::ByteArray& passPhrase, const wchar_t* text, BOOL hex, Take take);

  // Given back in the reverse order.
  crypt::Provider m_hProvider;
  crypt::Hash m_hHash;
  crypt::Key m_hKey;
};
