// SPDX-License-Identifier: MIT
// Deleting and renaming, with their attempts and pauses counted.
#include "CallLog.h"
#include "FileApi.h"
#include "Sharing.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;
using test::Times;

constexpr Answer kHeld = {Answer::kFail, ERROR_SHARING_VIOLATION};

// Holds a file open against everyone.
struct Holder : test::Opened {
  explicit Holder(const std::wstring& path) : Opened(path, GENERIC_READ, 0) {}
};

void ExpectPausesOf10(const CallLog& log) {
  for (const Call& sleep : log.Of('s')) EXPECT_EQ(sleep.number, 10u);
}

class Deleting : public test::BothVariants {
 protected:
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"file.txt", "content");
  const std::wstring empty = folder.File(L"empty.txt", "");
  const std::wstring missing = folder / L"missing.txt";
};
ZERA_BOTH_VARIANTS(Deleting);

TEST_P(Deleting, MissingFileIsASuccessAndNothingIsTried) {
  const CallLog log;
  EXPECT_EQ(api.Delete(missing), 1);
  EXPECT_EQ(log.Sequence(), "?");
}

TEST_P(Deleting, OneAttemptUsually) {
  const CallLog log;
  EXPECT_EQ(api.Delete(file), 1);
  EXPECT_EQ(log.Sequence(), "?D?");
  EXPECT_EQ(log.Of('D')[0].path, file);
  EXPECT_FALSE(test::Exists(file));
}

TEST_P(Deleting, EmptyFileIsAskedForTwice) {
  const CallLog log;
  EXPECT_EQ(api.Delete(empty), 1);
  EXPECT_EQ(log.Sequence(), "??D?");
  EXPECT_FALSE(test::Exists(empty));
}

TEST_P(Deleting, HeldFileIsTried25Times) {
  const Holder holder(file);
  const CallLog log;
  EXPECT_EQ(api.Delete(file), 0);
  EXPECT_EQ(log.Sequence(), "?" + Times(25, "D?s"));
  ExpectPausesOf10(log);
  EXPECT_TRUE(test::Exists(file));
}

TEST_P(Deleting, HeldEmptyFileIsAskedForTwiceEachTime) {
  const Holder holder(empty);
  const CallLog log;
  EXPECT_EQ(api.Delete(empty), 0);
  EXPECT_EQ(log.Sequence(), "??" + Times(25, "D??s"));
}

TEST_P(Deleting, PausesTakeAQuarterOfASecond) {
  const Holder holder(file);
  const ULONGLONG start = ::GetTickCount64();
  EXPECT_EQ(api.Delete(file), 0);
  EXPECT_GE(::GetTickCount64() - start, 240u);
  EXPECT_LT(::GetTickCount64() - start, 5000u);
}

TEST_P(Deleting, ReleasedFileIsDeletedAtTheNextAttempt) {
  Holder holder(file);
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 3) holder.Close();
    return Answer();
  });
  EXPECT_EQ(api.Delete(file), 1);
  EXPECT_EQ(log.Sequence(), "?" + Times(3, "D?s") + "D?");
  EXPECT_FALSE(test::Exists(file));
}

TEST_P(Deleting, LastAttemptCounts) {
  const CallLog log([](const Call& call) { return call.kind == 'D' && call.nth < 25 ? kHeld : Answer(); });
  EXPECT_EQ(api.Delete(file), 1);
  EXPECT_EQ(log.Sequence(), "?" + Times(24, "D?s") + "D?");
}

TEST_P(Deleting, ThereIsNo26thAttempt) {
  const CallLog log([](const Call& call) { return call.kind == 'D' && call.nth < 26 ? kHeld : Answer(); });
  EXPECT_EQ(api.Delete(file), 0);
  EXPECT_EQ(log.Of('D').size(), 25u);
}

TEST_P(Deleting, DiskDecidesNotTheReport) {
  {
    const CallLog log([](const Call& call) {
      return call.kind == 'D' ? Answer{Answer::kDoFail, ERROR_ACCESS_DENIED} : Answer();
    });
    EXPECT_EQ(api.Delete(file), 1) << "gone, though a failure was reported";
    EXPECT_EQ(log.Sequence(), "?D?");
  }
  {
    const CallLog log(
        [](const Call& call) { return call.kind == 'D' ? Answer{Answer::kPretend} : Answer(); });
    EXPECT_EQ(api.Delete(empty), 0) << "there, though success was reported";
    EXPECT_EQ(log.Sequence(), "??" + Times(25, "D??s"));
  }
}

TEST_P(Deleting, FileThatSomebodyElseDeletesIsGone) {
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 2) ::DeleteFileW(file.c_str());
    return call.kind == 'D' && call.nth < 3 ? kHeld : Answer();
  });
  EXPECT_EQ(api.Delete(file), 1);
  EXPECT_EQ(log.Sequence(), "?" + Times(2, "D?s") + "D?");
}

TEST_P(Deleting, FoldersAndReadOnlyFilesStay) {
  const std::wstring sub = folder.Folder(L"sub");
  const std::wstring inside = folder.File(L"sub\\inside.txt", "x");
  const std::wstring locked = folder.File(L"locked.txt", "x");
  ASSERT_TRUE(::SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_READONLY));
  for (const std::wstring& path : {sub, sub.substr(0, sub.size() - 1), locked}) {
    const CallLog log;
    EXPECT_EQ(api.Delete(path), 0);
    EXPECT_EQ(log.Of('D').size(), 25u);
    EXPECT_TRUE(test::Exists(path));
  }
  EXPECT_TRUE(test::Exists(inside));
}

TEST_P(Deleting, FailedAttemptsLeaveNothingBehind) {
  const Holder holder(file);
  const CallLog log;
  EXPECT_EQ(api.Delete(file), 0);  // what the first exception of a thread takes stays with the thread
  const DWORD handles = test::OpenHandles();
  const test::HeapWatch heap;
  EXPECT_EQ(api.Delete(file), 0);
  EXPECT_EQ(heap.Outstanding(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
}

class Renaming : public test::BothVariants {
 protected:
  const test::TempFolder folder;
  const std::wstring old = folder.File(L"old.txt", "old");
  const std::wstring fresh = folder / L"new.txt";
};
ZERA_BOTH_VARIANTS(Renaming);

TEST_P(Renaming, OneAttemptUsually) {
  const CallLog log;
  EXPECT_EQ(api.Rename(old, fresh), 1);
  EXPECT_EQ(log.Sequence(), "??M?");
  const auto asked = log.Of('?');
  EXPECT_EQ(asked[0].path, fresh);
  EXPECT_EQ(asked[1].path, old);
  EXPECT_EQ(asked[2].path, old) << "the new path is not looked at";
  EXPECT_EQ(log.Of('M')[0].path, old);
  EXPECT_EQ(log.Of('M')[0].second, fresh);
  EXPECT_FALSE(test::Exists(old));
  EXPECT_EQ(test::ReadBytes(fresh), "old");
}

TEST_P(Renaming, IntoAnotherFolder) {
  const std::wstring sub = folder.Folder(L"sub");
  EXPECT_EQ(api.Rename(old, sub + L"x.txt"), 1);
  EXPECT_EQ(test::ReadBytes(sub + L"x.txt"), "old");
}

TEST_P(Renaming, FoldersToo) {
  const std::wstring sub = folder.Folder(L"sub");
  folder.File(L"sub\\inside.txt", "x");
  const CallLog log;
  EXPECT_EQ(api.Rename(sub.substr(0, sub.size() - 1), folder / L"moved"), 1);
  EXPECT_EQ(log.Sequence(), "???M?") << "a folder has no size, so it is asked for twice";
  EXPECT_EQ(test::ReadBytes(folder / L"moved\\inside.txt"), "x");
}

TEST_P(Renaming, ExistingTargetIsDeletedFirst) {
  folder.File(L"new.txt", "longer than the other one");
  const CallLog log;
  EXPECT_EQ(api.Rename(old, fresh), 1);
  EXPECT_EQ(log.Sequence(), "??D??M?");
  EXPECT_EQ(log.Of('D')[0].path, fresh);
  EXPECT_EQ(test::ReadBytes(fresh), "old");
}

TEST_P(Renaming, TargetThatCannotBeDeletedLeavesTheOldFileAlone) {
  folder.File(L"new.txt", "new");
  const Holder holder(fresh);
  const CallLog log;
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(log.Sequence(), "??" + Times(25, "D?s"));
  EXPECT_EQ(test::ReadBytes(old), "old");
  EXPECT_TRUE(test::Exists(fresh));
}

TEST_P(Renaming, FolderAtTheNewPathLeavesTheOldFileAlone) {
  folder.Folder(L"new.txt");
  const CallLog log;
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(log.Of('M').size(), 0u);
  EXPECT_EQ(test::ReadBytes(old), "old");
}

TEST_P(Renaming, MissingSourceFailsAtOnce) {
  const CallLog log;
  EXPECT_EQ(api.Rename(folder / L"missing.txt", fresh), 0);
  EXPECT_EQ(log.Sequence(), "??");
}

TEST_P(Renaming, TargetIsDeletedBeforeTheSourceIsMissed) {
  folder.File(L"new.txt", "new");
  EXPECT_EQ(api.Rename(folder / L"missing.txt", fresh), 0);
  EXPECT_FALSE(test::Exists(fresh));
}

TEST_P(Renaming, OntoItselfDeletes) {
  EXPECT_EQ(api.Rename(old, old), 0);
  EXPECT_FALSE(test::Exists(old));
}

TEST_P(Renaming, HeldFileIsTried10Times) {
  const CallLog log([](const Call& call) { return call.kind == 'M' ? kHeld : Answer(); });
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(log.Sequence(), "?" + Times(10, "?M?s"));
  ExpectPausesOf10(log);
  EXPECT_TRUE(test::Exists(old));
}

TEST_P(Renaming, ReallyHeldFileStays) {
  const Holder holder(old);
  const CallLog log;
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(log.Of('M').size(), 10u);
  EXPECT_FALSE(test::Exists(fresh));
}

TEST_P(Renaming, MissingFolderIsNotMade) {
  const CallLog log;
  EXPECT_EQ(api.Rename(old, folder / L"none\\new.txt"), 0);
  EXPECT_EQ(log.Sequence(), "?" + Times(10, "?M?s"));
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>{L"old.txt"});
}

TEST_P(Renaming, ReleasedFileIsRenamedAtTheNextAttempt) {
  const CallLog log([](const Call& call) { return call.kind == 'M' && call.nth < 10 ? kHeld : Answer(); });
  EXPECT_EQ(api.Rename(old, fresh), 1);
  EXPECT_EQ(log.Sequence(), "?" + Times(9, "?M?s") + "?M?");
}

TEST_P(Renaming, SourceThatVanishesBetweenAttemptsEndsThem) {
  const CallLog log([&](const Call& call) {
    if (call.kind == 's' && call.nth == 2) ::DeleteFileW(old.c_str());
    return call.kind == 'M' ? kHeld : Answer();
  });
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(log.Sequence(), "?" + Times(2, "?M?s") + "?");
}

TEST_P(Renaming, OldPathsDisappearanceDecidesNotTheReport) {
  {
    const CallLog log([](const Call& call) {
      return call.kind == 'M' ? Answer{Answer::kDoFail, ERROR_ACCESS_DENIED} : Answer();
    });
    EXPECT_EQ(api.Rename(old, fresh), 1) << "moved, though a failure was reported";
    EXPECT_EQ(log.Sequence(), "??M?");
  }
  {
    const CallLog log([&](const Call& call) {
      if (call.kind == 'M') ::DeleteFileW(fresh.c_str());
      return call.kind == 'M' ? kHeld : Answer();
    });
    EXPECT_EQ(api.Rename(fresh, old), 1) << "gone, though it did not arrive";
    EXPECT_TRUE(folder.Entries().empty());
  }
  folder.File(L"old.txt", "old");
  const CallLog log([](const Call& call) { return call.kind == 'M' ? Answer{Answer::kPretend} : Answer(); });
  EXPECT_EQ(api.Rename(old, fresh), 0) << "there, though success was reported";
  EXPECT_EQ(log.Sequence(), "?" + Times(10, "?M?s"));
}

TEST_P(Renaming, FailedAttemptsLeaveNothingBehind) {
  const CallLog log([](const Call& call) { return call.kind == 'M' ? kHeld : Answer(); });
  EXPECT_EQ(api.Rename(old, fresh), 0);
  const DWORD handles = test::OpenHandles();
  const test::HeapWatch heap;
  EXPECT_EQ(api.Rename(old, fresh), 0);
  EXPECT_EQ(heap.Outstanding(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST(RenamingWide, NullNewPathDoesNothing) {
  const test::TempFolder folder;
  const std::wstring old = folder.File(L"old.txt", "old");
  const CallLog log;
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_RENAME_UC)>(1007)(old.c_str(), nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_RENAME)>(7)(test::Ansi(old).c_str(), nullptr), 0);
  EXPECT_EQ(test::ReadBytes(old), "old");
}

}  // namespace
