// SPDX-License-Identifier: MIT
// zt process: processes and threads.
#include <ZERATools.h>
#include <tlhelp32.h>

#include <algorithm>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "progress.h"

namespace zt {
namespace {

Exit Count(const Arguments& arguments) {
  // A bare name never matches.
  const unsigned int count = ZERA_TOOLS_GETNUM_APPRUNNING_UC(arguments.FullPath(0).c_str());
  PrintLine(std::to_wstring(count));
  return count ? done : no;
}

// The numbers of all processes of a name, upper and lower case as given.
std::vector<DWORD> ProcessesOf(const std::wstring& name) {
  std::vector<DWORD> found;
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (snapshot == INVALID_HANDLE_VALUE) return found;
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry)) {
    if (name == entry.szExeFile) found.push_back(entry.th32ProcessID);
  }
  ::CloseHandle(snapshot);
  return found;
}

// Which of these processes still run; an ended one may take a moment to go.
std::vector<DWORD> StillThere(std::vector<DWORD> processes, const std::wstring& name) {
  constexpr int attempts = 40;
  for (int i = 0; i < attempts; ++i) {
    const std::vector<DWORD> now = ProcessesOf(name);
    std::erase_if(processes, [&](DWORD id) { return std::ranges::find(now, id) == now.end(); });
    if (processes.empty()) break;
    ::Sleep(50);
  }
  return processes;
}

DWORD TerminateError(DWORD id) {
  const HANDLE process = ::OpenProcess(PROCESS_TERMINATE, FALSE, id);
  if (!process) return ::GetLastError();
  ::CloseHandle(process);
  return 0;
}

Exit End(const Arguments& arguments) {
  const std::wstring& name = arguments.Path(0);
  if (name.find_first_of(L"\\/:") != name.npos)
    arguments.Reject(0, L"is a path; a file name such as view.exe is meant");
  std::wstring own(MAX_PATH, L'\0');
  own.resize(::GetModuleFileNameW(nullptr, own.data(), MAX_PATH));
  if (name == own.substr(own.rfind(L'\\') + 1)) arguments.Reject(0, L"is this command itself");
  const std::vector<DWORD> before = ProcessesOf(name);
  ZERA_TOOLS_KILLPROCESS_UC(name.c_str());
  if (before.empty()) {
    Confirm(L"there was no process of the name " + name);
    return done;
  }
  const std::vector<DWORD> left = StillThere(before, name);
  const std::size_t ended = before.size() - left.size();
  const std::wstring what = L"ended " + std::to_wstring(ended) + (ended == 1 ? L" process" : L" processes") +
                            L" of the name " + name;
  if (left.empty()) {
    Confirm(what);
    return done;
  }
  for (const DWORD id : left) {
    Complain(L"could not end process " + std::to_wstring(id) + L" of the name " + name, TerminateError(id));
  }
  Complain(what);
  return no;
}

Exit Post(const Arguments& arguments) {
  CWinThread thread(static_cast<DWORD>(arguments.Integer(0, 1, 4294967295)));
  const auto message = static_cast<UINT>(arguments.Integer(1, 0, 65535));
  const auto wParam = static_cast<WPARAM>(arguments.Integer(2, 0, INT64_MAX));
  const auto lParam = static_cast<LPARAM>(arguments.Integer(3, INT64_MIN, INT64_MAX));
  const Progress progress(L"posting");
  if (ZERA_TOOLS_POSTTHREADMESSAGE(&thread, message, wParam, lParam)) {
    Confirm(L"posted");
    return done;
  }
  // A message that means nothing tells why.
  const DWORD error = ::PostThreadMessageW(thread.m_nThreadID, WM_NULL, 0, 0) ? 0 : ::GetLastError();
  Complain(L"the message could not be posted: there is no such thread, or it takes no messages", error);
  return no;
}

const Command commands[] = {
    {L"count", L"PATH", L"How many instances of a program run",
     L"Prints the number; the exit code is 0 if at least one runs, else 1. PATH is the program's\n"
     L"file; upper or lower case does not matter.\n",
     L"zt process count C:\\Prog\\Viewer\\view.exe\n2", L"ZERA_TOOLS_GETNUM_APPRUNNING_UC", Count},
    {L"end", L"NAME", L"Ends every process of a name, at once and without asking it",
     L"NAME is a file name without a path, in upper and lower case exactly as the process has it.\n"
     L"What the programs did not save is lost. Says how many ended; exit code 1 if one could not be\n"
     L"ended, 0 also if there was none.\n",
     L"zt process end view.exe\nended 2 processes of the name view.exe", L"ZERA_TOOLS_KILLPROCESS_UC", End},
    {L"post", L"THREAD MESSAGE WPARAM LPARAM", L"Posts a message to a thread",
     L"THREAD is the number of the thread; MESSAGE from 0 to 65535. Tries for two seconds.\n",
     L"zt process post 4711 1025 0 0\nposted", L"ZERA_TOOLS_POSTTHREADMESSAGE", Post},
};

}  // namespace

const Group processGroup = {L"process", L"Count and end processes, post to threads", L"", commands};

}  // namespace zt
