// SPDX-License-Identifier: MIT
// A library that holds nothing, built as the tools' library is: what loading costs in any case.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
  (void)module;
  (void)reason;
  (void)reserved;
  return TRUE;
}
