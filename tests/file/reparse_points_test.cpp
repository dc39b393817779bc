// SPDX-License-Identifier: MIT
// Walks of a tree with folders that are reparse points: links to elsewhere are passed over, others visited.
#include <gtest/gtest.h>

#include <algorithm>

#include "CallLog.h"
#include "DirectoryApi.h"
#include "support/ImportHook.h"

namespace {

// The folders of a cloud drive have the attribute of links as well, but another kind of reparse point.
DWORD theTag;
bool theKindIsDenied;

bool IsCloud(const wchar_t* path) {
  return std::wstring(path).ends_with(L"\\cloud");
}

HANDLE WINAPI FindFirstWithTag(const wchar_t* path, WIN32_FIND_DATAW* data) {
  if (IsCloud(path)) {
    // What a failed search leaves there means nothing.
    std::fill_n(reinterpret_cast<char*>(data), sizeof *data, '\x1A');
    if (theKindIsDenied) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      return INVALID_HANDLE_VALUE;
    }
  }
  const HANDLE search = ::FindFirstFileW(path, data);
  if (IsCloud(path)) data->dwReserved0 = theTag;
  return search;
}
BOOL WINAPI FindNextWithAttribute(HANDLE search, WIN32_FIND_DATAW* data) {
  const BOOL more = ::FindNextFileW(search, data);
  if (std::wstring(data->cFileName) == L"cloud") data->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
  return more;
}

class ReparsePoints : public ::testing::Test {
 protected:
  ReparsePoints() { theKindIsDenied = false; }
  static bool IsVisited(DWORD tag) {
    const test::TempFolder temp;
    test::Plant(temp, {L"cloud\\", L"cloud\\a.log"});
    theTag = tag;
    EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp.path(), L".log"), 1);
    return temp.Entries().empty();
  }

 private:
  const test::ImportHook first_{"FindFirstFileW", &FindFirstWithTag};
  const test::ImportHook next_{"FindNextFileW", &FindNextWithAttribute};
};

TEST_F(ReparsePoints, AreVisitedUnlessTheyNameAnotherPlace) {
  EXPECT_TRUE(IsVisited(0x9000001A)) << "cloud";
  EXPECT_TRUE(IsVisited(static_cast<DWORD>(IO_REPARSE_TAG_DEDUP)));
  EXPECT_FALSE(IsVisited(static_cast<DWORD>(IO_REPARSE_TAG_MOUNT_POINT))) << "a junction";
  EXPECT_FALSE(IsVisited(static_cast<DWORD>(IO_REPARSE_TAG_SYMLINK)));
}

// Passing over a folder loses nothing, walking through a link may.
TEST_F(ReparsePoints, OfAnUnknownKindAreLinks) {
  EXPECT_FALSE(IsVisited(0));
  theKindIsDenied = true;
  EXPECT_FALSE(IsVisited(0x9000001A));
}

}  // namespace
