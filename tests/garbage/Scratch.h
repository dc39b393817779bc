// SPDX-License-Identifier: MIT
// Scratch.h: the folder that random calls may change as they like.
#pragma once

#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace garbage {

/// Is the current folder while it lives, for calls whose path has none.
class Scratch {
 public:
  Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch();

  const std::wstring& path() const { return path_; }

  /// Empties the folder and puts a few files and folders there. Gives the probes of write checks that were
  /// left.
  std::vector<std::wstring> Reset();
  /// Whether what lies beside the folder is as it was.
  bool OthersWhole() const;

 private:
  test::TempFolder folder_;
  std::wstring path_, before_;
};

}  // namespace garbage
