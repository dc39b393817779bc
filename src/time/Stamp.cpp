// SPDX-License-Identifier: MIT
#include "Stamp.h"

#include <cstring>

#include "Calendar.h"
#include "Now.h"
#include "StampText.h"
#include "afxwin.h"

// Not frame::Enter: that would turn an exception into the host's kind, which skips the destructors of
// the library's own callers.
#define HRTIME_FRAME AFX_MANAGE_STATE(AfxGetStaticModuleState())

namespace hrtime {
namespace {

int Elapsed(Instant& earlier, const Instant& later) {
  const double difference = StampDifferenceMs(earlier, later);
  if (difference < 0) {
    earlier = NowInstant();
    return 0;
  }
  return Truncate32(difference);
}

Instant ToInstant(Calendar& calendar) {
  StampClampCalendar(calendar);
  return CalendarToInstant(calendar);
}

StampText NowWith(BOOL addSeparator) {
  StampText stamp = NowStamp();
  if (addSeparator) stamp.AppendSeparator();
  return stamp;
}

int Give(const StampText& stamp, char* buffer, std::size_t capacity) {
  char ansi[StampText::kCapacity * 2];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, stamp.text, static_cast<int>(stamp.length) + 1, ansi,
                                         sizeof ansi, nullptr, nullptr);
  if (size == 0 || static_cast<std::size_t>(size) > capacity) return 0;
  std::memcpy(buffer, ansi, static_cast<std::size_t>(size));
  return 1;
}

int Give(const StampText& stamp, CStringW& text) {
  text.SetString(stamp.text, static_cast<int>(stamp.length));
  return 1;
}

}  // namespace

void StampNowInstant(Instant& instant) {
  HRTIME_FRAME;
  instant = NowInstant();
}

void StampNowCalendar(Calendar& calendar) {
  HRTIME_FRAME;
  calendar = NowCalendar();
}

int StampElapsedMs(Instant& earlier, const Instant& later) {
  HRTIME_FRAME;
  return Elapsed(earlier, later);
}

float StampElapsedSeconds(Instant& earlier, const Instant& later) {
  HRTIME_FRAME;
  return static_cast<float>(Elapsed(earlier, later) / 1000.0);
}

int StampMsSince(Instant& earlier) {
  HRTIME_FRAME;
  return Elapsed(earlier, NowInstant());
}

float StampSecondsSince(Instant& earlier) {
  HRTIME_FRAME;
  return static_cast<float>(Elapsed(earlier, NowInstant()) / 1000.0);
}

int StampCalendarToInstant(Calendar& calendar, Instant& instant) {
  HRTIME_FRAME;
  instant = ToInstant(calendar);
  return 1;
}

int StampCalendarText(Calendar& calendar, char* buffer, std::size_t capacity) {
  HRTIME_FRAME;
  return Give(StampOf(ToInstant(calendar)), buffer, capacity);
}

int StampCalendarTextW(Calendar& calendar, CStringW& text) {
  HRTIME_FRAME;
  return Give(StampOf(ToInstant(calendar)), text);
}

int StampInstantText(const Instant& instant, char* buffer, std::size_t capacity) {
  HRTIME_FRAME;
  return Give(StampOf(instant), buffer, capacity);
}

int StampInstantTextW(const Instant& instant, CStringW& text) {
  HRTIME_FRAME;
  return Give(StampOf(instant), text);
}

int StampNowText(char* buffer, std::size_t capacity, BOOL addSeparator) {
  HRTIME_FRAME;
  return Give(NowWith(addSeparator), buffer, capacity);
}

int StampNowTextW(CStringW& text, BOOL addSeparator) {
  HRTIME_FRAME;
  return Give(NowWith(addSeparator), text);
}

}  // namespace hrtime
