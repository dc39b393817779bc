// SPDX-License-Identifier: MIT
// Snapshot.h: the processes of the machine, or the modules of one process, at one moment.
#pragma once

#include <windows.h>

#include <tlhelp32.h>

#include "base/Owned.h"

namespace process {

class Snapshot {
 public:
  /// TH32CS_SNAPPROCESS, or TH32CS_SNAPMODULE with a process's identifier.
  explicit Snapshot(DWORD flags, DWORD processId = 0) noexcept
      : handle_(::CreateToolhelp32Snapshot(flags, processId)) {}

  /// Calls `visit` with each process; with none if the snapshot could not be taken.
  template <class Visit>
  void EachProcess(Visit visit) const {
    PROCESSENTRY32W entry;
    entry.dwSize = sizeof entry;
    Each(&::Process32FirstW, &::Process32NextW, entry, visit);
  }

  /// Calls `visit` with each module; with none if the snapshot could not be taken.
  template <class Visit>
  void EachModule(Visit visit) const {
    MODULEENTRY32W entry;
    entry.dwSize = sizeof entry;
    Each(&::Module32FirstW, &::Module32NextW, entry, visit);
  }

 private:
  template <class Step, class Entry, class Visit>
  void Each(Step first, Step next, Entry& entry, Visit visit) const {
    if (!handle_) return;
    for (BOOL more = first(handle_.Get(), &entry); more; more = next(handle_.Get(), &entry)) visit(entry);
  }

  base::SnapshotHandle handle_;
};

}  // namespace process
