// SPDX-License-Identifier: MIT
// arguments.h: the arguments of one command, counted and checked before anything is called.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"

namespace zt {

/// Whether a text is an option: two dashes, or one and a letter. "-2.5" is a
/// number.
bool IsOption(std::wstring_view text);
/// The option with two dashes.
std::wstring OptionName(std::wstring_view text);
/// The options that are a command's own.
std::vector<std::wstring> OptionsOf(const Command& command);

/// Each getter throws BadInput, naming the argument, unless the text is what it asks for.
class Arguments {
 public:
  /// Counts `given` against the command's own list of arguments.
  Arguments(const Command& command, std::span<const std::wstring> given);

  std::size_t Count() const { return texts_.size(); }
  /// Whether an option such as "--overwrite" was given.
  bool Has(std::wstring_view option) const;

  /// Any text.
  const std::wstring& Text(std::size_t at) const { return texts_[at]; }
  /// A text that is not empty and stays on one line.
  const std::wstring& Line(std::size_t at) const;
  /// A path that is only worked on as text: its components keep the library's limits.
  const std::wstring& PathText(std::size_t at) const;
  /// A path of a file or folder on disk: not empty, no wildcards, short enough for the library.
  const std::wstring& Path(std::size_t at) const;
  /// The same, made absolute: functions for settings files look for a bare name in the system's folder.
  std::wstring FullPath(std::size_t at) const;
  /// A whole number, every character of it, within a range.
  std::int64_t Integer(std::size_t at, std::int64_t least, std::int64_t most) const {
    return Integer(at, texts_[at], least, most);
  }
  /// The same for a number that is a part of the argument.
  std::int64_t Integer(std::size_t at, const std::wstring& text, std::int64_t least, std::int64_t most) const;
  /// A decimal number with a point, finite, of at most this size.
  double Number(std::size_t at, double most) const { return Number(at, texts_[at], most); }
  double Number(std::size_t at, const std::wstring& text, double most) const;
  /// Bytes as pairs of hexadecimal digits, blanks between pairs allowed, no zero byte.
  std::string Bytes(std::size_t at) const;

  [[noreturn]] void Reject(std::size_t at, std::wstring_view why) const;

 private:
  std::vector<std::wstring> names_;
  std::vector<std::wstring> texts_;
  std::vector<std::wstring> options_;
};

/// Lengths of a path's parts, as the platform's path splitter cuts it.
struct PathParts {
  std::size_t directory, name, extension;
};
PathParts Measure(std::wstring_view path);
/// Characters of a directory, a name or an extension that the library has room for.
inline constexpr std::size_t longestPart = 255;

/// Whether two paths lead to one existing file or folder.
bool SameFile(const std::wstring& first, const std::wstring& second);
/// The path without "..", relative beginnings and the like.
std::wstring Absolute(const std::wstring& path);

}  // namespace zt
