// SPDX-License-Identifier: MIT
// Imports.h: the import table of a loaded module.
#pragma once

#include <windows.h>

namespace test {

/// One of the directories of a loaded module's headers.
inline const IMAGE_DATA_DIRECTORY& Directory(HMODULE module, unsigned index) {
  const auto* const base = reinterpret_cast<const BYTE*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  return headers->OptionalHeader.DataDirectory[index];
}

/// Calls `visit` for each function that the module imports by name, with the name and the entry that holds
/// its address.
template <class Visit>
void ForEachImport(HMODULE module, Visit visit) {
  auto* const base = reinterpret_cast<BYTE*>(module);
  const auto& directory = Directory(module, IMAGE_DIRECTORY_ENTRY_IMPORT);
  auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
  for (; from->Name; ++from) {
    const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + from->OriginalFirstThunk);
    auto* entries = reinterpret_cast<void**>(base + from->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++entries) {
      if (IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) continue;
      const auto* const byName =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      visit(reinterpret_cast<const char*>(byName->Name), entries);
    }
  }
}

/// Changes an entry, which the loader has left read-only.
inline void StoreImport(void** entry, void* value) {
  DWORD protection = 0;
  ::VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
  *entry = value;
  ::VirtualProtect(entry, sizeof *entry, protection, &protection);
}

}  // namespace test
