// SPDX-License-Identifier: MIT
#include "Program.h"

namespace kit {
namespace {

std::string Take(HANDLE file) {
  std::string bytes;
  ::SetFilePointer(file, 0, nullptr, FILE_BEGIN);
  char block[4096];
  DWORD count = 0;
  while (::ReadFile(file, block, sizeof block, &count, nullptr) && count > 0) bytes.append(block, count);
  return bytes;
}

// A job whose programs end with its last handle, which is the runner's.
HANDLE MakeJob() {
  const HANDLE job = ::CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

// The exit code, and whether it ended by itself.
bool WaitFor(const PROCESS_INFORMATION& process, HANDLE job, DWORD seconds, DWORD* code) {
  if (!::AssignProcessToJobObject(job, process.hProcess)) {
    ::TerminateProcess(process.hProcess, 1);
    *code = ::GetLastError();
    return false;
  }
  ::ResumeThread(process.hThread);
  const bool ended = ::WaitForSingleObject(process.hProcess, seconds * 1000) == WAIT_OBJECT_0;
  if (!ended) ::TerminateJobObject(job, 1);
  ::WaitForSingleObject(process.hProcess, 10'000);
  ::GetExitCodeProcess(process.hProcess, code);
  return ended;
}

}  // namespace

Outcome RunProgram(const std::wstring& name, DWORD seconds, const std::wstring& output) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const HANDLE file =
      ::CreateFileW(output.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, &inherited,
                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  const HANDLE nothing =
      ::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ, &inherited, OPEN_EXISTING, 0, nullptr);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = nothing;
  startup.hStdOutput = startup.hStdError = file;

  const std::wstring program = L"X:\\bin\\" + name + L".exe";
  std::wstring line = L"\"" + program + L"\" --gtest_brief=1";
  PROCESS_INFORMATION process = {};
  Outcome outcome = {false, 0, ""};
  const ULONGLONG start = ::GetTickCount64();
  if (::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                       L"X:\\bin", &startup, &process)) {
    const HANDLE job = MakeJob();
    DWORD code = 0;
    const bool ended = WaitFor(process, job, seconds, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(job);
    outcome.passed = ended && code == 0;
    outcome.said = Take(file);
    outcome.said += ended ? "exit code " + std::to_string(code) + "\n"
                          : "was ended after " + std::to_string(seconds) + " s\n";
  } else {
    outcome.said = "cannot be started, error " + std::to_string(::GetLastError()) + "\n";
  }
  outcome.seconds = static_cast<double>(::GetTickCount64() - start) / 1000;
  ::CloseHandle(nothing);
  ::CloseHandle(file);
  return outcome;
}

}  // namespace kit
