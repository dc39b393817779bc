// SPDX-License-Identifier: MIT
#include "Library.h"

#include <cstdio>
#include <cstdlib>

namespace test {

HMODULE Library() {
  static const HMODULE module = [] {
    const HMODULE loaded = ::LoadLibraryW(L"ZERATools.dll");
    if (!loaded) {
      std::fprintf(stderr, "ZERATools.dll cannot be loaded, error %lu\n", ::GetLastError());
      std::exit(125);
    }
    return loaded;
  }();
  return module;
}

void* ExportAddress(unsigned ordinal) {
  const FARPROC address =
      ::GetProcAddress(Library(), reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal)));
  if (!address) {
    std::fprintf(stderr, "ZERATools.dll has no export with ordinal %u\n", ordinal);
    std::exit(125);
  }
  return reinterpret_cast<void*>(address);
}

}  // namespace test
