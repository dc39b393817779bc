// SPDX-License-Identifier: MIT
// zt: the exports of ZERATools.dll as a command-line tool.
#include <windows.h>

#include <shellapi.h>

#include "guard.h"
#include "run.h"

// Not the arguments of main: the runtime's start-up may replace wildcards by file names, and what a
// filter of a deleting command says must arrive as it was written.
int main() {
  zt::InstallGuards();
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  return zt::Run(std::vector<std::wstring>(words + 1, words + count));
}
