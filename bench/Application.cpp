// SPDX-License-Identifier: MIT
// Where an application keeps its files, and its language: beside the calls that the rules require.
#include <windows.h>

#include <shlobj.h>

#include <iterator>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

void Languages() {
  const std::wstring path = Folder() + L"language.ini";
  const wchar_t* const file = path.c_str();
  ::WritePrivateProfileStringW(L"Vorgaben", L"Language", L"FRA", file);
  const auto ask = [=](const wchar_t* key, wchar_t* text, DWORD size) {
    return ::GetPrivateProfileStringW(L"Vorgaben", key, nullptr, text, size, file);
  };
  const auto get = BENCH_EXPORT(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC);
  Measure("Application", "saved language", 1, Calls([=] { sink = get(file); }), Calls([=] {
            wchar_t text[2600];
            if (!ask(L"Language_utf8", text, 2600) && !ask(L"Language_UC", text, 2600))
              ask(L"Language", text, 260);
            sink = text[0];
          }));
  const auto save = BENCH_EXPORT(ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC);
  int turn = 0;
  Measure("Application", "save the language", 1, Calls([=]() mutable { sink = save(1 + ++turn % 2, file); }),
          Calls([=]() mutable {
            wchar_t text[256];
            ::WritePrivateProfileStringW(L"Vorgaben", L"Language", ++turn % 2 ? L"ENG" : L"FRA", file);
            sink = ask(L"Language_utf8", text, 256) + ask(L"Language_UC", text, 256);
          }));
  ::DeleteFileW(file);
}

}  // namespace

void Application() {
  const auto folders = BENCH_EXPORT(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC);
  CStringW common, user;
  Measure("Application", "data folders", 1, Calls([&] { sink = folders(nullptr, common, user); }), Calls([] {
            wchar_t module[MAX_PATH], path[MAX_PATH];
            ::GetModuleFileNameW(nullptr, module, MAX_PATH);
            ::SHGetSpecialFolderPathW(nullptr, path, CSIDL_COMMON_APPDATA, FALSE);
            sink = ::SHGetSpecialFolderPathW(nullptr, path, CSIDL_APPDATA, FALSE);
          }));
  Languages();
}

}  // namespace bench
