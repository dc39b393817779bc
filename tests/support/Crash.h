// SPDX-License-Identifier: MIT
// Crash.h: a program that crashes has failed.
#pragma once

namespace test {

/// From here on a crash ends the program with 3 and tells where it was. Wine's debugger gives some programs
/// that crash within the platform's own code the exit code 0. (In a debugger the crash is seen before this.)
void EndOnCrash();

}  // namespace test
