// SPDX-License-Identifier: MIT
// zt tree: whole folders. What is deleted is deleted, so every argument is looked at closely first.
#include <ZERATools.h>

#include <algorithm>

#include "arguments.h"
#include "console.h"
#include "progress.h"

namespace zt {
namespace {

constexpr unsigned int largestUint = 4294967295;

// "C:\" or "\\server\share\": the whole of a drive.
bool IsRoot(const std::wstring& folder) {
  return std::ranges::count(folder, L'\\') <= (folder.starts_with(L"\\\\") ? 4 : 1);
}

bool SameText(const std::wstring& first, const std::wstring& second) {
  return ::CompareStringOrdinal(first.data(), static_cast<int>(first.size()), second.data(),
                                static_cast<int>(second.size()), TRUE) == CSTR_EQUAL;
}

bool IsInside(const std::wstring& folder, const std::wstring& start) {
  return folder.size() >= start.size() && SameText(folder.substr(0, start.size()), start);
}

// The library takes the last part of a path without a final backslash for a file name and works on
// the folder above, so only the full path of a folder, written as such, will do.
const std::wstring& Folder(const Arguments& arguments, std::size_t at) {
  const std::wstring& folder = arguments.Path(at);
  if (!folder.ends_with(L'\\')) {
    arguments.Reject(at, L"does not end in a backslash, and would mean the folder above it");
  }
  const std::wstring full = arguments.FullPath(at);
  if (full != folder) arguments.Reject(at, L"is not a full path; it would be " + full);
  return folder;
}

bool Missing(const std::wstring& folder) {
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY) return false;
  Complain(L"there is no folder " + folder);
  return true;
}

const std::wstring& FolderToDeleteFrom(const Arguments& arguments) {
  const std::wstring& folder = Folder(arguments, 0);
  if (IsRoot(folder)) arguments.Reject(0, L"is a whole drive");
  return folder;
}

// One extension: a period and characters that an extension can have.
bool IsExtension(std::wstring_view text) {
  return text.size() >= 2 && text.size() <= longestPart && text[0] == L'.' &&
         text.find_first_of(L".*?\\/:\"<>|", 1) == text.npos;
}

Exit Report(bool success, const std::wstring& what) {
  if (success) {
    PrintLine(what);
  } else {
    Complain(what);
  }
  return success ? done : no;
}

Exit Delete(const Arguments& arguments) {
  const std::wstring& start = FolderToDeleteFrom(arguments);
  std::wstring filter = arguments.Text(1);
  const bool all = filter == L"*.*" || filter == L".*";
  if (filter.starts_with(L"*.")) filter.erase(0, 1);
  if (!all && !IsExtension(filter)) {
    arguments.Reject(1, L"is neither an extension such as .log nor *.* for every file");
  }
  if (Missing(start)) return no;
  const Progress progress(L"deleting");
  const int success = ZERA_TOOLS_FILE_DELETE_ALL_UC(start.c_str(), arguments.Text(1).c_str());
  const std::wstring what =
      (all ? std::wstring(L"all files") : L"all " + filter + L" files") + L" under " + start;
  return success ? Report(true, L"deleted " + what + L" and the folders that this left empty")
                 : Report(false, L"could not delete " + what + L"; the others are gone");
}

// Seconds, or a count with a unit: "30d".
unsigned int Age(const Arguments& arguments, std::size_t at) {
  const std::wstring& text = arguments.Text(at);
  constexpr std::pair<wchar_t, unsigned int> units[] = {{L's', 1}, {L'm', 60}, {L'h', 3600}, {L'd', 86400}};
  std::uint64_t scale = 1;
  std::wstring_view digits = text;
  for (const auto& [unit, seconds] : units) {
    if (digits.ends_with(unit)) {
      scale = seconds;
      digits.remove_suffix(1);
      break;
    }
  }
  std::uint64_t value = 0;
  bool valid = !digits.empty() && digits.size() <= 10;
  for (const wchar_t one : digits) {
    valid = valid && one >= L'0' && one <= L'9';
    value = value * 10 + static_cast<std::uint64_t>(one - L'0');
  }
  if (!valid || value * scale > largestUint) {
    arguments.Reject(at, L"is not an age: seconds, or a number with m, h or d, up to 4294967295 seconds");
  }
  return static_cast<unsigned int>(value * scale);
}

Exit Prune(const Arguments& arguments) {
  const std::wstring& start = FolderToDeleteFrom(arguments);
  const std::wstring& filter = arguments.Text(1);
  // "*.log" would match nothing here, silently.
  if (filter != L"*.*" && !IsExtension(filter)) {
    arguments.Reject(1, L"is neither an extension such as .log nor *.* for every file");
  }
  const unsigned int age = Age(arguments, 2);
  if (Missing(start)) return no;
  int* const abortFlag = AbortFlag();
  const Progress progress(L"deleting (Ctrl+C stops)");
  const int success = ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(start.c_str(), filter.c_str(), age, abortFlag);
  const std::wstring what = (filter == L"*.*" ? std::wstring(L"all files") : L"all " + filter + L" files") +
                            L" under " + start + L" created more than " + std::to_wstring(age) + L" s ago";
  if (static_cast<const volatile int&>(*abortFlag)) {
    return Report(false, L"stopped on request before all was looked at; some files may be deleted");
  }
  return success ? Report(true, L"deleted " + what + L" and old folders that this left empty")
                 : Report(false, L"could not delete " + what + L"; the others are gone");
}

Exit Copy(const Arguments& arguments) {
  const std::wstring& start = Folder(arguments, 0);
  const std::wstring& destination = Folder(arguments, 1);
  const std::wstring& mode = arguments.Text(2);
  if (mode != L"keep" && mode != L"overwrite") arguments.Reject(2, L"is neither keep nor overwrite");
  // The walk would find its own copies and copy them in turn.
  if (IsInside(destination, start)) arguments.Reject(1, L"lies inside " + start);
  if (Missing(start)) return no;
  const Progress progress(L"copying");
  const int success = ZERA_TOOLS_FILE_COPY_ALL_UC(start.c_str(), destination.c_str(), mode == L"overwrite");
  return success ? Report(true, L"copied the tree " + start + L" to " + destination +
                                    (mode == L"keep" ? L", keeping files that were there"
                                                     : L", replacing files that were there"))
                 : Report(false, L"could not copy the tree " + start);
}

const Command commands[] = {
    {L"delete", L"START FILTER", L"Deletes files by extension, and folders left empty",
     L"Works through START and every folder below it. START is the full path of a folder and\n"
     L"ends in a backslash; the folder itself stays. FILTER is an extension such as .log (upper\n"
     L"or lower case), or *.* for every file. There is no way back.\n",
     L"zt tree delete C:\\ProgramData\\Viewer\\cache\\ .tmp\n"
     L"deleted all .tmp files under C:\\ProgramData\\Viewer\\cache\\ and the folders that this left empty",
     L"ZERA_TOOLS_FILE_DELETE_ALL_UC", Delete},
    {L"prune", L"START FILTER AGE", L"The same, for what was created more than AGE ago",
     L"Works through START and every folder below it. START is the full path of a folder and\n"
     L"ends in a backslash; the folder itself stays. FILTER is an extension such as .log (upper\n"
     L"or lower case), or *.* for every file. AGE is in seconds, or a number with m, h or d for\n"
     L"minutes, hours or days; the time of creation counts. Ctrl+C stops before the next entry.\n",
     L"zt tree prune C:\\ProgramData\\Viewer\\logs\\ .log 30d\n"
     L"deleted all .log files under C:\\ProgramData\\Viewer\\logs\\ created more than 2592000 s ago and old "
     L"folders "
     L"that this left empty",
     L"ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC", Prune},
    {L"copy", L"START DESTINATION MODE", L"Copies a tree into another folder",
     L"START and DESTINATION are full paths of folders and end in a backslash; DESTINATION is\n"
     L"created if it is missing and lies outside START. MODE keep leaves files alone that are\n"
     L"already there, overwrite replaces them. The library does not report single files that\n"
     L"could not be copied: check the destination.\n",
     L"zt tree copy C:\\Prog\\Viewer\\template\\ D:\\project\\ keep\n"
     L"copied the tree C:\\Prog\\Viewer\\template\\ to D:\\project\\, keeping files that were there",
     L"ZERA_TOOLS_FILE_COPY_ALL_UC", Copy},
};

}  // namespace

const Group treeGroup = {
    L"tree", L"Whole folders: delete by extension, prune by age, copy",
    L"Links to other folders are walked like folders: keep them out of trees you delete from.\n", commands};

}  // namespace zt
