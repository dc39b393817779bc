// SPDX-License-Identifier: MIT
// SettingsFile.h: an application whose settings file is looked for by each of the four exports that do.
#pragma once

#include <ZERATools.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "Installation.h"
#include "support/Library.h"

namespace settings {

inline const auto IniMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC)>(200);
inline const auto IniUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_UC)>(201);
inline const auto IniExMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC)>(207);
inline const auto IniExUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)>(208);

inline const HMODULE kModule = reinterpret_cast<HMODULE>(0x1234);

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
inline const Variant kVariants[] = {
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
inline std::wstring deniedFolder;  // no file can be opened for writing below this
inline std::vector<std::wstring> opened;
inline HANDLE WINAPI OpenUnlessDenied(const wchar_t* path, DWORD access, DWORD share,
                                      SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                      HANDLE other) {
  if (access & GENERIC_WRITE) {
    opened.push_back(path);
    if (!deniedFolder.empty() && opened.back().compare(0, deniedFolder.size(), deniedFolder) == 0) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      return INVALID_HANDLE_VALUE;
    }
  }
  return ::CreateFileW(path, access, share, security, disposition, flags, other);
}
inline void WINAPI NoSleep(DWORD) {}

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

}  // namespace settings
