// SPDX-License-Identifier: MIT
// Deleting the files of a tree by extension.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "CallLog.h"
#include "DirectoryApi.h"
#include "support/CodePage.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"

namespace {

using test::Names;

class DeletingAll : public test::Directories {};
ZERA_BOTH_VARIANTS(DeletingAll);

const Names kTree{L"a.log",       L"b.txt",       L"c",
                  L"sub\\",       L"sub\\d.LOG",  L"sub\\e.txt",
                  L"sub\\deep\\", L"empty\\",     L"sub\\deep\\f.log",
                  L"logs\\",      L"logs\\g.log", L"logs\\h.Log",
                  L"i.log.txt",   L".log"};

TEST_P(DeletingAll, EveryFileEmptiesTheTreeButKeepsItsTop) {
  for (const wchar_t* const filter : {L".*", L"*.*"}) {
    test::Plant(temp_, kTree);
    EXPECT_EQ(api_.DeleteAll(temp_.path(), filter), 1);
    EXPECT_EQ(temp_.Entries(), Names{});
  }
  EXPECT_TRUE(test::Exists(temp_.path().substr(0, temp_.path().size() - 1)));
}

TEST_P(DeletingAll, OneExtensionWhateverItsCase) {
  for (const wchar_t* const filter : {L".log", L"*.LOG", L".Log"}) {
    test::Plant(temp_, kTree);
    EXPECT_EQ(api_.DeleteAll(temp_.path(), filter), 1);
    EXPECT_EQ(temp_.Entries(), (Names{L"b.txt", L"c", L"i.log.txt", L"sub\\", L"sub\\e.txt"}))
        << "folders that are empty then are removed: " << test::Ansi(filter);
    EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 1);
  }
}

TEST_P(DeletingAll, FiltersThatMeanFilesWithoutExtension) {
  for (const wchar_t* const filter : {L"", L"*"}) {
    test::Plant(temp_, {L"a.log", L"c", L"sub\\", L"sub\\d", L"sub\\e.txt"});
    EXPECT_EQ(api_.DeleteAll(temp_.path(), filter), 1);
    EXPECT_EQ(temp_.Entries(), (Names{L"a.log", L"sub\\", L"sub\\e.txt"})) << test::Ansi(filter);
    EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 1);
  }
}

TEST_P(DeletingAll, FiltersThatMatchNothing) {
  test::Plant(temp_, {L"a.log", L"c", L"sub\\", L"sub\\d.log"});
  const Names before = temp_.Entries();
  for (const std::wstring& filter :
       {std::wstring(L"log"), std::wstring(L"**.log"), std::wstring(L".lo"), std::wstring(L".logs"),
        std::wstring(L"a.log"), std::wstring(L".*x"), std::wstring(L".l*"), std::wstring(L"?log"),
        L"." + std::wstring(255, L'x'), std::wstring(32767, L'x')}) {
    EXPECT_EQ(api_.DeleteAll(temp_.path(), filter), 1) << filter.size();
    EXPECT_EQ(temp_.Entries(), before) << test::Ansi(filter.substr(0, 20));
  }
}

TEST_P(DeletingAll, CaseIsFoldedBeyondTheAlphabet) {
  const test::LocalText& local = test::Local();
  if (local.small.empty()) return;  // Thai letters have no case
  temp_.File(L"a." + local.small, "");
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L"." + local.capital), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

TEST_P(DeletingAll, StartPathIsAnyPathInsideTheDirectory) {
  const std::wstring folder = temp_.Folder(L"folder");
  for (const wchar_t* const name : {L"", L"*.*", L"*", L"a.log", L"no such file.xyz", L"?.t"}) {
    test::Plant(temp_, {L"outside.log", L"folder\\a.log", L"folder\\b.log"});
    EXPECT_EQ(api_.DeleteAll(folder + name, L".log"), 1);
    EXPECT_EQ(temp_.Entries(), (Names{L"folder\\", L"outside.log"})) << test::Ansi(name);
  }
  // Without the trailing backslash the last component is a file name, and its folder is meant.
  EXPECT_EQ(api_.DeleteAll(temp_ / L"folder", L".log"), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

TEST_P(DeletingAll, SlashesAreSeparators) {
  std::wstring start = temp_.path();
  std::replace(start.begin(), start.end(), L'\\', L'/');
  test::Plant(temp_, {L"a.log", L"sub\\", L"sub\\b.log"});
  EXPECT_EQ(api_.DeleteAll(start, L".log"), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

TEST_P(DeletingAll, MissingDirectoryHoldsNothing) {
  EXPECT_EQ(api_.DeleteAll(temp_ / L"missing\\", L".*"), 1);
}

TEST_P(DeletingAll, FileThatCannotBeDeletedIsAFailureAndTheWalkGoesOn) {
  test::Plant(temp_, {L"a.log", L"held.log", L"sub\\", L"sub\\b.log", L"sub\\held.log", L"z.log", L"zz\\"});
  test::CallLog log([](const test::Call& call) {
    const bool held = call.kind == 'D' && call.path.ends_with(L"held.log");
    return test::Answer{held ? test::Answer::kFail : test::Answer::kReal, ERROR_SHARING_VIOLATION};
  });
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 0);
  EXPECT_EQ(temp_.Entries(), (Names{L"held.log", L"sub\\", L"sub\\held.log"}));
  EXPECT_EQ(log.Of('s').size(), 2 * 25u);
  EXPECT_EQ(log.Of('D').size(), 2 * 25 + 3u);
}

TEST_P(DeletingAll, FolderWithAFailureBelowIsNotAskedToGo) {
  test::Plant(temp_, {L"sub\\", L"sub\\deep\\", L"sub\\deep\\held.log", L"other\\"});
  static Names asked;
  asked.clear();
  const test::ImportHook hook(
      "_wrmdir", +[](const wchar_t* path) {
        asked.push_back(path);
        return ::_wrmdir(path);
      });
  test::CallLog log([](const test::Call& call) {
    return test::Answer{call.kind == 'D' ? test::Answer::kFail : test::Answer::kReal};
  });
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 0);
  EXPECT_EQ(asked, Names{temp_ / L"other"});
}

TEST_P(DeletingAll, FolderThatCannotBeRemovedIsNoFailure) {
  test::Plant(temp_, {L"sub\\", L"sub\\a.log"});
  const test::ImportHook hook(
      "_wrmdir", +[](const wchar_t*) { return -1; });
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 1);
  EXPECT_EQ(temp_.Entries(), Names{L"sub\\"});
}

TEST_P(DeletingAll, FilesThatDoNotMatchAreNotEvenAskedFor) {
  test::Plant(temp_, {L"a.txt", L"b.txt"});
  test::CallLog log;
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L".log"), 1);
  EXPECT_EQ(log.Sequence("?FDMs"), "F");
}

TEST_P(DeletingAll, FoldersWhoseNamesBeginWithPeriods) {
  test::Plant(temp_, {L".a\\", L".a\\b.log", L"..a\\", L"..a\\b.log", L"...a\\", L"...a\\b.log", L"a\\",
                      L"a\\b.log"});
  EXPECT_EQ(api_.DeleteAll(temp_.path(), L".log"), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

// A drive with one file in its root, whose path is the longest and nearly all of it extension. There is no
// such drive; what the library asks of it tells whether the filter takes the file.
const wchar_t kRoot[] = L"Q:\\";
const std::wstring kLongestExtension = L"." + std::wstring(254, L'e');
int asked;

class LongestExtension : public ::testing::TestWithParam<bool> {
 protected:
  // Whether a filter takes the file, in the deletion of all files and in that of old ones.
  static std::pair<bool, bool> Takes(const std::wstring& filter) {
    const test::DirectoryApi api(GetParam());
    asked = 0;
    EXPECT_EQ(api.DeleteAll(kRoot, filter), 1) << "a file that is gone already";
    const bool all = std::exchange(asked, 0) > 0;
    const int old = api.DeleteOld(kRoot, filter, 0);
    EXPECT_EQ(old, asked == 0) << "its age cannot be told";
    return {all, asked > 0};
  }

 private:
  const test::ImportHook first_{"FindFirstFileW",
                                +[](const wchar_t* pattern, WIN32_FIND_DATAW* found) -> HANDLE {
                                  EXPECT_STREQ(pattern, L"Q:\\*.*");
                                  *found = {};
                                  kLongestExtension.copy(found->cFileName, kLongestExtension.size());
                                  return found;
                                }};
  const test::ImportHook next_{"FindNextFileW", +[](HANDLE, WIN32_FIND_DATAW*) -> BOOL { return FALSE; }};
  const test::ImportHook close_{"FindClose", +[](HANDLE) -> BOOL { return TRUE; }};
  const test::ImportHook query_{"GetFileAttributesExW",
                                +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS, void*) -> BOOL {
                                  EXPECT_EQ(path, kRoot + kLongestExtension);
                                  ++asked;
                                  ::SetLastError(ERROR_FILE_NOT_FOUND);
                                  return FALSE;
                                }};
};
ZERA_BOTH_VARIANTS(LongestExtension);

TEST_P(LongestExtension, IsTakenByItselfAlone) {
  EXPECT_EQ(Takes(kLongestExtension), std::pair(true, true));
  EXPECT_EQ(Takes(L"*" + kLongestExtension), std::pair(true, false));
  for (const std::size_t more : {1u, 2u, 3u, 1000u}) {
    const std::wstring longer = kLongestExtension + std::wstring(more, L'e');
    EXPECT_EQ(Takes(longer), std::pair(false, false)) << more;
    EXPECT_EQ(Takes(L"*" + longer), std::pair(false, false)) << more;
  }
  EXPECT_EQ(Takes(kLongestExtension.substr(0, 254)), std::pair(false, false));
}

TEST_P(DeletingAll, NamesInTheCodePage) {
  const std::wstring name = test::Local().wide;
  temp_.Folder(name);
  temp_.File(name + L"\\" + name + L".log", "");
  temp_.File(name + L".txt", "");
  EXPECT_EQ(api_.DeleteAll(temp_ / name + L"\\", L".log"), 1);
  EXPECT_EQ(temp_.Entries(), (Names{name + L".txt", name + L"\\"}));
}

TEST(DeletingAllNull, NullTextsCountAsEmpty) {
  const auto plain = test::Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL)>(3);
  const auto wide = test::Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_UC)>(1003);
  test::TempFolder temp;
  test::Plant(temp, {L"a.log", L"b", L"c"});
  EXPECT_EQ(plain(nullptr, ".*"), 0);
  EXPECT_EQ(wide(nullptr, L".*"), 0);
  EXPECT_EQ(plain(test::Ansi(temp / L"x.y").c_str(), nullptr), 1);
  EXPECT_EQ(temp.Entries(), Names{L"a.log"});
  temp.File(L"b", "");
  EXPECT_EQ(wide((temp / L"x.y").c_str(), nullptr), 1);
  EXPECT_EQ(temp.Entries(), Names{L"a.log"});
}

}  // namespace
