// SPDX-License-Identifier: MIT
// Between instants and calendar time: what the runtime is asked, and what its failures become.
#include "time/Calendar.h"

#include <gtest/gtest.h>

#include "afx.h"
#include "support/ImportHook.h"

namespace {

using hrtime::Calendar;
using hrtime::Instant;

HMODULE Program() {
  return ::GetModuleHandleW(nullptr);
}

int localTimeCalls = 0;
errno_t __cdecl FailingLocalTime(std::tm*, const __time64_t*) {
  ++localTimeCalls;
  return EINVAL;
}

std::tm asked;
__time64_t __cdecl RecordingMakeTime(std::tm* fields) {
  asked = *fields;
  return 4711;
}
__time64_t __cdecl FailingMakeTime(std::tm*) {
  return -1;
}

TEST(CalendarToInstant, ClampsAndLeavesDaylightSavingToTheRuntime) {
  const test::ImportHook hook("_mktime64", &RecordingMakeTime, Program());
  const Instant instant = hrtime::CalendarToInstant({1975, 0, 3, 32, 24, 60, 61, 1500});
  EXPECT_EQ(instant.seconds, 4711);
  EXPECT_EQ(instant.milliseconds, 999u);
  EXPECT_EQ(asked.tm_year, 80);
  EXPECT_EQ(asked.tm_mon, 0);
  EXPECT_EQ(asked.tm_mday, 31);
  EXPECT_EQ(asked.tm_hour, 23);
  EXPECT_EQ(asked.tm_min, 59);
  EXPECT_EQ(asked.tm_sec, 59);
  EXPECT_EQ(asked.tm_isdst, -1);
}

TEST(CalendarToInstant, FailureOfTheRuntimeIsAnInvalidArgument) {
  const test::ImportHook hook("_mktime64", &FailingMakeTime, Program());
  try {
    hrtime::CalendarToInstant({2024, 3, 0, 5, 14, 7, 9, 42});
    ADD_FAILURE() << "no exception";
  } catch (COleException* e) {
    EXPECT_EQ(e->m_sc, E_INVALIDARG);
    e->Delete();
  }
}

// The clamps leave nothing for the check of the ranges to find; it stays for callers of the class.
TEST(CalendarTime, FieldsOutOfRangeFail) {
  const int rows[][6] = {{1969, 12, 31, 23, 59, 59}, {2024, 0, 1, 0, 0, 0},  {2024, 13, 1, 0, 0, 0},
                         {2024, 1, 0, 0, 0, 0},      {2024, 1, 32, 0, 0, 0}, {2024, 1, 1, 24, 0, 0},
                         {2024, 1, 1, -1, 0, 0},     {2024, 1, 1, 0, 60, 0}, {2024, 1, 1, 0, 0, 60}};
  for (const auto& row : rows) {
    try {
      CTime time(row[0], row[1], row[2], row[3], row[4], row[5]);
      ADD_FAILURE() << "no exception for " << row[0] << "-" << row[1] << "-" << row[2];
    } catch (COleException* e) {
      EXPECT_EQ(e->m_sc, E_FAIL);
      e->Delete();
    }
  }
}

TEST(InstantToCalendar, EachFieldAsksTheRuntime) {
  localTimeCalls = 0;
  const test::ImportHook hook("_localtime64_s", &FailingLocalTime, Program());
  const Calendar calendar = hrtime::InstantToCalendar({0, 42});
  EXPECT_EQ(localTimeCalls, 7);
  EXPECT_EQ(calendar.year, 0);
  EXPECT_EQ(calendar.month, 0);
  EXPECT_EQ(calendar.dayOfWeek, 0);
  EXPECT_EQ(calendar.day, 0);
  EXPECT_EQ(calendar.hour, 65535);
  EXPECT_EQ(calendar.minute, 65535);
  EXPECT_EQ(calendar.second, 65535);
  EXPECT_EQ(calendar.milliseconds, 42);
}

TEST(InstantFields, InstantsThatTheRuntimeRefuses) {
  const Instant refused = {INT64_C(1) << 50, 0};
  EXPECT_EQ(hrtime::YearOf(refused), 0);
  EXPECT_EQ(hrtime::MonthOf(refused), 0);
  EXPECT_EQ(hrtime::DayOf(refused), 0);
  EXPECT_EQ(hrtime::DayOfWeekOf(refused), 0);
  EXPECT_EQ(hrtime::HourOf(refused), 0xFFFFFFFFu);
  EXPECT_EQ(hrtime::MinuteOf(refused), -1);
  EXPECT_EQ(hrtime::SecondOf(refused), -1);
  std::tm record;
  EXPECT_EQ(hrtime::RecordOf(refused, &record), nullptr);
}

TEST(InstantFields, RecordNeedsAPlace) {
  std::tm record;
  EXPECT_EQ(hrtime::RecordOf({1709647629, 0}, &record), &record);
  EXPECT_EQ(record.tm_year, 124);
  try {
    hrtime::RecordOf({0, 0}, nullptr);
    ADD_FAILURE() << "no exception";
  } catch (COleException* e) {
    EXPECT_EQ(e->m_sc, E_FAIL);
    e->Delete();
  }
}

// The platform's own file time functions are the oracle: they share no code with the C runtime's.
TEST(InstantToCalendar, AgreesWithThePlatform) {
  for (std::int64_t seconds = 86'400; seconds < INT64_C(4'102'444'800); seconds += 9'999'991) {
    const ULONGLONG steps = (static_cast<ULONGLONG>(seconds) + 11'644'473'600u) * 10'000'000u;
    const FILETIME time = {static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)};
    SYSTEMTIME utc, local;
    ASSERT_TRUE(::FileTimeToSystemTime(&time, &utc));
    ASSERT_TRUE(::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local));
    const Calendar calendar = hrtime::InstantToCalendar({seconds, 7});
    ASSERT_EQ(calendar.year, local.wYear) << seconds;
    ASSERT_EQ(calendar.month, local.wMonth) << seconds;
    ASSERT_EQ(calendar.dayOfWeek, local.wDayOfWeek + 1) << seconds;
    ASSERT_EQ(calendar.day, local.wDay) << seconds;
    ASSERT_EQ(calendar.hour, local.wHour) << seconds;
    ASSERT_EQ(calendar.minute, local.wMinute) << seconds;
    ASSERT_EQ(calendar.second, local.wSecond) << seconds;
    ASSERT_EQ(calendar.milliseconds, 7);
  }
}

TEST(CalendarDifference, OfTwoCalendarTimes) {
  const Calendar earlier = {2024, 3, 0, 5, 14, 7, 9, 42};
  const Calendar later = {2024, 3, 0, 6, 14, 7, 10, 41};
  EXPECT_EQ(hrtime::CalendarDifferenceMs(earlier, later), 86'400'999);
  EXPECT_EQ(hrtime::CalendarDifferenceMs(later, earlier), 0);
}

}  // namespace
