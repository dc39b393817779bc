// SPDX-License-Identifier: MIT
// Block.h: sixteen bytes at any address, which every 64-bit processor moves at once.
#pragma once

#include <emmintrin.h>

#include <bit>

namespace convert {

inline __m128i Load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

inline void Store(void* to, __m128i block) {
  _mm_storeu_si128(static_cast<__m128i*>(to), block);
}

// The last `wanted` of a text, or its begin. What `end` points to can be read, and is none.
template <class Char>
const Char* Last(const Char* text, const Char* end, Char wanted) {
  constexpr int kSize = sizeof(__m128i) / sizeof(Char);
  const __m128i all = sizeof(Char) == 1 ? _mm_set1_epi8(static_cast<char>(wanted))
                                        : _mm_set1_epi16(static_cast<short>(wanted));
  while (end - text >= kSize) {
    const __m128i block = Load(end - kSize);
    const __m128i equal = sizeof(Char) == 1 ? _mm_cmpeq_epi8(block, all) : _mm_cmpeq_epi16(block, all);
    const auto found = static_cast<unsigned>(_mm_movemask_epi8(equal));
    if (found != 0) return end - kSize + (std::bit_width(found) - 1) / static_cast<int>(sizeof(Char));
    end -= kSize;
  }
  while (end > text && *end != wanted) --end;
  return end;
}

}  // namespace convert
