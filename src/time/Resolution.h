// SPDX-License-Identifier: MIT
// Resolution.h: how far a clock moves in one step. No platform calls.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace hrtime {

/// The mean step of a clock over 10 samples, in the unit of `read`. Waits busily for each step: a
/// sleep would measure the scheduler.
template <class Read>
double MeanStep(Read read) {
  constexpr int kSamples = 10;
  std::int64_t sum = 0;
  for (int i = 0; i < kSamples; ++i) {
    const std::int64_t before = read();
    std::int64_t after = read();
    while (after == before) after = read();
    sum += std::llabs(after - before);
  }
  return static_cast<double>(sum) / kSamples;
}

}  // namespace hrtime
