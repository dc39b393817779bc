// SPDX-License-Identifier: MIT
// platform.h: what the Microsoft-ABI host uses of the platform, declared by hand: there are no headers of
// that platform for this compiler here.
#pragma once

using size_t = decltype(sizeof 0);
using uintptr_t = unsigned long long;
using BYTE = unsigned char;
using BOOL = int;
using UINT = unsigned int;
using LONG = long;
using DWORD = unsigned long;
using WORD = unsigned short;
using HANDLE = void*;
using LONGLONG = long long;

extern "C" {

// kernel32
__declspec(dllimport) HANDLE GetStdHandle(DWORD which);
__declspec(dllimport) BOOL WriteFile(HANDLE, const void*, DWORD, DWORD*, void*);
__declspec(dllimport) __declspec(noreturn) void ExitProcess(UINT);
__declspec(dllimport) void* LoadLibraryW(const wchar_t*);
__declspec(dllimport) BOOL FreeLibrary(void*);
__declspec(dllimport) void* GetProcAddress(void*, const char*);
__declspec(dllimport) BOOL VirtualProtect(void*, size_t, DWORD, DWORD*);
__declspec(dllimport) DWORD GetLastError();
__declspec(dllimport) DWORD GetModuleFileNameW(void*, wchar_t*, DWORD);
__declspec(dllimport) void SetLastError(DWORD);
__declspec(dllimport) DWORD GetLogicalDrives();
__declspec(dllimport) DWORD GetEnvironmentVariableA(const char*, char*, DWORD);
__declspec(dllimport) DWORD GetEnvironmentVariableW(const wchar_t*, wchar_t*, DWORD);
__declspec(dllimport) DWORD QueryDosDeviceW(const wchar_t*, wchar_t*, DWORD);
__declspec(dllimport) void* GetModuleHandleW(const wchar_t*);
__declspec(dllimport) DWORD GetCurrentProcessId();
__declspec(dllimport) DWORD GetCurrentThreadId();
__declspec(dllimport) HANDLE GetCurrentProcess();
__declspec(dllimport) BOOL GetProcessHandleCount(HANDLE, DWORD*);
__declspec(dllimport) HANDLE CreateFileW(const wchar_t*, DWORD, DWORD, void*, DWORD, DWORD, HANDLE);
__declspec(dllimport) BOOL CloseHandle(HANDLE);
__declspec(dllimport) BOOL CreateDirectoryW(const wchar_t*, void*);
__declspec(dllimport) BOOL DeleteFileW(const wchar_t*);
__declspec(dllimport) BOOL RemoveDirectoryW(const wchar_t*);
__declspec(dllimport) DWORD TlsAlloc();
__declspec(dllimport) BOOL TlsFree(DWORD);
__declspec(dllimport) DWORD GetProcessHeaps(DWORD, HANDLE*);
__declspec(dllimport) BOOL HeapWalk(HANDLE, void*);

// The universal C runtime and the compiler's runtime: the host's and the library's are the same.
__declspec(dllimport) void* malloc(size_t);
__declspec(dllimport) void free(void*);
__declspec(dllimport) int strcmp(const char*, const char*);
__declspec(dllimport) size_t wcslen(const wchar_t*);
__declspec(dllimport) size_t strlen(const char*);
void* memcpy(void*, const void*, size_t);
void* memset(void*, int, size_t);
int memcmp(const void*, const void*, size_t);

using InvalidParameterHandler = void (*)(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t);
__declspec(dllimport) InvalidParameterHandler _set_invalid_parameter_handler(InvalidParameterHandler);
}
