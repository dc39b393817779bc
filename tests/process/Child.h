// SPDX-License-Identifier: MIT
// Child.h: a process of the test's own, under a name that no other process has.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "support/StartProcess.h"
#include "support/TempFolder.h"

namespace test {

/// A name that only this test program uses, such as "zt-42-7-Viewer.exe".
inline std::wstring UniqueName(const std::wstring& base) {
  static int count = 0;
  return L"zt-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count) + L"-" + base;
}

/// Makes a program of this path, to be started as a Child.
inline std::wstring MakeProgram(const std::wstring& path) {
  WriteBytes(path, ReadBytes(L"process_child.exe"));
  return path;
}

/// Starts a program and ends it, if nobody did before, when the object goes.
class Child {
 public:
  explicit Child(const std::wstring& program) {
    const std::wstring name = UniqueName(L"ready");
    const HANDLE ready = ::CreateEventW(nullptr, TRUE, FALSE, name.c_str());
    std::wstring command = L"\"" + program + L"\" " + name;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (!test::StartProcess(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &process_)) {
      ADD_FAILURE() << "cannot be started: " << Ansi(program) << ", error " << ::GetLastError();
    } else if (::WaitForSingleObject(ready, 60000) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "does not run: " << Ansi(program);
    }
    ::CloseHandle(ready);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    End();
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
  }

  DWORD id() const { return process_.dwProcessId; }
  bool Runs() const { return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
  /// Whether it ended, given a moment for it, with this exit code.
  bool EndedWith(DWORD expected) const {
    DWORD code = ~expected;
    return ::WaitForSingleObject(process_.hProcess, 10000) == WAIT_OBJECT_0 &&
           ::GetExitCodeProcess(process_.hProcess, &code) && code == expected;
  }
  void End() {
    if (Runs()) ::TerminateProcess(process_.hProcess, 99);
    ::WaitForSingleObject(process_.hProcess, 10000);
  }

 private:
  PROCESS_INFORMATION process_ = {};
};

}  // namespace test
