// SPDX-License-Identifier: MIT
// zera/application.hpp: where an application's settings file lives, and the language of its user interface.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "argument.hpp"
#include "objects.hpp"

namespace zera {

/// The languages of the user interface, by their stored numbers.
enum class language : int {
  german = 0,
  english = 1,
  french = 2,
  dutch = 3,
  italian = 4,
  spanish = 5,
  portuguese = 6,
  swedish = 7,
  norwegian = 8,
  chinese = 9,
  korean = 10,
  japanese = 11,
  bulgarian = 12,
};

/// A loaded language module, which it frees at its end. Empty when there is none: German is built in.
class language_module {
 public:
  language_module() noexcept = default;
  /// Takes a loaded module over.
  explicit language_module(HMODULE module) noexcept : module_(module) {}
  language_module(language_module&& other) noexcept : module_(other.release()) {}
  language_module& operator=(language_module&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  ~language_module() { reset(); }

  /// The module, or null.
  [[nodiscard]] HMODULE get() const noexcept { return module_; }
  explicit operator bool() const noexcept { return module_ != nullptr; }
  /// Gives the module away; the caller frees it.
  [[nodiscard]] HMODULE release() noexcept { return std::exchange(module_, nullptr); }
  /// Frees the module, and takes another over.
  void reset(HMODULE module = nullptr) noexcept {
    if (module_) ::FreeLibrary(module_);
    module_ = module;
  }

 private:
  HMODULE module_ = nullptr;
};

namespace application {

/// What is known of an application's settings file.
struct settings_location {
  std::wstring path;    ///< where it is, or will be
  bool exists = false;  ///< whether it is there now
  bool copied = false;  ///< whether the machine-wide file was taken over
};

/// Finds the settings file. As #ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC.
/// @param module  the application's module; null for the process's executable
[[nodiscard]] inline settings_location settings_file(HMODULE module = nullptr) {
  zera::detail::wide_object file;
  settings_location found;
  int copied = 0;
  found.exists = ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(module, file.ref(), &copied) != 0;
  found.copied = copied != 0;
  found.path = file.str();
  return found;
}

/// The application's data folders.
struct data_folders {
  std::wstring common;  ///< for all users of the machine
  std::wstring user;    ///< for the user
};

/// Names the data folders. As #ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC.
[[nodiscard]] inline std::optional<data_folders> folders(HMODULE module = nullptr) {
  zera::detail::wide_object common, user;
  if (!ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(module, common.ref(), user.ref())) return std::nullopt;
  return data_folders{common.str(), user.str()};
}

/// The language that a settings file names. As #ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC.
[[nodiscard]] inline zera::language language(const argument& settings_file) {
  return static_cast<zera::language>(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(settings_file));
}
/// As #ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC.
[[nodiscard]] inline zera::language language(const ansi_argument& settings_file) {
  return static_cast<zera::language>(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC(settings_file));
}

/// Saves the language in a settings file. As #ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC.
inline bool save_language(zera::language choice, const argument& settings_file) {
  return ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(static_cast<int>(choice), settings_file) != 0;
}
/// As #ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC.
inline bool save_language(zera::language choice, const ansi_argument& settings_file) {
  return ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC(static_cast<int>(choice), settings_file) != 0;
}

/// Loads the language's module, or the English one. As #ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL.
[[nodiscard]] inline language_module load_language(zera::language choice, HMODULE module = nullptr) {
  return language_module(ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(module, static_cast<unsigned int>(choice)));
}

}  // namespace application

}  // namespace zera
