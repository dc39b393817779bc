// SPDX-License-Identifier: MIT
// How often each operation calls the platform and the heap, in one table, so that nothing gets slower unseen
// where the noise of a measurement would hide it. A row that changes is a decision, not an accident.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "support/CallCounter.h"
#include "support/CodePage.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

wchar_t path[260];
char bytes[260];
std::size_t count;

template <class Function>
Function* Of(unsigned ordinal) {
  return test::Export<Function>(ordinal);
}

using Get = int(const wchar_t*, wchar_t*, std::size_t);
using Rewrite = int(wchar_t*, std::size_t, const wchar_t*);

class CallCounts : public ::testing::Test {
 protected:
  test::TempFolder temp_;
  test::CallCounter counter_;

  std::string During(const std::function<void()>& work) {
    // Whatever is done once for a process or a thread.
    work();
    counter_.Reset();
    work();
    return counter_.Calls();
  }
};

TEST_F(CallCounts, PathsAreTextAlone) {
  for (unsigned ordinal = 1010; ordinal <= 1015; ++ordinal) {
    EXPECT_EQ(During([=] { Of<Get>(ordinal)(L"C:\\data\\run.ini", path, 260); }), "") << ordinal;
  }
  for (const unsigned ordinal : {1020u, 1021u, 1022u, 1023u, 1024u, 1028u, 1030u, 1032u}) {
    EXPECT_EQ(During([=] {
                std::wcscpy(path, L"C:\\data\\run.ini");
                Of<Rewrite>(ordinal)(path, 260, L"x\\y");
              }),
              "")
        << ordinal;
  }
  EXPECT_EQ(During([] {
              std::wcscpy(path, L"C:\\data\\run.ini");
              Of<decltype(ZERA_TOOLS_FILE_ADD_IDX_NAME_UC)>(1033)(path, 260, 7, 4);
            }),
            "");
}

TEST_F(CallCounts, PlainPathsAskForLeadBytesAlone) {
  using PlainGet = int(const char*, char*, std::size_t);
  using PlainRewrite = int(char*, std::size_t, const char*);
  for (unsigned ordinal = 10; ordinal <= 15; ++ordinal) {
    EXPECT_EQ(During([=] { Of<PlainGet>(ordinal)("C:\\data\\run.ini", bytes, 260); }), "") << ordinal;
  }
  for (const unsigned ordinal : {20u, 21u, 22u, 23u, 24u, 28u, 30u, 32u}) {
    EXPECT_EQ(During([=] {
                std::strcpy(bytes, "C:\\data\\run.ini");
                Of<PlainRewrite>(ordinal)(bytes, 260, "x\\y");
              }),
              "")
        << ordinal;
  }
  EXPECT_EQ(During([] {
              std::strcpy(bytes, "C:\\data\\run.ini");
              Of<decltype(ZERA_TOOLS_FILE_ADD_IDX_NAME)>(33)(bytes, 260, 7, 4);
            }),
            "");
  // Where the first of two is a lead byte the second is not asked about.
  EXPECT_EQ(During([] { Of<PlainGet>(12)("C:\\\xFC\xFC.ini", bytes, 260); }),
            ::IsDBCSLeadByte(0xFC) ? "_ismbblead 1" : "_ismbblead 2");
}

TEST_F(CallCounts, Lines) {
  const std::string locale = "_wsetlocale 3";
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_SECTION_UC)>(1080)(L"S", path, 260, &count); }), "");
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_STRING_UC)>(1081)(L"K", path, 260, L"v", &count); }),
            "");
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_STRING)>(81)("K", bytes, 260, "v", &count); }), "");
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_INT_UC)>(1082)(L"K", path, 260, -5, &count); }), "");
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_UINT_UC)>(1083)(L"K", path, 260, 5, &count); }), "");
  EXPECT_EQ(During([] { Of<decltype(ZERA_TOOLS_BUFWRITE_DOUBLE_UC)>(1084)(L"K", path, 260, 2.5, &count); }),
            "__stdio_common_vswprintf_s 1, " + locale);
}

TEST_F(CallCounts, Conversions) {
  CStringA narrow;
  CStringW wide;
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_UC_TO_MBC)>(110)(L"some text, all ASCII", narrow); }),
            "_getmbcp 1");
  EXPECT_EQ(During([&] {
              Of<decltype(ZERA_TOOLS_UC_TO_MBC)>(110)(L"\u00FC\u00E4\u00FC\u00E4 \u00B5\u00B5", narrow);
            }),
            "WideCharToMultiByte 2, _getmbcp 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_UC_TO_MBC)>(110)(L"5 \u20AC, 6 \u20AC, 7 \u20AD", narrow); }),
            "WideCharToMultiByte 2, _getmbcp 1, allocations 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_CHAR8_TO_MBC)>(111)("\xFC\xE4 \xB5", narrow); }),
            "_getmbcp 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_CHAR8_TO_UC)>(112)("\xFC\xE4\xFC\xE4 \xB5", wide); }),
            "MultiByteToWideChar 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_STRING_UC_TO_UTF8)>(114)(L"\u00FC", narrow); }),
            "WideCharToMultiByte 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_STRING_UTF8_TO_UC)>(116)("\xC3\xBC", wide); }),
            "MultiByteToWideChar 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_STRING_UC_TO_HEX)>(117)(L"text", wide); }), "");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_STRING_HEX_TO_UC)>(118)(L"48 69", wide); }), "");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_STRING_HEX_TO_UC)>(118)(L"0x48 69", wide); }),
            "__stdio_common_vswscanf 1");
}

TEST_F(CallCounts, Files) {
  const std::wstring file = temp_.File(L"a.txt", "some bytes"), copy = temp_ / L"b.txt",
                     missing = temp_ / L"missing";
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1001)(file.c_str()); }),
            "GetFileAttributesExW 1, GetFullPathNameW 1, GetThreadErrorMode 1, "
            "SetThreadErrorMode 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1001)(missing.c_str()); }),
            "GetFileAttributesExW 1, GetThreadErrorMode 1, SetThreadErrorMode 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_FILE_COPY_UC)>(1016)(file.c_str(), copy.c_str()); }),
            "CloseHandle 2, CreateFileW 2, GetThreadErrorMode 2, ReadFile 2, "
            "SetThreadErrorMode 4, WriteFile 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_FILE_CHECK_WRITE_UC)>(1031)(temp_.path().c_str()); }),
            "CloseHandle 1, CreateFileW 1, DeleteFileW 1, GetCurrentProcessId 1, "
            "GetThreadErrorMode 2, SetThreadErrorMode 4");
  EXPECT_EQ(During([&] {
              temp_.File(L"c.txt", "");
              Of<decltype(ZERA_TOOLS_FILE_DELETE_UC)>(1002)((temp_ / L"c.txt").c_str());
            }),
            "DeleteFileW 1, GetFileAttributesExW 3, GetFullPathNameW 2, "
            "GetThreadErrorMode 4, SetThreadErrorMode 8");
}

TEST_F(CallCounts, Settings) {
  const std::wstring file = temp_ / L"settings.ini";
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_WRITE_INT_UC)>(1061)(L"S", L"K", file.c_str(), 5); }),
            "GetThreadErrorMode 1, SetThreadErrorMode 2, "
            "WritePrivateProfileStringW 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_READ_INT_UC)>(1051)(L"S", L"K", file.c_str(), 0, 0, 9); }),
            "GetPrivateProfileStringW 1, GetThreadErrorMode 1, "
            "SetThreadErrorMode 2, _wtoi 1");
}

TEST_F(CallCounts, SettingsTextsAndNumbers) {
  const std::wstring file = temp_ / L"settings.ini";
  const auto name = file.c_str();
  const bool companion = test::NeedsCompanion(L"\u00FC");
  const std::string likeAscii =
      "GetPrivateProfileStringW 2, GetThreadErrorMode 3, MultiByteToWideChar 2, "
      "SetThreadErrorMode 6, WideCharToMultiByte 2, WritePrivateProfileStringW 1, "
      "allocations 6";
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060)(L"S", L"T", name, L"ASCII alone"); }),
            likeAscii);
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060)(L"S", L"U", name, L"\u00FC"); }),
            companion ? "GetPrivateProfileStringW 1, GetThreadErrorMode 3, MultiByteToWideChar 2, "
                        "SetThreadErrorMode 6, WideCharToMultiByte 2, WritePrivateProfileStringW 2, "
                        "allocations 6"
                      : likeAscii);
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050)(L"S", L"T", name, L"", path, 260); }),
            "GetPrivateProfileStringW 3, GetThreadErrorMode 3, SetThreadErrorMode 6, "
            "allocations 5");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050)(L"S", L"U", name, L"", path, 260); }),
            companion ? "GetPrivateProfileStringW 1, GetThreadErrorMode 1, MultiByteToWideChar 2, "
                        "SetThreadErrorMode 2, WideCharToMultiByte 2, allocations 5"
                      : "GetPrivateProfileStringW 3, GetThreadErrorMode 3, SetThreadErrorMode 6, "
                        "allocations 5");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_WRITE_WORD_UC)>(1065)(L"S", L"W", name, 5); }),
            "GetThreadErrorMode 1, SetThreadErrorMode 2, WritePrivateProfileStringW 1");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_READ_WORD_UC)>(1058)(L"S", L"W", name, 0, 0, 9); }),
            "GetPrivateProfileStringW 1, GetThreadErrorMode 1, SetThreadErrorMode 2");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_WRITE_DOUBLE_UC)>(1063)(L"S", L"D", name, 2.5); }),
            "GetThreadErrorMode 1, SetThreadErrorMode 2, WritePrivateProfileStringW 1, "
            "__stdio_common_vswprintf_s 1, _wsetlocale 3");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_READ_DOUBLE_UC)>(1053)(L"S", L"D", name, 0, 0, 9); }),
            "GetPrivateProfileStringW 1, GetThreadErrorMode 1, SetThreadErrorMode 2, "
            "_wsetlocale 3, _wtof 1");
}

TEST_F(CallCounts, Comparing) {
  const std::wstring first = temp_.File(L"a.txt", "some bytes"), second = temp_.File(L"b.txt", "some bytes");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_FILE_COMPARE_UC)>(1017)(first.c_str(), second.c_str()); }),
            "CloseHandle 2, CreateFileW 2, GetFileAttributesExW 2, GetFullPathNameW 2, "
            "GetThreadErrorMode 4, ReadFile 4, SetThreadErrorMode 8");
}

// What a tree's deletion calls for one more file in a folder.
TEST_F(CallCounts, DeletingATreePerFile) {
  const auto perFile = [&](const std::function<void(const wchar_t*)>& remove) {
    std::map<std::string, int> one, three;
    for (auto* const calls : {&one, &three}) {
      for (int i = 0; i < (calls == &one ? 1 : 3); ++i) {
        temp_.File(L"tree\\" + std::to_wstring(i) + L".txt", "some bytes");
      }
      counter_.Reset();
      remove((temp_ / L"tree\\").c_str());
      *calls = counter_.Counts();
      EXPECT_EQ(::GetFileAttributesW((temp_ / L"tree\\0.txt").c_str()), INVALID_FILE_ATTRIBUTES);
    }
    std::string text;
    for (const auto& [name, calls] : three) {
      const int more = calls - one[name];
      EXPECT_EQ(more % 2, 0) << name;
      if (more != 0) text += (text.empty() ? "" : ", ") + name + " " + std::to_string(more / 2);
    }
    return text;
  };
  temp_.Folder(L"tree");
  EXPECT_EQ(
      perFile([](const wchar_t* start) { Of<decltype(ZERA_TOOLS_FILE_DELETE_ALL_UC)>(1003)(start, L"*.*"); }),
      "DeleteFileW 1, FindNextFileW 1, GetFileAttributesExW 2, GetFullPathNameW 1, "
      "GetThreadErrorMode 4, SetThreadErrorMode 8, allocations 2");
  EXPECT_EQ(perFile([](const wchar_t* start) {
              // The age is whole seconds, and more than 0.
              ::Sleep(1100);
              Of<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC)>(1008)(start, L".txt", 0);
            }),
            "CharUpperBuffW 1, DeleteFileW 1, FindNextFileW 1, GetFileAttributesExW 3, GetFullPathNameW 2, "
            "GetThreadErrorMode 5, SetThreadErrorMode 10, _time64 1, allocations 2");
}

TEST_F(CallCounts, Locations) {
  CStringW file, user;
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_UC)>(201)(nullptr, file); }),
            "CharUpperBuffW 1, GetFileAttributesExW 3, GetModuleFileNameW 1, "
            "GetThreadErrorMode 5, SHGetSpecialFolderPathW 2, SetThreadErrorMode 10");
  EXPECT_EQ(
      During([&] { Of<decltype(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)>(209)(nullptr, file, user); }),
      "CharUpperBuffW 1, GetModuleFileNameW 1, GetThreadErrorMode 2, "
      "SHGetSpecialFolderPathW 2, SetThreadErrorMode 4");
}

TEST_F(CallCounts, Processes) {
  const auto running = Of<decltype(ZERA_TOOLS_GETNUM_APPRUNNING_UC)>(1091);
  // One snapshot of the processes, each looked at once; modules are asked for where the name is the same.
  During([&] { running(L"C:\\no such program.exe"); });
  auto calls = counter_.Counts();
  EXPECT_GT(calls["Process32NextW"], 0);
  EXPECT_EQ(calls["CompareStringOrdinal"], calls["Process32NextW"]);
  calls.erase("CompareStringOrdinal");
  calls.erase("Process32NextW");
  const std::map<std::string, int> expected = {
      {"CloseHandle", 1}, {"CreateToolhelp32Snapshot", 1}, {"Process32FirstW", 1}};
  EXPECT_EQ(calls, expected);
}

TEST_F(CallCounts, Encryption) {
  CStringW cipher, plain;
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_ENC_STRING_L_UC)>(1077)(L"pass", L"plain text", cipher); }),
            "CryptAcquireContextW 1, CryptCreateHash 1, CryptDeriveKey 1, "
            "CryptDestroyHash 1, CryptDestroyKey 1, CryptEncrypt 1, "
            "CryptHashData 1, CryptReleaseContext 1, allocations 4");
  EXPECT_EQ(During([&] { Of<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076)(L"pass", cipher, plain); }),
            "CryptAcquireContextW 1, CryptCreateHash 1, CryptDecrypt 1, "
            "CryptDeriveKey 1, CryptDestroyHash 1, CryptDestroyKey 1, "
            "CryptHashData 1, CryptReleaseContext 1, allocations 3");
}

// A folder below one that was just made costs what the one above it did: a tree twice as deep, twice the
// calls.
TEST_F(CallCounts, CopyingGrowsWithTheDepth) {
  const auto copy = Of<decltype(ZERA_TOOLS_FILE_COPY_ALL_UC)>(1018);
  const auto probes = [&](const std::wstring& name, int depth) {
    std::wstring folder = temp_.Folder(L"from" + name);
    for (int i = 0; i < depth; ++i) {
      folder += L"\\d";
      ::CreateDirectoryW(folder.c_str(), nullptr);
    }
    std::wstring target = temp_ / (L"to" + name + L"\\");
    counter_.Reset();
    EXPECT_EQ(copy((temp_ / (L"from" + name + L"\\")).c_str(), target.c_str(), 0), 1);
    for (int i = 0; i < depth; ++i) target += L"d\\";
    EXPECT_NE(::GetFileAttributesW(target.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(counter_.Count("_wmkdir"), depth + 1);
    return counter_.Count("CreateFileW");
  };
  const int ten = probes(L"10", 10), twenty = probes(L"20", 20), thirty = probes(L"30", 30);
  EXPECT_EQ(twenty - ten, 20);
  EXPECT_EQ(thirty - twenty, 20);
}

}  // namespace
