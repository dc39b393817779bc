// SPDX-License-Identifier: MIT
#include <afx.h>
#include <direct.h>

#include "Files.h"
#include "PathPlatform.h"
#include "Probe.h"
#include "Storage.h"
#include "base/QuietErrors.h"

namespace {

using WideText = file::Text<wchar_t>;

constexpr std::size_t kMostFolder = file::kMostDrive + file::kMostComponent;

// Tries whether files can be made in a folder, or in the folders on the way to it.
class FolderProbe {
 public:
  // `folder` ends in a separator, or is empty, or is a drive alone.
  explicit FolderProbe(WideText folder) : folder_(folder), name_(this) {}

  bool CanWrite() const { return CanWriteIn(folder_); }

  // Walks down from the root and makes each folder that no file can be made in.
  void MakeFolders() const {
    for (std::size_t i = 1; i < folder_.size(); ++i) {
      if (folder_[i] != L'\\') continue;
      const WideText onTheWay = folder_.substr(0, i + 1);
      if (!CanWriteIn(onTheWay)) MakeFolder(onTheWay);
    }
  }

  // False if there is one already, or one above it is missing.
  bool MakeLastFolder() const { return MakeFolder(folder_); }

 private:
  bool CanWriteIn(WideText folder) const { return file::Probe(folder, name_).Create(); }

  // Failure shows at the last probe.
  static bool MakeFolder(WideText folder) {
    wchar_t path[kMostFolder + 1];
    std::wmemcpy(path, folder.data(), folder.size());
    path[folder.size()] = 0;
    return base::Quietly([&] { return ::_wmkdir(path); }) == 0;
  }

  WideText folder_;
  file::ProbeName name_;
};

}  // namespace

namespace file {

int CheckWrite(const wchar_t* path, bool* wayGone) {
  if (!path) return 0;
  // Components beyond their limits belong to no file that could be written.
  const WideText text(path, Length(path, kMostPath + 1));
  const Parts<wchar_t> parts = Split(text, LeadBytes());
  if (text.size() > kMostPath || !parts.Fit()) return 0;

  WideText folder = text;
  folder.remove_suffix(text.size() - (parts.drive.size() + parts.directory.size()));
  if (!folder.empty() && !parts.name.empty() && !parts.extension.empty() && Exist(path)) {
    return CFile().Open(path, CFile::modeWrite);
  }

  const FolderProbe probe(folder);
  if (probe.CanWrite()) return 1;
  if (wayGone && *wayGone && probe.MakeLastFolder() && probe.CanWrite()) return 1;
  probe.MakeFolders();
  if (wayGone) *wayGone = true;
  return probe.CanWrite();
}

}  // namespace file
