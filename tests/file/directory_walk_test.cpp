// SPDX-License-Identifier: MIT
// What the walks of the operations on whole directories have in common.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "CallLog.h"
#include "DirectoryApi.h"
#include "support/CurrentFolder.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"
#include "support/OpenSearches.h"

namespace {

using test::Names;

const wchar_t kNowhere[] = L"X:\\tmp\\nowhere\\";

// All operations, each with a filter that takes every file.
struct Operation {
  const char* name;
  std::function<int(const std::wstring&)> run;
};

std::vector<Operation> Operations(const std::wstring& destination = kNowhere) {
  std::vector<Operation> all;
  for (const bool wide : {false, true}) {
    const test::DirectoryApi api(wide);
    all.push_back({"all", [=](const auto& start) { return api.DeleteAll(start, L".*"); }});
    all.push_back({"old", [=](const auto& start) { return api.DeleteOld(start, L"*.*", 0); }});
    all.push_back({"oldEx", [=](const auto& start) { return api.DeleteOldEx(start, L"*.*", 0); }});
    all.push_back({"copy", [=](const auto& start) { return api.CopyAll(start, destination, 1); }});
  }
  return all;
}

TEST(DirectoryWalk, StartPathsThatAreRefused) {
  const test::TempFolder temp;
  test::Plant(temp, {L"a.txt", L"sub\\", L"sub\\b.txt"});
  for (const std::wstring& name : temp.Entries()) test::SetAge(temp / name, 1000);
  const Names before = temp.Entries();
  const test::CurrentFolder current(temp.path());
  const std::wstring refused[] = {
      L"",
      L"*.*",
      // One character more than the path limit holds, however short the folder is.
      L"X:\\tmp\\" + std::wstring(126, L'n') + L"." + std::wstring(126, L'e'),
      L"X:\\" + std::wstring(254, L'd') + L"\\",
      L"X:\\tmp\\" + std::wstring(256, L'n'),
      L"X:\\tmp\\n." + std::wstring(256, L'e'),
      // Components beyond their limits in a path that is short enough.
      std::wstring(256, L'n'),
      L"n." + std::wstring(255, L'e'),
      L"\\" + std::wstring(254, L'd') + L"\\",
      std::wstring(32767, L'\\'),
      std::wstring(32767, L'n'),
  };
  const test::InvalidParameter handler;
  test::CallLog log;
  for (const std::wstring& start : refused) {
    for (const auto& operation : Operations()) {
      EXPECT_EQ(operation.run(start), 0) << operation.name << " " << test::Ansi(start.substr(0, 20));
    }
  }
  EXPECT_EQ(log.Sequence("?FDOM"), "");
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_EQ(temp.Entries(), before);
}

// The last letter that a directory may have for its search to fit the path limit.
TEST(DirectoryWalk, LongestStartPath) {
  test::CallLog log;
  for (const std::size_t directory : {255u, 256u}) {
    const std::wstring start = L"X:\\" + std::wstring(directory - 2, L'd') + L"\\";
    for (const auto& operation : Operations()) EXPECT_EQ(operation.run(start), 0) << operation.name;
  }
  EXPECT_EQ(log.Sequence("F"), "");
  const std::wstring longest = L"X:\\" + std::wstring(252, L'd') + L"\\";
  ASSERT_EQ(longest.size() + 3, 259u);
  for (const auto& operation : Operations()) EXPECT_EQ(operation.run(longest), 1) << operation.name;
  for (const auto& call : log.Of('F')) EXPECT_EQ(call.path, longest + L"*.*");
}

// A name without a folder means the current one, in each operation; "*.*" alone is refused.
TEST(DirectoryWalk, BareNamesMeanTheCurrentFolder) {
  for (const std::wstring start : {L"run.ini", L"*.log", L"*", L"sub", L".", L"X:run.ini", L"X:*.*"}) {
    for (std::size_t i = 0; i < Operations().size(); ++i) {
      const test::TempFolder temp;
      const std::wstring destination = temp / L"to\\";
      const Operation operation = Operations(destination)[i];
      test::Plant(temp, {L"from\\", L"from\\a.txt", L"from\\sub\\", L"from\\sub\\b.txt"});
      for (const std::wstring& name : temp.Entries()) test::SetAge(temp / name, 1000);
      const test::CurrentFolder current(temp / L"from\\");
      EXPECT_EQ(operation.run(start), 1) << operation.name << " " << test::Ansi(start);
      const bool copies = std::string(operation.name) == "copy";
      EXPECT_EQ(test::Exists(destination + L"sub\\b.txt"), copies) << operation.name;
      EXPECT_EQ(test::Exists(destination + L"a.txt"), copies) << operation.name;
      EXPECT_EQ(test::Exists(temp / L"from\\a.txt"), copies) << operation.name << " " << test::Ansi(start);
      EXPECT_EQ(test::Exists(temp / L"from\\sub\\b.txt"), copies) << operation.name;
    }
  }
}

// The longest text that is taken, 259 characters, in a folder of any length.
TEST(DirectoryWalk, TextsUpToThePathLimitAreTaken) {
  const std::wstring start = L"X:\\tmp\\nowhere\\" + std::wstring(120, L'n') + L"." + std::wstring(123, L'e');
  ASSERT_EQ(start.size(), 259u);
  for (const auto& operation : Operations()) {
    EXPECT_EQ(operation.run(start), 1) << operation.name;
    EXPECT_EQ(operation.run(start + L"e"), 0) << operation.name;
  }
}

// Another thread may change the current folder between any two calls of a walk: what is listed is what is
// deleted or copied.
TEST(DirectoryWalk, TheFolderThatIsNamedIsTheOneThatIsListed) {
  const test::TempFolder temp;
  test::Plant(temp,
              {L"named\\", L"named\\a.txt", L"named\\c.txt", L"other\\", L"other\\a.txt", L"other\\b.txt"});
  const std::wstring named = temp / L"named\\", other = temp / L"other\\";
  const test::CurrentFolder current(named);
  {
    test::CallLog log([&](const test::Call& call) {
      if (call.kind == 'F') ::SetCurrentDirectoryW(other.c_str());
      return test::Answer();
    });
    EXPECT_EQ(test::DirectoryApi(true).DeleteAll(L".\\", L".*"), 1);
  }
  EXPECT_EQ(temp.Entries(), (Names{L"named\\", L"other\\", L"other\\a.txt", L"other\\b.txt"}));
}

TEST(DirectoryWalk, RelativeFoldersAreWalked) {
  const test::TempFolder temp;
  test::Plant(temp, {L"a.txt", L"sub\\", L"sub\\b.txt", L"sub\\deep\\", L"sub\\deep\\c.txt"});
  const test::CurrentFolder current(temp.path());
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(L"sub\\", L".*"), 1);
  EXPECT_EQ(temp.Entries(), (Names{L"a.txt", L"sub\\"}));
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(L".\\", L".*"), 1);
  EXPECT_EQ(temp.Entries(), Names{});
}

TEST(DirectoryWalk, NothingBesideTheStartFolderIsTouched) {
  const test::TempFolder temp;
  test::Plant(temp, {L"a.txt", L"start\\", L"start\\b.txt", L"start\\sub\\", L"start\\sub\\c.txt",
                     L"start.txt", L"started\\", L"started\\d.txt", L"sub\\", L"sub\\e.txt"});
  for (const std::wstring& name : temp.Entries()) test::SetAge(temp / name, 1000);
  for (const auto& operation : Operations(temp / L"start\\copy\\")) {
    operation.run(temp / L"start\\");
  }
  const Names left{L"a.txt",          L"start.txt", L"start\\",   L"started\\",
                   L"started\\d.txt", L"sub\\",     L"sub\\e.txt"};
  test::DirectoryApi(true).DeleteAll(temp / L"start\\", L".*");
  EXPECT_EQ(temp.Entries(), left);
}

// Every file call on the way stays below the start folder.
TEST(DirectoryWalk, NoCallLeavesTheStartFolder) {
  for (const auto& operation : Operations()) {
    if (std::string(operation.name) == "copy") continue;
    const test::TempFolder temp;
    test::Plant(temp, {L"start\\", L"start\\a.txt", L"start\\.hidden", L"start\\sub\\", L"start\\sub\\..x",
                       L"start\\sub\\...y"});
    for (const std::wstring& name : temp.Entries()) test::SetAge(temp / name, 1000);
    test::CallLog log;
    EXPECT_EQ(operation.run(temp / L"start\\x"), 1);
    for (const char kind : {'?', 'F', 'D', 'N'}) {
      for (const auto& call : log.Of(kind)) {
        EXPECT_TRUE(call.path.starts_with(temp / L"start\\")) << kind << test::Ansi(call.path);
      }
    }
    EXPECT_EQ(log.Of('D').size(), 4u) << operation.name;
  }
}

TEST(DirectoryWalk, SearchThatFailsIsAnEmptyWalkAndOneThatBreaksOffEnds) {
  for (const auto& operation : Operations()) {
    const test::TempFolder temp;
    test::Plant(temp, {L"a.txt", L"b.txt"});
    {
      test::CallLog log([](const test::Call& call) {
        return test::Answer{call.kind == 'F' ? test::Answer::kFail : test::Answer::kReal,
                            ERROR_ACCESS_DENIED};
      });
      EXPECT_EQ(operation.run(temp.path()), 1) << operation.name;
      EXPECT_EQ(log.Of('F').size(), 1u);
    }
    static int searches;
    searches = 0;
    const test::ImportHook next(
        "FindNextFileW", +[](HANDLE, WIN32_FIND_DATAW*) { return FALSE; });
    const test::ImportHook close(
        "FindClose", +[](HANDLE search) {
          ++searches;
          return ::FindClose(search);
        });
    EXPECT_EQ(operation.run(temp.path()), 1) << operation.name;
    EXPECT_EQ(temp.Entries().size(), 2u) << "the first entry is the folder itself";
    EXPECT_EQ(searches, 1);
  }
}

// Memory runs out at each request in turn: the framework's exception, nothing open, nothing lost.
int requestsLeft;

void* Malloc(std::size_t size) {
  return requestsLeft-- > 0 ? std::malloc(size) : nullptr;
}

TEST(DirectoryWalk, ExhaustedMemoryEndsTheWalkWithNothingOpen) {
  const test::TempFolder temp;
  test::Plant(temp, {L"sub\\", L"sub\\deep\\", L"sub\\deep\\a.txt"});
  const test::OpenSearches searches;
  const auto walk = [&] { test::DirectoryApi(true).DeleteAll(temp.path(), L".none"); };
  bool ranOut = true;
  for (int limit = 0; ranOut && limit < 100; ++limit) {
    std::string raised;
    {
      const test::ImportHook hook(
          "malloc", +[](std::size_t size) -> void* {
            // Only texts of the walk: requests of the runtime for the exception itself are granted.
            if (size > 1024) return std::malloc(size);
            return Malloc(size);
          });
      requestsLeft = limit;
      raised = test::RaisedBy(walk);
    }
    ranOut = !raised.empty();
    EXPECT_TRUE(!ranOut || raised == test::kMemoryException) << limit << " " << raised;
    EXPECT_EQ(searches.Count(), 0) << limit;
    EXPECT_TRUE(!ranOut || test::Exists(temp / L"sub\\deep\\a.txt")) << limit;
  }
  EXPECT_FALSE(ranOut) << "with enough memory the walk ends as usual";
}

// A tree whose paths go beyond the limit, made and removed with the prefix that lifts it.
class DeepTree {
 public:
  DeepTree(const std::wstring& top, std::size_t most, const std::wstring& name) {
    std::wstring path = L"\\\\?\\" + top;
    while (path.size() < most) {
      path += name;
      if (!::CreateDirectoryW(path.c_str(), nullptr)) break;
      path += L"\\";
      test::WriteBytes(path + L"f.log", "");
      folders_.push_back(path);
    }
  }
  ~DeepTree() {
    for (auto one = folders_.rbegin(); one != folders_.rend(); ++one) {
      ::DeleteFileW((*one + L"f.log").c_str());
      ::RemoveDirectoryW(one->c_str());
    }
  }

  std::size_t Folders() const { return folders_.size(); }
  /// The folders and files that are left, with the length of the longest path.
  std::size_t Left() const {
    std::size_t left = 0;
    for (const auto& folder : folders_) left += test::Exists(folder + L"f.log");
    return left;
  }

 private:
  std::vector<std::wstring> folders_;
};

TEST(DirectoryWalk, GoesAsDeepAsPathsMayBe) {
  const test::TempFolder temp;
  const DeepTree tree(temp.path(), 250, L"d");
  ASSERT_GT(tree.Folders(), 100u);
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp.path(), L".*"), 1);
  EXPECT_EQ(temp.Entries(), Names{});
}

TEST(DirectoryWalk, CopiesAsDeepAsPathsMayBe) {
  const test::TempFolder temp;
  const DeepTree tree(temp.path(), 220, L"a folder");
  EXPECT_EQ(test::DirectoryApi(true).CopyAll(temp / L"a folder\\", temp / L"a copied\\", 1), 1);
  EXPECT_EQ(temp.Entries().size(), 2 * 2 * tree.Folders());
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp.path(), L".*"), 1);
  EXPECT_EQ(temp.Entries(), Names{});
}

TEST(DirectoryWalk, WhatLiesBeyondTheLimitIsNotReached) {
  const test::TempFolder copies;
  const test::InvalidParameter handler;
  for (const auto& operation : Operations(copies / L"to\\")) {
    const test::TempFolder temp;
    const DeepTree tree(temp.path(), 400, L"a folder");
    operation.run(temp.path());
    EXPECT_EQ(handler.Count(), 0) << operation.name;
    EXPECT_GT(tree.Left(), 14u) << operation.name;
    const bool deleted = std::string(operation.name) == "all";
    EXPECT_TRUE(!deleted || tree.Left() < tree.Folders() - 20) << tree.Left() << " of " << tree.Folders();
  }
}

// Long names in a short folder: beyond the limit only with their names.
TEST(DirectoryWalk, FileWhosePathIsTooLong) {
  const test::TempFolder temp;
  const std::wstring name = std::wstring(245, L'n') + L".log";
  const std::wstring path = L"\\\\?\\" + (temp / name);
  test::WriteBytes(path, "content");
  const test::InvalidParameter handler;
  EXPECT_EQ(test::DirectoryApi(true).DeleteOld(temp.path(), L".log", 0), 0) << "its age cannot be taken";
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp.path(), L".log"), 1) << "as a missing file";
  EXPECT_EQ(test::DirectoryApi(true).CopyAll(temp.path(), temp / L"to\\", 1), 1);
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_EQ(test::ReadBytes(path), "content");
  ::DeleteFileW(path.c_str());
}

// Where no drive is split off, the search of a directory of 256 characters still fits, one character more
// than can be taken apart.
TEST(DirectoryWalk, FileWhoseExtensionCannotBeTaken) {
  const test::TempFolder temp;
  const std::wstring top = L"\\\\.\\" + temp.path();
  const std::wstring name(255 - top.size(), L'd');
  const std::wstring folder = L"\\\\?\\" + temp.path() + name;
  ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
  test::WriteBytes(folder + L"\\f.log", "content");
  const test::InvalidParameter handler;
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(top, L".log"), 0);
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(top, L".none"), 0);
  EXPECT_EQ(test::DirectoryApi(true).DeleteOld(top, L".none", 0), 0);
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_EQ(test::ReadBytes(folder + L"\\f.log"), "content");
  ::DeleteFileW((folder + L"\\f.log").c_str());
  ::RemoveDirectoryW(folder.c_str());
}

// Random trees against a model that works on the list of names.
TEST(DirectoryWalk, RandomTreesAgainstAModel) {
  std::mt19937 random(99);
  const wchar_t* const extensions[] = {L"", L".log", L".LOG", L".txt", L".l", L".log.txt"};
  for (int round = 0; round < 12; ++round) {
    const test::TempFolder temp;
    Names folders{L""};
    Names files;
    for (int i = 0; i < 12; ++i) {
      folders.push_back(folders[random() % folders.size()] + L"d" + std::to_wstring(i) + L"\\");
      temp.Folder(folders.back().substr(0, folders.back().size() - 1));
    }
    for (int i = 0; i < 20; ++i) {
      files.push_back(folders[random() % folders.size()] + L"f" + std::to_wstring(i) +
                      extensions[random() % 6]);
      temp.File(files.back(), "");
    }
    Names expected;
    for (const std::wstring& file : files) {
      std::wstring lower = file;
      for (wchar_t& one : lower) one = static_cast<wchar_t>(std::towlower(one));
      if (!lower.ends_with(L".log")) expected.push_back(file);
    }
    const Names kept = expected;
    for (const std::wstring& folder : folders) {
      const auto inside = [&](const std::wstring& file) { return file.starts_with(folder); };
      if (!folder.empty() && std::any_of(kept.begin(), kept.end(), inside)) expected.push_back(folder);
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(test::DirectoryApi(round % 2).DeleteAll(temp.path(), L"*.log"), 1);
    EXPECT_EQ(temp.Entries(), expected);
  }
}

}  // namespace
