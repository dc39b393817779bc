// SPDX-License-Identifier: MIT
// Ending processes by name. Only children that this program started, under names of its own, are ended.
#include <gtest/gtest.h>

#include <ZERATools.h>
#include <tlhelp32.h>

#include <string>
#include <vector>

#include "Child.h"
#include "support/CodePage.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

using test::Child;

const auto Kill = test::Export<decltype(ZERA_TOOLS_KILLPROCESS)>(90);
const auto KillUc = test::Export<decltype(ZERA_TOOLS_KILLPROCESS_UC)>(1090);

// What the library asks of the platform, on a process list that the test made up.
std::vector<std::string> calls;
std::vector<DWORD> listed;
std::wstring listedName;
std::size_t position;
bool snapshotFails, openFails, terminateFails;
HANDLE snapshot;

BOOL Entry(PROCESSENTRY32W* entry) {
  EXPECT_EQ(entry->dwSize, sizeof *entry);
  if (position == listed.size()) return FALSE;
  entry->th32ProcessID = listed[position++];
  wcscpy_s(entry->szExeFile, listedName.c_str());
  return TRUE;
}

class KillFaults : public ::testing::Test {
 protected:
  void SetUp() override {
    calls.clear();
    listed = {::GetCurrentProcessId(), 4, ::GetCurrentProcessId()};
    listedName = L"Listed.exe";
    position = 0;
    snapshotFails = openFails = terminateFails = false;
    handles_ = test::OpenHandles();
  }
  void TearDown() override { EXPECT_EQ(test::OpenHandles(), handles_); }

  test::ImportHook snapshot_{
      "CreateToolhelp32Snapshot", +[](DWORD flags, DWORD id) -> HANDLE {
        calls.push_back("snapshot " + std::to_string(flags) + " " + std::to_string(id));
        if (snapshotFails) return INVALID_HANDLE_VALUE;
        return snapshot = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
      }};
  test::ImportHook first_{"Process32FirstW", +[](HANDLE handle, PROCESSENTRY32W* entry) -> BOOL {
                            EXPECT_EQ(handle, snapshot);
                            return Entry(entry);
                          }};
  test::ImportHook next_{"Process32NextW", +[](HANDLE handle, PROCESSENTRY32W* entry) -> BOOL {
                           EXPECT_EQ(handle, snapshot);
                           return Entry(entry);
                         }};
  test::ImportHook open_{"OpenProcess", +[](DWORD access, BOOL inherit, DWORD id) -> HANDLE {
                           const bool own = id == ::GetCurrentProcessId();
                           calls.push_back("open " + std::to_string(access) + " " + std::to_string(inherit) +
                                           (own ? " own" : " other"));
                           if (openFails || !own) return nullptr;
                           return ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
                         }};
  test::ImportHook terminate_{"TerminateProcess", +[](HANDLE, UINT code) -> BOOL {
                                calls.push_back("terminate " + std::to_string(code));
                                return !terminateFails;
                              }};
  DWORD handles_;
};

using Calls = std::vector<std::string>;

TEST(Kill, EndsEveryProcessOfTheNameAndNoOther) {
  const test::TempFolder folder;
  const std::wstring name = test::UniqueName(L"Viewer.exe");
  const std::wstring program = test::MakeProgram(folder / name);
  const std::wstring copy = test::MakeProgram(folder.Folder(L"copy") + name);
  const std::wstring other = test::MakeProgram(folder / (L"x" + name));
  Child first(program), second(program), third(copy), bystander(other);
  const DWORD handles = test::OpenHandles();
  EXPECT_EQ(KillUc(name.c_str()), 1);
  EXPECT_EQ(test::OpenHandles(), handles);
  EXPECT_TRUE(first.EndedWith(0));
  EXPECT_TRUE(second.EndedWith(0));
  EXPECT_TRUE(third.EndedWith(0));
  EXPECT_TRUE(bystander.Runs());
}

TEST(Kill, LetterCaseCountsAndAPathIsNoName) {
  const test::TempFolder folder;
  const std::wstring name = test::UniqueName(L"Viewer.exe");
  Child child(test::MakeProgram(folder / name));
  std::wstring lower = name, upper = name;
  for (wchar_t& unit : lower) unit = static_cast<wchar_t>(towlower(unit));
  for (wchar_t& unit : upper) unit = static_cast<wchar_t>(towupper(unit));
  const std::wstring misses[] = {
      lower, upper, folder / name, name.substr(0, name.size() - 4), name.substr(1), name + L" ", L""};
  for (const std::wstring& miss : misses) {
    EXPECT_EQ(KillUc(miss.c_str()), 1);
    EXPECT_EQ(Kill(test::Ansi(miss).c_str()), 1);
    EXPECT_TRUE(child.Runs()) << test::Ansi(miss);
  }
  EXPECT_EQ(Kill(nullptr), 1);
  EXPECT_TRUE(child.Runs());
  EXPECT_EQ(Kill(test::Ansi(name).c_str()), 1);
  EXPECT_TRUE(child.EndedWith(0));
}

TEST(Kill, PlainNameIsTakenInTheCodePage) {
  const test::TempFolder folder;
  const std::wstring name = test::UniqueName(test::Local().wide + L".exe");
  Child child(test::MakeProgram(folder / name));
  EXPECT_EQ(Kill(test::Ansi(name).c_str()), 1);
  EXPECT_TRUE(child.EndedWith(0));
}

TEST_F(KillFaults, WalksOnBehindProcessesThatCannotBeOpenedItselfIncluded) {
  EXPECT_EQ(KillUc(L"Listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0", "open 1 0 own", "terminate 0", "open 1 0 other", "open 1 0 own",
                          "terminate 0"}));
  calls.clear();
  position = 0;
  EXPECT_EQ(KillUc(L"listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0"}));
}

TEST_F(KillFaults, FailuresAreNotReported) {
  openFails = true;
  EXPECT_EQ(KillUc(L"Listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0", "open 1 0 own", "open 1 0 other", "open 1 0 own"}));
  calls.clear();
  position = 0;
  openFails = false;
  terminateFails = true;
  EXPECT_EQ(KillUc(L"Listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0", "open 1 0 own", "terminate 0", "open 1 0 other", "open 1 0 own",
                          "terminate 0"}));
}

TEST_F(KillFaults, NoSnapshotEndsNothing) {
  snapshotFails = true;
  EXPECT_EQ(Kill("Listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0"}));
}

// Wine lists processes that are just starting so.
TEST_F(KillFaults, ProcessesWithoutANameAreNobodys) {
  listedName.clear();
  EXPECT_EQ(KillUc(L""), 1);
  EXPECT_EQ(Kill(""), 1);
  EXPECT_EQ(Kill(nullptr), 1);
  EXPECT_EQ(calls, Calls());
}

TEST_F(KillFaults, EmptyListEndsNothing) {
  listed.clear();
  EXPECT_EQ(KillUc(L"Listed.exe"), 1);
  EXPECT_EQ(calls, (Calls{"snapshot 2 0"}));
}

}  // namespace
