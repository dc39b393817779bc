// SPDX-License-Identifier: MIT
// Wine.h: whether the program runs under Wine, where a test has to know.
#pragma once

#include <windows.h>

namespace test {

/// Wine's version, as "8.0"; null on Windows.
inline const char* WineVersion() {
  const FARPROC version = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
  return version ? reinterpret_cast<const char*(__cdecl*)()>(reinterpret_cast<void*>(version))() : nullptr;
}

}  // namespace test
