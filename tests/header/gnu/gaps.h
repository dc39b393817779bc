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

#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <time.h>
#include <wchar.h>

struct timespec {
  time_t tv_sec;
  long tv_nsec;
};
struct max_align_t {
  long long integer;
  long double number;
};
extern "C" {
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
