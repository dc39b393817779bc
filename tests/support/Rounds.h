// SPDX-License-Identifier: MIT
// Rounds.h: long tests in a short form.
#pragma once

#include <algorithm>
#include <cstdlib>

namespace test {

/// How many rounds a test of many rounds makes: all of them, or at most as many as ZERA_TEST_ROUNDS says.
inline int Rounds(int all) {
  const char* const most = std::getenv("ZERA_TEST_ROUNDS");
  return most ? std::clamp(std::atoi(most), 1, all) : all;
}

}  // namespace test
