// SPDX-License-Identifier: MIT
#include <afx.h>

CTime::CTime(const FILETIME& time) noexcept {
  // File times count 100-nanosecond steps from 1601; 1970 is 11,644,473,600 seconds later.
  constexpr LONGLONG kStepsPerSecond = 10'000'000;
  constexpr LONGLONG kEpochSeconds = 11'644'473'600;
  ULARGE_INTEGER steps;
  steps.LowPart = time.dwLowDateTime;
  steps.HighPart = time.dwHighDateTime;
  time_ = static_cast<LONGLONG>(steps.QuadPart / kStepsPerSecond) - kEpochSeconds;
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst) {
  const bool valid = year >= 1970 && month >= 1 && month <= 12 && day >= 1 && day <= 31 && hour >= 0 &&
                     hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  if (!valid) AtlThrow(E_FAIL);
  struct tm fields = {};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_sec = second;
  fields.tm_isdst = dst;
  time_ = ::_mktime64(&fields);
  if (time_ == -1) AtlThrow(E_INVALIDARG);
}
