// SPDX-License-Identifier: MIT
// atltime.h: a calendar time as 64-bit seconds since 1 January 1970 UTC.
#pragma once

#include <windows.h>

#include <ctime>

class CTime {
 public:
  CTime() noexcept = default;
  explicit CTime(__time64_t time) noexcept : time_(time) {}
  explicit CTime(const FILETIME& time) noexcept;
  /// From local calendar fields. `dst` as in the C runtime: 0 standard time, 1 daylight saving
  /// time, -1 the runtime decides. Raises E_FAIL for a field out of range, E_INVALIDARG when the
  /// runtime cannot convert the fields.
  CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);

  __time64_t GetTime() const noexcept { return time_; }

  friend bool operator==(CTime a, CTime b) noexcept { return a.time_ == b.time_; }
  friend bool operator>(CTime a, CTime b) noexcept { return a.time_ > b.time_; }

 private:
  __time64_t time_ = 0;
};
