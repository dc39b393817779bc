// SPDX-License-Identifier: MIT
#include "tree_plan.h"

#include <ctime>

#include "arguments.h"
#include "failure.h"

namespace zt {
namespace {

bool IsFolder(const WIN32_FIND_DATAW& entry) {
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

class Planner {
 public:
  Planner(const DeletionRule& rule, Deletion& plan) : rule_(rule), plan_(plan) {}

  // How a folder will be after its turn.
  struct Turn {
    bool succeeded = true;  // without a failure, for only then the library removes the folder
    bool empty = true;
  };

  Turn Walk(const std::wstring& folder) {
    Turn turn;
    if (folder.size() + 3 >= MAX_PATH) {
      // Not listed by the library, which tries to remove it all the same.
      turn.empty = IsReallyEmpty(folder);
      return turn;
    }
    ForEachEntry(folder, [&](const WIN32_FIND_DATAW& entry) {
      if (IsFolder(entry)) {
        turn.empty &= Folder(folder + entry.cFileName + L"\\", entry, turn.succeeded);
      } else {
        turn.empty &= File(folder + entry.cFileName, entry, turn.succeeded);
      }
    });
    return turn;
  }

 private:
  static bool IsReallyEmpty(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = ::FindFirstFileW((L"\\\\?\\" + folder + L"*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return true;
    bool empty = true;
    do {
      const std::wstring name = entry.cFileName;
      empty &= name == L"." || name == L"..";
    } while (empty && ::FindNextFileW(search, &entry));
    ::FindClose(search);
    return empty;
  }

  // Both: whether it goes.
  bool Folder(const std::wstring& folder, const WIN32_FIND_DATAW& entry, bool& succeeded) {
    if (IsFolderLink(entry)) return false;
    const Turn turn = Walk(folder);
    succeeded &= turn.succeeded;
    if (!turn.succeeded || !turn.empty || !rule_.IsOld(entry.ftCreationTime)) return false;
    plan_.folders.push_back(folder);
    return true;
  }

  bool File(const std::wstring& path, const WIN32_FIND_DATAW& entry, bool& succeeded) {
    if (!rule_.Takes(entry.cFileName) || !rule_.IsOld(entry.ftCreationTime)) return false;
    const bool tooLong = path.size() >= MAX_PATH;
    if (tooLong || entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY) {
      const DWORD error = tooLong ? ERROR_FILENAME_EXCED_RANGE : ERROR_ACCESS_DENIED;
      plan_.left.push_back({path, error});
      succeeded = false;
      return false;
    }
    plan_.files.push_back(path);
    return true;
  }

  const DeletionRule& rule_;
  Deletion& plan_;
};

// A folder's creation time may have changed with its contents: some file systems keep no other time.
bool IsYoung(const std::wstring& folder, const DeletionRule& rule) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  return ::GetFileAttributesExW(folder.c_str(), GetFileExInfoStandard, &data) &&
         !rule.IsOld(data.ftCreationTime);
}

}  // namespace

bool DeletionRule::Takes(const std::wstring& name) const {
  if (extension.empty()) return true;
  const std::wstring own = name.substr(name.size() - Measure(name).extension);
  std::wstring folded[] = {own, extension};
  for (std::wstring& text : folded) ::CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
  return folded[0] == folded[1];
}

bool DeletionRule::IsOld(const FILETIME& created) const {
  if (!age) return true;
  constexpr std::int64_t ticksPerSecond = 10000000, until1970 = 11644473600;
  const std::int64_t ticks = static_cast<std::int64_t>(created.dwHighDateTime) << 32 | created.dwLowDateTime;
  return std::time(nullptr) - (ticks / ticksPerSecond - until1970) > static_cast<std::int64_t>(*age);
}

bool IsFolderLink(const WIN32_FIND_DATAW& entry) {
  if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)) return false;
  // Folders of a cloud drive carry the attribute too, and are no links.
  return entry.dwReserved0 == 0 || IsReparseTagNameSurrogate(entry.dwReserved0);
}

Deletion PlanDeletion(const std::wstring& start, const DeletionRule& rule) {
  Deletion plan;
  Planner(rule, plan).Walk(start);
  return plan;
}

Deleted CompareWithDisk(const Deletion& plan, const DeletionRule& rule) {
  Deleted result;
  const auto check = [&](const std::wstring& path, std::size_t& gone) {
    if (IsThere(path)) {
      result.left.push_back({path, DeleteError(path)});
    } else {
      ++gone;
    }
  };
  for (const std::wstring& file : plan.files) check(file, result.files);
  for (const Left& left : plan.left) check(left.path, result.files);
  for (const std::wstring& folder : plan.folders) {
    if (!IsThere(folder)) {
      ++result.folders;
      continue;
    }
    // What holds something that is named already needs no mention of its own.
    bool named = false;
    for (const Left& left : result.left) named |= left.path.starts_with(folder);
    if (named || IsYoung(folder, rule)) continue;
    const DWORD error = DeleteError(folder);
    result.left.push_back({folder, error ? error : ERROR_DIR_NOT_EMPTY});
  }
  return result;
}

std::wstring Counted(std::size_t count, const wchar_t* noun) {
  return std::to_wstring(count) + L" " + noun + (count == 1 ? L"" : L"s");
}

}  // namespace zt
