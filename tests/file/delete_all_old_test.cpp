// SPDX-License-Identifier: MIT
// Deleting the files of a tree by extension and age.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "CallLog.h"
#include "DirectoryApi.h"
#include "support/ImportHook.h"

namespace {

using test::Names;

// The three pairs of exports delete by the same rules; the flag is never set here.
enum class Way { kOld, kOldEx };

struct Deletion {
  bool wide;
  Way way;
};

class DeletingOld : public ::testing::TestWithParam<Deletion> {
 protected:
  ~DeletingOld() override { EXPECT_EQ(test::OpenHandles(), handles_); }

  int Delete(const std::wstring& start, const std::wstring& filter, unsigned age) const {
    const test::DirectoryApi api(GetParam().wide);
    return GetParam().way == Way::kOld ? api.DeleteOld(start, filter, age)
                                       : api.DeleteOldEx(start, filter, age);
  }

  test::TempFolder temp_;
  DWORD handles_ = test::OpenHandles();
};

INSTANTIATE_TEST_SUITE_P(Variant, DeletingOld,
                         ::testing::Values(Deletion{false, Way::kOld}, Deletion{true, Way::kOld},
                                           Deletion{false, Way::kOldEx}, Deletion{true, Way::kOldEx}),
                         [](const auto& one) {
                           return std::string(one.param.wide ? "wide" : "plain") +
                                  (one.param.way == Way::kOld ? "" : "Ex");
                         });

TEST_P(DeletingOld, OldFilesAndOldEmptyFolders) {
  test::Plant(temp_, {L"old.log", L"new.log", L"old.txt", L"olddir\\", L"olddir\\old.log", L"newdir\\",
                      L"newdir\\old.log", L"mixed\\", L"mixed\\new.log", L"mixed\\old.log"});
  for (const wchar_t* const name :
       {L"old.log", L"old.txt", L"olddir\\old.log", L"newdir\\old.log", L"mixed\\old.log", L"mixed"}) {
    test::SetAge(temp_ / name, 1000);
  }
  // Under Wine a folder's creation time is its last change, so that emptying it would make it new: the
  // folder's old age is answered by the test.
  static std::wstring oldFolder;
  oldFolder = temp_ / L"olddir";
  const test::ImportHook hook(
      "GetFileAttributesExW", +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) {
        const BOOL known = ::GetFileAttributesExW(path, level, data);
        if (path == oldFolder) static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data)->ftCreationTime = {0, 0x1D00000};
        return known;
      });
  EXPECT_EQ(Delete(temp_.path(), L".LOG", 500), 1);
  EXPECT_EQ(temp_.Entries(), (Names{L"mixed\\", L"mixed\\new.log", L"new.log", L"newdir\\", L"old.txt"}));
}

TEST_P(DeletingOld, StarIsNotDropped) {
  test::Plant(temp_, {L"a.log", L"b.txt", L"c"});
  for (const wchar_t* const name : {L"a.log", L"b.txt", L"c"}) test::SetAge(temp_ / name, 1000);
  for (const wchar_t* const filter : {L"*.log", L".*", L"*", L"log", L"*.*.*"}) {
    EXPECT_EQ(Delete(temp_.path(), filter, 0), 1);
    EXPECT_EQ(temp_.Entries().size(), 3u) << test::Ansi(filter);
  }
  EXPECT_EQ(Delete(temp_.path(), L"", 0), 1);
  EXPECT_EQ(temp_.Entries(), (Names{L"a.log", L"b.txt"})) << "files without an extension";
  EXPECT_EQ(Delete(temp_.path(), L".Log", 0), 1);
  EXPECT_EQ(temp_.Entries(), Names{L"b.txt"});
  EXPECT_EQ(Delete(temp_.path(), L"*.*", 0), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

// A clock and a time of creation that the test sets: under Wine every file is created when it was changed.
struct Clock {
  long long now = 1700000000;
  long long created = 0;
  long long modified = 0;
} theClock;

FILETIME FromSeconds(long long seconds) {
  const ULARGE_INTEGER time = {.QuadPart = static_cast<ULONGLONG>(seconds + 11644473600) * 10000000};
  return {time.LowPart, time.HighPart};
}

struct ClockHooks {
  test::ImportHook now{"_time64", +[](__time64_t* time) {
                         if (time) *time = theClock.now;
                         return theClock.now;
                       }};
  test::ImportHook status{"GetFileAttributesExW",
                          +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* out) {
                            auto* const data = static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(out);
                            const BOOL known = ::GetFileAttributesExW(path, level, data);
                            data->ftCreationTime = FromSeconds(theClock.created);
                            data->ftLastWriteTime = data->ftLastAccessTime = FromSeconds(theClock.modified);
                            return known;
                          }};
};

TEST_P(DeletingOld, AgeIsStrictAndCountsFromTheCreation) {
  const struct {
    unsigned age;
    long long sinceCreation, sinceChange;
    bool deleted;
  } rows[] = {
      {0, 0, 0, false},
      {0, 1, 1, true},
      {0, -5, -5, false},  // created in the future
      {10, 10, 10, false},
      {10, 11, 11, true},
      {10, 9, 1000, false},  // changed long ago, but created lately
      {10, 1000, 0, true},   // the other way round
      {0x7FFFFFFF, 0x7FFFFFFF, 0, false},
      {0x80000000, 0x80000000, 0, false},
      {0x80000000, 0x80000001, 0, true},
      {0xFFFFFFFF, 0xFFFFFFFF, 0, false},
      {0xFFFFFFFF, 0x100000000, 0, true},
  };
  const ClockHooks hooks;
  for (const auto& row : rows) {
    test::Plant(temp_, {L"file.log"});
    temp_.Folder(L"folder");
    theClock.created = theClock.now - row.sinceCreation;
    theClock.modified = theClock.now - row.sinceChange;
    EXPECT_EQ(Delete(temp_.path(), L".log", row.age), 1);
    EXPECT_EQ(temp_.Entries(), row.deleted ? Names{} : (Names{L"file.log", L"folder\\"}))
        << row.age << " " << row.sinceCreation;
    ::RemoveDirectoryW((temp_ / L"folder").c_str());
  }
  ::DeleteFileW((temp_ / L"file.log").c_str());
}

TEST_P(DeletingOld, FileWithoutReadableStatusIsAFailureAndFolderIsNot) {
  test::Plant(temp_, {L"a.log", L"b.txt", L"sub\\"});
  test::SetAge(temp_ / L"sub", 1000);
  test::CallLog log([](const test::Call& call) {
    return test::Answer{call.kind == '?' ? test::Answer::kFail : test::Answer::kReal, ERROR_INVALID_FUNCTION};
  });
  EXPECT_EQ(Delete(temp_.path(), L".xyz", 0), 1) << "the folder's status alone";
  EXPECT_EQ(Delete(temp_.path(), L".log", 0), 0);
  EXPECT_EQ(temp_.Entries(), (Names{L"a.log", L"b.txt", L"sub\\"}));
}

TEST_P(DeletingOld, FileThatCannotBeDeletedIsAFailureAndTheWalkGoesOn) {
  test::Plant(temp_, {L"a.log", L"held.log", L"sub\\", L"sub\\held.log", L"sub\\z.log"});
  for (const std::wstring& name : temp_.Entries()) test::SetAge(temp_ / name, 1000);
  test::CallLog log([](const test::Call& call) {
    const bool held = call.kind == 'D' && call.path.ends_with(L"held.log");
    return test::Answer{held ? test::Answer::kFail : test::Answer::kReal, ERROR_SHARING_VIOLATION};
  });
  EXPECT_EQ(Delete(temp_.path(), L"*.*", 0), 0);
  EXPECT_EQ(temp_.Entries(), (Names{L"held.log", L"sub\\", L"sub\\held.log"}));
  EXPECT_EQ(log.Of('s').size(), 2 * 25u);
}

TEST_P(DeletingOld, FolderThatCannotBeRemovedIsNoFailure) {
  test::Plant(temp_, {L"sub\\"});
  test::SetAge(temp_ / L"sub", 1000);
  static int asked;
  asked = 0;
  const test::ImportHook hook(
      "_wrmdir", +[](const wchar_t*) {
        ++asked;
        return -1;
      });
  EXPECT_EQ(Delete(temp_.path(), L"*.*", 0), 1);
  EXPECT_EQ(asked, 1);
}

TEST_P(DeletingOld, NewFilesAreAskedForOnceAndLeft) {
  test::Plant(temp_, {L"a.log", L"b.log"});
  test::CallLog log;
  EXPECT_EQ(Delete(temp_.path(), L".log", 1000), 1);
  EXPECT_EQ(log.Sequence("?FDMs"), "F??");
}

// Only the UTF-16 variant with the flag.
class Aborting : public ::testing::Test {
 protected:
  test::TempFolder temp_;
  const test::DirectoryApi api_{true};
};

TEST_F(Aborting, FlagSetBeforeTheCallDeletesNothing) {
  test::Plant(temp_, {L"a.log", L"sub\\", L"sub\\b.log"});
  for (const std::wstring& name : temp_.Entries()) test::SetAge(temp_ / name, 1000);
  const Names before = temp_.Entries();
  for (int flag : {1, -1, 0x100, static_cast<int>(0x80000000)}) {
    EXPECT_EQ(api_.DeleteOldEx(temp_.path(), L"*.*", 0, &flag), 1);
    EXPECT_EQ(temp_.Entries(), before) << flag;
  }
}

int theFlag;

TEST_F(Aborting, FlagSetDuringTheWalkEndsItBeforeTheNextEntry) {
  for (int limit = 1; limit <= 4; ++limit) {
    test::Plant(temp_, {L"1.log", L"2.log", L"sub\\", L"sub\\3.log", L"sub\\4.log", L"sub\\5.log", L"z.log"});
    for (const std::wstring& name : temp_.Entries()) test::SetAge(temp_ / name, 1000);
    theFlag = 0;
    test::CallLog log([&](const test::Call& call) {
      if (call.kind == 'D' && call.nth == limit) theFlag = 1;
      return test::Answer{};
    });
    EXPECT_EQ(api_.DeleteOldEx(temp_.path(), L".log", 0, &theFlag), 1);
    EXPECT_EQ(log.Of('D').size(), static_cast<std::size_t>(limit));
    EXPECT_TRUE(test::Exists(temp_ / L"sub"));
    EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp_.path(), L".*"), 1);
  }
}

TEST_F(Aborting, FailureSoFarIsReturned) {
  test::Plant(temp_, {L"a.log", L"b.log", L"c.log"});
  for (const std::wstring& name : temp_.Entries()) test::SetAge(temp_ / name, 1000);
  theFlag = 0;
  test::CallLog log([](const test::Call& call) {
    if (call.kind == 'D') theFlag = 1;
    return test::Answer{call.kind == 'D' ? test::Answer::kFail : test::Answer::kReal};
  });
  EXPECT_EQ(api_.DeleteOldEx(temp_.path(), L".log", 0, &theFlag), 0);
  EXPECT_EQ(log.Of('D').size(), 25u) << "one file's attempts";
}

TEST_F(Aborting, FlagSetByAnotherThread) {
  for (int i = 0; i < 60; ++i) {
    test::SetAge(temp_.File(std::to_wstring(i) + L".log", ""), 1000);
  }
  int flag = 0;
  std::atomic<int> deletions = 0;
  test::CallLog log([&](const test::Call& call) {
    if (call.kind == 'D') {
      ++deletions;
      // The walk waits until the other thread had time to see ten deletions and to answer.
      while (deletions >= 10 && __atomic_load_n(&flag, __ATOMIC_RELAXED) == 0) ::Sleep(0);
    }
    return test::Answer{};
  });
  std::thread other([&] {
    while (deletions < 10) ::Sleep(0);
    __atomic_store_n(&flag, 1, __ATOMIC_RELAXED);
  });
  EXPECT_EQ(api_.DeleteOldEx(temp_.path(), L".log", 0, &flag), 1);
  other.join();
  EXPECT_EQ(deletions, 10);
  EXPECT_EQ(temp_.Entries().size(), 50u);
}

TEST_F(Aborting, NullFlagIsNone) {
  test::Plant(temp_, {L"a.log"});
  test::SetAge(temp_ / L"a.log", 1000);
  const auto wide = test::Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC)>(1029);
  EXPECT_EQ(wide(temp_.path().c_str(), L".log", 0, nullptr), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

}  // namespace
