// SPDX-License-Identifier: MIT
// FailureTable.h: how each platform function fails, and with which error codes.
#pragma once

#include <vector>

namespace faults {

/// A function of the test that a failing call jumps to, with the arguments of the call.
using Failing = void*;

struct Failure {
  const char* name;
  Failing failing;
  std::vector<unsigned> codes;  ///< of GetLastError, or of errno where the function reports by that
};

/// The code of the failure that is happening.
extern unsigned failingCode;
/// Set when a call failed that should have restored the numeric locale.
extern bool restoringLocaleFailed;

/// Null for a function that cannot fail, or whose failure nobody can be told.
const Failure* FindFailure(const char* name);

}  // namespace faults
