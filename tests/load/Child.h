// SPDX-License-Identifier: MIT
// Child.h: other processes of the tests of load (child.cpp).
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "support/StartProcess.h"
#include "support/TempFolder.h"

namespace load {

/// A handle that is closed at the end.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) { EXPECT_NE(handle, nullptr) << ::GetLastError(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { ::CloseHandle(handle_); }
  operator HANDLE() const { return handle_; }

 private:
  HANDLE handle_;
};

constexpr DWORD kPatience = 60'000;

/// A name for an event that no other process of the machine has.
inline std::wstring UniqueName() {
  static int count = 0;
  return L"zera-load-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}

/// A process that does what the first argument says.
class Child {
 public:
  explicit Child(const std::vector<std::wstring>& arguments) {
    std::wstring line = L"load_child.exe";
    for (const std::wstring& argument : arguments) line += L" \"" + argument + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (!test::StartProcess(L"load_child.exe", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &process_)) {
      ADD_FAILURE() << "cannot be started, error " << ::GetLastError();
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT) {
      ::TerminateProcess(process_.hProcess, 99);
      ::WaitForSingleObject(process_.hProcess, kPatience);
    }
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
  }

  /// Waits for its end.
  DWORD ExitCode() const {
    DWORD code = 98;
    EXPECT_EQ(::WaitForSingleObject(process_.hProcess, kPatience), WAIT_OBJECT_0);
    EXPECT_TRUE(::GetExitCodeProcess(process_.hProcess, &code));
    return code;
  }

 private:
  PROCESS_INFORMATION process_ = {};
};

/// A file that another process has opened for itself alone.
class HeldFile {
 public:
  explicit HeldFile(const std::wstring& path)
      : child_({L"hold", held_.name, release_.name, released_.name, path}) {
    EXPECT_EQ(::WaitForSingleObject(held_.event, kPatience), WAIT_OBJECT_0);
  }

  /// Lets the other process close the file, and waits until it has.
  void Release() {
    ::SetEvent(release_.event);
    EXPECT_EQ(::WaitForSingleObject(released_.event, kPatience), WAIT_OBJECT_0);
  }

 private:
  struct Event {
    const std::wstring name = UniqueName();
    const Handle event{::CreateEventW(nullptr, TRUE, FALSE, name.c_str())};
  };
  Event held_, release_, released_;
  Child child_;
};

}  // namespace load
