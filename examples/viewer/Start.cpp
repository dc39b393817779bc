// SPDX-License-Identifier: MIT
// Start.cpp: the settings file and the user's language.
#include <ZERATools.h>

#include "ByOrdinal.h"
#include "Console.h"
#include "Viewer.h"
#include "texts.h"

namespace viewer {
namespace {

const wchar_t* const kCodes[] = {L"DEU", L"ENG", L"FRA", L"NLD", L"ITA", L"ESP", L"PTG",
                                 L"SVE", L"NOR", L"CHS", L"KOR", L"JPN", L"BGR"};

std::wstring TextOf(HMODULE module, unsigned number) {
  wchar_t text[100] = {};
  ::LoadStringW(module, number, text, 100);
  return text;
}

std::wstring NameOf(HMODULE module) {
  wchar_t path[MAX_PATH] = {}, name[MAX_PATH] = {};
  ::GetModuleFileNameW(module, path, MAX_PATH);
  ZERA_TOOLS_FILE_GET_NAME_EXT_UC(path, name, MAX_PATH);
  return name;
}

}  // namespace

int Start() {
  CStringW settings;
  int copied = 0;
  const int found = ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(nullptr, settings, &copied);
  Print(L"settings file", settings.GetString());
  Print(L"it exists", found ? L"yes" : L"no");
  Print(L"made anew", copied ? L"yes, from the machine-wide file" : L"no");

  const int language = ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(settings);
  Print(L"language", std::to_wstring(language) + L" (" + kCodes[language] + L")");

  // German texts are the program's own; every other language has a module.
  const HMODULE module = ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(nullptr, static_cast<unsigned>(language));
  Print(L"language module", module ? NameOf(module) : L"none");
  Print(L"it speaks", TextOf(module, TEXT_LANGUAGE));

  wchar_t user[50];
  ReadString(L"Vorgaben", L"UserName", settings, L"stranger", user, 50);
  std::wstring greeting = TextOf(module, TEXT_GREETING);
  if (const std::size_t at = greeting.find(L"%s"); at != greeting.npos) greeting.replace(at, 2, user);
  Print(L"greeting", greeting);
  if (module) ::FreeLibrary(module);
  return found ? 0 : 1;
}

int SaveLanguage(const std::wstring& code) {
  for (int language = 0; language < 13; ++language) {
    if (code != kCodes[language]) continue;
    const std::wstring settings = SettingsFile();
    ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(language, settings.c_str());
    Print(L"saved", code + L" in " + settings);
    return 0;
  }
  Print(L"unknown language", code);
  return 2;
}

std::wstring SettingsFile() {
  CStringW settings;
  ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(nullptr, settings);
  return settings.GetString();
}

std::wstring DataFolder() {
  CStringW common, user;
  ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(nullptr, common, user);
  return std::wstring(user.GetString()) + L"\\";
}

}  // namespace viewer
