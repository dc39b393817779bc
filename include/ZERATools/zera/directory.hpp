// SPDX-License-Identifier: MIT
// zera/directory.hpp: whole directories. These delete and overwrite: read the exports' rules first.
#pragma once

#include <atomic>
#include <chrono>
#if __has_include(<stop_token>) && (__cplusplus >= 202002L || (defined(_MSVC_LANG) && _MSVC_LANG >= 202002L))
  #include <stop_token>
#endif

#include "../../ZERATools.h"
#include "argument.hpp"

namespace zera::directory {

/// Seconds as the exports count them; minutes, hours and days convert by themselves.
using seconds = std::chrono::duration<unsigned int>;

/// What happens to files that the destination has already.
enum class existing : unsigned int { keep = 0, overwrite = 1 };

/// Deletes the files of a tree with an extension, and the folders that are empty then. As
/// #ZERA_TOOLS_FILE_DELETE_ALL_UC.
[[nodiscard]] inline bool remove_files(const argument& start, const argument& filter) {
  return ZERA_TOOLS_FILE_DELETE_ALL_UC(start, filter) != 0;
}
/// As #ZERA_TOOLS_FILE_DELETE_ALL.
[[nodiscard]] inline bool remove_files(const ansi_argument& start, const ansi_argument& filter) {
  return ZERA_TOOLS_FILE_DELETE_ALL(start, filter) != 0;
}

/// Deletes those older than an age, by creation time. As #ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC.
[[nodiscard]] inline bool remove_older(const argument& start, const argument& filter, seconds age) {
  return ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC(start, filter, age.count()) != 0;
}
/// As #ZERA_TOOLS_FILE_DELETE_ALL_OLD.
[[nodiscard]] inline bool remove_older(const ansi_argument& start, const ansi_argument& filter, seconds age) {
  return ZERA_TOOLS_FILE_DELETE_ALL_OLD(start, filter, age.count()) != 0;
}
/// The same until `stop` is not 0, which any thread may set. As #ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC.
[[nodiscard]] inline bool remove_older(const argument& start, const argument& filter, seconds age,
                                       std::atomic<int>& stop) {
  static_assert(sizeof(std::atomic<int>) == sizeof(int) && std::atomic<int>::is_always_lock_free,
                "the library reads the flag as an int");
  return ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(start, filter, age.count(), reinterpret_cast<int*>(&stop)) != 0;
}
#if defined(__cpp_lib_jthread)
/// The same until a stop is requested. As #ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC.
[[nodiscard]] inline bool remove_older(const argument& start, const argument& filter, seconds age,
                                       const std::stop_token& token) {
  std::atomic<int> stop = 0;
  const std::stop_callback set(token, [&stop] { stop = 1; });
  return remove_older(start, filter, age, stop);
}
#endif

/// Copies a tree below a destination that ends in a backslash. As #ZERA_TOOLS_FILE_COPY_ALL_UC.
[[nodiscard]] inline bool copy(const argument& start, const argument& destination,
                               existing files = existing::keep) {
  return ZERA_TOOLS_FILE_COPY_ALL_UC(start, destination, static_cast<unsigned int>(files)) != 0;
}
/// As #ZERA_TOOLS_FILE_COPY_ALL.
[[nodiscard]] inline bool copy(const ansi_argument& start, const ansi_argument& destination,
                               existing files = existing::keep) {
  return ZERA_TOOLS_FILE_COPY_ALL(start, destination, static_cast<unsigned int>(files)) != 0;
}

}  // namespace zera::directory
