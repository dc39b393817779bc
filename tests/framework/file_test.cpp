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

TEST_F(File, PathsMayHaveOneCharacter) {
  const test::CurrentFolder current(folder_.path());
  folder_.File(L"f", "1");
  CFileStatus status;
  EXPECT_TRUE(CFile::GetStatus(L"f", status));
  EXPECT_EQ(status.m_szFullName, folder_ / L"f");
  CFile file;
  EXPECT_TRUE(file.Open(L"f", CFile::modeRead));
  CFileFind finder;
  EXPECT_TRUE(finder.FindFile(L"f"));
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

// Answers that differ in each part, of the query and of the folder's list.
FILETIME SecondsSince1970(ULONGLONG seconds) {
  const ULONGLONG steps = (seconds + 11'644'473'600) * 10'000'000;
  return {static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)};
}
BOOL WINAPI DistinctQuery(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID out) {
  *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(out) = {FILE_ATTRIBUTE_NORMAL,
                                                   SecondsSince1970(1'000'000'001),
                                                   SecondsSince1970(1'000'000'002),
                                                   SecondsSince1970(1'000'000'003),
                                                   4,
                                                   5};
  return TRUE;
}
HANDLE WINAPI DistinctEntry(LPCWSTR path, WIN32_FIND_DATAW* found) {
  const HANDLE search =
      test::Platform<decltype(FindFirstFileW)>(L"kernel32.dll", "FindFirstFileW")(path, found);
  found->dwFileAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_NORMAL;
  found->ftCreationTime = SecondsSince1970(1'000'000'011);
  found->ftLastAccessTime = SecondsSince1970(1'000'000'012);
  found->ftLastWriteTime = SecondsSince1970(1'000'000'013);
  found->nFileSizeHigh = 6;
  found->nFileSizeLow = 7;
  return search;
}

TEST_F(File, EachPartOfTheStatusIsItsOwn) {
  const std::wstring path = folder_.File(L"f.txt", "12345");
  CFileStatus status;
  {
    const test::ImportHook query("GetFileAttributesExW", &DistinctQuery, Self());
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
  }
  EXPECT_EQ(status.m_ctime.GetTime(), 1'000'000'001);
  EXPECT_EQ(status.m_atime.GetTime(), 1'000'000'002);
  EXPECT_EQ(status.m_mtime.GetTime(), 1'000'000'003);
  EXPECT_EQ(status.m_size, 0x400000005u);
  EXPECT_EQ(status.m_attribute, 0u) << "normal is the absence of others";
  const test::ImportHook query("GetFileAttributesExW", &DeniedQuery, Self());
  const test::ImportHook entry("FindFirstFileW", &DistinctEntry, Self());
  ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
  EXPECT_EQ(status.m_ctime.GetTime(), 1'000'000'011);
  EXPECT_EQ(status.m_atime.GetTime(), 1'000'000'012);
  EXPECT_EQ(status.m_mtime.GetTime(), 1'000'000'013);
  EXPECT_EQ(status.m_size, 0x600000007u);
  EXPECT_EQ(status.m_attribute, static_cast<DWORD>(FILE_ATTRIBUTE_HIDDEN));
}

// The full name as it would be, and an answer that it is not there or too long.
DWORD fullLength;
DWORD WINAPI RefusedFullPath(LPCWSTR path, DWORD capacity, LPWSTR full, LPWSTR* name) {
  test::Platform<decltype(GetFullPathNameW)>(L"kernel32.dll", "GetFullPathNameW")(path, capacity, full, name);
  return fullLength;
}

TEST_F(File, StatusNeedsTheFullName) {
  const std::wstring path = folder_.File(L"f.txt", "12345");
  const test::ImportHook hook("GetFullPathNameW", &RefusedFullPath, Self());
  for (fullLength = 0; fullLength <= 261; fullLength += 261) {
    CFileStatus status;
    EXPECT_FALSE(CFile::GetStatus(path.c_str(), status)) << fullLength;
    CFileFind finder;
    EXPECT_FALSE(finder.FindFile(path.c_str())) << fullLength;
  }
}

// --- Opening

struct Opened {
  DWORD access, share, disposition;
  BOOL inherit;
};
Opened opened;

HANDLE WINAPI WatchedOpen(LPCWSTR, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                          DWORD disposition, DWORD attributes, HANDLE model) {
  EXPECT_EQ(attributes, static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
  EXPECT_EQ(model, nullptr);
  EXPECT_EQ(security->nLength, sizeof *security);
  EXPECT_EQ(security->lpSecurityDescriptor, nullptr);
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
  const std::wstring tooLong(260, L'x');
  EXPECT_FALSE(file.Open(tooLong.c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::badPath);
  EXPECT_EQ(error.m_lOsError, ERROR_BAD_PATHNAME);
  EXPECT_STREQ(error.m_strFileName, tooLong.c_str());
  EXPECT_FALSE(file.Open(L"", CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::badPath);
  EXPECT_STREQ(error.m_strFileName, L"");
  EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
  EXPECT_FALSE(file.Open(folder_.path().c_str(), CFile::modeRead));
}

TEST_F(File, PathsThatNameNothingAreNotOpened) {
  const test::ImportHook hook("CreateFileW", &WatchedOpen, Self());
  opened = {};
  for (const wchar_t* const path : {static_cast<const wchar_t*>(nullptr), L""}) {
    CFile file;
    EXPECT_FALSE(file.Open(path, CFile::modeRead));
  }
  EXPECT_EQ(opened.access, 0u) << "the platform is not asked";
}

TEST_F(File, OpeningClosesWhatWasOpen) {
  const std::wstring path = folder_.File(L"f.txt", "1");
  CFile file;
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite));
  EXPECT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite)) << "nobody else has it";
  EXPECT_FALSE(file.Open(L"", CFile::modeRead));
  EXPECT_TRUE(::DeleteFileW(path.c_str()));
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
    EXPECT_EQ(CauseOf([&] { file.Write(block, 0); }), -1) << "nothing is asked for";
  }
  {
    const test::ImportHook hook("WriteFile", &ShortWrite, Self());
    EXPECT_EQ(CauseOf([&] { file.Write(block, 4); }), CFileException::diskFull);
  }
  file.Close();
}

BOOL WINAPI FailingClose(HANDLE handle) {
  test::Platform<decltype(CloseHandle)>(L"kernel32.dll", "CloseHandle")(handle);
  ::SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

// Each failure names the file that is open now.
TEST_F(File, ExceptionsNameTheFile) {
  const std::wstring longer = folder_.File(L"longer.bin", "data"), path = folder_.File(L"f.bin", "data");
  const auto nameIn = [](const auto& body) {
    std::wstring name;
    try {
      body();
    } catch (CFileException* exception) {
      name = exception->m_strFileName;
      exception->Delete();
    }
    return name;
  };
  CFile file;
  char block[4];
  ASSERT_TRUE(file.Open(longer.c_str(), CFile::modeReadWrite));
  ASSERT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite));
  {
    const test::ImportHook hook("ReadFile", &FailingRead, Self());
    EXPECT_EQ(nameIn([&] { file.Read(block, 4); }), path);
  }
  {
    const test::ImportHook hook("WriteFile", &FailingWrite, Self());
    EXPECT_EQ(nameIn([&] { file.Write(block, 4); }), path);
  }
  {
    const test::ImportHook hook("WriteFile", &ShortWrite, Self());
    EXPECT_EQ(nameIn([&] { file.Write(block, 4); }), path);
  }
  const test::ImportHook hook("CloseHandle", &FailingClose, Self());
  EXPECT_EQ(nameIn([&] { file.Close(); }), path);
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
  folder_.Folder(L".a");
  folder_.Folder(L"..a");
  EXPECT_EQ(Found(folder_ / L"*.*"),
            (std::multiset<std::wstring>{folder_ / L"..a\\", folder_ / L"..hidden", folder_ / L".a\\",
                                         folder_ / L"a.txt", folder_ / L"b.txt", folder_ / L"inner\\"}));
  // (Not of a letter with which the short name of one that begins with a period may begin.)
  EXPECT_EQ(Found(folder_ / L"b*"), std::multiset<std::wstring>{folder_ / L"b.txt"});
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
  ASSERT_TRUE(finder.FindFile((folder_ / L"*").c_str()));
  EXPECT_FALSE(finder.FindFile(L""));
  EXPECT_FALSE(finder.FindNextFileW()) << "the one before is over";
}

}  // namespace
