// SPDX-License-Identifier: MIT
// The results of conversions belong to the host: its manager, its shared and its locked buffers.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "Conversions.h"
#include "garbage/Fence.h"
#include "support/CodePage.h"
#include "support/HostException.h"
#include "support/ImportHook.h"

using namespace conversions;

namespace {

// Each conversion with a text that gives 'A', 'B', 'C', behind one type for both kinds of result.
template <class Char>
struct Case {
  const char* name;
  std::function<void(CStringT<Char>&)> abc;
  std::function<void(CStringT<Char>&)> empty;
  std::function<void(CStringT<Char>&)> null;
};

template <class In, class Out>
Case<Out> Of(const char* name, void(__cdecl* conversion)(const In*, CStringT<Out>&), const In* abc) {
  static const In nothing[] = {0};
  return {name, [=](CStringT<Out>& out) { conversion(abc, out); },
          [=](CStringT<Out>& out) { conversion(nothing, out); },
          [=](CStringT<Out>& out) { conversion(nullptr, out); }};
}

template <class Char>
std::vector<Case<Char>> Cases();
template <>
std::vector<Case<char>> Cases<char>() {
  return {Of("UC_TO_MBC", UcToMbc, L"ABC"), Of("CHAR8_TO_MBC", Char8ToMbc, "ABC"),
          Of("MBC_TO_UTF8", MbcToUtf8, "ABC"), Of("UC_TO_UTF8", UcToUtf8, L"ABC"),
          Of("UTF8_TO_MBC", Utf8ToMbc, "ABC")};
}
template <>
std::vector<Case<wchar_t>> Cases<wchar_t>() {
  return {Of("CHAR8_TO_UC", Char8ToUc, "ABC"), Of("UTF8_TO_UC", Utf8ToUc, "ABC"),
          Of("HEX_TO_UC", HexToUc, L"41 42 43")};
}

template <class Char>
std::basic_string<Char> Text(const char* text) {
  return {text, text + std::strlen(text)};
}

template <class Char>
class Results : public ::testing::Test {
 protected:
  const std::basic_string<Char> abc_ = Text<Char>("ABC");
  const std::basic_string<Char> old_ = Text<Char>("what the host had before");
};
using Characters = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(Results, Characters);

TYPED_TEST(Results, ComeFromTheHostsManager) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::CountingManager manager;
    {
      test::HostString<TypeParam> out(manager);
      one.abc(out.object());
      EXPECT_EQ(out.text(), this->abc_);
      EXPECT_EQ(out.header()->pStringMgr, &manager);
      EXPECT_EQ(manager.allocations, 1);
      EXPECT_EQ(manager.reallocations, 0);
      EXPECT_LE(manager.lastChars, 4);
      EXPECT_EQ(out.object().GetString()[3], TypeParam(0));
    }
    EXPECT_EQ(manager.outstanding, 0);
    EXPECT_TRUE(manager.NilIntact());
  }
}

TYPED_TEST(Results, ReplaceWhatWasThere) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::CountingManager manager;
    {
      test::HostString<TypeParam> out(manager, this->old_.c_str());
      one.abc(out.object());
      EXPECT_EQ(out.text(), this->abc_);
      EXPECT_LE(manager.outstanding, 1);
      for (const auto* nothing : {&one.empty, &one.null}) {
        out.object().SetString(this->old_.c_str());
        (*nothing)(out.object());
        EXPECT_EQ(out.text(), Text<TypeParam>(""));
      }
    }
    EXPECT_EQ(manager.outstanding, 0);
    EXPECT_TRUE(manager.NilIntact());
  }
}

TYPED_TEST(Results, LeaveSharedBuffersAlone) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::CountingManager manager;
    {
      test::HostString<TypeParam> first(manager, this->old_.c_str());
      test::HostString<TypeParam> second(manager);
      second.object() = first.object();
      ASSERT_EQ(first.header(), second.header());
      one.abc(second.object());
      EXPECT_EQ(second.text(), this->abc_);
      EXPECT_EQ(first.text(), this->old_);
      EXPECT_EQ(first.header()->nRefs, 1);
      second.object() = first.object();
      one.empty(second.object());
      EXPECT_EQ(second.text(), Text<TypeParam>(""));
      EXPECT_EQ(first.text(), this->old_);
    }
    EXPECT_EQ(manager.outstanding, 0);
  }
}

// A locked buffer stays where it is: somebody holds a pointer into it.
TYPED_TEST(Results, WriteLockedBuffersInPlace) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::CountingManager manager;
    {
      test::HostString<TypeParam> out(manager, this->old_.c_str());
      CStringData* const buffer = out.header();
      buffer->nRefs = -1;
      one.abc(out.object());
      EXPECT_EQ(out.header(), buffer);
      EXPECT_EQ(out.text(), this->abc_);
      EXPECT_EQ(buffer->nRefs, -1);
      one.empty(out.object());
      EXPECT_EQ(out.header(), buffer);
      EXPECT_EQ(out.text(), Text<TypeParam>(""));
      buffer->nRefs = 1;
    }
    EXPECT_EQ(manager.outstanding, 0);
  }
}

TYPED_TEST(Results, FitFixedBuffersWithoutTheHeap) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::FixedManager<TypeParam, 4> manager;
    test::HostString<TypeParam> out(manager);
    CStringData* const buffer = out.header();
    one.abc(out.object());
    EXPECT_EQ(out.header(), buffer);
    EXPECT_EQ(out.text(), this->abc_);
    EXPECT_EQ(manager.allocations, 0);
    one.empty(out.object());
    EXPECT_EQ(out.text(), Text<TypeParam>(""));
  }
}

TYPED_TEST(Results, OutgrowFixedBuffers) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::FixedManager<TypeParam, 2> manager;
    {
      test::HostString<TypeParam> out(manager);
      one.abc(out.object());
      EXPECT_EQ(out.text(), this->abc_);
      EXPECT_EQ(manager.allocations, 1);
    }
    EXPECT_EQ(manager.outstanding, 0);
  }
}

// A sign that takes more bytes than one finds room in the buffer that is made for the text.
int __cdecl PageWithoutSigns() {
  return 1252;
}

TEST(Room, IsThereForSomeLongSigns) {
  const test::ImportHook hook("_getmbcp", &PageWithoutSigns);
  test::CountingManager manager;
  test::HostString<char> out(manager);
  UcToMbc(L"25,5 \u00B0C; 12 min.", out.object());
  EXPECT_EQ(out.text(), "25,5 degC; 12 min.");
  EXPECT_EQ(manager.allocations, 1);
  EXPECT_EQ(manager.reallocations, 0);
}

// Where there are many, what is left of the text is measured, and the buffer grows once.
TEST(Room, IsMeasuredForManyLongSigns) {
  const test::ImportHook hook("_getmbcp", &PageWithoutSigns);
  test::CountingManager manager;
  test::HostString<char> out(manager);
  std::wstring text;
  std::string expected;
  for (int i = 0; i < 50; ++i) {
    text += L"\u00B0x";
    expected += "degx";
  }
  UcToMbc(text.c_str(), out.object());
  EXPECT_EQ(out.text(), expected);
  EXPECT_EQ(manager.allocations, 1);
  EXPECT_EQ(manager.reallocations, 1);
}

// However many signs there are, nothing behind the text is read.
TEST(Room, BehindALatinTextIsNotReadWhereItIsAllSigns) {
  const test::ImportHook hook("_getmbcp", &PageWithoutSigns);
  std::string expected;
  for (std::size_t length = 1; length < 100; ++length) {
    const garbage::Fence fence(length + 1, garbage::Fence::Side::kEnd);
    std::fill_n(fence.data(), length, '\xB0');
    fence.data()[length] = 0;
    test::CountingManager manager;
    test::HostString<char> out(manager);
    Char8ToMbc(fence.data(), out.object());
    ASSERT_EQ(out.text(), expected += "deg");
  }
}

TEST(Room, IsNotMadeForAnEmptyText) {
  test::CountingManager manager;
  test::HostString<char> narrow(manager);
  test::HostString<wchar_t> wide(manager);
  UcToMbc(L"", narrow.object());
  Char8ToMbc("", narrow.object());
  Char8ToUc("", wide.object());
  UcToHex(L"", wide.object());
  HexToUc(L"", wide.object());
  EXPECT_EQ(manager.allocations, 0);
}

// A buffer of just the result's length is room enough, whatever might have come.
TEST(Room, IsNotMadeWhereItIs) {
  const test::ImportHook hook("_getmbcp", &PageWithoutSigns);
  for (const wchar_t* const text :
       {L"0123456789abcdef", L"012345678 \u00B0C!", L"01234567\u00B5\u00B5\u00B5\u00B0cdef"}) {
    const std::wstring units = text;
    const std::size_t room = Convert(UcToMbc, units).size();
    test::FixedManager<char, 16> manager;
    test::HostString<char> out(manager);
    UcToMbc(text, out.object());
    EXPECT_EQ(manager.allocations, room > 16) << room;
  }
}

void* __cdecl NoCalloc(size_t, size_t) {
  return nullptr;
}

// What the code page makes of characters above U+00FF is kept during a call, in memory asked for when the
// first of them comes.
TEST(Room, ForCharactersAskedIsExhaustedMemory) {
  test::CountingManager manager;
  test::HostString<char> out(manager);
  const std::wstring text = L"a" + std::wstring(1, std::ranges::max(test::Local().wide));
  {
    test::ImportHook hook("calloc", &NoCalloc);
    EXPECT_EQ(test::RaisedBy([&] { UcToMbc(text.c_str(), out.object()); }), test::kMemoryException);
  }
  EXPECT_EQ(out.text(), "");
  UcToMbc(text.c_str(), out.object());
  EXPECT_EQ(out.text(), test::Ansi(text));
}

// Memory that is exhausted, the host's or the library's, is the framework's memory exception.
TYPED_TEST(Results, ExhaustedHostRaisesTheMemoryException) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    test::CountingManager manager;
    {
      test::HeapWatch heap;
      test::HostString<TypeParam> out(manager);
      manager.failing = true;
      EXPECT_EQ(test::RaisedBy([&] { one.abc(out.object()); }), test::kMemoryException);
      EXPECT_EQ(out.text(), Text<TypeParam>(""));
      EXPECT_EQ(heap.Outstanding(), 0);
    }
    EXPECT_TRUE(manager.NilIntact());
  }
}

int mallocsLeft;
void* __cdecl FailingMalloc(size_t size) {
  return mallocsLeft-- > 0 ? std::malloc(size) : nullptr;
}

TYPED_TEST(Results, EveryFailingAllocationLeavesNothingBehind) {
  for (const auto& one : Cases<TypeParam>()) {
    SCOPED_TRACE(one.name);
    for (int allowed = 0;; ++allowed) {
      ASSERT_LT(allowed, 10);
      test::CountingManager manager;
      test::HostString<TypeParam> out(manager, this->old_.c_str());
      test::HeapWatch heap;
      std::string raised;
      {
        // The watch counts what is given back; what is taken goes through the failing function.
        test::ImportHook hook("malloc", &FailingMalloc);
        mallocsLeft = allowed;
        raised = test::RaisedBy([&] { one.abc(out.object()); });
      }
      const int taken = allowed - (mallocsLeft > 0 ? mallocsLeft : 0);
      EXPECT_EQ(heap.Outstanding(), -taken) << "blocks given back against blocks taken, " << taken;
      if (raised.empty()) {
        EXPECT_EQ(out.text(), this->abc_);
        break;
      }
      EXPECT_EQ(raised, test::kMemoryException);
      EXPECT_EQ(out.text(), this->old_);
    }
  }
}

// A host may convert a string into itself.
template <class Char>
std::basic_string<Char> IntoItself(void(__cdecl* conversion)(const Char*, CStringT<Char>&),
                                   const Char* text) {
  test::CountingManager manager;
  test::HostString<Char> string(manager, text);
  conversion(string.object(), string.object());
  return string.text();
}

TEST(Aliasing, AStringIsConvertedIntoItself) {
  EXPECT_EQ(IntoItself(Char8ToMbc, "some text"), "some text");
  EXPECT_EQ(IntoItself(MbcToUtf8, "some text"), "some text");
  EXPECT_EQ(IntoItself(Utf8ToMbc, "some text"), "some text");
  EXPECT_EQ(IntoItself(UcToHex, L"Hi you"), L"48 69 20 79 6F 75");
  EXPECT_EQ(IntoItself(HexToUc, L"48 69 20 79 6F 75"), L"Hi you");
}

// A text of the other character type, put into a buffer by a host that reads it where it lies.
TEST(Aliasing, ATextMayLieInTheResultsBuffer) {
  test::CountingManager manager;
  test::HostString<char> bytes(manager, "0123456789012345678901234567890123456789");
  const wchar_t units[] = L"25 \u00B5m";
  std::memcpy(bytes.object().GetBuffer(40) + 2, units, sizeof units);
  UcToMbc(reinterpret_cast<const wchar_t*>(bytes.object().GetString() + 2), bytes.object());
  EXPECT_EQ(bytes.text(), Convert(UcToMbc, std::wstring(units)));

  test::HostString<wchar_t> wide(manager, L"01234567890123456789");
  std::memcpy(wide.object().GetBuffer(20), "25 \xB5m", 6);
  Char8ToUc(reinterpret_cast<const char*>(wide.object().GetString()), wide.object());
  EXPECT_EQ(wide.text(), L"25 \u00B5m");
}

TEST(Aliasing, TheHexFormHasAResultOfItsOwn) {
  test::CountingManager manager;
  {
    test::HostString<wchar_t> out(manager, L"before");
    UcToHex(L"Hi", out.object());
    EXPECT_EQ(out.text(), L"48 69");
    UcToHex(nullptr, out.object());
    EXPECT_EQ(out.text(), L"");
  }
  EXPECT_EQ(manager.outstanding, 0);
}

}  // namespace
