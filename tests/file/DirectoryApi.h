// SPDX-License-Identifier: MIT
// DirectoryApi.h: both variants of the exports for whole directories behind one interface, bound by
// ordinal, and trees of files to run them on.
#pragma once

#include <ZERATools.h>

#include <string>
#include <vector>

#include "FileApi.h"
#include "support/ImportHook.h"

namespace test {

using Names = std::vector<std::wstring>;

/// Texts go through the ANSI code page for the plain variants.
class DirectoryApi {
 public:
  explicit DirectoryApi(bool wide) : wide_(wide) {}

  int DeleteAll(const std::wstring& start, const std::wstring& filter) const {
    return wide_ ? Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_UC)>(1003)(start.c_str(), filter.c_str())
                 : Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL)>(3)(Ansi(start).c_str(), Ansi(filter).c_str());
  }
  int DeleteOld(const std::wstring& start, const std::wstring& filter, unsigned age) const {
    return wide_
               ? Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC)>(1008)(start.c_str(), filter.c_str(), age)
               : Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD)>(8)(Ansi(start).c_str(),
                                                                     Ansi(filter).c_str(), age);
  }
  /// Only the wide variant knows the flag.
  int DeleteOldEx(const std::wstring& start, const std::wstring& filter, unsigned age,
                  int* flag = nullptr) const {
    int unset = 0;
    return wide_ ? Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC)>(1029)(start.c_str(), filter.c_str(),
                                                                                age, flag ? flag : &unset)
                 : Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX)>(29)(Ansi(start).c_str(),
                                                                           Ansi(filter).c_str(), age);
  }
  int CopyAll(const std::wstring& start, const std::wstring& destination, unsigned overwrite) const {
    return wide_ ? Export<decltype(ZERA_TOOLS_FILE_COPY_ALL_UC)>(1018)(start.c_str(), destination.c_str(),
                                                                       overwrite)
                 : Export<decltype(ZERA_TOOLS_FILE_COPY_ALL)>(18)(Ansi(start).c_str(),
                                                                  Ansi(destination).c_str(), overwrite);
  }

 private:
  bool wide_;
};

/// Makes files and, of names that end in a backslash, folders; each file's bytes are its name.
inline void Plant(const TempFolder& temp, const Names& names) {
  for (const std::wstring& name : names) {
    if (name.back() == L'\\') {
      temp.Folder(name.substr(0, name.size() - 1));
    } else {
      temp.File(name, Ansi(name));
    }
  }
}

/// Lets a file or folder have been created some seconds ago, and changed at the same time: under Wine
/// both are one.
inline void SetAge(const std::wstring& path, long long seconds) {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  ULARGE_INTEGER time = {{now.dwLowDateTime, now.dwHighDateTime}};
  time.QuadPart -= static_cast<ULONGLONG>(seconds) * 10000000;
  const FILETIME then = {time.LowPart, time.HighPart};
  const HANDLE handle = ::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  EXPECT_TRUE(::SetFileTime(handle, &then, nullptr, &then)) << ::GetLastError();
  ::CloseHandle(handle);
}

/// Runs each test for both variants, with nothing left open and nothing left on the heap.
class Directories : public ::testing::TestWithParam<bool> {
 protected:
  ~Directories() override { EXPECT_EQ(OpenHandles(), handles_); }

  TempFolder temp_;
  const DirectoryApi api_{GetParam()};

 private:
  DWORD handles_ = (Library(), OpenHandles());
};

}  // namespace test
