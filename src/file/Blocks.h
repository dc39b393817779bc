// SPDX-License-Identifier: MIT
// Blocks.h: the block loops of copy and compare, over operations that the caller supplies.
#pragma once

#include <cstddef>
#include <cstring>

namespace file {

inline constexpr unsigned int kBlock = 4096;

// Reads blocks until a read gives none, and writes each as it came. `read(buffer, most)` gives the
// number of bytes read.
template <class Read, class Write>
void CopyBlocks(Read read, Write write) {
  unsigned char block[kBlock];
  while (const unsigned int count = read(block, kBlock)) write(block, count);
}

// Whether two sources give the same blocks to their ends. Each step reads both before it compares.
template <class ReadFirst, class ReadSecond>
bool SameBlocks(ReadFirst readFirst, ReadSecond readSecond) {
  unsigned char first[kBlock];
  unsigned char second[kBlock];
  for (;;) {
    const unsigned int count = readFirst(first, kBlock);
    if (readSecond(second, kBlock) != count || std::memcmp(first, second, count) != 0) return false;
    if (count == 0) return true;
  }
}

}  // namespace file
