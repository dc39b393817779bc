// SPDX-License-Identifier: MIT
// file.h: the framework's file object, file status and file finder.
#pragma once

#include <windows.h>

#include "atltime.h"
#include "base/Owned.h"

class CFileException;

/// What the file system says of a path.
struct CFileStatus {
  CTime m_ctime;  ///< created
  CTime m_mtime;  ///< last modified
  CTime m_atime;  ///< last accessed
  ULONGLONG m_size = 0;
  DWORD m_attribute = 0;
  wchar_t m_szFullName[_MAX_PATH] = {};
};

/// One open file. Opening reports failure by result, everything else raises CFileException.
class CFile {
 public:
  enum OpenFlags : UINT {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    shareCompat = 0x0000,  ///< on this platform the same as shareExclusive
    shareExclusive = 0x0010,
    shareDenyWrite = 0x0020,
    shareDenyRead = 0x0030,
    shareDenyNone = 0x0040,
    modeNoInherit = 0x0080,
    modeCreate = 0x1000,
    modeNoTruncate = 0x2000,
  };

  /// Opens a path of at most 259 characters; false if it cannot be opened.
  BOOL Open(const wchar_t* path, UINT flags, CFileException* error = nullptr);
  /// Reads up to `count` bytes; fewer only at the end of the file.
  UINT Read(void* buffer, UINT count);
  /// Writes all of `count` bytes.
  void Write(const void* buffer, UINT count);
  void Close();
  /// Closes without reporting anything.
  void Abort() noexcept { handle_.Close(); }

  /// Reads the status of a path; a folder has size 0. False when it does not exist, when it has 260
  /// characters or more, and for a text with wildcards, which names no single file.
  static BOOL GetStatus(const wchar_t* path, CFileStatus& status);

 private:
  base::FileHandle handle_;
  wchar_t path_[_MAX_PATH] = {};
};

/// Walks the entries that match a search path.
class CFileFind {
 public:
  /// Starts a search; false if nothing matches.
  BOOL FindFile(const wchar_t* pattern);
  /// Makes the next entry the current one; false if it is the last.
  BOOL FindNextFileW();
  /// The current entry's path: the folder of the search and the entry's name.
  CStringW GetFilePath() const;
  /// Whether the current entry is "." or "..".
  BOOL IsDots() const;
  BOOL IsDirectory() const;
  /// Whether the current entry has any of these attributes.
  BOOL MatchesMask(DWORD mask) const;
  void Close() noexcept { handle_.Close(); }

 private:
  base::SearchHandle handle_;
  wchar_t folder_[_MAX_PATH] = {};
  WIN32_FIND_DATAW current_ = {};
  WIN32_FIND_DATAW next_ = {};
};
