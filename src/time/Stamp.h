// SPDX-License-Identifier: MIT
// Stamp.h: the second set of time functions, which run in the library's module state.
//
// Whoever calls them from outside the library's own code finds the caller's module state restored on
// every way out. They differ from the functions of Calendar.h and Now.h where it is said. Texts are
// those of StampText.h. Failures of calendar times are E_FAIL and E_INVALIDARG as exceptions.
#pragma once

#include <cstddef>

#include "Instant.h"
#include "afx.h"

namespace hrtime {

void StampNowInstant(Instant& instant);
void StampNowCalendar(Calendar& calendar);

/// Milliseconds from `earlier` to `later` as an int.
///
/// KEPT FOR HOSTS: a start in the future is set to now, with the result 0, so that a timeout runs on
/// after the clock was put back.
int StampElapsedMs(Instant& earlier, const Instant& later);
float StampElapsedSeconds(Instant& earlier, const Instant& later);
/// The same up to now.
int StampMsSince(Instant& earlier);
float StampSecondsSince(Instant& earlier);

/// Clamps the calendar time with StampClampCalendar and gives its instant; returns 1.
int StampCalendarToInstant(Calendar& calendar, Instant& instant);

// The text of a calendar time (clamped as above), of an instant, and of now, with ": " behind it on
// request. Into a buffer in the ANSI code page: 1, or 0 with nothing written if text and terminator
// need more than `capacity` bytes. Into a string: 1.
int StampCalendarText(Calendar& calendar, char* buffer, std::size_t capacity);
int StampCalendarTextW(Calendar& calendar, CStringW& text);
int StampInstantText(const Instant& instant, char* buffer, std::size_t capacity);
int StampInstantTextW(const Instant& instant, CStringW& text);
int StampNowText(char* buffer, std::size_t capacity, BOOL addSeparator);
int StampNowTextW(CStringW& text, BOOL addSeparator);

}  // namespace hrtime
