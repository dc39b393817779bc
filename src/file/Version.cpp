// SPDX-License-Identifier: MIT
#include <afx.h>

#include <cstdlib>
#include <memory>

#include "PathPlatform.h"
#include "Storage.h"
#include "VersionText.h"
#include "base/QuietErrors.h"

namespace {

// A module's fixed version information; false if it has none or it cannot be read.
bool ReadVersion(const wchar_t* path, VS_FIXEDFILEINFO& version) {
  const base::QuietErrors quiet;
  DWORD unused = 0;
  const DWORD size = ::GetFileVersionInfoSizeW(path, &unused);
  if (size == 0) return false;
  const std::unique_ptr<void, void (*)(void*)> resource(std::malloc(size), &std::free);
  if (!resource) AfxThrowMemoryException();
  if (!::GetFileVersionInfoW(path, 0, size, resource.get())) return false;
  void* root = nullptr;
  UINT length = 0;
  // A resource may come without the fixed part; the query then succeeds with a shorter length.
  if (!::VerQueryValueW(resource.get(), L"\\", &root, &length) || !root || length < sizeof version) {
    return false;
  }
  version = *static_cast<const VS_FIXEDFILEINFO*>(root);
  return true;
}

template <class Char>
file::VersionText<Char> Format(const VS_FIXEDFILEINFO& version) {
  return {version.dwProductVersionMS, version.dwFileVersionMS, version.dwFileVersionLS};
}

}  // namespace

namespace file {

int GetVersion(const wchar_t* path, wchar_t* version, std::size_t capacity) {
  // Without room for even an empty text the handler runs here, and not a second time below.
  const bool hasRoom = version && capacity > 0;
  CopyChecked(Text<wchar_t>(), version, capacity);
  VS_FIXEDFILEINFO found;
  if (!ReadVersion(path, found)) return 0;
  const auto text = Format<wchar_t>(found);
  if (hasRoom) CopyChecked(Text<wchar_t>(text.text, text.length), version, capacity);
  return 1;
}

int GetVersion(const wchar_t* path, char* version, std::size_t capacity) {
  if (!version || capacity == 0) return 0;
  version[0] = 0;
  VS_FIXEDFILEINFO found;
  if (!ReadVersion(path, found)) return 0;
  const auto text = Format<char>(found);
  // KEPT FOR HOSTS: a short buffer gives 0 here, but is an invalid parameter for the UTF-16 variant.
  // Hosts that ask with small char buffers rely on the 0.
  if (text.length >= capacity) return 0;
  CopyChecked(Text<char>(text.text, text.length), version, capacity);
  return 1;
}

}  // namespace file
