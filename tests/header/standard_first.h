// SPDX-License-Identifier: MIT
// The platform's header after the standard library's, which removes its macros min and max and asks it not to
// define them; the Microsoft library does neither.
#pragma once
#include <atomic>
#include <chrono>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#if __cplusplus >= 202002L
  #include <span>
  #include <stop_token>
#endif

#undef NOMINMAX
#include <windows.h>
