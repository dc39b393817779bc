// SPDX-License-Identifier: MIT
// TextLength.h: the length of a text, sixteen bytes at a time.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace base {

// The number of characters before the terminator, at most `most`. Reads up to fifteen bytes more, which a
// checker of memory accesses would take for a fault.
template <class Char>
[[gnu::no_sanitize_address]] std::size_t TextLength(const Char* text,
                                                    std::size_t most = static_cast<std::size_t>(-1)) {
  constexpr std::size_t kBlock = sizeof(__m128i) / sizeof(Char);
  std::size_t length = 0;
  const auto address = [&](std::size_t at) { return reinterpret_cast<std::uintptr_t>(text + at); };
  // One character at a time up to an address from which a block can be looked at together: one that does
  // not straddle an address divisible by 16 can be read whole when any of it can.
  while (length < most && (address(length) & 15) != 0) {
    if (!text[length]) return length;
    ++length;
  }
  for (; length < most; length += kBlock) {
    const __m128i block = *reinterpret_cast<const __m128i*>(text + length);
    const __m128i zero = _mm_setzero_si128();
    const int found =
        _mm_movemask_epi8(sizeof(Char) == 1 ? _mm_cmpeq_epi8(block, zero) : _mm_cmpeq_epi16(block, zero));
    if (found != 0) {
      length += static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(found))) / sizeof(Char);
      break;
    }
  }
  return length < most ? length : most;
}

}  // namespace base
