// SPDX-License-Identifier: MIT
// The compiler's stack protection: every function with a buffer on its stack checks a value behind the
// buffer before it returns. Defining value and failure here leaves out the GNU runtime's, which would
// print the failure and import half a console for it.
#include <windows.h>

extern "C" {

UINT_PTR __stack_chk_guard = 0x6D5A3C2B9F4E8100;

// Ends the process at once, without any handler that a damaged stack could mislead.
[[noreturn]] void __stack_chk_fail() {
  constexpr unsigned int kStackCookieCheckFailure = 2;
  __asm__ volatile("int $0x29" : : "c"(kStackCookieCheckFailure));  // the platform's fast failure
  __builtin_unreachable();
}

}  // extern "C"

namespace {

// A value of this process's own, before any other code of the library runs. Its lowest byte stays 0, so
// that no text copy writes across it.
__attribute__((constructor(101), no_stack_protector, used)) void ChooseGuard() {
  LARGE_INTEGER counter = {};
  FILETIME time = {};
  ::QueryPerformanceCounter(&counter);
  ::GetSystemTimeAsFileTime(&time);
  UINT_PTR value = static_cast<UINT_PTR>(counter.QuadPart) ^ __builtin_ia32_rdtsc();
  value = value * 0x9E3779B97F4A7C15 + time.dwLowDateTime;
  value = (value ^ (value >> 29)) * 0xBF58476D1CE4E5B9 + reinterpret_cast<UINT_PTR>(&counter);
  value = (value ^ (value >> 32)) * 0x94D049BB133111EB + ::GetCurrentProcessId();
  __stack_chk_guard = (value ^ (value >> 31)) << 8;
}

}  // namespace
