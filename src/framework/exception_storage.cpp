// SPDX-License-Identifier: MIT
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <exception>

#include "thread_storage.h"

// Where the C++ runtime keeps exceptions in flight: its own functions for that, replaced.
//
// The runtime that is linked into the library takes thread-local-storage indexes, a thread library with
// an event for each thread that calls, and 75 KB for emergencies, and gives none of it back when the
// library is unloaded; a process that loads the library for each of its tasks would run out of indexes at
// about the 1,086th. Here the state of a thread lies in the loader's storage, and emergencies have a
// fixed place.

namespace {

// Room for the header that the runtime keeps before an exception. More than any release of it uses; the
// multiple of 16 keeps what follows aligned.
constexpr std::size_t kHeader = 256;

// The library throws pointers. When memory is exhausted those still have a place here:
// as many threads as there are slots can have one in flight at a time.
constexpr std::size_t kSlot = kHeader + 64;
constexpr std::size_t kSlots = 32;
alignas(16) unsigned char slots[kSlots][kSlot];
volatile LONG taken = 0;
static_assert(kSlots == 8 * sizeof taken && kHeader % 16 == 0 && kSlot % 16 == 0);

void* TakeSlot(std::size_t size) {
  if (size > kSlot) return nullptr;
  for (LONG at = 0; at < static_cast<LONG>(kSlots); ++at) {
    if (!::InterlockedBitTestAndSet(&taken, at)) return slots[at];
  }
  return nullptr;
}

void* Allocate(std::size_t size) noexcept {
  void* block = std::malloc(size);
  if (!block) block = TakeSlot(size);
  if (!block) std::terminate();
  return std::memset(block, 0, size);
}

void Free(void* block) noexcept {
  auto* const bytes = static_cast<unsigned char*>(block);
  if (bytes >= slots[0] && bytes < slots[0] + sizeof slots) {
    ::InterlockedBitTestAndReset(&taken, static_cast<LONG>((bytes - slots[0]) / kSlot));
  } else {
    std::free(block);
  }
}

}  // namespace

namespace __cxxabiv1 {

extern "C" {

void* __cxa_get_globals() noexcept {
  return &framework::CurrentThread().exceptions;
}
void* __cxa_get_globals_fast() noexcept {
  return &framework::CurrentThread().exceptions;
}

void* __cxa_allocate_exception(std::size_t size) noexcept {
  return static_cast<unsigned char*>(Allocate(kHeader + size)) + kHeader;
}
void __cxa_free_exception(void* thrown) noexcept {
  Free(static_cast<unsigned char*>(thrown) - kHeader);
}

// Those of exceptions that are thrown a second time through std::exception_ptr: a header alone.
void* __cxa_allocate_dependent_exception() noexcept {
  return Allocate(kHeader);
}
void __cxa_free_dependent_exception(void* header) noexcept {
  Free(header);
}
}

}  // namespace __cxxabiv1
