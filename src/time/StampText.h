// SPDX-License-Identifier: MIT
// StampText.h: an instant as one line of text, "Tue Mar  5 14:07:09.042 2024".
#pragma once

#include <cstddef>

#include "Instant.h"

namespace hrtime {

/// A stamp's text. Twenty-five characters and at most five digits of milliseconds.
struct StampText {
  static constexpr std::size_t kCapacity = 40;

  wchar_t text[kCapacity];
  std::size_t length;

  /// Adds ": ", for a stamp that something follows.
  void AppendSeparator();
};

/// Puts the milliseconds behind the seconds of the runtime's text form of a time
/// ("Tue Mar  5 14:07:09 2024\n"), without its line feed. Milliseconds count in 16 bits and have at
/// least three digits. No platform calls.
StampText FormatStamp(const wchar_t* runtimeText, unsigned int milliseconds);

/// The stamp of an instant, in local time. Raises E_INVALIDARG for an instant that the runtime has no
/// text for.
StampText StampOf(const Instant& instant);

/// The stamp of now.
StampText NowStamp();

}  // namespace hrtime
