// SPDX-License-Identifier: MIT
// PathPlatform.h: what the path operations take from the platform, for either character type.
#pragma once

#include <mbctype.h>

#include <stdlib.h>
#include <cstring>
#include <cwchar>

#include "Path.h"
#include "base/CheckedCopy.h"
#include "base/TextLength.h"

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
  return base::TextLength(text, most);
}

using base::CopyChecked;
using base::RejectParameter;

}  // namespace file
