// SPDX-License-Identifier: MIT
#include "FailureTable.h"

#include <errno.h>
#include <windows.h>

#include <cstdarg>
#include <cstring>
#include <cwchar>

namespace faults {

unsigned failingCode;
bool restoringLocaleFailed;

namespace {

// Answers that are no errors: fewer bytes than asked for, and none.
constexpr unsigned kShort = 0xFFFF0001, kNothing = 0xFFFF0002;

void* Zero() {
  ::SetLastError(failingCode);
  return nullptr;
}
void* MinusOne() {
  ::SetLastError(failingCode);
  return reinterpret_cast<void*>(static_cast<LONG_PTR>(-1));
}
void* Errno() {
  errno = static_cast<int>(failingCode);
  return reinterpret_cast<void*>(static_cast<LONG_PTR>(-1));
}
void* NullErrno() {
  errno = static_cast<int>(failingCode);
  return nullptr;
}
void* Answer() {
  return reinterpret_cast<void*>(static_cast<LONG_PTR>(static_cast<int>(failingCode)));
}

// What closes has closed, even if it reports a failure.
BOOL WINAPI CloseAndFail(HANDLE handle) {
  ::CloseHandle(handle);
  ::SetLastError(failingCode);
  return FALSE;
}
BOOL WINAPI FindCloseAndFail(HANDLE handle) {
  ::FindClose(handle);
  ::SetLastError(failingCode);
  return FALSE;
}
BOOL WINAPI DestroyKeyAndFail(HCRYPTKEY key) {
  ::CryptDestroyKey(key);
  ::SetLastError(failingCode);
  return FALSE;
}
BOOL WINAPI DestroyHashAndFail(HCRYPTHASH hash) {
  ::CryptDestroyHash(hash);
  ::SetLastError(failingCode);
  return FALSE;
}
BOOL WINAPI ReleaseContextAndFail(HCRYPTPROV provider, DWORD flags) {
  ::CryptReleaseContext(provider, flags);
  ::SetLastError(failingCode);
  return FALSE;
}

BOOL WINAPI Read(HANDLE file, void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped) {
  if (failingCode == kShort && count > 0) return ::ReadFile(file, buffer, (count + 1) / 2, done, overlapped);
  if (done) *done = 0;
  if (failingCode == kNothing || failingCode == kShort) return TRUE;
  ::SetLastError(failingCode);
  return FALSE;
}
BOOL WINAPI Write(HANDLE file, const void* buffer, DWORD count, DWORD* done, OVERLAPPED* overlapped) {
  if (failingCode == kShort && count > 0) return ::WriteFile(file, buffer, count / 2, done, overlapped);
  if (done) *done = 0;
  if (failingCode == kNothing || failingCode == kShort) return TRUE;
  ::SetLastError(failingCode);
  return FALSE;
}

// A settings file that cannot be read counts as one without the key: the default is copied.
template <class Char>
DWORD CopyDefault(const Char* text, Char* buffer, DWORD capacity) {
  DWORD length = 0;
  if (capacity == 0) return 0;
  for (; text && text[length] && length + 1 < capacity; ++length) buffer[length] = text[length];
  buffer[length] = 0;
  ::SetLastError(failingCode);
  return length;
}
DWORD WINAPI ReadProfileA(const char*, const char*, const char* text, char* buffer, DWORD capacity,
                          const char*) {
  return CopyDefault(text, buffer, capacity);
}
DWORD WINAPI ReadProfileW(const wchar_t*, const wchar_t*, const wchar_t* text, wchar_t* buffer,
                          DWORD capacity, const wchar_t*) {
  return CopyDefault(text, buffer, capacity);
}

BOOL WINAPI ShellFolder(HWND, wchar_t* path, int, BOOL) {
  path[0] = 0;
  ::SetLastError(failingCode);
  return FALSE;
}

char* SetLocale(int, const char* name) {
  if (name && std::strcmp(name, "english") != 0) restoringLocaleFailed = true;
  return nullptr;
}
wchar_t* WideSetLocale(int, const wchar_t* name) {
  if (name && std::wcscmp(name, L"english") != 0) restoringLocaleFailed = true;
  return nullptr;
}

// The checked functions empty their target when they refuse.
template <class Char>
int CheckedCopy(Char* target, std::size_t capacity, const Char*) {
  if (target && capacity > 0) target[0] = 0;
  return static_cast<int>(failingCode);
}
template <class Char>
int CheckedPrint(unsigned long long, Char* target, std::size_t capacity, const Char*, void*, va_list) {
  if (target && capacity > 0) target[0] = 0;
  errno = static_cast<int>(failingCode);
  return -1;
}

template <class Function>
Failing To(Function* function) {
  return reinterpret_cast<void*>(function);
}

const unsigned kUnsigned0 = 0;
const unsigned kEof = static_cast<unsigned>(-1);
unsigned Code(LONG error) {
  return static_cast<unsigned>(error);
}

const std::vector<Failure>& Failures() {
  static const std::vector<unsigned> crypto = {Code(NTE_BAD_KEYSET),     Code(NTE_FAIL), Code(NTE_NO_MEMORY),
                                               Code(NTE_KEYSET_NOT_DEF), ERROR_BUSY,     ERROR_ACCESS_DENIED};
  static const std::vector<unsigned> open = {
      ERROR_FILE_NOT_FOUND,     ERROR_PATH_NOT_FOUND,    ERROR_TOO_MANY_OPEN_FILES,
      ERROR_ACCESS_DENIED,      ERROR_NOT_ENOUGH_MEMORY, ERROR_WRITE_PROTECT,
      ERROR_NOT_READY,          ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION,
      ERROR_BAD_NETPATH,        ERROR_NETNAME_DELETED,   ERROR_DISK_FULL,
      ERROR_INVALID_NAME,       ERROR_DELETE_PENDING,    225 /* a virus was found */,
      ERROR_NO_SYSTEM_RESOURCES};
  static const std::vector<unsigned> change = {
      ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND,    ERROR_ACCESS_DENIED,  ERROR_WRITE_PROTECT,
      ERROR_NOT_READY,      ERROR_SHARING_VIOLATION, ERROR_ALREADY_EXISTS, ERROR_NOT_SAME_DEVICE,
      ERROR_DISK_FULL,      ERROR_NETNAME_DELETED,   ERROR_DELETE_PENDING};
  static const std::vector<unsigned> status = {ERROR_FILE_NOT_FOUND,    ERROR_PATH_NOT_FOUND,
                                               ERROR_ACCESS_DENIED,     ERROR_NOT_READY,
                                               ERROR_SHARING_VIOLATION, ERROR_BAD_NETPATH};
  static const std::vector<unsigned> search = {ERROR_FILE_NOT_FOUND,  ERROR_NO_MORE_FILES,
                                               ERROR_ACCESS_DENIED,   ERROR_NOT_READY,
                                               ERROR_NETNAME_DELETED, ERROR_NOT_ENOUGH_MEMORY};
  static const std::vector<unsigned> read = {kShort,
                                             kNothing,
                                             ERROR_READ_FAULT,
                                             ERROR_CRC,
                                             ERROR_NOT_READY,
                                             ERROR_LOCK_VIOLATION,
                                             ERROR_ACCESS_DENIED,
                                             ERROR_NETNAME_DELETED,
                                             ERROR_IO_DEVICE};
  static const std::vector<unsigned> write = {kShort,
                                              kNothing,
                                              ERROR_WRITE_FAULT,
                                              ERROR_DISK_FULL,
                                              ERROR_NOT_READY,
                                              ERROR_LOCK_VIOLATION,
                                              ERROR_ACCESS_DENIED,
                                              ERROR_NETNAME_DELETED,
                                              ERROR_HANDLE_DISK_FULL};
  static const std::vector<unsigned> close = {ERROR_DISK_FULL, ERROR_NETNAME_DELETED, ERROR_INVALID_HANDLE};
  static const std::vector<unsigned> convert = {ERROR_INSUFFICIENT_BUFFER, ERROR_NO_UNICODE_TRANSLATION,
                                                ERROR_INVALID_PARAMETER};
  static const std::vector<unsigned> snapshot = {ERROR_BAD_LENGTH, ERROR_ACCESS_DENIED, ERROR_PARTIAL_COPY,
                                                 ERROR_NOT_ENOUGH_MEMORY};
  static const std::vector<unsigned> entry = {ERROR_NO_MORE_FILES, ERROR_BAD_LENGTH, ERROR_PARTIAL_COPY};
  static const std::vector<unsigned> version = {ERROR_FILE_NOT_FOUND, ERROR_RESOURCE_TYPE_NOT_FOUND,
                                                ERROR_RESOURCE_DATA_NOT_FOUND, ERROR_BAD_FORMAT};
  static const std::vector<unsigned> checked = {EINVAL, ERANGE};
  static const std::vector<unsigned> memory = {ENOMEM};
  static const std::vector<Failure> failures = {
      {"CharUpperBuffW", To(&Zero), {ERROR_INVALID_PARAMETER}},
      {"CloseHandle", To(&CloseAndFail), close},
      {"CompareStringOrdinal", To(&Zero), {ERROR_INVALID_PARAMETER}},
      {"CreateFileW", To(&MinusOne), open},
      {"CreateToolhelp32Snapshot", To(&MinusOne), snapshot},
      {"CryptAcquireContextW", To(&Zero), crypto},
      {"CryptCreateHash", To(&Zero), crypto},
      {"CryptDecrypt", To(&Zero), crypto},
      {"CryptDeriveKey", To(&Zero), crypto},
      {"CryptDestroyHash", To(&DestroyHashAndFail), {ERROR_BUSY}},
      {"CryptDestroyKey", To(&DestroyKeyAndFail), {ERROR_BUSY}},
      {"CryptEncrypt", To(&Zero), crypto},
      {"CryptHashData", To(&Zero), crypto},
      {"CryptReleaseContext", To(&ReleaseContextAndFail), {ERROR_BUSY}},
      {"DeleteFileW", To(&Zero), change},
      {"FindClose", To(&FindCloseAndFail), close},
      {"FindFirstFileW", To(&MinusOne), search},
      {"FindNextFileW", To(&Zero), search},
      {"GetDiskFreeSpaceExW", To(&Zero), {ERROR_NOT_READY, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED}},
      {"GetDiskFreeSpaceW", To(&Zero), {ERROR_NOT_READY, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED}},
      {"GetFileAttributesExW", To(&Zero), status},
      {"GetFileVersionInfoSizeW", To(&Zero), version},
      {"GetFileVersionInfoW", To(&Zero), version},
      {"GetFullPathNameW", To(&Zero), {ERROR_INVALID_NAME, ERROR_NOT_ENOUGH_MEMORY}},
      {"GetModuleFileNameW", To(&Zero), {ERROR_MOD_NOT_FOUND, ERROR_NOT_ENOUGH_MEMORY}},
      {"GetPrivateProfileStringA", To(&ReadProfileA), open},
      {"GetPrivateProfileStringW", To(&ReadProfileW), open},
      {"LoadLibraryW",
       To(&Zero),
       {ERROR_MOD_NOT_FOUND, ERROR_BAD_EXE_FORMAT, ERROR_ACCESS_DENIED, ERROR_DLL_INIT_FAILED,
        ERROR_NOT_ENOUGH_MEMORY, ERROR_SHARING_VIOLATION}},
      {"Module32FirstW", To(&Zero), entry},
      {"Module32NextW", To(&Zero), entry},
      {"MoveFileW", To(&Zero), change},
      {"MultiByteToWideChar", To(&Zero), convert},
      {"OpenProcess", To(&Zero), {ERROR_ACCESS_DENIED, ERROR_INVALID_PARAMETER}},
      {"PostThreadMessageW", To(&Zero), {ERROR_INVALID_THREAD_ID, ERROR_NOT_ENOUGH_QUOTA}},
      {"Process32FirstW", To(&Zero), entry},
      {"Process32NextW", To(&Zero), entry},
      {"ReadFile", To(&Read), read},
      {"SHGetSpecialFolderPathW", To(&ShellFolder), {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED}},
      {"TerminateProcess", To(&Zero), {ERROR_ACCESS_DENIED}},
      {"VerQueryValueW", To(&Zero), version},
      {"WideCharToMultiByte", To(&Zero), convert},
      {"WriteFile", To(&Write), write},
      {"WritePrivateProfileStringA", To(&Zero), open},
      {"WritePrivateProfileStringW", To(&Zero), open},
      {"__stdio_common_vsprintf_s", To(&CheckedPrint<char>), checked},
      {"__stdio_common_vswprintf_s", To(&CheckedPrint<wchar_t>), checked},
      {"__stdio_common_vswscanf", To(&Answer), {kUnsigned0, kEof}},
      {"_mktime64", To(&Errno), {EINVAL}},
      {"_time64", To(&Errno), {EINVAL}},
      {"_wmkdir", To(&Errno), {EEXIST, ENOENT, EACCES, ENOSPC}},
      {"_wrmdir", To(&Errno), {ENOTEMPTY, ENOENT, EACCES}},
      {"_wsetlocale", To(&WideSetLocale), {0}},
      {"calloc", To(&NullErrno), memory},
      {"malloc", To(&NullErrno), memory},
      {"realloc", To(&NullErrno), memory},
      {"setlocale", To(&SetLocale), {0}},
      {"strcpy_s", To(&CheckedCopy<char>), checked},
      {"wcscpy_s", To(&CheckedCopy<wchar_t>), checked},
  };
  return failures;
}

}  // namespace

const Failure* FindFailure(const char* name) {
  for (const Failure& failure : Failures()) {
    if (std::strcmp(failure.name, name) == 0) return &failure;
  }
  return nullptr;
}

}  // namespace faults
