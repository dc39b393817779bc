// SPDX-License-Identifier: MIT
// TempFolder.h: a folder for one test, on the build folder's drive.
#pragma once

#include <string>
#include <vector>

namespace test {

/// Makes an empty folder "X:\tmp\<n>\", or one within another folder of that drive, and removes it with
/// everything in it at the end; what cannot be removed is a failure of the test.
class TempFolder {
 public:
  explicit TempFolder(const std::wstring& within = L"X:\\tmp\\");
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  /// The folder, ending in a backslash.
  const std::wstring& path() const { return path_; }
  /// A path inside the folder.
  std::wstring operator/(const std::wstring& name) const { return path_ + name; }

  /// Makes a file with these bytes; gives its path.
  std::wstring File(const std::wstring& name, const std::string& bytes) const;
  /// Makes a folder; gives its path, ending in a backslash.
  std::wstring Folder(const std::wstring& name) const;
  /// All entries below the folder, relative, sorted; folders end in a backslash.
  std::vector<std::wstring> Entries() const;

 private:
  std::wstring path_;
};

/// The bytes of a file; a missing file is a failure of the test.
std::string ReadBytes(const std::wstring& path);
void WriteBytes(const std::wstring& path, const std::string& bytes);
bool Exists(const std::wstring& path);

/// The same text in the ANSI code page.
std::string Ansi(const std::wstring& text);
std::wstring Wide(const std::string& text);

}  // namespace test
