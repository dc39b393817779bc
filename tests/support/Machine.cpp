// SPDX-License-Identifier: MIT
#include "Machine.h"

#include <tlhelp32.h>

#include <algorithm>
#include <cwchar>

#include "TempFolder.h"

namespace test {

thread_local Places places;

namespace {

// Three processes, the second and the third of the name.
thread_local unsigned at;
BOOL FillProcess(PROCESSENTRY32W* entry) {
  if (at == 3) {
    ::SetLastError(ERROR_NO_MORE_FILES);
    return FALSE;
  }
  std::wcscpy(entry->szExeFile, at == 0 ? L"other.exe" : kMachineProcess);
  entry->th32ProcessID = 4 * ++at;
  return TRUE;
}
BOOL WINAPI ProcessFirst(HANDLE, PROCESSENTRY32W* entry) {
  at = 0;
  return FillProcess(entry);
}
BOOL WINAPI ProcessNext(HANDLE, PROCESSENTRY32W* entry) {
  return FillProcess(entry);
}
BOOL WINAPI Terminate(HANDLE, UINT) {
  return TRUE;
}

BOOL WINAPI ModuleFirst(HANDLE, MODULEENTRY32W* entry) {
  std::wcscpy(entry->szExePath, kMachineModule);
  return TRUE;
}
BOOL WINAPI ModuleNext(HANDLE, MODULEENTRY32W*) {
  ::SetLastError(ERROR_NO_MORE_FILES);
  return FALSE;
}

DWORD WINAPI ModulePath(HMODULE, wchar_t* path, DWORD capacity) {
  const std::size_t length = std::min<std::size_t>(places.module.size(), capacity - 1);
  std::wmemcpy(path, places.module.c_str(), length);
  path[length] = 0;
  return static_cast<DWORD>(length);
}
constexpr int kCommonFolder = 35;  // CSIDL_COMMON_APPDATA
BOOL WINAPI Folder(HWND, wchar_t* path, int folder, BOOL) {
  std::wcscpy(path, (folder == kCommonFolder ? places.common : places.user).c_str());
  return TRUE;
}
HMODULE WINAPI Load(const wchar_t* path) {
  if (Exists(path)) return kLanguageModule;
  ::SetLastError(ERROR_MOD_NOT_FOUND);
  return nullptr;
}

}  // namespace

const std::vector<StandIn>& Machine() {
  static const std::vector<StandIn> all = {
      {"Process32FirstW", reinterpret_cast<void*>(&ProcessFirst)},
      {"Process32NextW", reinterpret_cast<void*>(&ProcessNext)},
      {"TerminateProcess", reinterpret_cast<void*>(&Terminate)},
      {"Module32FirstW", reinterpret_cast<void*>(&ModuleFirst)},
      {"Module32NextW", reinterpret_cast<void*>(&ModuleNext)},
      {"GetModuleFileNameW", reinterpret_cast<void*>(&ModulePath)},
      {"SHGetSpecialFolderPathW", reinterpret_cast<void*>(&Folder)},
      {"LoadLibraryW", reinterpret_cast<void*>(&Load)},
  };
  return all;
}

}  // namespace test
