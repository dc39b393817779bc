// SPDX-License-Identifier: MIT
// Storage.h: the storage around a file. The rules of each stand at its export in ZERATools.h; these are
// the same operations without the frame, for the library's own use.
#pragma once

#include <cstddef>

namespace file {

// A caller that makes one folder below the other says whether it has gone the whole way down from the root
// before, and is told. What the way needs is there then, so only the last folder is made; the way is gone
// again where that does not do.
int CheckWrite(const wchar_t* path, bool* wayGone = nullptr);
float GetFreeDiskGb(wchar_t driveLetter);
int GetVersion(const wchar_t* path, wchar_t* version, std::size_t capacity);
int GetVersion(const wchar_t* path, char* version, std::size_t capacity);

}  // namespace file
