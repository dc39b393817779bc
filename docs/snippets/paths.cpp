// SPDX-License-Identifier: MIT
// Examples of the reference: paths as text.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include "support/TempFolder.h"

TEST(Snippets, PartsOfPaths) {
  {
    //! [ZERA_TOOLS_FILE_GET_DRIVE_UC]
    wchar_t drive[_MAX_DRIVE];
    ZERA_TOOLS_FILE_GET_DRIVE_UC(L"C:\\data\\run.ini", drive, _MAX_DRIVE);  // "C:"
    //! [ZERA_TOOLS_FILE_GET_DRIVE_UC]
    EXPECT_STREQ(drive, L"C:");
  }
  {
    //! [ZERA_TOOLS_FILE_GET_DIR_UC]
    wchar_t directory[_MAX_DIR];
    ZERA_TOOLS_FILE_GET_DIR_UC(L"C:\\data\\run.ini", directory, _MAX_DIR);  // "\data\"
    //! [ZERA_TOOLS_FILE_GET_DIR_UC]
    EXPECT_STREQ(directory, L"\\data\\");
  }
  {
    //! [ZERA_TOOLS_FILE_GET_NAME_UC]
    wchar_t name[_MAX_FNAME];
    ZERA_TOOLS_FILE_GET_NAME_UC(L"C:\\data\\run.1.ini", name, _MAX_FNAME);  // "run.1"
    //! [ZERA_TOOLS_FILE_GET_NAME_UC]
    EXPECT_STREQ(name, L"run.1");
  }
  {
    //! [ZERA_TOOLS_FILE_GET_EXT_UC]
    wchar_t extension[_MAX_EXT];
    ZERA_TOOLS_FILE_GET_EXT_UC(L"C:\\data\\run.1.ini", extension, _MAX_EXT);  // ".ini"
    //! [ZERA_TOOLS_FILE_GET_EXT_UC]
    EXPECT_STREQ(extension, L".ini");
  }
  {
    //! [ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC]
    wchar_t folder[MAX_PATH];
    ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC(L"C:\\data\\run.ini", folder, MAX_PATH);  // "C:\data\"
    //! [ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC]
    EXPECT_STREQ(folder, L"C:\\data\\");
  }
  {
    //! [ZERA_TOOLS_FILE_GET_NAME_EXT_UC]
    wchar_t file[MAX_PATH];
    ZERA_TOOLS_FILE_GET_NAME_EXT_UC(L"C:\\data\\run.ini", file, MAX_PATH);  // "run.ini"
    //! [ZERA_TOOLS_FILE_GET_NAME_EXT_UC]
    EXPECT_STREQ(file, L"run.ini");
  }
}

TEST(Snippets, PathsRewritten) {
  {
    //! [ZERA_TOOLS_FILE_REPLACE_DRIVE_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_DRIVE_UC(path, MAX_PATH, L"D");  // "D:\data\run.ini"
    //! [ZERA_TOOLS_FILE_REPLACE_DRIVE_UC]
    EXPECT_STREQ(path, L"D:\\data\\run.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_REPLACE_DIR_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_DIR_UC(path, MAX_PATH, L"\\old");  // "C:\old\run.ini"
    //! [ZERA_TOOLS_FILE_REPLACE_DIR_UC]
    EXPECT_STREQ(path, L"C:\\old\\run.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_REPLACE_NAME_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_NAME_UC(path, MAX_PATH, L"walk");  // "C:\data\walk.ini"
    //! [ZERA_TOOLS_FILE_REPLACE_NAME_UC]
    EXPECT_STREQ(path, L"C:\\data\\walk.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_REPLACE_EXT_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_EXT_UC(path, MAX_PATH, L"bak");  // "C:\data\run.bak"
    //! [ZERA_TOOLS_FILE_REPLACE_EXT_UC]
    EXPECT_STREQ(path, L"C:\\data\\run.bak");
  }
  {
    //! [ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC(path, MAX_PATH, L"D:\\other\\walk.txt");  // "C:\data\walk.txt"
    //! [ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC]
    EXPECT_STREQ(path, L"C:\\data\\walk.txt");
  }
  {
    //! [ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC(path, MAX_PATH, L"D:\\other\\walk.txt");  // "D:\other\run.ini"
    //! [ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC]
    EXPECT_STREQ(path, L"D:\\other\\run.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_ADD_DIR_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_ADD_DIR_UC(path, MAX_PATH, L"old\\");  // "C:\data\old\run.ini"
    //! [ZERA_TOOLS_FILE_ADD_DIR_UC]
    EXPECT_STREQ(path, L"C:\\data\\old\\run.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_ADD_NAME_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_ADD_NAME_UC(path, MAX_PATH, L"_copy");  // "C:\data\run_copy.ini"
    //! [ZERA_TOOLS_FILE_ADD_NAME_UC]
    EXPECT_STREQ(path, L"C:\\data\\run_copy.ini");
  }
  {
    //! [ZERA_TOOLS_FILE_ADD_IDX_NAME_UC]
    wchar_t path[MAX_PATH] = L"C:\\data\\run.ini";
    ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(path, MAX_PATH, 7, 3);  // "C:\data\run007.ini"
    //! [ZERA_TOOLS_FILE_ADD_IDX_NAME_UC]
    EXPECT_STREQ(path, L"C:\\data\\run007.ini");
  }
}
