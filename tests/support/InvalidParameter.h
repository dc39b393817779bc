// SPDX-License-Identifier: MIT
// InvalidParameter.h: the C runtime's invalid-parameter handler, counted instead of ending the process.
#pragma once

#include <stdlib.h>

namespace test {

/// Installs a handler that returns, as some hosts do, and counts its calls while it lives.
class InvalidParameter {
 public:
  InvalidParameter() : previous_(::_set_invalid_parameter_handler(&Count)) { Calls() = 0; }
  InvalidParameter(const InvalidParameter&) = delete;
  InvalidParameter& operator=(const InvalidParameter&) = delete;
  ~InvalidParameter() { ::_set_invalid_parameter_handler(previous_); }

  /// How often the handler ran.
  int Count() const { return Calls(); }

 private:
  static int& Calls() {
    static int calls = 0;
    return calls;
  }
  static void __cdecl Count(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, uintptr_t) {
    ++Calls();
  }

  _invalid_parameter_handler previous_;
};

}  // namespace test
