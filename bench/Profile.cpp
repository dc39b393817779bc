// SPDX-License-Identifier: MIT
// Where an export's time goes: every function of the platform that the library imports is counted and timed.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Harness.h"

extern "C" {
extern const char profile_thunks[];
void* ProfileBegin(std::uintptr_t number, void* caller);
void* ProfileEnd();
}

namespace bench {
namespace {

constexpr std::size_t kMost = 256, kThunk = 16;

struct Import {
  std::string name;
  void* function = nullptr;
  long long calls = 0;
  double taken = 0;
};

struct Call {
  std::size_t number;
  void* caller;
  double start;
};

std::vector<Import> imports;
// The calls that have not come back: a function of the platform may call the library again.
Call unfinished[64];
std::size_t depth;
double outside;

void Redirect(ULONG_PTR& entry, std::string name) {
  if (imports.size() == kMost) return;
  imports.push_back({std::move(name), reinterpret_cast<void*>(entry)});
  DWORD before = 0;
  ::VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &before);
  entry = reinterpret_cast<ULONG_PTR>(profile_thunks + kThunk * (imports.size() - 1));
  ::VirtualProtect(&entry, sizeof entry, before, &before);
}

}  // namespace

void StartProfile(HMODULE library) {
  char* const base = reinterpret_cast<char*>(library);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* module = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
  for (; module->Name; ++module) {
    auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
    auto* entry = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++entry) {
      const auto* const name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      Redirect(entry->u1.Function, reinterpret_cast<const char*>(name->Name));
    }
  }
}

void ClearProfile() {
  for (Import& one : imports) {
    one.calls = 0;
    one.taken = 0;
  }
  outside = 0;
}

void ShowProfile(const std::string& operation, double nanoseconds, int calls) {
  std::vector<const Import*> order;
  for (const Import& one : imports) {
    if (one.calls > 0) order.push_back(&one);
  }
  std::sort(order.begin(), order.end(), [](const Import* a, const Import* b) { return a->taken > b->taken; });
  std::printf("%s: %.0f ns a call, of which\n", operation.c_str(), nanoseconds / calls);
  for (const Import* const one : order) {
    std::printf("  %6.2f %%  %10.2f calls  %s\n", 100 * one->taken / nanoseconds,
                static_cast<double>(one->calls) / calls, one->name.c_str());
  }
  std::printf("  %6.2f %%  the library itself, and the counting\n", 100 * (1 - outside / nanoseconds));
}

}  // namespace bench

void* ProfileBegin(std::uintptr_t number, void* caller) {
  using namespace bench;
  if (depth == std::size(unfinished)) std::abort();
  unfinished[depth++] = {number, caller, Nanoseconds()};
  return imports[number].function;
}

void* ProfileEnd() {
  using namespace bench;
  const double end = Nanoseconds();
  const Call& call = unfinished[--depth];
  Import& one = imports[call.number];
  ++one.calls;
  one.taken += end - call.start;
  if (depth == 0) outside += end - call.start;
  return call.caller;
}
