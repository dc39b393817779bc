// SPDX-License-Identifier: MIT
// Instant.h: a moment, its calendar form, and the arithmetic on both. No platform calls.
#pragma once

#include <cstdint>

namespace hrtime {

/// Seconds since 1 January 1970 UTC, and milliseconds within the second (0 to 999).
struct Instant {
  std::int64_t seconds = 0;
  unsigned int milliseconds = 0;
};

/// A local date and time, in eight 16-bit fields.
struct Calendar {
  std::uint16_t year = 0;
  std::uint16_t month = 0;      ///< 1 to 12
  std::uint16_t dayOfWeek = 0;  ///< Sunday 1 to Saturday 7, unlike the runtime's 0 to 6
  std::uint16_t day = 0;        ///< day of the month
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t milliseconds = 0;
};
static_assert(sizeof(Calendar) == 16);

inline void ClampAt(std::uint16_t& field, std::uint16_t most) {
  if (field > most) field = most;
}

inline void Clamp(std::uint16_t& field, std::uint16_t least, std::uint16_t most) {
  if (field < least) field = least;
  ClampAt(field, most);
}

// Everything but the year, for which the two sets of functions have different rules.
inline void ClampBelowYear(Calendar& calendar) {
  Clamp(calendar.month, 1, 12);
  Clamp(calendar.day, 1, 31);
  ClampAt(calendar.hour, 23);
  ClampAt(calendar.minute, 59);
  ClampAt(calendar.second, 59);
  ClampAt(calendar.milliseconds, 999);
}

/// Brings every field into its range, the year into 1980 to 3000. The day of the week is left alone.
inline void ClampCalendar(Calendar& calendar) {
  Clamp(calendar.year, 1980, 3000);
  ClampBelowYear(calendar);
}

/// As ClampCalendar for all but the year.
///
/// KEPT FOR HOSTS: a year outside 1980 to 2037 becomes 2008, not the nearer bound; whoever compares
/// stamps of calendar times that were never filled in would notice.
inline void StampClampCalendar(Calendar& calendar) {
  if (calendar.year < 1980 || calendar.year > 2037) calendar.year = 2008;
  ClampBelowYear(calendar);
}

inline void StampClampMs(Instant& instant) {
  if (instant.milliseconds > 999) instant.milliseconds = 999;
}

inline double SecondsF(const Instant& instant) {
  return static_cast<double>(instant.seconds) + instant.milliseconds * 0.001;
}

// A number without its fraction; one that does not fit (or is none) gives the least, which is what the
// processor's own truncation gives.
inline std::int64_t Truncate64(double value) {
  return value >= -0x1p63 && value < 0x1p63 ? static_cast<std::int64_t>(value) : INT64_MIN;
}
inline int Truncate32(double value) {
  return value > -0x1p31 - 1 && value < 0x1p31 ? static_cast<int>(value) : INT32_MIN;
}

/// Milliseconds from one instant to a later one, 0 if it is not later.
inline std::int64_t InstantDifferenceMs(const Instant& earlier, const Instant& later) {
  const double from = static_cast<double>(earlier.seconds) * 1000 + earlier.milliseconds;
  const double to = static_cast<double>(later.seconds) * 1000 + later.milliseconds;
  const double difference = to - from;
  return difference < 0 ? 0 : Truncate64(difference);
}

/// The difference that the stamp functions work with, before its truncation: milliseconds, computed
/// by way of seconds.
inline double StampDifferenceMs(const Instant& earlier, const Instant& later) {
  const double from = earlier.milliseconds / 1000.0 + static_cast<double>(earlier.seconds);
  const double to = later.milliseconds / 1000.0 + static_cast<double>(later.seconds);
  return (to - from) * 1000;
}

}  // namespace hrtime
