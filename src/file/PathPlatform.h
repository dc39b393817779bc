// SPDX-License-Identifier: MIT
// PathPlatform.h: what the path operations take from the platform, for either character type.
#pragma once

#include <emmintrin.h>
#include <mbctype.h>

#include <stdlib.h>
#include <cstdint>
#include <cstring>
#include <cwchar>

#include "Path.h"
#include "base/CheckedCopy.h"

namespace file {

// The multi-byte code page of the C runtime, which library and host share, says which bytes lead a
// double-byte character; none below 0x80 does in any of its code pages.
struct LeadBytes {
  bool operator()(char one) const {
    return (one & 0x80) != 0 && ::_ismbblead(static_cast<unsigned char>(one));
  }
  bool operator()(wchar_t) const { return false; }
};

inline std::size_t Length(const char* text, std::size_t most) {
  return ::strnlen(text, most);
}
inline std::size_t Length(const wchar_t* text, std::size_t most) {
  std::size_t length = 0;
  const auto address = [&](std::size_t at) { return reinterpret_cast<std::uintptr_t>(text + at); };
  // One unit at a time up to an address from which eight can be looked at together: a block that does not
  // straddle an address divisible by 16 can be read whole when any of it can.
  while (length < most && (address(length) & 15) != 0) {
    if (!text[length]) return length;
    ++length;
  }
  for (; length < most; length += 8) {
    const __m128i block = _mm_load_si128(reinterpret_cast<const __m128i*>(text + length));
    const int zeros = _mm_movemask_epi8(_mm_cmpeq_epi16(block, _mm_setzero_si128()));
    if (zeros != 0) {
      length += static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(zeros))) / 2;
      break;
    }
  }
  return length < most ? length : most;
}

using base::CopyChecked;
using base::RejectParameter;

}  // namespace file
