// SPDX-License-Identifier: MIT
// Every test program starts here: it refuses to run where it could reach more than the build folder.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  constexpr DWORD kDriveC = 1u << 2;
  constexpr DWORD kDriveX = 1u << 23;
  if (::GetLogicalDrives() != (kDriveC | kDriveX)) {
    std::fprintf(stderr, "drives beyond C: and X: are visible (%08lx); nothing is run here\n",
                 ::GetLogicalDrives());
    return 125;
  }
  if (const char* const page = std::getenv("ZERA_TEST_ACP");
      page && ::GetACP() != static_cast<UINT>(std::atoi(page))) {
    std::fprintf(stderr, "the ANSI code page is %u, the test wants %s\n", ::GetACP(), page);
    return 125;
  }
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  // What the test program's own runtime opens at its first exception is open before a test counts handles.
  try {
    throw 0;
  } catch (int) {
  }
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
