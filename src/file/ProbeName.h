// SPDX-License-Identifier: MIT
// ProbeName.h: the name of a file that a write check creates and deletes at once.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace file {

inline constexpr std::size_t kProbeNameLength = 20;

// "%p.$$$": sixteen upper-case hexadecimal digits and ".$$$". The digits are mixed from an address that
// belongs to the running call, so that concurrent probes of one folder differ, the process, whose stacks may
// lie at the same addresses, and the processor's clock. Nobody who sees the name learns the address.
struct ProbeName {
  explicit ProbeName(const void* address) {
    const auto process = static_cast<std::uint64_t>(::GetCurrentProcessId()) << 48;
    std::uint64_t rest =
        Mixed(Mixed(__builtin_ia32_rdtsc()) ^ process ^ reinterpret_cast<std::uintptr_t>(address));
    for (int i = 15; i >= 0; --i, rest >>= 4) text[i] = L"0123456789ABCDEF"[rest & 15];
    std::copy(std::begin(kEnding), std::end(kEnding), text + 16);
  }

  wchar_t text[kProbeNameLength + 1];

 private:
  static constexpr wchar_t kEnding[] = L".$$$";
  static_assert(16 + std::size(kEnding) == kProbeNameLength + 1);

  // Each bit of the result depends on each bit of the value, and no two values have the same result.
  static constexpr std::uint64_t Mixed(std::uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
  }
};

}  // namespace file
