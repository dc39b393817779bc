// SPDX-License-Identifier: MIT
#include "TempFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>

namespace test {
namespace {

// Calls `visit` with the relative name of every entry below a folder, contents before their folder.
template <class Visit>
void Walk(const std::wstring& folder, const std::wstring& relative, Visit visit) {
  WIN32_FIND_DATAW found;
  const HANDLE search = ::FindFirstFileW((folder + relative + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (isFolder && !isLink) Walk(folder, relative + name + L"\\", visit);
    visit(relative + name + (isFolder ? L"\\" : L""), isFolder);
  } while (::FindNextFileW(search, &found));
  ::FindClose(search);
}

}  // namespace

TempFolder::TempFolder(const std::wstring& within) {
  static std::atomic<int> count = 0;
  ::CreateDirectoryW(L"X:\\tmp", nullptr);
  path_ = within + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(::GetTickCount64()) +
          L"-" + std::to_wstring(++count) + L"\\";
  if (!::CreateDirectoryW(path_.c_str(), nullptr)) {
    ADD_FAILURE() << "a test folder cannot be made, error " << ::GetLastError();
  }
}

TempFolder::~TempFolder() {
  Walk(path_, L"", [&](const std::wstring& name, bool isFolder) {
    const std::wstring path = path_ + name;
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    const BOOL removed = isFolder ? ::RemoveDirectoryW(path.c_str()) : ::DeleteFileW(path.c_str());
    if (!removed) ADD_FAILURE() << "left behind: " << Ansi(path) << ", error " << ::GetLastError();
  });
  if (!::RemoveDirectoryW(path_.c_str())) ADD_FAILURE() << "left behind: " << Ansi(path_);
}

std::wstring TempFolder::File(const std::wstring& name, const std::string& bytes) const {
  WriteBytes(path_ + name, bytes);
  return path_ + name;
}

std::wstring TempFolder::Folder(const std::wstring& name) const {
  const std::wstring folder = path_ + name;
  if (!::CreateDirectoryW(folder.c_str(), nullptr)) {
    ADD_FAILURE() << "a folder cannot be made: " << Ansi(folder) << ", error " << ::GetLastError();
  }
  return folder + L"\\";
}

std::vector<std::wstring> TempFolder::Entries() const {
  std::vector<std::wstring> entries;
  Walk(path_, L"", [&](const std::wstring& name, bool) { entries.push_back(name); });
  std::sort(entries.begin(), entries.end());
  return entries;
}

std::string ReadBytes(const std::wstring& path) {
  std::string bytes;
  const HANDLE file =
      ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    ADD_FAILURE() << "cannot be read: " << Ansi(path) << ", error " << ::GetLastError();
    return bytes;
  }
  char block[65536];
  DWORD count = 0;
  while (::ReadFile(file, block, sizeof block, &count, nullptr) && count > 0) bytes.append(block, count);
  ::CloseHandle(file);
  return bytes;
}

void WriteBytes(const std::wstring& path, const std::string& bytes) {
  const HANDLE file =
      ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD count = 0;
  if (file == INVALID_HANDLE_VALUE ||
      !::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr)) {
    ADD_FAILURE() << "cannot be written: " << Ansi(path) << ", error " << ::GetLastError();
  }
  ::CloseHandle(file);
}

bool Exists(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string Ansi(const std::wstring& text) {
  std::string narrow(text.size() * 3 + 1, '\0');
  narrow.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                            static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

std::wstring Wide(const std::string& text) {
  std::wstring wide(text.size() + 1, L'\0');
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(
      CP_ACP, 0, text.data(), static_cast<int>(text.size()), wide.data(), static_cast<int>(wide.size()))));
  return wide;
}

}  // namespace test
