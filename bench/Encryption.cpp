// SPDX-License-Identifier: MIT
// Encryption: beside the bare sequence of the platform's service with a plain loop for the digits, and a
// cipher written by hand.
#include <windows.h>

#include <bcrypt.h>
#include <wincrypt.h>

#include <cstring>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "Harness.h"

namespace bench {
namespace {

constexpr char kPass[] = "pass phrase";
constexpr DWORD kLeast = 256;

// The key of the pass phrase, made and given back as the rules say.
class Key {
 public:
  Key() {
    if (!::CryptAcquireContextW(&provider_, nullptr, nullptr, PROV_RSA_FULL, 0)) {
      ::CryptAcquireContextW(&provider_, nullptr, nullptr, PROV_RSA_FULL, CRYPT_NEWKEYSET);
    }
    ::CryptCreateHash(provider_, CALG_MD5, 0, 0, &hash_);
    ::CryptHashData(hash_, reinterpret_cast<const BYTE*>(kPass), sizeof kPass - 1, 0);
    ::CryptDeriveKey(provider_, CALG_RC4, hash_, CRYPT_EXPORTABLE, &key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() {
    ::CryptDestroyKey(key_);
    ::CryptDestroyHash(hash_);
    ::CryptReleaseContext(provider_, 0);
  }

  void Encrypt(std::vector<BYTE>& bytes, DWORD length) const {
    ::CryptEncrypt(key_, 0, TRUE, 0, bytes.data(), &length, static_cast<DWORD>(bytes.size()));
  }
  void Decrypt(std::vector<BYTE>& bytes, DWORD length) const {
    ::CryptDecrypt(key_, 0, TRUE, 0, bytes.data(), &length);
  }

 private:
  HCRYPTPROV provider_ = 0;
  HCRYPTHASH hash_ = 0;
  HCRYPTKEY key_ = 0;
};

// What a host's author would write: the digest from the platform, the cipher by hand.
void CipherByHand(BYTE* bytes, std::size_t count) {
  static const BCRYPT_ALG_HANDLE md5 = [] {
    BCRYPT_ALG_HANDLE handle = nullptr;
    ::BCryptOpenAlgorithmProvider(&handle, BCRYPT_MD5_ALGORITHM, nullptr, 0);
    return handle;
  }();
  BYTE digest[16];
  ::BCryptHash(md5, nullptr, 0, reinterpret_cast<BYTE*>(const_cast<char*>(kPass)), sizeof kPass - 1, digest,
               sizeof digest);
  BYTE state[256];
  std::iota(state, state + 256, BYTE{0});
  for (unsigned i = 0, j = 0; i < 256; ++i) {
    j = (j + state[i] + digest[i % 16]) & 255;
    std::swap(state[i], state[j]);
  }
  BYTE i = 0, j = 0;
  for (std::size_t at = 0; at < count; ++at) {
    j = static_cast<BYTE>(j + state[++i]);
    std::swap(state[i], state[j]);
    bytes[at] ^= state[static_cast<BYTE>(state[i] + state[j])];
  }
}

template <class Char>
void Digits(const BYTE* bytes, std::size_t count, Char* out) {
  for (std::size_t i = 0; i < count; ++i) {
    *out++ = static_cast<Char>("0123456789ABCDEF"[bytes[i] >> 4]);
    *out++ = static_cast<Char>("0123456789ABCDEF"[bytes[i] & 15]);
  }
}

template <class Char>
BYTE Digit(Char one) {
  return static_cast<BYTE>(one <= '9' ? one - '0' : one - 'A' + 10);
}

template <class Char>
void FromDigits(const Char* text, std::size_t count, BYTE* out) {
  for (std::size_t i = 0; i < count; ++i)
    out[i] = static_cast<BYTE>(Digit(text[2 * i]) << 4 | Digit(text[2 * i + 1]));
}

std::size_t WorkSize(std::size_t count) {
  return count > kLeast ? count : kLeast;
}

template <class Char>
void SetText(CStringT<Char>& text, const std::vector<BYTE>& bytes, std::size_t count) {
  text.Empty();
  Digits(bytes.data(), count, text.GetBuffer(static_cast<int>(2 * count)));
  text.ReleaseBufferSetLength(static_cast<int>(2 * count));
}

void Bytes(std::size_t count, const std::string& form) {
  CArray<BYTE, const BYTE&> pass, plain, back;
  pass.SetSize(sizeof kPass - 1);
  std::memcpy(pass.GetData(), kPass, sizeof kPass - 1);
  plain.SetSize(static_cast<INT_PTR>(count));
  for (std::size_t i = 0; i < count; ++i) plain[static_cast<INT_PTR>(i)] = static_cast<BYTE>(i * 7);
  CStringW text;

  // A working buffer of zeros with the bytes at its start, the cipher, the text.
  const auto work = [&] {
    std::vector<BYTE> buffer(WorkSize(count));
    std::memcpy(buffer.data(), plain.GetData(), count);
    return buffer;
  };
  const auto encrypt = BENCH_EXPORT(ZERA_TOOLS_ENC_UC);
  Measure("Encryption", "encrypt bytes" + form, count,
          Calls([&] { sink = encrypt(pass, plain, text, TRUE); }), Calls([&] {
            std::vector<BYTE> buffer = work();
            Key().Encrypt(buffer, static_cast<DWORD>(count));
            SetText(text, buffer, count);
          }),
          Calls([&] {
            std::vector<BYTE> buffer = work();
            CipherByHand(buffer.data(), count);
            SetText(text, buffer, count);
          }));
  encrypt(pass, plain, text, TRUE);
  const auto keep = [&](const std::vector<BYTE>& buffer) {
    back.RemoveAll();
    back.SetSize(static_cast<INT_PTR>(count));
    std::memcpy(back.GetData(), buffer.data(), count);
  };
  const auto decrypt = BENCH_EXPORT(ZERA_TOOLS_DEC_UC);
  Measure("Encryption", "decrypt bytes" + form, count, Calls([&] { sink = decrypt(pass, text, TRUE, back); }),
          Calls([&] {
            std::vector<BYTE> buffer(WorkSize(count));
            FromDigits(text.GetString(), count, buffer.data());
            Key().Decrypt(buffer, static_cast<DWORD>(count));
            keep(buffer);
          }),
          Calls([&] {
            std::vector<BYTE> buffer(WorkSize(count));
            FromDigits(text.GetString(), count, buffer.data());
            CipherByHand(buffer.data(), count);
            keep(buffer);
          }));
}

// The plain bytes of a text are the low bytes of its units.
template <class Char>
std::vector<BYTE> Narrow(const CStringT<Char>& text) {
  std::vector<BYTE> buffer(WorkSize(static_cast<std::size_t>(text.GetLength())));
  for (int i = 0; i < text.GetLength(); ++i) buffer[static_cast<std::size_t>(i)] = static_cast<BYTE>(text[i]);
  return buffer;
}

void Texts(std::size_t count, const std::string& form) {
  const std::wstring pass(kPass, kPass + sizeof kPass - 1);
  const CStringW plain(std::wstring(count, L't').c_str());
  const CStringA narrow(std::string(count, 't').c_str());
  CStringW text, back;
  CStringA narrowText;

  const auto encrypt = BENCH_EXPORT(ZERA_TOOLS_ENC_STRING_L_UC);
  Measure("Encryption", "encrypt a text" + form, count,
          Calls([&] { sink = encrypt(pass.c_str(), plain, text); }), Calls([&] {
            std::vector<BYTE> buffer = Narrow(plain);
            Key().Encrypt(buffer, static_cast<DWORD>(count));
            SetText(text, buffer, count);
          }),
          Calls([&] {
            std::vector<BYTE> buffer = Narrow(plain);
            CipherByHand(buffer.data(), count);
            SetText(text, buffer, count);
          }));
  const auto encryptNarrow = BENCH_EXPORT(ZERA_TOOLS_ENC_STRING_L);
  Measure("Encryption", "encrypt a plain text" + form, count,
          Calls([&] { sink = encryptNarrow(kPass, narrow, narrowText); }), Calls([&] {
            std::vector<BYTE> buffer = Narrow(narrow);
            Key().Encrypt(buffer, static_cast<DWORD>(count));
            SetText(narrowText, buffer, count);
          }),
          Calls([&] {
            std::vector<BYTE> buffer = Narrow(narrow);
            CipherByHand(buffer.data(), count);
            SetText(narrowText, buffer, count);
          }));
  encrypt(pass.c_str(), plain, text);
  const auto keep = [&](const std::vector<BYTE>& buffer) {
    back.Empty();
    wchar_t* const out = back.GetBuffer(static_cast<int>(count));
    for (std::size_t i = 0; i < count; ++i) out[i] = buffer[i];
    back.ReleaseBufferSetLength(static_cast<int>(count));
  };
  const auto decrypt = BENCH_EXPORT(ZERA_TOOLS_DEC_STRING_UC);
  Measure("Encryption", "decrypt a text" + form, count,
          Calls([&] { sink = decrypt(pass.c_str(), text, back); }), Calls([&] {
            std::vector<BYTE> buffer(WorkSize(count));
            FromDigits(text.GetString(), count, buffer.data());
            Key().Decrypt(buffer, static_cast<DWORD>(count));
            keep(buffer);
          }),
          Calls([&] {
            std::vector<BYTE> buffer(WorkSize(count));
            FromDigits(text.GetString(), count, buffer.data());
            CipherByHand(buffer.data(), count);
            keep(buffer);
          }));
}

}  // namespace

void Encryption() {
  constexpr std::size_t kMiB = 1 << 20;
  const std::size_t large = ByMode<std::size_t>(4096, 16 * kMiB, 16 * kMiB);
  Bytes(32, " (short)");
  Texts(32, " (short)");
  Bytes(large, " (long)");
  Texts(large, " (long)");
}

void EncryptionGrowth() {
  constexpr std::size_t kMiB = 1 << 20;
  for (const std::size_t count : Sizes(64, 4, 1024, 16 * kMiB, 64 * kMiB)) {
    Bytes(count, "");
    Texts(count, "");
  }
}

}  // namespace bench
