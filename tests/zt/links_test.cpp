// SPDX-License-Identifier: MIT
// zt's whole folders with links in them, as folder_links.sh makes them:
//   tree\top.log, tree\out (to outside), tree\sub\sub.log, tree\sub\back and tree\sub\again (to tree)
//   outside\keep.log, files\one.txt (to outside\keep.log)
#include <gtest/gtest.h>

#include <algorithm>

#include "Zt.h"
#include "support/TempFolder.h"

namespace {

using test::Zt;
using Names = std::vector<std::wstring>;

const std::wstring kLinks = L"X:\\tmp\\zt-links\\";

bool IsLink(const std::wstring& name) {
  const DWORD attributes = ::GetFileAttributesW((kLinks + name).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_REPARSE_POINT;
}

// The lines of an output in order of the alphabet: a folder's entries have none of their own.
using Said = std::vector<std::string>;
Said Sorted(Said lines) {
  std::sort(lines.begin(), lines.end());
  return lines;
}
Said Lines(const test::Result& result) {
  return Sorted(test::Lines(result.out));
}

// First, and the only check that the others make sense.
TEST(ZtLinks, AreThere) {
  for (const wchar_t* const name : {L"tree\\sub\\back", L"tree\\sub\\again", L"tree\\out"}) {
    ASSERT_TRUE(IsLink(name)) << test::Utf8(name);
  }
  ASSERT_EQ("keep\n", test::ReadBytes(kLinks + L"files\\one.txt"));
}

TEST(ZtLinks, CopyPassesFolderLinksOver) {
  const test::TempFolder temp;
  const std::string to = test::Utf8(temp / L"to\\");
  EXPECT_EQ((Said{"would copy 2 files and 1 folder to " + to, "would create " + to + "sub\\",
                  "would create " + to + "sub\\sub.log", "would create " + to + "top.log"}),
            Lines(Zt({L"tree", L"copy", L"--dry-run", kLinks + L"tree\\", temp / L"to\\", L"keep"})));
  EXPECT_TRUE(temp.Entries().empty());
  const auto copied = Zt({L"tree", L"copy", kLinks + L"tree\\", temp / L"to\\", L"keep"});
  EXPECT_EQ("copied 2 files and 1 folder to " + to + "\r\n", copied.out);
  EXPECT_EQ(0u, copied.exit) << copied;
  EXPECT_EQ((Names{L"to\\", L"to\\sub\\", L"to\\sub\\sub.log", L"to\\top.log"}), temp.Entries());
}

TEST(ZtLinks, CopyTakesWhatALinkToAFileLeadsTo) {
  const test::TempFolder temp;
  const auto copied = Zt({L"tree", L"copy", kLinks + L"files\\", temp / L"to\\", L"overwrite"});
  EXPECT_EQ("copied 1 file and 0 folders to " + test::Utf8(temp / L"to\\") + "\r\n", copied.out);
  EXPECT_EQ("keep\n", test::ReadBytes(temp / L"to\\one.txt"));
}

// A link is neither listed nor counted; the folder that holds one is not empty and stays.
TEST(ZtLinks, DeletionsPassFolderLinksOverAndKeepThem) {
  const std::string tree = test::Utf8(kLinks + L"tree\\");
  const Said wanted = Sorted({"would delete " + tree + "sub\\sub.log", "would delete " + tree + "top.log",
                              "would delete 2 files and 0 folders under " + tree});
  EXPECT_EQ(wanted, Lines(Zt({L"tree", L"delete", L"--dry-run", kLinks + L"tree\\", L"*.*"})));
  EXPECT_EQ(wanted, Lines(Zt({L"tree", L"prune", L"--dry-run", kLinks + L"tree\\", L".log", L"0s"})));
  EXPECT_EQ("deleted 0 files and 0 folders under " + tree + "\r\n",
            Zt({L"tree", L"prune", kLinks + L"tree\\", L".log", L"365d"}).out);
  const auto deleted = Zt({L"tree", L"delete", kLinks + L"tree\\", L"*.*"});
  EXPECT_EQ("deleted 2 files and 0 folders under " + tree + "\r\n", deleted.out);
  EXPECT_EQ("", deleted.err);
  EXPECT_EQ(0u, deleted.exit);
  for (const wchar_t* const name : {L"tree\\sub\\back", L"tree\\sub\\again", L"tree\\out"}) {
    EXPECT_TRUE(IsLink(name)) << test::Utf8(name);
  }
  EXPECT_EQ("keep\n", test::ReadBytes(kLinks + L"outside\\keep.log"));
}

// A link to a file counts as a file. (Only listed here: Wine would delete what it leads to.)
TEST(ZtLinks, ALinkToAFileIsDeletedLikeAFile) {
  const std::string files = test::Utf8(kLinks + L"files\\");
  const Said wanted =
      Sorted({"would delete " + files + "one.txt", "would delete 1 file and 0 folders under " + files});
  EXPECT_EQ(wanted, Lines(Zt({L"tree", L"delete", L"--dry-run", kLinks + L"files\\", L".txt"})));
}

}  // namespace
