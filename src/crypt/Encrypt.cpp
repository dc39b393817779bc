// SPDX-License-Identifier: MIT
#include "Encrypt.h"

#include <wchar.h>

#include <algorithm>

#include "CipherText.h"
#include "base/TextLength.h"
#include "convert/Hex.h"

namespace {

using crypt::ByteArray;

// An array as a host may hand it over: with bytes, or empty, or broken.
std::size_t CheckedSize(const ByteArray& bytes) {
  if (bytes.GetSize() < 0 || (bytes.GetSize() != 0 && !bytes.GetData())) AfxThrowInvalidArgException();
  return static_cast<std::size_t>(bytes.GetSize());
}

void Copy(BYTE* to, const ByteArray& from, std::size_t size) {
  if (size != 0) std::memcpy(to, from.GetData(), size);
}

// The longest text that a string object holds.
constexpr std::size_t kLongest = 0x7FFFFFEF;

template <class Char>
void Store(const BYTE* bytes, std::size_t count, BOOL hex, CStringT<Char>& text) {
  const std::size_t length = hex ? 2 * count : crypt::DecimalLength(bytes, count);
  if (length == 0) return;
  if (length > kLongest) AfxThrowMemoryException();
  Char* const out = text.GetBuffer(static_cast<int>(length));
  hex ? crypt::WriteHex(bytes, count, out) : crypt::WriteDecimal(bytes, count, out);
  text.ReleaseBufferSetLength(static_cast<int>(length));
}

// One byte from two characters, as the C runtime's "%X" reads them.
bool ReadPiece(const wchar_t* piece, BYTE& byte) {
  const unsigned high = convert::HexDigit(piece[0]);
  const unsigned low = convert::HexDigit(piece[1]);
  if (high < 16 && low < 16) {
    byte = static_cast<BYTE>(high << 4 | low);
    return true;
  }
  // KEPT FOR HOSTS: "%X" also reads one digit with something behind it, a space or a sign before it.
  // Stored texts that were damaged or edited decrypt the way they always did; what exactly counts as a
  // space or a digit is the runtime's own matter.
  unsigned value = 0;
  if (::_snwscanf(piece, 2, L"%X", &value) != 1) return false;
  byte = static_cast<BYTE>(value);
  return true;
}

bool ReadHex(const wchar_t* text, std::size_t count, BYTE* bytes) {
  std::size_t i = 0;
  while (i < count) {
    if (count - i >= crypt::kTogether && crypt::ReadHexTogether(text + 2 * i, bytes + i)) {
      i += crypt::kTogether;
      continue;
    }
    for (const std::size_t end = std::min(count, i + crypt::kTogether); i < end; ++i) {
      if (!ReadPiece(text + 2 * i, bytes[i])) return false;
    }
  }
  return true;
}

bool ReadCipher(const wchar_t* text, std::size_t count, BOOL hex, BYTE* bytes) {
  if (hex) return ReadHex(text, count, bytes);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<BYTE>(text[i]);
  return true;
}

}  // namespace

CEncrypt::~CEncrypt() {
  Release();
  crypt::WipeAndEmpty(m_key);
}

BOOL CEncrypt::Init() {
  Release();
  HCRYPTPROV provider = 0;
  if (!::CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, 0)) {
    // Captured at once: the error belongs to this call and to no other. The default key container of a
    // user who never had one does not exist yet. With any other error the next step fails without a
    // provider.
    const bool noContainer = ::GetLastError() == static_cast<DWORD>(NTE_BAD_KEYSET);
    provider = 0;
    if (noContainer && !::CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_NEWKEYSET)) {
      return FALSE;
    }
  }
  m_hProvider.Take(provider);
  HCRYPTHASH hash = 0;
  if (!::CryptCreateHash(provider, CALG_MD5, 0, 0, &hash)) return FALSE;
  m_hHash.Take(hash);
  // An empty array has no storage, and not every provider takes a null pointer for zero bytes.
  const BYTE nothing = 0;
  const BYTE* const bytes = m_key.GetData() ? m_key.GetData() : &nothing;
  if (!::CryptHashData(hash, bytes, static_cast<DWORD>(m_key.GetSize()), 0)) return FALSE;
  HCRYPTKEY key = 0;
  if (!::CryptDeriveKey(provider, CALG_RC4, hash, CRYPT_EXPORTABLE, &key)) return FALSE;
  m_hKey.Take(key);
  return TRUE;
}

void CEncrypt::Release() noexcept {
  m_hKey.Close();
  m_hHash.Close();
  m_hProvider.Close();
}

BOOL CEncrypt::EncryptBuffer(BYTE* buffer, DWORD* length, DWORD capacity) {
  return ::CryptEncrypt(m_hKey.Get(), 0, TRUE, 0, buffer, length, capacity);
}

BOOL CEncrypt::DecryptBuffer(BYTE* buffer, DWORD* length) {
  return ::CryptDecrypt(m_hKey.Get(), 0, TRUE, 0, buffer, length);
}

void CEncrypt::TakePassPhrase(const ByteArray& passPhrase) {
  if (&passPhrase == &m_key) return;
  const std::size_t size = CheckedSize(passPhrase);
  // Emptied first, so that no larger block is made from one that is given back unwiped.
  crypt::WipeAndEmpty(m_key);
  m_key.SetSize(static_cast<INT_PTR>(size));
  Copy(m_key.GetData(), passPhrase, size);
}

template <class Char>
int CEncrypt::Encrypt(const ByteArray& passPhrase, const ByteArray& plain, CStringT<Char>& text, BOOL hex) {
  text.Empty();
  TakePassPhrase(passPhrase);
  const std::size_t size = CheckedSize(plain);
  if (size > kLongest) return -1;
  crypt::WorkBuffer buffer(size);
  if (!buffer.data()) return -1;
  Copy(buffer.data(), plain, size);
  if (!Init()) return -1;
  DWORD length = static_cast<DWORD>(size);
  if (!EncryptBuffer(buffer.data(), &length, static_cast<DWORD>(buffer.capacity()))) return -1;
  Store(buffer.data(), length, hex, text);
  return text.GetLength();
}

int CEncrypt::EncryptToText(const ByteArray& passPhrase, const ByteArray& plain, CStringW& text, BOOL hex) {
  return Encrypt(passPhrase, plain, text, hex);
}

int CEncrypt::EncryptToText(const ByteArray& passPhrase, const ByteArray& plain, CStringA& text, BOOL hex) {
  return Encrypt(passPhrase, plain, text, hex);
}

// Lets `take` have the plain bytes, if there are any.
template <class Take>
int CEncrypt::Decrypt(const ByteArray& passPhrase, const wchar_t* text, BOOL hex, Take take) {
  TakePassPhrase(passPhrase);
  const std::size_t characters = text ? base::TextLength(text) : 0;
  const std::size_t size = hex ? characters / 2 : characters;
  if (size > kLongest) return -1;
  crypt::WorkBuffer buffer(size);
  if (!buffer.data()) return -1;
  if (!ReadCipher(text, size, hex, buffer.data())) return -1;
  // KEPT FOR HOSTS: 0, not -1, from here on. Hosts take -1 for a damaged text, and show an empty one
  // when the platform's service fails.
  if (!Init()) return 0;
  DWORD length = static_cast<DWORD>(size);
  if (!DecryptBuffer(buffer.data(), &length)) return 0;
  if (length != 0) take(buffer.data(), length);
  return static_cast<int>(length);
}

int CEncrypt::DecryptText(const ByteArray& passPhrase, const wchar_t* text, BOOL hex, ByteArray& plain) {
  crypt::WipeAndEmpty(plain);
  return Decrypt(passPhrase, text, hex, [&](const BYTE* bytes, std::size_t count) {
    plain.SetSize(static_cast<INT_PTR>(count));
    std::memcpy(plain.GetData(), bytes, count);
  });
}

int CEncrypt::DecryptText(const ByteArray& passPhrase, const wchar_t* text, BOOL hex, CStringW& plain) {
  return Decrypt(passPhrase, text, hex, [&](const BYTE* bytes, std::size_t count) {
    plain.Empty();
    crypt::Widen(bytes, count, plain.GetBuffer(static_cast<int>(count)));
    plain.ReleaseBufferSetLength(static_cast<int>(count));
  });
}
