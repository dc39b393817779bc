// SPDX-License-Identifier: MIT
// The program that the process tests start, count and end: tells that it runs, and waits.
#include <windows.h>

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  const HANDLE ready = ::OpenEventW(EVENT_MODIFY_STATE, FALSE, argv[1]);
  if (!ready) return 3;
  ::SetEvent(ready);
  // Longer than any test; a child that a failed test leaves behind ends by itself.
  ::Sleep(120000);
  return 7;
}
