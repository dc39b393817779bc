// SPDX-License-Identifier: MIT
// The platform's names that the public header uses, for a compiler whose own headers are not here.
#ifndef TEST_WINDOWS_H
#define TEST_WINDOWS_H

typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef unsigned long DWORD;
typedef unsigned int UINT;
typedef int BOOL;
typedef unsigned long long WPARAM;
typedef long long LPARAM;
typedef struct HINSTANCE__* HMODULE;
#ifndef __cplusplus
typedef unsigned short wchar_t;
#endif

#endif
