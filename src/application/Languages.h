// SPDX-License-Identifier: MIT
// Languages.h: the chosen language of an application and its language module. The rules of each stand at
// its export in ZERATools.h; these are the same operations without the frame.
#pragma once

#include <windows.h>

namespace application {

int GetLanguage(const wchar_t* settingsFile);
int SaveLanguage(int language, const wchar_t* settingsFile);
HMODULE LoadLanguageModule(HMODULE module, unsigned int language);

}  // namespace application
