// SPDX-License-Identifier: MIT
// Calendar forms, instants, what lies between them, and stamp texts.
#include "Fuzz.h"
#include "time/Calendar.h"
#include "time/Elapsed.h"
#include "time/Instant.h"
#include "time/StampText.h"

// The clock is not part of it.
namespace hrtime {
Instant NowInstant() {
  return {};
}
}  // namespace hrtime

namespace {

using hrtime::Calendar;
using hrtime::Instant;

std::uint16_t Between(int value, int least, int most) {
  return static_cast<std::uint16_t>(value < least ? least : value > most ? most : value);
}

bool Leap(int year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysOf(int month, int year) {
  switch (month) {
    case 2:
      return Leap(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
      return 30;
    default:
      return 31;
  }
}

Calendar Clamped(Calendar calendar, bool stamp) {
  if (stamp) {
    if (!(calendar.year >= 1980 && calendar.year <= 2037)) calendar.year = 2008;
  } else {
    calendar.year = Between(calendar.year, 1980, 3000);
  }
  calendar.month = Between(calendar.month, 1, 12);
  calendar.day = Between(calendar.day, 1, 31);
  calendar.hour = Between(calendar.hour, 0, 23);
  calendar.minute = Between(calendar.minute, 0, 59);
  calendar.second = Between(calendar.second, 0, 59);
  calendar.milliseconds = Between(calendar.milliseconds, 0, 999);
  return calendar;
}

// Day by day; the time zone of these tests is Greenwich.
long long SecondsOf(const Calendar& calendar) {
  long long days = 0;
  for (int year = 1970; year < calendar.year; ++year) days += Leap(year) ? 366 : 365;
  for (int month = 1; month < calendar.month; ++month) days += DaysOf(month, calendar.year);
  days += calendar.day - 1;
  return days * 86400 + calendar.hour * 3600 + calendar.minute * 60 + calendar.second;
}

Calendar CalendarOf(long long seconds, unsigned int milliseconds) {
  Calendar calendar = {};
  calendar.milliseconds = static_cast<std::uint16_t>(milliseconds);
  if (seconds < 0 || seconds > 32535291599) {
    calendar.hour = calendar.minute = calendar.second = 65535;
    return calendar;
  }
  long long days = seconds / 86400;
  const int rest = static_cast<int>(seconds % 86400);
  calendar.dayOfWeek = static_cast<std::uint16_t>((days + 4) % 7 + 1);  // 1 January 1970 was a Thursday
  int year = 1970;
  for (; days >= (Leap(year) ? 366 : 365); ++year) days -= Leap(year) ? 366 : 365;
  int month = 1;
  for (; days >= DaysOf(month, year); ++month) days -= DaysOf(month, year);
  calendar.year = static_cast<std::uint16_t>(year);
  calendar.month = static_cast<std::uint16_t>(month);
  calendar.day = static_cast<std::uint16_t>(days + 1);
  calendar.hour = static_cast<std::uint16_t>(rest / 3600);
  calendar.minute = static_cast<std::uint16_t>(rest / 60 % 60);
  calendar.second = static_cast<std::uint16_t>(rest % 60);
  return calendar;
}

bool Same(const Calendar& a, const Calendar& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

Instant AnyInstant(fuzz::Input& input) {
  Instant instant;
  instant.seconds =
      input.Bit() ? static_cast<long long>(input.Raw<std::uint32_t>()) * 8 : input.Raw<long long>();
  instant.milliseconds = input.Bit() ? input.Byte() * 4u : input.Raw<unsigned int>();
  return instant;
}

void Calendars(fuzz::Input& input) {
  const auto calendar = input.Raw<Calendar>();
  Calendar clamped = calendar;
  hrtime::ClampCalendar(clamped);
  CHECK(Same(clamped, Clamped(calendar, false)));
  Calendar stamp = calendar;
  hrtime::StampClampCalendar(stamp);
  CHECK(Same(stamp, Clamped(calendar, true)));

  const Instant instant = hrtime::CalendarToInstant(calendar);
  CHECK(instant.seconds == SecondsOf(clamped));
  CHECK(instant.milliseconds == clamped.milliseconds);

  const Instant any = AnyInstant(input);
  CHECK(Same(hrtime::InstantToCalendar(any), CalendarOf(any.seconds, any.milliseconds)));
}

long long Truncated(long double value, long double least, long double beyond, long long otherwise) {
  return value > least - 1 && value < beyond ? static_cast<long long>(value) : otherwise;
}

void Differences(fuzz::Input& input) {
  const Instant earlier = AnyInstant(input);
  const Instant later = AnyInstant(input);
  // The rule is told in doubles; these keep their rounding.
  const volatile double from = static_cast<double>(earlier.seconds) * 1000.0 + earlier.milliseconds;
  const volatile double to = static_cast<double>(later.seconds) * 1000.0 + later.milliseconds;
  const volatile double difference = to - from;
  CHECK(hrtime::InstantDifferenceMs(earlier, later) ==
        (difference < 0 ? 0 : Truncated(difference, 0, 0x1p63L, INT64_MIN)));

  // Exactly, as long as doubles are exact.
  const __int128 exact = static_cast<__int128>(later.seconds) * 1000 + later.milliseconds -
                         static_cast<__int128>(earlier.seconds) * 1000 - earlier.milliseconds;
  const auto small = [](const Instant& one) { return one.seconds < 1LL << 42 && one.seconds > -(1LL << 42); };
  if (small(earlier) && small(later)) {
    CHECK(hrtime::InstantDifferenceMs(earlier, later) == (exact < 0 ? 0 : static_cast<long long>(exact)));
  }

  const auto number = input.Raw<double>();
  const bool narrow = number == number && number > -0x1p31 - 1 && number < 0x1p31;
  CHECK(hrtime::Truncate32(number) == (narrow ? static_cast<int>(number) : INT32_MIN));

  const auto start = input.Raw<std::int64_t>();
  const auto end = input.Raw<std::int64_t>();
  // Ten million steps a second, or what other machines have; all far below this limit.
  const std::int64_t frequency = 1 + (input.Raw<std::uint32_t>() & 0x3FFFFFFF);
  const __int128 counts = static_cast<__int128>(end) - start;
  if (counts >= INT64_MIN && counts <= INT64_MAX) {
    const __int128 microseconds = counts * 1'000'000 / frequency;
    if (microseconds >= INT64_MIN && microseconds <= INT64_MAX) {
      CHECK(hrtime::Microseconds(start, end, frequency) == static_cast<std::int64_t>(microseconds));
    }
  }
  const std::int64_t kUnits[] = {1000, 1'000'000, 60'000'000};
  const std::int64_t unit = kUnits[input.Byte() % 3];
  const std::int64_t quotient = start / unit;
  CHECK(hrtime::WholeUnits(start, unit) == (quotient < 0 || quotient > 0xFFFFFFFFLL
                                                ? 0x7FFFFFFF
                                                : static_cast<int>(static_cast<unsigned int>(quotient))));
}

void Stamps(fuzz::Input& input) {
  const Instant instant = AnyInstant(input);
  const Calendar calendar = CalendarOf(instant.seconds, 0);
  if (calendar.year != 0) {
    static const char kDays[] = "SunMonTueWedThuFriSat";
    static const char kMonths[] = "JanFebMarAprMayJunJulAugSepOctNovDec";
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.3s %.3s %2d %02d:%02d:%02d.%.3hu %d",
                  kDays + 3 * (calendar.dayOfWeek - 1), kMonths + 3 * (calendar.month - 1), calendar.day,
                  calendar.hour, calendar.minute, calendar.second,
                  static_cast<unsigned short>(instant.milliseconds), calendar.year);
    hrtime::StampText stamp = hrtime::StampOf(instant);
    CHECK(stamp.length == std::strlen(expected));
    for (std::size_t i = 0; i <= stamp.length; ++i) CHECK(stamp.text[i] == static_cast<wchar_t>(expected[i]));
    stamp.AppendSeparator();
    CHECK(stamp.length == std::strlen(expected) + 2 && stamp.text[stamp.length - 2] == ':' &&
          stamp.text[stamp.length - 1] == ' ' && stamp.text[stamp.length] == 0);
  } else {
    bool raised = false;
    try {
      hrtime::StampOf(instant);
    } catch (HRESULT code) {
      raised = code == E_INVALIDARG;
    }
    CHECK(raised);
  }

  // Any text in place of the runtime's own, of any length: no more than fits, without its line feeds.
  const fuzz::String<wchar_t> text = input.Text<wchar_t>();
  fuzz::Buffer<wchar_t> buffer(text);
  const hrtime::StampText stamp = hrtime::FormatStamp(buffer.data(), instant.milliseconds);
  fuzz::String<wchar_t> expected = text.substr(0, 19);
  char milliseconds[16];
  std::snprintf(milliseconds, sizeof milliseconds, ".%.3hu ",
                static_cast<unsigned short>(instant.milliseconds));
  for (const char* one = milliseconds; *one; ++one) expected += static_cast<wchar_t>(*one);
  if (text.size() > 20) expected += text.substr(20);
  std::erase(expected, wchar_t('\n'));
  expected = expected.substr(0, hrtime::StampText::kCapacity - 1);
  CHECK(stamp.length == expected.size());
  CHECK(std::memcmp(stamp.text, expected.c_str(), (expected.size() + 1) * sizeof(wchar_t)) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  switch (input.Byte() % 3) {
    case 0:
      Calendars(input);
      break;
    case 1:
      Differences(input);
      break;
    default:
      Stamps(input);
  }
  return 0;
}
