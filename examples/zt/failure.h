// SPDX-License-Identifier: MIT
// failure.h: why something failed. The library says that, not why; the same question to the platform tells.
#pragma once

#include <windows.h>

#include <string>

namespace zt {

/// The system's own text for an error, and its number: "Access denied (error 5)".
std::wstring Reason(DWORD error);
/// "WHAT: Access denied (error 5)" on stderr; without an error only what failed.
void Complain(const std::wstring& what, DWORD error);

/// What the platform says when a file or folder is to be opened with this access; 0 if it can be.
DWORD OpenError(const std::wstring& path, DWORD access,
                DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
/// As the library opens what it reads: others may read it too.
DWORD ReadError(const std::wstring& path);
/// Why a file cannot be made or written: the file itself, or its folder. It may not exist.
DWORD WriteError(const std::wstring& path);
/// Why a file or folder is still there.
DWORD DeleteError(const std::wstring& path);
/// Whether a file or folder is there, or at least its name is taken; `error` says why not.
bool IsThere(const std::wstring& path, DWORD* error = nullptr);

/// The form of a full path that may be longer than 259 characters.
std::wstring LongForm(const std::wstring& path);

}  // namespace zt
