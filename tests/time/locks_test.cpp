// SPDX-License-Identifier: MIT
// Which locks the time objects take, in which order, and what happens when one cannot be made.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
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
  bool operator==(const Step&) const = default;
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

TEST_F(Locks, ClearTakesTheTimeBeforeItsCounter) {
  CHRTime time;
  Restart();
  time.SetNow();
  const std::vector<CRITICAL_SECTION*> expected = Entered();
  ASSERT_EQ(expected.size(), 2u);
  Restart();
  time.Clear();
  EXPECT_EQ(Entered(), expected);
  EXPECT_EQ(MostHeld(), 2);
}

// Both ends of a span are read and written under its own lock, with one of an end's at a time.
TEST_F(Locks, ASpanLocksBothItsEnds) {
  CHRTimeSpan span;
  CHRTimeSpan fixed(1, 2);
  Restart();
  span.IsNull();
  ASSERT_EQ(Entered().size(), 2u);
  CRITICAL_SECTION* const own = Entered()[0];
  const std::function<void()> accesses[] = {[&] { span.IsNull(); }, [&] { span.Start(); },
                                            [&] { span.Clear(); }, [&] { span.ElapsedMicroseconds(); },
                                            [&] { span.ElapsedMinutesF(); }};
  int number = 0;
  for (const auto& access : accesses) {
    Restart();
    access();
    ASSERT_GE(steps.size(), 4u) << number;
    EXPECT_EQ(steps.front().section, own) << number;
    EXPECT_TRUE(steps.front().enter) << number;
    EXPECT_EQ(steps.back().section, own) << "first in, last out: " << number;
    EXPECT_EQ(std::count(steps.begin(), steps.end(), steps.front()), 1) << number;
    EXPECT_EQ(MostHeld(), 2) << number;
    ++number;
  }
  Restart();
  fixed.ElapsedMicroseconds();
  EXPECT_EQ(MostHeld(), 2);
}

// One thread starts a span again and again while another reads it: no reading mixes two measurements, which
// would show as a time that runs backwards.
TEST(SharedSpan, ReadingsAreNotTorn) {
  CHRTimeSpan span;
  std::atomic<bool> done = false;
  std::thread starter([&] {
    while (!done) span.Start();
  });
  int backwards = 0;
  for (int i = 0; i < 100'000; ++i) backwards += span.ElapsedMicroseconds() < 0;
  done = true;
  starter.join();
  EXPECT_EQ(backwards, 0);
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

}  // namespace
