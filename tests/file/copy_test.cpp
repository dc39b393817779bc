// SPDX-License-Identifier: MIT
// Copying one file and comparing two, as a host calls it.
#include "CallLog.h"
#include "FileApi.h"
#include "Sharing.h"
#include "support/CodePage.h"
#include "support/InvalidParameter.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;
using test::ErrorOfOpening;
using test::kShareAll;
using test::Opened;
using test::Times;

constexpr Answer kHeld = {Answer::kFail, ERROR_SHARING_VIOLATION};
const std::size_t kSizes[] = {0, 1, 4095, 4096, 4097, 8192, 12289, 100000};

// Bytes of all values that do not repeat with the block size.
std::string Bytes(std::size_t count) {
  std::string bytes(count, '\0');
  unsigned state = 12345;
  for (char& one : bytes) one = static_cast<char>((state = state * 1103515245 + 12345) >> 16);
  return bytes;
}

void ExpectReading(const Call& open, const std::wstring& path) {
  EXPECT_EQ(open.path, path);
  EXPECT_EQ(open.access, GENERIC_READ);
  EXPECT_EQ(open.share, DWORD{FILE_SHARE_READ});
  EXPECT_EQ(open.disposition, DWORD{OPEN_EXISTING});
}

void ExpectWritingAlone(const Call& open, const std::wstring& path) {
  EXPECT_EQ(open.path, path);
  EXPECT_EQ(open.access, DWORD{GENERIC_WRITE});
  EXPECT_EQ(open.share, 0u);
  EXPECT_EQ(open.disposition, DWORD{CREATE_ALWAYS});
}

TEST(Premise, OpenFilesAreCounted) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"file.bin", "x");
  const DWORD before = test::OpenHandles();
  const Opened opened(file, GENERIC_READ, kShareAll);
  EXPECT_EQ(test::OpenHandles(), before + 1);
}

class Copying : public test::BothVariants {
 protected:
  const test::TempFolder folder;
  const std::wstring target = folder / L"target.bin";
};
ZERA_BOTH_VARIANTS(Copying);

TEST_P(Copying, EveryByteInBlocksOf4096) {
  for (const std::size_t size : kSizes) {
    const std::string bytes = Bytes(size);
    const std::wstring source = folder.File(L"source.bin", bytes);
    const DWORD handles = test::OpenHandles();
    const int full = static_cast<int>((size + 4095) / 4096);
    {
      const CallLog log;
      const test::HeapWatch heap;
      EXPECT_EQ(api.Copy(source, target), 1);
      EXPECT_EQ(heap.Allocations(), 0);
      EXPECT_EQ(log.Sequence("?FDMsORWC"), "OO" + Times(full, "RW") + "RCC") << size;
      ExpectReading(log.Of('O')[0], source);
      ExpectWritingAlone(log.Of('O')[1], target);
      for (const Call& read : log.Of('R')) EXPECT_EQ(read.number, 4096u);
      std::size_t rest = size;
      for (const Call& write : log.Of('W')) {
        EXPECT_EQ(write.number, rest < 4096 ? rest : 4096);
        EXPECT_EQ(write.handle, log.Of('C')[0].handle) << "the target is closed first";
        rest -= write.number;
      }
      EXPECT_EQ(log.Of('R')[0].handle, log.Of('C')[1].handle);
    }
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(test::ReadBytes(target), bytes) << "a larger one of before is cut off as well";
    EXPECT_EQ(test::ReadBytes(source), bytes);
    test::WriteBytes(target, Bytes(size + 5000));
  }
}

TEST_P(Copying, SameTextTouchesNothing) {
  const std::wstring source = folder.File(L"source.bin", "x");
  const CallLog log;
  EXPECT_EQ(api.Copy(source, source), 1);
  EXPECT_EQ(api.Copy(folder / L"missing.bin", folder / L"missing.bin"), 1);
  EXPECT_EQ(api.Copy(L"", L""), 1);
  EXPECT_EQ(log.Sequence("?FNDMsORWC"), "");
}

TEST_P(Copying, SameFileByAnotherTextFailsAndKeepsIt) {
  const std::wstring source = folder.File(L"source.bin", "content");
  for (const std::wstring& other : {folder / L"SOURCE.bin", folder / L".\\source.bin"}) {
    EXPECT_EQ(api.Copy(source, other), 0);
    EXPECT_EQ(test::ReadBytes(source), "content");
  }
}

TEST_P(Copying, TimesAndAttributesStayBehind) {
  const std::wstring source = folder.File(L"source.bin", "x");
  FILETIME old = {0, 0x01C00000};
  {
    const HANDLE file =
        ::CreateFileW(source.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(::SetFileTime(file, nullptr, nullptr, &old));
    ::CloseHandle(file);
  }
  ASSERT_TRUE(::SetFileAttributesW(source.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(api.Copy(source, target), 1);
  EXPECT_FALSE(::GetFileAttributesW(target.c_str()) & FILE_ATTRIBUTE_READONLY);
  WIN32_FILE_ATTRIBUTE_DATA data;
  ASSERT_TRUE(::GetFileAttributesExW(target.c_str(), GetFileExInfoStandard, &data));
  EXPECT_GT(data.ftLastWriteTime.dwHighDateTime, 0x01D00000u);
}

TEST_P(Copying, OthersMayReadTheSourceOnly) {
  const std::wstring source = folder.File(L"source.bin", Bytes(10000));
  int checks = 0;
  const CallLog log([&](const Call& call) {
    if (call.kind == 'W') {
      ++checks;
      EXPECT_EQ(ErrorOfOpening(source, GENERIC_READ), 0u);
      EXPECT_EQ(ErrorOfOpening(source, GENERIC_WRITE), DWORD{ERROR_SHARING_VIOLATION});
      EXPECT_EQ(ErrorOfOpening(target, GENERIC_READ), DWORD{ERROR_SHARING_VIOLATION});
      EXPECT_EQ(ErrorOfOpening(target, GENERIC_WRITE), DWORD{ERROR_SHARING_VIOLATION});
    }
    return Answer();
  });
  EXPECT_EQ(api.Copy(source, target), 1);
  EXPECT_EQ(checks, 3);
}

TEST_P(Copying, SourceThatCannotBeOpenedMakesNoTarget) {
  const std::wstring held = folder.File(L"held.bin", "x");
  const Opened writer(held, GENERIC_WRITE, kShareAll);
  for (const std::wstring& source :
       {held, folder / L"missing.bin", folder / L"none\\missing.bin", folder.path(), std::wstring()}) {
    const CallLog log;
    EXPECT_EQ(api.Copy(source, target), 0);
    EXPECT_LE(log.Of('O').size(), 1u) << "no write check";
    EXPECT_EQ(log.Of('C').size(), 0u);
    EXPECT_FALSE(test::Exists(target));
  }
}

TEST_P(Copying, ReaderOfTheSourceDoesNotHinder) {
  const std::wstring source = folder.File(L"source.bin", "x");
  const Opened reader(source, GENERIC_READ, FILE_SHARE_READ);
  EXPECT_EQ(api.Copy(source, target), 1);
}

TEST_P(Copying, MissingFoldersAreMade) {
  const std::wstring source = folder.File(L"source.bin", "content");
  const DWORD handles = test::OpenHandles();
  const std::wstring deep = folder / L"a\\b\\target.bin";
  EXPECT_EQ(api.Copy(source, deep), 1);
  EXPECT_EQ(test::ReadBytes(deep), "content");
  EXPECT_EQ(folder.Entries(),
            (std::vector<std::wstring>{L"a\\", L"a\\b\\", L"a\\b\\target.bin", L"source.bin"}));
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(Copying, TargetIsTriedOnceMoreAfterTheWriteCheck) {
  const std::wstring source = folder.File(L"source.bin", "content");
  for (const int failures : {1, 2, 3}) {
    int tried = 0;
    const CallLog log([&](const Call& call) {
      return call.kind == 'O' && call.path == target && ++tried <= failures ? kHeld : Answer();
    });
    EXPECT_EQ(api.Copy(source, target), failures == 1);
    EXPECT_EQ(tried, 2);
    const auto opens = log.Of('O');
    ASSERT_EQ(opens.size(), 4u) << "source, target, the check's probe, target";
    ExpectWritingAlone(opens[1], target);
    EXPECT_NE(opens[2].path, target);
    ExpectWritingAlone(opens[3], target);
    EXPECT_EQ(log.Of('C').size(), failures == 1 ? 3u : 2u);
    ::DeleteFileW(target.c_str());
  }
}

TEST_P(Copying, TargetIsNotTriedAgainWhenTheCheckFails) {
  const std::wstring source = folder.File(L"source.bin", "content");
  int tried = 0;
  const CallLog log([&](const Call& call) {
    if (call.kind != 'O' || call.path == source) return Answer();
    tried += call.path == target;
    return kHeld;
  });
  EXPECT_EQ(api.Copy(source, target), 0);
  EXPECT_EQ(tried, 1);
  EXPECT_EQ(log.Sequence("C"), "C") << "the source";
}

TEST_P(Copying, HeldOrReadOnlyTargetKeepsItsContent) {
  const std::wstring source = folder.File(L"source.bin", "content");
  const std::wstring held = folder.File(L"held.bin", "kept");
  const Opened reader(held, GENERIC_READ, kShareAll);
  const std::wstring locked = folder.File(L"locked.bin", "kept");
  ASSERT_TRUE(::SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_READONLY));
  const DWORD handles = test::OpenHandles();
  for (const std::wstring& path : {held, test::IsProtected(locked) ? locked : held}) {
    EXPECT_EQ(api.Copy(source, path), 0);
    EXPECT_EQ(test::ReadBytes(path), "kept");
  }
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(Copying, FolderAsTarget) {
  const std::wstring source = folder.File(L"source.bin", "content");
  const std::wstring sub = folder.Folder(L"sub");
  EXPECT_EQ(api.Copy(source, sub), 0);
  EXPECT_EQ(api.Copy(source, sub.substr(0, sub.size() - 1)), 0);
  EXPECT_EQ(folder.Entries(), (std::vector<std::wstring>{L"source.bin", L"sub\\"}));
}

TEST_P(Copying, EndsAtTheFirstReadOfNothing) {
  const std::wstring source = folder.File(L"source.bin", Bytes(10000));
  const CallLog log([](const Call& call) {
    return call.kind == 'R' && call.nth == 2 ? Answer{Answer::kPretend} : Answer();
  });
  EXPECT_EQ(api.Copy(source, target), 1);
  EXPECT_EQ(log.Sequence("RWC"), "RWRCC");
  EXPECT_EQ(test::ReadBytes(target), Bytes(10000).substr(0, 4096));
}

TEST_P(Copying, BadPathsHarmNothing) {
  const std::wstring source = folder.File(L"source.bin", "content");
  test::InvalidParameter handler;
  for (const std::wstring& path : {std::wstring(32767, L'x'), std::wstring(L"X:\\tmp\\<>|\""),
                                   std::wstring(L"Q:\\x.bin"), source + L"\\x.bin", std::wstring(L"::")}) {
    EXPECT_EQ(api.Copy(source, path), 0) << test::Ansi(path.substr(0, 20));
    EXPECT_EQ(api.Copy(path, target), 0);
    EXPECT_EQ(api.Compare(source, path), 0);
    EXPECT_EQ(api.Compare(path, source), 0);
  }
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>{L"source.bin"});
}

TEST_P(Copying, NamesOfTheCodePage) {
  const std::wstring name = test::Local().wide + L".txt";
  const std::wstring source = folder.File(name, "content");
  EXPECT_EQ(api.Copy(source, folder / (L"2" + name)), 1);
  EXPECT_EQ(api.Compare(source, folder / (L"2" + name)), 1);
  EXPECT_EQ(api.Create(folder / (L"3" + name)), 1);
  EXPECT_EQ(folder.Entries(), (std::vector<std::wstring>{L"2" + name, L"3" + name, name}));
}

class Comparing : public test::BothVariants {
 protected:
  const test::TempFolder folder;
};
ZERA_BOTH_VARIANTS(Comparing);

TEST_P(Comparing, EqualContentInBlocksOf4096) {
  for (const std::size_t size : kSizes) {
    const std::wstring first = folder.File(L"first.bin", Bytes(size));
    const std::wstring second = folder.File(L"second.bin", Bytes(size));
    const DWORD handles = test::OpenHandles();
    {
      const CallLog log;
      const test::HeapWatch heap;
      EXPECT_EQ(api.Compare(first, second), 1) << size;
      EXPECT_EQ(heap.Allocations(), 0);
      const int full = static_cast<int>((size + 4095) / 4096);
      EXPECT_EQ(log.Sequence("?FDMsORWC"), "??OO" + Times(full + 1, "RR") + "CC");
      ExpectReading(log.Of('O')[0], first);
      ExpectReading(log.Of('O')[1], second);
      const auto reads = log.Of('R');
      for (std::size_t i = 0; i < reads.size(); ++i) {
        EXPECT_EQ(reads[i].number, 4096u);
        EXPECT_EQ(reads[i].handle, reads[i % 2].handle) << "in turn";
      }
      EXPECT_NE(reads[0].handle, reads[1].handle);
    }
    EXPECT_EQ(test::OpenHandles(), handles);
  }
}

TEST_P(Comparing, OneByteDecides) {
  const std::string bytes = Bytes(9000);
  const std::wstring first = folder.File(L"first.bin", bytes);
  const DWORD handles = test::OpenHandles();
  for (const std::size_t at : {0u, 4095u, 4096u, 8191u, 8192u, 8999u}) {
    std::string other = bytes;
    other[at] = static_cast<char>(other[at] ^ 1);
    const std::wstring second = folder.File(L"second.bin", other);
    const CallLog log;
    EXPECT_EQ(api.Compare(first, second), 0) << at;
    EXPECT_EQ(log.Sequence("ORC"), "OO" + Times(static_cast<int>(at / 4096) + 1, "RR") + "CC");
  }
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(Comparing, SizesDecideWithoutOpening) {
  const std::wstring first = folder.File(L"first.bin", "abc");
  const std::wstring second = folder.File(L"second.bin", "abcd");
  const CallLog log;
  EXPECT_EQ(api.Compare(first, second), 0);
  EXPECT_EQ(api.Compare(first, folder / L"missing.bin"), 0);
  EXPECT_EQ(log.Sequence("?ORC"), "????");
}

TEST_P(Comparing, SameTextIsEqualWhateverItNames) {
  const CallLog log;
  EXPECT_EQ(api.Compare(folder / L"missing.bin", folder / L"missing.bin"), 1);
  EXPECT_EQ(api.Compare(L"", L""), 1);
  EXPECT_EQ(log.Sequence("?FNDMsORWC"), "");
}

TEST_P(Comparing, SameFileByAnotherTextIsRead) {
  const std::wstring first = folder.File(L"first.bin", "abc");
  const CallLog log;
  EXPECT_EQ(api.Compare(first, folder / L"FIRST.bin"), 1);
  EXPECT_EQ(log.Sequence("OR"), "OORRRR");
}

TEST_P(Comparing, WhatCannotBeOpenedEqualsNothing) {
  const std::wstring empty = folder.File(L"empty.bin", "");
  const std::wstring held = folder.File(L"held.bin", "");
  const Opened writer(held, GENERIC_WRITE, kShareAll);
  const std::wstring sub = folder.Folder(L"sub");
  const std::wstring missing = folder / L"missing.bin";
  const DWORD handles = test::OpenHandles();
  const struct {
    std::wstring first, second;
    const char* calls;
  } cases[] = {{missing, folder / L"missing2.bin", "O"},
               {missing, empty, "O"},
               {empty, missing, "OOC"},
               {empty, sub, "OOC"},
               {sub, empty, "O"},
               {held, empty, "O"},
               {empty, held, "OOC"}};
  for (const auto& one : cases) {
    const CallLog log;
    EXPECT_EQ(api.Compare(one.first, one.second), 0);
    EXPECT_EQ(log.Sequence("ORC"), one.calls) << test::Ansi(one.first) << " " << test::Ansi(one.second);
  }
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(Comparing, SizesModulo4GigabytesAreNotEnough) {
  const std::wstring empty = folder.File(L"empty.bin", "");
  const std::wstring huge = test::SparseFile(folder, 0x100000000LL);
  const CallLog log;
  EXPECT_EQ(api.Compare(huge, empty), 0);
  EXPECT_EQ(api.Compare(empty, huge), 0);
  EXPECT_EQ(log.Sequence("OR"), "OORROORR");
}

TEST_P(Comparing, FileThatEndsEarlyDiffers) {
  const std::wstring first = folder.File(L"first.bin", Bytes(9000));
  const std::wstring second = folder.File(L"second.bin", Bytes(9000));
  for (const int nth : {1, 2, 3, 4}) {
    const CallLog log([=](const Call& call) {
      return call.kind == 'R' && call.nth == nth ? Answer{Answer::kPretend} : Answer();
    });
    EXPECT_EQ(api.Compare(first, second), 0) << nth;
    EXPECT_EQ(log.Sequence("RC"), Times((nth + 1) / 2, "RR") + "CC");
  }
}

TEST_P(Comparing, OthersMayReadOnly) {
  const std::wstring first = folder.File(L"first.bin", "abc");
  const std::wstring second = folder.File(L"second.bin", "abc");
  const CallLog log([&](const Call& call) {
    if (call.kind == 'R') {
      for (const std::wstring& path : {first, second}) {
        EXPECT_EQ(ErrorOfOpening(path, GENERIC_READ), 0u);
        EXPECT_EQ(ErrorOfOpening(path, GENERIC_WRITE), DWORD{ERROR_SHARING_VIOLATION});
      }
    }
    return Answer();
  });
  EXPECT_EQ(api.Compare(first, second), 1);
  EXPECT_EQ(log.Of('R').size(), 4u);
}

TEST(NullContents, AreFilesThatCannotBeOpened) {
  const auto copy = test::Export<decltype(ZERA_TOOLS_FILE_COPY_UC)>(1016);
  const auto copyPlain = test::Export<decltype(ZERA_TOOLS_FILE_COPY)>(16);
  const auto compare = test::Export<decltype(ZERA_TOOLS_FILE_COMPARE_UC)>(1017);
  const test::TempFolder folder;
  const std::wstring source = folder.File(L"source.bin", "x");
  EXPECT_EQ(copy(source.c_str(), nullptr), 0);
  EXPECT_EQ(copy(nullptr, source.c_str()), 0);
  EXPECT_EQ(compare(source.c_str(), nullptr), 0);
  EXPECT_EQ(compare(nullptr, source.c_str()), 0);
  EXPECT_EQ(copyPlain(nullptr, test::Ansi(source).c_str()), 0);
  EXPECT_EQ(copyPlain(nullptr, nullptr), 1) << "both are the empty text";
  EXPECT_EQ(copy(nullptr, nullptr), 1);
  EXPECT_EQ(compare(nullptr, nullptr), 1);
  EXPECT_EQ(test::ReadBytes(source), "x");
}

}  // namespace
