// SPDX-License-Identifier: MIT
// Block.h: sixteen bytes at any address, which every 64-bit processor moves at once.
#pragma once

#include <emmintrin.h>

namespace convert {

inline __m128i Load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

inline void Store(void* to, __m128i block) {
  _mm_storeu_si128(static_cast<__m128i*>(to), block);
}

}  // namespace convert
