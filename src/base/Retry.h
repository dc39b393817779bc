// SPDX-License-Identifier: MIT
// Retry.h: the loop of all operations that wait for another process or thread: for a file to be let go or
// finished, for a message queue to be there. Free of the platform.
#pragma once

namespace base {

enum class Outcome {
  kDone,
  kHopeless,  // a further attempt cannot help
  kAgain,
};

/// Tries until an attempt is done or hopeless, with a pause after every other one, the last included.
/// True if one was done. `most` limits the attempts; since it is compared after counting, 0 sets no limit.
template <class TryOnce, class Pause>
bool Retry(unsigned int most, TryOnce tryOnce, Pause pause) {
  // Wider than the limit, so that an unlimited loop does not end when a 32-bit count wraps to 0.
  for (unsigned long long count = 0;;) {
    const Outcome outcome = tryOnce();
    if (outcome != Outcome::kAgain) return outcome == Outcome::kDone;
    pause();
    if (++count == most) return false;
  }
}

}  // namespace base
