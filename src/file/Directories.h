// SPDX-License-Identifier: MIT
// Directories.h: operations on whole directories. The rules of each stand at its export in ZERATools.h;
// these are the same operations without the frame.
#pragma once

namespace file {

int DeleteAll(const wchar_t* startPath, const wchar_t* filter);

// `abortFlag` is read while other threads may write it; it may be null.
int DeleteAllOld(const wchar_t* startPath, const wchar_t* filter, unsigned int ageSeconds,
                 const int* abortFlag);

int CopyAll(const wchar_t* startPath, const wchar_t* destination, unsigned int overwrite);

}  // namespace file
