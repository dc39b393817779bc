// SPDX-License-Identifier: MIT
// What a compiler of the Microsoft ABI expects a program's own runtime library to bring.
#include "platform.h"

void* operator new(size_t size) {
  return malloc(size);
}
void operator delete(void* block) noexcept {
  free(block);
}
void operator delete(void* block, size_t) noexcept {
  free(block);
}

extern "C" {
int _fltused = 0x9875;  // asked for by code that uses floating point
}

// The table of type_info, which every type descriptor points to. The runtime compares names, so any
// object under that name will do.
extern const void* const typeInfoTable[1] asm("??_7type_info@@6B@");
const void* const typeInfoTable[1] = {nullptr};
