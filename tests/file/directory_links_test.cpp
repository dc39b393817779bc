// SPDX-License-Identifier: MIT
// Walks of a tree with folder links in it, made by folder_links.sh:
//   tree\top.log, tree\out (to outside)
//   tree\sub\sub.log, tree\sub\back (to tree), tree\sub\again (to tree), outside\keep.log
#include <gtest/gtest.h>

#include "CallLog.h"
#include "DirectoryApi.h"

namespace {

const std::wstring kLinks = L"X:\\tmp\\links\\";

DWORD Attributes(const std::wstring& name) {
  return ::GetFileAttributesW((kLinks + name).c_str());
}

// First, and the only check that the others make sense.
TEST(FolderLinks, AreThere) {
  for (const wchar_t* const name : {L"tree\\sub\\back", L"tree\\sub\\again", L"tree\\out"}) {
    ASSERT_NE(Attributes(name), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(Attributes(name) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_TRUE(Attributes(name) & FILE_ATTRIBUTE_REPARSE_POINT);
  }
  EXPECT_TRUE(test::Exists(kLinks + L"tree\\sub\\back\\sub\\again\\top.log"));
}

TEST(FolderLinks, CopyPassesThemOver) {
  const test::TempFolder temp;
  EXPECT_EQ(test::DirectoryApi(true).CopyAll(kLinks + L"tree\\", temp / L"to\\", 1), 1);
  EXPECT_EQ(temp.Entries(), (test::Names{L"to\\", L"to\\sub\\", L"to\\sub\\sub.log", L"to\\top.log"}));
}

TEST(FolderLinks, DeletionsPassThemOverAndKeepThem) {
  const auto wide = test::DirectoryApi(true);
  test::CallLog log;
  EXPECT_EQ(wide.DeleteOld(kLinks + L"tree\\", L".none", 0), 1);
  EXPECT_EQ(wide.DeleteAll(kLinks + L"tree\\", L".log"), 1);
  EXPECT_EQ(log.Of('D').size(), 2u) << "each file is visited once";
  EXPECT_EQ(wide.DeleteAll(kLinks + L"tree\\", L".*"), 1);
  EXPECT_EQ(wide.DeleteOld(kLinks + L"tree\\", L"*.*", 0), 1);
  for (const wchar_t* const name : {L"tree\\sub\\back", L"tree\\sub\\again", L"tree\\out"}) {
    EXPECT_NE(Attributes(name), INVALID_FILE_ATTRIBUTES) << "the link itself stays";
  }
  EXPECT_FALSE(test::Exists(kLinks + L"tree\\top.log"));
  EXPECT_FALSE(test::Exists(kLinks + L"tree\\sub\\sub.log"));
  EXPECT_EQ(test::ReadBytes(kLinks + L"outside\\keep.log"), "keep\n");
}

}  // namespace
