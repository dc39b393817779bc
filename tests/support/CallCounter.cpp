// SPDX-License-Identifier: MIT
#include "CallCounter.h"

#include <windows.h>

#include <cstring>

#include "Imports.h"
#include "Library.h"

namespace test {
namespace {

// mov rax, counter; lock inc dword [rax]; mov rax, function; jmp rax. No argument is passed in rax.
constexpr std::size_t kCodeSize = 32;
constexpr std::size_t kCounterAt = 28;

void Write(unsigned char* code, void* function) {
  void* const counter = code + kCounterAt;
  std::memset(code, 0, kCodeSize);
  std::memcpy(code, "\x48\xB8", 2);
  std::memcpy(code + 2, &counter, 8);
  std::memcpy(code + 10, "\xF0\xFF\x00\x48\xB8", 5);
  std::memcpy(code + 15, &function, 8);
  std::memcpy(code + 23, "\xFF\xE0", 2);
}

// The name that a call is counted under; empty if it is left out. Which function of the heap it is depends on
// the compiler, and what is taken is given back, as other tests see.
std::string KindOf(const std::string& name) {
  for (const char* const start : {"mem", "str", "wcs", "GetLastError", "SetLastError", "free"}) {
    if (name.rfind(start, 0) == 0) return "";
  }
  return name == "malloc" || name == "calloc" || name == "realloc" ? "allocations" : name;
}

}  // namespace

CallCounter::CallCounter() {
  ForEachImport(Library(), [this](const char* name, void** place) {
    // Data, not a function.
    MEMORY_BASIC_INFORMATION memory = {};
    ::VirtualQuery(*place, &memory, sizeof memory);
    if ((memory.Protect &
         (PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY)) == 0) {
      return;
    }
    entries_.push_back({name, place, *place, nullptr});
  });
  code_ = static_cast<unsigned char*>(
      ::VirtualAlloc(nullptr, entries_.size() * kCodeSize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
  unsigned char* next = code_;
  for (Entry& entry : entries_) {
    entry.code = next;
    next += kCodeSize;
    Write(entry.code, entry.original);
    StoreImport(entry.place, entry.code);
  }
}

CallCounter::~CallCounter() {
  for (const Entry& entry : entries_) StoreImport(entry.place, entry.original);
  ::VirtualFree(code_, 0, MEM_RELEASE);
}

void CallCounter::Reset() {
  for (const Entry& entry : entries_) std::memset(entry.code + kCounterAt, 0, 4);
}

int CallCounter::Count(const std::string& name) const {
  int count = 0;
  for (const Entry& entry : entries_) {
    if (entry.name == name) std::memcpy(&count, entry.code + kCounterAt, 4);
  }
  return count;
}

std::map<std::string, int> CallCounter::Counts() const {
  std::map<std::string, int> counts;
  for (const Entry& entry : entries_) {
    const int count = Count(entry.name);
    if (count > 0 && !KindOf(entry.name).empty()) counts[KindOf(entry.name)] += count;
  }
  return counts;
}

std::string CallCounter::Calls() const {
  std::string text;
  for (const auto& [name, count] : Counts()) {
    text += (text.empty() ? "" : ", ") + name + " " + std::to_string(count);
  }
  return text;
}

}  // namespace test
