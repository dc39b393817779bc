// SPDX-License-Identifier: MIT
// Leave.h: out of a call before its end, as an exception of another ABI goes through the library: no
// destructor of it runs.
#pragma once

#include <windows.h>

#include <functional>

namespace test {

class Leave {
 public:
  /// Runs a call to its end, or until it comes to Now().
  void Within(const std::function<void()>& call) {
    left_ = false;
    ::RtlCaptureContext(&here_);
    if (!left_) call();
  }

  void Now() {
    left_ = true;
    ::RtlRestoreContext(&here_, nullptr);
  }

 private:
  CONTEXT here_;
  volatile bool left_ = false;
};

}  // namespace test
