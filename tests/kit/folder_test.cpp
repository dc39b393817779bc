// SPDX-License-Identifier: MIT
// The kit's folder as drive X:, on a platform that lets a program make one: under Wine none can, so the
// platform is imitated here.
#include "Folder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace {

const wchar_t kKernel[] = L"kernel32.dll";

// What drive X: shows; nothing if there is none.
std::wstring shown;
// Definitions are taken, but nothing can be opened by them.
bool opens = true;
bool takes = true;
std::vector<std::wstring> definitions;
// Stands for X:\tmp.
std::wstring temporary;

DWORD WINAPI Drives() {
  return 1u << 2 | (shown.empty() ? 0u : 1u << 23);
}
BOOL WINAPI Define(DWORD flags, const wchar_t* name, const wchar_t* target) {
  definitions.push_back(std::to_wstring(flags) + L" " + name + L" " + target);
  if (!takes) return FALSE;
  if (!(flags & DDD_REMOVE_DEFINITION)) {
    shown = target;
  } else if ((flags & DDD_EXACT_MATCH_ON_REMOVE) && shown == target) {
    shown.clear();
  }
  return TRUE;
}
HANDLE WINAPI Open(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD how,
                   DWORD flags, HANDLE like) {
  static const auto platform = test::Platform<decltype(::CreateFileW)>(kKernel, "CreateFileW");
  std::wstring real = path;
  if (real == L"X:\\bin") real = opens && !shown.empty() ? shown + L"\\bin" : L"X:\\no such folder";
  return platform(real.c_str(), access, share, security, how, flags, like);
}
std::wstring Real(const wchar_t* path) {
  return path == std::wstring(L"X:\\tmp") ? temporary : path;
}
BOOL WINAPI Make(const wchar_t* path, SECURITY_ATTRIBUTES* security) {
  static const auto platform = test::Platform<decltype(::CreateDirectoryW)>(kKernel, "CreateDirectoryW");
  return platform(Real(path).c_str(), security);
}
BOOL WINAPI Remove(const wchar_t* path) {
  static const auto platform = test::Platform<decltype(::RemoveDirectoryW)>(kKernel, "RemoveDirectoryW");
  return platform(Real(path).c_str());
}

class KitFolder : public ::testing::Test {
 protected:
  KitFolder() {
    shown.clear();
    opens = takes = true;
    definitions.clear();
    temporary = temp_ / L"tmp";
    ::SetEnvironmentVariableW(L"ZERA_TEST_KIT", nullptr);
  }

  static HMODULE Self() { return ::GetModuleHandleW(nullptr); }

  const std::wstring own_ = kit::KitFolder();
  const std::wstring defined_ = L"0 X: " + own_;
  const std::wstring takenBack_ =
      std::to_wstring(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE) + L" X: " + own_;
  using Texts = std::vector<std::wstring>;

  test::TempFolder temp_;

 private:
  test::ImportHook drives_{"GetLogicalDrives", &Drives, Self()};
  test::ImportHook define_{"DefineDosDeviceW", &Define, Self()};
  test::ImportHook open_{"CreateFileW", &Open, Self()};
  test::ImportHook make_{"CreateDirectoryW", &Make, Self()};
  test::ImportHook remove_{"RemoveDirectoryW", &Remove, Self()};
};

TEST_F(KitFolder, IsShownAndTakenBackOnce) {
  {
    kit::Folder folder;
    EXPECT_EQ(folder.Open(), "");
    EXPECT_EQ(shown, own_);
    EXPECT_EQ(temp_.Entries(), Texts{L"tmp\\"});
    wchar_t named[1024] = {};
    ::GetEnvironmentVariableW(L"ZERA_TEST_KIT", named, ARRAYSIZE(named));
    EXPECT_EQ(named, own_);
    folder.TakeBack();
    folder.TakeBack();
  }
  EXPECT_EQ(definitions, (Texts{defined_, takenBack_}));
  EXPECT_EQ(temp_.Entries(), Texts{});
}

TEST_F(KitFolder, IsTakenBackOnEveryWayOut) {
  { EXPECT_EQ(kit::Folder().Open(), ""); }
  EXPECT_EQ(shown, L"");
  EXPECT_EQ(temp_.Entries(), Texts{});
}

// What somebody else made stays.
TEST_F(KitFolder, ThatIsTheDriveAlreadyStaysIt) {
  shown = own_;
  EXPECT_EQ(kit::Folder().Open(), "");
  EXPECT_EQ(definitions, Texts{});
  EXPECT_EQ(temp_.Entries(), Texts{});
}

TEST_F(KitFolder, AnotherDriveXIsLeftAlone) {
  temp_.Folder(L"bin");
  shown = temp_.path().substr(0, temp_.path().size() - 1);
  EXPECT_NE(kit::Folder().Open().find("in use"), std::string::npos);
  EXPECT_EQ(definitions, Texts{});
  EXPECT_EQ(temp_.Entries(), Texts{L"bin\\"});
}

TEST_F(KitFolder, DriveThatCannotBeMade) {
  takes = false;
  EXPECT_NE(kit::Folder().Open().find("cannot be made"), std::string::npos);
  EXPECT_EQ(definitions, Texts{defined_});
  definitions.clear();
  takes = true;
  opens = false;
  EXPECT_NE(kit::Folder().Open().find("cannot be made"), std::string::npos);
  EXPECT_EQ(definitions, (Texts{defined_, takenBack_}));
  EXPECT_EQ(temp_.Entries(), Texts{});
}

// What an earlier run left is for a person to look at; an empty folder is not.
TEST_F(KitFolder, WhatWasLeftStopsTheRun) {
  temp_.Folder(L"tmp");
  EXPECT_EQ(kit::Folder().Open(), "");
  temp_.Folder(L"tmp");
  temp_.File(L"tmp\\left.txt", "text");
  EXPECT_NE(kit::Folder().Open().find("left by an earlier run"), std::string::npos);
  EXPECT_EQ(shown, L"");
  EXPECT_EQ(temp_.Entries(), (Texts{L"tmp\\", L"tmp\\left.txt"}));
}

TEST_F(KitFolder, FolderThatCannotBeWrittenTo) {
  temporary = temp_ / L"no such folder\\tmp";
  EXPECT_NE(kit::Folder().Open().find("cannot be written to"), std::string::npos);
  EXPECT_EQ(definitions, (Texts{defined_, takenBack_}));
}

}  // namespace
