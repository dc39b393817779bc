// Names.h: names of executables, compared.
#pragma once

#include <cwchar>
#include <cwctype>

namespace process {

/// What stands behind the last backslash of a path; empty if it has none.
inline const wchar_t* NameBehindBackslash(const wchar_t* path) noexcept {
  const wchar_t* const last = std::wcsrchr(path, L'\\');
  return last ? last + 1 : L"";
}

/// Whether two texts are equal once each is in upper case, as the C runtime's locale has it.
inline bool EqualInUpperCase(const wchar_t* a, const wchar_t* b) noexcept {
  while (*a && std::towupper(*a) == std::towupper(*b)) ++a, ++b;
  return !*a && !*b;
}

}  // namespace process
