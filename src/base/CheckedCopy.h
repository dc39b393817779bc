// SPDX-License-Identifier: MIT
// CheckedCopy.h: bounds-checked copies as the C runtime makes them, for either character type.
#pragma once

#include <errno.h>
#include <stdlib.h>

#include <cstddef>
#include <string_view>

// The C runtime exports this; the toolchain's headers do not declare it.
extern "C" void __cdecl _invalid_parameter_noinfo(void);

namespace base {

/// What such a copy does with arguments that do not fit: the buffer is left empty, the runtime's error
/// number is set (a buffer that is missing is invalid, one that is there is too small), and its
/// invalid-parameter handler runs. That may raise an exception of the host's, which runs no destructor of
/// ours: nothing may be owned by then.
template <class Char>
void RejectParameter(Char* out, std::size_t capacity, int error = ERANGE) {
  const bool hasRoom = out && capacity > 0;
  if (hasRoom) out[0] = Char(0);
  ::_set_errno(hasRoom ? error : EINVAL);
  ::_invalid_parameter_noinfo();
}

template <class Char>
void CopyChecked(std::basic_string_view<Char> text, Char* out, std::size_t capacity) {
  if (!out || text.size() >= capacity) {
    RejectParameter(out, capacity);
    return;
  }
  std::char_traits<Char>::move(out, text.data(), text.size());
  out[text.size()] = Char(0);
}

}  // namespace base
