#include "afxwin.h"
#include "unload.h"

// Loading a regular library of the framework: its application object starts, or loading fails. The
// thread-local-storage index of the module state goes with the others when the library is unloaded.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  if (reason == DLL_PROCESS_ATTACH) return AfxInitModule(instance);
  if (reason == DLL_PROCESS_DETACH) {
    AfxTermModule();
    if (reserved) framework::KeepForProcessExit();
  }
  return TRUE;
}
