// SPDX-License-Identifier: MIT
// A drive without its medium makes the system ask for it, unless the thread's error mode says otherwise. Each
// platform call that can meet one is made so, and the mode of the host's thread is what it was afterwards.
// Wine never asks; so the mode is looked at during the calls.
#include <ZERATools.h>

#include <gtest/gtest.h>

#include <direct.h>
#include <shlobj.h>

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

std::map<std::string, int> quiet;
std::map<std::string, int> loud;
bool failing;

// Stands in for a platform call: notes the mode, then makes the call or lets it fail.
template <class Function, class Type>
struct Watched;
template <class Function, class Result, class... Arguments>
struct Watched<Function, Result(Arguments...)> {
  static Result Call(Arguments... arguments) {
    ++((::GetThreadErrorMode() & SEM_FAILCRITICALERRORS) ? quiet : loud)[Function::kName];
    if (!failing) return Function::Real()(arguments...);
    ::SetLastError(ERROR_NOT_READY);
    if constexpr (std::is_same_v<Result, HANDLE>) return INVALID_HANDLE_VALUE;
    return Result();
  }
};

#define PLATFORM(function)                                            \
  struct Function_##function {                                        \
    static constexpr char kName[] = #function;                        \
    static auto* Real() { return &::function; }                       \
    using Watch = Watched<Function_##function, decltype(::function)>; \
  }

PLATFORM(CreateFileW);
PLATFORM(GetFileAttributesExW);
PLATFORM(FindFirstFileW);
PLATFORM(FindNextFileW);
PLATFORM(DeleteFileW);
PLATFORM(MoveFileW);
PLATFORM(_wmkdir);
PLATFORM(_wrmdir);
PLATFORM(GetDiskFreeSpaceExW);
PLATFORM(GetDiskFreeSpaceW);
PLATFORM(GetFileVersionInfoSizeW);
PLATFORM(GetPrivateProfileStringA);
PLATFORM(GetPrivateProfileStringW);
PLATFORM(WritePrivateProfileStringA);
PLATFORM(WritePrivateProfileStringW);
PLATFORM(LoadLibraryW);
PLATFORM(SHGetSpecialFolderPathW);

std::vector<std::unique_ptr<test::ImportHook>> hooks;
template <class... Functions>
void Watch() {
  (hooks.push_back(std::make_unique<test::ImportHook>(Functions::kName, &Functions::Watch::Call)), ...);
}

class QuietErrors : public ::testing::Test {
 protected:
  QuietErrors() {
    quiet.clear();
    loud.clear();
    failing = false;
    Watch<Function_CreateFileW, Function_GetFileAttributesExW, Function_FindFirstFileW,
          Function_FindNextFileW, Function_DeleteFileW, Function_MoveFileW, Function__wmkdir,
          Function__wrmdir, Function_GetDiskFreeSpaceExW, Function_GetDiskFreeSpaceW,
          Function_GetFileVersionInfoSizeW, Function_GetPrivateProfileStringA,
          Function_GetPrivateProfileStringW, Function_WritePrivateProfileStringA,
          Function_WritePrivateProfileStringW, Function_LoadLibraryW, Function_SHGetSpecialFolderPathW>();
    sleep_.emplace(
        "Sleep", +[](DWORD) {});
  }
  ~QuietErrors() override { hooks.clear(); }

  // Every family that goes to a drive.
  void CallAll(const test::TempFolder& temp) {
    const std::wstring file = temp.File(L"a.txt", "text"), settings = temp / L"s.ini",
                       tree = temp / L"t\\u\\";
    const auto plain = test::Ansi(settings);
    long long time;
    unsigned __int64 count;
    unsigned char bytes[8];
    wchar_t text[64];
    ZERA_TOOLS_FILE_CREATE_UC((temp / L"b.txt").c_str());
    ZERA_TOOLS_FILE_COPY_UC(file.c_str(), (tree + L"c.txt").c_str());
    ZERA_TOOLS_FILE_COMPARE_UC(file.c_str(), (temp / L"b.txt").c_str());
    ZERA_TOOLS_FILE_TO_BUFFER_UC(file.c_str(), bytes, sizeof bytes, &count);
    ZERA_TOOLS_FILE_FROM_BUFFER_UC((temp / L"d.txt").c_str(), bytes, 4);
    ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(file.c_str(), &time);
    ZERA_TOOLS_FILE_RENAME_UC((temp / L"d.txt").c_str(), (temp / L"e.txt").c_str());
    ZERA_TOOLS_FILE_DELETE_UC((temp / L"e.txt").c_str());
    ZERA_TOOLS_FILE_DELETE_ALL_UC((temp / L"t\\").c_str(), L".*");
    ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(L'X');
    ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(L'Q');
    ZERA_TOOLS_FILE_GET_VERSION_UC(file.c_str(), text, 64);
    ZERA_TOOLS_WRITE_STRING("s", "k", plain.c_str(), "v");
    ZERA_TOOLS_WRITE_STRING_UC(L"s", L"k", settings.c_str(), L"v");
    ZERA_TOOLS_READ_INT("s", "k", plain.c_str(), 1, 0, 9);
    ZERA_TOOLS_READ_INT_UC(L"s", L"k", settings.c_str(), 1, 0, 9);
    ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(nullptr, 2);
    CStringW common, user;
    ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(nullptr, common, user);
  }

  std::optional<test::ImportHook> sleep_;
};

TEST_F(QuietErrors, NoCallCanAskAndTheModeComesBack) {
  const test::TempFolder temp;
  for (const DWORD mode : {DWORD{0}, DWORD{SEM_NOGPFAULTERRORBOX}, DWORD{SEM_FAILCRITICALERRORS}}) {
    ASSERT_TRUE(::SetThreadErrorMode(mode, nullptr));
    CallAll(temp);
    EXPECT_EQ(::GetThreadErrorMode(), mode);
    failing = true;
    CallAll(temp);
    failing = false;
    EXPECT_EQ(::GetThreadErrorMode(), mode);
  }
  ASSERT_TRUE(::SetThreadErrorMode(0, nullptr));
  EXPECT_EQ(quiet.size(), hooks.size()) << "each of the calls was made";
  for (const auto& [name, count] : loud) ADD_FAILURE() << name << " may ask, " << count << " times";
}

// What tells a link from another folder is a search of its own.
TEST_F(QuietErrors, FoldersThatMayBeLinksAreLookedAtQuietly) {
  const test::TempFolder temp;
  temp.Folder(L"link");
  const test::ImportHook next(
      "FindNextFileW", +[](HANDLE search, WIN32_FIND_DATAW* found) -> BOOL {
        const BOOL more = ::FindNextFileW(search, found);
        found->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
        return more;
      });
  ASSERT_TRUE(::SetThreadErrorMode(0, nullptr));
  EXPECT_EQ(ZERA_TOOLS_FILE_DELETE_ALL_UC(temp.path().c_str(), L".none"), 1);
  EXPECT_EQ(quiet["FindFirstFileW"], 2) << "the walk's and the folder's";
  EXPECT_EQ(loud["FindFirstFileW"], 0);
}

// An exception leaves in the middle of a copy.
TEST_F(QuietErrors, TheModeComesBackWithAnException) {
  const test::TempFolder temp;
  const std::wstring file = temp.File(L"a.txt", "text"), target = temp / L"b.txt";
  const test::ImportHook read(
      "ReadFile", +[](HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) -> BOOL {
        ::SetLastError(ERROR_NOT_READY);
        return FALSE;
      });
  EXPECT_EQ(test::RaisedBy([&] { ZERA_TOOLS_FILE_COPY_UC(file.c_str(), target.c_str()); }),
            ".PEAVCFileException@@");
  EXPECT_EQ(::GetThreadErrorMode(), 0u);
}

}  // namespace
