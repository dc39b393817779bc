// SPDX-License-Identifier: MIT
// view.exe: a small application of the family, to show what the library does for one.
#include <windows.h>

#include "Console.h"
#include "Viewer.h"

int wmain(int count, wchar_t** arguments) {
  const std::wstring command = count > 1 ? arguments[1] : L"";
  const std::wstring value = count > 2 ? arguments[2] : L"";
  if (command.empty()) return viewer::Start();
  if (command == L"language") return viewer::SaveLanguage(value);
  if (command == L"licence") return value.empty() ? viewer::ShowLicence() : viewer::StoreLicence(value);
  if (command == L"prune") return viewer::Prune(value);
  if (command == L"templates") return viewer::CopyTemplates();
  if (command == L"export") return viewer::Export();
  viewer::Print(L"unknown command", command);
  return 2;
}
