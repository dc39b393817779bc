// SPDX-License-Identifier: MIT
// Machine.h: a machine of the tests' own in place of the real one, for what the library asks of processes, of
// the place of modules and of the shell's folders. Each thread sees its own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace test {

/// What the machine answers a thread that asks for the module's path and the application-data folders.
struct Places {
  std::wstring module, common, user;
};
extern thread_local Places places;

/// The processes of the machine: this one is there twice, behind another, and has this one module. A language
/// module is loaded when there is a file of its name.
inline constexpr wchar_t kMachineProcess[] = L"view.exe";
inline constexpr wchar_t kMachineModule[] = L"X:\\app\\view.exe";
inline const HMODULE kLanguageModule = reinterpret_cast<HMODULE>(0x10000);

/// The platform functions that the machine stands in for, for import hooks. Ending a process does nothing.
struct StandIn {
  const char* name;
  void* function;
};
const std::vector<StandIn>& Machine();

}  // namespace test
