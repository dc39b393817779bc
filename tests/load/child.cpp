// SPDX-License-Identifier: MIT
// The other processes of the tests of load. Each waits, when it is ready, for all others.
//   load_child seed READY GO BESIDE MODULE COMMON USER
//   load_child write READY GO FILE SECTION COUNT
//   load_child hold HELD RELEASE RELEASED FILE
#include <ZERATools.h>
#include <windows.h>

#include <cwchar>
#include <string>

#include "application/Installation.h"
#include "support/Crash.h"
#include "support/Library.h"

namespace {

constexpr DWORD kPatience = 60'000;
enum : int { kNotSeeded = 10, kNotBeside, kNotOpened, kUnknown };

void Signal(const wchar_t* name) {
  ::SetEvent(::OpenEventW(EVENT_MODIFY_STATE, FALSE, name));
}
void Await(const wchar_t* name) {
  ::WaitForSingleObject(::OpenEventW(SYNCHRONIZE, FALSE, name), kPatience);
}
// Counted by the one that waits for many.
void Ready(const wchar_t* name) {
  ::ReleaseSemaphore(::OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, name), 1, nullptr);
}

// The settings file of one application beside its module, and that of another one, which has to be made: 0,
// or 1 if this process copied it.
int Seed(wchar_t** arguments) {
  const auto ask = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)>(208);
  test::Installation places(arguments[2]);
  places.common = arguments[4];
  places.user = arguments[5];
  Ready(arguments[0]);
  Await(arguments[1]);
  CStringW file;
  int copied = 7;
  const std::wstring beside = arguments[2];
  if (ask(nullptr, file, &copied) != 1 || copied != 0 ||
      file.GetString() != beside.substr(0, beside.size() - 3) + L"ini") {
    return kNotBeside;
  }
  places.module = arguments[3];
  if (ask(nullptr, file, &copied) != 1 || file.GetString() != places.user + L"\\app\\view.ini") {
    return kNotSeeded;
  }
  return copied;
}

// A number and a text for each count. How many numbers the platform did not write, in thousands, as a crash
// has a code of its own.
int Write(wchar_t** arguments) {
  const auto number = test::Export<decltype(ZERA_TOOLS_WRITE_INT_UC)>(1061);
  const auto text = test::Export<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060);
  const wchar_t *const file = arguments[2], *const section = arguments[3];
  const int count = static_cast<int>(std::wcstol(arguments[4], nullptr, 10));
  Ready(arguments[0]);
  Await(arguments[1]);
  int failed = 0;
  for (int i = 0; i < count; ++i) {
    const std::wstring which = std::to_wstring(i);
    failed += !number(section, (L"n" + which).c_str(), file, 1000 + i);
    text(section, (L"t" + which).c_str(), file, (L"\u00FC" + which).c_str());
  }
  return 1000 * failed;
}

int Hold(wchar_t** arguments) {
  const HANDLE file = ::CreateFileW(arguments[3], GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return kNotOpened;
  Signal(arguments[0]);
  Await(arguments[1]);
  ::CloseHandle(file);
  Signal(arguments[2]);
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  test::EndOnCrash();
  const std::wstring what = argc > 1 ? argv[1] : L"";
  if (what == L"seed" && argc == 8) return Seed(argv + 2);
  if (what == L"write" && argc == 7) return Write(argv + 2);
  if (what == L"hold" && argc == 6) return Hold(argv + 2);
  return kUnknown;
}
