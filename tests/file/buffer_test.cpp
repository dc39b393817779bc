// SPDX-License-Identifier: MIT
// Making a file, reading one into a buffer and writing one from a buffer, as a host calls it.
#include <algorithm>

#include "CallLog.h"
#include "FileApi.h"
#include "Sharing.h"
#include "support/GuardedBuffer.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;
using test::ErrorOfOpening;
using test::kShareAll;
using test::Opened;

using Buffer = test::GuardedBuffer<unsigned char>;

constexpr unsigned long long kUntouched = 0x1122334455667788;
constexpr unsigned long long kFourGigabytes = 0x100000000;

Answer FailAll(const Call& call, char kind, Answer::What what = Answer::kFail) {
  return call.kind == kind ? Answer{what, ERROR_IO_DEVICE} : Answer();
}

const unsigned char* Data(const std::string& bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

void ExpectWriting(const CallLog& log, const std::wstring& path) {
  ASSERT_EQ(log.Of('O').size(), 1u);
  const Call open = log.Of('O')[0];
  EXPECT_EQ(open.path, path);
  EXPECT_EQ(open.access, DWORD{GENERIC_WRITE});
  EXPECT_EQ(open.share, 0u) << "compatibility sharing is exclusive on this platform";
  EXPECT_EQ(open.disposition, DWORD{CREATE_ALWAYS});
}

class Making : public test::BothVariants {
 protected:
  const test::TempFolder folder;
  const std::wstring path = folder / L"made.bin";
};
ZERA_BOTH_VARIANTS(Making);

TEST_P(Making, EmptyFile) {
  const DWORD handles = test::OpenHandles();
  {
    const CallLog log;
    const test::HeapWatch heap;
    EXPECT_EQ(api.Create(path), 1);
    EXPECT_EQ(heap.Allocations(), 0);
    EXPECT_EQ(log.Sequence("?FDMsORWC"), "?OC");
    ExpectWriting(log, path);
  }
  EXPECT_EQ(test::OpenHandles(), handles);
  EXPECT_EQ(test::ReadBytes(path), "");
}

TEST_P(Making, WhatExistsIsLeftAsItIs) {
  folder.File(L"made.bin", "content");
  const CallLog log;
  EXPECT_EQ(api.Create(path), 1);
  EXPECT_EQ(api.Create(folder.path()), 1);
  EXPECT_EQ(log.Sequence("?OC"), "???");
  EXPECT_EQ(test::ReadBytes(path), "content");
}

TEST_P(Making, NoFolderIsMade) {
  EXPECT_EQ(api.Create(folder / L"none\\made.bin"), 0);
  for (const std::wstring& bad : {std::wstring(), std::wstring(32767, L'x'), std::wstring(L"Q:\\x"),
                                  folder / std::wstring(260 - folder.path().size(), L'n')}) {
    EXPECT_EQ(api.Create(bad), 0);
  }
  EXPECT_TRUE(folder.Entries().empty());
}

TEST_P(Making, FailedOpenIsReported) {
  const CallLog log([](const Call& call) { return FailAll(call, 'O'); });
  EXPECT_EQ(api.Create(path), 0);
  EXPECT_EQ(log.Sequence("?OC"), "?O");
}

class Loading : public test::BothVariants {
 protected:
  // Expects that nothing is read and nothing written to the outputs.
  void ExpectRefused(const std::wstring& bad, std::size_t capacity) {
    Buffer buffer(capacity);
    unsigned long long count = kUntouched;
    EXPECT_EQ(api.ToBuffer(bad, buffer.data(), capacity, &count), 0);
    EXPECT_EQ(count, kUntouched);
    EXPECT_TRUE(buffer.Untouched() && buffer.Intact());
  }

  const test::TempFolder folder;
  const std::wstring path = folder.File(L"ten.bin", "0123456789");
};
ZERA_BOTH_VARIANTS(Loading);

TEST_P(Loading, WholeFileInOneRequest) {
  for (const std::size_t capacity : {10u, 11u, 5000u}) {
    Buffer buffer(capacity);
    unsigned long long count = kUntouched;
    const DWORD handles = test::OpenHandles();
    {
      const CallLog log;
      const test::HeapWatch heap;
      EXPECT_EQ(api.ToBuffer(path, buffer.data(), capacity, &count), 1);
      EXPECT_EQ(heap.Allocations(), 0);
      EXPECT_EQ(log.Sequence("?FDMsORWC"), "?ORC");
      EXPECT_EQ(log.Of('R')[0].number, 10u);
      EXPECT_EQ(log.Of('O')[0].access, GENERIC_READ);
      EXPECT_EQ(log.Of('O')[0].share, DWORD{FILE_SHARE_READ});
      EXPECT_EQ(log.Of('O')[0].disposition, DWORD{OPEN_EXISTING});
    }
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(count, 10u);
    EXPECT_EQ(std::string(buffer.data(), buffer.data() + 10), "0123456789");
    EXPECT_TRUE(buffer.UntouchedFrom(10) && buffer.Intact());
  }
}

TEST_P(Loading, LargeFileIsOneRequestToo) {
  const std::string bytes(3'000'001, 'b');
  folder.File(L"large.bin", bytes);
  Buffer buffer(bytes.size());
  unsigned long long count = 0;
  const CallLog log;
  EXPECT_EQ(api.ToBuffer(folder / L"large.bin", buffer.data(), bytes.size(), &count), 1);
  EXPECT_EQ(count, bytes.size());
  EXPECT_EQ(log.Sequence("R"), "R");
  EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), buffer.data()));
}

TEST_P(Loading, TooSmallBufferIsLeftAlone) {
  for (const std::size_t capacity : {0u, 1u, 9u}) ExpectRefused(path, capacity);
  const CallLog log;
  ExpectRefused(path, 9);
  EXPECT_EQ(log.Sequence("?ORC"), "?") << "the file is not opened";
}

TEST_P(Loading, WhatCannotBeReadLeavesTheOutputsAlone) {
  const std::wstring held = folder.File(L"held.bin", "x");
  const Opened writer(held, GENERIC_WRITE, kShareAll);
  for (const std::wstring& bad :
       {held, folder / L"missing.bin", folder.File(L"empty.bin", ""), folder.path(), std::wstring(),
        std::wstring(32767, L'x'), std::wstring(L"NUL"), folder / L"*.bin"}) {
    ExpectRefused(bad, 100);
  }
}

TEST_P(Loading, CapacityHas64BitsAndTheSize32) {
  Buffer buffer(10);
  unsigned long long count = 0;
  EXPECT_EQ(api.ToBuffer(path, buffer.data(), kFourGigabytes, &count), 1);
  EXPECT_EQ(count, 10u);

  const std::wstring huge = test::SparseFile(folder, 0x100000005LL);
  const CallLog log;
  EXPECT_EQ(api.ToBuffer(huge, buffer.data(), 5, &count), 1);
  EXPECT_EQ(count, 5u);
  EXPECT_EQ(log.Of('R')[0].number, 5u);
  ExpectRefused(huge, 4);
}

TEST_P(Loading, FailedReadCountsAsNoBytes) {
  for (int round = 0; round < 2; ++round) {  // the first exception of a thread may keep some memory
    Buffer buffer(10);
    unsigned long long count = kUntouched;
    const DWORD handles = test::OpenHandles();
    {
      const CallLog log([](const Call& call) { return FailAll(call, 'R'); });
      const test::HeapWatch heap;
      EXPECT_EQ(api.ToBuffer(path, buffer.data(), 10, &count), 0);
      EXPECT_TRUE(round == 0 || heap.Outstanding() == 0);
      EXPECT_EQ(log.Sequence("ORC"), "ORC");
    }
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(count, 0u);
  }
}

TEST_P(Loading, FileThatChangesBetweenSizeAndRead) {
  const struct {
    const char* bytes;
    int result;
    unsigned long long count;
  } cases[] = {{"0123", 0, 4}, {"", 0, 0}, {"0123456789abcdef", 1, 10}};
  for (const auto& one : cases) {
    test::WriteBytes(path, "0123456789");
    Buffer buffer(20);
    unsigned long long count = kUntouched;
    const CallLog log([&](const Call& call) {
      if (call.kind == 'O') test::WriteBytes(path, one.bytes);
      return Answer();
    });
    EXPECT_EQ(api.ToBuffer(path, buffer.data(), 20, &count), one.result);
    EXPECT_EQ(count, one.count);
    EXPECT_TRUE(buffer.UntouchedFrom(static_cast<std::size_t>(one.count)));
  }
}

TEST_P(Loading, NullOutputs) {
  Buffer buffer(10);
  EXPECT_EQ(api.ToBuffer(path, buffer.data(), 10, nullptr), 1);
  EXPECT_EQ(std::string(buffer.data(), buffer.data() + 10), "0123456789");
  unsigned long long count = kUntouched;
  EXPECT_EQ(api.ToBuffer(path, nullptr, 10, &count), 0);
  EXPECT_EQ(count, 0u);
}

class Saving : public test::BothVariants {
 protected:
  const test::TempFolder folder;
  const std::wstring path = folder / L"saved.bin";
  const std::string bytes = std::string("a\0b\r\n\x1A\xFF", 7);
};
ZERA_BOTH_VARIANTS(Saving);

TEST_P(Saving, BytesAsTheyAre) {
  test::WriteBytes(path, std::string(10000, 'o'));
  const DWORD handles = test::OpenHandles();
  {
    const CallLog log;
    const test::HeapWatch heap;
    EXPECT_EQ(api.FromBuffer(path, Data(bytes), bytes.size()), 1);
    EXPECT_EQ(heap.Allocations(), 0);
    EXPECT_EQ(log.Sequence("?FDMsORWC"), "OWC");
    ExpectWriting(log, path);
  }
  EXPECT_EQ(test::OpenHandles(), handles);
  EXPECT_EQ(test::ReadBytes(path), bytes);
}

TEST_P(Saving, LargeBufferIsOneRequest) {
  const std::string large(3'000'001, 'l');
  const CallLog log;
  EXPECT_EQ(api.FromBuffer(path, Data(large), large.size()), 1);
  EXPECT_EQ(log.Sequence("W"), "W");
  EXPECT_EQ(log.Of('W')[0].number, large.size());
  EXPECT_EQ(test::ReadBytes(path), large);
}

TEST_P(Saving, NoBytesMakeAnEmptyFile) {
  EXPECT_EQ(api.FromBuffer(path, nullptr, 0), 1);
  EXPECT_EQ(test::ReadBytes(path), "");
  test::WriteBytes(path, "content");
  EXPECT_EQ(api.FromBuffer(path, Data(bytes), 0), 1);
  EXPECT_EQ(test::ReadBytes(path), "");
}

TEST_P(Saving, CountIsTakenModulo4Gigabytes) {
  EXPECT_EQ(api.FromBuffer(path, Data(bytes), kFourGigabytes + 3), 1);
  EXPECT_EQ(test::ReadBytes(path), bytes.substr(0, 3));
  EXPECT_EQ(api.FromBuffer(path, Data(bytes), kFourGigabytes), 1);
  EXPECT_EQ(test::ReadBytes(path), "");
}

TEST_P(Saving, WhatCannotBeOpenedIsNotWritten) {
  const std::wstring held = folder.File(L"held.bin", "kept");
  const std::wstring locked = folder.File(L"locked.bin", "kept");
  const Opened reader(held, GENERIC_READ, kShareAll);
  ASSERT_TRUE(::SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_READONLY));
  for (const std::wstring& bad :
       {held, test::IsProtected(locked) ? locked : held, folder / L"none\\saved.bin", folder.path(),
        std::wstring(), std::wstring(32767, L'x'), std::wstring(L"Q:\\x")}) {
    EXPECT_EQ(api.FromBuffer(bad, Data(bytes), bytes.size()), 0);
    EXPECT_EQ(api.FromBuffer(bad, nullptr, 0), 0) << "also when there is nothing to write";
  }
  EXPECT_EQ(test::ReadBytes(held), "kept");
  EXPECT_EQ(test::ReadBytes(locked), "kept");
  EXPECT_EQ(folder.Entries(), (std::vector<std::wstring>{L"held.bin", L"locked.bin"}));
}

TEST_P(Saving, NobodyElseOpensItMeanwhile) {
  int checks = 0;
  const CallLog log([&](const Call& call) {
    if (call.kind == 'W') {
      ++checks;
      for (const DWORD access : {DWORD{GENERIC_READ}, DWORD{GENERIC_WRITE}}) {
        EXPECT_EQ(ErrorOfOpening(path, access), DWORD{ERROR_SHARING_VIOLATION});
      }
    }
    return Answer();
  });
  EXPECT_EQ(api.FromBuffer(path, Data(bytes), bytes.size()), 1);
  EXPECT_EQ(checks, 1);
}

TEST_P(Saving, FailedOrShortWriteAndFailedCloseAreReported) {
  const std::pair<char, Answer::What> faults[] = {
      {'W', Answer::kFail}, {'W', Answer::kDoFail}, {'W', Answer::kPretend}, {'C', Answer::kDoFail}};
  for (const auto& fault : faults) {
    for (int round = 0; round < 2; ++round) {
      test::WriteBytes(path, "of before");
      const DWORD handles = test::OpenHandles();
      {
        const CallLog log([&](const Call& call) { return FailAll(call, fault.first, fault.second); });
        const test::HeapWatch heap;
        EXPECT_EQ(api.FromBuffer(path, Data(bytes), bytes.size()), 0);
        EXPECT_TRUE(round == 0 || heap.Outstanding() == 0);
        EXPECT_EQ(log.Sequence("OWC"), "OWC");
      }
      EXPECT_EQ(test::OpenHandles(), handles);
      EXPECT_EQ(test::ReadBytes(path), fault.second == Answer::kDoFail ? bytes : "")
          << "what was written stays";
    }
  }
}

TEST_P(Saving, NullBufferIsAFailedWrite) {
  EXPECT_EQ(api.FromBuffer(path, nullptr, 5), 0);
  EXPECT_EQ(test::ReadBytes(path), "");
}

TEST(NullBufferPaths, CannotBeOpened) {
  unsigned char byte = 0;
  unsigned long long count = kUntouched;
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_CREATE)>(19)(nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_CREATE_UC)>(1019)(nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_TO_BUFFER)>(25)(nullptr, &byte, 1, &count), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_TO_BUFFER_UC)>(1025)(nullptr, &byte, 1, &count), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_FROM_BUFFER)>(26)(nullptr, &byte, 1), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_FROM_BUFFER_UC)>(1026)(nullptr, &byte, 1), 0);
  EXPECT_EQ(count, kUntouched);
}

}  // namespace
