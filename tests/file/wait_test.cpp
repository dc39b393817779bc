// SPDX-License-Identifier: MIT
// Waiting for a file, with its polls counted.
#include <thread>

#include "CallLog.h"
#include "FileApi.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;
using test::Times;

class Waiting : public test::BothVariants {};
ZERA_BOTH_VARIANTS(Waiting);

TEST_P(Waiting, FileWithContentNeedsNoSleep) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"full.txt", "x");
  for (const unsigned timeout : {0u, 19u, 20u, 0xFFFFFFFFu}) {
    const CallLog log;
    EXPECT_EQ(api.Wait(file, timeout), 1);
    EXPECT_EQ(log.Sequence(), "?");
  }
}

TEST_P(Waiting, TimeOutIsCountedInPollsOf20Milliseconds) {
  const test::TempFolder folder;
  const std::wstring missing = folder / L"missing.txt";
  const std::wstring empty = folder.File(L"empty.txt", "");
  const std::wstring sub = folder.Folder(L"sub");
  const std::pair<unsigned, int> polls[] = {{20, 1}, {39, 1}, {40, 2}, {100, 5}, {119, 5}, {2000, 100}};
  for (const auto& [timeout, count] : polls) {
    for (const std::wstring& path : {missing, empty, sub}) {
      const CallLog log;
      EXPECT_EQ(api.Wait(path, timeout), 0);
      EXPECT_EQ(log.Sequence(), Times(count, "?s")) << timeout;
      for (const Call& sleep : log.Of('s')) EXPECT_EQ(sleep.number, 20u);
    }
  }
}

TEST_P(Waiting, EndsAsSoonAsThereIsContent) {
  const test::TempFolder folder;
  const std::wstring path = folder / L"late.txt";
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 2) test::WriteBytes(path, "");
    if (call.kind == 's' && call.nth == 4) test::WriteBytes(path, "x");
    return Answer();
  });
  EXPECT_EQ(api.Wait(path, 100), 1);
  EXPECT_EQ(log.Sequence(), Times(4, "?s") + "?");
}

TEST_P(Waiting, NothingIsLookedAtAfterTheLastSleep) {
  const test::TempFolder folder;
  const std::wstring path = folder / L"late.txt";
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 5) test::WriteBytes(path, "x");
    return Answer();
  });
  EXPECT_EQ(api.Wait(path, 100), 0);
  EXPECT_EQ(log.Sequence(), Times(5, "?s"));
}

TEST_P(Waiting, LessThanOnePollHasNoEnd) {
  for (const unsigned timeout : {0u, 1u, 19u}) {
    const test::TempFolder folder;
    const std::wstring path = folder / L"late.txt";
    const CallLog log([&](const Call& call) {
      if (call.kind == 's' && call.nth == 700) test::WriteBytes(path, "x");
      return Answer();
    });
    EXPECT_EQ(api.Wait(path, timeout), 1);
    EXPECT_EQ(log.Of('s').size(), 700u);
  }
}

TEST_P(Waiting, LargestTimeOutDoesNotEndEarly) {
  const test::TempFolder folder;
  const std::wstring path = folder / L"late.txt";
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 700) test::WriteBytes(path, "x");
    return Answer();
  });
  EXPECT_EQ(api.Wait(path, 0xFFFFFFFFu), 1);
  EXPECT_EQ(log.Of('s').size(), 700u);
}

TEST_P(Waiting, AnotherThreadsFileIsSeen) {
  const test::TempFolder folder;
  const std::wstring path = folder / L"late.txt";
  const ULONGLONG start = ::GetTickCount64();
  std::thread writer([&] {
    ::Sleep(70);
    test::WriteBytes(path, "x");
  });
  EXPECT_EQ(api.Wait(path, 20000), 1);
  writer.join();
  EXPECT_GE(::GetTickCount64() - start, 60u);
  EXPECT_LT(::GetTickCount64() - start, 10000u);
}

}  // namespace
