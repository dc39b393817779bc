// SPDX-License-Identifier: MIT
// Spans, differences, clamps and step measuring, without a clock.
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <random>
#include <vector>

#include "time/Elapsed.h"
#include "time/Instant.h"
#include "time/Resolution.h"

namespace {

using hrtime::Calendar;
using hrtime::Instant;

TEST(Elapsed, MicrosecondsOfAnyFrequency) {
  EXPECT_EQ(hrtime::Microseconds(100, 350, 1'000'000), 250);
  EXPECT_EQ(hrtime::Microseconds(0, 10'000'000, 10'000'000), 1'000'000);
  EXPECT_EQ(hrtime::Microseconds(0, 2, 3), 666'666);
  EXPECT_EQ(hrtime::Microseconds(2, 0, 3), -666'666) << "towards zero";
  EXPECT_EQ(hrtime::Microseconds(0, INT64_C(10'000'000) * 86'400 * 365, 10'000'000),
            INT64_C(1'000'000) * 86'400 * 365)
      << "a year";
}

// The formula itself, in 128 bits, is the oracle.
TEST(Elapsed, MicrosecondsOfRandomReadings) {
  std::mt19937_64 random(20240305);
  for (int i = 0; i < 100'000; ++i) {
    const std::int64_t frequency = static_cast<std::int64_t>(random() % 4'000'000'000u) + 1;
    const std::int64_t start = static_cast<std::int64_t>(random() >> 2);
    const std::int64_t span = static_cast<std::int64_t>(random() % 400'000'000u) * frequency / 3;
    const std::int64_t end = random() % 2 ? start + span : start - span;
    const auto expected =
        static_cast<std::int64_t>(static_cast<__int128>(end - start) * 1'000'000 / frequency);
    ASSERT_EQ(hrtime::Microseconds(start, end, frequency), expected)
        << start << " " << end << " " << frequency;
  }
}

TEST(Elapsed, WholeUnitsHaveTheLimitOfAnUnsignedNumber) {
  const struct {
    std::int64_t microseconds, unit;
    int expected;
  } rows[] = {
      {0, 1000, 0},
      {999, 1000, 0},
      {1000, 1000, 1},
      {-999, 1000, 0},
      {-1000, 1000, 0x7FFFFFFF},
      {INT64_MIN, 1000, 0x7FFFFFFF},
      {INT64_C(0x7FFFFFFF) * 1000 + 999, 1000, 0x7FFFFFFF},
      {INT64_C(0x80000000) * 1000, 1000, INT_MIN},
      {INT64_C(0xFFFFFFFF) * 1000 + 999, 1000, -1},
      {INT64_C(0x100000000) * 1000, 1000, 0x7FFFFFFF},
      {INT64_MAX, 1'000'000, 0x7FFFFFFF},
      {INT64_C(50) * 86'400 * 1'000'000, 1000, 0x7FFFFFFF},  // 50 days in milliseconds
      {INT64_C(50) * 86'400 * 1'000'000, 1'000'000, 50 * 86'400},
      {INT64_C(50) * 86'400 * 1'000'000, 60'000'000, 50 * 1'440},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(hrtime::WholeUnits(row.microseconds, row.unit), row.expected)
        << row.microseconds << " / " << row.unit;
  }
}

TEST(Calendar, IsZeroAtFirst) {
  const Calendar none;
  for (const std::uint16_t field : {none.year, none.month, none.dayOfWeek, none.day, none.hour, none.minute,
                                    none.second, none.milliseconds}) {
    EXPECT_EQ(field, 0);
  }
}

TEST(Clamp, EveryFieldAtBothEnds) {
  Calendar low = {};
  hrtime::ClampCalendar(low);
  EXPECT_EQ(low.year, 1980);
  EXPECT_EQ(low.month, 1);
  EXPECT_EQ(low.day, 1);
  EXPECT_EQ(low.dayOfWeek, 0);
  EXPECT_EQ(low.hour, 0);
  EXPECT_EQ(low.minute, 0);
  EXPECT_EQ(low.second, 0);
  EXPECT_EQ(low.milliseconds, 0);

  Calendar high = {65535, 65535, 65535, 65535, 65535, 65535, 65535, 65535};
  hrtime::ClampCalendar(high);
  EXPECT_EQ(high.year, 3000);
  EXPECT_EQ(high.month, 12);
  EXPECT_EQ(high.dayOfWeek, 65535);
  EXPECT_EQ(high.day, 31);
  EXPECT_EQ(high.hour, 23);
  EXPECT_EQ(high.minute, 59);
  EXPECT_EQ(high.second, 59);
  EXPECT_EQ(high.milliseconds, 999);

  Calendar inside = {2024, 12, 7, 31, 23, 59, 59, 999};
  hrtime::ClampCalendar(inside);
  EXPECT_EQ(inside.year, 2024);
  EXPECT_EQ(inside.month, 12);
  EXPECT_EQ(inside.day, 31);
}

TEST(Clamp, StampYearsOutsideBecome2008) {
  const struct {
    std::uint16_t year, plain, stamp;
  } rows[] = {{1975, 1980, 2008}, {1979, 1980, 2008}, {1980, 1980, 1980}, {2037, 2037, 2037},
              {2038, 2038, 2008}, {2040, 2040, 2008}, {3000, 3000, 2008}, {3500, 3000, 2008},
              {0, 1980, 2008},    {65535, 3000, 2008}};
  for (const auto& row : rows) {
    Calendar plain = {row.year, 13, 9, 32, 24, 60, 60, 1000};
    Calendar stamp = plain;
    hrtime::ClampCalendar(plain);
    hrtime::StampClampCalendar(stamp);
    EXPECT_EQ(plain.year, row.plain);
    EXPECT_EQ(stamp.year, row.stamp);
    EXPECT_EQ(stamp.month, 12);
    EXPECT_EQ(stamp.day, 31);
    EXPECT_EQ(stamp.hour, 23);
    EXPECT_EQ(stamp.minute, 59);
    EXPECT_EQ(stamp.second, 59);
    EXPECT_EQ(stamp.milliseconds, 999);
    EXPECT_EQ(stamp.dayOfWeek, 9);
  }
}

TEST(Clamp, StampMilliseconds) {
  for (const auto& [given, expected] :
       {std::pair{0u, 0u}, {999u, 999u}, {1000u, 999u}, {0xFFFFFFFFu, 999u}}) {
    Instant instant = {5, given};
    hrtime::StampClampMs(instant);
    EXPECT_EQ(instant.milliseconds, expected);
    EXPECT_EQ(instant.seconds, 5);
  }
}

TEST(Difference, MillisecondsNeverNegative) {
  EXPECT_EQ(hrtime::InstantDifferenceMs({100, 999}, {101, 1}), 2);
  EXPECT_EQ(hrtime::InstantDifferenceMs({101, 1}, {100, 999}), 0);
  EXPECT_EQ(hrtime::InstantDifferenceMs({-5, 0}, {5, 500}), 10'500);
  EXPECT_EQ(hrtime::InstantDifferenceMs({7, 7}, {7, 7}), 0);
  EXPECT_EQ(hrtime::InstantDifferenceMs({0, 0}, {INT64_C(4'000'000'000), 1}), INT64_C(4'000'000'000'001));
  EXPECT_EQ(hrtime::InstantDifferenceMs({0, 0}, {INT64_MAX, 0}), INT64_MIN)
      << "the processor's value for a number that does not fit";
}

TEST(Difference, StampsGoByWayOfSeconds) {
  EXPECT_DOUBLE_EQ(hrtime::StampDifferenceMs({100, 250}, {101, 750}), 1500.0);
  EXPECT_LT(hrtime::StampDifferenceMs({101, 750}, {100, 250}), 0);
  EXPECT_EQ(hrtime::Truncate32(1999.999), 1999);
  EXPECT_EQ(hrtime::Truncate32(-2147483648.9), INT_MIN);
  EXPECT_EQ(hrtime::Truncate32(-2147483647.0), -INT_MAX);
  EXPECT_EQ(hrtime::Truncate32(2147483647.9), INT_MAX);
  EXPECT_EQ(hrtime::Truncate32(std::numeric_limits<double>::quiet_NaN()), INT_MIN);
  EXPECT_EQ(hrtime::Truncate32(3e9), INT_MIN) << "the processor's value for a number that does not fit";
}

TEST(Seconds, WithTheirFraction) {
  EXPECT_DOUBLE_EQ(hrtime::SecondsF({12, 345}), 12.345);
  EXPECT_DOUBLE_EQ(hrtime::SecondsF({-1, 0}), -1.0);
}

TEST(Resolution, MeanOfTenStepsWithoutTheirSigns) {
  // Each round reads once, sees the same value twice, then a step of 15 or, once, 15 backwards.
  std::vector<std::int64_t> readings;
  std::int64_t now = 1000;
  for (int round = 0; round < 10; ++round) {
    readings.insert(readings.end(), {now, now, now});
    now += round == 4 ? -15 : round == 9 ? 25 : 15;
    readings.push_back(now);
  }
  std::size_t at = 0;
  EXPECT_DOUBLE_EQ(hrtime::MeanStep([&] { return readings.at(at++); }), 16.0);
  EXPECT_EQ(at, readings.size());
}

}  // namespace
