// SPDX-License-Identifier: MIT
// Sharing.h: other users of a file.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace test {

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Someone else's open file.
class Opened {
 public:
  Opened(const std::wstring& path, DWORD access, DWORD share)
      : file_(::CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(file_, INVALID_HANDLE_VALUE) << ::GetLastError();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  ~Opened() { Close(); }

  void Close() {
    if (file_ != INVALID_HANDLE_VALUE) ::CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE file_;
};

/// The error of opening a file with everything shared; 0 if it can be opened.
inline DWORD ErrorOfOpening(const std::wstring& path, DWORD access) {
  const HANDLE file = ::CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return ::GetLastError();
  ::CloseHandle(file);
  return 0;
}

/// Whether read-only files refuse to be written: under Wine they do not refuse root.
inline bool IsProtected(const std::wstring& readOnly) {
  return ErrorOfOpening(readOnly, GENERIC_WRITE) != 0;
}

}  // namespace test
