// SPDX-License-Identifier: MIT
// How much stack the deepest walk takes, which the header tells hosts that call on threads of their own.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

#include "DirectoryApi.h"

namespace {

// The stack that a call has touched, on a thread of its own.
std::size_t StackOf(const std::function<void()>& call) {
  struct Work {
    const std::function<void()>& call;
    std::size_t touched;
  } work = {call, 0};
  const auto run = [](void* argument) -> DWORD {
    auto& mine = *static_cast<Work*>(argument);
    ULONG_PTR low, high;
    ::GetCurrentThreadStackLimits(&low, &high);
    // What lies below is filled, a page at a time from the top down, as the platform wants it.
    auto* const bottom = reinterpret_cast<volatile unsigned char*>(low + 0x8000);
    auto* at = reinterpret_cast<volatile unsigned char*>(__builtin_frame_address(0)) - 0x2000;
    auto* const top = at;
    for (; at > bottom; --at) *at = 0xA5;
    mine.call();
    for (at = bottom + 1; at < top && *at == 0xA5;) ++at;
    mine.touched = static_cast<std::size_t>(top - at) + 0x2000;
    return 0;
  };
  constexpr SIZE_T kReserve = 4 << 20;
  const HANDLE thread =
      ::CreateThread(nullptr, kReserve, run, &work, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  ::WaitForSingleObject(thread, INFINITE);
  ::CloseHandle(thread);
  return work.touched;
}

TEST(WalkStack, OfTheDeepestWalks) {
  const test::TempFolder temp;
  std::wstring path = L"\\\\?\\" + temp.path();
  while (path.size() - 4 < 250) {
    path += L"d\\";
    ASSERT_TRUE(::CreateDirectoryW(path.c_str(), nullptr));
  }
  const test::DirectoryApi api(true);
  // The copy takes no more than these, but minutes on a busy machine: each of its folders is probed from the
  // root on.
  const std::size_t aged = StackOf([&] { EXPECT_EQ(api.DeleteOld(temp.path(), L".none", 1), 1); });
  const std::size_t deleted = StackOf([&] { EXPECT_EQ(api.DeleteAll(temp.path(), L".*"), 1); });
  std::printf("stack of the deepest walks: by age %zu bytes, all %zu bytes\n", aged, deleted);
  // As the header says.
  constexpr std::size_t kSaid = 320 << 10;
  EXPECT_LT(aged, kSaid);
  EXPECT_LT(deleted, kSaid);
  EXPECT_EQ(temp.Entries(), test::Names{});
}

}  // namespace
