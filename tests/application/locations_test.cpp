// SPDX-License-Identifier: MIT
// Where an application's settings file and data folders are, as a host sees it: the module's path and the
// shell's folders are the test's own, everything else is on the disk.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <cwchar>
#include <optional>
#include <set>

#include "Installation.h"
#include "support/HostException.h"
#include "support/HostString.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

namespace {

const auto IniMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC)>(200);
const auto IniUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_UC)>(201);
const auto IniExMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC)>(207);
const auto IniExUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)>(208);
const auto DataFiles = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)>(209);

const HMODULE kModule = reinterpret_cast<HMODULE>(0x1234);

struct Answer {
  int result;
  std::wstring file;
  int copied;  // 9 from the variants that do not tell
};

// The four exports that find the settings file.
struct Variant {
  const char* name;
  bool wide;
  bool tellsCopied;
  Answer (*ask)(HMODULE);
};
const Variant kVariants[] = {
    {"GET_INIFILE_EX_UC", true, true,
     [](HMODULE module) {
       CStringW file(L"before");
       int copied = 7;
       const int result = IniExUc(module, file, &copied);
       return Answer{result, file.GetString(), copied};
     }},
    {"GET_INIFILE_EX_MBC", false, true,
     [](HMODULE module) {
       CStringA file("before");
       int copied = 7;
       const int result = IniExMbc(module, file, &copied);
       return Answer{result, test::Wide(file.GetString()), copied};
     }},
    {"GET_INIFILE_UC", true, false,
     [](HMODULE module) {
       CStringW file(L"before");
       const int result = IniUc(module, file);
       return Answer{result, file.GetString(), 9};
     }},
    {"GET_INIFILE_MBC", false, false,
     [](HMODULE module) {
       CStringA file("before");
       const int result = IniMbc(module, file);
       return Answer{result, test::Wide(file.GetString()), 9};
     }},
};

// Makes the library's own calls fail in chosen places.
std::wstring deniedFolder;  // no file can be opened for writing below this
std::vector<std::wstring> opened;
HANDLE WINAPI OpenUnlessDenied(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                               DWORD disposition, DWORD flags, HANDLE other) {
  if (access & GENERIC_WRITE) {
    opened.push_back(path);
    if (!deniedFolder.empty() && opened.back().compare(0, deniedFolder.size(), deniedFolder) == 0) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      return INVALID_HANDLE_VALUE;
    }
  }
  return ::CreateFileW(path, access, share, security, disposition, flags, other);
}
BOOL WINAPI FailingRead(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_READ_FAULT);
  return FALSE;
}
void WINAPI NoSleep(DWORD) {}

class SettingsFile : public ::testing::TestWithParam<Variant> {
 protected:
  SettingsFile() {
    temp_.Folder(L"Prog");
    temp_.Folder(L"Prog\\Viewer");
    temp_.Folder(L"Common");
    temp_.Folder(L"User");
    installation_.emplace(temp_ / L"Prog\\Viewer\\view.exe");
    installation_->common = temp_ / L"Common";
    installation_->user = temp_ / L"User";
    deniedFolder.clear();
    opened.clear();
  }

  // A module below "\TOOLS"; its folder tail has three levels.
  void UseToolsTree() {
    temp_.Folder(L"Prog\\Maker");
    temp_.Folder(L"Prog\\Maker\\Tools");
    temp_.Folder(L"Prog\\Maker\\Tools\\Viewer");
    installation_->module = temp_ / L"Prog\\Maker\\Tools\\Viewer\\view.exe";
  }

  void MakeCommon(const std::string& text) {
    temp_.Folder(L"Common\\Viewer");
    temp_.File(L"Common\\Viewer\\view.ini", text);
  }
  void MakeUser(const std::string& text) {
    temp_.Folder(L"User\\Viewer");
    temp_.File(L"User\\Viewer\\view.ini", text);
  }

  Answer Ask() { return GetParam().ask(kModule); }

  // The UTF-16 variants give the path in any case, the others only with a file.
  void Expect(const Answer& answer, int result, const std::wstring& file, int copied) {
    EXPECT_EQ(answer.result, result);
    EXPECT_EQ(answer.file, result || GetParam().wide ? file : L"");
    EXPECT_EQ(answer.copied, GetParam().tellsCopied ? copied : 9);
    for (const std::wstring& entry : temp_.Entries()) {
      EXPECT_EQ(entry.find(L".$$$"), entry.npos) << "a probe was left behind";
    }
  }

  const std::wstring& Temp() const { return temp_.path(); }

  test::TempFolder temp_;
  std::optional<test::Installation> installation_;
  test::ImportHook open_{"CreateFileW", &OpenUnlessDenied};
  test::ImportHook sleep_{"Sleep", &NoSleep};
};

INSTANTIATE_TEST_SUITE_P(, SettingsFile, ::testing::ValuesIn(kVariants),
                         [](const auto& variant) { return std::string(variant.param.name); });

TEST_P(SettingsFile, UnreadableModulePathGivesNothing) {
  installation_->module.clear();
  Expect(Ask(), 0, L"", 0);
  EXPECT_TRUE(installation_->folders.empty());
}

TEST_P(SettingsFile, BesideTheModuleWinsWhereFilesCanBeMade) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  MakeCommon("common");
  Expect(Ask(), 1, beside, 0);
  EXPECT_EQ(test::ReadBytes(beside), "beside");
  EXPECT_FALSE(test::Exists(temp_ / L"User\\Viewer"));
  EXPECT_TRUE(installation_->folders.empty()) << "the shell has nothing to say then";
  EXPECT_EQ(installation_->handles, std::vector<HMODULE>{kModule});
  EXPECT_EQ(installation_->capacities, std::vector<DWORD>{520});
}

TEST_P(SettingsFile, TheProbeHasItsForm) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  Ask();
  ASSERT_EQ(opened.size(), 1u);
  const std::wstring folder = temp_ / L"Prog\\Viewer\\";
  ASSERT_EQ(opened[0].compare(0, folder.size(), folder), 0);
  const std::wstring name = opened[0].substr(folder.size());
  ASSERT_EQ(name.size(), 20u);
  EXPECT_EQ(name.substr(16), L".$$$");
  EXPECT_EQ(name.find_first_not_of(L"0123456789ABCDEF"), 16u);
}

TEST_P(SettingsFile, EmptyFileBesideTheModuleCountsToo) {
  Expect((temp_.File(L"Prog\\Viewer\\view.ini", ""), Ask()), 1, temp_ / L"Prog\\Viewer\\view.ini", 0);
}

TEST_P(SettingsFile, FolderInPlaceOfTheFileBesideIsPassedOver) {
  temp_.Folder(L"Prog\\Viewer\\view.ini");
  MakeUser("user");
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
}

// Root ignores read-only folders under Wine, so the open itself is made to fail.
TEST_P(SettingsFile, BesideInReadOnlyFolderIsPassedOver) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  MakeUser("user");
  deniedFolder = temp_ / L"Prog";
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "user");
}

// The copy succeeds, but the probe is not there when it is looked for.
TEST_P(SettingsFile, BesideIsPassedOverWhenTheProbeDoesNotExist) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  MakeUser("user");
  static int hidden;
  hidden = 0;
  const auto hideOnce = +[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) -> BOOL {
    if (std::wcsstr(path, L".$$$") && hidden++ == 0) {
      ::SetLastError(ERROR_FILE_NOT_FOUND);
      return FALSE;
    }
    return ::GetFileAttributesExW(path, level, data);
  };
  const test::ImportHook hook("GetFileAttributesExW", hideOnce);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_GE(hidden, 1);
}

TEST_P(SettingsFile, MissingUserFileIsMadeFromTheMachineWideOne) {
  MakeCommon("[Vorgaben]\r\nLanguage=FRA\r\n");
  const std::wstring user = temp_ / L"User\\Viewer\\view.ini";
  Expect(Ask(), 1, user, 1);
  EXPECT_EQ(test::ReadBytes(user), "[Vorgaben]\r\nLanguage=FRA\r\n");
  Expect(Ask(), 1, user, 0);
}

TEST_P(SettingsFile, AllFoldersOfAToolsTreeAreMade) {
  UseToolsTree();
  for (const wchar_t* const folder :
       {L"Common\\Maker", L"Common\\Maker\\Tools", L"Common\\Maker\\Tools\\Viewer"}) {
    temp_.Folder(folder);
  }
  temp_.File(L"Common\\Maker\\Tools\\Viewer\\view.ini", "common");
  const std::wstring user = temp_ / L"User\\Maker\\Tools\\Viewer\\view.ini";
  Expect(Ask(), 1, user, 1);
  EXPECT_EQ(test::ReadBytes(user), "common");
}

TEST_P(SettingsFile, NewerMachineWideFileIsTakenOver) {
  MakeCommon("common");
  MakeUser("user, and longer");
  test::SetModified(temp_ / L"Common\\Viewer\\view.ini", 1'600'000'001);
  test::SetModified(temp_ / L"User\\Viewer\\view.ini", 1'600'000'000);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "common");
}

TEST_P(SettingsFile, EqualOrOlderMachineWideFileIsNot) {
  MakeCommon("common");
  MakeUser("user");
  test::SetModified(temp_ / L"User\\Viewer\\view.ini", 1'600'000'000);
  for (const long long common : {1'600'000'000LL, 1'599'999'999LL, 0LL}) {
    test::SetModified(temp_ / L"Common\\Viewer\\view.ini", common);
    opened.clear();
    Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
    EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "user");
    EXPECT_TRUE(opened.empty()) << "nothing is written then";
  }
}

// Times are compared in whole seconds.
TEST_P(SettingsFile, HalfASecondIsNotNewer) {
  MakeCommon("common");
  MakeUser("user");
  test::SetModified(temp_ / L"Common\\Viewer\\view.ini", 1'600'000'000, 5'000'000);
  test::SetModified(temp_ / L"User\\Viewer\\view.ini", 1'600'000'000);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
}

TEST_P(SettingsFile, UserFileAloneIsEnough) {
  MakeUser("user");
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_TRUE(opened.empty());
}

TEST_P(SettingsFile, NoFileAnywhere) {
  const auto before = temp_.Entries();
  Expect(Ask(), 0, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_EQ(temp_.Entries(), before) << "no folder is made without a file to copy";
}

TEST_P(SettingsFile, WithoutCommonFolderTheUsersStandsForBoth) {
  installation_->common.clear();
  Expect(Ask(), 0, temp_ / L"User\\Viewer\\view.ini", 0);
  MakeUser("user");
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "user");
  EXPECT_TRUE(opened.empty());
}

TEST_P(SettingsFile, CopyThatFailsIsToldByTheMissingFileAlone) {
  MakeCommon("common");
  deniedFolder = temp_ / L"User";
  Expect(Ask(), 0, temp_ / L"User\\Viewer\\view.ini", 1);
}

TEST_P(SettingsFile, CopyThatFailsOverAnOlderFileLeavesIt) {
  MakeCommon("common");
  MakeUser("user");
  test::SetModified(temp_ / L"User\\Viewer\\view.ini", 1'600'000'000);
  deniedFolder = temp_ / L"User";
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "user");
}

TEST_P(SettingsFile, FolderInPlaceOfTheMachineWideFile) {
  temp_.Folder(L"Common\\Viewer");
  temp_.Folder(L"Common\\Viewer\\view.ini");
  Expect(Ask(), 0, temp_ / L"User\\Viewer\\view.ini", 1);
  EXPECT_TRUE(test::Exists(temp_ / L"User\\Viewer"));
}

TEST_P(SettingsFile, FolderInPlaceOfTheUsersFileExists) {
  MakeCommon("common");
  temp_.Folder(L"User\\Viewer");
  temp_.Folder(L"User\\Viewer\\view.ini");
  test::SetModified(temp_ / L"Common\\Viewer\\view.ini", 4'000'000'000);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 1);
}

// Below "\TOOLS" a failed write check has a second try by way of the folder's path. One check of a file
// opens three probes in the file's folder when all fail; the copy that follows runs a check of its own.
TEST_P(SettingsFile, SecondTryForToolsTreesOnly) {
  MakeCommon("common");
  MakeUser("");
  ::DeleteFileW((temp_ / L"User\\Viewer\\view.ini").c_str());
  const std::wstring user = temp_ / L"User\\Viewer\\";
  const auto probesIn = [&](const std::wstring& folder) {
    return std::count_if(opened.begin(), opened.end(), [&](const std::wstring& path) {
      return path.size() == folder.size() + 20 && path.compare(0, folder.size(), folder) == 0;
    });
  };
  deniedFolder = user;
  Expect(Ask(), 0, user + L"view.ini", 1);
  EXPECT_EQ(probesIn(user), 6);

  UseToolsTree();
  for (const wchar_t* const root : {L"Common\\", L"User\\"}) {
    for (const wchar_t* const folder : {L"Maker", L"Maker\\Tools", L"Maker\\Tools\\Viewer"}) {
      temp_.Folder(std::wstring(root) + folder);
    }
  }
  temp_.File(L"Common\\Maker\\Tools\\Viewer\\view.ini", "common");
  const std::wstring deep = temp_ / L"User\\Maker\\Tools\\Viewer\\";
  deniedFolder = deep;  // the folder's own path is checked in the folder above, which can be written
  opened.clear();
  Expect(Ask(), 0, deep + L"view.ini", 1);
  EXPECT_EQ(probesIn(deep), 9);

  deniedFolder = temp_ / L"User\\Maker\\Tools\\";
  opened.clear();
  Expect(Ask(), 0, deep + L"view.ini", 1);
  EXPECT_EQ(probesIn(deep), 6) << "the folder's check failed too";
}

TEST_P(SettingsFile, ExtensionCountsAsThreeCharacters) {
  const std::pair<const wchar_t*, const wchar_t*> names[] = {
      {L"view.exe", L"view.ini"}, {L"view.com1", L"view.cini"}, {L"view.so", L"viewini"},
      {L"view", L"vini"},         {L"vie.dll", L"vie.ini"},     {L"a.b.scr", L"a.b.ini"}};
  for (const auto& [module, ini] : names) {
    const std::wstring beside = temp_.File(std::wstring(L"Prog\\Viewer\\") + ini, "x");
    installation_->module = temp_ / (std::wstring(L"Prog\\Viewer\\") + module);
    Expect(Ask(), 1, beside, 0);
    ::DeleteFileW(beside.c_str());
  }
}

TEST_P(SettingsFile, ModuleNamesWithoutAFolder) {
  for (const wchar_t* const module : {L"ab", L"abc", L"view.exe"}) {
    installation_->module = module;
    Expect(Ask(), 0, Temp() + L"User\\.ini", 0);
  }
}

TEST_P(SettingsFile, ModuleInARoot) {
  installation_->module = L"X:\\view.exe";
  Expect(Ask(), 0, Temp() + L"UserX:\\view.ini", 0);
}

TEST_P(SettingsFile, PathsBeyondThePlatformsLimitCountAsMissing) {
  installation_->module = temp_ / (L"Prog\\" + std::wstring(600, L'm') + L".exe");
  const Answer answer = Ask();
  EXPECT_EQ(answer.result, 0);
  // 519 characters of the path remain, without a period in them.
  const std::wstring base(519 - Temp().size() - 5, L'm');
  EXPECT_EQ(answer.file, GetParam().wide ? Temp() + L"User\\Prog\\" + base + L".ini" : L"");
}

// A folder that leaves the probe no room counts as one where no file can be made.
TEST_P(SettingsFile, FolderTooDeepForAProbe) {
  for (const std::size_t length : {239, 240, 250}) {
    const std::wstring name(length - Temp().size() - 1, L'd');
    const std::wstring beside = temp_.Folder(name) + L"v.ini";
    ASSERT_EQ(beside.size(), length + 5);
    test::WriteBytes(beside, "beside");
    installation_->module = temp_ / (name + L"\\v.exe");
    const test::InvalidParameter handler;
    const Answer answer = Ask();
    EXPECT_EQ(handler.Count(), 0);
    EXPECT_EQ(answer.result, length == 239) << length;
    EXPECT_EQ(answer.file == beside, length == 239);
    EXPECT_EQ(temp_.Entries().size(), 6u) << "no probe";
    ::DeleteFileW(beside.c_str());
    ::RemoveDirectoryW((temp_ / name).c_str());
  }
}

TEST_P(SettingsFile, TakesNothingFromTheHeapAndNoHandles) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  Ask();
  const DWORD handles = test::OpenHandles();
  const test::HeapWatch heap;
  Ask();
  ::DeleteFileW((temp_ / L"Prog\\Viewer\\view.ini").c_str());
  MakeCommon("common");
  Ask();
  EXPECT_EQ(heap.Allocations(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
}

// A file that can be opened but not read is a copy without success: the next place is taken.
TEST_P(SettingsFile, ReadErrorOfTheFileBesidePassesItOver) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  MakeUser("user");
  const test::HeapWatch heap;
  const test::ImportHook read("ReadFile", &FailingRead);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_EQ(heap.Outstanding(), 0);
}

// The seeding copy has made the user's file before it fails; it stays as it is, and it exists.
TEST_P(SettingsFile, ReadErrorOfTheMachineWideFileLeavesACutFile) {
  MakeCommon("common");
  const test::HeapWatch heap;
  const test::ImportHook read("ReadFile", &FailingRead);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "");
  EXPECT_EQ(heap.Outstanding(), 0);
}

// Telling of the read error needs memory that is not there: that is the memory exception, and the probe is
// gone all the same, though its deletion needs a second attempt.
bool exhausted;
void* ExhaustedMalloc(std::size_t size) {
  return exhausted ? nullptr : std::malloc(size);
}
BOOL WINAPI FailingReadWithoutMemory(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  exhausted = true;
  ::SetLastError(ERROR_READ_FAULT);
  return FALSE;
}
int deletions;
int failingDeletions;
BOOL WINAPI DeleteLate(const wchar_t* path) {
  if (++deletions > failingDeletions) return ::DeleteFileW(path);
  ::SetLastError(ERROR_SHARING_VIOLATION);
  return FALSE;
}

TEST_P(SettingsFile, ReadErrorWithoutMemoryLeavesNoProbe) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  exhausted = false;
  deletions = 0;
  failingDeletions = 1;
  const DWORD handles = test::OpenHandles();
  {
    const test::ImportHook memory("malloc", &ExhaustedMalloc);
    const test::ImportHook read("ReadFile", &FailingReadWithoutMemory);
    const test::ImportHook deletion("DeleteFileW", &DeleteLate);
    CStringW file;
    CStringA plain;
    int copied = 7;
    EXPECT_EQ(test::RaisedBy([&] {
                GetParam().wide ? IniExUc(kModule, file, &copied) : IniExMbc(kModule, plain, &copied);
              }),
              test::kMemoryException);
    exhausted = false;
  }
  EXPECT_EQ(temp_.Entries(), (std::vector<std::wstring>{L"Common\\", L"Prog\\", L"Prog\\Viewer\\",
                                                        L"Prog\\Viewer\\view.ini", L"User\\"}));
  EXPECT_EQ(deletions, 2);
  EXPECT_EQ(test::OpenHandles(), handles);
}

// A scanner that holds the probe for a moment is waited for.
TEST_P(SettingsFile, AProbeThatIsHeldIsDeletedInTheEnd) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  for (failingDeletions = 0; failingDeletions <= 25; failingDeletions += 5) {
    deletions = 0;
    const test::ImportHook deletion("DeleteFileW", &DeleteLate);
    Expect(Ask(), 1, beside, 0);
    EXPECT_EQ(deletions, failingDeletions + 1);
  }
}

// The name is made of an address on the stack and must not tell it.
TEST_P(SettingsFile, TheProbeTellsNoAddress) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  ULONG_PTR low, high;
  ::GetCurrentThreadStackLimits(&low, &high);
  constexpr ULONG_PTR kMegabytes = ~ULONG_PTR{0xFFFFFF} & 0xFFFFFFFFFFFF;
  std::set<ULONG_PTR> values;
  for (int round = 0; round < 8; ++round) {
    opened.clear();
    Ask();
    ASSERT_EQ(opened.size(), 1u);
    const auto value = std::wcstoull(opened[0].c_str() + opened[0].size() - 20, nullptr, 16);
    EXPECT_NE(value & kMegabytes, low & kMegabytes);
    EXPECT_NE(value & kMegabytes, high & kMegabytes);
    values.insert(value);
  }
  EXPECT_EQ(values.size(), 8u) << "the same call at the same depth has another name each time";
}

// The file is there by word of a hook: Wine makes no file whose name its Unix locale cannot spell.
std::wstring existing;
BOOL WINAPI FindExisting(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) {
  if (path != existing) return ::GetFileAttributesExW(path, level, data);
  *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data) = {};
  return TRUE;
}

TEST_P(SettingsFile, CharactersOutsideTheCodePageAreReplacedInPlainResults) {
  installation_->user = L"X:\\Gr\u00FC\u00DFe \u65E5\u672C\u8868 \U0001F600";
  existing = installation_->user + L"\\Viewer\\view.ini";
  const test::ImportHook hook("GetFileAttributesExW", &FindExisting);
  const Answer answer = Ask();
  EXPECT_EQ(answer.result, 1);
  EXPECT_EQ(answer.file, GetParam().wide ? existing : test::Wide(test::Ansi(existing)));
}

// Every platform call on the way fails once; whatever comes of it, nothing stays open and no probe stays.
int calls;
int failAt;

bool Fails() {
  return ++calls == failAt;
}

struct Fault {
  const char* name;
  void* replacement;
  bool mayHide = false;
};
const Fault kFaults[] = {
    {"GetModuleFileNameW", reinterpret_cast<void*>(+[](HMODULE, wchar_t*, DWORD) -> DWORD {
       ++calls;
       return 0;
     })},
    {"SHGetSpecialFolderPathW", reinterpret_cast<void*>(+[](HWND, wchar_t* path, int, BOOL) -> BOOL {
       ++calls;
       std::wcscpy(path, L"X:\\not taken");
       return FALSE;
     })},
    {"GetFileAttributesExW",
     reinterpret_cast<void*>(+[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) -> BOOL {
       if (!Fails()) return ::GetFileAttributesExW(path, level, data);
       ::SetLastError(ERROR_INVALID_FUNCTION);
       return FALSE;
     }),
     true},
    {"GetFullPathNameW",
     reinterpret_cast<void*>(+[](const wchar_t* path, DWORD size, wchar_t* full, wchar_t** name) -> DWORD {
       return Fails() ? 0 : ::GetFullPathNameW(path, size, full, name);
     }),
     true},
    {"CreateFileW", reinterpret_cast<void*>(+[](const wchar_t* path, DWORD access, DWORD share,
                                                SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                                HANDLE other) -> HANDLE {
       if (!Fails()) return ::CreateFileW(path, access, share, security, disposition, flags, other);
       ::SetLastError(ERROR_ACCESS_DENIED);
       return INVALID_HANDLE_VALUE;
     })},
    {"ReadFile", reinterpret_cast<void*>(
                     +[](HANDLE file, void* data, DWORD count, DWORD* done, OVERLAPPED* overlapped) -> BOOL {
                       return Fails() ? FALSE : ::ReadFile(file, data, count, done, overlapped);
                     })},
    {"WriteFile", reinterpret_cast<void*>(+[](HANDLE file, const void* data, DWORD count, DWORD* done,
                                              OVERLAPPED* overlapped) -> BOOL {
       return Fails() ? FALSE : ::WriteFile(file, data, count, done, overlapped);
     })},
    {"CloseHandle", reinterpret_cast<void*>(+[](HANDLE handle) -> BOOL {
       const BOOL closed = ::CloseHandle(handle);
       return Fails() ? FALSE : closed;
     })},
    {"DeleteFileW", reinterpret_cast<void*>(
                        +[](const wchar_t* path) -> BOOL { return Fails() ? FALSE : ::DeleteFileW(path); })},
    {"CharUpperBuffW", reinterpret_cast<void*>(+[](wchar_t* text, DWORD count) -> DWORD {
       return Fails() ? 0 : ::CharUpperBuffW(text, count);
     })},
};

TEST_P(SettingsFile, NothingStaysOpenWhicheverCallFails) {
  const std::wstring common = temp_ / L"Common\\Viewer\\view.ini";
  const std::wstring user = temp_ / L"User\\Viewer\\view.ini";
  const std::wstring beside = temp_ / L"Prog\\Viewer\\view.ini";
  MakeCommon("common");
  for (const Fault& fault : kFaults) {
    for (const bool hasBeside : {true, false}) {
      int made = 0;
      for (failAt = 1; failAt <= 40; ++failAt) {
        ::DeleteFileW(user.c_str());
        ::RemoveDirectoryW((temp_ / L"User\\Viewer").c_str());
        if (hasBeside) test::WriteBytes(beside, "beside");
        calls = 0;
        const DWORD handles = test::OpenHandles();
        {
          const test::ImportHook hook(fault.name, fault.replacement);
          const test::HeapWatch heap;
          Answer answer = {0, L"", 0};
          const std::string raised = test::RaisedBy([&] { answer = Ask(); });
          EXPECT_EQ(raised, "") << fault.name << failAt;
          EXPECT_TRUE(answer.result == 0 || answer.result == 1) << fault.name << failAt;
          EXPECT_EQ(heap.Outstanding(), 0) << fault.name << failAt;
        }
        EXPECT_EQ(test::OpenHandles(), handles) << fault.name << failAt;
        for (const std::wstring& entry : temp_.Entries()) {
          if (entry.find(L".$$$") == entry.npos) continue;
          // A probe can stay where it cannot be seen.
          EXPECT_TRUE(fault.mayHide) << fault.name << failAt;
          ::DeleteFileW((temp_ / entry).c_str());
        }
        made = calls;
        if (calls < failAt) break;
      }
      // Without a file beside the module no probe is copied, and so on: every call is made on one way.
      EXPECT_TRUE(made > 0 || !hasBeside || fault.name == std::string("SHGetSpecialFolderPathW"))
          << fault.name;
      ::DeleteFileW(beside.c_str());
    }
  }
}

// Results land in the buffers of the host's own string manager, whatever that is.
TEST_P(SettingsFile, ResultsBelongToTheHostsManager) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::CountingManager manager;
  {
    test::HostString<wchar_t> wide(manager, L"before");
    test::HostString<char> plain(manager, "before");
    int copied = 7;
    EXPECT_EQ(IniExUc(kModule, wide.object(), &copied), 1);
    EXPECT_EQ(IniExMbc(kModule, plain.object(), &copied), 1);
    EXPECT_EQ(wide.text(), beside);
    EXPECT_EQ(plain.text(), test::Ansi(beside));
    EXPECT_EQ(wide.header()->pStringMgr, &manager);
    EXPECT_EQ(plain.header()->pStringMgr, &manager);
  }
  EXPECT_EQ(manager.outstanding, 0);
  EXPECT_TRUE(manager.NilIntact());
}

TEST_P(SettingsFile, SharedStringsOfTheHostKeepTheirText) {
  temp_.File(L"Prog\\Viewer\\view.ini", "x");
  CStringW wide(L"before");
  const CStringW sharer(wide);
  EXPECT_EQ(IniUc(kModule, wide), 1);
  EXPECT_STREQ(sharer.GetString(), L"before");
}

TEST_P(SettingsFile, FixedBuffersOfTheHostStayWhereTheyAre) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::FixedManager<wchar_t, 300> manager;
  test::HostString<wchar_t> file(manager, L"before");
  EXPECT_EQ(IniUc(kModule, file.object()), 1);
  EXPECT_EQ(manager.text(), beside);
  EXPECT_EQ(manager.allocations, 0);
  installation_->module.clear();
  EXPECT_EQ(IniUc(kModule, file.object()), 0);
  EXPECT_EQ(manager.text()[0], 0);
}

TEST_P(SettingsFile, ExhaustedMemoryOfTheHostReachesIt) {
  temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::CountingManager manager;
  manager.failing = true;
  test::HostString<wchar_t> wide(manager);
  test::HostString<char> plain(manager);
  int copied = 7;
  EXPECT_EQ(test::RaisedBy([&] { IniExUc(kModule, wide.object(), &copied); }), test::kMemoryException);
  EXPECT_EQ(test::RaisedBy([&] { IniExMbc(kModule, plain.object(), &copied); }), test::kMemoryException);
  EXPECT_TRUE(wide.text().empty());
  EXPECT_TRUE(plain.text().empty());
  EXPECT_EQ(temp_.Entries().size(), 5u) << "no probe";
}

class DataFolders : public SettingsFile {};
INSTANTIATE_TEST_SUITE_P(, DataFolders, ::testing::Values(kVariants[0]));

TEST_P(DataFolders, AreToldAndNotMade) {
  CStringW common(L"before"), user(L"before");
  const auto before = temp_.Entries();
  EXPECT_EQ(DataFiles(kModule, common, user), 1);
  EXPECT_EQ(common.GetString(), temp_ / L"Common\\Viewer\\view");
  EXPECT_EQ(user.GetString(), temp_ / L"User\\Viewer\\view");
  EXPECT_EQ(temp_.Entries(), before);
  EXPECT_EQ(installation_->folders, (std::vector<int>{35, 26}));
  EXPECT_TRUE(installation_->plainQuestions);
  EXPECT_EQ(installation_->handles, std::vector<HMODULE>{kModule});
  EXPECT_EQ(installation_->capacities, std::vector<DWORD>{520});
}

TEST_P(DataFolders, FollowTheToolsRule) {
  for (const wchar_t* const tools : {L"TOOLS", L"tools", L"Tools9"}) {
    installation_->module = std::wstring(L"C:\\Prog\\Maker\\") + tools + L"\\Viewer\\view.exe";
    CStringW common, user;
    EXPECT_EQ(DataFiles(kModule, common, user), 1);
    EXPECT_EQ(common.GetString(), Temp() + L"Common\\Maker\\" + tools + L"\\Viewer\\view");
    EXPECT_EQ(user.GetString(), Temp() + L"User\\Maker\\" + tools + L"\\Viewer\\view");
  }
}

TEST_P(DataFolders, AreEmptyWithoutAModulePath) {
  installation_->module.clear();
  CStringW common(L"before"), user(L"before");
  EXPECT_EQ(DataFiles(kModule, common, user), 0);
  EXPECT_TRUE(common.IsEmpty());
  EXPECT_TRUE(user.IsEmpty());
  EXPECT_TRUE(installation_->folders.empty());
}

TEST_P(DataFolders, FallBackToTheUsersFolder) {
  for (const bool emptyIsSuccess : {false, true}) {
    installation_->common.clear();
    installation_->emptyIsSuccess = emptyIsSuccess;
    installation_->folders.clear();
    CStringW common, user;
    EXPECT_EQ(DataFiles(kModule, common, user), 1);
    EXPECT_EQ(common.GetString(), temp_ / L"User\\Viewer\\view");
    EXPECT_EQ(user.GetString(), temp_ / L"User\\Viewer\\view");
    EXPECT_EQ(installation_->folders, (std::vector<int>{35, 26, 26}));
  }
}

TEST_P(DataFolders, WithoutAnyShellFolderKeepTheTail) {
  installation_->common.clear();
  installation_->user.clear();
  CStringW common, user;
  EXPECT_EQ(DataFiles(kModule, common, user), 1);
  EXPECT_STREQ(common.GetString(), L"\\Viewer\\view");
  EXPECT_STREQ(user.GetString(), L"\\Viewer\\view");
}

TEST_P(DataFolders, LongestFoldersAndModulePath) {
  installation_->common.assign(259, L'c');
  installation_->user.assign(259, L'u');
  installation_->module = L"\\\\" + std::wstring(300, L'm') + L"\\TOOLS" + std::wstring(300, L'n');
  CStringW common, user;
  EXPECT_EQ(DataFiles(kModule, common, user), 1);
  // The platform cuts the path at 519 characters.
  const std::wstring rest = L"\\" + std::wstring(300, L'm') + L"\\TOOLS" + std::wstring(519 - 308, L'n');
  EXPECT_EQ(common.GetString(), std::wstring(259, L'c') + rest);
  EXPECT_EQ(user.GetString(), std::wstring(259, L'u') + rest);
}

TEST_P(DataFolders, OneStringForBothHoldsTheUsers) {
  CStringW both;
  EXPECT_EQ(DataFiles(kModule, both, both), 1);
  EXPECT_EQ(both.GetString(), temp_ / L"User\\Viewer\\view");
}

}  // namespace
