// SPDX-License-Identifier: MIT
// Installation.h: an application whose module, application-data folders and language modules are where a
// test wants them.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace test {

/// Answers the library's questions for the module's path and the shell's folders while it lives.
class Installation {
 public:
  explicit Installation(std::wstring modulePath) : module(std::move(modulePath)) { current = this; }
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;
  ~Installation() { current = nullptr; }

  std::wstring module;
  std::wstring common;  ///< empty: the platform has none
  std::wstring user;
  bool emptyIsSuccess = false;  ///< the shell answers TRUE with an empty path

  std::vector<DWORD> capacities;  ///< of every question for the module's path
  std::vector<HMODULE> handles;
  std::vector<int> folders;    ///< every shell folder that was asked for
  bool plainQuestions = true;  ///< no owner window, no creation

 private:
  static DWORD WINAPI GetModulePath(HMODULE handle, wchar_t* path, DWORD capacity) {
    Installation& self = *current;
    self.handles.push_back(handle);
    self.capacities.push_back(capacity);
    if (self.module.empty()) return 0;
    if (self.module.size() < capacity) {
      std::copy(self.module.c_str(), self.module.c_str() + self.module.size() + 1, path);
      return static_cast<DWORD>(self.module.size());
    }
    std::copy(self.module.c_str(), self.module.c_str() + capacity - 1, path);
    path[capacity - 1] = 0;
    ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return capacity;
  }
  static BOOL WINAPI GetFolder(HWND owner, wchar_t* path, int folder, BOOL create) {
    Installation& self = *current;
    self.folders.push_back(folder);
    self.plainQuestions = self.plainQuestions && !owner && !create;
    const std::wstring& answer = folder == 35 ? self.common : self.user;
    std::copy(answer.c_str(), answer.c_str() + answer.size() + 1, path);
    return !answer.empty() || self.emptyIsSuccess;
  }

  static inline Installation* current = nullptr;
  ImportHook moduleHook_{"GetModuleFileNameW", &GetModulePath};
  ImportHook folderHook_{"SHGetSpecialFolderPathW", &GetFolder};
};

/// Sets the time of a file's last change: seconds since 1970 and 100-nanosecond steps.
inline void SetModified(const std::wstring& path, long long seconds, unsigned steps = 0) {
  const ULONGLONG ticks = static_cast<ULONGLONG>(seconds + 11644473600LL) * 10000000u + steps;
  const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  const HANDLE file = ::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
  if (!::SetFileTime(file, nullptr, nullptr, &time)) ADD_FAILURE() << "no time can be set for " << Ansi(path);
  ::CloseHandle(file);
}

}  // namespace test
