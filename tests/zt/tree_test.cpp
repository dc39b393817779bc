// SPDX-License-Identifier: MIT
// Whole folders from the command line: what is deleted or copied, and what stays.
#include <gtest/gtest.h>

#include "Zt.h"
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
  for (const wchar_t* filter : {L".log", L"*.LOG"}) {
    const Result result = Zt({L"tree", L"delete", logs, filter});
    EXPECT_EQ(0u, result.exit) << result;
    EXPECT_TRUE(result.out.starts_with("deleted all .")) << result;
    EXPECT_NE(result.out.npos, result.out.find(test::Utf8(logs)));
    EXPECT_EQ("", result.err);
    EXPECT_EQ((Names{L"logs\\", L"logs\\keep.txt", L"outside.log"}), folder.Entries());
  }
  EXPECT_EQ(0u, Zt({L"tree", L"delete", logs, L"*.*"}).exit);
  EXPECT_EQ((Names{L"logs\\", L"outside.log"}), folder.Entries());
}

TEST_F(ZtTree, PrunesByAge) {
  const Names all = folder.Entries();
  EXPECT_EQ(0u, Zt({L"tree", L"prune", logs, L".log", L"3h"}).exit);
  EXPECT_EQ(all, folder.Entries());
  const Result result = Zt({L"tree", L"prune", logs, L".log", L"90m"});
  EXPECT_EQ(0u, result.exit) << result;
  EXPECT_NE(result.out.npos, result.out.find("created more than 5400 s ago")) << result;
  EXPECT_EQ((Names{L"logs\\", L"logs\\deep\\", L"logs\\keep.txt", L"logs\\new.LOG", L"outside.log"}),
            folder.Entries());
  MakeOld(logs + L"keep.txt", 100);
  EXPECT_EQ(0u, Zt({L"tree", L"prune", logs, L"*.*", L"60"}).exit);
  EXPECT_EQ((Names{L"logs\\", L"logs\\deep\\", L"logs\\new.LOG", L"outside.log"}), folder.Entries());
}

TEST_F(ZtTree, CopiesKeepingOrReplacing) {
  const std::wstring copy = folder / L"copy\\";
  EXPECT_EQ(0u, Zt({L"tree", L"copy", logs, copy, L"keep"}).exit);
  EXPECT_EQ("old", test::ReadBytes(copy + L"deep\\old-\u65E5\u672C.log"));
  test::WriteBytes(copy + L"keep.txt", "mine");
  EXPECT_EQ(0u, Zt({L"tree", L"copy", logs, copy, L"keep"}).exit);
  EXPECT_EQ("mine", test::ReadBytes(copy + L"keep.txt"));
  EXPECT_EQ(0u, Zt({L"tree", L"copy", logs, copy, L"overwrite"}).exit);
  EXPECT_EQ("keep", test::ReadBytes(copy + L"keep.txt"));
}

TEST_F(ZtTree, FailuresSayWhat) {
  for (const auto& arguments : {Names{L"tree", L"delete", folder / L"none\\", L"*.*"},
                                Names{L"tree", L"prune", folder / L"none\\", L"*.*", L"0"},
                                Names{L"tree", L"copy", folder / L"none\\", folder / L"copy\\", L"keep"},
                                Names{L"tree", L"delete", folder / L"outside.log\\", L"*.*"}}) {
    const Result result = Zt(arguments);
    EXPECT_EQ(1u, result.exit);
    EXPECT_EQ("", result.out);
    EXPECT_EQ("zt: there is no folder " + test::Utf8(arguments[2]) + "\r\n", result.err);
  }
  const HANDLE held = ::CreateFileW((logs + L"old.log").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  const Result result = Zt({L"tree", L"delete", logs, L".log"});
  ::CloseHandle(held);
  EXPECT_EQ(1u, result.exit);
  EXPECT_EQ("", result.out);
  EXPECT_TRUE(result.err.starts_with("zt: could not delete all .log files under ")) << result;
  EXPECT_EQ((Names{L"logs\\", L"logs\\keep.txt", L"logs\\old.log", L"outside.log"}), folder.Entries());
}

}  // namespace
