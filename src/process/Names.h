// SPDX-License-Identifier: MIT
// Names.h: names of executables, compared.
#pragma once

#include <windows.h>

#include <cwchar>

namespace process {

/// What stands behind the last backslash of a path; empty if it has none.
inline const wchar_t* NameBehindBackslash(const wchar_t* path) noexcept {
  const wchar_t* const last = std::wcsrchr(path, L'\\');
  return last ? last + 1 : L"";
}

/// Whether two texts are equal without regard to letter case, as file names are on this platform. The C
/// runtime's upper case would follow the host's locale, in which file names have no part.
inline bool EqualInUpperCase(const wchar_t* a, const wchar_t* b) noexcept {
  return ::CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

}  // namespace process
