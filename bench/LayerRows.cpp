// SPDX-License-Identifier: MIT
#include "LayerRows.h"

#include <ZERATools/zera.hpp>

#include <optional>
#include <string>

namespace {

constexpr std::size_t kLong = 65536;
constexpr std::wstring_view kPath = L"C:\\data\\measurements\\2026\\run-0001.ini";
const std::wstring longText(kLong, L'\u00e4');
std::wstring settingsFile;
std::optional<zera::basic_section<wchar_t>> section;

// Out of a path, given as a pointer or as a view.
std::wstring NameOf(const wchar_t* path) {
  wchar_t name[MAX_PATH];
  ZERA_TOOLS_FILE_GET_NAME_EXT_UC(path, name, MAX_PATH);
  return name;
}
long long BareName() {
  wchar_t name[MAX_PATH];
  return ZERA_TOOLS_FILE_GET_NAME_EXT_UC(kPath.data(), name, MAX_PATH) + name[0];
}

template <bool Copied>
long long Utf8() {
  ZERA_ASTRING object;
  zera_astring_make(&object);
  ZERA_TOOLS_STRING_UC_TO_UTF8(longText.c_str(), zera_ref(&object));
  std::string text;
  if (Copied) text.assign(zera_astring_text(&object), zera_astring_length(&object));
  const std::size_t size = Copied ? text.size() : zera_astring_length(&object);
  zera_astring_free(&object);
  return static_cast<long long>(size);
}

template <bool Copied>
long long Encrypted() {
  ZERA_WSTRING plain, object;
  zera_wstring_make(&plain);
  zera_wstring_make(&object);
  zera_wstring_set_length(&plain, longText.data(), 32);
  ZERA_TOOLS_ENC_STRING_L_UC(L"pass phrase", zera_ref(&plain), zera_ref(&object));
  std::wstring text;
  if (Copied) text.assign(zera_wstring_text(&object), zera_wstring_length(&object));
  const std::size_t size = Copied ? text.size() : zera_wstring_length(&object);
  zera_wstring_free(&object);
  zera_wstring_free(&plain);
  return static_cast<long long>(size);
}

const bench::LayerRow rows[] = {
    {"text: file name of a path", 1,  //
     [] { return static_cast<long long>(zera::path::file(kPath.data()).size()); }, BareName,
     [] { return static_cast<long long>(NameOf(kPath.data()).size()); }},
    {"text: file name of a view", 1,  //
     [] { return static_cast<long long>(zera::path::file(kPath).size()); }, BareName,
     [] { return static_cast<long long>(NameOf(std::wstring(kPath).c_str()).size()); }},
    {"text: UTF-8 (long)", kLong,  //
     [] { return static_cast<long long>(zera::text::to_utf8(longText).size()); }, Utf8<false>, Utf8<true>},
    {"text: encrypted", 32,
     [] {
       const auto text = zera::crypt::encrypt(L"pass phrase", std::wstring_view(longText).substr(0, 32));
       return static_cast<long long>(text ? text->size() : 0);
     },
     Encrypted<false>, Encrypted<true>},
    {"number: from settings", 1,  //
     [] {
       return static_cast<long long>(section->get(L"Left", 1, {0, 4000}));
     },
     [] {
       return static_cast<long long>(
           ZERA_TOOLS_READ_INT_UC(L"View", L"Left", settingsFile.c_str(), 1, 0, 4000));
     },
     nullptr},
    {}};

}  // namespace

const bench::LayerRow* LayerRows(const wchar_t* file) {
  settingsFile = file;
  section = zera::settings(file).section(L"View");
  section->set(L"Left", 100);
  return rows;
}
