// SPDX-License-Identifier: MIT
// Allocation that gives null instead of an exception.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

const auto SafeNew = test::Export<decltype(ZERA_TOOLS_SAFE_NEW)>(93);

TEST(SafeNew, BlockIsFromTheSharedHeapAndTheCallers) {
  for (const unsigned size : {0u, 1u, 7u, 4096u, 1u << 24}) {
    SCOPED_TRACE(size);
    test::HeapWatch heap;
    void* const block = SafeNew(size);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(heap.Allocations(), 1);
    EXPECT_EQ(heap.Outstanding(), 1);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u);
    EXPECT_GE(_msize(block), size);
    std::memset(block, 0xA5, size);
    // What a host's array delete comes down to; this program shares the C runtime with the library.
    std::free(block);
  }
}

TEST(SafeNew, ZeroBytesGiveBlocksOfTheirOwn) {
  void* const first = SafeNew(0);
  void* const second = SafeNew(0);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(first, second);
  std::free(first);
  std::free(second);
}

TEST(SafeNew, ExhaustedMemoryGivesNull) {
  static unsigned long long asked;
  for (const unsigned size : {0u, 1u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    asked = ~0ull;
    const test::ImportHook hook(
        "malloc", +[](std::size_t bytes) -> void* {
          asked = bytes;
          return nullptr;
        });
    void* block = &block;
    EXPECT_EQ(test::RaisedBy([&] { block = SafeNew(size); }), "");
    EXPECT_EQ(block, nullptr);
    EXPECT_GE(asked, size);
    EXPECT_LE(asked, size + 1ull);
  }
}

}  // namespace
