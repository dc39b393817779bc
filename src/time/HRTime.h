// SPDX-License-Identifier: MIT
// HRTime.h: a stopwatch on the performance counter, and a wall-clock time that carries its reading.
//
// Every object may be used by several threads: each access locks the object's own section. No
// function holds more than two locks, the one of a time or a span before the one of its counter point.
#pragma once

#include "Instant.h"
#include "afxmt.h"

/// One reading of the performance counter; 0 means not set.
class CHRTimePoint : public CObject {
 public:
  /// Reads the counter.
  CHRTimePoint() { SetNow(); }

  void Clear() { Set(0); }
  bool IsNull() const { return Get() == 0; }
  void SetNow();
  std::int64_t Get() const;
  void Set(std::int64_t counter);

 private:
  std::int64_t counter_ = 0;
  mutable CCriticalSection lock_;
};

/// A stopwatch: the time from its start to now, or between two given readings. Both ends change and are
/// read together, so that a reading never mixes two measurements.
class CHRTimeSpan : public CObject {
 public:
  /// Starts now.
  CHRTimeSpan();
  /// Both ends are given and stay.
  CHRTimeSpan(std::int64_t start, std::int64_t end);

  void Clear();
  bool IsNull() const;
  /// Starts again, now.
  void Start();

  std::int64_t ElapsedMicroseconds();
  // Whole units; see hrtime::WholeUnits for what does not fit.
  int ElapsedMilliseconds();
  int ElapsedSeconds();
  int ElapsedMinutes();
  double ElapsedMillisecondsF();
  double ElapsedSecondsF();
  double ElapsedMinutesF();

 private:
  std::int64_t frequency_;
  CHRTimePoint start_;
  bool fixed_ = false;
  CHRTimePoint end_;
  mutable CCriticalSection lock_;
};

/// A wall-clock instant and the performance counter's reading of the same moment.
class CHRTime : public CObject {
 public:
  /// All zero.
  CHRTime() { point_.Clear(); }
  /// The caller's own lock is taken before the other's: two threads must not assign two objects to
  /// each other at once.
  CHRTime& operator=(const CHRTime& other);

  void Clear();
  void SetNow();
  std::int64_t GetCounter() const { return point_.Get(); }
  std::int64_t GetSeconds() const { return GetInstant().seconds; }
  hrtime::Instant GetInstant() const;
  /// The instant as local calendar time.
  hrtime::Calendar GetCalendar() const;
  double GetSecondsF() const { return hrtime::SecondsF(GetInstant()); }

 private:
  hrtime::Instant instant_;
  mutable CCriticalSection lock_;
  CHRTimePoint point_;
};
