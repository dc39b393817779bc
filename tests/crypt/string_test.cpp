// SPDX-License-Identifier: MIT
// Encrypting and decrypting texts, as a host calls the exports; both character sets from one table.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

#include "Reference.h"
#include "support/HostException.h"
#include "support/HostString.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

using reference::Cipher;
using reference::Hex;
using reference::Widened;

const auto Short = test::Export<decltype(ZERA_TOOLS_ENC_STRING_S)>(75);
const auto ShortUc = test::Export<decltype(ZERA_TOOLS_ENC_STRING_S_UC)>(1075);
const auto Long = test::Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77);
const auto LongUc = test::Export<decltype(ZERA_TOOLS_ENC_STRING_L_UC)>(1077);
const auto Dec = test::Export<decltype(ZERA_TOOLS_DEC_STRING)>(76);
const auto DecUc = test::Export<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076);

std::string Bytes(std::size_t count, unsigned seed = 1) {
  std::mt19937 random(seed);
  std::string bytes(count, '\0');
  for (char& one : bytes) one = static_cast<char>(random());
  return bytes;
}

CStringA Narrow(const std::string& text) {
  return CStringA(text.data(), static_cast<int>(text.size()));
}
CStringW Wide(const std::wstring& text) {
  return CStringW(text.data(), static_cast<int>(text.size()));
}
std::string Text(const CStringA& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}
std::wstring Text(const CStringW& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

struct Row {
  std::string passPhrase;
  std::string plain;
};

std::vector<Row> Rows() {
  std::vector<Row> rows = {
      {"key", ""},
      {"", ""},
      {"", "plain"},
      {"Key", "Plaintext"},
      {"key", "Plaintext"},
      {"licence", "abc"},
      {"licence", "abcd"},
      {"licence", "abcde"},
      {"licence", "0123456789"},
      {"\xE4\xF6\xFC", "\x81\x40\xFD\xFF"},
      {std::string(1000, 'k'), "text"},
      {"key", std::string("zero \0 inside", 13)},
      {"key", Bytes(255)},
      {"key", Bytes(256)},
      {"key", Bytes(257)},
      {"key", Bytes(32767)},
  };
  for (unsigned seed = 2; seed < 30; ++seed)
    rows.push_back({"phrase " + std::to_string(seed), Bytes(seed * 7, seed)});
  return rows;
}

TEST(CryptString, LongFormIsTheCipherInHexadecimal) {
  for (const Row& row : Rows()) {
    SCOPED_TRACE(row.passPhrase + " / " + Hex(row.plain.substr(0, 32)));
    const std::string expected = Hex(Cipher(row.passPhrase, row.plain));
    CStringA narrow("before");
    EXPECT_EQ(Long(row.passPhrase.c_str(), Narrow(row.plain), narrow), static_cast<int>(expected.size()));
    EXPECT_EQ(Text(narrow), expected);
    CStringW wide(L"before");
    EXPECT_EQ(LongUc(Widened(row.passPhrase).c_str(), Wide(Widened(row.plain)), wide),
              static_cast<int>(expected.size()));
    EXPECT_EQ(Text(wide), Widened(expected));
  }
}

// Texts as they stand in settings files, and in docs/cipher-text.md.
TEST(CryptString, StoredTextsStayReadable) {
  const struct {
    const char* passPhrase;
    const char* plain;
    const char* cipher;
  } rows[] = {{"key", "", ""},
              {"key", "a", "0E"},
              {"key", "abc", "0E7778"},
              {"Key", "abc", "8D2139"},
              {"", "abc", "040EB0"}};
  for (const auto& row : rows) {
    CStringA text;
    EXPECT_EQ(Long(row.passPhrase, CStringA(row.plain), text), static_cast<int>(std::strlen(row.cipher)));
    EXPECT_STREQ(text, row.cipher);
    EXPECT_EQ(Dec(row.passPhrase, CStringA(row.cipher), text), static_cast<int>(std::strlen(row.plain)));
    EXPECT_STREQ(text, row.plain);
  }
}

TEST(CryptString, ShortFormIsTheBeginningOfTheLongOneWithItsLength) {
  for (const Row& row : Rows()) {
    SCOPED_TRACE(row.passPhrase + " / " + Hex(row.plain.substr(0, 32)));
    const std::string whole = Hex(Cipher(row.passPhrase, row.plain));
    CStringA narrow("before");
    EXPECT_EQ(Short(row.passPhrase.c_str(), Narrow(row.plain), narrow), static_cast<int>(whole.size()));
    EXPECT_EQ(Text(narrow), whole.substr(0, 8));
    CStringW wide(L"before");
    EXPECT_EQ(ShortUc(Widened(row.passPhrase).c_str(), Wide(Widened(row.plain)), wide),
              static_cast<int>(whole.size()));
    EXPECT_EQ(Text(wide), Widened(whole.substr(0, 8)));
  }
}

TEST(CryptString, DecryptingGivesTheBytesBackAsTheVariantDoes) {
  for (const Row& row : Rows()) {
    SCOPED_TRACE(row.passPhrase + " / " + Hex(row.plain.substr(0, 32)));
    const std::string cipher = Hex(Cipher(row.passPhrase, row.plain));
    CStringA narrow("before");
    const bool fits = row.plain.size() <= 99;
    EXPECT_EQ(Dec(row.passPhrase.c_str(), Narrow(cipher), narrow),
              fits ? static_cast<int>(row.plain.size()) : -1);
    EXPECT_EQ(Text(narrow), fits ? std::string(row.plain.c_str()) : "");
    CStringW wide(L"before");
    EXPECT_EQ(DecUc(Widened(row.passPhrase).c_str(), Widened(cipher).c_str(), wide),
              static_cast<int>(row.plain.size()));
    EXPECT_EQ(Text(wide), Widened(row.plain));
  }
}

TEST(CryptString, PlainDecryptingGives99BytesAndNoMore) {
  for (const std::size_t size : {98u, 99u, 100u, 101u, 5000u}) {
    SCOPED_TRACE(size);
    const std::string plain(size, 'x');
    const std::string cipher = Hex(Cipher("key", plain));
    // A longer text in the string's buffer must not show behind the 99th byte.
    for (const std::string& before : {std::string(), std::string("short"), std::string(300, 'o')}) {
      CStringA out(before.c_str());
      EXPECT_EQ(Dec("key", Narrow(cipher), out), size <= 99 ? static_cast<int>(size) : -1);
      EXPECT_EQ(Text(out), size <= 99 ? plain : "");
      EXPECT_EQ(out.GetString()[out.GetLength()], '\0');
    }
  }
}

TEST(CryptString, PlainTextEndsAtItsFirstZeroByte) {
  const std::string plain("ab\0cd", 5);
  CStringA out;
  EXPECT_EQ(Dec("key", Narrow(Hex(Cipher("key", plain))), out), 5);
  EXPECT_EQ(Text(out), "ab");
  std::string full(99, 'x');
  full[98] = '\0';
  EXPECT_EQ(Dec("key", Narrow(Hex(Cipher("key", full))), out), 99);
  EXPECT_EQ(Text(out), std::string(98, 'x'));
}

TEST(CryptString, OneByteComesBackAsOneCharacter) {
  const CStringW plain(L"x");
  CStringW text, back(L"before");
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_ENC_STRING_L_UC)>(1077)(L"key", plain, text), 2);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076)(L"key", text, back), 1);
  EXPECT_STREQ(back.GetString(), L"x");
  EXPECT_EQ(back.GetLength(), 1);
}

TEST(CryptString, UnitsBeyondOneByteLoseTheirHighByte) {
  CStringW cipher;
  EXPECT_EQ(LongUc(L"\u20AC\xD800k", Wide(L"\u0141\u4E2D\xDC00Z\xFFFF"), cipher), 10);
  EXPECT_EQ(Text(cipher),
            Widened(Hex(Cipher(std::string("\xAC\x00k", 3), std::string("\x41\x2D\x00Z\xFF", 5)))));
  CStringW plain;
  EXPECT_EQ(DecUc(L"\u20AC\xD800k", cipher, plain), 5);
  EXPECT_EQ(Text(plain), std::wstring(L"\u0041\u002D\0Z\u00FF", 5));
}

TEST(CryptString, DigitsOfEitherCaseAndAnOddLastCharacter) {
  const std::string plain = "\x9A\xBC\xDE\xF0 text with every digit";
  std::string cipher = Hex(Cipher("key", plain));
  for (char& one : cipher) one = static_cast<char>(std::tolower(one));
  CStringA narrow;
  EXPECT_EQ(Dec("key", Narrow(cipher), narrow), static_cast<int>(plain.size()));
  EXPECT_EQ(Text(narrow), plain);
  CStringW wide;
  EXPECT_EQ(DecUc(L"key", Widened(cipher + "Z").c_str(), wide), static_cast<int>(plain.size()));
  EXPECT_EQ(Text(wide), Widened(plain));
  EXPECT_EQ(DecUc(L"key", L"A", wide), 0);
  EXPECT_EQ(Text(wide), L"");
}

TEST(CryptString, UnreadableTextEmptiesTheResult) {
  for (const char* const cipher : {"ZZ", "00ZZ", "zz00", "??", "  "}) {
    SCOPED_TRACE(cipher);
    CStringA narrow("before");
    EXPECT_EQ(Dec("key", CStringA(cipher), narrow), -1);
    EXPECT_EQ(Text(narrow), "");
    CStringW wide(L"before");
    EXPECT_EQ(DecUc(L"key", CStringW(cipher), wide), -1);
    EXPECT_EQ(Text(wide), L"");
  }
}

TEST(CryptString, NullTextCountsAsEmpty) {
  CStringA narrow;
  EXPECT_EQ(Long(nullptr, CStringA("abc"), narrow), 6);
  EXPECT_EQ(Text(narrow), Hex(Cipher("", "abc")));
  EXPECT_EQ(Dec(nullptr, narrow, narrow), 3);
  EXPECT_EQ(Text(narrow), "abc");
  CStringW wide(L"before");
  EXPECT_EQ(LongUc(nullptr, CStringW(L"abc"), wide), 6);
  EXPECT_EQ(Text(wide), Widened(Hex(Cipher("", "abc"))));
  EXPECT_EQ(DecUc(L"key", nullptr, wide), 0);
  EXPECT_EQ(Text(wide), L"");
}

TEST(CryptString, OneStringMayBeInputAndResult) {
  const std::string plain = "in place, longer than eight";
  const std::string cipher = Hex(Cipher("key", plain));
  CStringA narrow(plain.c_str());
  EXPECT_EQ(Long("key", narrow, narrow), static_cast<int>(cipher.size()));
  EXPECT_EQ(Text(narrow), cipher);
  EXPECT_EQ(Dec("key", narrow, narrow), static_cast<int>(plain.size()));
  EXPECT_EQ(Text(narrow), plain);

  CStringW wide(Widened(plain).c_str());
  EXPECT_EQ(ShortUc(L"key", wide, wide), static_cast<int>(cipher.size()));
  EXPECT_EQ(Text(wide), Widened(cipher.substr(0, 8)));
  wide = Widened(cipher).c_str();
  EXPECT_EQ(DecUc(L"key", wide, wide), static_cast<int>(plain.size()));
  EXPECT_EQ(Text(wide), Widened(plain));

  // The pass phrase lies in the result's own buffer.
  narrow = "phrase";
  EXPECT_EQ(Long(narrow, CStringA("abc"), narrow), 6);
  EXPECT_EQ(Text(narrow), Hex(Cipher("phrase", "abc")));
  const CStringA stored = narrow;
  narrow = "phrase";
  EXPECT_EQ(Dec(narrow, stored, narrow), 3);
  EXPECT_EQ(Text(narrow), "abc");
  wide = L"phrase";
  EXPECT_EQ(DecUc(wide, CStringW(stored.GetString()), wide), 3);
  EXPECT_EQ(Text(wide), L"abc");
}

TEST(CryptString, StringsOfTheHostStayWithTheirManager) {
  test::CountingManager manager;
  {
    test::HostString<wchar_t> out(manager, L"a text that the host had before");
    const CStringW shared(out.object());
    EXPECT_EQ(LongUc(L"key", CStringW(L"0123456789"), out.object()), 20);
    EXPECT_EQ(out.text(), Widened(Hex(Cipher("key", "0123456789"))));
    EXPECT_EQ(out.header()->pStringMgr, &manager);
    EXPECT_STREQ(shared, L"a text that the host had before");
    EXPECT_EQ(DecUc(L"key", out.text().c_str(), out.object()), 10);
    EXPECT_EQ(out.text(), L"0123456789");
    EXPECT_EQ(DecUc(L"key", L"ZZ", out.object()), -1);
    EXPECT_EQ(out.text(), L"");
    test::HostString<char> narrow(manager, "before");
    EXPECT_EQ(Short("key", CStringA("0123456789"), narrow.object()), 20);
    EXPECT_EQ(narrow.text(), Hex(Cipher("key", "0123456789")).substr(0, 8));
    EXPECT_EQ(Dec("key", CStringA("ZZ"), narrow.object()), -1);
    EXPECT_EQ(narrow.text(), "");
  }
  EXPECT_EQ(manager.outstanding, 0);
  EXPECT_TRUE(manager.NilIntact());
}

TEST(CryptString, LockedBufferOfAFixedStringIsWrittenInPlace) {
  test::FixedManager<wchar_t, 40> manager;
  test::HostString<wchar_t> out(manager, L"before");
  EXPECT_EQ(LongUc(L"key", CStringW(L"0123456789"), out.object()), 20);
  EXPECT_EQ(std::wstring(manager.text()), Widened(Hex(Cipher("key", "0123456789"))));
  EXPECT_EQ(DecUc(L"key", manager.text(), out.object()), 10);
  EXPECT_EQ(std::wstring(manager.text()), L"0123456789");
  EXPECT_EQ(manager.allocations, 0);
}

TEST(CryptString, ExhaustedMemoryOfTheHostsManagerReachesTheHost) {
  test::CountingManager manager;
  {
    test::HostString<wchar_t> wide(manager, L"before");
    test::HostString<char> narrow(manager, "before");
    manager.failing = true;
    EXPECT_EQ(test::RaisedBy([&] { LongUc(L"key", CStringW(L"0123456789"), wide.object()); }),
              test::kMemoryException);
    EXPECT_EQ(wide.text(), L"");
    EXPECT_EQ(test::RaisedBy([&] { DecUc(L"key", L"0102", wide.object()); }), test::kMemoryException);
    EXPECT_EQ(wide.text(), L"");
    EXPECT_EQ(test::RaisedBy([&] { Dec("key", CStringA("0102"), narrow.object()); }), test::kMemoryException);
    EXPECT_EQ(narrow.text(), "before");
    manager.failing = false;
  }
  EXPECT_EQ(manager.outstanding, 0);
}

TEST(CryptString, SixteenMebibytesInOneCall) {
  const std::string plain = Bytes(16u << 20);
  const std::string cipher = Hex(Cipher("key", plain));
  CStringA narrow;
  EXPECT_EQ(Long("key", Narrow(plain), narrow), 32 << 20);
  EXPECT_TRUE(Text(narrow) == cipher);
  CStringW wide;
  EXPECT_EQ(LongUc(L"key", Wide(Widened(plain)), wide), 32 << 20);
  EXPECT_TRUE(Text(wide) == Widened(cipher));
  EXPECT_EQ(DecUc(L"key", wide, wide), 16 << 20);
  EXPECT_TRUE(Text(wide) == Widened(plain));
}

TEST(CryptString, ThreadsDoNotDisturbOneAnother) {
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([number] {
      const std::string key = "key " + std::to_string(number);
      const std::string plain = Bytes(64, static_cast<unsigned>(number));
      const std::string expected = Hex(Cipher(key, plain));
      for (int i = 0; i < 25; ++i) {
        CStringA cipher;
        EXPECT_EQ(Long(key.c_str(), Narrow(plain), cipher), 128);
        EXPECT_EQ(Text(cipher), expected);
      }
    });
  }
  for (std::thread& one : threads) one.join();
}

}  // namespace
