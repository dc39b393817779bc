// SPDX-License-Identifier: MIT
// DirectoryWalk.h: one pass over the entries of a directory, for the operations that recurse.
#pragma once

#include <afx.h>

#include "PathPlatform.h"

namespace file {

// The pattern that finds every entry of the directory that a start path lies in: its drive and
// directory, and "*.*". A bare name lies in the current folder.
class StartSearch {
 public:
  explicit StartSearch(const wchar_t* startPath);

  // Null when nothing may be walked: no start path, "*.*" alone, or one beyond the path limit.
  const wchar_t* Pattern() const { return pattern_[0] ? pattern_ : nullptr; }

 private:
  wchar_t pattern_[_MAX_PATH] = {};
};

// The pattern that finds every entry of a directory inside a walk. Beyond the path limit it finds nothing,
// which is what ends the deepest walk.
inline CStringW SubSearch(const CStringW& folder) {
  CStringW pattern(folder);
  pattern += L"\\*.*";
  return pattern;
}

// The last component of an entry's path.
inline const wchar_t* EntryName(const CStringW& path) {
  return Split(Text<wchar_t>(path, static_cast<std::size_t>(path.GetLength())), LeadBytes()).name.data();
}

// Whether the finder's current entry, at `path`, is a link to a folder elsewhere.
bool IsFolderLink(const CFileFind& finder, const wchar_t* path);

// Calls `visitor` for each entry, whose operations are
//   bool Goes();                         asked before each entry; false ends the walk
//   bool Folder(const CStringW& path);   false for a failure
//   bool File(const CStringW& path);     false for a failure
// The result is false after any failure; the walk goes on after one. Links to folders are passed over:
// they may lead out of the tree, or back up into it.
template <class Visitor>
bool Walk(const wchar_t* pattern, Visitor& visitor) {
  bool succeeded = true;
  CFileFind finder;
  BOOL more = finder.FindFile(pattern);
  while (more && visitor.Goes()) {
    more = finder.FindNextFileW();
    if (finder.IsDots()) continue;
    const CStringW path = finder.GetFilePath();
    if (!finder.IsDirectory()) {
      succeeded &= visitor.File(path);
    } else if (!IsFolderLink(finder, path)) {
      succeeded &= visitor.Folder(path);
    }
  }
  return succeeded;
}

}  // namespace file
