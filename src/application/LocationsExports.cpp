// SPDX-License-Identifier: MIT
// LocationsExports.cpp: the exports that find an application's settings file and data folders.
#include "Locations.h"
#include "ZERATools.h"
#include "frame/Frame.h"

int ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC(HMODULE module, CStringA& file) {
  int copied;
  return frame::Enter([&] { return application::SettingsFile(module, file, copied); });
}

int ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(HMODULE module, CStringW& file) {
  int copied;
  return frame::Enter([&] { return application::SettingsFile(module, file, copied); });
}

int ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC(HMODULE module, CStringA& file, int* copied) {
  return frame::Enter([&] { return application::SettingsFile(module, file, *copied); });
}

int ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(HMODULE module, CStringW& file, int* copied) {
  return frame::Enter([&] { return application::SettingsFile(module, file, *copied); });
}

int ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(HMODULE module, CStringW& commonData, CStringW& userData) {
  return frame::Enter([&] { return application::DataFolders(module, commonData, userData); });
}
