// SPDX-License-Identifier: MIT
#include <cwchar>

#include "afx.h"
#include "base/QuietErrors.h"

namespace {

// The length of a path; _MAX_PATH for one that is too long for the platform's path calls.
std::size_t PathLength(const wchar_t* path) {
  return ::wcsnlen(path, _MAX_PATH);
}

bool IsUsablePath(const wchar_t* path) {
  return path && path[0] && PathLength(path) < _MAX_PATH;
}

// Some files refuse even a query of their attributes (the page file, files that others hold in a
// special way); the folder's list still tells their data.
bool IsDeniedQuery(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
}

bool QueryAttributes(const wchar_t* path, WIN32_FILE_ATTRIBUTE_DATA& data) {
  const base::QuietErrors quiet;
  if (::GetFileAttributesExW(path, GetFileExInfoStandard, &data)) return true;
  if (!IsDeniedQuery(::GetLastError())) return false;
  WIN32_FIND_DATAW found;
  if (!base::SearchHandle(::FindFirstFileW(path, &found))) return false;
  data = {found.dwFileAttributes, found.ftCreationTime, found.ftLastAccessTime,
          found.ftLastWriteTime,  found.nFileSizeHigh,  found.nFileSizeLow};
  return true;
}

DWORD ShareMode(UINT flags) {
  switch (flags & 0x70) {
    case CFile::shareDenyWrite:
      return FILE_SHARE_READ;
    case CFile::shareDenyRead:
      return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
      return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:  // shareExclusive, and shareCompat which this platform treats alike
      return 0;
  }
}

DWORD Access(UINT flags) {
  switch (flags & 0x3) {
    case CFile::modeWrite:
      return GENERIC_WRITE;
    case CFile::modeReadWrite:
      return GENERIC_READ | GENERIC_WRITE;
    default:
      return GENERIC_READ;
  }
}

DWORD Disposition(UINT flags) {
  if (!(flags & CFile::modeCreate)) return OPEN_EXISTING;
  return flags & CFile::modeNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;
}

}  // namespace

BOOL CFile::Open(const wchar_t* path, UINT flags, CFileException* error) {
  Abort();
  const std::size_t length = path ? PathLength(path) : 0;
  if (length == 0 || length >= _MAX_PATH) {
    if (error) {
      error->m_cause = CFileException::badPath;
      error->m_lOsError = ERROR_BAD_PATHNAME;
      error->m_strFileName = path;
    }
    return FALSE;
  }
  SECURITY_ATTRIBUTES security = {sizeof security, nullptr, (flags & modeNoInherit) == 0};
  handle_.Take(base::Quietly([&] {
    return ::CreateFileW(path, Access(flags), ShareMode(flags), &security, Disposition(flags),
                         FILE_ATTRIBUTE_NORMAL, nullptr);
  }));
  if (!handle_) {
    if (error) {
      error->m_lOsError = static_cast<LONG>(::GetLastError());
      error->m_cause = CFileException::OsErrorToException(error->m_lOsError);
      error->m_strFileName = path;
    }
    return FALSE;
  }
  std::wmemcpy(path_, path, length + 1);
  return TRUE;
}

UINT CFile::Read(void* buffer, UINT count) {
  if (count == 0) return 0;
  DWORD read = 0;
  if (!::ReadFile(handle_.Get(), buffer, count, &read, nullptr)) {
    CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), path_);
  }
  return read;
}

void CFile::Write(const void* buffer, UINT count) {
  if (count == 0) return;
  DWORD written = 0;
  if (!::WriteFile(handle_.Get(), buffer, count, &written, nullptr)) {
    CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), path_);
  }
  if (written != count) CFileException::Throw(CFileException::diskFull, -1, path_);
}

void CFile::Close() {
  if (!handle_.Close()) CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), path_);
}

BOOL CFile::GetStatus(const wchar_t* path, CFileStatus& status) {
  if (!IsUsablePath(path)) return FALSE;
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!QueryAttributes(path, data)) return FALSE;
  const DWORD length = ::GetFullPathNameW(path, _MAX_PATH, status.m_szFullName, nullptr);
  if (length == 0 || length >= _MAX_PATH) return FALSE;
  status.m_ctime = CTime(data.ftCreationTime);
  status.m_mtime = CTime(data.ftLastWriteTime);
  status.m_atime = CTime(data.ftLastAccessTime);
  // What the platform says of a folder's size means nothing, and differs between file systems.
  const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  status.m_size = isFolder ? 0 : static_cast<ULONGLONG>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
  status.m_attribute = data.dwFileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL);
  return TRUE;
}

BOOL CFileFind::FindFile(const wchar_t* pattern) {
  Close();
  const std::size_t length = pattern ? PathLength(pattern) : 0;
  if (length == 0 || length >= _MAX_PATH) return FALSE;
  // The full path is listed and the entries' paths are made of it: they mean the same files when another
  // thread changes the process's current folder before the search or during it.
  wchar_t* name = nullptr;
  const DWORD full = ::GetFullPathNameW(pattern, _MAX_PATH, folder_, &name);
  if (full == 0 || full >= _MAX_PATH) return FALSE;
  handle_.Take(base::Quietly([&] { return ::FindFirstFileW(folder_, &next_); }));
  if (!handle_) return FALSE;
  if (name) *name = 0;
  return TRUE;
}

BOOL CFileFind::FindNextFileW() {
  if (!handle_) return FALSE;
  current_ = next_;
  return base::Quietly([&] { return ::FindNextFileW(handle_.Get(), &next_); });
}

CStringW CFileFind::GetFilePath() const {
  CStringW path(folder_);
  path += current_.cFileName;
  return path;
}

BOOL CFileFind::IsDots() const {
  const wchar_t* const name = current_.cFileName;
  return IsDirectory() && name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

BOOL CFileFind::IsDirectory() const {
  return MatchesMask(FILE_ATTRIBUTE_DIRECTORY);
}

BOOL CFileFind::MatchesMask(DWORD mask) const {
  return (current_.dwFileAttributes & mask) != 0;
}
