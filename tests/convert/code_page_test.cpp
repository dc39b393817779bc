// SPDX-License-Identifier: MIT
// Text into and out of the ANSI code page. Runs once for each code page that the signs have a form in.
#include <gtest/gtest.h>
#include <mbctype.h>
#include <windows.h>

#include <random>
#include <string>

#include "Conversions.h"
#include "support/ImportHook.h"
#include "support/TempFolder.h"

using namespace conversions;

namespace {

int page;
int queries;
int __cdecl Page() {
  ++queries;
  return page;
}

// The library asks the C runtime for its multi-byte code page. Under Wine a fresh process answers the
// number of a single-byte code page where Windows answers 0, so the answer is given by the test.
class Signs : public ::testing::Test {
 protected:
  test::ImportHook hook_{"_getmbcp", &Page};
};

struct Row {
  int page;
  const char* micro;
  const char* degree;
  const char* latinDegree;  // what follows from Latin-1 text
  bool drops;
};

const Row kRows[] = {
    {0, "\xB5", "\xB0", "\xB0", false},
    {932, "\x83\xCA", "\x81\x8B", "\x81\x8B", true},
    {936, "\xA6\xCC", "\xA1\xE3", "\xA1\xE3", true},
    {949, "\xA5\xEC", "\xA1\xC6", "\xA1\xC6", true},
    {950, "\xA3\x67", "\xA2\x58", "\xA2\x58", true},
    {874, "u", "", "deg", false},
    {1361, "u", "deg", "deg", false},
    {1252, "u", "deg", "deg", false},
    {65001, "u", "deg", "deg", false},
    {-1, "u", "deg", "deg", false},
};

TEST_F(Signs, FollowTheTable) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.page);
    page = row.page;
    const std::string micro = row.micro, degree = row.degree, latin = row.latinDegree;
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"\xB5")), micro);
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"\xB0")), degree);
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"5 \xB5m")), "5 " + micro + "m");
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"25\xB0"
                                            L"C")),
              (row.drops ? "" : "25") + degree + "C");
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"1\xB0\xB5\xB0\xB5")),
              row.drops ? degree + micro : "1" + degree + micro + degree + micro);
    EXPECT_EQ(Convert(Char8ToMbc, std::string("\xB5")), micro);
    EXPECT_EQ(Convert(Char8ToMbc, std::string("\xB0")), latin);
    EXPECT_EQ(Convert(Char8ToMbc, std::string("5 \xB5m")), "5 " + micro + "m");
    EXPECT_EQ(Convert(Char8ToMbc, std::string("25\xB0"
                                              "C")),
              (row.drops ? "" : "25") + latin + "C");
    EXPECT_EQ(Convert(Char8ToMbc, std::string("1\xB0\xB5\xB0\xB5")),
              row.drops ? latin + micro : "1" + latin + micro + latin + micro);
  }
}

TEST_F(Signs, AskForTheCodePageOnce) {
  queries = 0;
  Convert(UcToMbc, std::wstring(1000, L'\xB5'));
  EXPECT_EQ(queries, 1);
  Convert(Char8ToMbc, std::string(1000, '\xB5'));
  EXPECT_EQ(queries, 2);
}

TEST_F(Signs, LatinBytesStayAsTheyAre) {
  for (const Row& row : kRows) {
    page = row.page;
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
      if (byte != 0xB0 && byte != 0xB5) bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(Convert(Char8ToMbc, bytes), bytes);
  }
}

// The code page that counts is the C runtime's, which library and host share, whatever the ANSI one.
TEST(CodePage, TheHostsChoiceCounts) {
  const int before = ::_getmbcp();
  for (const int choice : {932, 949}) {
    ASSERT_EQ(::_setmbcp(choice), 0);
    ASSERT_EQ(::_getmbcp(), choice);
    EXPECT_EQ(Convert(UcToMbc, std::wstring(L"25\xB0"
                                            L"C")),
              choice == 932 ? "\x81\x8B"
                              "C"
                            : "\xA1\xC6"
                              "C");
  }
  ::_setmbcp(before);
}

std::string AnsiOfOne(wchar_t one) {
  char bytes[8];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, &one, 1, bytes, sizeof bytes, nullptr, nullptr);
  return {bytes, static_cast<std::size_t>(size)};
}

TEST(CodePage, EveryOtherUnitIsConvertedForItself) {
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    if (unit == 0xB0 || unit == 0xB5) continue;
    const std::wstring text = {L'<', static_cast<wchar_t>(unit), L'>'};
    ASSERT_EQ(Convert(UcToMbc, text), "<" + AnsiOfOne(static_cast<wchar_t>(unit)) + ">") << unit;
  }
}

// Characters whose numbers have something in common, one beside the other: a lower half, a place in their
// page.
TEST(CodePage, CharactersAreNotTakenForOthersAlike) {
  const wchar_t alike[] = {0x80, 0x100, 0xE1,  0x61,   0x161, 0x1E1, 0xFF,
                           0x7F, 0x1FF, 0x200, 0xFFFF, 0x101, 0x81};
  std::wstring text;
  for (const wchar_t first : alike) {
    for (const wchar_t second : alike) text += std::wstring(8, first) + second + std::wstring(7, first);
  }
  for (const std::wstring& units : {text, std::wstring(text.rbegin(), text.rend())}) {
    std::string expected;
    for (const wchar_t unit : units) expected += AnsiOfOne(unit);
    EXPECT_EQ(Convert(UcToMbc, units), expected);
  }
}

// A pair of surrogates is two characters here, neither of which a code page has.
TEST(CodePage, SurrogatesAreNotPaired) {
  const std::string half = AnsiOfOne(0xD83D);
  EXPECT_EQ(Convert(UcToMbc, std::wstring(L"\U0001F600")), half + half);
}

TEST(CodePage, RandomTextsAreTheSumOfTheirUnits) {
  std::mt19937 random(110);
  for (int round = 0; round < 300; ++round) {
    std::wstring text(random() % 200, L'\0');
    std::string expected;
    for (wchar_t& unit : text) {
      do unit = static_cast<wchar_t>(1 + random() % (round % 2 ? 0xFFFF : 0x17F));
      while (unit == 0xB0 || unit == 0xB5);
      expected += AnsiOfOne(unit);
    }
    ASSERT_EQ(Convert(UcToMbc, text), expected);
  }
}

// Each byte is converted as a text of its own: the second byte of a double-byte character does not
// join the first.
std::wstring WideOfOne(char one) {
  const char text[] = {one, 0};
  wchar_t units[8];
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text, -1, units, 8);
  return {units, static_cast<std::size_t>(size - 1)};
}

TEST(CodePage, BytesBecomeWideOneByOne) {
  std::string all;
  std::wstring expected;
  for (int byte = 1; byte < 256; ++byte) {
    const std::wstring one = byte == 0xB0 || byte == 0xB5 ? std::wstring(1, static_cast<wchar_t>(byte))
                                                          : WideOfOne(static_cast<char>(byte));
    EXPECT_EQ(Convert(Char8ToUc, std::string(1, static_cast<char>(byte))), one) << byte;
    all += static_cast<char>(byte);
    expected += one;
  }
  EXPECT_EQ(Convert(Char8ToUc, all), expected);
}

TEST(CodePage, BytesAreNotTakenForOthersAlike) {
  const char alike[] = {'\x80', '\xE1', '\x61', '\xFF', '\x7F', '\x01', '\x81'};
  std::string text;
  std::wstring expected;
  for (const char first : alike) {
    for (const char second : alike) {
      text += std::string(16, first) + second + std::string(15, first);
      const std::wstring one = WideOfOne(first);
      for (int i = 0; i < 16; ++i) expected += one;
      expected += WideOfOne(second);
      for (int i = 0; i < 15; ++i) expected += one;
    }
  }
  EXPECT_EQ(Convert(Char8ToUc, text), expected);
}

TEST(CodePage, SignsStayWideUnderEveryCodePage) {
  EXPECT_EQ(Convert(Char8ToUc, std::string("25 \xB0"
                                           "C, 5 \xB5m")),
            L"25 \xB0"
            L"C, 5 \xB5m");
}

// However often a character occurs, the code page is asked for it once; never for ASCII.
int conversions_made;
decltype(&WideCharToMultiByte) originalConversion;
int WINAPI CountConversion(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR out, int size,
                           LPCCH replacement, LPBOOL replaced) {
  ++conversions_made;
  return originalConversion(codePage, flags, text, length, out, size, replacement, replaced);
}

TEST(CodePage, LongTextsTakeLinearWork) {
  const int length = 1 << 20;
  std::wstring text(length, L'a');
  for (int i = 0; i < length; i += 4) text[i] = i % 8 ? 0x20AC : 0x0416;
  test::ImportHook hook("WideCharToMultiByte", &CountConversion);
  originalConversion = hook.Original<decltype(WideCharToMultiByte)>();
  conversions_made = 0;
  test::HeapWatch heap;
  CStringA result;
  UcToMbc(text.c_str(), result);
  EXPECT_GE(result.GetLength(), length);
  EXPECT_EQ(conversions_made, 2);
  EXPECT_LT(heap.Allocations(), 64);
  EXPECT_EQ(heap.Outstanding(), 0) << "what was remembered is given back";
}

int WINAPI RefuseUtf16(UINT, DWORD, LPCWCH, int, LPSTR, int, LPCCH, LPBOOL) {
  return 0;
}
int WINAPI RefuseBytes(UINT, DWORD, LPCCH, int, LPWSTR, int) {
  return 0;
}

TEST(CodePage, CharactersThatThePlatformRefusesGiveNothing) {
  const test::ImportHook utf16("WideCharToMultiByte", &RefuseUtf16);
  const test::ImportHook bytes("MultiByteToWideChar", &RefuseBytes);
  EXPECT_EQ(Convert(UcToMbc, std::wstring(L"a\u20ACb\u0416")), "ab");
  EXPECT_EQ(Convert(Char8ToUc, std::string("a\x80"
                                           "b\xFF")),
            L"ab");
  EXPECT_EQ(Convert(Char8ToUc, std::string("\xB0\xB5")), L"\xB0\xB5") << "it is not asked for the signs";
}

}  // namespace
