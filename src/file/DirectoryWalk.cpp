// SPDX-License-Identifier: MIT
#include "DirectoryWalk.h"

#include "base/QuietErrors.h"

namespace file {

// KEPT FOR HOSTS: any name without a folder means the current folder's entries, as a host that changed
// into its folder expects. Only "*.*" itself is taken for a mistake.
StartSearch::StartSearch(const wchar_t* startPath) {
  const std::size_t length = startPath ? Length(startPath, _MAX_PATH) : 0;
  const Text<wchar_t> text(startPath, length);
  if (length == 0 || length >= _MAX_PATH || text == L"*.*") return;
  const Parts<wchar_t> parts = Split(text, LeadBytes());
  const std::size_t folder = parts.drive.size() + parts.directory.size();
  if (!parts.Fit() || folder + 3 >= _MAX_PATH) return;
  std::wmemcpy(pattern_, startPath, folder);
  std::wmemcpy(pattern_ + folder, L"*.*", 4);
}

bool IsFolderLink(const CFileFind& finder, const wchar_t* path) {
  if (!finder.MatchesMask(FILE_ATTRIBUTE_REPARSE_POINT)) return false;
  // Folders of a cloud drive carry the attribute too, and are no links; the kind of the reparse point
  // tells. Where it cannot be had the folder is taken for a link, which loses nothing.
  WIN32_FIND_DATAW found;
  const base::SearchHandle search(base::Quietly([&] { return ::FindFirstFileW(path, &found); }));
  if (!search) return true;
  return found.dwReserved0 == 0 || IsReparseTagNameSurrogate(found.dwReserved0);
}

}  // namespace file
