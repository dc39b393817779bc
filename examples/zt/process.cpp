// SPDX-License-Identifier: MIT
// zt process: processes and threads.
#include <ZERATools.h>

#include "arguments.h"
#include "console.h"
#include "progress.h"

namespace zt {
namespace {

Exit Count(const Arguments& arguments) {
  // A bare name never matches.
  const unsigned int count = ZERA_TOOLS_GETNUM_APPRUNNING_UC(arguments.FullPath(0).c_str());
  PrintLine(std::to_wstring(count));
  return count ? done : no;
}

Exit End(const Arguments& arguments) {
  const std::wstring& name = arguments.Path(0);
  if (name.find_first_of(L"\\/:") != name.npos)
    arguments.Reject(0, L"is a path; a file name such as view.exe is meant");
  std::wstring own(MAX_PATH, L'\0');
  own.resize(::GetModuleFileNameW(nullptr, own.data(), MAX_PATH));
  if (name == own.substr(own.rfind(L'\\') + 1)) arguments.Reject(0, L"is this command itself");
  ZERA_TOOLS_KILLPROCESS_UC(name.c_str());
  PrintLine(L"told every process of the name " + name + L" to end");
  return done;
}

Exit Post(const Arguments& arguments) {
  CWinThread thread(static_cast<DWORD>(arguments.Integer(0, 1, 4294967295)));
  const auto message = static_cast<UINT>(arguments.Integer(1, 0, 65535));
  const auto wParam = static_cast<WPARAM>(arguments.Integer(2, 0, INT64_MAX));
  const auto lParam = static_cast<LPARAM>(arguments.Integer(3, INT64_MIN, INT64_MAX));
  const Progress progress(L"posting");
  if (ZERA_TOOLS_POSTTHREADMESSAGE(&thread, message, wParam, lParam)) {
    PrintLine(L"posted");
    return done;
  }
  Complain(L"the message could not be posted: there is no such thread, or it takes no messages");
  return no;
}

const Command commands[] = {
    {L"count", L"PATH", L"How many instances of a program run",
     L"Prints the number; the exit code is 0 if at least one runs, else 1. PATH is the program's\n"
     L"file; upper or lower case does not matter.\n",
     L"zt process count C:\\Prog\\Viewer\\view.exe\n2", L"ZERA_TOOLS_GETNUM_APPRUNNING_UC", Count},
    {L"end", L"NAME", L"Ends every process of a name, at once and without asking it",
     L"NAME is a file name without a path, in upper and lower case exactly as the process has it.\n"
     L"What the programs did not save is lost. The library does not report whether there was one\n"
     L"or whether it could be ended; zt process count tells.\n",
     L"zt process end view.exe\ntold every process of the name view.exe to end", L"ZERA_TOOLS_KILLPROCESS_UC",
     End},
    {L"post", L"THREAD MESSAGE WPARAM LPARAM", L"Posts a message to a thread",
     L"THREAD is the number of the thread; MESSAGE from 0 to 65535. Tries for two seconds.\n",
     L"zt process post 4711 1025 0 0\nposted", L"ZERA_TOOLS_POSTTHREADMESSAGE", Post},
};

}  // namespace

const Group processGroup = {L"process", L"Count and end processes, post to threads", L"", commands};

}  // namespace zt
