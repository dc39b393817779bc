// SPDX-License-Identifier: MIT
// Bare.h: the platform calls that the rules of files require, with nothing around them.
#pragma once

#include <windows.h>

#include <cstring>
#include <string>

namespace bench::bare {

// A status: what the platform says of a path, and its full name.
inline bool Status(const wchar_t* path, WIN32_FILE_ATTRIBUTE_DATA& data, wchar_t* full) {
  return ::GetFileAttributesExW(path, GetFileExInfoStandard, &data) &&
         ::GetFullPathNameW(path, MAX_PATH, full, nullptr) != 0;
}

// What has no size is asked for twice.
inline bool Exists(const wchar_t* path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  wchar_t full[MAX_PATH], again[MAX_PATH];
  if (!Status(path, data, full)) return false;
  return data.nFileSizeLow != 0 || data.nFileSizeHigh != 0 || Status(full, data, again);
}

inline bool Delete(const wchar_t* path) {
  return !Exists(path) || (::DeleteFileW(path) && !Exists(path));
}

inline HANDLE OpenToRead(const wchar_t* path) {
  return ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

inline HANDLE OpenToWrite(const wchar_t* path) {
  return ::CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

inline constexpr DWORD kBlock = 4096;

inline void Copy(const wchar_t* source, const wchar_t* target) {
  BYTE block[kBlock];
  const HANDLE from = OpenToRead(source);
  const HANDLE to = OpenToWrite(target);
  DWORD read = 0, written = 0;
  while (::ReadFile(from, block, kBlock, &read, nullptr) && read > 0) {
    ::WriteFile(to, block, read, &written, nullptr);
  }
  ::CloseHandle(to);
  ::CloseHandle(from);
}

inline bool Equal(const wchar_t* first, const wchar_t* second) {
  WIN32_FILE_ATTRIBUTE_DATA data, other;
  wchar_t full[MAX_PATH];
  if (!Status(first, data, full) || !Status(second, other, full) || data.nFileSizeLow != other.nFileSizeLow) {
    return false;
  }
  BYTE blocks[2][kBlock];
  const HANDLE one = OpenToRead(first);
  const HANDLE two = OpenToRead(second);
  DWORD counts[2] = {};
  bool equal;
  do {
    ::ReadFile(one, blocks[0], kBlock, &counts[0], nullptr);
    ::ReadFile(two, blocks[1], kBlock, &counts[1], nullptr);
    equal = counts[0] == counts[1] && std::memcmp(blocks[0], blocks[1], counts[0]) == 0;
  } while (equal && counts[0] > 0);
  ::CloseHandle(two);
  ::CloseHandle(one);
  return equal;
}

// Tries whether a file can be made in a folder, which ends in a backslash.
inline bool Probe(const std::wstring& folder) {
  const std::wstring path = folder + L"0000000000000000.$$$";
  const HANDLE made = OpenToWrite(path.c_str());
  if (made == INVALID_HANDLE_VALUE) return false;
  ::CloseHandle(made);
  return ::DeleteFileW(path.c_str());
}

// A file of `size` bytes, in large blocks.
inline void Make(const std::wstring& path, unsigned long long size) {
  const std::string block(static_cast<std::size_t>(size < (1 << 20) ? size : 1 << 20), 'Z');
  const HANDLE file = OpenToWrite(path.c_str());
  DWORD count = 0;
  for (unsigned long long left = size; left > 0; left -= count) {
    const auto next = static_cast<DWORD>(left < block.size() ? left : block.size());
    if (!::WriteFile(file, block.data(), next, &count, nullptr) || count == 0) std::abort();
  }
  ::CloseHandle(file);
}

}  // namespace bench::bare
