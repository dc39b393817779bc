// SPDX-License-Identifier: MIT
// Encrypting and decrypting byte arrays and buffers, as a host calls the exports.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <string>

#include "CryptoTrace.h"
#include "Reference.h"
#include "support/GuardedBuffer.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

using reference::Cipher;
using reference::Hex;
using reference::Widened;
using ByteArray = CArray<BYTE, const BYTE&>;

const auto Enc = test::Export<decltype(ZERA_TOOLS_ENC)>(71);
const auto EncUc = test::Export<decltype(ZERA_TOOLS_ENC_UC)>(1071);
const auto Dec = test::Export<decltype(ZERA_TOOLS_DEC)>(72);
const auto DecUc = test::Export<decltype(ZERA_TOOLS_DEC_UC)>(1072);

constexpr char kInvalidArgument[] = ".PEAVCInvalidArgException@@";

// A host's array, which a test can also break.
struct Array : ByteArray {
  Array() = default;
  explicit Array(const std::string& bytes) {
    for (const char one : bytes) Add(static_cast<BYTE>(one));
  }
  std::string bytes() const {
    return {reinterpret_cast<const char*>(m_pData), static_cast<std::size_t>(m_nSize)};
  }
  using ByteArray::m_nGrowBy;
  using ByteArray::m_nMaxSize;
  using ByteArray::m_nSize;
  using ByteArray::m_pData;
};

std::wstring Text(const CStringW& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

std::wstring Decimal(const std::string& bytes) {
  std::wstring text;
  for (const char one : bytes) text += std::to_wstring(static_cast<unsigned char>(one));
  return text;
}

std::string AllBytes() {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  return bytes;
}

TEST(CryptBuffer, ArraysEncryptToHexadecimalOrDecimalText) {
  for (const std::string& plain : {std::string(), std::string("a"), AllBytes(), AllBytes() + "x"}) {
    const std::string key("a key \0 with zero", 17);
    const std::string cipher = Cipher(key, plain);
    CStringW out(L"before");
    EXPECT_EQ(EncUc(Array(key), Array(plain), out, TRUE), static_cast<int>(2 * plain.size()));
    EXPECT_EQ(Text(out), Widened(Hex(cipher)));
    EXPECT_EQ(EncUc(Array(key), Array(plain), out, 2), static_cast<int>(2 * plain.size()));
    EXPECT_EQ(EncUc(Array(key), Array(plain), out, FALSE), static_cast<int>(Decimal(cipher).size()));
    EXPECT_EQ(Text(out), Decimal(cipher));
  }
}

TEST(CryptBuffer, OneDecimalDigitIsAText) {
  CStringW out;
  EXPECT_EQ(EncUc(Array("key"), Array(Cipher("key", "\x05")), out, FALSE), 1);
  EXPECT_EQ(Text(out), L"5");
}

TEST(CryptBuffer, OneArrayMayBePassPhraseAndPlainBytes) {
  const Array both("both");
  CStringW out;
  EXPECT_EQ(EncUc(both, both, out, TRUE), 8);
  EXPECT_EQ(Text(out), Widened(Hex(Cipher("both", "both"))));
}

TEST(CryptBuffer, ArraysDecryptIntoTheHostsStorage) {
  const std::string plain = AllBytes();
  Array out(std::string(1000, 'o'));
  out.m_nGrowBy = 77;
  EXPECT_EQ(DecUc(Array("key"), Widened(Hex(Cipher("key", plain))).c_str(), TRUE, out), 256);
  EXPECT_EQ(out.bytes(), plain);
  EXPECT_GE(out.m_nMaxSize, out.m_nSize);
  EXPECT_EQ(out.m_nGrowBy, 77);
  out.Add(1);  // the storage is the host's own: it grows, and the destructor frees it
  EXPECT_EQ(out.m_nSize, 257);

  EXPECT_EQ(DecUc(Array("key"), L"", TRUE, out), 0);
  EXPECT_EQ(out.m_pData, nullptr);
  EXPECT_EQ(out.m_nSize, 0);
  EXPECT_EQ(out.m_nMaxSize, 0);
}

TEST(CryptBuffer, WithoutHexEachCharacterIsOneByte) {
  const std::string plain = "plain text";
  std::wstring cipher = Widened(Cipher("key", plain));
  ASSERT_EQ(cipher.find(L'\0'), std::wstring::npos);
  for (wchar_t& unit : cipher) unit = static_cast<wchar_t>(unit | 0x4E00);  // only the low byte counts
  Array out;
  EXPECT_EQ(DecUc(Array("key"), cipher.c_str(), FALSE, out), 10);
  EXPECT_EQ(out.bytes(), plain);
}

TEST(CryptBuffer, NullTextCountsAsEmptyInBothForms) {
  for (const BOOL hex : {TRUE, FALSE}) {
    Array out("before");
    EXPECT_EQ(DecUc(Array("key"), nullptr, hex, out), 0);
    EXPECT_EQ(out.m_nSize, 0);
  }
}

// Pairs are read eight at a time where there are as many, and never from behind the text.
TEST(CryptBuffer, TextAtTheEndOfAPage) {
  constexpr std::size_t kPage = 4096;
  auto* const pages = static_cast<BYTE*>(::VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
  ASSERT_NE(::VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE), nullptr);
  for (std::size_t size = 0; size < 20; ++size) {
    const std::string plain(size, 'p');
    const std::wstring cipher = Widened(Hex(Cipher("key", plain)));
    wchar_t* const text = reinterpret_cast<wchar_t*>(pages + kPage) - cipher.size() - 1;
    std::copy_n(cipher.c_str(), cipher.size() + 1, text);
    Array out;
    EXPECT_EQ(DecUc(Array("key"), text, TRUE, out), static_cast<int>(size));
    EXPECT_EQ(out.bytes(), plain);
  }
  ::VirtualFree(pages, 0, MEM_RELEASE);
}

TEST(CryptBuffer, DecimalTextDoesNotDecryptBack) {
  CStringW cipher;
  EncUc(Array("key"), Array("plain"), cipher, FALSE);
  Array out;
  EXPECT_EQ(DecUc(Array("key"), cipher, FALSE, out), cipher.GetLength());
  EXPECT_NE(out.bytes().substr(0, 5), "plain");
}

TEST(CryptBuffer, UnreadablePairLeavesAnEmptyArray) {
  const test::CryptoTrace trace;
  Array out("before");
  EXPECT_EQ(DecUc(Array("key"), L"00ZZ", TRUE, out), -1);
  EXPECT_EQ(out.m_nSize, 0);
  EXPECT_EQ(out.m_pData, nullptr);
  EXPECT_TRUE(trace.Calls().empty()) << "found before the service is asked";
}

TEST(CryptBuffer, ResultArrayIsEmptiedBeforeThePassPhraseIsTaken) {
  Array both("phrase");
  EXPECT_EQ(DecUc(both, Widened(Hex(Cipher("", "abc"))).c_str(), TRUE, both), 3);
  EXPECT_EQ(both.bytes(), "abc");
}

TEST(CryptBuffer, BrokenArraysRaiseTheInvalidArgumentException) {
  const test::CryptoTrace trace;
  for (const INT_PTR size : {INT_PTR{5}, INT_PTR{1}, INT_PTR{-1}, INT_PTR{-2}}) {
    Array broken(size == -2 ? "bytes" : "");
    broken.m_nSize = size;
    CStringW text(L"before");
    EXPECT_EQ(test::RaisedBy([&] { EncUc(broken, Array("plain"), text, TRUE); }), kInvalidArgument);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(test::RaisedBy([&] { EncUc(Array("key"), broken, text, TRUE); }), kInvalidArgument);
    Array out("before");
    EXPECT_EQ(test::RaisedBy([&] { DecUc(broken, L"00", TRUE, out); }), kInvalidArgument);
    EXPECT_EQ(out.m_nSize, 0);
    broken.m_nSize = 0;
  }
  EXPECT_TRUE(trace.Calls().empty());
}

// The longest text that a string object holds is asked of the heap; for one byte more nothing is.
std::size_t mostAsked;
TEST(CryptBuffer, MoreBytesThanATextHoldsAreAFailure) {
  constexpr INT_PTR kLongest = 0x7FFFFFEF;
  const test::CryptoTrace trace;
  const test::ImportHook memory(
      "calloc", +[](std::size_t count, std::size_t size) -> void* {
        mostAsked = std::max(mostAsked, count * size);
        return count * size > 1'000'000 ? nullptr : std::calloc(count, size);
      });
  Array plain("plain");
  for (const INT_PTR size : {kLongest, kLongest + 1, INT_PTR{1} << 40}) {
    mostAsked = 0;
    plain.m_nSize = size;
    CStringW out(L"before");
    EXPECT_EQ(EncUc(Array("key"), plain, out, TRUE), -1);
    EXPECT_STREQ(out, L"");
    EXPECT_EQ(mostAsked, size == kLongest ? static_cast<std::size_t>(kLongest) : 3) << "or the pass phrase's";
  }
  plain.m_nSize = 5;
  EXPECT_TRUE(trace.Calls().empty());
}

TEST(CryptBuffer, EncryptingABufferWorksOnlyWithNoBytes) {
  const test::CryptoTrace trace;
  for (const int count : {1, -1, 300, INT_MAX, INT_MIN}) {
    test::GuardedBuffer<char> out(16);
    EXPECT_EQ(test::RaisedBy([&] { Enc("key", nullptr, count, out.data(), 16, TRUE); }), kInvalidArgument);
    EXPECT_TRUE(out.Untouched());
    EXPECT_TRUE(out.Intact());
  }
  EXPECT_TRUE(trace.Calls().empty());
}

TEST(CryptBuffer, EncryptingNoBytesGivesAnEmptyText) {
  const auto* const unreadable = reinterpret_cast<const BYTE*>(8);
  for (const BOOL hex : {TRUE, FALSE}) {
    test::GuardedBuffer<char> none(0);
    EXPECT_EQ(Enc("key", unreadable, 0, none.data(), 0, hex), -1);
    EXPECT_TRUE(none.Intact());
    for (const std::size_t capacity : {1, 2, 100}) {
      test::GuardedBuffer<char> out(capacity);
      EXPECT_EQ(Enc("key", unreadable, 0, out.data(), static_cast<UINT>(capacity), hex), 0);
      EXPECT_EQ(out.text(), "");
      EXPECT_TRUE(out.UntouchedFrom(1));
      EXPECT_TRUE(out.Intact());
    }
  }
  EXPECT_EQ(Enc("key", nullptr, 0, nullptr, 0, TRUE), -1);
}

TEST(CryptBuffer, DecryptingNeedsRoomForTheBytesAndWritesNoMore) {
  for (const std::string& plain : {std::string("abc"), AllBytes(), std::string(5000, 'x')}) {
    const std::string cipher = Hex(Cipher("key", plain));
    for (const std::size_t capacity :
         {std::size_t{0}, plain.size() - 1, plain.size(), plain.size() + 1, plain.size() + 50}) {
      SCOPED_TRACE(capacity);
      test::GuardedBuffer<BYTE> out(capacity);
      const bool fits = capacity >= plain.size();
      const UINT hex = capacity % 2 ? 1 : 2;  // anything but 0
      EXPECT_EQ(Dec("key", cipher.c_str(), hex, out.data(), static_cast<UINT>(capacity)),
                fits ? static_cast<int>(plain.size()) : -1);
      if (fits) {
        EXPECT_EQ(std::string(out.data(), out.data() + plain.size()), plain);
        EXPECT_TRUE(out.UntouchedFrom(plain.size()));
      } else {
        EXPECT_TRUE(out.Untouched());
      }
      EXPECT_TRUE(out.Intact());
    }
  }
}

TEST(CryptBuffer, DecryptingNothingNeedsNoBuffer) {
  EXPECT_EQ(Dec("key", "", 1, nullptr, 0), 0);
  EXPECT_EQ(Dec(nullptr, nullptr, 1, nullptr, 0), 0);
  EXPECT_EQ(Dec("key", "ZZ", 1, nullptr, 0), -1);
}

TEST(CryptBuffer, PassPhraseIsBytesAndCipherTextIsWidenedByTheCodePage) {
  // A lead byte, a trail byte and a single byte, in whatever code page this runs.
  const std::string phrase = "\x83\x5C\xB1";
  const std::string text = "\x83\x5C\xB1\x80 text";
  std::string low;
  for (const wchar_t unit : test::Wide(text)) low += static_cast<char>(unit);
  const std::string expected = Cipher(phrase, low);

  test::GuardedBuffer<BYTE> out(64);
  EXPECT_EQ(Dec(phrase.c_str(), text.c_str(), 0, out.data(), 64), static_cast<int>(low.size()));
  EXPECT_EQ(std::string(out.data(), out.data() + low.size()), expected);
}

// The C runtime's own reading of a pair: what it makes of a digit with something else beside it.
bool RuntimeReads(wchar_t first, wchar_t second, unsigned* value) {
  using Scanner =
      int __cdecl(unsigned long long, const wchar_t*, std::size_t, const wchar_t*, void*, va_list);
  static const auto scan = reinterpret_cast<Scanner*>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"ucrtbase.dll"), "__stdio_common_vswscanf")));
  const wchar_t text[] = {first, second, 0};
  return scan(0, text, static_cast<std::size_t>(-1), L"%X", nullptr, reinterpret_cast<va_list>(&value)) == 1;
}

TEST(CryptBuffer, PairsAreReadAsTheRuntimeReadsThem) {
  std::wstring readable;
  std::string values;
  int unreadable = 0;
  const auto check = [&](wchar_t first, wchar_t second) {
    const wchar_t pair[] = {first, second, 0};
    unsigned value = 0;
    if (RuntimeReads(first, second, &value)) {
      readable += pair;
      values += static_cast<char>(value);
    } else {
      ++unreadable;
      Array out;
      EXPECT_EQ(DecUc(Array(), pair, TRUE, out), -1)
          << std::hex << unsigned{first} << " " << unsigned{second};
    }
  };
  for (wchar_t first = 1; first < 256; ++first) {
    for (wchar_t second = 1; second < 256; ++second) check(first, second);
  }
  for (unsigned unit = 256; unit < 0x10000; ++unit) {
    check(static_cast<wchar_t>(unit), L'A');
    check(L'b', static_cast<wchar_t>(unit));
  }
  EXPECT_GT(values.size(), 16u * 255);
  EXPECT_GT(unreadable, 20000);

  Array out;
  EXPECT_EQ(DecUc(Array(), readable.c_str(), TRUE, out), static_cast<int>(values.size()));
  EXPECT_TRUE(out.bytes() == Cipher("", values));
}

TEST(CryptBuffer, PairsThatHostsHaveSeen) {
  const struct {
    const wchar_t* pair;
    int byte;  // -1: unreadable
  } rows[] = {
      {L"7f", 0x7F}, {L"A?", 0x0A}, {L"9 ", 0x09}, {L" c", 0x0C}, {L"-1", 0xFF},
      {L"+b", 0x0B}, {L"?A", -1},   {L"--", -1},   {L"g0", -1},   {L"%0", -1},
  };
  for (const auto& row : rows) {
    Array out("before");
    EXPECT_EQ(DecUc(Array("key"), row.pair, TRUE, out), row.byte < 0 ? -1 : 1) << test::Ansi(row.pair);
    EXPECT_EQ(out.bytes(), row.byte < 0 ? "" : Cipher("key", std::string(1, static_cast<char>(row.byte))))
        << test::Ansi(row.pair);
  }
}

}  // namespace
