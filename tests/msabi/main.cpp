// SPDX-License-Identifier: MIT
// A host of the Microsoft C++ ABI, in the place of the family's applications: it prints each failure and
// ends with 0 only when there is none.
#include "support.h"

extern "C" void Start() {
  host::RefuseOtherDrives();
  TestExceptions();
  TestForeignExceptions();
  TestStrings();
  TestArrays();
  host::RemoveFolder();
  host::Print(host::Failures() == 0 ? "all passed\n" : "FAILED\n");
  ExitProcess(host::Failures() == 0 ? 0 : 1);
}
