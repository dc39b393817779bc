// SPDX-License-Identifier: MIT
// Owned.h: what the platform gives and wants back, owned by an object.
#pragma once

#include <windows.h>

#include <utility>

namespace base {

/// One handle, given back when the object goes. A kind says its type, which value stands for none, and how
/// it is given back:
///
///   struct Search {
///     using Handle = HANDLE;
///     static Handle None() noexcept { return INVALID_HANDLE_VALUE; }
///     static bool Close(Handle handle) noexcept { return ::FindClose(handle) != FALSE; }
///   };
template <class Kind>
class Owned {
 public:
  using Handle = typename Kind::Handle;

  Owned() noexcept = default;
  explicit Owned(Handle handle) noexcept : handle_(handle) {}
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() { Close(); }

  explicit operator bool() const noexcept { return handle_ != Kind::None(); }
  Handle Get() const noexcept { return handle_; }

  /// Takes another handle in the place of its own.
  void Take(Handle handle) noexcept {
    Close();
    handle_ = handle;
  }
  /// Gives the handle back; false if the platform says that this failed.
  bool Close() noexcept {
    const Handle handle = std::exchange(handle_, Kind::None());
    return handle == Kind::None() || Kind::Close(handle);
  }

 private:
  Handle handle_ = Kind::None();
};

struct FileKind {
  using Handle = HANDLE;
  static Handle None() noexcept { return INVALID_HANDLE_VALUE; }
  static bool Close(Handle handle) noexcept { return ::CloseHandle(handle) != FALSE; }
};

struct SearchKind {
  using Handle = HANDLE;
  static Handle None() noexcept { return INVALID_HANDLE_VALUE; }
  static bool Close(Handle handle) noexcept { return ::FindClose(handle) != FALSE; }
};

struct ProcessKind {
  using Handle = HANDLE;
  static Handle None() noexcept { return nullptr; }
  static bool Close(Handle handle) noexcept { return ::CloseHandle(handle) != FALSE; }
};

using FileHandle = Owned<FileKind>;
using SearchHandle = Owned<SearchKind>;
using SnapshotHandle = Owned<FileKind>;
using ProcessHandle = Owned<ProcessKind>;

}  // namespace base
