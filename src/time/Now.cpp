// SPDX-License-Identifier: MIT
#include "Now.h"

#include <sys/timeb.h>
#include <windows.h>

#include "Calendar.h"
#include "Resolution.h"

// The C runtime exports it; the compiler's headers leave it out.
extern "C" __declspec(dllimport) errno_t __cdecl _ftime64_s(struct __timeb64* time);

namespace hrtime {

Instant NowInstant() {
  struct __timeb64 now = {};
  ::_ftime64_s(&now);
  return {now.time, now.millitm};
}

Calendar NowCalendar() {
  return InstantToCalendar(NowInstant());
}

double NowSecondsF() {
  return SecondsF(NowInstant());
}

double FtimeResolutionMs() {
  return MeanStep([] {
    const Instant now = NowInstant();
    return now.seconds * 1000 + now.milliseconds;
  });
}

double TickResolutionMs() {
  return MeanStep([]() -> std::int64_t { return ::GetTickCount(); });
}

}  // namespace hrtime
