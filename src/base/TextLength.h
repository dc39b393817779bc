// SPDX-License-Identifier: MIT
// TextLength.h: the length of a text, sixteen bytes at a time.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace base {

// The number of characters before the terminator, at most `most`. Reads up to fifteen bytes before and
// behind, which a checker of memory accesses would take for a fault.
template <class Char>
[[gnu::no_sanitize_address]] std::size_t TextLength(const Char* text,
                                                    std::size_t most = static_cast<std::size_t>(-1)) {
  if constexpr (sizeof(Char) > 1) {
    // The units of a text at an odd address do not fall into a block's units.
    if (reinterpret_cast<std::uintptr_t>(text) % sizeof(Char) != 0) {
      std::size_t length = 0;
      while (length < most && text[length]) ++length;
      return length;
    }
  }
  if (most == 0) return 0;
  // A block that does not straddle an address divisible by 16 can be read whole when any of it can.
  const std::size_t before = (reinterpret_cast<std::uintptr_t>(text) & 15) / sizeof(Char);
  const auto* block = reinterpret_cast<const __m128i*>(text - before);
  const auto zeros = [](__m128i units) {
    const __m128i zero = _mm_setzero_si128();
    return static_cast<unsigned>(
        _mm_movemask_epi8(sizeof(Char) == 1 ? _mm_cmpeq_epi8(units, zero) : _mm_cmpeq_epi16(units, zero)));
  };
  constexpr std::size_t kBlock = sizeof(__m128i) / sizeof(Char);
  // What lies before the text does not count.
  unsigned found = zeros(*block) >> (before * sizeof(Char));
  std::size_t length = 0;
  if (found == 0) {
    for (length = kBlock - before; length < most; length += kBlock) {
      found = zeros(*++block);
      if (found != 0) break;
    }
  }
  if (found != 0) length += static_cast<std::size_t>(std::countr_zero(found)) / sizeof(Char);
  return length < most ? length : most;
}

}  // namespace base
