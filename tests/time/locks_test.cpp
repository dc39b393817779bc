// SPDX-License-Identifier: MIT
// Which locks the time objects take, in which order, and what happens when one cannot be made.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <thread>
#include <vector>

#include "support/ImportHook.h"
#include "time/HRTime.h"

namespace {

HMODULE Program() {
  return ::GetModuleHandleW(nullptr);
}

// What this thread did: a section's address, and whether it was entered.
struct Step {
  CRITICAL_SECTION* section;
  bool enter;
};
std::vector<Step> steps;
DWORD watched = 0;

using Access = void WINAPI(CRITICAL_SECTION*);
Access* platformEnter = nullptr;
Access* platformLeave = nullptr;

void WINAPI Enter(CRITICAL_SECTION* section) {
  platformEnter(section);
  if (::GetCurrentThreadId() == watched) steps.push_back({section, true});
}
void WINAPI Leave(CRITICAL_SECTION* section) {
  if (::GetCurrentThreadId() == watched) steps.push_back({section, false});
  platformLeave(section);
}

class Locks : public ::testing::Test {
 protected:
  void SetUp() override {
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    platformEnter =
        reinterpret_cast<Access*>(reinterpret_cast<void*>(::GetProcAddress(kernel, "EnterCriticalSection")));
    platformLeave =
        reinterpret_cast<Access*>(reinterpret_cast<void*>(::GetProcAddress(kernel, "LeaveCriticalSection")));
    enterHook_.emplace("EnterCriticalSection", &Enter, Program());
    leaveHook_.emplace("LeaveCriticalSection", &Leave, Program());
    Restart();
  }
  void TearDown() override {
    watched = 0;
    leaveHook_.reset();
    enterHook_.reset();
  }

  void Restart() {
    watched = ::GetCurrentThreadId();
    steps.clear();
    steps.reserve(64);
  }
  std::vector<CRITICAL_SECTION*> Entered() const {
    std::vector<CRITICAL_SECTION*> entered;
    for (const Step& step : steps) {
      if (step.enter) entered.push_back(step.section);
    }
    return entered;
  }
  int MostHeld() const {
    int held = 0, most = 0;
    for (const Step& step : steps) most = std::max(most, held += step.enter ? 1 : -1);
    EXPECT_EQ(held, 0) << "a lock was kept";
    return most;
  }

  std::optional<test::ImportHook> enterHook_;
  std::optional<test::ImportHook> leaveHook_;
};

TEST_F(Locks, EveryAccessLocksItsObject) {
  CHRTimePoint point;
  EXPECT_EQ(steps.size(), 2u) << "the reading at construction";
  Restart();
  point.Set(5);
  point.Get();
  point.Clear();
  point.IsNull();
  point.SetNow();
  EXPECT_EQ(steps.size(), 10u);
  EXPECT_EQ(MostHeld(), 1);
}

TEST_F(Locks, SetNowTakesTheTimeBeforeItsCounter) {
  CHRTime time;
  Restart();
  time.GetSeconds();
  const CRITICAL_SECTION* const timeLock = Entered().at(0);
  Restart();
  time.GetCounter();
  const CRITICAL_SECTION* const pointLock = Entered().at(0);
  ASSERT_NE(timeLock, pointLock);

  Restart();
  time.SetNow();
  ASSERT_EQ(Entered().size(), 2u);
  EXPECT_EQ(Entered()[0], timeLock);
  EXPECT_EQ(Entered()[1], pointLock);
  EXPECT_EQ(steps[1].section, pointLock) << "while the time is still locked";
  EXPECT_EQ(MostHeld(), 2);
}

TEST_F(Locks, AssignmentTakesFourInOrderAndNeverMoreThanTwo) {
  CHRTime from, to;
  Restart();
  to.GetSeconds();
  from.GetSeconds();
  from.GetCounter();
  to.GetCounter();
  const std::vector<CRITICAL_SECTION*> expected = Entered();
  Restart();
  to = from;
  EXPECT_EQ(Entered(), expected) << "own time, other's time, other's counter, own counter";
  EXPECT_EQ(MostHeld(), 2);
}

TEST_F(Locks, AssignmentToItself) {
  CHRTime time;
  time.SetNow();
  const std::int64_t counter = time.GetCounter();
  CHRTime& same = time;
  time = same;
  EXPECT_EQ(time.GetCounter(), counter);
}

BOOL WINAPI FailingInitialize(CRITICAL_SECTION*, DWORD) {
  ::SetLastError(ERROR_NOT_ENOUGH_QUOTA);
  return FALSE;
}
BOOL WINAPI ExhaustedInitialize(CRITICAL_SECTION*, DWORD) {
  ::SetLastError(static_cast<DWORD>(E_OUTOFMEMORY));
  return FALSE;
}

TEST(LockFailure, IsThePlatformsError) {
  const test::ImportHook hook("InitializeCriticalSectionAndSpinCount", &FailingInitialize, Program());
  try {
    CHRTimePoint point;
    ADD_FAILURE() << "no exception";
  } catch (COleException* e) {
    EXPECT_EQ(e->m_sc, static_cast<SCODE>(0x80070000u | ERROR_NOT_ENOUGH_QUOTA));
    e->Delete();
  }
}

TEST(LockFailure, OutOfMemoryIsTheMemoryException) {
  const test::ImportHook hook("InitializeCriticalSectionAndSpinCount", &ExhaustedInitialize, Program());
  try {
    CHRTime time;
    ADD_FAILURE() << "no exception";
  } catch (CMemoryException* e) {
    e->Delete();
  }
}

TEST(SharedTime, SecondsAndMillisecondsBelongTogether) {
  CHRTime shared;
  shared.SetNow();
  std::thread writer([&] {
    for (int i = 0; i < 20'000; ++i) shared.SetNow();
  });
  CHRTime copy;
  double last = 0;
  for (int i = 0; i < 20'000; ++i) {
    copy = shared;
    const double now = copy.GetSecondsF();
    ASSERT_GE(now, last) << "a torn reading would go backwards at the turn of a second";
    last = now;
  }
  writer.join();
}

}  // namespace
