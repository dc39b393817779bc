// SPDX-License-Identifier: MIT
// The version's text, and what happens when there is no memory for a module's resource.
#include <gtest/gtest.h>

#include <afx.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <utility>

#include "file/Storage.h"
#include "file/VersionText.h"
#include "support/ImportHook.h"

namespace {

TEST(VersionText, RandomNumbersAgreeWithTheRuntimesFormat) {
  std::mt19937 random(11);
  for (int i = 0; i < 20000; ++i) {
    const unsigned product = random() >> (random() % 32);
    const unsigned high = random() >> (random() % 32);
    const unsigned low = random() >> (random() % 32);
    char expected[32];
    std::snprintf(expected, sizeof expected, "%d.%d.%d.%d", static_cast<int>(product >> 16),
                  static_cast<int>(high & 0xFFFF), static_cast<int>(low >> 16),
                  static_cast<int>(low & 0xFFFF));
    const file::VersionText<char> narrow(product, high, low);
    const file::VersionText<wchar_t> wide(product, high, low);
    ASSERT_STREQ(narrow.text, expected);
    ASSERT_EQ(narrow.length, std::strlen(expected));
    ASSERT_EQ(wide.length, narrow.length);
    ASSERT_TRUE(std::equal(narrow.text, narrow.text + narrow.length + 1, wide.text));
  }
}

TEST(VersionText, LongestFitsExactly) {
  const file::VersionText<char> text(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF);
  EXPECT_STREQ(text.text, "65535.65535.65535.65535");
  EXPECT_EQ(text.length, file::VersionText<char>::kMost);
}

template <class Char>
void ExpectMemoryException() {
  Char version[24] = {'b', 'e', 'f', 'o', 'r', 'e'};
  const wchar_t* const library = L"ZERATools.dll";
  ASSERT_EQ(file::GetVersion(library, version, 24), 1);
  // Only the first request fails, the resource's: raising the exception takes memory of its own.
  // (The hook is in this program's own import table, so it must not call malloc by name.)
  static bool failed;
  static decltype(&std::malloc) original;
  failed = false;
  const auto failOnce =
      +[](std::size_t size) -> void* { return std::exchange(failed, true) ? original(size) : nullptr; };
  const test::ImportHook hook("malloc", failOnce, ::GetModuleHandleW(nullptr));
  original = hook.Original<void*(std::size_t)>();
  CMemoryException* caught = nullptr;
  try {
    file::GetVersion(library, version, 24);
  } catch (CMemoryException* exception) {
    caught = exception;
  }
  EXPECT_TRUE(failed);
  EXPECT_NE(caught, nullptr);
  EXPECT_EQ(version[0], Char(0)) << "emptied before anything else";
}

TEST(VersionMemory, ExhaustedMemoryIsTheFrameworksException) {
  ExpectMemoryException<char>();
  ExpectMemoryException<wchar_t>();
}

}  // namespace
