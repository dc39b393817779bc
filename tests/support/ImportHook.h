// SPDX-License-Identifier: MIT
// ImportHook.h: replaces one platform function for the library under test, while the object lives.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace test {

/// Puts a function of the test in the place of a platform function in the loaded library's import
/// table, so that a test can make the call fail, count it, or answer something else. The entry is
/// put back at the end. A name that the library does not import is a failure of the test.
///
///   test::ImportHook hook("ReadFile", &FailingReadFile);
///   hook.Original<decltype(ReadFile)>()(...)
class ImportHook {
 public:
  template <class Function>
  ImportHook(const char* name, Function* replacement, HMODULE module = nullptr)
      : ImportHook(name, reinterpret_cast<void*>(replacement), module) {}
  ImportHook(const char* name, void* replacement, HMODULE module = nullptr);
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;
  ~ImportHook();

  /// The platform's own function.
  template <class Function>
  Function* Original() const {
    return reinterpret_cast<Function*>(original_);
  }

 private:
  void** entry_ = nullptr;
  void* original_ = nullptr;
};

/// A platform function past all import tables, for replacements in the test program itself, whose own calls
/// would come back to them.
template <class Function>
Function* Platform(const wchar_t* module, const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(module), name)));
}

/// Whether the library imports a function of this name.
bool IsImported(const char* name, HMODULE module = nullptr);

/// Counts what the library takes from and gives back to the C runtime's heap while it lives.
class HeapWatch {
 public:
  HeapWatch();
  ~HeapWatch();

  /// Allocations since construction.
  int Allocations() const;
  /// Blocks that were allocated and not given back.
  int Outstanding() const;
};

/// The number of kernel handles that the process has open.
DWORD OpenHandles();

}  // namespace test
