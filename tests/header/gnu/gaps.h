// SPDX-License-Identifier: MIT
// What the GNU standard library expects of the platform's C library and of its compiler, and the Microsoft
// target does not have, declared for a compilation that makes no code. Included before everything.
#pragma once

#define __GCC_ATOMIC_BOOL_LOCK_FREE 2
#define __GCC_ATOMIC_CHAR_LOCK_FREE 2
#define __GCC_ATOMIC_CHAR8_T_LOCK_FREE 2
#define __GCC_ATOMIC_CHAR16_T_LOCK_FREE 2
#define __GCC_ATOMIC_CHAR32_T_LOCK_FREE 2
#define __GCC_ATOMIC_WCHAR_T_LOCK_FREE 2
#define __GCC_ATOMIC_SHORT_LOCK_FREE 2
#define __GCC_ATOMIC_INT_LOCK_FREE 2
#define __GCC_ATOMIC_LONG_LOCK_FREE 2
#define __GCC_ATOMIC_LLONG_LOCK_FREE 2
#define __GCC_ATOMIC_POINTER_LOCK_FREE 2
#define __GCC_ATOMIC_TEST_AND_SET_TRUEVAL 1
#define _POSIX_SEM_VALUE_MAX 32767
#undef __SIZEOF_INT128__
// Annotations whose names the library has for arguments are not defined then.
#define __SPECSTRINGS_STRICT_LEVEL 0

// Newer headers have some of it, in another form.
#define _GLIBCXX_INCLUDE_NEXT_C_HEADERS
#define abs crt_abs
#define max_align_t crt_max_align_t
#define timespec crt_timespec
#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>
#undef _GLIBCXX_INCLUDE_NEXT_C_HEADERS
#undef abs
#undef max_align_t
#undef timespec

struct timespec {
  time_t tv_sec;
  long tv_nsec;
};
struct max_align_t {
  long long integer;
  long double number;
};
extern "C" {
int abs(int);
int fwide(FILE*, int);
int mbsinit(const mbstate_t*);
int nanosleep(const timespec*, timespec*);
int vfscanf(FILE*, const char*, va_list);
int vfwscanf(FILE*, const wchar_t*, va_list);
int vscanf(const char*, va_list);
int vsscanf(const char*, const char*, va_list);
int vswscanf(const wchar_t*, const wchar_t*, va_list);
int vwscanf(const wchar_t*, va_list);
long double wcstold(const wchar_t*, wchar_t**);
}
