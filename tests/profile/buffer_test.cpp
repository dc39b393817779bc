// SPDX-License-Identifier: MIT
// A settings file's text put together in a caller's buffer, both character sets from one table.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>

#include "NumericLocale.h"
#include "Settings.h"
#include "support/CodePage.h"
#include "support/GuardedBuffer.h"
#include "support/HostException.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

using settings::Calls;
using settings::LocaleRecorder;
using settings::NumericLocale;

namespace {

const auto SectionPlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_SECTION)>(80);
const auto SectionWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_SECTION_UC)>(1080);
const auto StringPlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING)>(81);
const auto StringWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING_UC)>(1081);
const auto IntPlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_INT)>(82);
const auto IntWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_INT_UC)>(1082);
const auto UintPlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_UINT)>(83);
const auto UintWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_UINT_UC)>(1083);
const auto DoublePlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_DOUBLE)>(84);
const auto DoubleWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_DOUBLE_UC)>(1084);
const auto FloatPlain = test::Export<decltype(ZERA_TOOLS_BUFWRITE_FLOAT)>(85);
const auto FloatWide = test::Export<decltype(ZERA_TOOLS_BUFWRITE_FLOAT_UC)>(1085);

template <class Char>
using Call = std::function<int(Char* position, std::size_t free, std::size_t* count)>;

// One line, both variants, and whether a line that does not fit sets the count to 0.
struct Row {
  std::string line;
  bool clearsCount;
  Call<char> plain;
  Call<wchar_t> wide;
};

Row Section(const char* name) {
  return {"[" + std::string(name) + "]\n", true,
          [=](char* p, std::size_t f, std::size_t* c) { return SectionPlain(name, p, f, c); },
          [=](wchar_t* p, std::size_t f, std::size_t* c) {
            return SectionWide(test::Wide(name).c_str(), p, f, c);
          }};
}
template <class Number, class Plain, class Wide>
Row Value(const std::string& text, bool clears, Plain plain, Wide wide, Number value) {
  return {"Key=" + text + "\n", clears,
          [=](char* p, std::size_t f, std::size_t* c) { return plain("Key", p, f, value, c); },
          [=](wchar_t* p, std::size_t f, std::size_t* c) { return wide(L"Key", p, f, value, c); }};
}
Row Text(const char* value) {
  return {"Key=" + std::string(value) + "\n", true,
          [=](char* p, std::size_t f, std::size_t* c) { return StringPlain("Key", p, f, value, c); },
          [=](wchar_t* p, std::size_t f, std::size_t* c) {
            return StringWide(L"Key", p, f, test::Wide(value).c_str(), c);
          }};
}
Row Int(const char* text, int value) {
  return Value(text, false, IntPlain, IntWide, value);
}
Row Uint(const char* text, unsigned value) {
  return Value(text, false, UintPlain, UintWide, value);
}
Row Double(const char* text, double value) {
  return Value(text, false, DoublePlain, DoubleWide, value);
}
Row Float(const char* text, float value) {
  return Value(text, false, FloatPlain, FloatWide, value);
}

std::vector<Row> Rows() {
  return {Section("General"),
          Section(""),
          Text("plain text"),
          Text(""),
          Text("100 % of %s and %n"),
          Int("0", 0),
          Int("-2147483648", INT_MIN),
          Int("2147483647", INT_MAX),
          Uint("0", 0),
          Uint("4294967295", UINT_MAX),
          Double("2.5000000000", 2.5),
          Double("-0.1000000000", -0.1),
          Float("0.1000000015", 0.1f),
          Float("-2.5000000000", -2.5f)};
}

constexpr std::size_t kBefore = 4711;

template <class Char>
void ExpectLine(const Call<Char>& call, const std::string& line, bool clearsCount) {
  SCOPED_TRACE(line);
  const std::basic_string<Char> expected(line.begin(), line.end());
  for (const std::size_t free : {line.size() + 1, line.size() + 2, line.size() + 100}) {
    test::GuardedBuffer<Char> out(free);
    std::size_t count = kBefore;
    EXPECT_EQ(call(out.data(), free, &count), 1) << free;
    EXPECT_EQ(out.text(), expected);
    EXPECT_EQ(count, line.size());
    EXPECT_TRUE(out.UntouchedFrom(line.size() + 1));
    EXPECT_TRUE(out.Intact());
  }
  for (const std::size_t free : {line.size(), line.size() - 1, std::size_t{1}, std::size_t{0}}) {
    test::GuardedBuffer<Char> out(free);
    std::size_t count = kBefore;
    EXPECT_EQ(call(out.data(), free, &count), 0) << free;
    EXPECT_EQ(count, clearsCount ? 0 : kBefore) << free;
    EXPECT_TRUE(out.Untouched());
    EXPECT_TRUE(out.Intact());
  }
}

TEST(Buffer, EachLineAtEveryFreeSize) {
  for (const Row& row : Rows()) {
    ExpectLine(row.plain, row.line, row.clearsCount);
    ExpectLine(row.wide, row.line, row.clearsCount);
  }
}

// The toolchain's own formatting, which the library does not use, tells what is expected.
TEST(Buffer, RandomNumbersAreExact) {
  std::mt19937_64 random(84);
  for (int round = 0; round < 500; ++round) {
    double value = round == 0 ? -DBL_MAX : std::bit_cast<double>(random());
    if (round % 2) value = static_cast<double>(static_cast<long long>(random() >> random() % 60)) / 1e6;
    if (value != value || value - value != 0) continue;
    // Which way the middle between two numbers goes is the platform's affair.
    char expected[1500];
    std::snprintf(expected, sizeof expected, "%.1100f", value);
    const std::string rest = std::strchr(expected, '.') + 11;
    if (rest[0] == '5' && rest.find_first_not_of('0', 1) == rest.npos) continue;
    std::snprintf(expected, sizeof expected, "%.10f", value);
    ExpectLine<char>(Double(expected, value).plain, Double(expected, value).line, false);
    ExpectLine<wchar_t>(Double(expected, value).wide, Double(expected, value).line, false);
  }
}

TEST(Buffer, PlainTextIsNotConverted) {
  // Half a double-byte character, and bytes that no code page has.
  const char value[] = "\x83\xFC\x81";
  ExpectLine<char>(Text(value).plain, std::string("Key=") + value + "\n", true);
}

TEST(Buffer, NumbersHaveAPointUnderEveryLocale) {
  for (const char* const name : {"C", "german", "french"}) {
    SCOPED_TRACE(name);
    const NumericLocale locale(name);
    for (const Row& row : {Double("2.5000000000", 2.5), Float("0.5000000000", 0.5f)}) {
      ExpectLine(row.plain, row.line, false);
      ExpectLine(row.wide, row.line, false);
    }
    EXPECT_TRUE(locale.Kept());
  }
}

// By the wide functions in both variants; the integers leave the locale alone.
TEST(Buffer, TheLocaleIsSwitchedOnce) {
  const NumericLocale locale("german");
  LocaleRecorder recorder;
  char plain[64];
  wchar_t wide[64];
  std::size_t count;
  for (const Row& row : {Double("", 2.5), Float("", 2.5f)}) {
    for (const std::size_t free : {64, 3}) {
      recorder.Calls().clear();
      row.plain(plain, free, &count);
      EXPECT_EQ(recorder.Calls(), (Calls{"w:?", "w:english", "w:" + locale.name()}));
      recorder.Calls().clear();
      row.wide(wide, free, &count);
      EXPECT_EQ(recorder.Calls(), (Calls{"w:?", "w:english", "w:" + locale.name()}));
    }
  }
  recorder.Calls().clear();
  for (const Row& row : {Int("", 1), Uint("", 1), Section("S"), Text("t")}) row.plain(plain, 64, &count);
  EXPECT_EQ(recorder.Calls(), Calls());
}

// The handler of a copy that does not fit runs under the user's own locale.
std::string localeAtCopy;
void __cdecl SeeLocale(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {
  localeAtCopy = ::setlocale(LC_NUMERIC, nullptr);
}

TEST(Buffer, TheLocaleIsBackBeforeTheCopy) {
  const NumericLocale locale("german");
  const auto before = ::_set_invalid_parameter_handler(&SeeLocale);
  std::size_t count = kBefore;
  localeAtCopy = "";
  EXPECT_EQ(DoublePlain("Key", nullptr, 100, 2.5, &count), 1);
  EXPECT_EQ(localeAtCopy, locale.name());
  EXPECT_EQ(count, 17u);
  localeAtCopy = "";
  EXPECT_EQ(FloatWide(L"Key", nullptr, 100, 2.5f, &count), 1);
  EXPECT_EQ(localeAtCopy, locale.name());
  ::_set_invalid_parameter_handler(before);
}

TEST(Buffer, ANullPositionIsAnInvalidParameter) {
  test::InvalidParameter handler;
  int expected = 0;
  for (const Row& row : Rows()) {
    std::size_t count = kBefore;
    EXPECT_EQ(row.plain(nullptr, 1000, &count), 1);
    EXPECT_EQ(count, row.line.size());
    EXPECT_EQ(row.wide(nullptr, 1000, &count), 1);
    EXPECT_EQ(handler.Count(), expected += 2);
  }
}

class TwoLines : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::NeedsCompanion(value_)) return;
    test::GuardedBuffer<wchar_t> out(first_.size() + 1);
    std::size_t count = kBefore;
    EXPECT_EQ(StringWide(L"K", out.data(), out.capacity(), value_.c_str(), &count), 1);
    EXPECT_EQ(out.text(), first_);
    EXPECT_EQ(count, first_.size());
    GTEST_SKIP() << "the code page is UTF-8 itself: there is one line";
  }

  // A value whose UTF-8 bytes survive the way through both code pages.
  const std::wstring value_ = L"x\u20ACx";
  const std::wstring first_ = L"K=x\u20ACx\n";
  const std::wstring second_ = L"K_utf8=" + test::Wide("x\xE2\x82\xACx") + L"\n";
  const std::size_t both_ = first_.size() + second_.size();
};

TEST_F(TwoLines, TextOutsideAsciiHasItsCompanionBehindIt) {
  for (const std::size_t free : {both_ + 1, both_ + 50}) {
    test::GuardedBuffer<wchar_t> out(free);
    std::size_t count = kBefore;
    EXPECT_EQ(StringWide(L"K", out.data(), free, value_.c_str(), &count), 1);
    EXPECT_EQ(out.text(), first_ + second_);
    EXPECT_EQ(count, both_);
    EXPECT_TRUE(out.UntouchedFrom(both_ + 1));
    EXPECT_TRUE(out.Intact());
  }
}

// The companion's line needs no room for its terminator to be counted as written; the bounded copy then
// fails, and what is there is the first line.
TEST_F(TwoLines, ExactlyTheLengthIsAnInvalidParameterAndASuccess) {
  test::InvalidParameter handler;
  test::GuardedBuffer<wchar_t> out(both_);
  std::size_t count = kBefore;
  EXPECT_EQ(StringWide(L"K", out.data(), both_, value_.c_str(), &count), 1);
  EXPECT_EQ(handler.Count(), 1);
  EXPECT_EQ(count, both_);
  EXPECT_EQ(out.text(), first_);
  EXPECT_TRUE(out.Intact());
}

TEST_F(TwoLines, RoomForTheFirstLineOnly) {
  test::InvalidParameter handler;
  for (const std::size_t free : {both_ - 1, first_.size() + 2, first_.size() + 1}) {
    test::GuardedBuffer<wchar_t> out(free);
    std::size_t count = kBefore;
    EXPECT_EQ(StringWide(L"K", out.data(), free, value_.c_str(), &count), 0) << free;
    EXPECT_EQ(count, first_.size());
    EXPECT_EQ(out.text(), first_);
    EXPECT_TRUE(out.UntouchedFrom(first_.size() + 1));
  }
  for (const std::size_t free : {first_.size(), std::size_t{0}}) {
    test::GuardedBuffer<wchar_t> out(free);
    std::size_t count = kBefore;
    EXPECT_EQ(StringWide(L"K", out.data(), free, value_.c_str(), &count), 0) << free;
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(out.Untouched());
  }
  EXPECT_EQ(handler.Count(), 0);
}

TEST_F(TwoLines, ThePlainVariantWritesOne) {
  test::GuardedBuffer<char> out(64);
  std::size_t count = kBefore;
  EXPECT_EQ(StringPlain("K", out.data(), 64, "\xC3\xA4", &count), 1);
  EXPECT_EQ(out.text(), "K=\xC3\xA4\n");
}

// The value may lie where the line goes.
TEST_F(TwoLines, ValueInThePlaceOfTheLine) {
  wchar_t text[64] = L"x\u20ACx";
  std::size_t count = kBefore;
  EXPECT_EQ(StringWide(L"K", text, 64, text, &count), 1);
  EXPECT_EQ(text, first_ + second_);
}

// The last character of ASCII, and the first that is none.
TEST(Buffer, CompanionsBeginBehindAscii) {
  for (const wchar_t unit : {L'\x7F', L'\x80'}) {
    const std::wstring value(1, unit);
    wchar_t text[64];
    std::size_t count = kBefore;
    EXPECT_EQ(StringWide(L"K", text, 64, value.c_str(), &count), 1);
    EXPECT_EQ(std::wcsstr(text, L"\nK_utf8=") != nullptr, test::NeedsCompanion(value)) << unsigned{unit};
  }
}

// A name may lie where the line goes, as its value may.
TEST(Buffer, NamesInThePlaceOfTheLine) {
  std::size_t count = kBefore;
  char plain[64] = "General";
  EXPECT_EQ(SectionPlain(plain, plain, 64, &count), 1);
  EXPECT_STREQ(plain, "[General]\n");
  wchar_t wide[64] = L"General";
  EXPECT_EQ(SectionWide(wide, wide, 64, &count), 1);
  EXPECT_STREQ(wide, L"[General]\n");
  char key[64] = "xxKey";
  EXPECT_EQ(IntPlain(key + 2, key, 64, -5, &count), 1);
  EXPECT_STREQ(key, "Key=-5\n");
  char value[64] = "value";
  EXPECT_EQ(StringPlain("Key", value, 64, value, &count), 1);
  EXPECT_STREQ(value, "Key=value\n");
}

TEST(Buffer, NothingIsTakenFromTheHeapForOneLine) {
  const std::vector<Row> rows = Rows();
  char plain[64];
  wchar_t wide[64];
  std::size_t count = kBefore;
  const test::HeapWatch heap;
  for (const Row& row : rows) {
    EXPECT_EQ(row.plain(plain, 64, &count), 1);
    EXPECT_EQ(row.wide(wide, 64, &count), 1);
  }
  EXPECT_EQ(heap.Allocations(), 0);
}

// A whole file, put together by advancing, read by the library's own readers.
TEST(Buffer, AWholeFileReadsBack) {
  wchar_t text[1000];
  std::size_t used = 0, count = 0;
  const auto add = [&](int result) {
    ASSERT_EQ(result, 1);
    used += count;
  };
  add(SectionWide(L"S", text, 1000, &count));
  add(StringWide(L"Text", text + used, 1000 - used, L"x\u00E4x", &count));
  add(IntWide(L"Int", text + used, 1000 - used, -5, &count));
  add(DoubleWide(L"Double", text + used, 1000 - used, 0.125, &count));
  ASSERT_EQ(used, std::wcslen(text));
  const settings::File file(test::Ansi(text));
  wchar_t back[64];
  test::Export<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050)(L"S", L"Text", file.wide(), L"", back, 64);
  EXPECT_STREQ(back, L"x\u00E4x");
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_READ_INT_UC)>(1051)(L"S", L"Int", file.wide(), 0, -9, 9), -5);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_READ_DOUBLE_UC)>(1053)(L"S", L"Double", file.wide(), 0, -9, 9),
            0.125);
}

int mallocsLeft;
void* __cdecl FailingMalloc(size_t size) {
  return mallocsLeft-- > 0 ? std::malloc(size) : nullptr;
}

TEST_F(TwoLines, EveryFailingAllocationLeavesNothingBehind) {
  for (int allowed = 0;; ++allowed) {
    ASSERT_LT(allowed, 30);
    test::GuardedBuffer<wchar_t> out(64);
    std::size_t count = kBefore;
    test::HeapWatch heap;
    std::string raised;
    {
      test::ImportHook hook("malloc", &FailingMalloc);
      mallocsLeft = allowed;
      raised = test::RaisedBy([&] { StringWide(L"K", out.data(), 64, value_.c_str(), &count); });
    }
    EXPECT_EQ(heap.Outstanding(), -(allowed - (mallocsLeft > 0 ? mallocsLeft : 0)));
    if (raised.empty()) break;
    EXPECT_EQ(raised, test::kMemoryException);
    EXPECT_TRUE(out.Untouched());
  }
}

}  // namespace
