// SPDX-License-Identifier: MIT
// A host of the Microsoft C++ ABI, in the place of the family's applications: it prints each failure and
// ends with 0 only when there is none.
#include "support.h"

extern "C" void Start() {
  // The library deletes folders: nothing runs where more than the build folder can be reached.
  const DWORD kDrivesCAndX = 1u << 2 | 1u << 23;
  if (GetLogicalDrives() != kDrivesCAndX) {
    host::Print("drives beyond C: and X: are visible; nothing is run here\n");
    ExitProcess(125);
  }
  TestExceptions();
  TestForeignExceptions();
  TestStrings();
  TestArrays();
  host::RemoveFolder();
  host::Print(host::Failures() == 0 ? "all passed\n" : "FAILED\n");
  ExitProcess(host::Failures() == 0 ? 0 : 1);
}
