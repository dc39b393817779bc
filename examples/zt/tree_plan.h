// SPDX-License-Identifier: MIT
// tree_plan.h: what deleting in a tree will come to, found by a walk with the library's own rules that
// changes nothing; and, afterwards, what has come of it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace zt {

struct DeletionRule {
  /// With its period; empty for every file.
  std::wstring extension;
  /// Only what was created more than this many seconds ago.
  std::optional<unsigned int> age;

  bool Takes(const std::wstring& name) const;
  bool IsOld(const FILETIME& created) const;
};

/// What stays, and why.
struct Left {
  std::wstring path;
  DWORD error;
};

/// Everything that the library will try to delete; folders end in a backslash and stand behind what
/// they hold.
struct Deletion {
  std::vector<std::wstring> files, folders;
  /// Files that match, but are known to stay.
  std::vector<Left> left;

  bool IsEmpty() const { return files.empty() && folders.empty(); }
};

Deletion PlanDeletion(const std::wstring& start, const DeletionRule& rule);

/// The plan against the disk: how much of it is gone, and what is still there though it should not be.
struct Deleted {
  std::size_t files = 0, folders = 0;
  std::vector<Left> left;
};
Deleted CompareWithDisk(const Deletion& plan, const DeletionRule& rule);

/// Whether an entry is a link to a folder elsewhere. The library passes over these.
bool IsFolderLink(const WIN32_FIND_DATAW& entry);

/// Calls `visit` for each entry of a folder (with a final backslash) but "." and "..". Folders whose
/// pattern is too long for the library are not listed, as it does not list them.
template <class Visit>
void ForEachEntry(const std::wstring& folder, Visit visit) {
  const std::wstring pattern = folder + L"*.*";
  if (pattern.size() >= MAX_PATH) return;
  WIN32_FIND_DATAW entry;
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = entry.cFileName;
    if (name != L"." && name != L"..") visit(entry);
  } while (::FindNextFileW(search, &entry));
  ::FindClose(search);
}

/// "1 file", "2 folders".
std::wstring Counted(std::size_t count, const wchar_t* noun);

}  // namespace zt
