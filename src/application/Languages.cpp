// SPDX-License-Identifier: MIT
#include "Languages.h"

#include <cwchar>

#include "LanguageTable.h"
#include "ModulePath.h"
#include "base/QuietErrors.h"
#include "profile/Read.h"
#include "profile/Write.h"

namespace application {
namespace {

const wchar_t kSection[] = L"Vorgaben";
const wchar_t kKey[] = L"Language";

// Loads "<stem><separator><code>.dll"; null if there is none.
HMODULE Load(std::wstring_view stem, std::wstring_view separator, std::wstring_view code) {
  wchar_t name[MAX_PATH + 10];
  wchar_t* end = name;
  for (const std::wstring_view part : {stem, separator, code, std::wstring_view(L".dll")}) {
    end = std::char_traits<wchar_t>::copy(end, part.data(), part.size()) + part.size();
  }
  *end = 0;
  return base::Quietly([&] { return ::LoadLibraryW(name); });
}

// Tries both forms of a language module's name.
HMODULE LoadEither(std::wstring_view stem, std::wstring_view code) {
  const HMODULE module = Load(stem, L"_", code);
  return module ? module : Load(stem, L"", code);
}

}  // namespace

int GetLanguage(const wchar_t* settingsFile) {
  wchar_t code[10] = {};
  profile::ReadString(kSection, kKey, settingsFile, CodeOf(0), code, 10);
  const std::size_t length = std::wcslen(code);
  ::CharUpperBuffW(code, static_cast<DWORD>(length));
  return NumberOf({code, length});
}

int SaveLanguage(int language, const wchar_t* settingsFile) {
  const wchar_t* const code = CodeOf(static_cast<unsigned int>(language));
  return profile::WriteString(kSection, kKey, settingsFile, code ? code : CodeOf(0));
}

HMODULE LoadLanguageModule(HMODULE handle, unsigned int language) {
  const wchar_t* const code = CodeOf(language);
  const wchar_t* const german = CodeOf(static_cast<unsigned int>(LanguageId::DEU));
  const wchar_t* const english = CodeOf(static_cast<unsigned int>(LanguageId::ENG));
  // German is built into the applications.
  if (!code || code == german) return nullptr;
  const ModulePath<MAX_PATH> path(handle);
  if (path.empty()) return nullptr;
  const std::wstring_view stem = path.Without(4);
  const HMODULE module = LoadEither(stem, code);
  return module || code == english ? module : LoadEither(stem, english);
}

}  // namespace application
