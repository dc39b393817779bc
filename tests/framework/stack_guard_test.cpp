// SPDX-License-Identifier: MIT
// The compiler's stack protection as the library has it: a value of each process's own, and an end at once.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "support/StartProcess.h"

extern "C" std::uintptr_t __stack_chk_guard;

namespace {

// Writes behind the buffer, where the check value is (with up to eight bytes before it), not as far as the
// return address.
__attribute__((noinline)) int Overflow(int count) {
  volatile char buffer[16] = {};
  volatile char* at = buffer;
  while (count-- > 0) *at++ = 'x';
  return buffer[3];
}

// These end their process, so they never run among the others: the tests below start each in a process of its
// own.
TEST(StackGuard, DISABLED_Overflow) {
  Overflow(16 + 16);
  ::ExitProcess(7);
}
TEST(StackGuard, DISABLED_UpperAndLowestBytes) {
  ::ExitProcess(
      static_cast<UINT>((__stack_chk_guard >> 32 & ~std::uintptr_t{0xFF}) | (__stack_chk_guard & 0xFF)));
}

// What such a process ends with.
DWORD EndOf(const wchar_t* test) {
  wchar_t program[MAX_PATH];
  EXPECT_NE(::GetModuleFileNameW(nullptr, program, MAX_PATH), 0u);
  std::wstring command = L"\"" + std::wstring(program) +
                         L"\" --gtest_also_run_disabled_tests --gtest_filter=StackGuard.DISABLED_" + test;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  EXPECT_TRUE(test::StartProcess(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                 &startup, &process));
  EXPECT_EQ(::WaitForSingleObject(process.hProcess, 60'000), WAIT_OBJECT_0);
  DWORD code = 0;
  ::GetExitCodeProcess(process.hProcess, &code);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return code;
}

TEST(StackGuard, OverflowEndsTheProcessAtOnce) {
  EXPECT_EQ(Overflow(16), 'x') << "a full buffer is none";
  EXPECT_EQ(EndOf(L"Overflow"), static_cast<DWORD>(STATUS_STACK_BUFFER_OVERRUN));
}

TEST(StackGuard, EachProcessHasItsOwn) {
  const DWORD first = EndOf(L"UpperAndLowestBytes"), second = EndOf(L"UpperAndLowestBytes");
  EXPECT_NE(first, second) << "chosen from few";
  EXPECT_EQ(first & 0xFF, 0u) << "a text copy would go on across it";
  EXPECT_EQ(second & 0xFF, 0u);
}

TEST(StackGuard, ValueIsChosenAtTheStart) {
  EXPECT_NE(__stack_chk_guard, 0x6D5A3C2B9F4E8100u) << "the value that stands in the file";
  EXPECT_NE(__stack_chk_guard, 0u);
  EXPECT_EQ(__stack_chk_guard & 0xFF, 0u) << "a text copy would go on across it";
}

}  // namespace
