// SPDX-License-Identifier: MIT
// The loop of all retries. Optimised, unlike other tests: one of these makes four thousand million attempts.
#include "base/Retry.h"

#include <gtest/gtest.h>

namespace {

using base::Outcome;

TEST(Retrying, CountsAttemptsAndPauses) {
  for (const unsigned most : {1u, 2u, 25u, 1000u}) {
    for (const unsigned doneAt : {1u, 2u, most, most + 1}) {
      unsigned tried = 0;
      unsigned paused = 0;
      const bool done = base::Retry(
          most, [&] { return ++tried == doneAt ? Outcome::kDone : Outcome::kAgain; }, [&] { ++paused; });
      EXPECT_EQ(done, doneAt <= most);
      EXPECT_EQ(tried, doneAt <= most ? doneAt : most);
      EXPECT_EQ(paused, doneAt <= most ? doneAt - 1 : most);
    }
  }
}

TEST(Retrying, HopelessEndsWithoutAPause) {
  int tried = 0;
  int paused = 0;
  EXPECT_FALSE(base::Retry(
      10, [&] { return ++tried == 3 ? Outcome::kHopeless : Outcome::kAgain; }, [&] { ++paused; }));
  EXPECT_EQ(tried, 3);
  EXPECT_EQ(paused, 2);
}

TEST(Retrying, NoLimitOutlivesA32BitCount) {
  unsigned long long tried = 0;
  const unsigned long long doneAt = 0x100000003;
  EXPECT_TRUE(base::Retry(
      0, [&] { return ++tried == doneAt ? Outcome::kDone : Outcome::kAgain; }, [] {}));
  EXPECT_EQ(tried, doneAt);
}

}  // namespace
