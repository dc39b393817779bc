// SPDX-License-Identifier: MIT
// Values written to settings files, down to the bytes on disk.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <random>

#include "NumericLocale.h"
#include "Settings.h"
#include "support/CodePage.h"
#include "support/HostException.h"
#include "support/Library.h"

using settings::Calls;
using settings::LocaleRecorder;
using settings::NumericLocale;
using settings::Recorder;

namespace {

const auto WriteStringPlain = test::Export<decltype(ZERA_TOOLS_WRITE_STRING)>(60);
const auto WriteStringWide = test::Export<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060);
const auto ReadStringWide = test::Export<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050);

template <class Number>
struct Twins {
  int(__cdecl* plain)(const char*, const char*, const char*, Number);
  int(__cdecl* wide)(const wchar_t*, const wchar_t*, const wchar_t*, Number);
};

const Twins<int> Int = {test::Export<decltype(ZERA_TOOLS_WRITE_INT)>(61),
                        test::Export<decltype(ZERA_TOOLS_WRITE_INT_UC)>(1061)};
const Twins<unsigned> Uint = {test::Export<decltype(ZERA_TOOLS_WRITE_UINT)>(62),
                              test::Export<decltype(ZERA_TOOLS_WRITE_UINT_UC)>(1062)};
const Twins<WORD> Word = {test::Export<decltype(ZERA_TOOLS_WRITE_WORD)>(65),
                          test::Export<decltype(ZERA_TOOLS_WRITE_WORD_UC)>(1065)};
const Twins<double> Double = {test::Export<decltype(ZERA_TOOLS_WRITE_DOUBLE)>(63),
                              test::Export<decltype(ZERA_TOOLS_WRITE_DOUBLE_UC)>(1063)};
const Twins<float> Float = {test::Export<decltype(ZERA_TOOLS_WRITE_FLOAT)>(64),
                            test::Export<decltype(ZERA_TOOLS_WRITE_FLOAT_UC)>(1064)};

class Write : public ::testing::Test {
 protected:
  template <class Number>
  void Expect(const Twins<Number>& write, Number value, const std::string& text) {
    const std::string bytes = "[S]\r\nK=" + text + "\r\n";
    file_.Put("");
    EXPECT_EQ(write.plain("S", "K", file_.plain(), value), TRUE);
    EXPECT_EQ(file_.Bytes(), bytes) << "plain";
    file_.Put("");
    EXPECT_EQ(write.wide(L"S", L"K", file_.wide(), value), TRUE);
    EXPECT_EQ(file_.Bytes(), bytes) << "wide";
  }
  // The file after the wide writer stored a text.
  std::string Stored(const std::string& before, const wchar_t* value) {
    file_.Put(before);
    EXPECT_EQ(WriteStringWide(L"S", L"K", file_.wide(), value), 1);
    return file_.Bytes();
  }
  std::wstring ReadBack() {
    wchar_t text[1000];
    ReadStringWide(L"S", L"K", file_.wide(), L"default", text, 1000);
    return text;
  }

  settings::File file_;
};

TEST_F(Write, Integers) {
  Expect(Int, 0, "0");
  Expect(Int, -1, "-1");
  Expect(Int, INT_MAX, "2147483647");
  Expect(Int, INT_MIN, "-2147483648");
  Expect(Uint, 0u, "0");
  Expect(Uint, UINT_MAX, "4294967295");
  Expect(Uint, 2147483648u, "2147483648");
  Expect<WORD>(Word, 0, "0");
  Expect<WORD>(Word, 65535, "65535");
  std::mt19937 random(61);
  for (int round = 0; round < 20; ++round) {
    const unsigned value = random();
    Expect(Int, static_cast<int>(value), std::to_string(static_cast<int>(value)));
    Expect(Uint, value, std::to_string(value));
    Expect(Word, static_cast<WORD>(value), std::to_string(value & 0xFFFF));
  }
}

TEST_F(Write, FloatingPoint) {
  Expect(Double, 1.5, "1.5000000000");
  Expect(Double, 0.1, "0.1000000000");
  Expect(Double, -0.25, "-0.2500000000");
  Expect(Double, 0.0, "0.0000000000");
  Expect(Double, -0.0, "-0.0000000000");
  Expect(Double, 123456789.0123456789, "123456789.0123456717");
  Expect(Double, 1e22, "10000000000000000000000.0000000000");
  Expect(Double, 4e-11, "0.0000000000");
  Expect(Double, 6e-11, "0.0000000001");
  Expect(Float, 1.5f, "1.5000000000");
  Expect(Float, 0.1f, "0.1000000015");
  Expect(Float, 16777216.0f, "16777216.0000000000");
}

// The largest number has 309 digits before the point, and reads back cut by the reader's 255.
TEST_F(Write, TheLargestNumberFits) {
  file_.Put("");
  EXPECT_EQ(Double.wide(L"S", L"K", file_.wide(), -DBL_MAX), TRUE);
  const std::string bytes = file_.Bytes();
  EXPECT_EQ(bytes.size(), std::string("[S]\r\nK=").size() + 1 + 309 + 11 + 2);
  EXPECT_EQ(bytes.substr(0, 25), "[S]\r\nK=-17976931348623157");
}

TEST_F(Write, NumbersThatAreNone) {
  Expect(Double, HUGE_VAL, "inf");
  Expect(Float, -HUGE_VALF, "-inf");
  Expect(Double, std::numeric_limits<double>::quiet_NaN(), "nan");
}

TEST_F(Write, AnyLocaleWritesAPoint) {
  for (const char* const name : {"C", "english", "german", "french"}) {
    SCOPED_TRACE(name);
    const NumericLocale locale(name);
    Expect(Double, 0.1, "0.1000000000");
    Expect(Float, 0.5f, "0.5000000000");
    EXPECT_TRUE(locale.Kept());
  }
}

std::string localeAtWrite;
BOOL WINAPI SeeLocale(LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR) {
  localeAtWrite = ::setlocale(LC_NUMERIC, nullptr);
  return TRUE;
}

TEST_F(Write, TheLocaleIsBackBeforeTheFileIsTouched) {
  const NumericLocale locale("german");
  LocaleRecorder recorder;
  const test::ImportHook hook("WritePrivateProfileStringW", &SeeLocale);
  const auto expect = [&](auto write) {
    localeAtWrite = "";
    recorder.Calls().clear();
    write();
    EXPECT_EQ(recorder.Calls(), (Calls{"w:?", "w:english", "w:" + locale.name()}));
    EXPECT_EQ(localeAtWrite, locale.name());
  };
  expect([&] { Double.plain("S", "K", file_.plain(), 1.5); });
  expect([&] { Double.wide(L"S", L"K", file_.wide(), 1.5); });
  expect([&] { Float.plain("S", "K", file_.plain(), 1.5f); });
  expect([&] { Float.wide(L"S", L"K", file_.wide(), 1.5f); });
  recorder.Calls().clear();
  Int.wide(L"S", L"K", file_.wide(), 1);
  EXPECT_EQ(recorder.Calls(), Calls());
}

TEST_F(Write, OnePlatformCallOfTheStatedCharacterSet) {
  Recorder recorder;
  const auto expect = [&](const char* call, auto write) {
    recorder.Calls().clear();
    EXPECT_NE(write(), 0);
    EXPECT_EQ(recorder.Calls(), Calls{call});
  };
  expect("WriteA \"S\" \"K\" \"text\"", [&] { return WriteStringPlain("S", "K", file_.plain(), "text"); });
  expect("WriteA \"S\" \"K\" \"-1\"", [&] { return Int.plain("S", "K", file_.plain(), -1); });
  expect("WriteA \"S\" \"K\" \"1\"", [&] { return Uint.plain("S", "K", file_.plain(), 1); });
  expect("WriteA \"S\" \"K\" \"1\"", [&] { return Word.plain("S", "K", file_.plain(), 1); });
  expect("WriteW \"S\" \"K\" \"1.0000000000\"", [&] { return Double.plain("S", "K", file_.plain(), 1); });
  expect("WriteW \"S\" \"K\" \"1.0000000000\"", [&] { return Float.plain("S", "K", file_.plain(), 1); });
  expect("WriteW \"S\" \"K\" \"-1\"", [&] { return Int.wide(L"S", L"K", file_.wide(), -1); });
  expect("WriteW \"S\" \"K\" \"1\"", [&] { return Uint.wide(L"S", L"K", file_.wide(), 1); });
  expect("WriteW \"S\" \"K\" \"1\"", [&] { return Word.wide(L"S", L"K", file_.wide(), 1); });
  expect("WriteW \"S\" \"K\" \"1.0000000000\"", [&] { return Double.wide(L"S", L"K", file_.wide(), 1); });
  expect("WriteW \"S\" \"K\" \"1.0000000000\"", [&] { return Float.wide(L"S", L"K", file_.wide(), 1); });
}

TEST_F(Write, FailureIsThePlatformsResult) {
  Recorder recorder;
  recorder.Failing() = true;
  EXPECT_EQ(WriteStringPlain("S", "K", file_.plain(), "text"), 0);
  EXPECT_EQ(Int.plain("S", "K", file_.plain(), 1), 0);
  EXPECT_EQ(Uint.plain("S", "K", file_.plain(), 1), 0);
  EXPECT_EQ(Word.plain("S", "K", file_.plain(), 1), 0);
  EXPECT_EQ(Double.plain("S", "K", file_.plain(), 1), 0);
  EXPECT_EQ(Float.plain("S", "K", file_.plain(), 1), 0);
  EXPECT_EQ(Int.wide(L"S", L"K", file_.wide(), 1), 0);
  EXPECT_EQ(Uint.wide(L"S", L"K", file_.wide(), 1), 0);
  EXPECT_EQ(Word.wide(L"S", L"K", file_.wide(), 1), 0);
  EXPECT_EQ(Double.wide(L"S", L"K", file_.wide(), 1), 0);
  EXPECT_EQ(Float.wide(L"S", L"K", file_.wide(), 1), 0);
  // The wide text writer does not look at results.
  EXPECT_EQ(WriteStringWide(L"S", L"K", file_.wide(), L"text"), 1);
}

// A missing folder, a folder, and a file that another program has to itself. (The read-only attribute would
// do as well, but Wine lets the superuser write through it.)
TEST_F(Write, PlacesThatCannotBeWritten) {
  const test::TempFolder folder;
  const std::wstring missing = folder / L"missing\\settings.ini";
  const std::wstring isFolder = folder.Folder(L"folder");
  const std::wstring taken = folder.File(L"taken.ini", "[S]\r\nK=old\r\n");
  const HANDLE other =
      ::CreateFileW(taken.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  for (const std::wstring& path : {missing, isFolder, taken}) {
    EXPECT_EQ(Int.wide(L"S", L"K", path.c_str(), 1), 0) << test::Ansi(path);
    EXPECT_EQ(Int.plain("S", "K", test::Ansi(path).c_str(), 1), 0) << test::Ansi(path);
    EXPECT_EQ(Double.plain("S", "K", test::Ansi(path).c_str(), 1), 0) << test::Ansi(path);
    EXPECT_EQ(WriteStringPlain("S", "K", test::Ansi(path).c_str(), "x"), 0) << test::Ansi(path);
    EXPECT_EQ(WriteStringWide(L"S", L"K", path.c_str(), L"\u00E4"), 1) << test::Ansi(path);
  }
  ::CloseHandle(other);
  EXPECT_EQ(test::ReadBytes(taken), "[S]\r\nK=old\r\n");
  EXPECT_EQ(folder.Entries(), (std::vector<std::wstring>{L"folder\\", L"taken.ini"}));
}

TEST_F(Write, PlainTextIsTheKeyAlone) {
  const std::string value = test::Local().bytes;
  EXPECT_EQ(WriteStringPlain("S", "K", file_.plain(), value.c_str()), TRUE);
  EXPECT_EQ(file_.Bytes(), "[S]\r\nK=" + value + "\r\n");
  // Companions stay, so a wide reader still finds the older text.
  file_.Put("[S]\r\nK=old\r\nK_utf8=\xC3\xA4\r\nK_UC=48\r\n");
  EXPECT_EQ(WriteStringPlain("S", "K", file_.plain(), "new"), TRUE);
  EXPECT_EQ(file_.Bytes(), "[S]\r\nK=new\r\nK_utf8=\xC3\xA4\r\nK_UC=48\r\n");
  EXPECT_EQ(ReadBack(), L"\u00E4");
}

TEST_F(Write, AsciiTextNeedsNoCompanion) {
  EXPECT_EQ(Stored("", L"plain text"), "[S]\r\nK=plain text\r\n");
  EXPECT_EQ(ReadBack(), L"plain text");
}

// The key as far as the code page goes, and the UTF-8 bytes unchanged beside it.
TEST_F(Write, OtherTextHasItsUtf8BesideIt) {
  const struct {
    const wchar_t* value;
    const char* utf8;
  } rows[] = {
      {L"Gr\u00FC\u00DFe",
       "Gr\xC3\xBC\xC3\x9F"
       "e"},
      {L"\u65E5\u672C", "\xE6\x97\xA5\xE6\x9C\xAC"},
      {L"x\u20ACx", "x\xE2\x82\xACx"},
  };
  for (const auto& row : rows) {
    const std::string kept = test::Kept(row.utf8);
    EXPECT_EQ(Stored("", row.value), "[S]\r\nK=" + test::Ansi(row.value) + "\r\n" +
                                         (test::NeedsCompanion(row.value) ? "K_utf8=" + kept + "\r\n" : ""));
    EXPECT_EQ(ReadBack(), kept == row.utf8 ? row.value : test::FromUtf8Bytes(test::Kept(kept)));
    EXPECT_TRUE(kept == row.utf8 || ::GetACP() >= 932) << "single bytes are kept";
  }
}

TEST_F(Write, StaleCompanionsAreEmptiedNotRemoved) {
  EXPECT_EQ(Stored("[S]\r\nK=\xFC\r\nK_utf8=\xC3\xBC\r\n", L"new"), "[S]\r\nK=new\r\nK_utf8=\r\n");
  EXPECT_EQ(ReadBack(), L"new");
  EXPECT_EQ(Stored("[S]\r\nK=x\r\nK_UC=48\r\n", L"new"), "[S]\r\nK=new\r\nK_UC=\r\n");
  EXPECT_EQ(ReadBack(), L"new");
  EXPECT_EQ(Stored("[S]\r\nK_UC=48\r\nK_utf8=x\r\n", L"new"), "[S]\r\nK_UC=\r\nK_utf8=\r\nK=new\r\n");
  // A hexadecimal companion is emptied beside a new UTF-8 one as well.
  EXPECT_EQ(Stored("[S]\r\nK=x\r\nK_UC=48\r\n", L"\u00B7"),
            "[S]\r\nK=" + test::Ansi(L"\u00B7") + "\r\nK_UC=\r\n" +
                (test::NeedsCompanion(L"\u00B7") ? "K_utf8=\xC2\xB7\r\n" : ""));
  EXPECT_EQ(ReadBack(), L"\u00B7");
}

TEST_F(Write, ANullTextRemovesTheKey) {
  const char before[] = "[S]\r\nK=x\r\nK_utf8=\xC3\xBC\r\nK_UC=48\r\n";
  EXPECT_EQ(Stored(before, nullptr), "[S]\r\nK_utf8=\r\nK_UC=\r\n");
  EXPECT_EQ(ReadBack(), L"default");
  file_.Put(before);
  EXPECT_EQ(WriteStringPlain("S", "K", file_.plain(), nullptr), TRUE);
  EXPECT_EQ(file_.Bytes(), "[S]\r\nK_utf8=\xC3\xBC\r\nK_UC=48\r\n");
}

TEST_F(Write, TheOrderOfThePlatformCalls) {
  Recorder recorder;
  const auto calls = [&](const char* before, const wchar_t* value) {
    file_.Put(before);
    recorder.Calls().clear();
    WriteStringWide(L"S", L"K", file_.wide(), value);
    return recorder.Calls();
  };
  const std::string probeUtf8 = "ReadW \"S\" \"K_utf8\" null 256", probeHex = "ReadW \"S\" \"K_UC\" null 256";
  const std::string emptyUtf8 = "WriteW \"S\" \"K_utf8\" \"\"", emptyHex = "WriteW \"S\" \"K_UC\" \"\"";
  EXPECT_EQ(calls("", L"x"), (Calls{"WriteW \"S\" \"K\" \"x\"", probeUtf8, probeHex}));
  EXPECT_EQ(calls("[S]\r\nK_utf8=a\r\nK_UC=41\r\n", L"x"),
            (Calls{"WriteW \"S\" \"K\" \"x\"", probeUtf8, emptyUtf8, probeHex, emptyHex}));
  EXPECT_EQ(calls("[S]\r\nK_utf8=a\r\nK_UC=41\r\n", L"\u00E4"),
            test::NeedsCompanion(L"\u00E4")
                ? (Calls{"WriteW \"S\" \"K\" \"" + test::Ansi(L"\u00E4") + "\"",
                         "WriteW \"S\" \"K_utf8\" \"\xC3\xA4\"", probeHex, emptyHex})
                : (Calls{"WriteW \"S\" \"K\" \"\xC3\xA4\"", probeUtf8, emptyUtf8, probeHex, emptyHex}));
  EXPECT_EQ(calls("[S]\r\nK=a\r\n", nullptr), (Calls{"WriteW \"S\" \"K\" null", probeUtf8, probeHex}));
}

// What the format can carry comes back whole: texts whose UTF-8 bytes survive the way through the code
// page. Under 1252 all do.
TEST_F(Write, RandomTextsComeBack) {
  std::mt19937 random(1060);
  const auto any = [&] {
    const unsigned range = random() % 3 == 0 ? 0x7E : random() % 2 ? 0x2FF : 0xFFFF;
    wchar_t unit;
    do unit = static_cast<wchar_t>(0x21 + random() % (range - 0x20));
    while (unit == L'"' || unit == L'\'' || unit == 0x7F || (unit >= 0xD800 && unit < 0xE000));
    return unit;
  };
  int lost = 0;
  for (int round = 0; round < 100; ++round) {
    std::wstring value;
    for (std::size_t count = 1 + random() % 30; count > 0; --count) value += any();
    char utf8[200];
    ::WideCharToMultiByte(CP_UTF8, 0, value.c_str(), -1, utf8, sizeof utf8, nullptr, nullptr);
    const bool survives = test::Ansi(test::Wide(utf8)) == utf8;
    const std::string bytes = Stored("", value.c_str());
    if (!survives) {
      ++lost;
      continue;
    }
    EXPECT_EQ(bytes, "[S]\r\nK=" + test::Ansi(value) + "\r\n" +
                         (test::NeedsCompanion(value) ? std::string("K_utf8=") + utf8 + "\r\n" : ""));
    EXPECT_EQ(ReadBack(), value);
  }
  EXPECT_LT(lost, ::GetACP() == 1252 ? 1 : 100);
}

int mallocsLeft;
void* __cdecl FailingMalloc(size_t size) {
  return mallocsLeft-- > 0 ? std::malloc(size) : nullptr;
}

TEST_F(Write, EveryFailingAllocationLeavesNothingBehind) {
  for (int allowed = 0;; ++allowed) {
    ASSERT_LT(allowed, 20);
    file_.Put("[S]\r\nK=x\r\n");
    test::HeapWatch heap;
    std::string raised;
    {
      test::ImportHook hook("malloc", &FailingMalloc);
      mallocsLeft = allowed;
      raised = test::RaisedBy([&] { WriteStringWide(L"S", L"K", file_.wide(), L"\u00E4"); });
    }
    EXPECT_EQ(heap.Outstanding(), -(allowed - (mallocsLeft > 0 ? mallocsLeft : 0)));
    if (raised.empty()) break;
    EXPECT_EQ(raised, test::kMemoryException);
    const std::string key = "[S]\r\nK=" + test::Ansi(L"\u00E4") + "\r\n";
    EXPECT_EQ(file_.Bytes().substr(0, key.size()), key) << "it is written first";
  }
  EXPECT_EQ(ReadBack(), L"\u00E4");
}

TEST_F(Write, NumbersTakeNothingFromTheHeap) {
  test::HeapWatch heap;
  Int.plain("S", "K", file_.plain(), 1);
  Double.plain("S", "K", file_.plain(), 1);
  Double.wide(L"S", L"K", file_.wide(), 1);
  EXPECT_EQ(heap.Allocations(), 0);
  WriteStringWide(L"S", L"K", file_.wide(), L"\u00E4");
  EXPECT_EQ(heap.Outstanding(), 0);
}

}  // namespace
