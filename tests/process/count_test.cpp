// SPDX-License-Identifier: MIT
// Counting the running instances of an executable.
#include <gtest/gtest.h>

#include <ZERATools.h>
#include <tlhelp32.h>

#include <memory>
#include <string>
#include <vector>

#include "Child.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

using test::Child;

const auto Count = test::Export<decltype(ZERA_TOOLS_GETNUM_APPRUNNING)>(91);
const auto CountUc = test::Export<decltype(ZERA_TOOLS_GETNUM_APPRUNNING_UC)>(1091);

std::wstring Upper(std::wstring text) {
  for (wchar_t& unit : text) unit = static_cast<wchar_t>(towupper(unit));
  return text;
}
std::wstring Lower(std::wstring text) {
  for (wchar_t& unit : text) unit = static_cast<wchar_t>(towlower(unit));
  return text;
}

TEST(Count, InstancesOfOneFileWhateverTheLetterCase) {
  const test::TempFolder folder;
  const std::wstring name = test::UniqueName(L"Viewer.exe");
  const std::wstring program = test::MakeProgram(folder / name);
  const std::wstring copy = test::MakeProgram(folder.Folder(L"copy") + name);
  EXPECT_EQ(CountUc(program.c_str()), 0u);
  const auto first = std::make_unique<Child>(program);
  EXPECT_EQ(CountUc(program.c_str()), 1u);
  const Child second(program), elsewhere(copy);
  const DWORD handles = test::OpenHandles();
  for (const std::wstring& path : {program, Upper(program), Lower(program)}) {
    EXPECT_EQ(CountUc(path.c_str()), 2u) << test::Ansi(path);
    EXPECT_EQ(Count(test::Ansi(path).c_str()), 2u) << test::Ansi(path);
  }
  EXPECT_EQ(CountUc(copy.c_str()), 1u);
  EXPECT_EQ(test::OpenHandles(), handles);
  first->End();
  EXPECT_EQ(CountUc(program.c_str()), 1u);
}

TEST(Count, NeedsTheFullPath) {
  const test::TempFolder folder;
  const std::wstring name = test::UniqueName(L"Viewer.exe");
  const std::wstring program = test::MakeProgram(folder / name);
  const Child child(program);
  std::wstring slashes = program;
  for (wchar_t& unit : slashes) unit = unit == L'\\' ? L'/' : unit;
  const std::wstring misses[] = {name,
                                 L"\\" + name,
                                 slashes,
                                 program + L"x",
                                 program + L"\\",
                                 folder.path(),
                                 L"",
                                 L"\\",
                                 L"X:\\" + std::wstring(32763, L'x')};
  for (const std::wstring& miss : misses) {
    EXPECT_EQ(CountUc(miss.c_str()), 0u) << test::Ansi(miss).substr(0, 80);
    EXPECT_EQ(Count(test::Ansi(miss).c_str()), 0u) << test::Ansi(miss).substr(0, 80);
  }
  EXPECT_EQ(Count(nullptr), 0u);
  EXPECT_EQ(CountUc(program.c_str()), 1u);
}

// A machine that the test made up: four processes, two of them of the name that is looked for.
std::vector<std::string> calls;
std::size_t process, module;
int failingSnapshot;

const wchar_t* const kProcesses[] = {L"", L"VIEWER.exe", L"viewer.exe.bak", L"Viewer.EXE"};
const wchar_t* const kModules[] = {L"c:\\family\\viewer.exe", L"C:\\Family\\helper.dll",
                                   L"C:\\FAMILY\\VIEWER.EXE", L"C:\\other\\viewer.exe"};

BOOL NextProcess(PROCESSENTRY32W* entry) {
  EXPECT_EQ(entry->dwSize, sizeof *entry);
  if (process == std::size(kProcesses)) return FALSE;
  entry->th32ProcessID = static_cast<DWORD>(100 + process);
  wcscpy_s(entry->szExeFile, kProcesses[process++]);
  return TRUE;
}

BOOL NextModule(MODULEENTRY32W* entry) {
  EXPECT_EQ(entry->dwSize, sizeof *entry);
  if (module == std::size(kModules)) return FALSE;
  wcscpy_s(entry->szExePath, kModules[module++]);
  return TRUE;
}

class CountFaults : public ::testing::Test {
 protected:
  void SetUp() override { Reset(0); }
  void TearDown() override { EXPECT_EQ(test::OpenHandles(), handles_); }
  static void Reset(int failing) {
    calls.clear();
    process = module = 0;
    failingSnapshot = failing;
  }

  DWORD handles_ = test::OpenHandles();
  test::ImportHook snapshot_{"CreateToolhelp32Snapshot", +[](DWORD flags, DWORD id) -> HANDLE {
                               calls.push_back(std::to_string(flags) + " " + std::to_string(id));
                               module = 0;
                               if (static_cast<int>(calls.size()) == failingSnapshot)
                                 return INVALID_HANDLE_VALUE;
                               return ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
                             }};
  test::ImportHook firstProcess_{"Process32FirstW",
                                 +[](HANDLE, PROCESSENTRY32W* entry) -> BOOL { return NextProcess(entry); }};
  test::ImportHook nextProcess_{"Process32NextW",
                                +[](HANDLE, PROCESSENTRY32W* entry) -> BOOL { return NextProcess(entry); }};
  test::ImportHook firstModule_{"Module32FirstW",
                                +[](HANDLE, MODULEENTRY32W* entry) -> BOOL { return NextModule(entry); }};
  test::ImportHook nextModule_{"Module32NextW",
                               +[](HANDLE, MODULEENTRY32W* entry) -> BOOL { return NextModule(entry); }};
};

using Calls = std::vector<std::string>;

TEST_F(CountFaults, EveryModuleOfThePathCountsInEveryProcessOfTheName) {
  EXPECT_EQ(CountUc(L"C:\\family\\Viewer.exe"), 4u);
  EXPECT_EQ(calls, (Calls{"2 0", "8 101", "8 103"}));
  Reset(0);
  EXPECT_EQ(Count("C:\\family\\Viewer.exe"), 4u);
  EXPECT_EQ(calls, (Calls{"2 0", "8 101", "8 103"}));
}

TEST_F(CountFaults, NoProcessListGivesNone) {
  Reset(1);
  EXPECT_EQ(CountUc(L"C:\\family\\Viewer.exe"), 0u);
  EXPECT_EQ(calls, (Calls{"2 0"}));
}

TEST_F(CountFaults, ProcessWithoutModuleListAddsNothing) {
  for (const int failing : {2, 3}) {
    Reset(failing);
    EXPECT_EQ(CountUc(L"C:\\family\\Viewer.exe"), 2u);
    EXPECT_EQ(calls, (Calls{"2 0", "8 101", "8 103"}));
  }
}

TEST_F(CountFaults, PathWithoutNameMatchesNoNamelessProcess) {
  EXPECT_EQ(CountUc(L"Viewer.exe"), 0u);
  EXPECT_EQ(CountUc(L"C:\\family\\"), 0u);
  EXPECT_EQ(calls, Calls()) << "no list is asked for";
}

}  // namespace
