// SPDX-License-Identifier: MIT
// A host without any C runtime, linked by a linker of the Microsoft ABI through ZERATools.lib.
#include <ZERATools.h>

static void print(const char* text) {
  DWORD written;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text, (DWORD)lstrlenA(text), &written, NULL);
}

void __cdecl start(void) {
  char path[MAX_PATH];
  lstrcpyA(path, "C:\\data\\run.ini");
  ZERA_TOOLS_FILE_ADD_IDX_NAME(path, sizeof path, 7, 3);
  print(path);
  print(ZERA_TOOLS_ROUND_INT(2.5) == 3 ? "\r\n2.5 is rounded to 3\r\n" : "\r\n?\r\n");
  ExitProcess(0);
}
