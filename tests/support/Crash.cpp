// SPDX-License-Identifier: MIT
#include "Crash.h"

#include <windows.h>

#include <cstdio>

namespace test {
namespace {

LONG WINAPI Crashed(EXCEPTION_POINTERS* crash) {
  const EXCEPTION_RECORD& record = *crash->ExceptionRecord;
  HMODULE module = nullptr;
  char name[MAX_PATH] = "";
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(record.ExceptionAddress), &module);
  ::GetModuleFileNameA(module, name, MAX_PATH);
  const auto offset = static_cast<const char*>(record.ExceptionAddress) - reinterpret_cast<char*>(module);
  std::fprintf(stderr, "ended by exception %08lx at %s + 0x%llx\n", record.ExceptionCode, name,
               static_cast<unsigned long long>(offset));
  std::fflush(stdout);
  std::fflush(stderr);
  ::TerminateProcess(::GetCurrentProcess(), 3);
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void EndOnCrash() {
  ::SetUnhandledExceptionFilter(&Crashed);
}

}  // namespace test
