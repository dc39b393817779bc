// SPDX-License-Identifier: MIT
// zera/path.hpp: paths as text. Nothing here touches the disk.
//
// A component beyond its limit (drive 2, directory, name and extension 255 characters) is an invalid
// parameter of the C runtime, whose handler runs; if it returns, the result is empty.
#pragma once

#include <string>

#include "../../ZERATools.h"
#include "argument.hpp"

namespace zera::path {

namespace detail {

// Room for any path whose components keep their limits.
inline constexpr std::size_t most_path = 2 + 3 * 255 + 1;

template <class Char, class Export>
std::basic_string<Char> take(Export function, const basic_argument<Char>& path) {
  Char result[most_path];
  result[0] = 0;
  function(path, result, most_path);
  return result;
}

// Rewrites a copy of the path in place; `more` is how much longer it may become.
template <class Char, class Call>
std::basic_string<Char> rewrite(const basic_argument<Char>& path, std::size_t more, Call call) {
  const std::size_t size = path.size();
  std::basic_string<Char> result(size + more + 1, Char());
  std::char_traits<Char>::copy(result.data(), path.get(), size);
  call(result.data(), result.size());
  result.resize(std::char_traits<Char>::length(result.c_str()));
  return result;
}

template <class Char, class Export>
std::basic_string<Char> put(Export function, const basic_argument<Char>& path,
                            const basic_argument<Char>& text) {
  // A separator or a period may be added at either end of the text.
  return rewrite(path, text.size() + 4,
                 [&](Char* buffer, std::size_t capacity) { function(buffer, capacity, text); });
}

}  // namespace detail

/// The drive, "C:". As #ZERA_TOOLS_FILE_GET_DRIVE_UC.
[[nodiscard]] inline std::wstring drive(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DRIVE_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_DRIVE.
[[nodiscard]] inline std::string drive(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DRIVE, path);
}

/// The directory with its separators, "\data\run\". As #ZERA_TOOLS_FILE_GET_DIR_UC.
[[nodiscard]] inline std::wstring directory(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DIR_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_DIR.
[[nodiscard]] inline std::string directory(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DIR, path);
}

/// The file name without its extension. As #ZERA_TOOLS_FILE_GET_NAME_UC.
[[nodiscard]] inline std::wstring name(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_NAME_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_NAME.
[[nodiscard]] inline std::string name(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_NAME, path);
}

/// The extension with its period. As #ZERA_TOOLS_FILE_GET_EXT_UC.
[[nodiscard]] inline std::wstring extension(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_EXT_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_EXT.
[[nodiscard]] inline std::string extension(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_EXT, path);
}

/// Drive and directory. As #ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC.
[[nodiscard]] inline std::wstring folder(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_DRIVE_DIR.
[[nodiscard]] inline std::string folder(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_DRIVE_DIR, path);
}

/// Name and extension. As #ZERA_TOOLS_FILE_GET_NAME_EXT_UC.
[[nodiscard]] inline std::wstring file(const argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_NAME_EXT_UC, path);
}
/// As #ZERA_TOOLS_FILE_GET_NAME_EXT.
[[nodiscard]] inline std::string file(const ansi_argument& path) {
  return detail::take(ZERA_TOOLS_FILE_GET_NAME_EXT, path);
}

/// The path with another drive. As #ZERA_TOOLS_FILE_REPLACE_DRIVE_UC.
[[nodiscard]] inline std::wstring with_drive(const argument& path, const argument& drive) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DRIVE_UC, path, drive);
}
/// As #ZERA_TOOLS_FILE_REPLACE_DRIVE.
[[nodiscard]] inline std::string with_drive(const ansi_argument& path, const ansi_argument& drive) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DRIVE, path, drive);
}

/// The path with another directory. As #ZERA_TOOLS_FILE_REPLACE_DIR_UC.
[[nodiscard]] inline std::wstring with_directory(const argument& path, const argument& directory) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DIR_UC, path, directory);
}
/// As #ZERA_TOOLS_FILE_REPLACE_DIR.
[[nodiscard]] inline std::string with_directory(const ansi_argument& path, const ansi_argument& directory) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DIR, path, directory);
}

/// The path with another drive and directory. As #ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC.
[[nodiscard]] inline std::wstring with_folder(const argument& path, const argument& folder) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC, path, folder);
}
/// As #ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR.
[[nodiscard]] inline std::string with_folder(const ansi_argument& path, const ansi_argument& folder) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR, path, folder);
}

/// The path with another name. As #ZERA_TOOLS_FILE_REPLACE_NAME_UC.
[[nodiscard]] inline std::wstring with_name(const argument& path, const argument& name) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_NAME_UC, path, name);
}
/// As #ZERA_TOOLS_FILE_REPLACE_NAME.
[[nodiscard]] inline std::string with_name(const ansi_argument& path, const ansi_argument& name) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_NAME, path, name);
}

/// The path with another extension. As #ZERA_TOOLS_FILE_REPLACE_EXT_UC.
[[nodiscard]] inline std::wstring with_extension(const argument& path, const argument& extension) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_EXT_UC, path, extension);
}
/// As #ZERA_TOOLS_FILE_REPLACE_EXT.
[[nodiscard]] inline std::string with_extension(const ansi_argument& path, const ansi_argument& extension) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_EXT, path, extension);
}

/// The path with another name and extension. As #ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC.
[[nodiscard]] inline std::wstring with_file(const argument& path, const argument& file) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC, path, file);
}
/// As #ZERA_TOOLS_FILE_REPLACE_NAME_EXT.
[[nodiscard]] inline std::string with_file(const ansi_argument& path, const ansi_argument& file) {
  return detail::put(ZERA_TOOLS_FILE_REPLACE_NAME_EXT, path, file);
}

/// The path with text added to its directory. As #ZERA_TOOLS_FILE_ADD_DIR_UC.
[[nodiscard]] inline std::wstring add_directory(const argument& path, const argument& text) {
  return detail::put(ZERA_TOOLS_FILE_ADD_DIR_UC, path, text);
}
/// As #ZERA_TOOLS_FILE_ADD_DIR.
[[nodiscard]] inline std::string add_directory(const ansi_argument& path, const ansi_argument& text) {
  return detail::put(ZERA_TOOLS_FILE_ADD_DIR, path, text);
}

/// The path with text added to its name. As #ZERA_TOOLS_FILE_ADD_NAME_UC.
[[nodiscard]] inline std::wstring add_name(const argument& path, const argument& text) {
  return detail::put(ZERA_TOOLS_FILE_ADD_NAME_UC, path, text);
}
/// As #ZERA_TOOLS_FILE_ADD_NAME.
[[nodiscard]] inline std::string add_name(const ansi_argument& path, const ansi_argument& text) {
  return detail::put(ZERA_TOOLS_FILE_ADD_NAME, path, text);
}

/// The path with a number of at least `digits` digits added to its name. As #ZERA_TOOLS_FILE_ADD_IDX_NAME_UC.
[[nodiscard]] inline std::wstring add_index(const argument& path, unsigned int index,
                                            unsigned int digits = 1) {
  return detail::rewrite(path, detail::most_path, [&](wchar_t* buffer, std::size_t capacity) {
    ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(buffer, capacity, index, digits);
  });
}
/// As #ZERA_TOOLS_FILE_ADD_IDX_NAME.
[[nodiscard]] inline std::string add_index(const ansi_argument& path, unsigned int index,
                                           unsigned int digits = 1) {
  return detail::rewrite(path, detail::most_path, [&](char* buffer, std::size_t capacity) {
    ZERA_TOOLS_FILE_ADD_IDX_NAME(buffer, capacity, index, digits);
  });
}

}  // namespace zera::path
