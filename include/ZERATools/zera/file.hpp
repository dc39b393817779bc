// SPDX-License-Identifier: MIT
// zera/file.hpp: one file and its contents.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#if __has_include(<span>) && (__cplusplus >= 202002L || (defined(_MSVC_LANG) && _MSVC_LANG >= 202002L))
  #include <span>
#endif

#include "../../ZERATools.h"
#include "argument.hpp"
#include "bytes.hpp"

namespace zera::file {

/// Whether a file or folder exists. As #ZERA_TOOLS_FILE_EXIST_UC.
[[nodiscard]] inline bool exists(const argument& path) {
  return ZERA_TOOLS_FILE_EXIST_UC(path) != 0;
}
/// As #ZERA_TOOLS_FILE_EXIST.
[[nodiscard]] inline bool exists(const ansi_argument& path) {
  return ZERA_TOOLS_FILE_EXIST(path) != 0;
}

/// Deletes a file, with retries; true when it is gone. As #ZERA_TOOLS_FILE_DELETE_UC.
[[nodiscard]] inline bool remove(const argument& path) {
  return ZERA_TOOLS_FILE_DELETE_UC(path) != 0;
}
/// As #ZERA_TOOLS_FILE_DELETE.
[[nodiscard]] inline bool remove(const ansi_argument& path) {
  return ZERA_TOOLS_FILE_DELETE(path) != 0;
}

/// Renames a file, over an existing one. As #ZERA_TOOLS_FILE_RENAME_UC.
[[nodiscard]] inline bool rename(const argument& from, const argument& to) {
  return ZERA_TOOLS_FILE_RENAME_UC(from, to) != 0;
}
/// As #ZERA_TOOLS_FILE_RENAME.
[[nodiscard]] inline bool rename(const ansi_argument& from, const ansi_argument& to) {
  return ZERA_TOOLS_FILE_RENAME(from, to) != 0;
}

/// The low 32 bits of a file's size in bytes. As #ZERA_TOOLS_FILE_GET_SIZE_UC.
[[nodiscard]] inline std::uint32_t size(const argument& path) {
  return ZERA_TOOLS_FILE_GET_SIZE_UC(path);
}
/// As #ZERA_TOOLS_FILE_GET_SIZE.
[[nodiscard]] inline std::uint32_t size(const ansi_argument& path) {
  return ZERA_TOOLS_FILE_GET_SIZE(path);
}

/// Whether a text stands in the path's extension. As #ZERA_TOOLS_FILE_HAS_EXTENSION_UC.
[[nodiscard]] inline bool has_extension(const argument& path, const argument& text) {
  return ZERA_TOOLS_FILE_HAS_EXTENSION_UC(path, text) != 0;
}
/// As #ZERA_TOOLS_FILE_HAS_EXTENSION.
[[nodiscard]] inline bool has_extension(const ansi_argument& path, const ansi_argument& text) {
  return ZERA_TOOLS_FILE_HAS_EXTENSION(path, text) != 0;
}

/// Milliseconds as the exports count them; whole seconds and so on convert by themselves.
using milliseconds = std::chrono::duration<unsigned int, std::milli>;

/// Waits for a file with contents; below 20 ms without an end. As #ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC.
[[nodiscard]] inline bool wait_for(const argument& path, milliseconds timeout) {
  return ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(path, timeout.count()) != 0;
}
/// As #ZERA_TOOLS_FILE_WAIT_FOR_FILE.
[[nodiscard]] inline bool wait_for(const ansi_argument& path, milliseconds timeout) {
  return ZERA_TOOLS_FILE_WAIT_FOR_FILE(path, timeout.count()) != 0;
}

/// When a file was changed last; nothing when there is none. As #ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC.
[[nodiscard]] inline std::optional<std::chrono::system_clock::time_point> modified(const argument& path) {
  __int64 seconds = 0;
  if (!ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(path, &seconds)) return std::nullopt;
  return std::chrono::system_clock::time_point(std::chrono::seconds(seconds));
}
/// As #ZERA_TOOLS_FILE_GET_TIME_MODIFIED.
[[nodiscard]] inline std::optional<std::chrono::system_clock::time_point> modified(
    const ansi_argument& path) {
  __int64 seconds = 0;
  if (!ZERA_TOOLS_FILE_GET_TIME_MODIFIED(path, &seconds)) return std::nullopt;
  return std::chrono::system_clock::time_point(std::chrono::seconds(seconds));
}

/// Copies a file's contents. As #ZERA_TOOLS_FILE_COPY_UC.
[[nodiscard]] inline bool copy(const argument& source, const argument& target) {
  return ZERA_TOOLS_FILE_COPY_UC(source, target) != 0;
}
/// As #ZERA_TOOLS_FILE_COPY.
[[nodiscard]] inline bool copy(const ansi_argument& source, const ansi_argument& target) {
  return ZERA_TOOLS_FILE_COPY(source, target) != 0;
}

/// Whether two files have the same contents. As #ZERA_TOOLS_FILE_COMPARE_UC.
[[nodiscard]] inline bool equal(const argument& first, const argument& second) {
  return ZERA_TOOLS_FILE_COMPARE_UC(first, second) != 0;
}
/// As #ZERA_TOOLS_FILE_COMPARE.
[[nodiscard]] inline bool equal(const ansi_argument& first, const ansi_argument& second) {
  return ZERA_TOOLS_FILE_COMPARE(first, second) != 0;
}

/// Makes an empty file unless there is one. As #ZERA_TOOLS_FILE_CREATE_UC.
[[nodiscard]] inline bool create(const argument& path) {
  return ZERA_TOOLS_FILE_CREATE_UC(path) != 0;
}
/// As #ZERA_TOOLS_FILE_CREATE.
[[nodiscard]] inline bool create(const ansi_argument& path) {
  return ZERA_TOOLS_FILE_CREATE(path) != 0;
}

namespace detail {

template <class Export, class Argument>
std::optional<std::vector<unsigned char>> read(Export function, const Argument& path, std::uint32_t size) {
  std::vector<unsigned char> bytes(size);
  unsigned __int64 count = 0;
  if (!function(path, bytes.data(), bytes.size(), &count)) return std::nullopt;
  return bytes;
}

#if defined(__cpp_lib_span)
template <class Export, class Argument>
std::optional<std::span<std::byte>> read(Export function, const Argument& path, std::span<std::byte> room) {
  unsigned __int64 count = 0;
  if (!function(path, reinterpret_cast<unsigned char*>(room.data()), room.size(), &count))
    return std::nullopt;
  return room.first(static_cast<std::size_t>(count));
}
#endif

}  // namespace detail

/// A whole file, or nothing when it is missing, empty or cannot be read. As #ZERA_TOOLS_FILE_TO_BUFFER_UC.
[[nodiscard]] inline std::optional<std::vector<unsigned char>> read(const argument& path) {
  return detail::read(ZERA_TOOLS_FILE_TO_BUFFER_UC, path, size(path));
}
/// As #ZERA_TOOLS_FILE_TO_BUFFER.
[[nodiscard]] inline std::optional<std::vector<unsigned char>> read(const ansi_argument& path) {
  return detail::read(ZERA_TOOLS_FILE_TO_BUFFER, path, size(path));
}

#if defined(__cpp_lib_span)
/// A whole file into the caller's room; the part that it takes, or nothing. As #ZERA_TOOLS_FILE_TO_BUFFER_UC.
[[nodiscard]] inline std::optional<std::span<std::byte>> read(const argument& path,
                                                              std::span<std::byte> room) {
  return detail::read(ZERA_TOOLS_FILE_TO_BUFFER_UC, path, room);
}
/// As #ZERA_TOOLS_FILE_TO_BUFFER.
[[nodiscard]] inline std::optional<std::span<std::byte>> read(const ansi_argument& path,
                                                              std::span<std::byte> room) {
  return detail::read(ZERA_TOOLS_FILE_TO_BUFFER, path, room);
}
#endif

/// Writes bytes as a file. As #ZERA_TOOLS_FILE_FROM_BUFFER_UC.
[[nodiscard]] inline bool write(const argument& path, const bytes& contents) {
  return ZERA_TOOLS_FILE_FROM_BUFFER_UC(path, static_cast<const unsigned char*>(contents.data),
                                        contents.size) != 0;
}
/// As #ZERA_TOOLS_FILE_FROM_BUFFER.
[[nodiscard]] inline bool write(const ansi_argument& path, const bytes& contents) {
  return ZERA_TOOLS_FILE_FROM_BUFFER(path, static_cast<const unsigned char*>(contents.data), contents.size) !=
         0;
}

/// Whether a file can be written; makes the missing folders of its path. As #ZERA_TOOLS_FILE_CHECK_WRITE_UC.
[[nodiscard]] inline bool can_write(const argument& path) {
  return ZERA_TOOLS_FILE_CHECK_WRITE_UC(path) != 0;
}
/// As #ZERA_TOOLS_FILE_CHECK_WRITE.
[[nodiscard]] inline bool can_write(const ansi_argument& path) {
  return ZERA_TOOLS_FILE_CHECK_WRITE(path) != 0;
}

/// The gigabytes free on a drive, 0 when unknown. As #ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC.
[[nodiscard]] inline float free_gigabytes(wchar_t drive) {
  return ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(drive);
}
/// As #ZERA_TOOLS_FILE_GET_FREEDISK_GB.
[[nodiscard]] inline float free_gigabytes(char drive) {
  return ZERA_TOOLS_FILE_GET_FREEDISK_GB(drive);
}

/// A module's version, "1.2.3.4"; nothing when it has none. As #ZERA_TOOLS_FILE_GET_VERSION_UC.
[[nodiscard]] inline std::optional<std::wstring> version(const argument& path) {
  wchar_t text[32];
  if (!ZERA_TOOLS_FILE_GET_VERSION_UC(path, text, 32)) return std::nullopt;
  return text;
}
/// As #ZERA_TOOLS_FILE_GET_VERSION.
[[nodiscard]] inline std::optional<std::string> version(const ansi_argument& path) {
  char text[32];
  if (!ZERA_TOOLS_FILE_GET_VERSION(path, text, 32)) return std::nullopt;
  return text;
}

}  // namespace zera::file
