// SPDX-License-Identifier: MIT
// LanguagesExports.cpp: the exports for the language of the user interface.
#include <afx.h>

#include "Languages.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

int ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC(const char* settingsFile) {
  return frame::Enter([&] { return application::GetLanguage(frame::WideText(settingsFile)); });
}

int ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(const wchar_t* settingsFile) {
  return frame::Enter([&] { return application::GetLanguage(settingsFile); });
}

int ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC(int language, const char* settingsFile) {
  return frame::Enter([&] { return application::SaveLanguage(language, frame::WideText(settingsFile)); });
}

int ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(int language, const wchar_t* settingsFile) {
  return frame::Enter([&] { return application::SaveLanguage(language, settingsFile); });
}

HMODULE ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(HMODULE module, unsigned int language) {
  return frame::Enter([&] { return application::LoadLanguageModule(module, language); });
}
