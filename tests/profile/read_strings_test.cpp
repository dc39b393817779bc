// SPDX-License-Identifier: MIT
// Texts read from settings files: the key, its companions, and buffers of any size.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include "Settings.h"
#include "support/CodePage.h"
#include "support/GuardedBuffer.h"
#include "support/HostException.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

using settings::Calls;
using settings::Recorder;

namespace {

const auto ReadPlain = test::Export<decltype(ZERA_TOOLS_READ_STRING)>(50);
const auto ReadWide = test::Export<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050);

class ReadString : public ::testing::Test {
 protected:
  // What a read into a guarded buffer gives; nothing outside the buffer may change.
  std::string Plain(std::size_t capacity, const char* standard) {
    test::GuardedBuffer<char> out(capacity);
    ReadPlain("S", "K", file_.plain(), standard, out.data(), out.capacity());
    EXPECT_TRUE(out.Intact());
    return out.text();
  }
  std::wstring Wide(std::size_t capacity, const wchar_t* standard) {
    test::GuardedBuffer<wchar_t> out(capacity);
    ReadWide(L"S", L"K", file_.wide(), standard, out.data(), out.capacity());
    EXPECT_TRUE(out.Intact());
    return out.text();
  }

  settings::File file_;
};

TEST_F(ReadString, TheKeyItself) {
  file_.Put("[S]\r\nK=the value\r\n");
  EXPECT_EQ(Plain(64, "default"), "the value");
  EXPECT_EQ(Wide(64, L"default"), L"the value");
}

TEST_F(ReadString, MissingAndEmptyGiveTheDefault) {
  for (const char* const bytes : {"", "[S]\r\n", "[S]\r\nK=\r\n", "[S]\r\nK=  \r\n", "[T]\r\nK=x\r\n",
                                  "[S]\r\nK=\r\nK_utf8=\r\nK_UC=\r\n"}) {
    SCOPED_TRACE(bytes);
    if (*bytes) file_.Put(bytes);
    EXPECT_EQ(Plain(64, "the default"), "the default");
    EXPECT_EQ(Wide(64, L"the default"), L"the default");
    EXPECT_EQ(Plain(64, ""), "");
    EXPECT_EQ(Wide(64, L""), L"");
    EXPECT_EQ(Plain(64, nullptr), "");
    EXPECT_EQ(Wide(64, nullptr), L"");
  }
}

// A value is cut by the platform; so is the default of a missing key, which the platform gives.
TEST_F(ReadString, ValuesAreCutToTheCapacity) {
  file_.Put("[S]\r\nK=12345\r\n");
  const struct {
    std::size_t capacity;
    const char* expected;
    const wchar_t* wide;
  } rows[] = {{7, "12345", L"12345"}, {6, "12345", L"12345"}, {5, "1234", L"1234"}, {2, "1", L"1"}};
  for (const auto& row : rows) {
    EXPECT_EQ(Plain(row.capacity, "abcde"), row.expected) << row.capacity;
    EXPECT_EQ(Wide(row.capacity, L"abcde"), row.wide) << row.capacity;
  }
  file_.Put("[S]\r\n");
  EXPECT_EQ(Plain(5, "abcde"), "abcd");
  EXPECT_EQ(Wide(5, L"abcde"), L"abcd");
  EXPECT_EQ(Plain(6, "abcde"), "abcde");
  EXPECT_EQ(Wide(6, L"abcde"), L"abcde");
}

// The default of an empty value comes from the library: whole, or not at all.
TEST_F(ReadString, TheDefaultOfAnEmptyValueIsNotCut) {
  file_.Put("[S]\r\nK=\r\n");
  EXPECT_EQ(Plain(6, "abcde"), "abcde");
  EXPECT_EQ(Wide(6, L"abcde"), L"abcde");
  EXPECT_EQ(Plain(5, "abcde"), "");
  EXPECT_EQ(Wide(5, L"abcde"), L"");
  EXPECT_EQ(Plain(1, "abcde"), "");
  EXPECT_EQ(Wide(1, L"abcde"), L"");
}

TEST_F(ReadString, NothingIsWrittenBehindTheDefault) {
  Recorder recorder;
  recorder.Failing() = true;
  test::GuardedBuffer<char> plain(16);
  ReadPlain("S", "K", file_.plain(), "abc", plain.data(), plain.capacity());
  EXPECT_EQ(plain.text(), "abc");
  EXPECT_TRUE(plain.UntouchedFrom(4));
  test::GuardedBuffer<wchar_t> wide(16);
  ReadWide(L"S", L"K", file_.wide(), L"abc", wide.data(), wide.capacity());
  EXPECT_EQ(wide.text(), L"abc");
  EXPECT_TRUE(wide.UntouchedFrom(4));
  // One that does not fit leaves the buffer as the platform left it; the wide reader had emptied it.
  test::GuardedBuffer<char> small(3);
  ReadPlain("S", "K", file_.plain(), "abc", small.data(), small.capacity());
  EXPECT_TRUE(small.Untouched());
  test::GuardedBuffer<wchar_t> smallWide(3);
  ReadWide(L"S", L"K", file_.wide(), L"abc", smallWide.data(), smallWide.capacity());
  EXPECT_EQ(smallWide.text(), L"");
  EXPECT_TRUE(smallWide.UntouchedFrom(1));
}

TEST_F(ReadString, NoRoomAtAll) {
  file_.Put("[S]\r\nK=12345\r\n");
  test::GuardedBuffer<char> plain(0);
  ReadPlain("S", "K", file_.plain(), "abc", plain.data(), 0);
  EXPECT_TRUE(plain.Intact());
  // The wide reader empties its buffer first, by a bounded copy that wants room for the terminator. Then
  // nothing is asked of the platform, as by a plain reader without a buffer.
  const Recorder recorder;
  test::InvalidParameter handler;
  test::GuardedBuffer<wchar_t> wide(0);
  ReadWide(L"S", L"K", file_.wide(), L"abc", wide.data(), 0);
  EXPECT_TRUE(wide.Intact());
  EXPECT_EQ(handler.Count(), 1);
  ReadWide(L"S", L"K", file_.wide(), L"abc", nullptr, 10);
  EXPECT_EQ(handler.Count(), 2);
  ReadPlain("S", "K", file_.plain(), "abc", nullptr, 10);
  EXPECT_EQ(handler.Count(), 3);
  EXPECT_EQ(recorder.Calls(), Calls());
}

DWORD askedSize;
DWORD WINAPI NoteSize(LPCSTR, LPCSTR, LPCSTR, LPSTR, DWORD size, LPCSTR) {
  askedSize = size;
  return 1;
}

TEST_F(ReadString, CapacityBeyondThePlatformsIsTheLargestOfThose) {
  const test::ImportHook hook("GetPrivateProfileStringA", &NoteSize);
  char out[8];
  for (const std::size_t capacity : {std::size_t{8}, std::size_t{0xFFFFFFFE}, std::size_t{0xFFFFFFFF},
                                     std::size_t{0x100000000}, std::size_t{0x100000008}, SIZE_MAX}) {
    ReadPlain("S", "K", file_.plain(), "d", out, capacity);
    EXPECT_EQ(askedSize, capacity < 0xFFFFFFFF ? capacity : 0xFFFFFFFF) << capacity;
  }
}

// The first companion with a value wins: UTF-8, then hexadecimal, then the key itself.
TEST_F(ReadString, CompanionsWinInOrder) {
  const struct {
    const char* bytes;
    const wchar_t* expected;
  } rows[] = {
      {"K=plain\r\nK_utf8=\xC3\xA4\r\nK_UC=48 49\r\n", L"\u00E4"},
      {"K_UC=48 49\r\nK_utf8=\xC3\xA4\r\nK=plain\r\n", L"\u00E4"},
      {"K=plain\r\nK_utf8=\r\nK_UC=48 49\r\n", L"HI"},
      {"K=plain\r\nK_UC=48 49\r\n", L"HI"},
      {"K=plain\r\nK_utf8=\r\nK_UC=\r\n", L"plain"},
      {"K=plain\r\nk_UTF8=ascii\r\n", L"ascii"},  // the platform's keys have no case
      {"K_utf8=only\r\n", L"only"},
      {"K_UC=6F 6E 6C 79\r\n", L"only"},
  };
  for (const auto& row : rows) {
    file_.Put(std::string("[S]\r\n") + row.bytes);
    EXPECT_EQ(Wide(64, L"default"), row.expected) << row.bytes;
  }
}

TEST_F(ReadString, ThePlainReaderIgnoresCompanions) {
  file_.Put("[S]\r\nK=plain\r\nK_utf8=\xC3\xA4\r\nK_UC=48 49\r\n");
  EXPECT_EQ(Plain(64, "default"), "plain");
  file_.Put("[S]\r\nK_utf8=\xC3\xA4\r\nK_UC=48 49\r\n");
  EXPECT_EQ(Plain(64, "default"), "default");
}

TEST_F(ReadString, Utf8OfManyLengths) {
  const struct {
    const char* utf8;
    const wchar_t* expected;
  } rows[] = {
      {"Gr\xC3\xBC\xC3\x9F"
       "e",
       L"Gr\u00FC\u00DFe"},
      {"\xE2\x82\xAC", L"\u20AC"},
      {"\xE6\x97\xA5\xE6\x9C\xAC", L"\u65E5\u672C"},
      {"ascii", L"ascii"},
  };
  for (const auto& row : rows) {
    file_.Put(std::string("[S]\r\nK_utf8=") + row.utf8 + "\r\n");
    const std::string kept = test::Kept(row.utf8);
    EXPECT_EQ(Wide(64, L"default"), kept == row.utf8 ? row.expected : test::FromUtf8Bytes(kept)) << row.utf8;
    EXPECT_TRUE(kept == row.utf8 || ::GetACP() >= 932) << "single bytes are kept";
  }
  if (::GetACP() == 1252) {
    file_.Put("[S]\r\nK_utf8=\xF0\x9F\x98\x80!\r\n");
    EXPECT_EQ(Wide(64, L"default"), L"\U0001F600!");
  }
}

// All or nothing: a companion that does not fit gives an empty text even where the key would fit.
TEST_F(ReadString, CompanionsAreNotCut) {
  const test::InvalidParameter handler;
  for (const char* const companion : {"K_utf8=\xC3\xA4\xC3\xB6\xC3\xBC", "K_UC=E4 F6 FC"}) {
    SCOPED_TRACE(companion);
    file_.Put(std::string("[S]\r\nK=x\r\n") + companion + "\r\n");
    EXPECT_EQ(Wide(5, L"d"), L"\u00E4\u00F6\u00FC");
    EXPECT_EQ(Wide(4, L"d"), L"\u00E4\u00F6\u00FC");
    EXPECT_EQ(Wide(3, L"d"), L"");
    EXPECT_EQ(Wide(2, L"d"), L"");
    EXPECT_EQ(Wide(1, L"d"), L"");
  }
  EXPECT_EQ(handler.Count(), 0) << "no copy is tried that cannot fit";
}

TEST_F(ReadString, SurrogatePairsCountTwice) {
  file_.Put("[S]\r\nK_UC=D83D DE00\r\n");
  EXPECT_EQ(Wide(3, L"d"), L"\U0001F600");
  EXPECT_EQ(Wide(2, L"d"), L"");
}

TEST_F(ReadString, HexadecimalText) {
  const struct {
    const char* hex;
    const wchar_t* expected;
  } rows[] = {
      {"48 49", L"HI"},    {"48  49", L"H"},      {"48 ZZ 49", L"H"},  {"0048 0049", L"HI"},
      {"ZZ 48", L""},      {"48 0 49", L"H"},     {"10048 49", L"HI"}, {"65E5 672C", L"\u65E5\u672C"},
      {"\" 48 49\"", L""}, {"\"48 49 \"", L"HI"},
  };
  for (const auto& row : rows) {
    file_.Put(std::string("[S]\r\nK=plain\r\nK_UC=") + row.hex + "\r\n");
    EXPECT_EQ(Wide(64, L"default"), row.expected) << row.hex;
  }
}

TEST_F(ReadString, TheOrderOfThePlatformCalls) {
  file_.Put("[S]\r\nK=x\r\n");
  Recorder recorder;
  Wide(64, L"default");
  EXPECT_EQ(recorder.Calls(), (Calls{"ReadW \"S\" \"K_utf8\" null 640", "ReadW \"S\" \"K_UC\" null 640",
                                     "ReadW \"S\" \"K\" \"default\" 64"}));
  recorder.Calls().clear();
  Wide(1, L"default");
  EXPECT_EQ(recorder.Calls(), (Calls{"ReadW \"S\" \"K_utf8\" null 10", "ReadW \"S\" \"K_UC\" null 10",
                                     "ReadW \"S\" \"K\" \"default\" 1"}));
  file_.Put("[S]\r\nK_UC=48\r\n");
  recorder.Calls().clear();
  Wide(2, L"default");
  EXPECT_EQ(recorder.Calls(), (Calls{"ReadW \"S\" \"K_utf8\" null 20", "ReadW \"S\" \"K_UC\" null 20"}));
  file_.Put("[S]\r\nK_utf8=x\r\n");
  recorder.Calls().clear();
  Wide(2, L"default");
  EXPECT_EQ(recorder.Calls(), (Calls{"ReadW \"S\" \"K_utf8\" null 20"}));
  recorder.Calls().clear();
  Plain(64, "default");
  EXPECT_EQ(recorder.Calls(), (Calls{"ReadA \"S\" \"K\" \"default\" 64"}));
}

TEST_F(ReadString, LongValues) {
  const std::string value(32'000, 'v');
  file_.Put("[S]\r\nK=" + value + "\r\n");
  EXPECT_EQ(Plain(32'767, ""), value);
  EXPECT_EQ(Wide(32'767, L""), std::wstring(value.begin(), value.end()));
  file_.Put("[S]\r\nK_utf8=" + value + "\r\n");
  EXPECT_EQ(Wide(32'001, L""), std::wstring(value.begin(), value.end()));
  EXPECT_EQ(Wide(32'000, L""), L"");
}

// The scratch text is ten times the buffer; a capacity beyond all memory is exhausted memory.
TEST_F(ReadString, AbsurdCapacitiesRaiseTheMemoryException) {
  wchar_t out[8] = L"before";
  for (const std::size_t capacity : {std::size_t{0x7FFFFFFF}, SIZE_MAX, SIZE_MAX / 10 + 2}) {
    EXPECT_EQ(test::RaisedBy([&] { ReadWide(L"S", L"K", file_.wide(), L"d", out, capacity); }),
              test::kMemoryException)
        << capacity;
    EXPECT_STREQ(out, L"");
  }
}

// The longest scratch text is asked of the heap, one unit more is not: it would not fit a string object.
std::size_t mostAsked;
void* __cdecl RefusingLargeMalloc(size_t size) {
  if (size > mostAsked) mostAsked = size;
  return size > 1'000'000 ? nullptr : std::malloc(size);
}

TEST_F(ReadString, TheLongestScratchTextIsAskedOfTheHeap) {
  constexpr std::size_t kLongest = 0x7FFFFFE0 / 10;
  wchar_t out[8];
  for (const std::size_t capacity : {kLongest, kLongest + 1}) {
    const test::ImportHook memory("malloc", &RefusingLargeMalloc);
    mostAsked = 0;
    EXPECT_EQ(test::RaisedBy([&] { ReadWide(L"S", L"K", file_.wide(), L"d", out, capacity); }),
              test::kMemoryException);
    EXPECT_EQ(mostAsked > 1'000'000, capacity == kLongest) << capacity;
    EXPECT_TRUE(capacity != kLongest || mostAsked >= kLongest * 10 * sizeof(wchar_t)) << mostAsked;
  }
}

int mallocsLeft;
void* __cdecl FailingMalloc(size_t size) {
  return mallocsLeft-- > 0 ? std::malloc(size) : nullptr;
}

TEST_F(ReadString, EveryFailingAllocationLeavesNothingBehind) {
  file_.Put("[S]\r\nK_utf8=\xC3\xA4\r\n");
  for (int allowed = 0;; ++allowed) {
    ASSERT_LT(allowed, 20);
    wchar_t out[8] = L"before";
    test::HeapWatch heap;
    std::string raised;
    {
      test::ImportHook hook("malloc", &FailingMalloc);
      mallocsLeft = allowed;
      raised = test::RaisedBy([&] { ReadWide(L"S", L"K", file_.wide(), L"d", out, 8); });
    }
    EXPECT_EQ(heap.Outstanding(), -(allowed - (mallocsLeft > 0 ? mallocsLeft : 0)));
    if (raised.empty()) {
      EXPECT_STREQ(out, L"\u00E4");
      return;
    }
    EXPECT_EQ(raised, test::kMemoryException);
    EXPECT_STREQ(out, L"");
  }
}

TEST_F(ReadString, HeapIsBalanced) {
  file_.Put("[S]\r\nK=x\r\nK_UC=48\r\n");
  test::HeapWatch heap;
  Wide(64, L"");
  EXPECT_EQ(heap.Outstanding(), 0);
  Plain(64, "");
  EXPECT_EQ(heap.Outstanding(), 0);
}

}  // namespace
