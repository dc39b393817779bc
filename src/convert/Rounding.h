// SPDX-License-Identifier: MIT
// Rounding.h: halves away from zero, out of range to the nearest end. Free of the platform.
//
// The steps and their order make the exact bits of the results; the build keeps the compiler from
// contracting them.
#pragma once

#include <emmintrin.h>

#include <cmath>

namespace convert {

// The conversions are the processor's own: what C++ leaves undefined (a NaN) has its answer here,
// the number with nothing but the top bit set.
inline int Truncated32(double value) noexcept {
  return _mm_cvttsd_si32(_mm_set_sd(value));
}
inline long long Truncated64(double value) noexcept {
  return _mm_cvttsd_si64(_mm_set_sd(value));
}

inline int RoundInt(double value) noexcept {
  constexpr int kMost = 0x7FFFFFFF;
  constexpr int kLeast = -kMost - 1;
  if (value < 0.0) {
    const double moved = value - 0.5;
    return moved < -2147483648.0 ? kLeast : Truncated32(moved);
  }
  const double moved = value + 0.5;
  return moved > 2147483647.0 ? kMost : Truncated32(moved);
}

inline unsigned int RoundUint(double value) noexcept {
  if (value < 0.0) return 0;
  const double moved = value + 0.5;
  return moved > 4294967295.0 ? 0xFFFFFFFFu : static_cast<unsigned int>(Truncated64(moved));
}

inline double RoundDouble(double value, int decimals) noexcept {
  // A double has no more decimals that mean anything.
  constexpr int kTooMany = 16;
  if (decimals >= kTooMany) return value;
  // KEPT FOR HOSTS: one multiplication by 10 after the other, and one division. A power of ten would
  // differ in the last bit now and then, and hosts compare stored results bit by bit.
  for (int i = 0; i < decimals; ++i) value *= 10.0;
  double whole = 0.0;
  std::modf(value >= 0.0 ? value + 0.5 : value - 0.5, &whole);
  for (int i = 0; i < decimals; ++i) whole /= 10.0;
  return whole;
}

}  // namespace convert
