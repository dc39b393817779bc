// SPDX-License-Identifier: MIT
#include "settings.h"

#include <ZERATools.h>

#include "console.h"

namespace zt {
namespace {

// A command line is no longer, and the reader takes ten times as much while it works.
constexpr std::size_t longestText = 32768;

bool IsTrimmed(const std::wstring& text) {
  const auto blank = [](wchar_t one) { return one == L' ' || one == L'\t'; };
  return !text.empty() && !blank(text.front()) && !blank(text.back());
}

}  // namespace

Place::Place(const Arguments& arguments, std::size_t first)
    : file(arguments.FullPath(first)), section(arguments.Line(first + 1)), key(arguments.Line(first + 2)) {
  if (file.ends_with(L'\\')) arguments.Reject(first, L"is a folder");
  CheckSection(arguments, first + 1, section);
  CheckKey(arguments, first + 2, key);
}

std::wstring ReadText(const Place& place, const std::wstring& fallback) {
  std::wstring text(longestText, L'\0');
  ZERA_TOOLS_READ_STRING_UC(place.section.c_str(), place.key.c_str(), place.file.c_str(), fallback.c_str(),
                            text.data(), text.size());
  return text.c_str();
}

bool WriteText(const Place& place, const std::wstring& value) {
  ZERA_TOOLS_WRITE_STRING_UC(place.section.c_str(), place.key.c_str(), place.file.c_str(), value.c_str());
  const std::wstring stored = ReadText(place, L"");
  if (stored == value) return true;
  if (stored.empty()) {
    Complain(L"could not write " + place.file);
  } else {
    Complain(place.file + L" gives back another text: " + stored);
  }
  return false;
}

void CheckSection(const Arguments& arguments, std::size_t at, const std::wstring& section) {
  if (!IsTrimmed(section) || section.find_first_of(L"[]\r\n") != section.npos) {
    arguments.Reject(at, L"cannot be the name of a section");
  }
}

void CheckKey(const Arguments& arguments, std::size_t at, const std::wstring& key) {
  if (!IsTrimmed(key) || key.find_first_of(L"=[\r\n") != key.npos || key.starts_with(L';')) {
    arguments.Reject(at, L"cannot be the name of a key");
  }
}

}  // namespace zt
