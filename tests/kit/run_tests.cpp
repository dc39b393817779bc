// SPDX-License-Identifier: MIT
// run_tests.cpp: the runner of the tests' kit, which run-tests.cmd starts:  run_tests [/y] [PROGRAM ...]
//
// It says what it will do and waits for a key, runs the programs that tests.txt lists, prints a line for
// each, writes report.txt and ends with 0 when all of them passed, otherwise with 1.
#include <conio.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Folder.h"
#include "Machine.h"
#include "Program.h"
#include "support/Wine.h"

namespace {

// A line of tests.txt: the program, the longest time it may take, and what it needs.
struct Test {
  std::string name;
  DWORD seconds;
  std::string needs;
};

kit::Folder folder;

// Somebody pressed Ctrl+C or closed the window: the programs end with the runner, the letter must not stay.
BOOL WINAPI Leave(DWORD) {
  folder.TakeBack();
  return FALSE;
}

bool WaitForKey() {
  std::printf("Press a key to start, or Esc to leave.\n");
  std::fflush(stdout);
  const int key = ::_isatty(::_fileno(stdin)) ? ::_getch() : std::getchar();
  return key != 27 && key != EOF;
}

std::vector<Test> ReadList() {
  std::vector<Test> tests;
  std::ifstream list("X:\\tests.txt");
  for (std::string line; std::getline(list, line);) {
    Test test;
    std::istringstream words(line);
    if (words >> test.name >> test.seconds) tests.push_back((words >> test.needs, test));
  }
  return tests;
}

// Why a program is not run on this machine; null if it is.
const char* LeftOut(const Test& test) {
  const bool wine = test::WineVersion() != nullptr;
  if (test.needs == "user-folders" && !wine) return "it writes outside this folder, into the user's folders";
  if (test.needs == "vcruntime140") {
    const HMODULE runtime = ::LoadLibraryW(L"vcruntime140.dll");
    if (!runtime) return "vcruntime140.dll is not installed";
    ::FreeLibrary(runtime);
  }
  return nullptr;
}

// Runs what was asked for; gives how many did not pass. Nothing run counts as one.
int RunAll(const std::vector<std::string>& wanted, std::ostream& report) {
  int failed = 0, run = 0;
  for (const Test& test : ReadList()) {
    if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), test.name) == wanted.end()) continue;
    std::printf("%-36s", test.name.c_str());
    std::fflush(stdout);
    if (const char* const reason = LeftOut(test)) {
      std::printf("left out: %s\n", reason);
      report << test.name << ": left out: " << reason << "\r\n";
      continue;
    }
    const kit::Outcome outcome = kit::RunProgram(std::wstring(test.name.begin(), test.name.end()),
                                                 test.seconds, L"X:\\tmp\\output.txt");
    ++run;
    failed += !outcome.passed;
    char result[64];
    std::snprintf(result, sizeof result, "%s (%.1f s)", outcome.passed ? "passed" : "FAILED",
                  outcome.seconds);
    std::printf("%s\n", result);
    report << test.name << ": " << result << "\r\n";
    if (!outcome.passed) report << outcome.said << "\r\n";
    report.flush();
  }
  char summary[64];
  std::snprintf(summary, sizeof summary, "%d passed, %d failed", run - failed, failed);
  std::printf("\n%s\n", summary);
  report << "\r\n" << summary << "\r\n";
  return run == 0 ? 1 : failed;
}

}  // namespace

int main(int argc, char** argv) {
  bool ask = true;
  std::vector<std::string> wanted;
  for (int at = 1; at < argc; ++at) {
    if (std::string(argv[at]) == "/y" || std::string(argv[at]) == "/Y") {
      ask = false;
    } else {
      wanted.push_back(argv[at]);
    }
  }
  // Under Wine the question says nothing about the user, so it is asked only where the refusal itself is
  // tested.
  if ((!test::WineVersion() || std::getenv("ZERA_TEST_ELEVATION")) && kit::IsElevated()) {
    std::printf(
        "The tests delete folders and end programs of their own: they are not run with an administrator's\n"
        "rights. Start run-tests.cmd as a plain user.\n");
    return 1;
  }
  std::printf(
      "ZERATools " ZERATOOLS_VERSION
      ": the tests\n\n"
      "This shows the folder that the kit was unpacked to as drive X:, runs the test programs on that drive\n"
      "one after the other, and takes the letter back. They make, change and delete files and folders below\n"
      "tmp in that folder, which is made for it, and end programs that they started themselves.\n"
      "What was found is written to report.txt. It takes some minutes.\n\n");
  if (ask && !WaitForKey()) return 1;

  ::SetConsoleCtrlHandler(&Leave, TRUE);
  if (const std::string reason = folder.Open(); !reason.empty()) {
    std::printf("%s\n", reason.c_str());
    return 1;
  }
  std::ofstream report("X:\\report.txt", std::ios::binary);
  report << "ZERATools " ZERATOOLS_VERSION ": the tests\r\n" << kit::DescribeMachine() << "\r\n";
  int failed = RunAll(wanted, report);
  report.close();
  if (!report) {
    std::printf("report.txt cannot be written\n");
    ++failed;
  }
  folder.TakeBack();
  return failed == 0 ? 0 : 1;
}
