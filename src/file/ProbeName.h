// SPDX-License-Identifier: MIT
// ProbeName.h: the name of a file that a write check creates and deletes at once.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace file {

inline constexpr std::size_t kProbeNameLength = 20;

// "%p.$$$": sixteen upper-case hexadecimal digits and ".$$$". The digits are an address that belongs to
// the running call, so that concurrent probes of one folder differ; the sixteen bits that no address
// uses tell processes apart, whose stacks may lie at the same addresses.
struct ProbeName {
  explicit ProbeName(const void* address) {
    auto rest = reinterpret_cast<std::uintptr_t>(address) ^
                static_cast<std::uintptr_t>(::GetCurrentProcessId() >> 2) << 48;
    for (int i = 15; i >= 0; --i, rest >>= 4) text[i] = L"0123456789ABCDEF"[rest & 15];
    for (int i = 0; i < 5; ++i) text[16 + i] = L".$$$"[i];
  }

  wchar_t text[kProbeNameLength + 1];
};

}  // namespace file
