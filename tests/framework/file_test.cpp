// SPDX-License-Identifier: MIT
// The framework's file object, file status and finder against the platform they stand on.
#include <afx.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/CurrentFolder.h"
#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace {

HMODULE Self() {
  return ::GetModuleHandleW(nullptr);
}

template <class Body>
int CauseOf(Body body) {
  try {
    body();
  } catch (CFileException* exception) {
    const int cause = exception->m_cause;
    exception->Delete();
    return cause;
  }
  return -1;
}

class File : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(test::OpenHandles(), handles_); }

  // A path of exactly this many characters that names a file of the test's folder.
  std::wstring PathOfLength(std::size_t length) const {
    std::wstring path = folder_.path() + L"f.txt";
    while (path.size() + 2 <= length) path.insert(folder_.path().size(), L".\\");
    if (path.size() < length) path.insert(folder_.path().size(), L"\\");
    EXPECT_EQ(path.size(), length);
    return path;
  }

  const test::TempFolder folder_;
  const DWORD handles_ = test::OpenHandles();
};

// --- Status

TEST_F(File, StatusOfAFile) {
  const std::wstring path = folder_.File(L"f.txt", "12345");
  CFileStatus status;
  ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
  EXPECT_EQ(status.m_size, 5u);
  EXPECT_EQ(status.m_szFullName, path);
  EXPECT_FALSE(status.m_attribute & FILE_ATTRIBUTE_DIRECTORY);

  WIN32_FILE_ATTRIBUTE_DATA data;
  ASSERT_TRUE(::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data));
  const ULONGLONG steps =
      static_cast<ULONGLONG>(data.ftLastWriteTime.dwHighDateTime) << 32 | data.ftLastWriteTime.dwLowDateTime;
  EXPECT_EQ(status.m_mtime.GetTime(), static_cast<long long>(steps / 10'000'000) - 11'644'473'600);
}

TEST_F(File, StatusKnowsSizesBeyond32Bits) {
  const std::wstring path = folder_.File(L"large.bin", "");
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  LARGE_INTEGER size;
  size.QuadPart = 5ll << 30;
  ASSERT_TRUE(::SetFilePointerEx(file, size, nullptr, FILE_BEGIN));
  ASSERT_TRUE(::SetEndOfFile(file));
  ::CloseHandle(file);
  CFileStatus status;
  ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
  EXPECT_EQ(status.m_size, 5ull << 30);
}

TEST_F(File, StatusOfFoldersAndRelativePaths) {
  const std::wstring inner = folder_.Folder(L"inner");
  CFileStatus status;
  ASSERT_TRUE(CFile::GetStatus(inner.c_str(), status));
  EXPECT_TRUE(status.m_attribute & FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(status.m_size, 0u);
  ASSERT_TRUE(CFile::GetStatus(L"X:\\", status));
  EXPECT_TRUE(status.m_attribute & FILE_ATTRIBUTE_DIRECTORY);

  const test::CurrentFolder current(folder_.path());
  folder_.File(L"f.txt", "1");
  EXPECT_TRUE(CFile::GetStatus(L"inner\\..\\f.txt", status));
  EXPECT_EQ(status.m_szFullName, folder_ / L"f.txt");
}

TEST_F(File, StatusOfWhatIsNoSingleFile) {
  folder_.File(L"f.txt", "1");
  CFileStatus status;
  for (const std::wstring& path : {folder_ / L"missing.txt", folder_ / L"*.txt", folder_ / L"?.txt",
                                   folder_ / L"f.txt\\below", std::wstring(), std::wstring(32'767, L'x')}) {
    EXPECT_FALSE(CFile::GetStatus(path.c_str(), status)) << test::Ansi(path.substr(0, 80));
  }
  EXPECT_FALSE(CFile::GetStatus(nullptr, status));
}

TEST_F(File, PathsMayHave259Characters) {
  folder_.File(L"f.txt", "1");
  CFileStatus status;
  CFile file;
  EXPECT_TRUE(CFile::GetStatus(PathOfLength(259).c_str(), status));
  EXPECT_FALSE(CFile::GetStatus(PathOfLength(260).c_str(), status));
  EXPECT_TRUE(file.Open(PathOfLength(259).c_str(), CFile::modeRead));
  EXPECT_FALSE(file.Open(PathOfLength(260).c_str(), CFile::modeRead));
  CFileFind finder;
  EXPECT_TRUE(finder.FindFile(PathOfLength(259).c_str()));
  EXPECT_FALSE(finder.FindFile(PathOfLength(260).c_str()));
  EXPECT_TRUE(finder.FindFile(L"*"));
  EXPECT_FALSE(finder.FindFile(L""));
}

BOOL WINAPI DeniedQuery(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID) {
  ::SetLastError(ERROR_SHARING_VIOLATION);
  return FALSE;
}
BOOL WINAPI BrokenQuery(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID) {
  ::SetLastError(ERROR_NOT_READY);
  return FALSE;
}

// A file that others hold in a special way refuses the query; its folder's list still tells.
TEST_F(File, StatusOfAFileThatRefusesTheQuery) {
  const std::wstring path = folder_.File(L"f.txt", "12345");
  CFileStatus status;
  {
    const test::ImportHook hook("GetFileAttributesExW", &DeniedQuery, Self());
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_FALSE(CFile::GetStatus((folder_ / L"missing.txt").c_str(), status));
  }
  EXPECT_EQ(status.m_size, 5u);
  const test::ImportHook hook("GetFileAttributesExW", &BrokenQuery, Self());
  EXPECT_FALSE(CFile::GetStatus(path.c_str(), status));
}

DWORD WINAPI NoFullPath(LPCWSTR, DWORD, LPWSTR, LPWSTR*) {
  return 0;
}

TEST_F(File, StatusNeedsTheFullName) {
  const std::wstring path = folder_.File(L"f.txt", "12345");
  const test::ImportHook hook("GetFullPathNameW", &NoFullPath, Self());
  CFileStatus status;
  EXPECT_FALSE(CFile::GetStatus(path.c_str(), status));
  CFileFind finder;
  EXPECT_FALSE(finder.FindFile(path.c_str()));
}

// --- Opening

struct Opened {
  DWORD access, share, disposition;
  BOOL inherit;
};
Opened opened;

HANDLE WINAPI WatchedOpen(LPCWSTR, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                          DWORD disposition, DWORD, HANDLE) {
  opened = {access, share, disposition, security->bInheritHandle};
  ::SetLastError(ERROR_SHARING_VIOLATION);
  return INVALID_HANDLE_VALUE;
}

TEST_F(File, FlagsBecomeThePlatforms) {
  const struct {
    UINT flags;
    Opened expected;
  } rows[] = {
      {CFile::modeRead, {GENERIC_READ, 0, OPEN_EXISTING, TRUE}},
      {0x20, {GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, TRUE}},
      {0x1011, {GENERIC_WRITE, 0, CREATE_ALWAYS, TRUE}},
      {0x1001, {GENERIC_WRITE, 0, CREATE_ALWAYS, TRUE}},
      {CFile::modeReadWrite | CFile::shareDenyNone,
       {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, TRUE}},
      {CFile::modeWrite | CFile::shareDenyRead | CFile::modeCreate | CFile::modeNoTruncate,
       {GENERIC_WRITE, FILE_SHARE_WRITE, OPEN_ALWAYS, TRUE}},
      {CFile::modeRead | CFile::modeNoInherit, {GENERIC_READ, 0, OPEN_EXISTING, FALSE}},
  };
  const test::ImportHook hook("CreateFileW", &WatchedOpen, Self());
  for (const auto& row : rows) {
    CFile file;
    EXPECT_FALSE(file.Open(L"X:\\any", row.flags));
    EXPECT_EQ(opened.access, row.expected.access) << std::hex << row.flags;
    EXPECT_EQ(opened.share, row.expected.share) << std::hex << row.flags;
    EXPECT_EQ(opened.disposition, row.expected.disposition) << std::hex << row.flags;
    EXPECT_EQ(opened.inherit, row.expected.inherit) << std::hex << row.flags;
  }
}

TEST_F(File, FailureToOpenIsAResultWithAReason) {
  CFile file;
  CFileException error(CFileException::none, 0, nullptr);
  const std::wstring path = folder_ / L"missing.txt";
  EXPECT_FALSE(file.Open(path.c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_EQ(error.m_lOsError, ERROR_FILE_NOT_FOUND);
  EXPECT_STREQ(error.m_strFileName, path.c_str());
  EXPECT_FALSE(file.Open(L"", CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::badPath);
  EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
  EXPECT_FALSE(file.Open(folder_.path().c_str(), CFile::modeRead));
}

// --- Reading, writing, closing

TEST_F(File, ReadsAndWrites) {
  const std::wstring path = folder_ / L"f.bin";
  CFile file;
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite));
  file.Write("0123456789", 10);
  file.Write("", 0);
  file.Close();
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeRead));
  char block[8] = {};
  EXPECT_EQ(file.Read(block, 8), 8u);
  EXPECT_EQ(file.Read(block, 8), 2u);
  EXPECT_EQ(file.Read(block, 8), 0u);
  file.Close();
  file.Close();
  EXPECT_EQ(test::ReadBytes(path), "0123456789");
}

BOOL WINAPI FailingRead(HANDLE, LPVOID, DWORD, LPDWORD, LPOVERLAPPED) {
  ::SetLastError(ERROR_LOCK_VIOLATION);
  return FALSE;
}
BOOL WINAPI FailingWrite(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) {
  ::SetLastError(ERROR_DISK_FULL);
  return FALSE;
}
BOOL WINAPI ShortWrite(HANDLE, LPCVOID, DWORD count, LPDWORD written, LPOVERLAPPED) {
  *written = count - 1;
  return TRUE;
}

TEST_F(File, FailuresAreExceptions) {
  const std::wstring path = folder_.File(L"f.bin", "data");
  CFile file;
  char block[4];
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite));
  {
    const test::ImportHook hook("ReadFile", &FailingRead, Self());
    EXPECT_EQ(CauseOf([&] { file.Read(block, 4); }), CFileException::lockViolation);
    EXPECT_EQ(CauseOf([&] { file.Read(block, 0); }), -1);
  }
  {
    const test::ImportHook hook("WriteFile", &FailingWrite, Self());
    EXPECT_EQ(CauseOf([&] { file.Write(block, 4); }), CFileException::diskFull);
  }
  {
    const test::ImportHook hook("WriteFile", &ShortWrite, Self());
    EXPECT_EQ(CauseOf([&] { file.Write(block, 4); }), CFileException::diskFull);
  }
  file.Close();
}

// --- The finder

std::multiset<std::wstring> Found(const std::wstring& pattern) {
  std::multiset<std::wstring> paths;
  CFileFind finder;
  BOOL more = finder.FindFile(pattern.c_str());
  while (more) {
    more = finder.FindNextFileW();
    if (!finder.IsDots())
      paths.insert(std::wstring(finder.GetFilePath()) + (finder.IsDirectory() ? L"\\" : L""));
  }
  return paths;
}

TEST_F(File, FinderListsEachEntryOnce) {
  folder_.File(L"a.txt", "");
  folder_.File(L"b.txt", "");
  folder_.File(L"..hidden", "");
  folder_.Folder(L"inner");
  EXPECT_EQ(Found(folder_ / L"*.*"), (std::multiset<std::wstring>{folder_ / L"..hidden", folder_ / L"a.txt",
                                                                  folder_ / L"b.txt", folder_ / L"inner\\"}));
  EXPECT_EQ(Found(folder_ / L"a*"), std::multiset<std::wstring>{folder_ / L"a.txt"});
  EXPECT_TRUE(Found(folder_ / L"*.none").empty());
  EXPECT_TRUE(Found(folder_ / L"none\\*.*").empty());
  EXPECT_TRUE(Found(L"").empty());
}

TEST_F(File, FinderGivesFullPaths) {
  folder_.Folder(L"inner");
  folder_.File(L"inner\\f.txt", "");
  const test::CurrentFolder current(folder_.path());
  EXPECT_EQ(Found(L"inner\\*.*"), std::multiset<std::wstring>{folder_ / L"inner\\f.txt"});
  EXPECT_EQ(Found(L".\\inner/*.*"), std::multiset<std::wstring>{folder_ / L"inner\\f.txt"});
  EXPECT_EQ(Found(L"i*"), std::multiset<std::wstring>{folder_ / L"inner\\"});
}

TEST_F(File, FinderClosesWhatItOpened) {
  folder_.File(L"a.txt", "");
  const DWORD before = test::OpenHandles();
  CFileFind finder;
  for (int round = 0; round < 3; ++round) ASSERT_TRUE(finder.FindFile((folder_ / L"*").c_str()));
  finder.Close();
  finder.Close();
  EXPECT_FALSE(finder.FindNextFileW());
  EXPECT_EQ(test::OpenHandles(), before);
}

}  // namespace
