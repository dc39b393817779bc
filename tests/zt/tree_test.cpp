// SPDX-License-Identifier: MIT
// Whole folders from the command line: what is deleted or copied, and what stays.
#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <set>

#include "Zt.h"
#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace {

using test::Result;
using test::Zt;
using Names = std::vector<std::wstring>;

// Creation counts; Wine keeps no other time of it than the modification.
void MakeOld(const std::wstring& path, int seconds) {
  FILETIME time;
  ::GetSystemTimeAsFileTime(&time);
  ULARGE_INTEGER ticks = {{time.dwLowDateTime, time.dwHighDateTime}};
  ticks.QuadPart -= static_cast<ULONGLONG>(seconds) * 10000000;
  time = {ticks.LowPart, ticks.HighPart};
  const HANDLE file = ::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  EXPECT_TRUE(::SetFileTime(file, &time, nullptr, &time));
  ::CloseHandle(file);
}

class ZtTree : public testing::Test {
 protected:
  ZtTree() {
    folder.Folder(L"logs");
    folder.Folder(L"logs\\deep");
    folder.File(L"logs\\old.log", "old");
    folder.File(L"logs\\new.LOG", "new");
    folder.File(L"logs\\keep.txt", "keep");
    folder.File(L"logs\\deep\\old-\u65E5\u672C.log", "old");
    folder.File(L"outside.log", "outside");
    MakeOld(folder / L"logs\\old.log", 7200);
    MakeOld(folder / L"logs\\deep\\old-\u65E5\u672C.log", 7200);
    MakeOld(folder / L"outside.log", 7200);
  }

  const test::TempFolder folder;
  const std::wstring logs = folder / L"logs\\";
};

TEST_F(ZtTree, DeletesByExtension) {
  const char* counts[] = {"deleted 3 files and 1 folder under ", "deleted 0 files and 0 folders under "};
  int turn = 0;
  for (const wchar_t* filter : {L".log", L"*.LOG"}) {
    const Result result = Zt({L"tree", L"delete", logs, filter});
    EXPECT_EQ(0u, result.exit) << result;
    EXPECT_EQ(counts[turn++] + test::Utf8(logs) + "\r\n", result.out);
    EXPECT_EQ("", result.err);
    EXPECT_EQ((Names{L"logs\\", L"logs\\keep.txt", L"outside.log"}), folder.Entries());
  }
  EXPECT_EQ("deleted 1 file and 0 folders under " + test::Utf8(logs) + "\r\n",
            Zt({L"tree", L"delete", logs, L"*.*"}).out);
  EXPECT_EQ((Names{L"logs\\", L"outside.log"}), folder.Entries());
}

// The library removes them, so the command says so, before and afterwards.
TEST_F(ZtTree, FoldersThatWereEmptyBeforeGoToo) {
  folder.Folder(L"logs\\empty");
  folder.Folder(L"logs\\empty\\inner");
  const Names before = folder.Entries();
  EXPECT_EQ(test::Utf8(L"would delete " + logs + L"empty\\inner\\\r\nwould delete " + logs +
                       L"empty\\\r\nwould delete 0 files and 2 folders under " + logs + L"\r\n"),
            Zt({L"tree", L"delete", L"--dry-run", logs, L".xyzq"}).out);
  EXPECT_EQ(before, folder.Entries());
  EXPECT_EQ("deleted 0 files and 2 folders under " + test::Utf8(logs) + "\r\n",
            Zt({L"tree", L"delete", logs, L".xyzq"}).out);
  EXPECT_FALSE(test::Exists(logs + L"empty"));
}

TEST_F(ZtTree, PrunesByAge) {
  const Names all = folder.Entries();
  EXPECT_EQ(0u, Zt({L"tree", L"prune", logs, L".log", L"3h"}).exit);
  EXPECT_EQ(all, folder.Entries());
  const Result result = Zt({L"tree", L"prune", logs, L".log", L"90m"});
  EXPECT_EQ(0u, result.exit) << result;
  EXPECT_EQ("deleted 2 files and 0 folders under " + test::Utf8(logs) + "\r\n", result.out);
  EXPECT_EQ((Names{L"logs\\", L"logs\\deep\\", L"logs\\keep.txt", L"logs\\new.LOG", L"outside.log"}),
            folder.Entries());
  MakeOld(logs + L"keep.txt", 100);
  EXPECT_EQ(0u, Zt({L"tree", L"prune", logs, L"*.*", L"60s"}).exit);
  EXPECT_EQ((Names{L"logs\\", L"logs\\deep\\", L"logs\\new.LOG", L"outside.log"}), folder.Entries());
  MakeOld(logs + L"deep", 7200);
  EXPECT_EQ("deleted 0 files and 1 folder under " + test::Utf8(logs) + "\r\n",
            Zt({L"tree", L"prune", logs, L".log", L"1h"}).out);
  EXPECT_FALSE(test::Exists(logs + L"deep"));
}

// What the dry run lists is what goes: files and folders of all kinds, some young, some old.
TEST_F(ZtTree, DryRunListsWhatGoes) {
  for (const wchar_t* name : {L"a", L"a\\b", L"a\\b\\c", L"a\\mixed", L"young"}) {
    folder.Folder(std::wstring(L"logs\\") + name);
  }
  for (const wchar_t* name : {L"a\\1.log", L"a\\b\\2.Log", L"a\\b\\c\\3.log", L"a\\mixed\\4.log",
                              L"a\\mixed\\5.txt", L".log", L"x.log.txt", L"log", L"a\\two.parts.log"}) {
    MakeOld(folder.File(std::wstring(L"logs\\") + name, "x"), 7200);
  }
  const Names before = folder.Entries();
  for (const Names& command : {Names{L"prune", L".log", L"1h"}, Names{L"delete", L"*.LOG"},
                               Names{L"prune", L"*.*", L"1h"}, Names{L"delete", L"*.*"}}) {
    Names dry = {L"tree", command[0], L"--dry-run", logs}, real = {L"tree", command[0], logs};
    dry.insert(dry.end(), command.begin() + 1, command.end());
    real.insert(real.end(), command.begin() + 1, command.end());
    const Names start = folder.Entries();
    const Result listed = Zt(dry);
    EXPECT_EQ(0u, listed.exit) << listed;
    EXPECT_EQ("", listed.err);
    EXPECT_EQ(start, folder.Entries());
    const Result result = Zt(real);
    EXPECT_EQ(0u, result.exit) << result;
    std::set<std::string> gone, expected;
    const Names after = folder.Entries();
    for (const std::wstring& name : start) {
      if (std::ranges::find(after, name) == after.end())
        gone.insert("would delete " + test::Utf8(folder / name));
    }
    auto lines = test::Lines(listed.out);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ("would " + result.out.substr(0, 6) + result.out.substr(7), lines.back() + "\r\n");
    lines.pop_back();
    expected.insert(lines.begin(), lines.end());
    EXPECT_EQ(expected, gone);
  }
  EXPECT_EQ((Names{L"logs\\", L"outside.log"}), folder.Entries());
}

// A folder that holds itself, by a link that the platform does not show as one.
std::wstring endless;
int listed;
std::size_t longest;
const HANDLE kEndless = &listed;
HANDLE WINAPI FindEndless(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
  constexpr int kTooMany = 1000;  // so that a walk without an end is seen, and ends
  const std::wstring wanted = pattern;
  if (wanted.find(endless) == wanted.npos) {
    return test::Platform<decltype(FindFirstFileW)>(L"kernel32.dll", "FindFirstFileW")(pattern, found);
  }
  if (wanted.starts_with(endless)) longest = std::max(longest, wanted.size());
  if (++listed > kTooMany) return ::SetLastError(ERROR_FILE_NOT_FOUND), INVALID_HANDLE_VALUE;
  *found = {};
  found->dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
  std::wcscpy(found->cFileName, L"loop");
  return kEndless;
}
BOOL WINAPI FindNoMore(HANDLE search, WIN32_FIND_DATAW* found) {
  if (search == kEndless) return ::SetLastError(ERROR_NO_MORE_FILES), FALSE;
  return test::Platform<decltype(FindNextFileW)>(L"kernel32.dll", "FindNextFileW")(search, found);
}
BOOL WINAPI FindEnd(HANDLE search) {
  return search == kEndless || test::Platform<decltype(FindClose)>(L"kernel32.dll", "FindClose")(search);
}

// As far as the library would go: no path has more than 259 characters.
TEST_F(ZtTree, DryRunsEndInAFolderThatHoldsItself) {
  const HMODULE program = ::GetModuleHandleW(nullptr);
  endless = logs;
  const std::size_t folders = (259 - logs.size() - 3) / 5 + 1;  // of five characters each, and "*.*"
  for (const Names& command :
       {Names{L"delete", L"--dry-run", logs, L".log"}, Names{L"prune", L"--dry-run", logs, L".log", L"0s"},
        Names{L"copy", L"--dry-run", logs, folder / L"copy\\", L"keep"}}) {
    SCOPED_TRACE(test::Utf8(command[0]));
    Names arguments = {L"tree"};
    arguments.insert(arguments.end(), command.begin(), command.end());
    listed = 0;
    longest = 0;
    Result result;
    {
      const test::ImportHook hooks[] = {{"FindFirstFileW", &FindEndless, program},
                                        {"FindNextFileW", &FindNoMore, program},
                                        {"FindClose", &FindEnd, program}};
      result = test::ZtHere(arguments);
    }
    EXPECT_EQ(0u, result.exit) << result;
    EXPECT_LT(longest, 260u);
    EXPECT_GE(longest, 255u);
    // A deletion looks once more into the deepest folder, which the library would try to remove unseen.
    EXPECT_EQ(listed, static_cast<int>(folders) + (command[0] == L"copy" ? 0 : 1));
  }
}

// Only with --dry-run here, so that nothing can go wrong.
TEST_F(ZtTree, SystemFoldersAreRefused) {
  wchar_t system[MAX_PATH], profile[MAX_PATH];
  ::GetWindowsDirectoryW(system, MAX_PATH);
  ::GetEnvironmentVariableW(L"USERPROFILE", profile, MAX_PATH);
  const std::wstring windows = std::wstring(system) + L"\\", user = std::wstring(profile) + L"\\";
  std::wstring lower = windows;
  ::CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
  for (const std::wstring& start :
       {windows, lower, windows + L"System32\\", windows + L"System32\\drivers\\", user,
        user.substr(0, user.rfind(L'\\', user.size() - 2) + 1), user + L"AppData\\Roaming\\",
        std::wstring(L"C:\\ProgramData\\"), std::wstring(L"C:\\Program Files\\"),
        std::wstring(L"C:\\Users\\Public\\"), std::wstring(L"X:\\$Recycle.Bin\\")}) {
    SCOPED_TRACE(test::Utf8(start));
    const Result deleted = Zt({L"tree", L"delete", L"--dry-run", start, L".xyzq"});
    EXPECT_EQ(2u, deleted.exit) << deleted;
    EXPECT_NE(deleted.err.npos, deleted.err.find("--force")) << deleted;
    const Result copied = Zt({L"tree", L"copy", L"--dry-run", logs, start, L"keep"});
    EXPECT_EQ(2u, copied.exit) << copied;
  }
  EXPECT_EQ(2u, Zt({L"tree", L"prune", L"--dry-run", windows, L".xyzq", L"1d"}).exit);
  EXPECT_EQ(0u,
            Zt({L"tree", L"prune", L"--dry-run", L"--force", windows + L"System32\\", L".xyzq", L"1d"}).exit);
  // Applications keep their own folders in these.
  for (const wchar_t* start : {L"C:\\ProgramData\\Viewer\\logs\\", L"C:\\Program Files\\Viewer\\cache\\"}) {
    EXPECT_EQ(1u, Zt({L"tree", L"delete", L"--dry-run", start, L".xyzq"}).exit);
  }
}

TEST_F(ZtTree, CopiesKeepingOrReplacing) {
  const std::wstring copy = folder / L"copy\\";
  const auto tree = [&](const wchar_t* mode, bool dry) {
    Names arguments = {L"tree", L"copy", logs, copy, mode};
    if (dry) arguments.insert(arguments.begin() + 2, L"--dry-run");
    const Result result = Zt(arguments);
    EXPECT_EQ(0u, result.exit) << result;
    EXPECT_EQ("", result.err);
    return result.out;
  };
  EXPECT_NE(std::string::npos, tree(L"keep", true).find("would create " + test::Utf8(copy) + "new.LOG\r\n"));
  EXPECT_FALSE(test::Exists(copy));
  EXPECT_EQ("copied 4 files and 1 folder to " + test::Utf8(copy) + "\r\n", tree(L"keep", false));
  EXPECT_EQ("old", test::ReadBytes(copy + L"deep\\old-\u65E5\u672C.log"));
  test::WriteBytes(copy + L"keep.txt", "mine");
  EXPECT_EQ("copied 0 files and 0 folders to " + test::Utf8(copy) + ", 4 files kept\r\n",
            tree(L"keep", false));
  EXPECT_EQ("mine", test::ReadBytes(copy + L"keep.txt"));
  EXPECT_NE(std::string::npos,
            tree(L"overwrite", true).find("would replace " + test::Utf8(copy) + "keep.txt\r\n"));
  EXPECT_EQ("mine", test::ReadBytes(copy + L"keep.txt"));
  EXPECT_EQ("copied 4 files and 0 folders to " + test::Utf8(copy) + "\r\n", tree(L"overwrite", false));
  EXPECT_EQ("keep", test::ReadBytes(copy + L"keep.txt"));
}

TEST_F(ZtTree, CopyNamesWhatFailed) {
  const std::wstring copy = folder.Folder(L"copy");
  // The same size: only the contents show that it was not replaced.
  test::WriteBytes(copy + L"keep.txt", "mine");
  const HANDLE held = ::CreateFileW((copy + L"keep.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  const Result result = Zt({L"tree", L"copy", logs, copy, L"overwrite"});
  ::CloseHandle(held);
  EXPECT_EQ(1u, result.exit);
  EXPECT_EQ("", result.out);
  EXPECT_TRUE(result.err.starts_with("zt: could not copy " + test::Utf8(logs) + "keep.txt to ")) << result;
  EXPECT_NE(result.err.npos, result.err.find("(error 32)")) << result;
  EXPECT_NE(result.err.npos, result.err.find("copied 3 files and 1 folder to ")) << result;
  EXPECT_EQ("mine", test::ReadBytes(copy + L"keep.txt"));
}

TEST_F(ZtTree, FailuresSayWhat) {
  for (const auto& arguments : {Names{L"tree", L"delete", folder / L"none\\", L"*.*"},
                                Names{L"tree", L"prune", folder / L"none\\", L"*.*", L"0s"},
                                Names{L"tree", L"copy", folder / L"none\\", folder / L"copy\\", L"keep"},
                                Names{L"tree", L"delete", folder / L"outside.log\\", L"*.*"}}) {
    const Result result = Zt(arguments);
    EXPECT_EQ(1u, result.exit);
    EXPECT_EQ("", result.out);
    EXPECT_TRUE(result.err.starts_with("zt: there is no folder " + test::Utf8(arguments[2]) + ": "))
        << result;
    EXPECT_TRUE(result.err.ends_with(")\r\n")) << result;
  }
  const HANDLE held = ::CreateFileW((logs + L"deep\\held.log").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, CREATE_ALWAYS, 0, nullptr);
  ::SetFileAttributesW((logs + L"old.log").c_str(), FILE_ATTRIBUTE_READONLY);
  const Result result = Zt({L"tree", L"delete", logs, L".log"});
  ::CloseHandle(held);
  EXPECT_EQ(1u, result.exit);
  EXPECT_EQ("", result.out);
  const auto lines = test::Lines(result.err);
  ASSERT_EQ(3u, lines.size()) << result;
  EXPECT_TRUE(lines[0].starts_with("zt: could not delete " + test::Utf8(logs) + "deep\\held.log: "))
      << lines[0];
  EXPECT_TRUE(lines[0].ends_with("(error 32)")) << lines[0];
  EXPECT_TRUE(lines[1].starts_with("zt: could not delete " + test::Utf8(logs) + "old.log: ")) << lines[1];
  EXPECT_TRUE(lines[1].ends_with("(error 5)")) << lines[1];
  EXPECT_EQ("zt: deleted 2 files and 0 folders under " + test::Utf8(logs), lines[2]);
  EXPECT_EQ((Names{L"logs\\", L"logs\\deep\\", L"logs\\deep\\held.log", L"logs\\keep.txt", L"logs\\old.log",
                   L"outside.log"}),
            folder.Entries());
}

}  // namespace
