// SPDX-License-Identifier: MIT
#include "ImportHook.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "Imports.h"
#include "Library.h"

namespace test {
namespace {

void** FindEntry(HMODULE module, const char* name) {
  void** found = nullptr;
  ForEachImport(module, [&](const char* one, void** entry) {
    if (!found && std::strcmp(one, name) == 0) found = entry;
  });
  return found;
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
  StoreImport(entry_, replacement);
}

ImportHook::~ImportHook() {
  if (entry_) StoreImport(entry_, original_);
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
