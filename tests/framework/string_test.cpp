// SPDX-License-Identifier: MIT
// String objects whose buffers belong to a host: every change goes through the host's manager, and shared,
// locked and fixed buffers are respected.
#include <afx.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/CodePage.h"
#include "support/ImportHook.h"

namespace {

using Text = std::wstring;

// A host's manager that counts, can refuse, and watches its empty string.
class CountingManager : public IAtlStringMgr {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    asked = chars;
    if (refuse) return nullptr;
    const auto bytes = sizeof(CStringData) + (static_cast<std::size_t>(chars) + 1) * charSize;
    auto* const data = static_cast<CStringData*>(std::malloc(bytes));
    *data = {this, 0, chars, 1};
    ++outstanding;
    return data;
  }
  void Free(CStringData* data) noexcept override {
    EXPECT_NE(data, &nil_.header) << "the empty string was freed";
    EXPECT_EQ(data->pStringMgr, this);
    --outstanding;
    std::free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    EXPECT_NE(data, &nil_.header);
    EXPECT_FALSE(data->IsShared());
    asked = chars;
    if (refuse) return nullptr;
    ++reallocations;
    CStringData* const larger = Allocate(chars, charSize);
    larger->nDataLength = data->nDataLength;
    std::memcpy(larger + 1, data + 1, (static_cast<std::size_t>(data->nDataLength) + 1) * charSize);
    data->nRefs = 0;
    Free(data);
    return larger;
  }
  CStringData* GetNilString() noexcept override {
    nil_.header.AddRef();
    return &nil_.header;
  }
  IAtlStringMgr* Clone() noexcept override { return this; }

  void ExpectNilUntouched(long references) const {
    EXPECT_EQ(nil_.header.nDataLength, 0);
    EXPECT_EQ(nil_.header.nRefs, references);
    EXPECT_EQ(nil_.text[0], 0);
  }

  bool refuse = false;
  int asked = 0;  // the last request's characters
  int outstanding = 0;
  int reallocations = 0;

 private:
  struct {
    CStringData header;
    wchar_t text[2];
  } nil_ = {{this, 0, 0, 2}, {}};
};

// The buffer of a fixed-size string class: it is that class's empty string, locked, with all its room.
class FixedManager : public IAtlStringMgr {
 public:
  static constexpr int kRoom = 12;

  explicit FixedManager(CountingManager& heap) : heap_(heap) {}

  CStringData* Allocate(int chars, int charSize) noexcept override {
    CStringData* const data = heap_.Allocate(chars, charSize);
    if (data) data->pStringMgr = this;
    return data;
  }
  void Free(CStringData* data) noexcept override {
    if (data == &fixed_.header) return;
    data->pStringMgr = &heap_;
    heap_.Free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    CStringData* const larger = Allocate(chars, charSize);
    if (!larger) return nullptr;
    larger->nDataLength = data->nDataLength;
    std::memcpy(larger + 1, data + 1, (static_cast<std::size_t>(data->nDataLength) + 1) * charSize);
    Free(data);
    return larger;
  }
  CStringData* GetNilString() noexcept override {
    fixed_.header = {this, 0, kRoom, -1};
    fixed_.text[0] = 0;
    return &fixed_.header;
  }
  IAtlStringMgr* Clone() noexcept override { return &heap_; }

  bool Intact() const { return fixed_.beyond == L'#'; }

 private:
  CountingManager& heap_;
  struct {
    CStringData header;
    wchar_t text[kRoom + 1];
    wchar_t beyond = L'#';
  } fixed_;
};

// A host's string object: one pointer, which the library sees as its own class.
class HostString {
 public:
  explicit HostString(CStringData* data) : text_(static_cast<wchar_t*>(data->data())) {}
  HostString(IAtlStringMgr& manager, const Text& text, int room) {
    CStringData* const data = manager.Allocate(room, sizeof(wchar_t));
    data->nDataLength = static_cast<int>(text.size());
    std::memcpy(data + 1, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    text_ = static_cast<wchar_t*>(data->data());
  }
  HostString(const HostString&) = delete;
  ~HostString() { data().Release(); }

  CStringW& object() { return reinterpret_cast<CStringW&>(text_); }
  CStringData& data() { return reinterpret_cast<CStringData*>(text_)[-1]; }
  const wchar_t* text() const { return text_; }

  void Expect(const Text& expected) {
    EXPECT_EQ(Text(text_, static_cast<std::size_t>(data().nDataLength)), expected);
    EXPECT_EQ(text_[data().nDataLength], 0);
    EXPECT_GE(data().nAllocLength, data().nDataLength);
  }

 private:
  wchar_t* text_;
};

template <class Body>
bool RaisesMemory(Body body) {
  try {
    body();
  } catch (CMemoryException* exception) {
    exception->Delete();
    return true;
  }
  return false;
}

TEST(String, WritingToTheEmptyStringTakesABufferOfTheHosts) {
  CountingManager manager;
  {
    HostString string(manager.GetNilString());
    string.object() = L"text";
    string.Expect(L"text");
    EXPECT_EQ(string.data().pStringMgr, &manager);
    EXPECT_EQ(manager.outstanding, 1);
    manager.ExpectNilUntouched(2);
    string.object().Empty();
    string.Expect(L"");
    EXPECT_EQ(manager.outstanding, 0);
    manager.ExpectNilUntouched(3);
  }
  manager.ExpectNilUntouched(2);
}

// Writing an empty text to the empty string must not write its terminator: other strings use it too.
TEST(String, EmptyTextLeavesTheEmptyStringAlone) {
  CountingManager manager;
  HostString string(manager.GetNilString());
  string.object() = L"";
  string.object() = static_cast<const wchar_t*>(nullptr);
  string.object().Append(L"");
  string.object() += CStringW();
  string.object().SetString(L"x", 0);
  string.object().Truncate(0);
  EXPECT_EQ(manager.outstanding, 0);
  manager.ExpectNilUntouched(3);
}

TEST(String, SharedBufferIsForked) {
  CountingManager manager;
  HostString other(manager, L"old", 20);
  other.data().AddRef();
  {
    HostString string(&other.data());
    string.object() += L" and new";
    string.Expect(L"old and new");
    other.Expect(L"old");
    EXPECT_NE(string.text(), other.text());
    EXPECT_EQ(other.data().nRefs, 1);
    EXPECT_EQ(manager.outstanding, 2);
  }
  EXPECT_EQ(manager.outstanding, 1);
}

// A shared text that is longer than the new one is copied whole before it is cut.
TEST(String, SharedBufferLongerThanTheResult) {
  CountingManager manager;
  const Text old(300, L'o');
  HostString other(manager, old, 300);
  other.data().AddRef();
  HostString string(&other.data());
  string.object().SetString(L"ab");
  string.Expect(L"ab");
  other.Expect(old);
  EXPECT_GE(string.data().nAllocLength, 300) << "the old text had room in it";
}

// A conversion that fails after the text was measured.
int narrowings;
TEST(String, TextThatCannotBeConvertedIsEmpty) {
  const test::ImportHook hook(
      "WideCharToMultiByte",
      +[](UINT page, DWORD flags, const wchar_t* text, int size, char* out, int room, const char* stand,
          BOOL* used) -> int {
        if (++narrowings == 2) return 0;
        static auto* const real =
            test::Platform<decltype(WideCharToMultiByte)>(L"kernel32.dll", "WideCharToMultiByte");
        return real(page, flags, text, size, out, room, stand, used);
      },
      ::GetModuleHandleW(nullptr));
  narrowings = 0;
  CStringA text("before");
  text = L"a text";
  EXPECT_EQ(narrowings, 2);
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_STREQ(text.GetString(), "");
}

// Copies take their buffers from the manager that the string's manager names for them.
TEST(String, AForkTakesItsBufferFromTheClone) {
  CountingManager clone;
  class Cloned final : public IAtlStringMgr {
   public:
    Cloned(IAtlStringMgr& inner, IAtlStringMgr& copies) : inner_(inner), copies_(copies) {}
    CStringData* Allocate(int chars, int size) noexcept override { return inner_.Allocate(chars, size); }
    void Free(CStringData* data) noexcept override { inner_.Free(data); }
    CStringData* Reallocate(CStringData* data, int chars, int size) noexcept override {
      return inner_.Reallocate(data, chars, size);
    }
    CStringData* GetNilString() noexcept override { return inner_.GetNilString(); }
    IAtlStringMgr* Clone() noexcept override { return &copies_; }

   private:
    IAtlStringMgr& inner_;
    IAtlStringMgr& copies_;
  };
  CountingManager inner;
  Cloned manager(inner, clone);
  HostString other(inner, L"old", 20);
  other.data().pStringMgr = &manager;
  other.data().AddRef();
  HostString string(&other.data());
  string.object() = L"new text";
  string.Expect(L"new text");
  EXPECT_EQ(string.data().pStringMgr, &clone);
  EXPECT_EQ(clone.outstanding, 1);
  EXPECT_EQ(inner.outstanding, 1);
  other.data().pStringMgr = &inner;
}

// The buffer of a locked target stays where it is, also when the source is of the same manager.
TEST(String, AssignmentToALockedStringCopies) {
  CountingManager manager;
  HostString from(manager, L"from", 20), target(manager, L"target", 20);
  target.data().nRefs = -1;
  const wchar_t* const buffer = target.text();
  target.object() = from.object();
  target.Expect(L"from");
  EXPECT_EQ(target.text(), buffer);
  EXPECT_EQ(target.data().nRefs, -1);
  EXPECT_EQ(from.data().nRefs, 1);
  target.data().nRefs = 1;
}

TEST(String, LockedBufferStaysWhereItIs) {
  CountingManager manager;
  HostString string(manager, L"old", 20);
  string.data().nRefs = -1;
  const wchar_t* const buffer = string.text();
  string.object() = L"new";
  string.object() += L" text";
  string.object() = CStringW(L"from another");
  string.Expect(L"from another");
  string.object().Empty();
  string.Expect(L"");
  EXPECT_EQ(string.text(), buffer);
  EXPECT_EQ(string.data().nRefs, -1);
  EXPECT_EQ(manager.outstanding, 1);
  string.data().nRefs = 1;
}

// Copies of a locked string have buffers of their own: the holder of the lock writes to the other.
TEST(String, CopyOfALockedStringDoesNotShareIt) {
  CountingManager manager;
  HostString locked(manager, L"old", 20);
  locked.data().nRefs = -1;
  HostString string(manager.GetNilString());
  string.object() = locked.object();
  string.Expect(L"old");
  EXPECT_NE(string.text(), locked.text());
  EXPECT_EQ(locked.data().nRefs, -1);
  locked.data().nRefs = 1;
}

TEST(String, FixedBufferIsUsedUpToItsRoomAndLeftBeyondIt) {
  CountingManager heap;
  FixedManager manager(heap);
  {
    HostString string(manager.GetNilString());
    const wchar_t* const fixed = string.text();
    string.object() = L"123456789012";
    string.Expect(L"123456789012");
    EXPECT_EQ(string.text(), fixed);
    EXPECT_EQ(heap.outstanding, 0);
    string.object() += L'3';
    string.Expect(L"1234567890123");
    EXPECT_NE(string.text(), fixed);
    EXPECT_EQ(heap.outstanding, 1);
    string.object().Empty();
    string.Expect(L"");
    EXPECT_EQ(string.text(), fixed);
    EXPECT_EQ(heap.outstanding, 0);
  }
  EXPECT_TRUE(manager.Intact());
  heap.ExpectNilUntouched(2);
}

// Strings of one manager share; strings of two never do, so that each buffer is freed by its own.
TEST(String, AssignmentSharesWithinOneManagerOnly) {
  CountingManager one;
  CountingManager other;
  HostString source(one, L"text", 4);
  HostString same(one.GetNilString());
  HostString different(other.GetNilString());
  same.object() = source.object();
  different.object() = source.object();
  EXPECT_EQ(same.text(), source.text());
  EXPECT_EQ(source.data().nRefs, 2);
  EXPECT_NE(different.text(), source.text());
  EXPECT_EQ(different.data().pStringMgr, &other);
  different.Expect(L"text");
  const CStringW ours(source.object());
  EXPECT_NE(ours.GetString(), source.text());
  EXPECT_EQ(ours, source.object());
}

TEST(String, TakesPartsOfItself) {
  CountingManager manager;
  HostString string(manager, L"0123456789", 10);
  string.object().SetString(string.text() + 2, 5);
  string.Expect(L"23456");
  string.object().Append(string.text() + 1, 3);
  string.Expect(L"23456345");
  string.object() += string.object();
  string.Expect(L"2345634523456345");
  string.object() = string.object();
  string.Expect(L"2345634523456345");
  string.object() = string.text() + 14;
  string.Expect(L"45");
  // Also while another string shares the buffer, and so keeps the old text.
  string.data().AddRef();
  HostString other(&string.data());
  string.object().Append(string.text(), 2);
  string.Expect(L"4545");
  other.Expect(L"45");
}

TEST(String, WithoutMemoryTheTextIsAsItWas) {
  CountingManager manager;
  HostString own(manager, L"own", 3);
  HostString shared(manager, L"shared", 6);
  shared.data().AddRef();
  HostString holder(&shared.data());
  HostString empty(manager.GetNilString());
  manager.refuse = true;
  for (HostString* const string : {&own, &shared, &empty}) {
    const Text before = string->text();
    const wchar_t* const buffer = string->text();
    EXPECT_TRUE(RaisesMemory([&] { string->object() = L"something longer"; }));
    EXPECT_TRUE(RaisesMemory([&] { string->object() += L"something longer"; }));
    EXPECT_TRUE(RaisesMemory([&] { string->object() = "narrow and longer"; }));
    EXPECT_TRUE(RaisesMemory([&] { string->object().GetBuffer(100); }));
    string->Expect(before);
    EXPECT_EQ(string->text(), buffer);
  }
  manager.refuse = false;
  EXPECT_EQ(shared.data().nRefs, 2);
}

TEST(String, LengthsBeyondTheHeadersRangeAreRefused) {
  CStringW string(L"x");
  EXPECT_TRUE(RaisesMemory([&] { string.Append(L"y", 0x7FFFFFF0); }));
  EXPECT_TRUE(RaisesMemory([&] { string.GetBuffer(0x7FFFFFF0); }));
  EXPECT_STREQ(string, L"x");
}

// The longest text that a header can tell of is asked for, one character more is not.
TEST(String, LongestLengthIsAskedFor) {
  constexpr int kLongest = 0x7FFFFFEF;
  CountingManager manager;
  HostString string(manager, L"x", 1);
  manager.refuse = true;
  manager.asked = 0;
  EXPECT_TRUE(RaisesMemory([&] { string.object().Append(L"y", kLongest); }));
  EXPECT_EQ(manager.asked, 0);
  EXPECT_TRUE(RaisesMemory([&] { string.object().Append(L"y", kLongest - 1); }));
  EXPECT_EQ(manager.asked, kLongest);
  // Half as much again, as long as that is possible; of very long ones a little more.
  const struct {
    int room, wanted, asked;
  } rows[] = {{100, 101, 150},
              {100, 151, 151},
              {0x3FFFFFFE, 0x3FFFFFFF, 0x5FFFFFFD},
              {0x40000000, 0x40000001, 0x40100000},
              {kLongest - 0x100000, kLongest - 1, kLongest},
              {kLongest - 0xFFFFF, kLongest - 1, kLongest - 1}};
  for (const auto& row : rows) {
    string.data().nAllocLength = row.room;
    EXPECT_TRUE(RaisesMemory([&] { string.object().GetBuffer(row.wanted); }));
    EXPECT_EQ(manager.asked, row.asked) << row.room;
  }
  string.data().nAllocLength = 1;
  string.Expect(L"x");
  manager.refuse = false;
  // This module's own manager.
  static std::size_t bytes;
  const test::ImportHook hook(
      "malloc",
      +[](std::size_t size) -> void* {
        if (size > 0x7FFFFFFF) return bytes = size, nullptr;
        return test::Platform<void*(std::size_t)>(L"ucrtbase.dll", "malloc")(size);
      },
      ::GetModuleHandleW(nullptr));
  auto& own = zera_types::HeapStringMgr::Instance();
  EXPECT_EQ(own.Allocate(-1, 2), nullptr);
  EXPECT_EQ(own.Allocate(kLongest + 1, 2), nullptr);
  EXPECT_EQ(bytes, 0u);
  EXPECT_EQ(own.Allocate(kLongest, 2), nullptr);
  EXPECT_EQ(bytes, sizeof(CStringData) + (std::size_t{kLongest} + 1) * 2);
}

TEST(String, LengthsBelowNoneAreNone) {
  CStringW string(L"text");
  string.Append(L"x", -1);
  string.Append(nullptr, 1);
  EXPECT_STREQ(string, L"text");
  string.SetString(L"x", -1);
  EXPECT_STREQ(string, L"");
  string = L"text";
  string.SetString(nullptr, 1);
  EXPECT_STREQ(string, L"");
}

TEST(String, EqualTextsAreOfOneLength) {
  const CStringW text(L"text");
  EXPECT_TRUE(text == CStringW(L"text"));
  EXPECT_FALSE(text != CStringW(L"text"));
  for (const wchar_t* const other : {L"tex", L"texts", L"texT", L""}) {
    EXPECT_FALSE(text == CStringW(other));
    EXPECT_FALSE(CStringW(other) == text);
    EXPECT_TRUE(text != CStringW(other));
  }
}

// Growing by half keeps the number of new buffers small.
TEST(String, AppendingIsLinear) {
  CountingManager manager;
  HostString string(manager, L"", 1);
  for (int i = 0; i < 100'000; ++i) string.object() += L'x';
  EXPECT_EQ(string.data().nDataLength, 100'000);
  EXPECT_LT(manager.reallocations, 40);
}

TEST(String, BufferKeepsTheTextAndIsCutWhereAsked) {
  CountingManager manager;
  HostString string(manager, L"text", 4);
  wchar_t* const buffer = string.object().GetBuffer(50);
  EXPECT_STREQ(buffer, L"text");
  std::wmemcpy(buffer, L"other\0beyond", 13);
  string.object().ReleaseBuffer();
  string.Expect(L"other");
  string.object().GetBuffer(0);
  string.object().ReleaseBufferSetLength(3);
  string.Expect(L"oth");
  string.object().Truncate(5);
  string.Expect(L"oth");
  string.object().Truncate(1);
  string.Expect(L"o");
}

// A buffer that was filled to the brim has no terminator before its end.
TEST(String, ReleaseBufferStopsAtTheRoom) {
  CountingManager manager;
  HostString string(manager, L"", 3);
  std::wmemcpy(string.object().GetBuffer(3), L"abcd", 4);
  string.object().ReleaseBuffer();
  string.Expect(L"abc");
}

TEST(String, ConvertsWithTheAnsiCodePage) {
  const test::LocalText& local = test::Local();
  EXPECT_STREQ(CStringW(local.bytes.c_str()), local.wide.c_str());
  EXPECT_STREQ(CStringA(local.wide.c_str()), local.bytes.c_str());
  EXPECT_TRUE(CStringW(static_cast<const char*>(nullptr)).IsEmpty());
  EXPECT_TRUE(CStringA(L"").IsEmpty());
}

// Any sequence of changes gives what the language's own string gives, whatever buffer is written to.
TEST(String, RandomChangesAgreeWithTheLanguagesString) {
  std::mt19937 random(20240611);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (int round = 0; round < 2'000; ++round) {
    CountingManager heap;
    FixedManager fixed(heap);
    {
      const int kind = below(4);
      HostString string(kind == 0   ? fixed.GetNilString()
                        : kind == 1 ? heap.GetNilString()
                                    : heap.Allocate(below(20), sizeof(wchar_t)));
      if (kind > 1) const_cast<wchar_t*>(string.text())[0] = 0;
      if (kind == 3) string.data().nRefs = 1;
      Text model;
      std::vector<CStringW> others;
      for (int step = 0; step < 20; ++step) {
        const Text piece(static_cast<std::size_t>(below(15)), static_cast<wchar_t>(L'a' + below(26)));
        switch (below(7)) {
          case 0:
            string.object() = piece.c_str();
            model = piece;
            break;
          case 1:
            string.object() += piece.c_str();
            model += piece;
            break;
          case 2:
            string.object().AppendChar(L'!');
            model += L'!';
            break;
          case 3: {
            const int length = below(20);
            string.object().Truncate(length);
            if (static_cast<std::size_t>(length) < model.size())
              model.resize(static_cast<std::size_t>(length));
            break;
          }
          case 4: {
            const int from = below(static_cast<int>(model.size()) + 1);
            const int count = below(static_cast<int>(model.size()) - from + 1);
            string.object().Append(string.text() + from, count);
            model += Text(model, static_cast<std::size_t>(from), static_cast<std::size_t>(count));
            break;
          }
          case 5:
            others.emplace_back(string.object());
            EXPECT_EQ(Text(others.back().GetString()), model);
            break;
          case 6:
            if (model.size() > 40) {
              string.object().Empty();
              model.clear();
            }
            break;
        }
        string.Expect(model);
      }
    }
    EXPECT_EQ(heap.outstanding, 0);
    heap.ExpectNilUntouched(2);
    EXPECT_TRUE(fixed.Intact());
    if (HasFailure()) FAIL() << "round " << round;
  }
}

// Threads may hold copies of one text: the count of references is the only thing they share.
TEST(String, CopiesAreTakenAndDroppedByThreads) {
  const CStringW text(L"shared by all");
  const auto work = [](void* shared) -> DWORD {
    for (int i = 0; i < 20'000; ++i) {
      CStringW copy(*static_cast<const CStringW*>(shared));
      if (i % 16 == 0) copy += L"!";
    }
    return 0;
  };
  HANDLE threads[3];
  for (HANDLE& thread : threads) {
    thread = ::CreateThread(nullptr, 0, work, const_cast<CStringW*>(&text), 0, nullptr);
  }
  EXPECT_EQ(::WaitForMultipleObjects(3, threads, TRUE, 60'000), WAIT_OBJECT_0);
  for (const HANDLE thread : threads) ::CloseHandle(thread);
  EXPECT_EQ(reinterpret_cast<const CStringData*>(text.GetString())[-1].nRefs, 1);
  EXPECT_STREQ(text, L"shared by all");
}

}  // namespace
