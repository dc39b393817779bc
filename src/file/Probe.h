// SPDX-License-Identifier: MIT
// Probe.h: a file that is made in a folder to see whether that can be done.
#pragma once

#include <windows.h>

#include "Path.h"
#include "ProbeName.h"

namespace file {

/// Whatever was made is deleted when the object goes.
class Probe {
 public:
  /// `folder` ends in a separator, or is empty, or is a drive alone.
  Probe(Text<wchar_t> folder, const ProbeName& name) noexcept;
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;
  ~Probe();

  /// Makes an empty file; false if it cannot be made. A path beyond the platform's limit cannot.
  bool Create();
  /// Makes a copy of a file; false if it cannot be made whole, for whatever reason of the files or the
  /// storage.
  bool CopyOf(const wchar_t* file);

 private:
  static constexpr std::size_t kMostFolder = _MAX_PATH;

  bool made_ = false;
  wchar_t path_[kMostFolder + kProbeNameLength + 1];
};

}  // namespace file
