// SPDX-License-Identifier: MIT
// Every test program starts here: it refuses to run where it could reach more than the build folder.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "Crash.h"
#include "Library.h"
#include "Wine.h"

namespace {

// Under Wine the prefix shows drive C:, inside itself, and X:, and nothing else of the machine.
bool ShowsTwoDrives() {
  constexpr DWORD kDriveC = 1u << 2;
  constexpr DWORD kDriveX = 1u << 23;
  return ::GetLogicalDrives() == (kDriveC | kDriveX);
}

// Windows shows all its drives. There X: is the letter that the kit's runner made for the kit's own folder,
// which it names, and the program was started by that letter.
bool StartedByKit() {
  wchar_t folder[1024], target[1024], program[4];
  const DWORD named = ::GetEnvironmentVariableW(L"ZERA_TEST_KIT", folder, ARRAYSIZE(folder));
  return named > 0 && named < ARRAYSIZE(folder) && ::QueryDosDeviceW(L"X:", target, ARRAYSIZE(target)) &&
         std::wstring(target) == std::wstring(L"\\??\\") + folder &&
         (::GetModuleFileNameW(nullptr, program, ARRAYSIZE(program)), std::wstring(program) == L"X:\\");
}

// 0 is also the exit code of a program that somebody else ended, so who starts this one may name another. It
// is not for the programs that this one starts.
int TakeSuccessCode() {
  const char* const named = std::getenv("ZERA_TEST_SUCCESS");
  const int code = named ? std::atoi(named) : 0;
  ::_putenv("ZERA_TEST_SUCCESS=");
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  const int success = TakeSuccessCode();
  if (!(test::WineVersion() ? ShowsTwoDrives() : StartedByKit())) {
    std::fprintf(stderr,
                 "more than the test's own folder can be reached here (drives %08lx); nothing is run\n",
                 ::GetLogicalDrives());
    return 125;
  }
  if (const char* const page = std::getenv("ZERA_TEST_ACP");
      page && ::GetACP() != static_cast<UINT>(std::atoi(page))) {
    std::fprintf(stderr, "the ANSI code page is %u, the test wants %s\n", ::GetACP(), page);
    return 125;
  }
  // Wine takes the zone of its platform functions from the variable TZ, as names like Europe/Berlin, before
  // the program runs. It hands the variable on, and the C runtime would read it in a form of its own
  // ("CET-1CEST", with the changes of one country for all). On Windows it is not set, and the runtime asks
  // the platform.
  if (test::WineVersion()) ::_putenv("TZ=");
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  test::EndOnCrash();
  if (::IsDebuggerPresent()) {
    // There from the start, for breakpoints in it.
    test::Library();
  } else {
    // What the test program's own runtime opens at its first exception is open before a test counts handles.
    try {
      throw 0;
    } catch (int) {
    }
  }
  ::testing::InitGoogleTest(&argc, argv);
  const int failed = RUN_ALL_TESTS();
  return failed ? failed : success;
}
