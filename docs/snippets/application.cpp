// SPDX-License-Identifier: MIT
// Examples of the reference: processes, messages, an application's files and language.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "support/TempFolder.h"

TEST(Snippets, Processes) {
  wchar_t program[MAX_PATH];
  ::GetModuleFileNameW(nullptr, program, MAX_PATH);
  {
    //! [ZERA_TOOLS_GETNUM_APPRUNNING_UC]
    // Is another one of this program running?
    const bool another = ZERA_TOOLS_GETNUM_APPRUNNING_UC(program) > 1;
    //! [ZERA_TOOLS_GETNUM_APPRUNNING_UC]
    EXPECT_FALSE(another);
  }
  {
    //! [ZERA_TOOLS_KILLPROCESS_UC]
    // Ends every process of that executable, without asking it.
    ZERA_TOOLS_KILLPROCESS_UC(L"hanging-viewer.exe");
    //! [ZERA_TOOLS_KILLPROCESS_UC]
  }
  {
    //! [ZERA_TOOLS_SAFE_NEW]
    void* const block = ZERA_TOOLS_SAFE_NEW(1024);  // null when memory is exhausted
    //! [ZERA_TOOLS_SAFE_NEW]
    EXPECT_NE(block, nullptr);
    std::free(block);
  }
  {
    MSG message;
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    //! [ZERA_TOOLS_POSTTHREADMESSAGE]
    CWinThread worker(::GetCurrentThreadId());
    const bool posted = ZERA_TOOLS_POSTTHREADMESSAGE(&worker, WM_APP, 0, 0) != 0;
    //! [ZERA_TOOLS_POSTTHREADMESSAGE]
    EXPECT_TRUE(posted);
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  }
}

TEST(Snippets, Applications) {
  {
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_UC]
    CStringW settings;
    const bool exists = ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(nullptr, settings) != 0;
    // Without one, settings is where the user's file would be.
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_UC]
    EXPECT_FALSE(exists);
    EXPECT_FALSE(settings.IsEmpty());
  }
  {
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC]
    CStringA settings;
    const bool exists = ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC(nullptr, settings) != 0;
    // Without one, settings stays empty.
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC]
    EXPECT_FALSE(exists);
    EXPECT_TRUE(settings.IsEmpty());
  }
  {
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC]
    CStringW settings;
    int copied = 0;
    ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(nullptr, settings, &copied);
    const bool newDefaults = copied != 0;  // the machine-wide file was newer
    //! [ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC]
    EXPECT_FALSE(newDefaults);
  }
  {
    //! [ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC]
    CStringW common;
    CStringW user;
    ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(nullptr, common, user);
    user += L".dat";  // the user's data file
    //! [ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC]
    EXPECT_NE(std::wstring(user).find(L"snippets_test.dat"), std::wstring::npos);
  }
}

TEST(Snippets, Languages) {
  const test::TempFolder folder;
  const std::wstring path = folder.File(L"view.ini", "[Vorgaben]\r\nLanguage=FRA\r\n");
  const wchar_t* const settings = path.c_str();
  {
    //! [ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC]
    const int language = ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(settings);  // 2: French
    //! [ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC]
    EXPECT_EQ(language, 2);
    //! [ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL]
    // "view_FRA.dll" beside "view.exe"; English if there is none.
    const HMODULE texts =
        ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(nullptr, static_cast<unsigned int>(language));
    if (texts) FreeLibrary(texts);
    //! [ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL]
    EXPECT_EQ(texts, nullptr) << "the test has no language modules";
    //! [ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC]
    ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(4, settings);  // Italian, from the next start on
    //! [ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC]
    EXPECT_EQ(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(settings), 4);
  }
}
