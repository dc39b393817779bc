// SPDX-License-Identifier: MIT
// Settings.h: a settings file of a test, and a record of what the library asks the platform for.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace settings {

/// A settings file in a folder of its own.
class File {
 public:
  explicit File(const std::string& bytes = "") {
    if (!bytes.empty()) Put(bytes);
  }

  const wchar_t* wide() const { return wide_.c_str(); }
  const char* plain() const { return plain_.c_str(); }
  template <class Char>
  const Char* path() const {
    if constexpr (sizeof(Char) == 1) {
      return plain();
    } else {
      return wide();
    }
  }

  /// Replaces the whole file.
  void Put(const std::string& bytes) const {
    Flush();
    test::WriteBytes(wide_, bytes);
    Flush();
  }
  /// The file's bytes.
  std::string Bytes() const {
    Flush();
    return test::ReadBytes(wide_);
  }
  bool Exists() const {
    Flush();
    return test::Exists(wide_);
  }

 private:
  // Wine keeps the last settings files in the process for a moment; this call makes it write them and
  // look at the disk again. On Windows it does no harm.
  void Flush() const { ::WritePrivateProfileStringW(nullptr, nullptr, nullptr, wide_.c_str()); }

  test::TempFolder folder_;
  std::wstring wide_ = folder_ / L"settings.ini";
  std::string plain_ = test::Ansi(wide_);
};

inline std::string Shown(const char* text) {
  return text ? "\"" + std::string(text) + "\"" : "null";
}
inline std::string Shown(const wchar_t* text) {
  return text ? "\"" + test::Ansi(text) + "\"" : "null";
}

/// Records the library's calls of the settings-file functions while it lives, as
/// `ReadA "section" "key" "default" size` and `WriteW "section" "key" "value"`.
class Recorder {
 public:
  Recorder()
      : readA_("GetPrivateProfileStringA", &ReadA),
        readW_("GetPrivateProfileStringW", &ReadW),
        writeA_("WritePrivateProfileStringA", &WriteA),
        writeW_("WritePrivateProfileStringW", &WriteW) {
    Calls().clear();
    Failing() = false;
  }

  static std::vector<std::string>& Calls() {
    static std::vector<std::string> calls;
    return calls;
  }
  /// Makes every read find nothing and every write fail.
  static bool& Failing() {
    static bool failing;
    return failing;
  }

 private:
  static DWORD WINAPI ReadA(LPCSTR section, LPCSTR key, LPCSTR standard, LPSTR text, DWORD size,
                            LPCSTR file) {
    Calls().push_back("ReadA " + Shown(section) + " " + Shown(key) + " " + Shown(standard) + " " +
                      std::to_string(size));
    if (Failing()) return 0;
    return ::GetPrivateProfileStringA(section, key, standard, text, size, file);
  }
  static DWORD WINAPI ReadW(LPCWSTR section, LPCWSTR key, LPCWSTR standard, LPWSTR text, DWORD size,
                            LPCWSTR file) {
    Calls().push_back("ReadW " + Shown(section) + " " + Shown(key) + " " + Shown(standard) + " " +
                      std::to_string(size));
    if (Failing()) return 0;
    return ::GetPrivateProfileStringW(section, key, standard, text, size, file);
  }
  static BOOL WINAPI WriteA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) {
    Calls().push_back("WriteA " + Shown(section) + " " + Shown(key) + " " + Shown(value));
    return !Failing() && ::WritePrivateProfileStringA(section, key, value, file);
  }
  static BOOL WINAPI WriteW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR file) {
    Calls().push_back("WriteW " + Shown(section) + " " + Shown(key) + " " + Shown(value));
    return !Failing() && ::WritePrivateProfileStringW(section, key, value, file);
  }

  test::ImportHook readA_, readW_, writeA_, writeW_;
};

using Calls = std::vector<std::string>;

}  // namespace settings
