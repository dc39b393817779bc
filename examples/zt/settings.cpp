// SPDX-License-Identifier: MIT
#include "settings.h"

#include <ZERATools.h>

#include "console.h"
#include "failure.h"

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

bool CanRead(const std::wstring& file) {
  if (!IsThere(file)) return true;
  const DWORD error = OpenError(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
  if (error) Complain(L"could not read " + file, error);
  return !error;
}

bool HasKey(const Place& place, const std::wstring& suffix) {
  // No value holds a line break, so that it can only come from here.
  wchar_t text[3];
  ::GetPrivateProfileStringW(place.section.c_str(), (place.key + suffix).c_str(), L"\n", text, 3,
                             place.file.c_str());
  return text[0] != L'\n';
}

void ComplainOfNoValue(const Place& place) {
  DWORD error = 0;
  if (!IsThere(place.file, &error)) {
    Complain(L"there is no " + place.file, error);
  } else {
    Complain(L"there is no value of " + place.key + L" in [" + place.section + L"] of " + place.file);
  }
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
    Complain(L"could not write " + place.file, WriteError(place.file));
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
