// SPDX-License-Identifier: MIT
#include "HostException.h"

#include <windows.h>

#include "ImportHook.h"
#include "Leave.h"

namespace test {
namespace {

Leave leave;
std::string raised;
void* raisedObject;
decltype(&RaiseException) original;

// The tables of a Microsoft C++ exception, with offsets from the image's base.
struct TypeDescriptor {
  const void* table;
  void* spare;
  char name[1];
};
struct CatchableType {
  DWORD properties, descriptor;
};
struct CatchableTypes {
  DWORD count, types[1];
};
struct ThrowInfo {
  DWORD attributes, unwind, compatible, types;
};

// The library's own exceptions travel by the same function, under another code.
void WINAPI Catch(DWORD code, DWORD flags, DWORD count, const ULONG_PTR* parameters) {
  constexpr DWORD kMicrosoftCpp = 0xE06D7363;
  if (code != kMicrosoftCpp || count != 4) {
    original(code, flags, count, parameters);
    return;
  }
  const auto* const base = reinterpret_cast<const char*>(parameters[3]);
  const auto* const info = reinterpret_cast<const ThrowInfo*>(parameters[2]);
  const auto* const types = reinterpret_cast<const CatchableTypes*>(base + info->types);
  const auto* const type = reinterpret_cast<const CatchableType*>(base + types->types[0]);
  raised = reinterpret_cast<const TypeDescriptor*>(base + type->descriptor)->name;
  raisedObject = *reinterpret_cast<void* const*>(parameters[1]);
  leave.Now();
}

}  // namespace

std::string RaisedBy(const std::function<void()>& call, void** object) {
  const ImportHook hook("RaiseException", &Catch);
  original = hook.Original<decltype(RaiseException)>();
  raised.clear();
  raisedObject = nullptr;
  leave.Within(call);
  if (object) *object = raisedObject;
  return raised;
}

void DeleteException(void* object) {
  // The framework's order: the class record, then the destructor with its flags; behind the table's pointer
  // lies whether the object is one to delete.
  using Destructor = void* (*)(void*, unsigned);
  constexpr std::size_t kDestructor = 1, kAutoDelete = 8;
  constexpr unsigned kFree = 1;
  if (*reinterpret_cast<const BOOL*>(static_cast<const char*>(object) + kAutoDelete) <= 0) return;
  const auto* const table = *static_cast<void***>(object);
  reinterpret_cast<Destructor>(table[kDestructor])(object, kFree);
}

}  // namespace test
