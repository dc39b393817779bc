// SPDX-License-Identifier: MIT
// A test program that crashes within the platform's own code, which must count as one that failed.
#include <gtest/gtest.h>
#include <windows.h>

TEST(Crash, InThePlatformsOwnCode) {
  ::HeapLock(reinterpret_cast<HANDLE>(0x21));
}
