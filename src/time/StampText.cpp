// SPDX-License-Identifier: MIT
#include "StampText.h"

#include "Now.h"
#include "afx.h"

namespace hrtime {
namespace {

constexpr std::size_t kUpToSeconds = 19;

void Append(StampText& stamp, wchar_t one) {
  constexpr std::size_t kRoom = StampText::kCapacity - 1;
  if (one != L'\n' && stamp.length < kRoom) stamp.text[stamp.length++] = one;
  stamp.text[stamp.length] = 0;
}

}  // namespace

void StampText::AppendSeparator() {
  Append(*this, L':');
  Append(*this, L' ');
}

StampText FormatStamp(const wchar_t* runtimeText, unsigned int milliseconds) {
  StampText stamp = {};
  std::size_t at = 0;
  for (; at < kUpToSeconds && runtimeText[at]; ++at) Append(stamp, runtimeText[at]);
  Append(stamp, L'.');
  const unsigned int shown = milliseconds & 0xFFFF;
  for (unsigned int divisor = 10'000; divisor > 0; divisor /= 10) {
    if (shown >= divisor || divisor <= 100) Append(stamp, static_cast<wchar_t>(L'0' + shown / divisor % 10));
  }
  Append(stamp, L' ');
  if (runtimeText[at]) ++at;  // the blank before the year has been written
  for (; runtimeText[at]; ++at) Append(stamp, runtimeText[at]);
  return stamp;
}

StampText StampOf(const Instant& instant) {
  const __time64_t seconds = instant.seconds;
  const wchar_t* const text = ::_wctime64(&seconds);
  if (!text) AtlThrow(E_INVALIDARG);
  return FormatStamp(text, instant.milliseconds);
}

StampText NowStamp() {
  return StampOf(NowInstant());
}

}  // namespace hrtime
