// SPDX-License-Identifier: MIT
// The stopwatch and the wall clock, with clocks of the test's own.
#include <gtest/gtest.h>
#include <sys/timeb.h>

#include <ctime>
#include <memory>
#include <type_traits>

#include "support/ImportHook.h"
#include "time/HRTime.h"
#include "time/Now.h"

namespace {

HMODULE Program() {
  return ::GetModuleHandleW(nullptr);
}

std::int64_t counter = 0;
BOOL WINAPI TestCounter(LARGE_INTEGER* value) {
  value->QuadPart = counter;
  return TRUE;
}
std::int64_t frequency = 10'000'000;
int frequencyCalls = 0;
BOOL WINAPI TestFrequency(LARGE_INTEGER* value) {
  ++frequencyCalls;
  value->QuadPart = frequency;
  return TRUE;
}
struct __timeb64 wall = {};
int wallStep = 0;
errno_t __cdecl TestWall(struct __timeb64* value) {
  *value = wall;
  wall.millitm = static_cast<unsigned short>(wall.millitm + wallStep);
  return 0;
}
DWORD ticks = 0;
DWORD WINAPI TestTicks() {
  return ticks += 16;
}

class Clock : public ::testing::Test {
 protected:
  void SetUp() override {
    counter = 1000;
    frequency = 10'000'000;
    frequencyCalls = 0;
    wall = {};
    wallStep = 0;
  }

  test::ImportHook counterHook_{"QueryPerformanceCounter", &TestCounter, Program()};
  test::ImportHook frequencyHook_{"QueryPerformanceFrequency", &TestFrequency, Program()};
  test::ImportHook wallHook_{"_ftime64_s", &TestWall, Program()};
};

static_assert(std::is_base_of_v<CObject, CHRTimePoint> && std::is_base_of_v<CObject, CHRTimeSpan> &&
              std::is_base_of_v<CObject, CHRTime> && std::has_virtual_destructor_v<CObject>);

TEST_F(Clock, PointReadsTheCounterAtOnce) {
  CHRTimePoint point;
  EXPECT_EQ(point.Get(), 1000);
  EXPECT_FALSE(point.IsNull());
  point.Clear();
  EXPECT_TRUE(point.IsNull());
  EXPECT_EQ(point.Get(), 0);
  counter = 77;
  point.SetNow();
  EXPECT_EQ(point.Get(), 77);
  point.Set(-5);
  EXPECT_EQ(point.Get(), -5);
}

TEST_F(Clock, SpanRunsFromItsStart) {
  CHRTimeSpan span;
  EXPECT_FALSE(span.IsNull());
  EXPECT_EQ(span.ElapsedMicroseconds(), 0);
  counter += 25'000'000;
  EXPECT_EQ(span.ElapsedMicroseconds(), 2'500'000);
  EXPECT_EQ(span.ElapsedMilliseconds(), 2500);
  EXPECT_EQ(span.ElapsedSeconds(), 2);
  EXPECT_EQ(span.ElapsedMinutes(), 0);
  EXPECT_DOUBLE_EQ(span.ElapsedMillisecondsF(), 2500.0);
  EXPECT_DOUBLE_EQ(span.ElapsedSecondsF(), 2.5);
  EXPECT_DOUBLE_EQ(span.ElapsedMinutesF(), 2.5 / 60);
  counter += 1'200'000'000;
  EXPECT_EQ(span.ElapsedMinutes(), 2);
  span.Start();
  EXPECT_EQ(span.ElapsedMicroseconds(), 0);
  EXPECT_EQ(frequencyCalls, 1) << "read at construction only";
  span.Clear();
  EXPECT_TRUE(span.IsNull());
}

// With 3 counts a second, the fractions show in which order the factors are applied.
TEST_F(Clock, SpanFractionsAreComputedFromMicroseconds) {
  frequency = 3;
  CHRTimeSpan span(1, 2);
  EXPECT_EQ(span.ElapsedMicroseconds(), 333'333);
  EXPECT_EQ(span.ElapsedMillisecondsF(), 333'333 * 0.001);
  EXPECT_EQ(span.ElapsedSecondsF(), 333'333 * 0.001 * 0.001);
  EXPECT_EQ(span.ElapsedMinutesF(), 333'333 * 0.001 * 0.001 / 60.0);
}

TEST_F(Clock, FixedSpanNeverMoves) {
  CHRTimeSpan span(10'000'000, 30'000'000);
  counter = 90'000'000;
  EXPECT_EQ(span.ElapsedSeconds(), 2);
  counter = 190'000'000;
  EXPECT_EQ(span.ElapsedSeconds(), 2);
  CHRTimeSpan backwards(30'000'000, 10'000'000);
  EXPECT_EQ(backwards.ElapsedMicroseconds(), -2'000'000);
  EXPECT_EQ(backwards.ElapsedMilliseconds(), 0x7FFFFFFF);
  EXPECT_EQ(backwards.ElapsedSeconds(), 0x7FFFFFFF);
  EXPECT_TRUE(CHRTimeSpan(0, 5).IsNull());
  span.Start();
  EXPECT_EQ(span.ElapsedMicroseconds(), 0) << "both ends are now";
  backwards.Clear();
  EXPECT_EQ(backwards.ElapsedMicroseconds(), 0) << "both ends are 0";
}

TEST_F(Clock, LongSpansInMilliseconds) {
  const std::int64_t day = INT64_C(86'400) * frequency;
  EXPECT_EQ(CHRTimeSpan(1, 1 + 50 * day).ElapsedMilliseconds(), 0x7FFFFFFF);
  EXPECT_LT(CHRTimeSpan(1, 1 + 30 * day).ElapsedMilliseconds(), 0);
  EXPECT_EQ(CHRTimeSpan(1, 1 + 24 * day).ElapsedMilliseconds(), 24 * 86'400'000);
}

// The thread ends at the fault; its exit code tells which.
LONG WINAPI EndThread(EXCEPTION_POINTERS* fault) {
  const DWORD code = fault->ExceptionRecord->ExceptionCode;
  if (code != EXCEPTION_INT_DIVIDE_BY_ZERO) return EXCEPTION_CONTINUE_SEARCH;
  ::ExitThread(code);
}
DWORD WINAPI ReadSpan(void* span) {
  static_cast<CHRTimeSpan*>(span)->ElapsedMicroseconds();
  return 0;
}

TEST_F(Clock, NoFrequencyIsADivisionFault) {
  frequency = 0;
  CHRTimeSpan span(1, 2);
  void* const handler = ::AddVectoredExceptionHandler(1, &EndThread);
  const HANDLE thread = ::CreateThread(nullptr, 0, &ReadSpan, &span, 0, nullptr);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(::WaitForSingleObject(thread, 10'000), WAIT_OBJECT_0);
  DWORD code = 0;
  ::GetExitCodeThread(thread, &code);
  ::CloseHandle(thread);
  ::RemoveVectoredExceptionHandler(handler);
  EXPECT_EQ(code, static_cast<DWORD>(EXCEPTION_INT_DIVIDE_BY_ZERO));
}

TEST_F(Clock, TimeStartsAtZero) {
  CHRTime time;
  EXPECT_EQ(time.GetSeconds(), 0);
  EXPECT_EQ(time.GetInstant().milliseconds, 0u);
  EXPECT_EQ(time.GetCounter(), 0);
}

TEST_F(Clock, TimeTakesWallAndCounterTogether) {
  wall.time = 1709647629;
  wall.millitm = 42;
  CHRTime time;
  time.SetNow();
  EXPECT_EQ(time.GetSeconds(), 1709647629);
  EXPECT_EQ(time.GetInstant().milliseconds, 42u);
  EXPECT_EQ(time.GetCounter(), 1000);
  EXPECT_DOUBLE_EQ(time.GetSecondsF(), 1709647629.042);
  const hrtime::Calendar calendar = time.GetCalendar();
  EXPECT_EQ(calendar.year, 2024);
  EXPECT_EQ(calendar.minute, 7);
  EXPECT_EQ(calendar.second, 9);
  EXPECT_EQ(calendar.milliseconds, 42);

  CHRTime copy;
  copy = time;
  EXPECT_EQ(copy.GetSeconds(), 1709647629);
  EXPECT_EQ(copy.GetInstant().milliseconds, 42u);
  EXPECT_EQ(copy.GetCounter(), 1000);

  time.Clear();
  EXPECT_EQ(time.GetSeconds(), 0);
  EXPECT_EQ(time.GetInstant().milliseconds, 0u);
  EXPECT_EQ(time.GetCounter(), 0);
  EXPECT_EQ(copy.GetCounter(), 1000);
}

TEST_F(Clock, NowIsTheRuntimesWallClock) {
  wall.time = 1709647629;
  wall.millitm = 42;
  EXPECT_EQ(hrtime::NowInstant().seconds, 1709647629);
  EXPECT_EQ(hrtime::NowInstant().milliseconds, 42u);
  EXPECT_EQ(hrtime::NowCalendar().year, 2024);
  const std::time_t moment = wall.time;
  EXPECT_EQ(hrtime::NowCalendar().dayOfWeek, std::localtime(&moment)->tm_wday + 1) << "a Tuesday in Europe";
  EXPECT_DOUBLE_EQ(hrtime::NowSecondsF(), 1709647629.042);
}

// The step that goes into the next second has its length all the same.
TEST_F(Clock, AStepAcrossASecondIsMeasured) {
  static int reading;
  reading = 0;
  const test::ImportHook hook(
      "_ftime64_s",
      +[](struct __timeb64* value) -> errno_t {
        const int milliseconds = 995 + 10 * (reading++ / 2);
        value->time = 1709647629 + milliseconds / 1000;
        value->millitm = static_cast<unsigned short>(milliseconds % 1000);
        return 0;
      },
      Program());
  EXPECT_DOUBLE_EQ(hrtime::FtimeResolutionMs(), 10.0);
}

TEST_F(Clock, ResolutionsAreMeasuredOnTheirClocks) {
  wallStep = 10;
  EXPECT_DOUBLE_EQ(hrtime::FtimeResolutionMs(), 10.0);
  const test::ImportHook hook("GetTickCount", &TestTicks, Program());
  EXPECT_DOUBLE_EQ(hrtime::TickResolutionMs(), 16.0);
}

// Leaves nothing of what was on the stack before.
[[gnu::noinline]] void CoverStack() {
  volatile unsigned char stack[4096];
  for (volatile unsigned char& byte : stack) byte = 0xCD;
}

TEST_F(Clock, ClocksThatCannotBeReadAreAtZero) {
  const test::ImportHook counterless(
      "QueryPerformanceCounter", +[](LARGE_INTEGER*) -> BOOL { return FALSE; }, Program());
  const test::ImportHook timeless(
      "_ftime64_s", +[](struct __timeb64*) -> errno_t { return EINVAL; }, Program());
  CHRTimePoint point;
  point.Set(5);
  CoverStack();
  point.SetNow();
  EXPECT_TRUE(point.IsNull());
  CoverStack();
  const hrtime::Instant now = hrtime::NowInstant();
  EXPECT_EQ(now.seconds, 0);
  EXPECT_EQ(now.milliseconds, 0u);
}

TEST(RealClock, SpanReadTwiceGrows) {
  CHRTimeSpan span;
  const std::int64_t first = span.ElapsedMicroseconds();
  ::Sleep(2);
  const std::int64_t second = span.ElapsedMicroseconds();
  EXPECT_GE(first, 0);
  EXPECT_GE(second, first + 1'000);
  EXPECT_LT(second, 60'000'000);
}

TEST(RealClock, NowIsBetweenTwoReadingsOfThePlatform) {
  const auto platform = [] {
    FILETIME time;
    ::GetSystemTimeAsFileTime(&time);
    const ULONGLONG steps = (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return static_cast<double>(steps - 116'444'736'000'000'000u) / 1e7;
  };
  const double before = platform();
  const double now = hrtime::NowSecondsF();
  const double after = platform();
  EXPECT_GE(now, before - 0.001) << "the wall clock has whole milliseconds";
  EXPECT_LE(now, after + 0.001);
}

}  // namespace
