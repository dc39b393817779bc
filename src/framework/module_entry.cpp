// SPDX-License-Identifier: MIT
#include "afxwin.h"

// Loading a regular library of the framework: its application object starts, or loading fails. Threads
// that come and go make no work of the library's own.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) return AfxInitModule(instance);
  if (reason == DLL_PROCESS_DETACH) AfxTermModule();
  return TRUE;
}
