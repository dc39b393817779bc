// SPDX-License-Identifier: MIT
// Files.h: operations on one file. The rules of each stand at its export in ZERATools.h; these are the
// same operations without the frame, for the library's own use.
#pragma once

namespace file {

int Exist(const wchar_t* path);
int Delete(const wchar_t* path);
int Rename(const wchar_t* oldPath, const wchar_t* newPath);
unsigned int GetSize(const wchar_t* path);
int HasExtension(const wchar_t* path, const wchar_t* extension);
int WaitForFile(const wchar_t* path, unsigned int timeoutMs);
int GetTimeModified(const wchar_t* path, long long* time);

}  // namespace file
