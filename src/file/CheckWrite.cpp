// SPDX-License-Identifier: MIT
#include <afx.h>
#include <direct.h>

#include "Files.h"
#include "PathPlatform.h"
#include "ProbeName.h"
#include "Storage.h"

namespace {

using WideText = file::Text<wchar_t>;

constexpr std::size_t kMostFolder = file::kMostDrive + file::kMostComponent;

// Nothing is written, so closing has nothing to report.
bool CanBeOpened(const wchar_t* path, UINT flags) {
  CFile opened;
  return opened.Open(path, flags);
}

// Tries whether files can be made in a folder, or in the folders on the way to it.
class FolderProbe {
 public:
  // `folder` ends in a separator, or is empty, or is a drive alone.
  explicit FolderProbe(WideText folder) : name_(this), length_(folder.size()) {
    std::wmemcpy(folder_, folder.data(), length_);
  }

  bool CanWrite() const { return CanWriteIn(length_); }

  // Walks down from the root and makes each folder that no file can be made in.
  void MakeFolders() const {
    for (std::size_t i = 1; i < length_; ++i) {
      if (folder_[i] == L'\\' && !CanWriteIn(i + 1)) MakeFolder(i + 1);
    }
  }

 private:
  // A path beyond the limit cannot be opened, so it counts as not writable.
  bool CanWriteIn(std::size_t length) const {
    wchar_t path[kMostFolder + file::kProbeNameLength + 1];
    std::wmemcpy(path, folder_, length);
    std::wmemcpy(path + length, name_.text, file::kProbeNameLength + 1);
    if (!CanBeOpened(path, CFile::modeCreate | CFile::modeWrite)) return false;
    ::DeleteFileW(path);
    return true;
  }

  // Failure shows at the last probe.
  void MakeFolder(std::size_t length) const {
    wchar_t path[kMostFolder + 1];
    std::wmemcpy(path, folder_, length);
    path[length] = 0;
    ::_wmkdir(path);
  }

  file::ProbeName name_;
  std::size_t length_;
  wchar_t folder_[kMostFolder];
};

}  // namespace

namespace file {

int CheckWrite(const wchar_t* path) {
  if (!path) return 0;
  // Components beyond their limits belong to no file that could be written.
  const WideText text(path, Length(path, kMostPath + 1));
  const Parts<wchar_t> parts = Split(text, LeadBytes());
  if (text.size() > kMostPath || !parts.Fit()) return 0;

  const WideText folder(text.data(), parts.drive.size() + parts.directory.size());
  if (!folder.empty() && !parts.name.empty() && !parts.extension.empty() && Exist(path)) {
    return CanBeOpened(path, CFile::modeWrite);
  }

  const FolderProbe probe(folder);
  if (probe.CanWrite()) return 1;
  probe.MakeFolders();
  return probe.CanWrite();
}

}  // namespace file
