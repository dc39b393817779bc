// SPDX-License-Identifier: MIT
#include "Probe.h"

#include <afx.h>

#include "Contents.h"
#include "Files.h"
#include "base/QuietErrors.h"

namespace file {

Probe::Probe(Text<wchar_t> folder, const ProbeName& name) noexcept {
  if (folder.size() > kMostFolder) folder = folder.substr(0, kMostFolder);
  std::char_traits<wchar_t>::copy(path_, folder.data(), folder.size());
  std::char_traits<wchar_t>::copy(path_ + folder.size(), name.text, kProbeNameLength + 1);
}

// A scanner may hold what was just closed; the deletion then waits for it as any deletion does.
Probe::~Probe() {
  if (made_ && !base::Quietly([this] { return ::DeleteFileW(path_); })) Delete(path_);
}

bool Probe::Create() {
  CFile probe;
  // Nothing is written, so closing has nothing to report.
  made_ = probe.Open(path_, CFile::modeCreate | CFile::modeWrite);
  return made_;
}

bool Probe::CopyOf(const wchar_t* file) {
  made_ = true;
  return CopySucceeds(file, path_) && Exist(path_);
}

}  // namespace file
