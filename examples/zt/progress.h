// SPDX-License-Identifier: MIT
// progress.h: a sign of life on long calls, and the user's wish to stop.
#pragma once

#include <stop_token>
#include <string>
#include <thread>

namespace zt {

/// While it lives and somebody watches stderr, shows "WHAT ... 12 s" there. The library reports
/// nothing on the way, so this is the time and no more.
class Progress {
 public:
  explicit Progress(std::wstring what);

 private:
  std::jthread thread_;
};

/// A flag that Ctrl+C sets from the first call on. Ctrl+Break still ends the program.
int* AbortFlag();

}  // namespace zt
