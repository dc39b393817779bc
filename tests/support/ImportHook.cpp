// SPDX-License-Identifier: MIT
#include "ImportHook.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "Library.h"

namespace test {
namespace {

void** FindEntry(HMODULE module, const char* name) {
  auto* const base = reinterpret_cast<BYTE*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
  for (; import->Name; ++import) {
    const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + import->OriginalFirstThunk);
    auto* entries = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + import->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++entries) {
      if (IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) continue;
      const auto* const byName =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(byName->Name), name) == 0) {
        return reinterpret_cast<void**>(&entries->u1.Function);
      }
    }
  }
  return nullptr;
}

void Store(void** entry, void* value) {
  DWORD protection = 0;
  ::VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
  *entry = value;
  ::VirtualProtect(entry, sizeof *entry, protection, &protection);
}

std::atomic<int> allocations;
std::atomic<int> outstanding;

void* CountedMalloc(std::size_t size) {
  void* const block = std::malloc(size);
  if (block) ++allocations, ++outstanding;
  return block;
}
void* CountedCalloc(std::size_t count, std::size_t size) {
  void* const block = std::calloc(count, size);
  if (block) ++allocations, ++outstanding;
  return block;
}
void* CountedRealloc(void* old, std::size_t size) {
  void* const block = std::realloc(old, size);
  if (block || size == 0) outstanding += (block != nullptr) - (old != nullptr);
  if (block) ++allocations;
  return block;
}
void CountedFree(void* block) {
  if (block) --outstanding;
  std::free(block);
}

std::vector<std::unique_ptr<ImportHook>> heapHooks;

}  // namespace

ImportHook::ImportHook(const char* name, void* replacement, HMODULE module) {
  entry_ = FindEntry(module ? module : Library(), name);
  if (!entry_) {
    ADD_FAILURE() << "the library does not import " << name;
    return;
  }
  original_ = *entry_;
  Store(entry_, replacement);
}

ImportHook::~ImportHook() {
  if (entry_) Store(entry_, original_);
}

bool IsImported(const char* name, HMODULE module) {
  return FindEntry(module ? module : Library(), name) != nullptr;
}

HeapWatch::HeapWatch() {
  allocations = 0;
  outstanding = 0;
  const std::pair<const char*, void*> hooks[] = {{"malloc", reinterpret_cast<void*>(&CountedMalloc)},
                                                 {"calloc", reinterpret_cast<void*>(&CountedCalloc)},
                                                 {"realloc", reinterpret_cast<void*>(&CountedRealloc)},
                                                 {"free", reinterpret_cast<void*>(&CountedFree)}};
  for (const auto& [name, function] : hooks) {
    if (IsImported(name)) heapHooks.push_back(std::make_unique<ImportHook>(name, function));
  }
}

HeapWatch::~HeapWatch() {
  heapHooks.clear();
}

int HeapWatch::Allocations() const {
  return allocations;
}
int HeapWatch::Outstanding() const {
  return outstanding;
}

DWORD OpenHandles() {
  // Wine's GetProcessHandleCount always answers 0, and its server does not survive listing the handles of
  // all processes while others end. So each value that a handle can have is asked for, up to a long gap.
  constexpr ULONG_PTR kStep = 4;
  constexpr unsigned kGap = 256;
  DWORD count = 0;
  unsigned missing = 0;
  for (ULONG_PTR value = kStep; missing < kGap; value += kStep) {
    DWORD flags;
    if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) {
      ++count;
      missing = 0;
    } else {
      ++missing;
    }
  }
  return count;
}

}  // namespace test
