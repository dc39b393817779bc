// SPDX-License-Identifier: MIT
// Where an application's settings file and data folders are, as a host sees it: the module's path and the
// shell's folders are the test's own, everything else is on the disk.
#include "SettingsFile.h"

#include <algorithm>
#include <cwchar>

#include "support/InvalidParameter.h"

namespace {

using namespace settings;

const auto DataFiles = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)>(209);

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

// A file's creation and last access, which Wine 8 does not tell from its last change, have no part in it.
BOOL WINAPI TellOtherTimes(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) {
  const BOOL done = ::GetFileAttributesExW(path, level, data);
  if (!done) return done;
  auto& told = *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data);
  const DWORD year2014 = 0x01D00000, year2028 = 0x01DF0000;
  told.ftCreationTime = {0, std::wcsstr(path, L"\\Common\\") ? year2028 : year2014};
  told.ftLastAccessTime = told.ftCreationTime;
  return done;
}

TEST_P(SettingsFile, LastChangesAloneAreCompared) {
  MakeCommon("common");
  MakeUser("user");
  test::SetModified(temp_ / L"Common\\Viewer\\view.ini", 1'600'000'000);
  test::SetModified(temp_ / L"User\\Viewer\\view.ini", 1'600'000'000);
  const test::ImportHook hook("GetFileAttributesExW", &TellOtherTimes);
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

// What a refusing platform leaves in the buffer is no folder, and the buffer is empty at first.
TEST_P(DataFolders, RefusedAndUntoldFoldersAreNone) {
  const auto refuse = +[](HWND, wchar_t* path, int, BOOL) -> BOOL {
    std::wcscpy(path, L"X:\\not taken");
    return FALSE;
  };
  const auto tellNothing = +[](HWND, wchar_t*, int, BOOL) -> BOOL { return TRUE; };
  for (auto* const answer : {refuse, tellNothing}) {
    const test::ImportHook hook("SHGetSpecialFolderPathW", answer);
    CStringW common, user;
    EXPECT_EQ(DataFiles(kModule, common, user), 1);
    EXPECT_STREQ(common.GetString(), L"\\Viewer\\view");
    EXPECT_STREQ(user.GetString(), L"\\Viewer\\view");
  }
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
