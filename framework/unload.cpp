#include "unload.h"

#include <windows.h>

// The GNU runtime that is linked into the library allocates thread-local-storage indexes (for its
// exception state and its threads) and an emergency pool for exceptions, and keeps both when the
// library is unloaded. A process has 1,088 indexes; one that loads and unloads the library for each
// task would die at about the 1,086th. So every index that this module allocates passes through
// here, and all are freed behind the last destructor.
//
// All platform calls go through the import table; __imp_TlsAlloc is the table's entry for TlsAlloc,
// and defining it here puts this function in its place for the whole module.

namespace __gnu_cxx {
void __freeres();
}

namespace {

using TlsAllocFunction = DWORD(WINAPI*)();

constexpr unsigned kMostIndexes = 16;
DWORD indexes[kMostIndexes];
volatile LONG indexCount = 0;
bool processExit = false;

DWORD WINAPI CountedTlsAlloc() {
  // A handful of calls in the library's life, so the platform's function is looked up each time.
  const auto platform = reinterpret_cast<TlsAllocFunction>(
      reinterpret_cast<void (*)()>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "TlsAlloc")));
  const DWORD index = platform();
  if (index != TLS_OUT_OF_INDEXES) {
    const LONG at = ::InterlockedIncrement(&indexCount) - 1;
    if (at < static_cast<LONG>(kMostIndexes)) indexes[at] = index;
  }
  return index;
}

}  // namespace

extern "C" {
extern TlsAllocFunction __imp_TlsAlloc;
TlsAllocFunction __imp_TlsAlloc = &CountedTlsAlloc;
}

namespace framework {

void KeepForProcessExit() {
  processExit = true;
}

}  // namespace framework

// Priority 101 is the first to be constructed and so the last to be destroyed.
__attribute__((destructor(101))) static void GiveBack() {
  if (processExit) return;
  __gnu_cxx::__freeres();
  const LONG count = indexCount < static_cast<LONG>(kMostIndexes) ? indexCount : kMostIndexes;
  for (LONG i = 0; i < count; ++i) ::TlsFree(indexes[i]);
}
