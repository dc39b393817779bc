// SPDX-License-Identifier: MIT
// settings.h: a place in a settings file, for the commands that read or write one.
#pragma once

#include <string>

#include "arguments.h"

namespace zt {

/// FILE SECTION KEY, from argument `first` on.
struct Place {
  explicit Place(const Arguments& arguments, std::size_t first = 0);

  std::wstring file;  ///< a full path: the platform looks for a bare name in its own folder
  std::wstring section;
  std::wstring key;
};

/// Whether the file can be read, or is not there; false after a complaint. The library takes a file that
/// somebody has locked for an empty one.
bool CanRead(const std::wstring& file);
/// Whether the key is in the file, with a value or without.
bool HasKey(const Place& place, const std::wstring& suffix = {});
/// Complains that there is no value, or no file.
void ComplainOfNoValue(const Place& place);

std::wstring ReadText(const Place& place, const std::wstring& fallback);
/// Writes and reads back, since the writer does not say whether it could; false after a complaint.
bool WriteText(const Place& place, const std::wstring& value);

/// Refuses what would not come back as a name: line breaks, brackets of a section, the equals sign
/// of a key.
void CheckSection(const Arguments& arguments, std::size_t at, const std::wstring& section);
void CheckKey(const Arguments& arguments, std::size_t at, const std::wstring& key);

/// Numbers are read from their first 255 characters, and stored with all digits and ten decimals.
inline constexpr double largestStored = 1e240;

/// zt profile text
Exit WriteSettingsText(const Arguments& arguments);

}  // namespace zt
