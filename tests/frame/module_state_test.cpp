// SPDX-License-Identifier: MIT
// The module state inside every export: the library's own in all but two. Some exports make no platform call
// whose replacement could look; so each one is followed instruction by instruction until the state changes,
// and left there.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <set>
#include <vector>

#include "support/InvalidParameter.h"
#include "support/Library.h"

namespace {

using State = const void*;

// Where the library keeps the calling thread's state: in its part of the loader's thread storage.
State* storage;
std::size_t slots;

void FindStorage() {
  auto* const base = reinterpret_cast<BYTE*>(test::Library());
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_TLS];
  ASSERT_NE(directory.VirtualAddress, 0u);
  const auto* const tls = reinterpret_cast<const IMAGE_TLS_DIRECTORY64*>(base + directory.VirtualAddress);
  const DWORD index = *reinterpret_cast<const DWORD*>(tls->AddressOfIndex);
  auto* const blocks = reinterpret_cast<State**>(__readgsqword(0x58));
  storage = blocks[index];
  slots = (tls->EndAddressOfRawData - tls->StartAddressOfRawData) / sizeof(State);
}

std::set<State> Stored() {
  return std::set<State>(storage, storage + slots);
}

// What a call is followed with.
CONTEXT before;
bool left;
std::set<State> known;  // what the storage holds outside of a call
State seen;

LONG CALLBACK Step(EXCEPTION_POINTERS* exception) {
  if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_SINGLE_STEP) return EXCEPTION_CONTINUE_SEARCH;
  for (std::size_t i = 0; i < slots; ++i) {
    if (known.count(storage[i]) == 0) seen = storage[i];
  }
  constexpr DWORD kTrap = 0x100;
  if (seen || left) {
    exception->ContextRecord->EFlags &= ~kTrap;
    if (seen) {
      *exception->ContextRecord = before;
      left = true;
    }
  } else {
    exception->ContextRecord->EFlags |= kTrap;
  }
  return EXCEPTION_CONTINUE_EXECUTION;
}

// The state that an export makes current; null if it leaves the caller's. The export does none of its work
// unless it leaves it.
State StateInside(void* function) {
  using Export = void*(void*, void*, void*, void*, void*, void*);
  seen = nullptr;
  left = false;
  ::RtlCaptureContext(&before);
  if (!left) {
    asm volatile(
        "pushfq\n\t"
        "orq $0x100, (%%rsp)\n\t"
        "popfq" ::
            : "memory", "cc");
    reinterpret_cast<Export*>(function)(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    left = true;
  }
  return seen;
}

TEST(ModuleState, IsTheLibrarysOwnInAllExportsButTwo) {
  FindStorage();
  ASSERT_NE(storage, nullptr);
  const test::InvalidParameter handler;
  known = Stored();
  const std::vector<State> outside(storage, storage + slots);
  void* const watch = ::AddVectoredExceptionHandler(1, &Step);
  ASSERT_NE(watch, nullptr);
  int exports = 0;
  std::set<State> states;
  std::set<unsigned> unguarded;
  for (unsigned ordinal = 1; ordinal <= 1091; ++ordinal) {
    auto* const function =
        reinterpret_cast<void*>(::GetProcAddress(test::Library(), MAKEINTRESOURCEA(ordinal)));
    if (!function) continue;
    ++exports;
    const State state = StateInside(function);
    if (state) {
      states.insert(state);
    } else {
      unguarded.insert(ordinal);
    }
    std::copy(outside.begin(), outside.end(), storage);
  }
  ::RemoveVectoredExceptionHandler(watch);
  EXPECT_EQ(exports, 142);
  EXPECT_EQ(unguarded, (std::set<unsigned>{ZERA_TOOLS_FILE_REPLACE_DIR_UC_ORDINAL,
                                           ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC_ORDINAL}));
  ASSERT_EQ(states.size(), 1u) << "one state, the library's";
  HMODULE owner = nullptr;
  ASSERT_TRUE(::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<const wchar_t*>(*states.begin()), &owner));
  EXPECT_EQ(owner, test::Library());
  // What loading put there: the application object, and whose it is.
  const auto* const fields = static_cast<void* const*>(*states.begin());
  EXPECT_NE(fields[0], nullptr);
  EXPECT_EQ(fields[1], static_cast<void*>(test::Library()));
}

}  // namespace
