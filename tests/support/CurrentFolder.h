// SPDX-License-Identifier: MIT
// CurrentFolder.h: another current folder for a while.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace test {

/// Makes a folder the current one, and goes back at the end.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::wstring& folder) {
    ::GetCurrentDirectoryW(MAX_PATH, before_);
    EXPECT_TRUE(::SetCurrentDirectoryW(folder.c_str()));
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { ::SetCurrentDirectoryW(before_); }

 private:
  wchar_t before_[MAX_PATH] = {};
};

}  // namespace test
