// SPDX-License-Identifier: MIT
#include "failure.h"

#include "console.h"

namespace zt {

std::wstring Reason(DWORD error) {
  wchar_t text[512];
  DWORD length = ::FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
      error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  while (length && (text[length - 1] == L' ' || text[length - 1] == L'.')) --length;
  const std::wstring number = L"error " + std::to_wstring(error);
  return length ? std::wstring(text, length) + L" (" + number + L")" : number;
}

void Complain(const std::wstring& what, DWORD error) {
  Complain(error ? what + L": " + Reason(error) : what);
}

std::wstring LongForm(const std::wstring& path) {
  if (path.size() < MAX_PATH) return path;
  return path.starts_with(L"\\\\") ? L"\\\\?\\UNC" + path.substr(1) : L"\\\\?\\" + path;
}

DWORD OpenError(const std::wstring& path, DWORD access, DWORD share) {
  const HANDLE file = ::CreateFileW(LongForm(path).c_str(), access, share, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (file == INVALID_HANDLE_VALUE) return ::GetLastError();
  ::CloseHandle(file);
  return 0;
}

DWORD ReadError(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY)
    return ERROR_ACCESS_DENIED;
  return OpenError(path, GENERIC_READ, FILE_SHARE_READ);
}

DWORD WriteError(const std::wstring& path) {
  DWORD missing = 0;
  if (IsThere(path, &missing)) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) {
      return ERROR_ACCESS_DENIED;
    }
    return OpenError(path, GENERIC_WRITE, 0);
  }
  if (path.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
  const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
  if (!folder.empty() && !IsThere(folder)) return ERROR_PATH_NOT_FOUND;
  return OpenError(folder.empty() ? L"." : folder, FILE_ADD_FILE);
}

DWORD DeleteError(const std::wstring& path) {
  if (path.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_READONLY)
    return ERROR_ACCESS_DENIED;
  return OpenError(path, DELETE);
}

bool IsThere(const std::wstring& path, DWORD* error) {
  if (::GetFileAttributesW(LongForm(path).c_str()) != INVALID_FILE_ATTRIBUTES) return true;
  const DWORD why = ::GetLastError();
  if (error) *error = why;
  // Anything else is said of names that are taken, such as that of a file about to be deleted.
  return why != ERROR_FILE_NOT_FOUND && why != ERROR_PATH_NOT_FOUND && why != ERROR_INVALID_NAME &&
         why != ERROR_BAD_NETPATH && why != ERROR_BAD_NET_NAME && why != ERROR_NOT_READY &&
         why != ERROR_INVALID_DRIVE && why != ERROR_BAD_PATHNAME && why != ERROR_DIRECTORY;
}

}  // namespace zt
