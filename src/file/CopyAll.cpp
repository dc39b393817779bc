// SPDX-License-Identifier: MIT
#include <afx.h>

#include "Contents.h"
#include "Directories.h"
#include "DirectoryWalk.h"
#include "Files.h"
#include "Storage.h"

namespace {

class Copying {
 public:
  // `destination` ends in a backslash and outlives the walk. `wayGone` is one for the whole copy.
  Copying(const wchar_t* destination, bool overwrite, bool& wayGone)
      : destination_(destination), overwrite_(overwrite), wayGone_(wayGone) {}

  bool Goes() const { return true; }

  bool Folder(const CStringW& path) {
    CStringW destination = Target(path);
    destination += L'\\';
    file::CheckWrite(destination, &wayGone_);
    Copying inside(destination, overwrite_, wayGone_);
    return file::Walk(file::SubSearch(path), inside);
  }

  bool File(const CStringW& path) {
    const CStringW target = Target(path);
    if (!overwrite_ && file::Exist(target)) return true;
    // The second attempt is for a destination whose folders were missing.
    if (!file::Copy(path, target) && file::CheckWrite(target)) file::Copy(path, target);
    return true;
  }

 private:
  CStringW Target(const CStringW& path) const {
    CStringW target(destination_);
    target += file::EntryName(path);
    return target;
  }

  const wchar_t* destination_;
  bool overwrite_;
  bool& wayGone_;
};

}  // namespace

namespace file {

int CopyAll(const wchar_t* startPath, const wchar_t* destination, unsigned int overwrite) {
  const StartSearch start(startPath);
  if (!start.Pattern()) return 0;
  bool wayGone = false;
  Copying copying(destination, overwrite != 0, wayGone);
  // KEPT FOR HOSTS: 1 for every walk that started, whatever single copies came to. Hosts that need to know
  // look at the destination.
  Walk(start.Pattern(), copying);
  return 1;
}

}  // namespace file
