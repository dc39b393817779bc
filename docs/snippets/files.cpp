// SPDX-License-Identifier: MIT
// Examples of the reference: one file, its contents, and where it is stored.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/TempFolder.h"

TEST(Snippets, OneFile) {
  const test::TempFolder folder;
  const std::wstring held = folder.File(L"run.log", "line\n");
  const wchar_t* const path = held.c_str();
  {
    //! [ZERA_TOOLS_FILE_EXIST_UC]
    const bool exists = ZERA_TOOLS_FILE_EXIST_UC(path) != 0;
    //! [ZERA_TOOLS_FILE_EXIST_UC]
    EXPECT_TRUE(exists);
  }
  {
    //! [ZERA_TOOLS_FILE_GET_SIZE_UC]
    const unsigned int bytes = ZERA_TOOLS_FILE_GET_SIZE_UC(path);  // of files below 4 GiB
    //! [ZERA_TOOLS_FILE_GET_SIZE_UC]
    EXPECT_EQ(bytes, 5u);
  }
  {
    //! [ZERA_TOOLS_FILE_HAS_EXTENSION_UC]
    const bool isLog = ZERA_TOOLS_FILE_HAS_EXTENSION_UC(path, L".log") != 0;
    //! [ZERA_TOOLS_FILE_HAS_EXTENSION_UC]
    EXPECT_TRUE(isLog);
  }
  {
    //! [ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC]
    // Another program is about to write the file: wait for at most two seconds.
    const bool came = ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(path, 2000) != 0;
    //! [ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC]
    EXPECT_TRUE(came);
  }
  {
    //! [ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC]
    __int64 seconds = 0;  // since 1 January 1970 UTC
    ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(path, &seconds);
    //! [ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC]
    EXPECT_GT(seconds, 1'600'000'000);
  }
  {
    const std::wstring other = folder / L"run.old";
    const wchar_t* const oldLog = other.c_str();
    //! [ZERA_TOOLS_FILE_RENAME_UC]
    // What stood at the new path is deleted.
    const bool renamed = ZERA_TOOLS_FILE_RENAME_UC(path, oldLog) != 0;
    //! [ZERA_TOOLS_FILE_RENAME_UC]
    EXPECT_TRUE(renamed);
    EXPECT_EQ(test::ReadBytes(other), "line\n");
    //! [ZERA_TOOLS_FILE_DELETE_UC]
    // Tries again for a quarter of a second while another program has the file open.
    const bool deleted = ZERA_TOOLS_FILE_DELETE_UC(oldLog) != 0;
    //! [ZERA_TOOLS_FILE_DELETE_UC]
    EXPECT_TRUE(deleted);
    EXPECT_FALSE(test::Exists(other));
  }
}

TEST(Snippets, ContentsOfAFile) {
  const test::TempFolder folder;
  const std::wstring first = folder.File(L"run.ini", "[A]\r\n");
  const std::wstring second = folder / L"copy.ini";
  const wchar_t* const path = first.c_str();
  const wchar_t* const copy = second.c_str();
  {
    //! [ZERA_TOOLS_FILE_COPY_UC]
    const bool copied = ZERA_TOOLS_FILE_COPY_UC(path, copy) != 0;
    //! [ZERA_TOOLS_FILE_COPY_UC]
    EXPECT_TRUE(copied);
    EXPECT_EQ(test::ReadBytes(second), "[A]\r\n");
  }
  {
    //! [ZERA_TOOLS_FILE_COMPARE_UC]
    const bool same = ZERA_TOOLS_FILE_COMPARE_UC(path, copy) != 0;  // byte for byte
    //! [ZERA_TOOLS_FILE_COMPARE_UC]
    EXPECT_TRUE(same);
  }
  {
    //! [ZERA_TOOLS_FILE_FROM_BUFFER_UC]
    const unsigned char bytes[] = {0x01, 0x02, 0x03};
    const bool written = ZERA_TOOLS_FILE_FROM_BUFFER_UC(copy, bytes, sizeof bytes) != 0;
    //! [ZERA_TOOLS_FILE_FROM_BUFFER_UC]
    EXPECT_TRUE(written);
    EXPECT_EQ(test::ReadBytes(second), "\x01\x02\x03");
  }
  {
    //! [ZERA_TOOLS_FILE_TO_BUFFER_UC]
    std::vector<unsigned char> content(ZERA_TOOLS_FILE_GET_SIZE_UC(copy));
    unsigned __int64 count = 0;
    const bool read = ZERA_TOOLS_FILE_TO_BUFFER_UC(copy, content.data(), content.size(), &count) != 0;
    //! [ZERA_TOOLS_FILE_TO_BUFFER_UC]
    EXPECT_TRUE(read);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(content, (std::vector<unsigned char>{1, 2, 3}));
  }
  {
    const std::wstring third = folder / L"new.txt";
    const wchar_t* const fresh = third.c_str();
    //! [ZERA_TOOLS_FILE_CREATE_UC]
    const bool made = ZERA_TOOLS_FILE_CREATE_UC(fresh) != 0;
    //! [ZERA_TOOLS_FILE_CREATE_UC]
    EXPECT_TRUE(made);
    EXPECT_EQ(test::ReadBytes(third), "");
  }
}

TEST(Snippets, Storage) {
  const test::TempFolder folder;
  const std::wstring deep = folder / L"a\\b\\run.ini";
  const wchar_t* const path = deep.c_str();
  {
    //! [ZERA_TOOLS_FILE_CHECK_WRITE_UC]
    // Before a file is written: its folders are made, and that it can be written is tried.
    const bool writable = ZERA_TOOLS_FILE_CHECK_WRITE_UC(path) != 0;
    //! [ZERA_TOOLS_FILE_CHECK_WRITE_UC]
    EXPECT_TRUE(writable);
    EXPECT_EQ(folder.Entries(), (std::vector<std::wstring>{L"a\\", L"a\\b\\"}));
  }
  {
    //! [ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC]
    const bool enough = ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(L'X') > 0.001f;
    //! [ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC]
    EXPECT_TRUE(enough);
  }
  {
    wchar_t library[MAX_PATH];
    ::GetModuleFileNameW(::GetModuleHandleW(L"ZERATools.dll"), library, MAX_PATH);
    //! [ZERA_TOOLS_FILE_GET_VERSION_UC]
    wchar_t version[32];
    const bool known = ZERA_TOOLS_FILE_GET_VERSION_UC(library, version, 32) != 0;  // "1.1.0.0"
    //! [ZERA_TOOLS_FILE_GET_VERSION_UC]
    EXPECT_TRUE(known);
    EXPECT_EQ(std::wstring(version).substr(0, 2), L"1.");
  }
}

TEST(Snippets, WholeDirectories) {
  const test::TempFolder folder;
  folder.Folder(L"logs");
  folder.Folder(L"template");
  folder.File(L"logs\\one.log", "1");
  folder.File(L"logs\\two.txt", "2");
  folder.File(L"template\\new.ini", "[A]\r\n");
  const std::wstring logsPath = folder / L"logs\\";
  const std::wstring templatePath = folder / L"template\\";
  const std::wstring projectPath = folder / L"project\\";
  const wchar_t* const logs = logsPath.c_str();
  {
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC]
    // Log files older than 30 days. The folder ends in a backslash.
    const bool pruned = ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC(logs, L".log", 30 * 24 * 60 * 60) != 0;
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC]
    EXPECT_TRUE(pruned);
    EXPECT_TRUE(test::Exists(folder / L"logs\\one.log"));
  }
  {
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC]
    int stop = 0;  // set from another thread to end the walk
    ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(logs, L".log", 30 * 24 * 60 * 60, &stop);
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC]
    EXPECT_TRUE(test::Exists(folder / L"logs\\one.log"));
  }
  {
    const std::string narrow = test::Ansi(logsPath);
    const char* const logFolder = narrow.c_str();
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX]
    ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX(logFolder, ".log", 30 * 24 * 60 * 60);
    //! [ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX]
    EXPECT_TRUE(test::Exists(folder / L"logs\\one.log"));
  }
  {
    //! [ZERA_TOOLS_FILE_DELETE_ALL_UC]
    const bool gone = ZERA_TOOLS_FILE_DELETE_ALL_UC(logs, L".log") != 0;
    //! [ZERA_TOOLS_FILE_DELETE_ALL_UC]
    EXPECT_TRUE(gone);
    EXPECT_FALSE(test::Exists(folder / L"logs\\one.log"));
    EXPECT_TRUE(test::Exists(folder / L"logs\\two.txt"));
  }
  {
    const wchar_t* const templates = templatePath.c_str();
    const wchar_t* const project = projectPath.c_str();
    //! [ZERA_TOOLS_FILE_COPY_ALL_UC]
    // A new project from a template; files that are there already stay.
    ZERA_TOOLS_FILE_COPY_ALL_UC(templates, project, 0);
    //! [ZERA_TOOLS_FILE_COPY_ALL_UC]
    EXPECT_EQ(test::ReadBytes(folder / L"project\\new.ini"), "[A]\r\n");
  }
}
