// SPDX-License-Identifier: MIT
// Folder.h: the kit's folder as drive X:.
#pragma once

#include <string>

namespace kit {

/// The folder that the kit was unpacked to, without a backslash at its end.
std::wstring KitFolder();

/// Shows the kit's folder as drive X:, unless it is that drive already, and makes the folder X:\tmp, in which
/// the tests work; takes both back. What a test left in X:\tmp stays.
class Folder {
 public:
  Folder() = default;
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { TakeBack(); }

  /// Gives what is in the way; empty if nothing is.
  std::string Open();
  /// Any thread may call it, more than once.
  void TakeBack();

 private:
  std::wstring path_ = KitFolder();
  bool shown_ = false;  // by this object
  bool made_ = false;   // the folder X:\tmp
};

}  // namespace kit
