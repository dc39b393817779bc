// SPDX-License-Identifier: MIT
// Processes, thread messages and guarded allocation.
#include <windows.h>

#include <tlhelp32.h>

#include <cwchar>
#include <new>

#include "Harness.h"

namespace bench {
namespace {

template <class Entry, class First, class Next, class Found>
void Each(DWORD flags, DWORD id, First first, Next next, Found found) {
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(flags, id);
  if (snapshot == INVALID_HANDLE_VALUE) return;
  Entry entry;
  entry.dwSize = sizeof entry;
  for (BOOL more = first(snapshot, &entry); more; more = next(snapshot, &entry)) found(entry);
  ::CloseHandle(snapshot);
}

template <class Found>
void EachProcess(Found found) {
  Each<PROCESSENTRY32W>(TH32CS_SNAPPROCESS, 0, &::Process32FirstW, &::Process32NextW, found);
}

unsigned Running(const std::wstring& path) {
  const std::wstring name = path.substr(path.rfind(L'\\') + 1);
  unsigned count = 0;
  EachProcess([&](const PROCESSENTRY32W& process) {
    if (::_wcsicmp(process.szExeFile, name.c_str()) != 0) return;
    Each<MODULEENTRY32W>(
        TH32CS_SNAPMODULE, process.th32ProcessID, &::Module32FirstW, &::Module32NextW,
        [&](const MODULEENTRY32W& module) { count += ::_wcsicmp(module.szExePath, path.c_str()) == 0; });
  });
  return count;
}

// A block that nobody looks at would not be allocated at all.
void* Used(void* block) {
  sink = reinterpret_cast<long long>(block);
  return block;
}

}  // namespace

void Processes() {
  wchar_t self[MAX_PATH];
  ::GetModuleFileNameW(nullptr, self, MAX_PATH);
  const std::wstring path = self;
  const auto running = BENCH_EXPORT(ZERA_TOOLS_GETNUM_APPRUNNING_UC);
  Measure("Processes", "count running", 1, Calls([=] { sink = running(path.c_str()); }),
          Calls([=] { sink = Running(path); }));

  // A name that no process has: the walk alone.
  constexpr wchar_t kNobody[] = L"runs nowhere.exe";
  const auto end = BENCH_EXPORT(ZERA_TOOLS_KILLPROCESS_UC);
  Measure("Processes", "end by name (none found)", 1, Calls([=] { sink = end(kNobody); }), Calls([&] {
            EachProcess([&](const PROCESSENTRY32W& process) { sink = ::wcscmp(process.szExeFile, kNobody); });
          }));

  const DWORD id = ::GetCurrentThreadId();
  CWinThread thread(id);
  const auto taken = [] {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) continue;
  };
  taken();
  const auto post = BENCH_EXPORT(ZERA_TOOLS_POSTTHREADMESSAGE);
  Measure("Processes", "post a message", 1, Prepared(taken, [&] { sink = post(&thread, WM_APP, 0, 0); }),
          Prepared(taken, [=] { sink = ::PostThreadMessageW(id, WM_APP, 0, 0); }));
  taken();

  const auto allocate = BENCH_EXPORT(ZERA_TOOLS_SAFE_NEW);
  Measure("Processes", "allocate 1000 bytes", 1000, Calls([=] { std::free(Used(allocate(1000))); }),
          Calls([] { std::free(Used(std::malloc(1000))); }),
          Calls([] { ::operator delete[](Used(::operator new[](1000, std::nothrow))); }));
}

}  // namespace bench
