// SPDX-License-Identifier: MIT
// Loading and unloading, beside a library that holds nothing.
#include "Harness.h"

namespace bench {
namespace {

Way LoadAndUnload(const wchar_t* name) {
  return Calls([name] {
    const HMODULE library = ::LoadLibraryW(name);
    if (!library) std::abort();
    ::FreeLibrary(library);
  });
}

}  // namespace

void Loading() {
  // Every window application has these loaded when it loads the library.
  for (const wchar_t* const name : {L"user32.dll", L"advapi32.dll", L"shell32.dll", L"version.dll"}) {
    ::LoadLibraryW(name);
  }
  Measure("Loading", "load and unload", 1, LoadAndUnload(L"ZERATools.dll"), LoadAndUnload(L"zera_empty.dll"));
}

}  // namespace bench
