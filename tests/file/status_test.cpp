// SPDX-License-Identifier: MIT
// What the platform says of a path, and which of it counts.
#include <gtest/gtest.h>

#include <set>

#include "FileApi.h"
#include "support/ImportHook.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

const auto Exist = test::Export<decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1001);
const auto GetSize = test::Export<decltype(ZERA_TOOLS_FILE_GET_SIZE_UC)>(1004);
const auto Wait = test::Export<decltype(ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC)>(1006);
const auto ToBuffer = test::Export<decltype(ZERA_TOOLS_FILE_TO_BUFFER_UC)>(1025);
const auto Modified = test::Export<decltype(ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC)>(1027);
const auto DeleteAll = test::Export<decltype(ZERA_TOOLS_FILE_DELETE_ALL_UC)>(1003);

// Some file systems report the size of a folder's list, 4096 bytes for example.
BOOL WINAPI QueryWithFolderSize(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) {
  if (!::GetFileAttributesExW(path, level, data)) return FALSE;
  auto& found = *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data);
  if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) found.nFileSizeLow = 4096;
  return TRUE;
}

TEST(Status, FoldersHaveNoSize) {
  const test::TempFolder temp;
  const std::wstring folder = temp.Folder(L"folder");
  const test::ImportHook query("GetFileAttributesExW", &QueryWithFolderSize);
  const test::ImportHook sleep(
      "Sleep", +[](DWORD) {});
  EXPECT_EQ(GetSize(folder.c_str()), 0u);
  EXPECT_EQ(Wait(folder.c_str(), 60), 0);
  unsigned char bytes[5000];
  unsigned __int64 count = 7;
  EXPECT_EQ(ToBuffer(folder.c_str(), bytes, sizeof bytes, &count), 0);
  EXPECT_EQ(count, 7u);
  static int queries;
  queries = 0;
  const test::ImportHook counted(
      "GetFileAttributesExW", +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) {
        ++queries;
        return QueryWithFolderSize(path, level, data);
      });
  EXPECT_EQ(Exist(folder.c_str()), 1);
  EXPECT_EQ(queries, 2) << "what has no size is asked for once more";
}

// Three times that differ: of these the modification's is told.
TEST(Status, TheTimeOfModificationIsNoOther) {
  const test::TempFolder temp;
  const std::wstring file = temp.File(L"a.txt", "text");
  const test::ImportHook query(
      "GetFileAttributesExW", +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) -> BOOL {
        if (!::GetFileAttributesExW(path, level, data)) return FALSE;
        auto& found = *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data);
        const auto time = [](unsigned long long seconds) {
          ULARGE_INTEGER steps;
          steps.QuadPart = (seconds + 11644473600) * 10000000;
          return FILETIME{steps.LowPart, steps.HighPart};
        };
        found.ftCreationTime = time(1000000001);
        found.ftLastWriteTime = time(1000000002);
        found.ftLastAccessTime = time(1000000003);
        return TRUE;
      });
  long long time = 0;
  EXPECT_EQ(Modified(file.c_str(), &time), 1);
  EXPECT_EQ(time, 1000000002);
}

// Searches that are opened and closed, by the library.
std::set<HANDLE> searches;
int opened;
struct WatchedSearches {
  WatchedSearches() {
    searches.clear();
    opened = 0;
  }
  test::ImportHook first{"FindFirstFileW", +[](const wchar_t* path, WIN32_FIND_DATAW* data) {
                           const HANDLE search = ::FindFirstFileW(path, data);
                           if (search != INVALID_HANDLE_VALUE) {
                             searches.insert(search);
                             ++opened;
                           }
                           return search;
                         }};
  test::ImportHook close{"FindClose", +[](HANDLE search) {
                           EXPECT_EQ(searches.erase(search), 1u);
                           return ::FindClose(search);
                         }};
};

TEST(Status, SearchesOfDeniedQueriesAreClosed) {
  const test::TempFolder temp;
  const std::wstring file = temp.File(L"a.txt", "text");
  const WatchedSearches watched;
  const test::ImportHook query(
      "GetFileAttributesExW", +[](const wchar_t*, GET_FILEEX_INFO_LEVELS, void*) -> BOOL {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
      });
  EXPECT_EQ(GetSize(file.c_str()), 4u);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(searches.size(), 0u);
  EXPECT_EQ(GetSize((temp / L"missing").c_str()), 0u);
  EXPECT_EQ(searches.size(), 0u);
}

TEST(Status, SearchesOfFolderLinksAreClosed) {
  const test::TempFolder temp;
  temp.Folder(L"link");
  const WatchedSearches watched;
  const test::ImportHook next(
      "FindNextFileW", +[](HANDLE search, WIN32_FIND_DATAW* data) {
        const BOOL more = ::FindNextFileW(search, data);
        if (std::wstring(data->cFileName) == L"link") data->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
        return more;
      });
  EXPECT_EQ(DeleteAll(temp.path().c_str(), L".*"), 1);
  // The walk's own and the link's.
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(searches.size(), 0u);
}

}  // namespace
