// SPDX-License-Identifier: MIT
// Library.h: the built DLL as a host sees it.
#pragma once

#include <windows.h>

namespace test {

/// The library under test, loaded from the program's folder. Ends the program if it cannot be loaded.
HMODULE Library();

/// The address of the export with this ordinal. Ends the program if there is none.
void* ExportAddress(unsigned ordinal);

/// An export, bound by ordinal with the type that the public header declares:
///   const auto Exist = test::Export<decltype(ZERA_TOOLS_FILE_EXIST)>(1);
template <class Function>
Function* Export(unsigned ordinal) {
  return reinterpret_cast<Function*>(ExportAddress(ordinal));
}

}  // namespace test
