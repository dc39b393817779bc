// SPDX-License-Identifier: MIT
// The stamp functions: texts, elapsed times, and the module state that they run in.
#include "time/Stamp.h"

#include <gtest/gtest.h>
#include <sys/timeb.h>

#include <cwchar>
#include <functional>
#include <string>

#include "afxwin.h"
#include "support/GuardedBuffer.h"
#include "support/ImportHook.h"
#include "time/Calendar.h"
#include "time/StampText.h"

namespace {

using hrtime::Calendar;
using hrtime::Instant;

HMODULE Program() {
  return ::GetModuleHandleW(nullptr);
}

AFX_MODULE_STATE* stateInside = nullptr;
struct __timeb64 wall = {};
errno_t __cdecl TestWall(struct __timeb64* value) {
  stateInside = AfxGetModuleState();
  *value = wall;
  return 0;
}
__time64_t __cdecl FailingMakeTime(std::tm*) {
  return -1;
}

// 5 March 2024, 14:07:09 local time, whatever the zone.
Calendar Tuesday() {
  return {2024, 3, 0, 5, 14, 7, 9, 42};
}
constexpr wchar_t kTuesday[] = L"Tue Mar  5 14:07:09.042 2024";

class Stamp : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!AfxGetStaticModuleState()->m_hCurrentInstanceHandle) {
      ASSERT_TRUE(AfxInitModule(::GetModuleHandleW(nullptr)));
    }
  }
  void SetUp() override {
    wall = {};
    wall.time = hrtime::CalendarToInstant(Tuesday()).seconds;
    wall.millitm = 42;
    stateInside = nullptr;
    AfxSetModuleState(&hosts_);
  }
  void TearDown() override {
    EXPECT_EQ(AfxGetModuleState(), &hosts_) << "the caller's state was not restored";
    AfxSetModuleState(nullptr);
  }

  AFX_MODULE_STATE hosts_;
  test::ImportHook wallHook_{"_ftime64_s", &TestWall, Program()};
};

TEST(StampFormat, MillisecondsHaveThreeDigitsOrMore) {
  const wchar_t runtime[] = L"Tue Mar  5 14:07:09 2024\n";
  const struct {
    unsigned int milliseconds;
    const wchar_t* expected;
  } rows[] = {
      {0, L"Tue Mar  5 14:07:09.000 2024"},         {7, L"Tue Mar  5 14:07:09.007 2024"},
      {42, L"Tue Mar  5 14:07:09.042 2024"},        {999, L"Tue Mar  5 14:07:09.999 2024"},
      {1000, L"Tue Mar  5 14:07:09.1000 2024"},     {65535, L"Tue Mar  5 14:07:09.65535 2024"},
      {65536 + 5, L"Tue Mar  5 14:07:09.005 2024"},
  };
  for (const auto& row : rows) {
    const hrtime::StampText stamp = hrtime::FormatStamp(runtime, row.milliseconds);
    EXPECT_STREQ(stamp.text, row.expected);
    EXPECT_EQ(stamp.length, std::wcslen(row.expected));
    // The runtime's own formatting is the oracle.
    wchar_t formatted[64];
    ::_snwprintf(formatted, 64, L"%.19ls.%.3hu %ls", runtime, static_cast<unsigned short>(row.milliseconds),
                 runtime + 20);
    formatted[std::wcscspn(formatted, L"\n")] = 0;
    EXPECT_STREQ(stamp.text, formatted);
  }
}

TEST(StampFormat, LineFeedsAreRemovedWhereverTheyAre) {
  EXPECT_STREQ(hrtime::FormatStamp(L"Tue Mar\n 5 14:07:09 \n2024\n\n", 1).text,
               L"Tue Mar 5 14:07:09.001 2024");
}

// The room's limit, and a text that ends before its seconds.
TEST(StampFormat, TextsOfOtherLengths) {
  const hrtime::StampText cut = hrtime::FormatStamp(std::wstring(60, L'x').c_str(), 42);
  EXPECT_STREQ(cut.text, L"xxxxxxxxxxxxxxxxxxx.042 xxxxxxxxxxxxxxx");
  EXPECT_EQ(cut.length, hrtime::StampText::kCapacity - 1);
  EXPECT_STREQ(hrtime::FormatStamp(L"ab", 42).text, L"ab.042 ");
}

TEST_F(Stamp, NowStampHasTheMilliseconds) {
  EXPECT_STREQ(hrtime::NowStamp().text, kTuesday);
}

TEST_F(Stamp, NowFunctionsRunInTheLibrarysState) {
  Instant instant;
  hrtime::StampNowInstant(instant);
  EXPECT_EQ(stateInside, AfxGetStaticModuleState());
  EXPECT_EQ(instant.seconds, wall.time);
  EXPECT_EQ(instant.milliseconds, 42u);

  stateInside = nullptr;
  Calendar calendar;
  hrtime::StampNowCalendar(calendar);
  EXPECT_EQ(stateInside, AfxGetStaticModuleState());
  EXPECT_EQ(calendar.year, 2024);
  EXPECT_EQ(calendar.day, 5);
  EXPECT_EQ(calendar.dayOfWeek, 3);
  EXPECT_EQ(calendar.milliseconds, 42);
}

TEST_F(Stamp, ElapsedTimes) {
  Instant earlier = {100, 250};
  EXPECT_EQ(hrtime::StampElapsedMs(earlier, {101, 750}), 1500);
  EXPECT_FLOAT_EQ(hrtime::StampElapsedSeconds(earlier, {101, 750}), 1.5f);
  EXPECT_EQ(earlier.seconds, 100);
  EXPECT_EQ(earlier.milliseconds, 250u);
  EXPECT_EQ(stateInside, nullptr) << "the clock was read";
}

TEST_F(Stamp, StartInTheFutureIsSetToNow) {
  Instant earlier = {wall.time + 500, 0};
  EXPECT_EQ(hrtime::StampElapsedMs(earlier, {wall.time + 400, 0}), 0);
  EXPECT_EQ(earlier.seconds, wall.time);
  EXPECT_EQ(earlier.milliseconds, 42u);

  earlier = {wall.time, 43};
  EXPECT_EQ(hrtime::StampElapsedSeconds(earlier, {wall.time, 42}), 0.0f);
  EXPECT_EQ(earlier.milliseconds, 42u);
}

TEST_F(Stamp, EqualInstantsAreNotInTheFuture) {
  Instant earlier = {wall.time + 500, 7};
  EXPECT_EQ(hrtime::StampElapsedMs(earlier, {wall.time + 500, 7}), 0);
  EXPECT_EQ(earlier.seconds, wall.time + 500) << "left as it was";
  EXPECT_EQ(earlier.milliseconds, 7u);
}

// Computed by way of seconds, a millisecond may come out a little shorter; it is no future for that.
TEST_F(Stamp, LessThanAMillisecondIsNotInTheFuture) {
  int shorter = 0;
  for (std::int64_t seconds = wall.time + 500; seconds < wall.time + 600; ++seconds) {
    for (unsigned int milliseconds = 0; milliseconds < 999; milliseconds += 111) {
      Instant earlier = {seconds, milliseconds};
      const int elapsed = hrtime::StampElapsedMs(earlier, {seconds, milliseconds + 1});
      EXPECT_TRUE(elapsed == 0 || elapsed == 1) << elapsed;
      shorter += elapsed == 0;
      EXPECT_EQ(earlier.seconds, seconds);
      EXPECT_EQ(earlier.milliseconds, milliseconds);
    }
  }
  EXPECT_GT(shorter, 0);
}

TEST_F(Stamp, TimesSinceAStart) {
  Instant earlier = {wall.time - 2, 42};
  EXPECT_EQ(hrtime::StampMsSince(earlier), 2000);
  EXPECT_FLOAT_EQ(hrtime::StampSecondsSince(earlier), 2.0f);
  earlier = {wall.time + 1, 0};
  EXPECT_EQ(hrtime::StampMsSince(earlier), 0);
  EXPECT_EQ(earlier.seconds, wall.time);
  earlier = {wall.time + 1, 0};
  EXPECT_EQ(hrtime::StampSecondsSince(earlier), 0.0f);
  EXPECT_EQ(earlier.milliseconds, 42u);
}

TEST_F(Stamp, CalendarIsClampedInPlace) {
  Calendar calendar = Tuesday();
  Instant instant;
  EXPECT_EQ(hrtime::StampCalendarToInstant(calendar, instant), 1);
  EXPECT_EQ(instant.seconds, wall.time);
  EXPECT_EQ(instant.milliseconds, 42u);

  calendar = {2040, 13, 0, 32, 99, 99, 99, 2000};
  EXPECT_EQ(hrtime::StampCalendarToInstant(calendar, instant), 1);
  EXPECT_EQ(calendar.year, 2008);
  EXPECT_EQ(calendar.month, 12);
  EXPECT_EQ(instant.milliseconds, 999u);
  EXPECT_EQ(instant.seconds, hrtime::CalendarToInstant({2008, 12, 0, 31, 23, 59, 59, 0}).seconds);
}

TEST_F(Stamp, TextsIntoStrings) {
  Calendar calendar = Tuesday();
  CStringW text = L"before";
  EXPECT_EQ(hrtime::StampCalendarTextW(calendar, text), 1);
  EXPECT_STREQ(text.GetString(), kTuesday);
  text.Empty();
  EXPECT_EQ(hrtime::StampInstantTextW({wall.time, 1234}, text), 1);
  EXPECT_STREQ(text.GetString(), L"Tue Mar  5 14:07:09.1234 2024");
  EXPECT_EQ(hrtime::StampNowTextW(text, FALSE), 1);
  EXPECT_STREQ(text.GetString(), kTuesday);
  EXPECT_EQ(hrtime::StampNowTextW(text, TRUE), 1);
  EXPECT_STREQ(text.GetString(), L"Tue Mar  5 14:07:09.042 2024: ");
}

TEST_F(Stamp, TextsFitTheirBuffersOrLeaveThemAlone) {
  const std::string expected = "Tue Mar  5 14:07:09.042 2024";
  const struct {
    std::size_t length;
    std::function<int(char*, std::size_t)> call;
  } rows[] = {
      {expected.size(),
       [](char* out, std::size_t room) {
         Calendar calendar = Tuesday();
         return hrtime::StampCalendarText(calendar, out, room);
       }},
      {expected.size(),
       [](char* out, std::size_t room) {
         return hrtime::StampInstantText({wall.time, 42}, out, room);
       }},
      {expected.size(), [](char* out, std::size_t room) { return hrtime::StampNowText(out, room, FALSE); }},
      {expected.size() + 2,
       [](char* out, std::size_t room) { return hrtime::StampNowText(out, room, TRUE); }},
  };
  for (const auto& row : rows) {
    for (const std::size_t capacity :
         {std::size_t{0}, std::size_t{1}, row.length, row.length + 1, row.length + 20}) {
      test::GuardedBuffer<char> buffer(capacity);
      const bool fits = capacity > row.length;
      EXPECT_EQ(row.call(buffer.data(), capacity), fits) << capacity;
      EXPECT_TRUE(buffer.Intact());
      if (fits) {
        EXPECT_EQ(buffer.text(), row.length == expected.size() ? expected : expected + ": ");
        EXPECT_TRUE(buffer.UntouchedFrom(row.length + 1));
      } else {
        EXPECT_TRUE(buffer.Untouched());
      }
    }
  }
}

TEST_F(Stamp, TextThatCannotBeConvertedIsNotGiven) {
  const test::ImportHook hook(
      "WideCharToMultiByte", +[](UINT, DWORD, LPCWSTR, int, LPSTR, int, LPCSTR, LPBOOL) -> int { return 0; },
      Program());
  test::GuardedBuffer<char> buffer(100);
  EXPECT_EQ(hrtime::StampNowText(buffer.data(), 100, FALSE), 0);
  EXPECT_TRUE(buffer.Untouched());
}

TEST_F(Stamp, FailuresAreExceptionsAndRestoreTheState) {
  Calendar calendar = Tuesday();
  CStringW text = L"kept";
  Instant instant = {1, 1};
  const test::ImportHook hook("_mktime64", &FailingMakeTime, Program());
  const std::function<void()> calls[] = {
      [&] { hrtime::StampCalendarToInstant(calendar, instant); },
      [&] { hrtime::StampCalendarTextW(calendar, text); },
      [&] {
        hrtime::StampInstantTextW({-1, 0}, text);
      },
  };
  for (const auto& call : calls) {
    try {
      call();
      ADD_FAILURE() << "no exception";
    } catch (COleException* e) {
      EXPECT_EQ(e->m_sc, E_INVALIDARG);
      e->Delete();
    }
    EXPECT_EQ(AfxGetModuleState(), &hosts_);
  }
  EXPECT_EQ(instant.seconds, 1);
  EXPECT_STREQ(text.GetString(), L"kept");
}

}  // namespace
