// SPDX-License-Identifier: MIT
// The same exports on the platform's own folders: nothing is faked here. The real application-data folders
// of the prefix get one folder of this test, which it removes.
#include <gtest/gtest.h>

#include <ZERATools.h>
#include <shlobj.h>

#include "support/ImportHook.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

const auto IniUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_UC)>(201);
const auto IniExUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)>(208);
const auto DataFiles = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)>(209);

std::wstring Shell(int folder) {
  wchar_t path[MAX_PATH] = {};
  EXPECT_EQ(::SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path), S_OK);
  return path;
}

class ShellFolders : public ::testing::Test {
 protected:
  ShellFolders() : folder_(L"AppTest" + std::to_wstring(::GetCurrentProcessId())) {
    temp_.Folder(folder_);
    wchar_t source[MAX_PATH];
    ::GetModuleFileNameW(nullptr, source, MAX_PATH);
    *std::wcsrchr(source, L'\\') = 0;
    const std::wstring module = temp_ / (folder_ + L"\\view.dll");
    EXPECT_TRUE(
        ::CopyFileW((std::wstring(source) + L"\\test_language_module.dll").c_str(), module.c_str(), TRUE));
    module_ = ::LoadLibraryW(module.c_str());
    common_ = Shell(CSIDL_COMMON_APPDATA) + L"\\" + folder_;
    user_ = Shell(CSIDL_APPDATA) + L"\\" + folder_;
  }
  ~ShellFolders() override {
    ::FreeLibrary(module_);
    for (const std::wstring& folder : {common_, user_}) {
      ::DeleteFileW((folder + L"\\view.ini").c_str());
      ::RemoveDirectoryW(folder.c_str());
      EXPECT_FALSE(test::Exists(folder));
    }
  }

  test::TempFolder temp_;
  std::wstring folder_, common_, user_;
  HMODULE module_ = nullptr;
};

TEST_F(ShellFolders, DataFoldersLieInThem) {
  CStringW common, user;
  EXPECT_EQ(DataFiles(module_, common, user), 1);
  EXPECT_EQ(common.GetString(), common_ + L"\\view");
  EXPECT_EQ(user.GetString(), user_ + L"\\view");
  EXPECT_NE(common_, user_);
}

TEST_F(ShellFolders, FileIsSeededFromTheMachineWideOne) {
  CStringW file;
  int copied = 7;
  EXPECT_EQ(IniExUc(module_, file, &copied), 0);
  EXPECT_EQ(copied, 0);
  ASSERT_TRUE(::CreateDirectoryW(common_.c_str(), nullptr));
  test::WriteBytes(common_ + L"\\view.ini", "[Vorgaben]\r\nLanguage=ITA\r\n");
  EXPECT_EQ(IniExUc(module_, file, &copied), 1);
  EXPECT_EQ(copied, 1);
  EXPECT_EQ(file.GetString(), user_ + L"\\view.ini");
  EXPECT_EQ(test::ReadBytes(user_ + L"\\view.ini"), "[Vorgaben]\r\nLanguage=ITA\r\n");
}

TEST_F(ShellFolders, FileBesideTheModuleWins) {
  temp_.File(folder_ + L"\\view.ini", "");
  CStringW file;
  EXPECT_EQ(IniUc(module_, file), 1);
  EXPECT_EQ(file.GetString(), temp_ / (folder_ + L"\\view.ini"));
}

TEST_F(ShellFolders, NullIsTheExecutableAndOtherHandlesAreNothing) {
  wchar_t path[MAX_PATH];
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring name(std::wcsrchr(path, L'\\') + 1);
  name.resize(name.size() - 4);
  CStringW common, user;
  EXPECT_EQ(DataFiles(nullptr, common, user), 1);
  EXPECT_EQ(user.GetString(), Shell(CSIDL_APPDATA) + L"\\bin\\" + name);
  EXPECT_EQ(DataFiles(reinterpret_cast<HMODULE>(0x10), common, user), 0);
  EXPECT_TRUE(common.IsEmpty());
  EXPECT_TRUE(user.IsEmpty());
  EXPECT_EQ(IniUc(reinterpret_cast<HMODULE>(0x10), user), 0);
  EXPECT_TRUE(user.IsEmpty());
}

}  // namespace
