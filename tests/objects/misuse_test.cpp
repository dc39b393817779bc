// SPDX-License-Identifier: MIT
// Wrong use that can be seen ends a debug build of a host with a message.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/StartProcess.h"

namespace {

struct Ended {
  DWORD exit = 0xFFFFFFFF;
  std::string said;
};

// Runs a program beside the test; both its outputs come back as one.
Ended Misuse(const wchar_t* program, char what) {
  Ended ended;
  SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
  HANDLE read = nullptr, write = nullptr;
  EXPECT_TRUE(::CreatePipe(&read, &write, &inherit, 0));
  ::SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = write;
  PROCESS_INFORMATION process = {};
  std::wstring line = std::wstring(program) + L" " + static_cast<wchar_t>(what);
  const BOOL started = test::StartProcess(program, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                          &startup, &process);
  ::CloseHandle(write);
  if (started) {
    char piece[256];
    for (DWORD count = 0; ::ReadFile(read, piece, sizeof piece, &count, nullptr) && count;) {
      ended.said.append(piece, count);
    }
    ::WaitForSingleObject(process.hProcess, 30000);
    ::GetExitCodeProcess(process.hProcess, &ended.exit);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }
  ::CloseHandle(read);
  EXPECT_TRUE(started);
  return ended;
}

TEST(ObjectMisuse, ADebugBuildSaysWhatIsWrong) {
  const struct {
    char what;
    const char* message;
  } cases[] = {
      {'a', "ZERATools: zera_wstring_set: the object was not made, or is freed"},
      {'b', "ZERATools: zera_wstring_make: the object is made already and was not freed"},
      {'c', "ZERATools: zera_astring_set: the object was not made, or is freed"},
      {'d', "ZERATools: zera_bytes_free: the object was not made, or is freed already"},
      {'e', "ZERATools: ZERA_TOOLS_STRING_UC_TO_HEX: the object was not made, or is freed"},
  };
  for (const auto& one : cases) {
    const Ended ended = Misuse(L"objects_misuse_debug.exe", one.what);
    EXPECT_NE(0u, ended.exit) << one.what;
    EXPECT_NE(std::string::npos, ended.said.find(one.message)) << one.what << ": " << ended.said;
    EXPECT_EQ(std::string::npos, ended.said.find("reached the end")) << one.what;
  }
}

TEST(ObjectMisuse, ADebugBuildInCppSaysWhatIsWrong) {
  const Ended ended = Misuse(L"objects_misuse_cpp.exe", 'a');
  EXPECT_NE(0u, ended.exit);
  EXPECT_NE(std::string::npos, ended.said.find("ZERATools: zera_ref: the object was not made, or is freed"))
      << ended.said;
}

TEST(ObjectMisuse, RightUseReachesTheEnd) {
  for (const wchar_t* program : {L"objects_misuse_debug.exe", L"objects_misuse_release.exe"}) {
    const Ended ended = Misuse(program, 'z');
    EXPECT_EQ(0u, ended.exit);
    EXPECT_EQ(0u, ended.said.find("reached the end, 0 buffers")) << ended.said;
  }
}

TEST(ObjectMisuse, AReleaseBuildDoesNotLook) {
  EXPECT_EQ(0u, Misuse(L"objects_misuse_release.exe", 'f').exit);
  EXPECT_NE(0u, Misuse(L"objects_misuse_debug.exe", 'f').exit);
}

}  // namespace
