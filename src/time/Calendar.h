// SPDX-License-Identifier: MIT
// Calendar.h: between instants and local calendar time, by the C runtime's rules.
#pragma once

#include <ctime>

#include "Instant.h"

namespace hrtime {

/// The instant of a local calendar time, which is clamped first; the runtime decides about daylight
/// saving. Raises E_INVALIDARG when the runtime cannot convert the fields.
Instant CalendarToInstant(Calendar calendar);

/// The local calendar time of an instant. When the runtime cannot tell, year, month, day of the week
/// and day are 0, and hour, minute and second 65535.
Calendar InstantToCalendar(const Instant& instant);

/// Milliseconds from one calendar time to a later one, 0 if it is not later.
std::int64_t CalendarDifferenceMs(const Calendar& earlier, const Calendar& later);

// One field of an instant's local time. Failure: see each.
int YearOf(const Instant& instant);           ///< four digits; 0
int MonthOf(const Instant& instant);          ///< 1 to 12; 0
int DayOf(const Instant& instant);            ///< day of the month; 0
int DayOfWeekOf(const Instant& instant);      ///< Sunday 1 to Saturday 7; 0
unsigned int HourOf(const Instant& instant);  ///< 0xFFFFFFFF
int MinuteOf(const Instant& instant);         ///< -1
int SecondOf(const Instant& instant);         ///< -1

/// The whole record of the runtime: `record`, or null when the runtime cannot tell. Raises E_FAIL
/// when `record` is null.
std::tm* RecordOf(const Instant& instant, std::tm* record);

}  // namespace hrtime
