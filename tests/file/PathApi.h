// SPDX-License-Identifier: MIT
// PathApi.h: the path exports of both character types, called by their plain ordinal.
#pragma once

#include <ZERATools.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "support/Library.h"

namespace test {

enum PathMember : unsigned {
  kGetDrive = 10,
  kGetDir = 11,
  kGetName = 12,
  kGetExt = 13,
  kGetDriveDir = 14,
  kGetNameExt = 15,
  kReplaceDrive = 20,
  kReplaceDir = 21,
  kReplaceName = 22,
  kReplaceExt = 23,
  kReplaceNameExt = 24,
  kReplaceDriveDir = 28,
  kAddDir = 30,
  kAddName = 32,
  kAddIndex = 33,
};

inline constexpr PathMember kGetters[] = {kGetDrive, kGetDir, kGetName, kGetExt, kGetDriveDir, kGetNameExt};
inline constexpr PathMember kRewriters[] = {kReplaceDrive,   kReplaceDir,      kReplaceName, kReplaceExt,
                                            kReplaceNameExt, kReplaceDriveDir, kAddDir,      kAddName};

static_assert(
    std::is_same_v<decltype(ZERA_TOOLS_FILE_GET_EXT), int(const char*, char*, size_t)> &&
    std::is_same_v<decltype(ZERA_TOOLS_FILE_REPLACE_EXT_UC), int(wchar_t*, size_t, const wchar_t*)>);

template <class Char>
struct PathApi {
  using Text = std::basic_string<Char>;

  static constexpr unsigned kVariant = std::is_same_v<Char, char> ? 0 : 1000;

  static int Get(PathMember member, const Char* path, Char* out, std::size_t capacity) {
    return Export<int(const Char*, Char*, std::size_t)>(member + kVariant)(path, out, capacity);
  }
  static int Rewrite(PathMember member, Char* path, std::size_t capacity, const Char* text) {
    return Export<int(Char*, std::size_t, const Char*)>(member + kVariant)(path, capacity, text);
  }
  static int AddIndex(Char* path, std::size_t capacity, unsigned index, unsigned digits) {
    return Export<int(Char*, std::size_t, unsigned, unsigned)>(kAddIndex + kVariant)(path, capacity, index,
                                                                                     digits);
  }

  /// A text of the ASCII characters in `text`.
  static Text From(const std::string& text) { return Text(text.begin(), text.end()); }
  static Text Repeat(std::size_t count, char one) { return Text(count, static_cast<Char>(one)); }
};

using BothCharacters = ::testing::Types<char, wchar_t>;

}  // namespace test
