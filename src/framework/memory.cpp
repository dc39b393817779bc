// SPDX-License-Identifier: MIT
// The library's own new and delete, as the framework has them: a failing allocation is the framework's
// memory exception. So whatever else leaves an export is not the library's, std::bad_alloc included.
#include <cstdlib>
#include <new>

#include "afx.h"

void* operator new(std::size_t size) {
  void* const block = std::malloc(size != 0 ? size : 1);
  if (!block) AfxThrowMemoryException();
  return block;
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
