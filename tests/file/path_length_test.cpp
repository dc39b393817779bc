// SPDX-License-Identifier: MIT
// The length of a text, looked at in blocks, without ever touching a page that the text is not in.
#include <gtest/gtest.h>
#include <windows.h>

#include "file/PathPlatform.h"

namespace {

TEST(PathLength, StopsAtTheTerminatorOrTheLimit) {
  constexpr std::size_t kPage = 4096;
  auto* const pages = static_cast<BYTE*>(::VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
  ASSERT_NE(::VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE), nullptr);
  auto* const end = reinterpret_cast<wchar_t*>(pages + kPage);
  for (std::size_t length = 0; length < 40; ++length) {
    for (std::size_t start = length + 1; start < length + 20; ++start) {
      std::wmemset(end - 80, L'y', 80);
      wchar_t* const text = end - start;
      text[length] = 0;
      for (std::size_t most = 0; most < 50; ++most) {
        ASSERT_EQ(file::Length(text, most), length < most ? length : most) << length << ' ' << start;
      }
    }
    // No terminator before the page's end: the limit alone.
    std::wmemset(end - 80, L'y', 80);
    ASSERT_EQ(file::Length(end - length, length), length);
    // A text at an odd address.
    auto* const odd = reinterpret_cast<wchar_t*>(pages + 1);
    std::memset(pages, 'y', 200);
    std::memset(pages + 1 + 2 * length, 0, 2);
    ASSERT_EQ(file::Length(odd, 260), length);
  }
  ::VirtualFree(pages, 0, MEM_RELEASE);
}

}  // namespace
