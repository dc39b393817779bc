// SPDX-License-Identifier: MIT
// Now.h: the present moment, and how finely the clocks tell it.
#pragma once

#include "Instant.h"

namespace hrtime {

Instant NowInstant();
/// The present local calendar time; failure as with InstantToCalendar.
Calendar NowCalendar();
double NowSecondsF();

/// The mean step of the wall clock in milliseconds, over 10 steps that are waited for busily.
double FtimeResolutionMs();
/// The same for the tick counter.
double TickResolutionMs();

}  // namespace hrtime
