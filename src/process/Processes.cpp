// SPDX-License-Identifier: MIT
#include "Processes.h"

#include <cstdlib>

#include "Names.h"
#include "Snapshot.h"
#include "base/Retry.h"

namespace process {
namespace {

constexpr DWORD kPostPauseMs = 10;
// A thread has its queue within two seconds, or this gives up behind the pause that makes it more.
constexpr unsigned int kPostAttempts = 2000 / kPostPauseMs + 1;

}  // namespace

int Kill(const wchar_t* fileName) {
  // A process that is just starting may be listed before it has a name. Nobody asks for that one.
  if (!*fileName) return 1;
  const Snapshot processes(TH32CS_SNAPPROCESS);
  processes.EachProcess([&](const PROCESSENTRY32W& entry) {
    // KEPT FOR HOSTS: letter case counts here and not in the counting below. A host that ends
    // "viewer.exe" relies on "Viewer.exe", another program of the family, living on.
    if (std::wcscmp(entry.szExeFile, fileName) != 0) return;
    const base::ProcessHandle process(::OpenProcess(PROCESS_TERMINATE, FALSE, entry.th32ProcessID));
    if (process) ::TerminateProcess(process.Get(), 0);
  });
  return 1;
}

unsigned int CountRunning(const wchar_t* path) {
  const wchar_t* const name = NameBehindBackslash(path);
  if (!*name) return 0;
  unsigned int count = 0;
  const Snapshot processes(TH32CS_SNAPPROCESS);
  processes.EachProcess([&](const PROCESSENTRY32W& entry) {
    // Only processes of the right name are looked into; that costs a snapshot each.
    if (!EqualInUpperCase(entry.szExeFile, name)) return;
    const Snapshot modules(TH32CS_SNAPMODULE, entry.th32ProcessID);
    modules.EachModule([&](const MODULEENTRY32W& module) {
      if (EqualInUpperCase(module.szExePath, path)) ++count;
    });
  });
  return count;
}

int Post(const CWinThread* thread, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!thread) return 0;
  // Read once: a thread object may delete itself while this waits.
  const DWORD id = thread->m_nThreadID;
  return base::Retry(
      kPostAttempts,
      [&] {
        return ::PostThreadMessageW(id, message, wParam, lParam) ? base::Outcome::kDone
                                                                 : base::Outcome::kAgain;
      },
      [] { ::Sleep(kPostPauseMs); });
}

// From the shared C runtime's heap, where the array delete of a host gives it back. That allocator
// answers null instead of raising anything, so nothing has to be caught; a size of 0 gives a block.
void* SafeNew(UINT size) {
  return std::malloc(size != 0 ? size : 1);
}

}  // namespace process
