// SPDX-License-Identifier: MIT
// zt tree: whole folders. What is deleted is deleted, so every argument is looked at closely first.
#include "tree.h"

#include <ZERATools.h>

#include <algorithm>

#include "console.h"
#include "failure.h"
#include "progress.h"
#include "system_folders.h"
#include "tree_plan.h"

namespace zt {

const std::wstring& TreeFolder(const Arguments& arguments, std::size_t at) {
  const std::wstring& folder = arguments.Path(at);
  if (!folder.ends_with(L'\\')) {
    arguments.Reject(at, L"does not end in a backslash, and would mean the folder above it");
  }
  const std::wstring full = arguments.FullPath(at);
  if (full != folder) arguments.Reject(at, L"is not a full path; it would be " + full);
  return folder;
}

void RefuseSystemFolder(const Arguments& arguments, std::size_t at) {
  if (arguments.Has(L"--force")) return;
  const std::wstring special = SystemFolderAt(arguments.Text(at));
  if (!special.empty()) {
    arguments.Reject(
        at, L"is a folder of the system or of a user (" + special + L"); --force does it all the same");
  }
}

bool IsTreeThere(const std::wstring& folder) {
  DWORD error = ERROR_DIRECTORY;
  const DWORD attributes = ::GetFileAttributesW(folder.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY) return true;
  if (attributes == INVALID_FILE_ATTRIBUTES) error = ::GetLastError();
  Complain(L"there is no folder " + folder, error);
  return false;
}

bool MayGoOn(const Arguments& arguments, const std::wstring& question) {
  if (arguments.Has(L"--yes") || AskYes(question)) return true;
  Complain(L"nothing was changed");
  return false;
}

namespace {

constexpr unsigned int largestUint = 4294967295;

// "C:\" or "\\server\share\": the whole of a drive.
bool IsRoot(const std::wstring& folder) {
  return std::ranges::count(folder, L'\\') <= (folder.starts_with(L"\\\\") ? 4 : 1);
}

const std::wstring& FolderToDeleteFrom(const Arguments& arguments) {
  const std::wstring& folder = TreeFolder(arguments, 0);
  if (IsRoot(folder)) arguments.Reject(0, L"is a whole drive");
  RefuseSystemFolder(arguments, 0);
  return folder;
}

// One extension: a period and characters that an extension can have.
bool IsExtension(std::wstring_view text) {
  return text.size() >= 2 && text.size() <= longestPart && text[0] == L'.' &&
         text.find_first_of(L".*?\\/:\"<>|", 1) == text.npos;
}

std::wstring Question(const std::wstring& start, const Deletion& plan) {
  return L"delete " + Counted(plan.files.size(), L"file") + L" and " +
         Counted(plan.folders.size(), L"folder") + L" under " + start + L"?";
}

// What --dry-run shows.
Exit ShowPlan(const std::wstring& start, const Deletion& plan) {
  for (const auto* paths : {&plan.files, &plan.folders}) {
    for (const std::wstring& path : *paths) PrintLine(L"would delete " + path);
  }
  for (const Left& left : plan.left)
    PrintLine(L"would fail to delete " + left.path + L": " + Reason(left.error));
  PrintLine(L"would delete " + Counted(plan.files.size(), L"file") + L" and " +
            Counted(plan.folders.size(), L"folder") + L" under " + start);
  return done;
}

// What has come of the plan. The library's own answer says neither what failed nor how much went.
Exit Report(const std::wstring& start, const Deletion& plan, const DeletionRule& rule, bool succeeded,
            bool stopped) {
  Deleted result = CompareWithDisk(plan, rule);
  const std::wstring counts = L"deleted " + Counted(result.files, L"file") + L" and " +
                              Counted(result.folders, L"folder") + L" under " + start;
  if (stopped) {
    Complain(L"stopped on request before all was looked at; " + counts);
    return no;
  }
  for (const Left& left : result.left) {
    Complain(L"could not delete " + left.path +
                 (left.error ? L"" : L": somebody held it, but does no longer; try again"),
             left.error);
  }
  if (succeeded && result.left.empty()) {
    Confirm(counts);
    return done;
  }
  Complain(counts + (result.left.empty() ? L"; something else below it could not be deleted" : L""));
  return no;
}

Exit Delete(const Arguments& arguments) {
  const std::wstring& start = FolderToDeleteFrom(arguments);
  std::wstring filter = arguments.Text(1);
  const bool all = filter == L"*.*" || filter == L".*";
  if (filter.starts_with(L"*.")) filter.erase(0, 1);
  if (!all && !IsExtension(filter)) {
    arguments.Reject(1, L"is neither an extension such as .log nor *.* for every file");
  }
  if (!IsTreeThere(start)) return no;
  const DeletionRule rule = {all ? L"" : filter, {}};
  const Deletion plan = PlanDeletion(start, rule);
  if (arguments.Has(L"--dry-run")) return ShowPlan(start, plan);
  if (!plan.IsEmpty() && !MayGoOn(arguments, Question(start, plan))) return no;
  bool succeeded;
  {
    const Progress progress(L"deleting");
    succeeded = ZERA_TOOLS_FILE_DELETE_ALL_UC(start.c_str(), arguments.Text(1).c_str()) != 0;
  }
  return Report(start, plan, rule, succeeded, false);
}

// A count with its unit: "30d". Without one, a habit from elsewhere would make days of seconds.
unsigned int Age(const Arguments& arguments, std::size_t at) {
  const std::wstring& text = arguments.Text(at);
  constexpr std::pair<wchar_t, unsigned int> units[] = {{L's', 1}, {L'm', 60}, {L'h', 3600}, {L'd', 86400}};
  std::wstring_view digits = text;
  const auto* const unit =
      std::ranges::find_if(units, [&](const auto& one) { return digits.ends_with(one.first); });
  const bool hasUnit = unit != std::end(units);
  if (hasUnit) digits.remove_suffix(1);
  std::uint64_t value = 0;
  bool valid = !digits.empty() && digits.size() <= 10;
  for (const wchar_t one : digits) {
    valid = valid && one >= L'0' && one <= L'9';
    value = value * 10 + static_cast<std::uint64_t>(one - L'0');
  }
  if (valid && !hasUnit) arguments.Reject(at, L"has no unit: s, m, h or d, as in 30d");
  if (valid && value == 0 && unit->first != L's')
    arguments.Reject(at, L"is no age; for no age at all write 0s");
  if (!valid || value * unit->second > largestUint) {
    arguments.Reject(at, L"is not an age: a number with s, m, h or d, as in 30d, up to 4294967295s");
  }
  return static_cast<unsigned int>(value * unit->second);
}

Exit Prune(const Arguments& arguments) {
  const std::wstring& start = FolderToDeleteFrom(arguments);
  const std::wstring& filter = arguments.Text(1);
  // "*.log" would match nothing here, silently.
  if (filter != L"*.*" && !IsExtension(filter)) {
    arguments.Reject(1, L"is neither an extension such as .log nor *.* for every file");
  }
  const unsigned int age = Age(arguments, 2);
  if (!IsTreeThere(start)) return no;
  const DeletionRule rule = {filter == L"*.*" ? L"" : filter, age};
  const Deletion plan = PlanDeletion(start, rule);
  if (arguments.Has(L"--dry-run")) return ShowPlan(start, plan);
  if (!plan.IsEmpty() && !MayGoOn(arguments, Question(start, plan))) return no;
  int* const abortFlag = AbortFlag();
  bool succeeded;
  {
    const Progress progress(L"deleting (Ctrl+C stops)");
    succeeded = ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(start.c_str(), filter.c_str(), age, abortFlag) != 0;
  }
  return Report(start, plan, rule, succeeded, static_cast<const volatile int&>(*abortFlag) != 0);
}

#define ZT_RULES                                                                            \
  L"START is the full path of a folder and ends in a backslash; the folder itself stays.\n" \
  L"FILTER is an extension such as .log (upper or lower case), or *.* for every file.\n"
#define ZT_SAFEGUARDS                                                                            \
  L"--dry-run lists what would go and deletes nothing. On a terminal the command asks first; "   \
  L"--yes does not. Folders of the system and whole user profiles are refused without --force. " \
  L"There is no way back.\n"

const Command commands[] = {
    {L"delete", L"[--dry-run] [--yes] [--force] START FILTER",
     L"Deletes files by extension, and empty folders",
     L"Works through START and every folder below it, and removes each folder below START that is "
     L"empty after its turn: also one that was empty before. Links to folders are passed over, links "
     L"to files deleted like files.\n" ZT_RULES ZT_SAFEGUARDS,
     L"zt tree delete --yes C:\\ProgramData\\Viewer\\cache\\ .tmp\n"
     L"deleted 12 files and 1 folder under C:\\ProgramData\\Viewer\\cache\\",
     L"ZERA_TOOLS_FILE_DELETE_ALL_UC", Delete},
    {L"prune", L"[--dry-run] [--yes] [--force] START FILTER AGE",
     L"The same, for what was created more than AGE ago",
     L"Works through START and every folder below it, and removes each folder below START that is "
     L"empty after its turn and was itself created more than AGE ago: also one that was empty before. "
     L"Links to folders are passed over, links to files deleted like "
     L"files."
     L"\n" ZT_RULES L"AGE is a number with its unit: s, m, h or d for seconds, minutes, hours or days; 0s "
     L"takes all "
     L"but what was created this second. The time of creation counts, not that of the last change. "
     L"Ctrl+C stops before the next entry.\n" ZT_SAFEGUARDS,
     L"zt tree prune --yes C:\\ProgramData\\Viewer\\logs\\ .log 30d\n"
     L"deleted 40 files and 0 folders under C:\\ProgramData\\Viewer\\logs\\",
     L"ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC", Prune},
    {L"copy", L"[--dry-run] [--yes] [--force] START DESTINATION MODE", L"Copies a tree into another folder",
     L"START and DESTINATION are full paths of folders and end in a backslash; DESTINATION is "
     L"created if it is missing and lies outside START. MODE keep leaves files alone that are "
     L"already there, overwrite replaces them. Links to folders are passed over.\n"
     L"--dry-run lists what would be copied and copies nothing. On a terminal the command asks before it "
     L"replaces files; --yes does not. A DESTINATION that is a folder of the system or a whole user profile "
     L"is refused without --force.\n",
     L"zt tree copy C:\\App\\template\\ D:\\project\\ keep\n"
     L"copied 7 files and 2 folders to D:\\project\\, 1 file kept",
     L"ZERA_TOOLS_FILE_COPY_ALL_UC", CopyTree},
};

}  // namespace

const Group treeGroup = {L"tree", L"Whole folders: delete by extension, prune by age, copy", L"", commands};

}  // namespace zt
