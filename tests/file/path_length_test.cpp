// SPDX-License-Identifier: MIT
// The length of a text, looked at in blocks, without ever touching a page that the text is not in.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "base/TextLength.h"

namespace {

template <class Char>
class PathLength : public ::testing::Test {};
using Characters = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(PathLength, Characters);

TYPED_TEST(PathLength, StopsAtTheTerminatorOrTheLimit) {
  constexpr std::size_t kPage = 4096;
  auto* const pages = static_cast<BYTE*>(::VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
  ASSERT_NE(::VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE), nullptr);
  auto* const end = reinterpret_cast<TypeParam*>(pages + kPage);
  for (std::size_t length = 0; length < 40; ++length) {
    for (std::size_t start = length + 1; start < length + 20; ++start) {
      std::fill(end - 80, end, TypeParam('y'));
      TypeParam* const text = end - start;
      text[length] = 0;
      for (std::size_t most = 0; most < 50; ++most) {
        ASSERT_EQ(base::TextLength(text, most), length < most ? length : most) << length << ' ' << start;
      }
      ASSERT_EQ(base::TextLength(text), length);
    }
    // No terminator before the page's end: the limit alone.
    std::fill(end - 80, end, TypeParam('y'));
    ASSERT_EQ(base::TextLength(end - length, length), length);
    // A text at an odd address.
    auto* const odd = reinterpret_cast<TypeParam*>(pages + 1);
    std::memset(pages, 'y', 200);
    std::memset(pages + 1 + sizeof(TypeParam) * length, 0, sizeof(TypeParam));
    for (const std::size_t most : {0, 1, 5, 39, 40, 260}) {
      ASSERT_EQ(base::TextLength(odd, most), length < most ? length : most);
    }
  }
  ::VirtualFree(pages, 0, MEM_RELEASE);
}

}  // namespace
