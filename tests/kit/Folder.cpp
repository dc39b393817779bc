// SPDX-License-Identifier: MIT
#include "Folder.h"

#include <windows.h>

namespace kit {
namespace {

constexpr DWORD kDriveX = 1u << ('X' - 'A');

// Volume and number of a folder, which no other folder has at the same time.
bool Identify(const std::wstring& folder, BY_HANDLE_FILE_INFORMATION* identity) {
  const HANDLE handle = ::CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  const BOOL known = ::GetFileInformationByHandle(handle, identity);
  ::CloseHandle(handle);
  return known;
}

bool DriveXShows(const std::wstring& folder) {
  BY_HANDLE_FILE_INFORMATION drive = {}, own = {};
  return Identify(L"X:\\bin", &drive) && Identify(folder + L"\\bin", &own) &&
         drive.nFileIndexHigh == own.nFileIndexHigh && drive.nFileIndexLow == own.nFileIndexLow;
}

}  // namespace

std::wstring KitFolder() {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  // The runner lies in its folder bin.
  path.resize(path.rfind(L'\\'));
  path.resize(path.rfind(L'\\'));
  return path;
}

std::string Folder::Open() {
  if (path_.size() > 200) return "The folder has too long a path; unpack the kit elsewhere.";
  if (path_.size() < 4 || path_[1] != L':') return "Unpack the kit into a folder of its own on a drive.";
  if (!(::GetLogicalDrives() & kDriveX)) {
    shown_ = ::DefineDosDeviceW(0, L"X:", path_.c_str());
    // Wine takes the definition, and opens no file by it.
    if (!shown_ || !DriveXShows(path_)) return TakeBack(), "Drive X: cannot be made for the folder.";
  } else if (!DriveXShows(path_)) {
    return "Drive X: is in use; the tests need that letter. Free it and start again.";
  }
  ::RemoveDirectoryW(L"X:\\tmp");  // empty, of a run that was broken off
  made_ = ::CreateDirectoryW(L"X:\\tmp", nullptr);
  if (!made_) {
    const bool there = ::GetLastError() == ERROR_ALREADY_EXISTS;
    TakeBack();
    return there ? "There is a folder tmp with something in it, left by an earlier run: look at it and "
                   "delete it."
                 : "The folder cannot be written to; unpack the kit elsewhere.";
  }
  ::SetEnvironmentVariableW(L"ZERA_TEST_KIT", path_.c_str());
  return "";
}

void Folder::TakeBack() {
  if (made_) ::RemoveDirectoryW(L"X:\\tmp");
  if (shown_) ::DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, L"X:", path_.c_str());
  made_ = shown_ = false;
}

}  // namespace kit
