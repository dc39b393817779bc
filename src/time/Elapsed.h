// SPDX-License-Identifier: MIT
// Elapsed.h: what lies between two readings of the performance counter. No platform calls.
#pragma once

#include <cstdint>

namespace hrtime {

/// (end - start) * 1000000 / frequency, towards zero, in 64 bits. Whole seconds and the rest are scaled
/// apart: the product of a counter that steps ten million times a second would overflow after eleven
/// days. The frequency must not be 0: the division then faults.
inline std::int64_t Microseconds(std::int64_t start, std::int64_t end, std::int64_t frequency) {
  const auto counts =
      static_cast<std::int64_t>(static_cast<std::uint64_t>(end) - static_cast<std::uint64_t>(start));
  const std::int64_t seconds = counts / frequency;
  const std::int64_t rest = counts % frequency;
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(seconds) * 1'000'000u) +
         rest * 1'000'000 / frequency;
}

/// Microseconds in whole units, for a caller that takes an int.
///
/// KEPT FOR HOSTS: the limit is that of an unsigned number. Quotients from 2^31 to 2^32 - 1 pass and
/// read as negative, everything above and every negative quotient gives the largest int; a caller that
/// compares long times against both would notice.
inline int WholeUnits(std::int64_t microseconds, std::int64_t unit) {
  const auto quotient = static_cast<std::uint64_t>(microseconds / unit);
  return quotient > 0xFFFFFFFFu ? 0x7FFFFFFF : static_cast<int>(static_cast<std::uint32_t>(quotient));
}

}  // namespace hrtime
