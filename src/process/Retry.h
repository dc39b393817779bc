// SPDX-License-Identifier: MIT
// Retry.h: trying again until a time budget is used up. Free of the platform.
#pragma once

namespace process {

/// Calls `attempt` until it succeeds, and `sleep` with `stepMs` after each failure. Ends with failure
/// when more than `budgetMs` were slept, so one attempt and one sleep past the budget's last step.
template <class Attempt, class Sleep>
bool RetryWithin(unsigned budgetMs, unsigned stepMs, Attempt attempt, Sleep sleep) {
  unsigned waited = 0;
  while (!attempt()) {
    sleep(stepMs);
    waited += stepMs;
    if (waited > budgetMs) return false;
  }
  return true;
}

}  // namespace process
