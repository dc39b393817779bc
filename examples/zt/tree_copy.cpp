// SPDX-License-Identifier: MIT
// zt tree copy: a tree into another folder. The library's answer does not tell what was copied, so the
// destination is looked at before and afterwards.
#include <ZERATools.h>

#include <optional>

#include "console.h"
#include "failure.h"
#include "progress.h"
#include "tree.h"
#include "tree_plan.h"

namespace zt {
namespace {

using Status = std::optional<WIN32_FILE_ATTRIBUTE_DATA>;

Status StatusOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return {};
  return data;
}

struct Copied {
  std::wstring from, to;
  Status before;  // of the target
};

struct CopyPlan {
  std::vector<Copied> files;
  std::vector<Copied> folders;
  std::size_t kept = 0;

  std::size_t Replaced() const {
    std::size_t count = 0;
    for (const Copied& file : files) count += file.before.has_value();
    return count;
  }
  std::size_t NewFolders() const {
    std::size_t count = 0;
    for (const Copied& folder : folders) count += !folder.before;
    return count;
  }
};

// As the library walks.
void Plan(const std::wstring& from, const std::wstring& to, bool keep, CopyPlan& plan) {
  ForEachEntry(from, [&](const WIN32_FIND_DATAW& entry) {
    const std::wstring name = entry.cFileName;
    const Status before = StatusOf(to + name);
    if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
      if (keep && before) {
        ++plan.kept;
      } else {
        plan.files.push_back({from + name, to + name, before});
      }
    } else if (!IsFolderLink(entry)) {
      plan.folders.push_back({from + name + L"\\", to + name + L"\\", before});
      Plan(from + name + L"\\", to + name + L"\\", keep, plan);
    }
  });
}

bool IsCopy(const Copied& file) {
  const Status from = StatusOf(file.from), to = StatusOf(file.to);
  if (!from || !to || from->nFileSizeLow != to->nFileSizeLow || from->nFileSizeHigh != to->nFileSizeHigh)
    return false;
  // A file that could not be replaced may have the same size.
  if (!file.before || ::CompareFileTime(&file.before->ftLastWriteTime, &to->ftLastWriteTime)) return true;
  return ZERA_TOOLS_FILE_COMPARE_UC(file.from.c_str(), file.to.c_str()) != 0;
}

DWORD CopyError(const Copied& file) {
  if (file.from.size() >= MAX_PATH || file.to.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
  const DWORD error = ReadError(file.from);
  return error ? error : WriteError(file.to);
}

std::wstring Summary(std::size_t files, std::size_t folders, const std::wstring& destination,
                     std::size_t kept) {
  return Counted(files, L"file") + L" and " + Counted(folders, L"folder") + L" to " + destination +
         (kept ? L", " + Counted(kept, L"file") + L" kept" : L"");
}

Exit ShowPlan(const CopyPlan& plan, const std::wstring& destination) {
  for (const Copied& folder : plan.folders) {
    if (!folder.before) PrintLine(L"would create " + folder.to);
  }
  for (const Copied& file : plan.files) {
    PrintLine((file.before ? L"would replace " : L"would create ") + file.to);
  }
  PrintLine(L"would copy " + Summary(plan.files.size(), plan.NewFolders(), destination, plan.kept));
  return done;
}

Exit Report(const CopyPlan& plan, const std::wstring& destination) {
  std::size_t files = 0, folders = 0, failed = 0;
  for (const Copied& folder : plan.folders) {
    if (folder.before) continue;
    if (StatusOf(folder.to)) {
      ++folders;
    } else {
      Complain(L"could not create " + folder.to, WriteError(folder.to));
      ++failed;
    }
  }
  for (const Copied& file : plan.files) {
    if (IsCopy(file)) {
      ++files;
    } else {
      Complain(L"could not copy " + file.from + L" to " + file.to, CopyError(file));
      ++failed;
    }
  }
  const std::wstring what = L"copied " + Summary(files, folders, destination, plan.kept);
  if (failed) {
    Complain(what);
    return no;
  }
  Confirm(what);
  return done;
}

// The walk would find its own copies and copy them in turn.
bool IsInside(const std::wstring& folder, const std::wstring& start) {
  return folder.size() >= start.size() &&
         ::CompareStringOrdinal(folder.data(), static_cast<int>(start.size()), start.data(),
                                static_cast<int>(start.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace

Exit CopyTree(const Arguments& arguments) {
  const std::wstring& start = TreeFolder(arguments, 0);
  const std::wstring& destination = TreeFolder(arguments, 1);
  const std::wstring& mode = arguments.Text(2);
  if (mode != L"keep" && mode != L"overwrite") arguments.Reject(2, L"is neither keep nor overwrite");
  if (IsInside(destination, start)) arguments.Reject(1, L"lies inside " + start);
  RefuseSystemFolder(arguments, 1);
  if (!IsTreeThere(start)) return no;
  CopyPlan plan;
  Plan(start, destination, mode == L"keep", plan);
  if (arguments.Has(L"--dry-run")) return ShowPlan(plan, destination);
  if (plan.Replaced() && !MayGoOn(arguments, L"replace " + Counted(plan.Replaced(), L"file") + L" under " +
                                                 destination + L"?")) {
    return no;
  }
  {
    const Progress progress(L"copying");
    ZERA_TOOLS_FILE_COPY_ALL_UC(start.c_str(), destination.c_str(), mode == L"overwrite");
  }
  return Report(plan, destination);
}

}  // namespace zt
