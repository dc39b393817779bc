// SPDX-License-Identifier: MIT
// windows.h: stands in for the platform, so that the library's logic compiles for the machine that builds it,
// where the sanitizers and the fuzzer are. Only what that logic calls; each function as the platform
// documents it, written plainly. The fuzz targets change what it answers by way of `platform::State`.
#pragma once

#include <errno.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

static_assert(sizeof(wchar_t) == 2, "compiled with -fshort-wchar: the platform's wide characters are UTF-16");

#define __cdecl
#define CP_ACP 0u
#define CP_UTF8 65001u
#define MAXDWORD 0xFFFFFFFFu
#define MAX_PATH 260
#define TRUE 1
#define FALSE 0
#define ERROR_INSUFFICIENT_BUFFER 122
#define E_FAIL static_cast<HRESULT>(0x80004005)
#define E_INVALIDARG static_cast<HRESULT>(0x80070057)
#define E_OUTOFMEMORY static_cast<HRESULT>(0x8007000E)

using BYTE = unsigned char;
using WORD = unsigned short;
using DWORD = unsigned int;
using UINT = unsigned int;
using BOOL = int;
using HRESULT = int;
using LONGLONG = long long;
using INT_PTR = std::intptr_t;
using SIZE_T = std::size_t;
using HANDLE = void*;
using errno_t = int;
using __time64_t = long long;
struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};
union ULARGE_INTEGER {
  struct {
    DWORD LowPart;
    DWORD HighPart;
  };
  unsigned long long QuadPart;
};

namespace platform {

using Wide = std::basic_string<wchar_t>;

// What the platform is for one run of a target.
struct State {
  bool doubleByte;        // the code page has lead bytes: 0x81 to 0x9F, 0xE0 to 0xFC
  int multiBytePage;      // what _getmbcp answers
  int invalidParameters;  // calls of the invalid-parameter handler
  int locale;             // switches to "english" that were not taken back
  DWORD lastError;
  DWORD errorMode;                              // of the thread; a call leaves it as it was
  bool serviceFails;                            // the cryptographic service has no provider
  std::vector<std::pair<Wide, Wide>> settings;  // the profile file: keys and values

  void Reset() { *this = State(); }
};
extern State state;

inline bool IsLead(unsigned char one) {
  return state.doubleByte && ((one >= 0x81 && one <= 0x9F) || (one >= 0xE0 && one <= 0xFC));
}

}  // namespace platform

// The ANSI code page of the tests. Without lead bytes: each byte is the unit of the same value. With them:
// a lead byte and what follows are one unit from U+4E00, bytes of 0xA0 and above alone their own unit.
// Anything else becomes a question mark.
int MultiByteToWideChar(UINT page, DWORD flags, const char* text, int length, wchar_t* out, int size);
int WideCharToMultiByte(UINT page, DWORD flags, const wchar_t* text, int length, char* out, int size,
                        const char* instead, BOOL* used);
DWORD GetLastError();

DWORD GetPrivateProfileStringW(const wchar_t* section, const wchar_t* key, const wchar_t* instead,
                               wchar_t* out, DWORD size, const wchar_t* file);
DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* instead, char* out,
                               DWORD size, const char* file);
BOOL WritePrivateProfileStringW(const wchar_t* section, const wchar_t* key, const wchar_t* value,
                                const wchar_t* file);
BOOL WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file);

// A thread's error mode, in which no box is shown.
#define SEM_FAILCRITICALERRORS 1u
inline DWORD GetThreadErrorMode() {
  return platform::state.errorMode;
}
inline BOOL SetThreadErrorMode(DWORD mode, DWORD* before) {
  if (before) *before = platform::state.errorMode;
  platform::state.errorMode = mode;
  return TRUE;
}

// No target opens anything.
#define INVALID_HANDLE_VALUE reinterpret_cast<HANDLE>(-1)
inline BOOL CloseHandle(HANDLE) {
  return FALSE;
}
inline BOOL FindClose(HANDLE) {
  return FALSE;
}

inline void SecureZeroMemory(void* at, SIZE_T size) {
  memset(at, 0, size);
}
inline long InterlockedIncrement(long* value) {
  return ++*value;
}
inline long InterlockedDecrement(long* value) {
  return --*value;
}

// The universal C runtime, where this machine's own differs.
extern "C" void _invalid_parameter_noinfo(void);
inline errno_t _set_errno(int value) {
  errno = value;
  return 0;
}
unsigned int StandInStrtoul(const char* text, char** end, int base);
unsigned int StandInWcstoul(const wchar_t* text, wchar_t** end, int base);
#define strtoul StandInStrtoul
#define wcstoul StandInWcstoul
int StandInAtoi(const char* text);
#define atoi StandInAtoi
int _wtoi(const wchar_t* text);
double _wtof(const wchar_t* text);
const wchar_t* _wsetlocale(int category, const wchar_t* name);
const char* StandInSetlocale(int category, const char* name);
#define setlocale StandInSetlocale
errno_t strcpy_s(char* to, std::size_t capacity, const char* text);
errno_t wcscpy_s(wchar_t* to, std::size_t capacity, const wchar_t* text);
int _snwscanf(const wchar_t* text, std::size_t length, const wchar_t* format, ...);
int __stdio_common_vswscanf(unsigned long long options, const wchar_t* text, std::size_t length,
                            const wchar_t* format, void* locale, va_list arguments);
int _getmbcp(void);
extern "C" int _ismbblead(unsigned int one);
__time64_t _mktime64(struct tm* fields);
errno_t _localtime64_s(struct tm* fields, const __time64_t* time);
wchar_t* _wctime64(const __time64_t* time);

template <class... Values>
int _sprintf_s_l(char* to, std::size_t size, const char* format, void*, Values... values) {
  return snprintf(to, size, format, values...);
}
template <class... Values>
int _swprintf_s_l(wchar_t* to, std::size_t size, const wchar_t* format, void*, Values... values) {
  std::string narrow;
  for (; *format; ++format) narrow += static_cast<char>(*format);
  char text[1024];
  const int length = snprintf(text, sizeof text, narrow.c_str(), values...);
  if (static_cast<std::size_t>(length) >= size) return -1;
  for (int i = 0; i <= length; ++i) to[i] = static_cast<unsigned char>(text[i]);
  return length;
}
