// SPDX-License-Identifier: MIT
// Contents.h: operations on the contents of one file. The rules of each stand at its export in
// ZERATools.h; these are the same operations without the frame, for the library's own use.
#pragma once

namespace file {

int Copy(const wchar_t* source, const wchar_t* target);
// The same for the library's own use: a read or write error counts as a copy without success, too.
bool CopySucceeds(const wchar_t* source, const wchar_t* target);
int Compare(const wchar_t* first, const wchar_t* second);
int Create(const wchar_t* path);
int ToBuffer(const wchar_t* path, unsigned char* buffer, unsigned long long capacity,
             unsigned long long* count);
int FromBuffer(const wchar_t* path, const unsigned char* buffer, unsigned long long count);

}  // namespace file
