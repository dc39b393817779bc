// SPDX-License-Identifier: MIT
// The encryption engine from inside: its life beyond one call, and the pieces it is made of.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "CryptoTrace.h"
#include "Reference.h"
#include "convert/Hex.h"
#include "crypt/CipherText.h"
#include "crypt/Encrypt.h"

namespace {

using reference::Cipher;
using reference::Hex;
using reference::Widened;
using Strings = std::vector<std::string>;

const Strings kRelease = {"CryptDestroyKey", "CryptDestroyHash", "CryptReleaseContext"};
const Strings kInit = {"CryptAcquireContextW", "CryptCreateHash", "CryptHashData", "CryptDeriveKey"};

Strings operator+(Strings a, const Strings& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

void Fill(crypt::ByteArray& array, const std::string& bytes) {
  array.RemoveAll();
  for (const char one : bytes) array.Add(static_cast<BYTE>(one));
}

std::string Bytes(const crypt::ByteArray& array) {
  return {reinterpret_cast<const char*>(array.GetData()), static_cast<std::size_t>(array.GetSize())};
}

TEST(CryptEngine, IsDestroyedThroughItsTable) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CEncrypt>);
  EXPECT_FALSE(std::is_copy_constructible_v<CEncrypt>);
}

TEST(CryptEngine, FreshEngineHasNothingToRelease) {
  test::CryptoTrace trace(::GetModuleHandleW(nullptr));
  {
    CEncrypt engine;
    engine.Release();
    EXPECT_TRUE(engine.m_key.IsEmpty());
  }
  EXPECT_EQ(trace.Functions(), Strings{});
}

TEST(CryptEngine, InitTwiceReleasesInBetween) {
  test::CryptoTrace trace(::GetModuleHandleW(nullptr));
  {
    CEncrypt engine;
    EXPECT_TRUE(engine.Init());
    EXPECT_TRUE(engine.Init());
    EXPECT_EQ(trace.Functions(), kInit + kRelease + kInit);
    engine.Release();
    engine.Release();
    EXPECT_EQ(trace.Functions(), kInit + kRelease + kInit + kRelease);
  }
  EXPECT_EQ(trace.Functions(), kInit + kRelease + kInit + kRelease);
  EXPECT_EQ(trace.Open(), 0);
}

TEST(CryptEngine, HandlesOfAFailedInitStayUntilTheNextRelease) {
  test::CryptoTrace trace(::GetModuleHandleW(nullptr));
  CEncrypt engine;
  trace.Fail("CryptDeriveKey", 5);
  EXPECT_FALSE(engine.Init());
  EXPECT_EQ(trace.Open(), 2);
  engine.Release();
  EXPECT_EQ(trace.Open(), 0);
}

TEST(CryptEngine, BuffersAreWorkedOnInPlace) {
  CEncrypt engine;
  Fill(engine.m_key, "key");
  char bytes[8] = "abc";
  DWORD length = 3;
  ASSERT_TRUE(engine.Init());
  EXPECT_TRUE(engine.EncryptBuffer(reinterpret_cast<BYTE*>(bytes), &length, sizeof bytes));
  EXPECT_EQ(length, 3u);
  EXPECT_EQ(std::string(bytes, 3), Cipher("key", "abc"));
  ASSERT_TRUE(engine.Init());
  EXPECT_TRUE(engine.DecryptBuffer(reinterpret_cast<BYTE*>(bytes), &length));
  EXPECT_EQ(length, 3u);
  EXPECT_STREQ(bytes, "abc");
}

TEST(CryptEngine, BuffersNeedAKey) {
  CEncrypt engine;
  BYTE bytes[4] = {};
  DWORD length = 3;
  EXPECT_FALSE(engine.EncryptBuffer(bytes, &length, sizeof bytes));
  EXPECT_FALSE(engine.DecryptBuffer(bytes, &length));
}

TEST(CryptEngine, OneEngineServesOnePassPhraseAfterTheOther) {
  CEncrypt engine;
  crypt::ByteArray plain, key, out;
  Fill(plain, "plain");
  for (const char* const phrase : {"short", "a much longer pass phrase than before", "", "short"}) {
    Fill(key, phrase);
    CStringW text;
    EXPECT_EQ(engine.EncryptToText(key, plain, text, TRUE), 10);
    EXPECT_STREQ(text, Widened(Hex(Cipher(phrase, "plain"))).c_str());
    EXPECT_EQ(Bytes(engine.m_key), phrase);
    EXPECT_EQ(engine.DecryptText(key, text, TRUE, out), 5);
    EXPECT_EQ(Bytes(out), "plain");
  }
}

// A larger pass phrase takes another block; the one before is wiped when it is given back.
std::string givenBack;
void* watchedBlock;
std::size_t watchedSize;
void Note(const void* block) {
  if (block && block == watchedBlock) givenBack.assign(static_cast<const char*>(block), watchedSize);
}
TEST(CryptEngine, APassPhraseIsWipedBeforeALargerOne) {
  for (const char* const secret : {"a secret pass phrase", "s"}) {
    CEncrypt engine;
    crypt::ByteArray plain, key, out;
    Fill(plain, "plain");
    Fill(key, secret);
    CStringW text;
    EXPECT_EQ(engine.EncryptToText(key, plain, text, TRUE), 10);
    watchedBlock = engine.m_key.GetData();
    watchedSize = std::strlen(secret);
    givenBack.clear();
    const auto note = +[](void* block) {
      Note(block);
      test::Platform<void(void*)>(L"ucrtbase.dll", "free")(block);
    };
    const auto noteResize = +[](void* block, std::size_t size) -> void* {
      Note(block);
      return test::Platform<void*(void*, std::size_t)>(L"ucrtbase.dll", "realloc")(block, size);
    };
    const test::ImportHook release("free", note, ::GetModuleHandleW(nullptr));
    const test::ImportHook resize("realloc", noteResize, ::GetModuleHandleW(nullptr));
    Fill(key, std::string(5000, 'k'));
    EXPECT_EQ(engine.EncryptToText(key, plain, text, TRUE), 10);
    EXPECT_EQ(givenBack, std::string(watchedSize, '\0')) << secret;
    watchedBlock = nullptr;
  }
}

// A result array that is broken, with a size and no data, is emptied and used.
TEST(CryptEngine, ABrokenResultArrayIsEmptied) {
  struct Fields {
    void* table;
    BYTE* data;
    INT_PTR size, room, growBy;
  };
  CEncrypt engine;
  crypt::ByteArray key, plain, out;
  Fill(key, "key");
  Fill(plain, "plain");
  CStringW text;
  ASSERT_EQ(engine.EncryptToText(key, plain, text, TRUE), 10);
  for (const INT_PTR size : {INT_PTR{5}, INT_PTR{-5}}) {
    reinterpret_cast<Fields&>(out) = {reinterpret_cast<Fields&>(out).table, nullptr, size, 0, 0};
    EXPECT_EQ(engine.DecryptText(key, text, TRUE, out), 5);
    EXPECT_EQ(Bytes(out), "plain");
    out.RemoveAll();
  }
}

TEST(CryptEngine, ItsOwnPassPhraseMayBeGiven) {
  CEncrypt engine;
  crypt::ByteArray plain, out;
  Fill(plain, "plain");
  Fill(engine.m_key, "own");
  CStringW text;
  EXPECT_EQ(engine.EncryptToText(engine.m_key, plain, text, TRUE), 10);
  EXPECT_STREQ(text, Widened(Hex(Cipher("own", "plain"))).c_str());
  EXPECT_EQ(engine.DecryptText(engine.m_key, text, TRUE, out), 5);
  EXPECT_EQ(Bytes(out), "plain");
  EXPECT_EQ(Bytes(engine.m_key), "own");
  // As plain bytes too, and as the result, which is emptied before anything else.
  EXPECT_EQ(engine.EncryptToText(engine.m_key, engine.m_key, text, TRUE), 6);
  EXPECT_STREQ(text, Widened(Hex(Cipher("own", "own"))).c_str());
  EXPECT_EQ(engine.DecryptText(engine.m_key, text, TRUE, engine.m_key), 3);
  EXPECT_EQ(Bytes(engine.m_key), Cipher("", Cipher("own", "own")));
}

TEST(CryptPieces, HexadecimalAndDecimalOfEveryByte) {
  for (int value = 0; value < 256; ++value) {
    const auto byte = static_cast<unsigned char>(value);
    char expected[8], text[8] = {};
    std::snprintf(expected, sizeof expected, "%.2X", value);
    EXPECT_EQ(crypt::WriteHex(&byte, 1, text), text + 2);
    EXPECT_STREQ(text, expected);
    std::snprintf(expected, sizeof expected, "%i", value);
    std::memset(text, 0, sizeof text);
    EXPECT_EQ(crypt::DecimalLength(&byte, 1), std::strlen(expected));
    EXPECT_EQ(crypt::WriteDecimal(&byte, 1, text), text + std::strlen(expected));
    EXPECT_STREQ(text, expected);
  }
}

// What stands behind the bytes counts for nothing.
TEST(CryptPieces, AsManyBytesAsAreCounted) {
  unsigned char bytes[40];
  std::fill(std::begin(bytes), std::end(bytes), static_cast<unsigned char>(0xFF));
  for (std::size_t count = 0; count < 30; ++count) {
    EXPECT_EQ(crypt::DecimalLength(bytes, count), 3 * count);
    std::wstring text(31, L'#');
    crypt::Widen(bytes, count, text.data());
    EXPECT_EQ(text, std::wstring(count, L'\xFF') + std::wstring(31 - count, L'#'));
  }
}

TEST(CryptPieces, HexDigitsAreThe22OfAscii) {
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const char* const found =
        unit != 0 && unit < 128 ? std::strchr("0123456789abcdefABCDEF", static_cast<int>(unit)) : nullptr;
    const unsigned expected =
        found ? static_cast<unsigned>(std::strtoul(std::string(1, *found).c_str(), nullptr, 16)) : 16;
    ASSERT_EQ(convert::HexDigit(static_cast<wchar_t>(unit)), expected) << unit;
  }
}

// What is read eight pieces at a time is what two digits are by themselves; any other character stops it.
TEST(CryptPieces, EveryCharacterAmongSixteenDigits) {
  const std::wstring digits = L"0123456789abCDeF";
  const unsigned char expected[] = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};
  for (std::size_t at = 0; at < digits.size(); ++at) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
      wchar_t text[16];
      digits.copy(text, 16);
      text[at] = static_cast<wchar_t>(unit);
      const unsigned digit = convert::HexDigit(static_cast<wchar_t>(unit));
      unsigned char bytes[9] = {};
      const bool read = crypt::ReadHexTogether(text, bytes);
      if (read != (digit < 16)) ADD_FAILURE() << at << ' ' << unit;
      if (!read) continue;
      unsigned char changed[9] = {};
      std::memcpy(changed, expected, 8);
      unsigned char& byte = changed[at / 2];
      byte = static_cast<unsigned char>(at % 2 ? (byte & 0xF0) | digit : (byte & 0x0F) | digit << 4);
      ASSERT_EQ(std::memcmp(bytes, changed, 9), 0) << at << ' ' << unit;
    }
  }
}

template <class Char>
void ExpectAllBytesWritten() {
  unsigned char bytes[256];
  std::string expected;
  for (unsigned i = 0; i < 256; ++i) {
    bytes[i] = static_cast<unsigned char>(i);
    char two[3];
    std::snprintf(two, sizeof two, "%.2X", i);
    expected += two;
  }
  for (const std::size_t count : {0u, 1u, 7u, 8u, 9u, 23u, 256u}) {
    std::basic_string<Char> text(2 * count + 1, Char('#'));
    EXPECT_EQ(crypt::WriteHex(bytes, count, text.data()), text.data() + 2 * count);
    EXPECT_EQ(text,
              std::basic_string<Char>(expected.begin(), expected.begin() + static_cast<long>(2 * count)) +
                  Char('#'));
  }
}

TEST(CryptPieces, EveryByteAsDigits) {
  ExpectAllBytesWritten<char>();
  ExpectAllBytesWritten<wchar_t>();
}

TEST(CryptPieces, WorkBufferIsZeroAndNeverSmallerThan256Bytes) {
  for (const std::size_t size : {0u, 1u, 255u, 256u, 257u, 100000u}) {
    crypt::WorkBuffer buffer(size);
    ASSERT_NE(buffer.data(), nullptr);
    EXPECT_EQ(buffer.capacity(), size < 256 ? 256 : size);
    for (std::size_t i = 0; i < buffer.capacity(); ++i) ASSERT_EQ(buffer.data()[i], 0);
  }
}

TEST(CryptPieces, SecretBytesAreTheLowBytesOfAText) {
  EXPECT_EQ(Bytes(crypt::SecretBytes("\x81\xFF")), "\x81\xFF");
  EXPECT_EQ(Bytes(crypt::SecretBytes(L"\x4E81\xFF")), "\x81\xFF");
  EXPECT_EQ(Bytes(crypt::SecretBytes(L"a\0b", 3)), std::string("a\0b", 3));
  EXPECT_TRUE(crypt::SecretBytes(static_cast<const char*>(nullptr)).IsEmpty());
}

}  // namespace
