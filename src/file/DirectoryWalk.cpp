// SPDX-License-Identifier: MIT
#include "DirectoryWalk.h"

#include "PathOperations.h"

namespace file {

// A start path without drive and directory would search the current folder, whatever that is at the
// moment; so would an empty one, and "*.*". None of them is walked.
StartSearch::StartSearch(const wchar_t* startPath) {
  const std::size_t length = startPath ? Length(startPath, kMostPath + 1) : 0;
  const Parts<wchar_t> parts = Split(Text<wchar_t>(startPath, length), LeadBytes());
  const std::size_t folder = parts.drive.size() + parts.directory.size();
  if (length > kMostPath || !parts.Fit() || folder == 0 || folder + 3 >= _MAX_PATH) return;
  std::wmemcpy(pattern_, startPath, folder);
  std::wmemcpy(pattern_ + folder, L"*.*", 4);
}

bool IsFolderLink(const CFileFind& finder, const wchar_t* path) {
  if (!finder.MatchesMask(FILE_ATTRIBUTE_REPARSE_POINT)) return false;
  // Folders of a cloud drive carry the attribute too, and are no links; the kind of the reparse point
  // tells. Where it cannot be had the folder is taken for a link, which loses nothing.
  WIN32_FIND_DATAW found;
  const HANDLE search = ::FindFirstFileW(path, &found);
  if (search == INVALID_HANDLE_VALUE) return true;
  ::FindClose(search);
  return found.dwReserved0 == 0 || IsReparseTagNameSurrogate(found.dwReserved0);
}

}  // namespace file
