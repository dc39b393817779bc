// SPDX-License-Identifier: MIT
#include "Calendar.h"

#include "afx.h"

namespace hrtime {
namespace {

// One field of the local time, or `failure` when the runtime cannot tell.
int Field(const Instant& instant, int std::tm::*field, int base, int failure) {
  std::tm record;
  return RecordOf(instant, &record) ? record.*field + base : failure;
}

constexpr std::uint16_t Narrow(unsigned int value) {
  return static_cast<std::uint16_t>(value);
}

}  // namespace

std::tm* RecordOf(const Instant& instant, std::tm* record) {
  if (!record) AtlThrow(E_FAIL);
  const __time64_t seconds = instant.seconds;
  return ::_localtime64_s(record, &seconds) == 0 ? record : nullptr;
}

int YearOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_year, 1900, 0);
}
int MonthOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_mon, 1, 0);
}
int DayOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_mday, 0, 0);
}
int DayOfWeekOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_wday, 1, 0);
}
unsigned int HourOf(const Instant& instant) {
  return static_cast<unsigned int>(Field(instant, &std::tm::tm_hour, 0, -1));
}
int MinuteOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_min, 0, -1);
}
int SecondOf(const Instant& instant) {
  return Field(instant, &std::tm::tm_sec, 0, -1);
}

Instant CalendarToInstant(Calendar calendar) {
  ClampCalendar(calendar);
  const CTime time(calendar.year, calendar.month, calendar.day, calendar.hour, calendar.minute,
                   calendar.second);
  return {time.GetTime(), calendar.milliseconds};
}

// Each field asks the runtime for itself, as readers of a clock that jumps have always seen it.
Calendar InstantToCalendar(const Instant& instant) {
  Calendar calendar;
  calendar.year = Narrow(static_cast<unsigned int>(YearOf(instant)));
  calendar.month = Narrow(static_cast<unsigned int>(MonthOf(instant)));
  calendar.dayOfWeek = Narrow(static_cast<unsigned int>(DayOfWeekOf(instant)));
  calendar.day = Narrow(static_cast<unsigned int>(DayOf(instant)));
  calendar.hour = Narrow(HourOf(instant));
  calendar.minute = Narrow(static_cast<unsigned int>(MinuteOf(instant)));
  calendar.second = Narrow(static_cast<unsigned int>(SecondOf(instant)));
  calendar.milliseconds = Narrow(instant.milliseconds);
  return calendar;
}

std::int64_t CalendarDifferenceMs(const Calendar& earlier, const Calendar& later) {
  return InstantDifferenceMs(CalendarToInstant(earlier), CalendarToInstant(later));
}

}  // namespace hrtime
