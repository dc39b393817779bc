// SPDX-License-Identifier: MIT
// Numbers read from settings files, both character sets from one table.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <random>

#include "NumericLocale.h"
#include "Settings.h"
#include "support/CodePage.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

using settings::Calls;
using settings::LocaleRecorder;
using settings::NumericLocale;
using settings::Recorder;

namespace {

template <class Number>
using Plain = Number __cdecl(const char*, const char*, const char*, Number, Number, Number);
template <class Number>
using Wide = Number __cdecl(const wchar_t*, const wchar_t*, const wchar_t*, Number, Number, Number);

// An export and its UTF-16 twin.
template <class Number>
struct Twins {
  Plain<Number>* plain;
  Wide<Number>* wide;
};

const Twins<int> Int = {test::Export<Plain<int>>(51), test::Export<Wide<int>>(1051)};
const Twins<unsigned> Uint = {test::Export<Plain<unsigned>>(52), test::Export<Wide<unsigned>>(1052)};
const Twins<WORD> Word = {test::Export<Plain<WORD>>(58), test::Export<Wide<WORD>>(1058)};
const Twins<double> Double = {test::Export<Plain<double>>(53), test::Export<Wide<double>>(1053)};
const Twins<float> Float = {test::Export<Plain<float>>(54), test::Export<Wide<float>>(1054)};

class ReadNumbers : public ::testing::Test {
 protected:
  // What both twins give for a value text in the file.
  template <class Number>
  void Expect(const Twins<Number>& read, const std::string& text, Number standard, Number minimum,
              Number maximum, Number expected) {
    file_.Put("[S]\r\nK=" + text + "\r\n");
    ExpectStored(read, standard, minimum, maximum, expected, text);
  }
  template <class Number>
  void ExpectStored(const Twins<Number>& read, Number standard, Number minimum, Number maximum,
                    Number expected, const std::string& text) {
    const Number plain = read.plain("S", "K", file_.plain(), standard, minimum, maximum);
    const Number wide = read.wide(L"S", L"K", file_.wide(), standard, minimum, maximum);
    if (expected != expected) {
      EXPECT_NE(plain, plain) << text;
      EXPECT_NE(wide, wide) << text;
      return;
    }
    EXPECT_EQ(plain, expected) << "plain " << text;
    EXPECT_EQ(wide, expected) << "wide " << text;
  }

  settings::File file_;
};

TEST_F(ReadNumbers, Integers) {
  const struct {
    const char* text;
    int expected;
  } rows[] = {
      {"0", 0},
      {"-1", -1},
      {"+7", 7},
      {"2147483647", INT_MAX},
      {"-2147483648", INT_MIN},
      {"12abc", 12},
      {"abc", 0},
      {"-", 0},
      {"1.9", 1},
      {"0x10", 0},
      {"1 2", 1},
      {"007", 7},
      {"\"42\"", 42},
      {"- 5", 0},
  };
  for (const auto& row : rows) Expect(Int, row.text, 99, INT_MIN, INT_MAX, row.expected);
}

TEST_F(ReadNumbers, UnsignedIntegers) {
  const struct {
    const char* text;
    unsigned expected;
  } rows[] = {
      {"0", 0},
      {"4294967295", UINT_MAX},
      {"-1", UINT_MAX},
      {"-2", UINT_MAX - 1},
      {"0x10", 0},
      {"010", 10},
      {"4294967296", UINT_MAX},
      {"abc", 0},
      {"+9", 9},
  };
  for (const auto& row : rows) Expect(Uint, row.text, 99u, 0u, UINT_MAX, row.expected);
}

// What does not fit is what the C runtime makes of it.
TEST_F(ReadNumbers, IntegersBeyondTheirRange) {
  for (const char* const text :
       {"2147483648", "-2147483649", "4294967295", "4294967297", "99999999999", "-99999999999"}) {
    file_.Put(std::string("[S]\r\nK=") + text + "\r\n");
    const std::wstring wide = test::Wide(text);
    EXPECT_EQ(Int.plain("S", "K", file_.plain(), 9, INT_MIN, INT_MAX), std::atoi(text)) << text;
    EXPECT_EQ(Int.wide(L"S", L"K", file_.wide(), 9, INT_MIN, INT_MAX), ::_wtoi(wide.c_str())) << text;
    EXPECT_EQ(Uint.plain("S", "K", file_.plain(), 9, 0, UINT_MAX), std::strtoul(text, nullptr, 10)) << text;
    EXPECT_EQ(Uint.wide(L"S", L"K", file_.wide(), 9, 0, UINT_MAX), std::wcstoul(wide.c_str(), nullptr, 10))
        << text;
  }
}

TEST_F(ReadNumbers, Words) {
  const struct {
    const char* text;
    WORD expected;
  } rows[] = {
      {"0", 0}, {"65535", 65535}, {"65536", 65535}, {"-1", 65535}, {"4294967295", 65535}, {"0x10", 0},
  };
  for (const auto& row : rows) Expect<WORD>(Word, row.text, 99, 0, 65535, row.expected);
  Expect<WORD>(Word, "-1", 0, 10, 1000, 1000);
  Expect<WORD>(Word, "65541", 0, 10, 1000, 1000);  // 5 with its high half cut would be the minimum
}

TEST_F(ReadNumbers, MissingAndEmptyGiveTheDefaultAsItIs) {
  for (const char* const bytes :
       {"", "[S]\r\n", "[S]\r\nK=\r\n", "[S]\r\nK=   \r\n", "[T]\r\nK=5\r\n", "K=5\r\n", "[S]\r\nKK=5\r\n"}) {
    if (*bytes) file_.Put(bytes);
    ExpectStored(Int, -77, 0, 10, -77, bytes);
    ExpectStored(Uint, 77u, 0u, 10u, 77u, bytes);
    ExpectStored<WORD>(Word, 77, 0, 10, 77, bytes);
    ExpectStored(Double, -7.7, 0.0, 1.0, -7.7, bytes);
    ExpectStored(Float, 16777217.7f, 0.0f, 1.0f, 16777217.7f, bytes);
  }
}

// The minimum wins over a maximum below it; stored as a table of what is expected, not by the rule.
TEST_F(ReadNumbers, ValuesAreClamped) {
  const struct {
    int value, minimum, maximum, expected;
  } rows[] = {
      {5, 0, 10, 5},  {0, 0, 10, 0},  {10, 0, 10, 10}, {11, 0, 10, 10}, {5, 5, 5, 5},
      {4, 5, 5, 5},   {6, 5, 5, 5},   {5, 10, 0, 10},  {10, 10, 0, 0},  {11, 10, 0, 0},
      {0, 10, 0, 10}, {7, 10, 7, 10}, {1, 2, 3, 2},    {4, 2, 3, 3},
  };
  for (const auto& row : rows) {
    const std::string text = std::to_string(row.value);
    Expect(Int, text, 99, row.minimum, row.maximum, row.expected);
    const auto u = [](int value) { return static_cast<unsigned>(value); };
    Expect(Uint, text, 99u, u(row.minimum), u(row.maximum), u(row.expected));
    const auto w = [](int value) { return static_cast<WORD>(value); };
    Expect<WORD>(Word, text, 99, w(row.minimum), w(row.maximum), w(row.expected));
    Expect<double>(Double, text + ".0", 99, row.minimum, row.maximum, row.expected);
    Expect<float>(Float, text + ".0", 99, static_cast<float>(row.minimum), static_cast<float>(row.maximum),
                  static_cast<float>(row.expected));
  }
  Expect(Int, "-5", 0, -10, -6, -6);
  Expect(Int, "-5", 0, -4, 4, -4);
  Expect(Uint, "-1", 0u, 5u, 4294967294u, 4294967294u);
}

TEST_F(ReadNumbers, RandomIntegersAreClampedByTheirOwnOrder) {
  std::mt19937 random(51);
  for (int round = 0; round < 150; ++round) {
    const auto any = [&] { return static_cast<int>(random() >> random() % 32); };
    const int value = any() * (round % 2 ? 1 : -1), one = any(), two = -any();
    const long long low = std::min(one, two), high = std::max(one, two);
    const int expected = static_cast<int>(std::min(std::max<long long>(value, low), high));
    Expect(Int, std::to_string(value), 0, std::min(one, two), std::max(one, two), expected);
    const auto u = static_cast<unsigned>(value);
    const unsigned least = std::min<unsigned>(one, two), most = std::max<unsigned>(one, two);
    Expect(Uint, std::to_string(u), 0u, least, most, u < least ? least : std::min(u, most));
  }
}

// A platform that tells of a value and gives none, behind one that gives all: the text is empty at first.
bool givesNothing;
DWORD WINAPI GiveSevens(LPCSTR, LPCSTR, LPCSTR, LPSTR text, DWORD size, LPCSTR) {
  if (!givesNothing) std::fill_n(text, size - 1, '7');
  return size - 1;
}
DWORD WINAPI GiveSevensWide(LPCWSTR, LPCWSTR, LPCWSTR, LPWSTR text, DWORD size, LPCWSTR) {
  if (!givesNothing) std::fill_n(text, size - 1, L'7');
  return size - 1;
}

TEST_F(ReadNumbers, NothingIsLeftOfTheValueBefore) {
  const test::ImportHook plainHook("GetPrivateProfileStringA", &GiveSevens);
  const test::ImportHook wideHook("GetPrivateProfileStringW", &GiveSevensWide);
  givesNothing = false;
  const unsigned sevens = Uint.plain("S", "K", file_.plain(), 9, 0, 100);
  givesNothing = true;
  const unsigned plain = Uint.plain("S", "K", file_.plain(), 9, 0, 100);
  givesNothing = false;
  const unsigned wideSevens = Uint.wide(L"S", L"K", file_.wide(), 9, 0, 100);
  givesNothing = true;
  const unsigned wide = Uint.wide(L"S", L"K", file_.wide(), 9, 0, 100);
  EXPECT_EQ(sevens, 100u);
  EXPECT_EQ(plain, 0u);
  EXPECT_EQ(wideSevens, 100u);
  EXPECT_EQ(wide, 0u);
}

TEST_F(ReadNumbers, LongTextsAreCutAt255Characters) {
  Expect(Int, std::string(253, '0') + "12", 0, INT_MIN, INT_MAX, 12);
  Expect(Int, std::string(254, '0') + "12", 0, INT_MIN, INT_MAX, 1);
  Expect(Int, std::string(255, '0') + "12", 99, INT_MIN, INT_MAX, 0);
  Expect(Double, "0." + std::string(252, '0') + "1" + std::string(500, '9'), 9.0, -1.0, 1.0, 1e-253);
}

TEST_F(ReadNumbers, FloatingPoint) {
  const struct {
    const char* text;
    double expected;
  } rows[] = {
      {"1.5", 1.5}, {"-0.25", -0.25}, {"1,5", 1.0},          {"1e3", 1000}, {"abc", 0},
      {".5", 0.5},  {"+2.", 2},       {"1.5000000000", 1.5}, {"3 4", 3},
  };
  constexpr double kMost = std::numeric_limits<double>::max();
  for (const auto& row : rows) {
    Expect<double>(Double, row.text, 99, -kMost, kMost, row.expected);
    Expect<float>(Float, row.text, 99, -1e30f, 1e30f, static_cast<float>(row.expected));
  }
}

// Both comparisons with a NaN are false, so no limit takes its place.
TEST_F(ReadNumbers, NotANumberPassesTheClamp) {
  Expect<double>(Double, "nan", 0, 1, 2, std::numeric_limits<double>::quiet_NaN());
  Expect<float>(Float, "nan", 0, 1, 2, std::numeric_limits<float>::quiet_NaN());
}

// Zero is not below zero: a stored sign stays beside a limit without one.
TEST_F(ReadNumbers, NegativeZeroIsNoLimit) {
  file_.Put("[S]\r\nK=-0.0\r\n");
  for (const double least : {-1.0, 0.0}) {
    const double most = least + 1;
    EXPECT_TRUE(std::signbit(Double.plain("S", "K", file_.plain(), 9, least, most)));
    EXPECT_TRUE(std::signbit(Double.wide(L"S", L"K", file_.wide(), 9, least, most)));
    const auto low = static_cast<float>(least), high = static_cast<float>(most);
    EXPECT_TRUE(std::signbit(Float.wide(L"S", L"K", file_.wide(), 9, low, high)));
  }
}

TEST_F(ReadNumbers, FloatsAreClampedAsDoublesAndNarrowedLast) {
  // 0.1f is a little above 0.1: the text lies below the minimum, which is given as it was.
  Expect(Float, "0.1", 9.0f, 0.1f, 1.0f, 0.1f);
  Expect(Float, "0.3", 9.0f, 0.0f, 0.1f, 0.1f);
  Expect(Float, "16777217", 9.0f, 0.0f, 1e9f, 16777216.0f);
  Expect(Float, "1e300", 9.0f, 0.0f, std::numeric_limits<float>::infinity(),
         std::numeric_limits<float>::infinity());
}

TEST_F(ReadNumbers, RandomDoublesAsTheyWereWritten) {
  std::mt19937_64 random(53);
  for (int round = 0; round < 150; ++round) {
    const double value =
        std::ldexp(static_cast<double>(static_cast<long long>(random())), -static_cast<int>(random() % 64));
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    Expect(Double, std::string(text, end), 0.0, -1e30, 1e30, value);
    Expect(Float, std::string(text, end), 0.0f, -1e30f, 1e30f, static_cast<float>(value));
  }
}

// The file's decimal separator is a point, whatever the user's locale; the locale comes back.
TEST_F(ReadNumbers, AnyLocaleReadsAPoint) {
  for (const char* const name : {"C", "english", "german", "french"}) {
    SCOPED_TRACE(name);
    const NumericLocale locale(name);
    Expect(Double, "1.5", 0.0, -9.0, 9.0, 1.5);
    Expect(Double, "1,5", 0.0, -9.0, 9.0, 1.0);
    Expect(Float, "2.5", 0.0f, -9.0f, 9.0f, 2.5f);
    Expect(Float, "2,5", 0.0f, -9.0f, 9.0f, 2.0f);
    EXPECT_TRUE(locale.Kept());
  }
}

TEST_F(ReadNumbers, TheLocaleIsSwitchedByTheVariantsOwnFunctions) {
  file_.Put("[S]\r\nK=1.5\r\n");
  const NumericLocale locale("german");
  ASSERT_NE(locale.name(), "german") << "the platform gives the full name";
  LocaleRecorder recorder;
  const auto expect = [&](const char* form, auto read) {
    recorder.Calls().clear();
    read();
    const std::string f = form;
    EXPECT_EQ(recorder.Calls(), (Calls{f + "?", f + "english", f + locale.name()}));
  };
  expect("a:", [&] { Double.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("w:", [&] { Double.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
  expect("w:", [&] { Float.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("w:", [&] { Float.wide(L"S", L"K", file_.wide(), 0, 0, 9); });

  // Nothing to convert, nothing to switch.
  recorder.Calls().clear();
  Double.plain("S", "missing", file_.plain(), 0, 0, 9);
  Float.wide(L"S", L"missing", file_.wide(), 0, 0, 9);
  Int.plain("S", "K", file_.plain(), 0, 0, 9);
  Uint.wide(L"S", L"K", file_.wide(), 0, 0, 9);
  EXPECT_EQ(recorder.Calls(), Calls());
}

// A locale function that fails leaves the user's locale as it was.
TEST_F(ReadNumbers, FailingLocaleFunctionsLeaveTheLocaleAlone) {
  file_.Put("[S]\r\nK=1.5\r\n");
  const NumericLocale locale("german");
  for (int at = 1; at <= 2; ++at) {
    LocaleRecorder recorder;
    recorder.FailAt() = at;
    Double.plain("S", "K", file_.plain(), 0, 0, 9);
    EXPECT_TRUE(locale.Kept()) << at;
    recorder.Calls().clear();
    Double.wide(L"S", L"K", file_.wide(), 0, 0, 9);
    EXPECT_TRUE(locale.Kept()) << at;
  }
}

errno_t __cdecl RefuseToCopy(char* to, rsize_t, const char*) {
  to[0] = 0;
  return EINVAL;
}
errno_t __cdecl RefuseToCopyWide(wchar_t* to, rsize_t, const wchar_t*) {
  to[0] = 0;
  return EINVAL;
}

// A locale whose name could not be kept is one that nobody could go back to.
TEST_F(ReadNumbers, LocaleIsNotSwitchedWithoutItsName) {
  file_.Put("[S]\r\nK=1.5\r\n");
  const NumericLocale locale("german");
  const test::ImportHook narrow("strcpy_s", &RefuseToCopy);
  const test::ImportHook wide("wcscpy_s", &RefuseToCopyWide);
  const LocaleRecorder recorder;
  Double.plain("S", "K", file_.plain(), 0, 0, 9);
  EXPECT_TRUE(locale.Kept());
  Double.wide(L"S", L"K", file_.wide(), 0, 0, 9);
  EXPECT_TRUE(locale.Kept());
  for (const std::string& call : recorder.Calls()) EXPECT_EQ(call.substr(1), ":?");
}

// A locale's name that has no room is one that could not be kept either, and none is none.
bool hasName;
std::string localeName;
std::wstring wideLocaleName;
Calls switchedTo;
char* __cdecl SwitchNarrow(int, const char* name) {
  if (name) switchedTo.push_back(name);
  return hasName ? localeName.data() : nullptr;
}
wchar_t* __cdecl SwitchWide(int, const wchar_t* name) {
  if (name) switchedTo.push_back(test::Ansi(name));
  return hasName ? wideLocaleName.data() : nullptr;
}

TEST_F(ReadNumbers, LocaleNamesOfEveryLength) {
  file_.Put("[S]\r\nK=1.5\r\n");
  const test::ImportHook narrow("setlocale", &SwitchNarrow);
  const test::ImportHook wide("_wsetlocale", &SwitchWide);
  const test::InvalidParameter handler;
  const auto expect = [&](const Calls& expected) {
    switchedTo.clear();
    EXPECT_EQ(Double.plain("S", "K", file_.plain(), 0, 0, 9), 1.5);
    EXPECT_EQ(switchedTo, expected) << localeName;
    switchedTo.clear();
    EXPECT_EQ(Double.wide(L"S", L"K", file_.wide(), 0, 0, 9), 1.5);
    EXPECT_EQ(switchedTo, expected) << localeName;
  };
  hasName = true;
  for (const std::size_t length : {1, 2, 254, 255, 256, 257, 1000}) {
    localeName.assign(length, 'n');
    wideLocaleName.assign(length, L'n');
    expect(length < 256 ? Calls{"english", localeName} : Calls());
  }
  hasName = false;
  expect(Calls());
  EXPECT_EQ(handler.Count(), 0);
}

// One platform call each, of the stated character set.
TEST_F(ReadNumbers, AskThePlatformOnce) {
  file_.Put("[S]\r\nK=1\r\n");
  Recorder recorder;
  const auto expect = [&](const char* call, auto read) {
    recorder.Calls().clear();
    read();
    EXPECT_EQ(recorder.Calls(), Calls{std::string(call) + " \"S\" \"K\" \"\" 256"});
  };
  expect("ReadA", [&] { Int.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("ReadA", [&] { Uint.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("ReadA", [&] { Word.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("ReadA", [&] { Double.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("ReadW", [&] { Float.plain("S", "K", file_.plain(), 0, 0, 9); });
  expect("ReadW", [&] { Int.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
  expect("ReadW", [&] { Uint.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
  expect("ReadW", [&] { Word.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
  expect("ReadW", [&] { Double.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
  expect("ReadW", [&] { Float.wide(L"S", L"K", file_.wide(), 0, 0, 9); });
}

TEST_F(ReadNumbers, FailingPlatformGivesTheDefault) {
  file_.Put("[S]\r\nK=1\r\n");
  Recorder recorder;
  recorder.Failing() = true;
  ExpectStored(Int, -5, 0, 9, -5, "failing");
  ExpectStored(Uint, 50u, 0u, 9u, 50u, "failing");
  ExpectStored<WORD>(Word, 50, 0, 9, 50, "failing");
  ExpectStored(Double, -5.5, 0.0, 9.0, -5.5, "failing");
  ExpectStored(Float, -5.5f, 0.0f, 9.0f, -5.5f, "failing");
}

// Section and key in the code page, with a trail byte that looks like a backslash where there is one.
TEST_F(ReadNumbers, NamesInTheCodePage) {
  const std::string name = test::Local().bytes;
  const std::wstring wide = test::Wide(name);
  file_.Put("[" + name + "]\r\n" + name + "=12\r\n");
  EXPECT_EQ(Int.plain(name.c_str(), name.c_str(), file_.plain(), 0, 0, 99), 12);
  EXPECT_EQ(Int.wide(wide.c_str(), wide.c_str(), file_.wide(), 0, 0, 99), 12);
  EXPECT_EQ(Float.plain(name.c_str(), name.c_str(), file_.plain(), 0, 0, 99), 12);
  EXPECT_EQ(Double.plain(name.c_str(), name.c_str(), file_.plain(), 0, 0, 99), 12);
}

// The converting variant takes null names as empty ones.
TEST_F(ReadNumbers, NullNamesOfTheConvertingVariant) {
  Recorder recorder;
  EXPECT_EQ(Float.plain(nullptr, nullptr, file_.plain(), 3.5f, 0, 9), 3.5f);
  EXPECT_EQ(recorder.Calls(), Calls{"ReadW \"\" \"\" \"\" 256"});
}

TEST_F(ReadNumbers, NothingIsTakenFromTheHeap) {
  file_.Put("[S]\r\nK=1.5\r\n");
  test::HeapWatch heap;
  Int.plain("S", "K", file_.plain(), 0, 0, 9);
  Double.plain("S", "K", file_.plain(), 0, 0, 9);
  Float.plain("S", "K", file_.plain(), 0, 0, 9);
  Double.wide(L"S", L"K", file_.wide(), 0, 0, 9);
  EXPECT_EQ(heap.Allocations(), 0);
}

}  // namespace
