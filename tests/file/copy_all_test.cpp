// SPDX-License-Identifier: MIT
// Copying a tree.
#include <gtest/gtest.h>

#include <algorithm>

#include "CallLog.h"
#include "DirectoryApi.h"
#include "support/CodePage.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"
#include "support/OpenSearches.h"

namespace {

using test::Names;

class CopyingAll : public test::Directories {};
ZERA_BOTH_VARIANTS(CopyingAll);

TEST_P(CopyingAll, FilesAndFoldersEmptyOnesIncluded) {
  test::Plant(temp_, {L"from\\", L"from\\a.txt", L"from\\b", L"from\\.c", L"from\\d.e.f", L"from\\sub.dir\\",
                      L"from\\sub.dir\\g.txt", L"from\\empty\\", L"other.txt"});
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 0), 1);
  const Names expected{L"from\\",
                       L"from\\.c",
                       L"from\\a.txt",
                       L"from\\b",
                       L"from\\d.e.f",
                       L"from\\empty\\",
                       L"from\\sub.dir\\",
                       L"from\\sub.dir\\g.txt",
                       L"other.txt",
                       L"to\\",
                       L"to\\.c",
                       L"to\\a.txt",
                       L"to\\b",
                       L"to\\d.e.f",
                       L"to\\empty\\",
                       L"to\\sub.dir\\",
                       L"to\\sub.dir\\g.txt"};
  EXPECT_EQ(temp_.Entries(), expected);
  for (const wchar_t* const name : {L".c", L"a.txt", L"b", L"d.e.f", L"sub.dir\\g.txt"}) {
    EXPECT_EQ(test::ReadBytes(temp_ / L"to\\" + name), test::ReadBytes(temp_ / L"from\\" + name));
  }
}

// The whole way to the destination is gone once, in its own spelling: what is missing on it is made.
TEST_P(CopyingAll, MakesWhatTheDestinationsSpellingNames) {
  test::Plant(temp_, {L"from\\", L"from\\sub\\", L"from\\sub\\deep\\", L"from\\sub\\deep\\a.txt", L"to\\",
                      L"to\\sub\\"});
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"missing\\..\\to\\", 0), 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"to\\sub\\deep\\a.txt"), "from\\sub\\deep\\a.txt");
  const auto attributes = ::GetFileAttributesW((temp_ / L"missing").c_str());
  EXPECT_NE(attributes, INVALID_FILE_ATTRIBUTES);
}

TEST_P(CopyingAll, ZeroKeepsWhatIsThereAndOthersReplaceIt) {
  for (const unsigned overwrite : {0u, 1u, 0x80000000u}) {
    test::Plant(temp_, {L"from\\", L"from\\a.txt", L"from\\b.txt", L"from\\empty.txt", L"from\\sub\\",
                        L"from\\sub\\c.txt", L"to\\", L"to\\sub\\"});
    temp_.File(L"to\\a.txt", "already here, and longer than the other");
    temp_.File(L"to\\empty.txt", "");
    temp_.File(L"to\\sub\\c.txt", "here too");
    EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", overwrite), 1);
    const bool kept = overwrite == 0;
    EXPECT_EQ(test::ReadBytes(temp_ / L"to\\a.txt"),
              kept ? "already here, and longer than the other" : "from\\a.txt");
    EXPECT_EQ(test::ReadBytes(temp_ / L"to\\empty.txt"), kept ? "" : "from\\empty.txt");
    EXPECT_EQ(test::ReadBytes(temp_ / L"to\\sub\\c.txt"), kept ? "here too" : "from\\sub\\c.txt");
    EXPECT_EQ(test::ReadBytes(temp_ / L"to\\b.txt"), "from\\b.txt");
    EXPECT_EQ(api_.DeleteAll(temp_.path(), L".*"), 1);
  }
}

TEST_P(CopyingAll, DestinationIsTakenAsATextInFront) {
  test::Plant(temp_, {L"from\\", L"from\\a.txt", L"from\\sub\\", L"from\\sub\\b.txt"});
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\x.y", temp_ / L"to-", 0), 1);
  EXPECT_EQ(temp_.Entries(), (Names{L"from\\", L"from\\a.txt", L"from\\sub\\", L"from\\sub\\b.txt",
                                    L"to-a.txt", L"to-sub\\", L"to-sub\\b.txt"}));
}

TEST_P(CopyingAll, SlashesAreSeparators) {
  test::Plant(temp_, {L"from\\", L"from\\a.txt", L"from\\sub\\", L"from\\sub\\b.txt"});
  std::wstring start = temp_ / L"from\\";
  std::replace(start.begin(), start.end(), L'\\', L'/');
  EXPECT_EQ(api_.CopyAll(start, temp_ / L"to\\", 0), 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"to\\sub\\b.txt"), "from\\sub\\b.txt");
}

TEST_P(CopyingAll, OntoItselfChangesNothing) {
  test::Plant(temp_, {L"a.txt", L"sub\\", L"sub\\b.txt"});
  const Names before = temp_.Entries();
  EXPECT_EQ(api_.CopyAll(temp_.path(), temp_.path(), 1), 1);
  EXPECT_EQ(temp_.Entries(), before);
  EXPECT_EQ(test::ReadBytes(temp_ / L"a.txt"), "a.txt");
  EXPECT_EQ(test::ReadBytes(temp_ / L"sub\\b.txt"), "sub\\b.txt");
}

TEST_P(CopyingAll, IntoItselfComesToAnEnd) {
  test::Plant(temp_, {L"a.txt", L"into-itself-with-a-long-name-so-that-it-ends-soon\\"});
  const test::InvalidParameter handler;
  EXPECT_EQ(api_.CopyAll(temp_.path(), temp_ / L"into-itself-with-a-long-name-so-that-it-ends-soon\\", 1), 1);
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_LT(temp_.Entries().size(), 20u);
}

TEST_P(CopyingAll, MissingSourceIsAnEmptyWalk) {
  EXPECT_EQ(api_.CopyAll(temp_ / L"missing\\", temp_ / L"to\\", 1), 1);
  EXPECT_EQ(temp_.Entries(), Names{});
}

TEST_P(CopyingAll, FailedCopiesAreNotReportedAndTheWalkGoesOn) {
  test::Plant(temp_, {L"from\\", L"from\\a.txt", L"from\\b.txt", L"from\\c.txt", L"to\\"});
  test::CallLog log([](const test::Call& call) {
    const bool refused = call.kind == 'O' && call.path.ends_with(L"from\\b.txt");
    return test::Answer{refused ? test::Answer::kFail : test::Answer::kReal, ERROR_ACCESS_DENIED};
  });
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 1), 1);
  int attempts = 0;
  for (const auto& call : log.Of('O')) attempts += call.path.ends_with(L"from\\b.txt");
  EXPECT_EQ(attempts, 2) << "once more, after the write check of the destination";
  EXPECT_FALSE(test::Exists(temp_ / L"to\\b.txt"));
  EXPECT_TRUE(test::Exists(temp_ / L"to\\a.txt") && test::Exists(temp_ / L"to\\c.txt"));
}

TEST_P(CopyingAll, NotOnceMoreWhereNothingCanBeWritten) {
  test::Plant(temp_, {L"from\\", L"from\\a.txt", L"to\\"});
  test::CallLog log([](const test::Call& call) {
    const bool refused = call.kind == 'O' && (call.disposition != OPEN_EXISTING);
    return test::Answer{refused ? test::Answer::kFail : test::Answer::kReal, ERROR_ACCESS_DENIED};
  });
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 1), 1);
  int reads = 0;
  for (const auto& call : log.Of('O')) reads += call.path.ends_with(L"from\\a.txt");
  EXPECT_EQ(reads, 1);
}

TEST_P(CopyingAll, FolderThatCannotBeMadeDoesNotStopTheWalk) {
  test::Plant(temp_, {L"from\\", L"from\\sub\\", L"from\\sub\\a.txt", L"from\\z.txt", L"to\\"});
  temp_.File(L"to\\sub", "a file in the folder's place");
  EXPECT_EQ(api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 1), 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"to\\sub"), "a file in the folder's place");
  EXPECT_EQ(test::ReadBytes(temp_ / L"to\\z.txt"), "from\\z.txt");
}

TEST_P(CopyingAll, ReadErrorLeavesAsTheFrameworksExceptionWithNothingOpen) {
  test::Plant(temp_, {L"from\\", L"from\\sub\\", L"from\\sub\\a.txt"});
  const DWORD handles = test::OpenHandles();
  const test::OpenSearches searches;
  test::CallLog log([](const test::Call& call) {
    return test::Answer{call.kind == 'R' ? test::Answer::kFail : test::Answer::kReal, ERROR_READ_FAULT};
  });
  EXPECT_EQ(test::RaisedBy([&] { api_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 1); }),
            ".PEAVCFileException@@");
  EXPECT_EQ(searches.Count(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(CopyingAll, NamesInTheCodePage) {
  const std::wstring name = test::Local().wide;
  test::Plant(temp_, {name + L"\\", name + L"\\" + name + L".txt"});
  EXPECT_EQ(api_.CopyAll(temp_ / name + L"\\", temp_ / L"to" + name + L"\\", 1), 1);
  EXPECT_TRUE(test::Exists(temp_ / L"to" + name + L"\\" + name + L".txt"));
}

TEST(CopyingAllNull, NullStartIsRefused) {
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_COPY_ALL)>(18)(nullptr, "X:\\tmp\\nowhere\\", 1), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_COPY_ALL_UC)>(1018)(nullptr, L"X:\\tmp\\nowhere\\", 1), 0);
}

}  // namespace
