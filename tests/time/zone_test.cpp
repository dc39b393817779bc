// SPDX-License-Identifier: MIT
// Local time around the changes of daylight saving, in the zone that ZERA_TEST_ZONE names.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "file/Files.h"
#include "time/Calendar.h"

namespace {

struct Expected {
  std::int64_t seconds;
  hrtime::Calendar local;  // day of the week included
};
struct Zone {
  const char* name;
  std::vector<Expected> both;         // converts in both directions
  std::vector<Expected> fromInstant;  // an hour that comes twice: the way back is the runtime's choice
};

// Known from the zones' published rules; 2024.
const Zone zones[] = {
    {"Europe/Berlin",
     {
         {1705000000, {2024, 1, 5, 11, 20, 6, 40, 5}},
         {1711846799, {2024, 3, 1, 31, 1, 59, 59, 5}},
         {1711846800, {2024, 3, 1, 31, 3, 0, 0, 5}},
         {1720000000, {2024, 7, 4, 3, 11, 46, 40, 5}},
         {1729994400, {2024, 10, 1, 27, 3, 0, 0, 5}},
     },
     {{1729990799, {2024, 10, 1, 27, 2, 59, 59, 5}}, {1729990800, {2024, 10, 1, 27, 2, 0, 0, 5}}}},
    {"America/New_York",
     {
         {1705000000, {2024, 1, 5, 11, 14, 6, 40, 5}},
         {1710053999, {2024, 3, 1, 10, 1, 59, 59, 5}},
         {1710054000, {2024, 3, 1, 10, 3, 0, 0, 5}},
         {1720000000, {2024, 7, 4, 3, 5, 46, 40, 5}},
         {1730617200, {2024, 11, 1, 3, 2, 0, 0, 5}},
     },
     {{1730613599, {2024, 11, 1, 3, 1, 59, 59, 5}}, {1730613600, {2024, 11, 1, 3, 1, 0, 0, 5}}}},
    {"Australia/Sydney",
     {
         {1705000000, {2024, 1, 6, 12, 6, 6, 40, 5}},
         {1720000000, {2024, 7, 4, 3, 19, 46, 40, 5}},
         {1728143999, {2024, 10, 1, 6, 1, 59, 59, 5}},
         {1728144000, {2024, 10, 1, 6, 3, 0, 0, 5}},
     },
     {{1712419199, {2024, 4, 1, 7, 2, 59, 59, 5}}, {1712419200, {2024, 4, 1, 7, 2, 0, 0, 5}}}},
    {"UTC", {{1720000000, {2024, 7, 4, 3, 9, 46, 40, 5}}, {1711846800, {2024, 3, 1, 31, 1, 0, 0, 5}}}, {}},
};

void ExpectLocal(const Expected& row) {
  const hrtime::Calendar local = hrtime::InstantToCalendar({row.seconds, 5});
  EXPECT_EQ(local.year, row.local.year) << row.seconds;
  EXPECT_EQ(local.month, row.local.month) << row.seconds;
  EXPECT_EQ(local.dayOfWeek, row.local.dayOfWeek) << row.seconds;
  EXPECT_EQ(local.day, row.local.day) << row.seconds;
  EXPECT_EQ(local.hour, row.local.hour) << row.seconds;
  EXPECT_EQ(local.minute, row.local.minute) << row.seconds;
  EXPECT_EQ(local.second, row.local.second) << row.seconds;
  EXPECT_EQ(local.milliseconds, row.local.milliseconds) << row.seconds;
}

// The time that stands for none, 1 January 1980, 01:00, is standard time everywhere: in the south that is
// summer.
TEST(Zone, TheTimeOfAMissingFileIsStandardTime) {
  const char* const wanted = std::getenv("ZERA_TEST_ZONE");
  ASSERT_NE(wanted, nullptr);
  const std::string name = wanted;
  const std::map<std::string, int> hoursEast = {
      {"Europe/Berlin", 1}, {"America/New_York", -5}, {"Australia/Sydney", 10}, {"UTC", 0}};
  const auto zone = hoursEast.find(name);
  ASSERT_NE(zone, hoursEast.end());
  long long time = 0;
  EXPECT_EQ(file::GetTimeModified(L"X:\\no such file", &time), 0);
  EXPECT_EQ(time, 315532800 + 3600 - 3600 * zone->second);
}

TEST(Zone, ChangesOfDaylightSaving) {
  const char* const wanted = std::getenv("ZERA_TEST_ZONE");
  ASSERT_NE(wanted, nullptr);
  const std::string name = wanted;
  bool found = false;
  for (const Zone& zone : zones) {
    if (name != zone.name) continue;
    found = true;
    for (const Expected& row : zone.both) {
      ExpectLocal(row);
      const hrtime::Instant back = hrtime::CalendarToInstant(row.local);
      EXPECT_EQ(back.seconds, row.seconds);
      EXPECT_EQ(back.milliseconds, 5u);
    }
    for (const Expected& row : zone.fromInstant) ExpectLocal(row);
  }
  EXPECT_TRUE(found) << "no expectations for " << name;
}

}  // namespace
