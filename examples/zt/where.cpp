// SPDX-License-Identifier: MIT
// zt where: an application's settings file, data folders and language.
#include <ZERATools.h>

#include <algorithm>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "settings.h"

namespace zt {
namespace {

struct Language {
  const wchar_t* code;
  const wchar_t* name;
};

// By number.
constexpr Language languages[] = {
    {L"DEU", L"German"},     {L"ENG", L"English"},
    {L"FRA", L"French"},     {L"NLD", L"Dutch"},
    {L"ITA", L"Italian"},    {L"ESP", L"Spanish"},
    {L"PTG", L"Portuguese"}, {L"SVE", L"Swedish"},
    {L"NOR", L"Norwegian"},  {L"CHS", L"Chinese (simplified)"},
    {L"KOR", L"Korean"},     {L"JPN", L"Japanese"},
    {L"BGR", L"Bulgarian"},
};

std::wstring Shown(int language) {
  return std::to_wstring(language) + L" " + languages[language].code + L" " + languages[language].name;
}

int LanguageOf(const Arguments& arguments, std::size_t at) {
  const std::wstring& text = arguments.Text(at);
  const auto* const found = std::ranges::find_if(
      languages, [&](const Language& one) { return ::_wcsicmp(text.c_str(), one.code) == 0; });
  if (found != std::end(languages)) return static_cast<int>(found - languages);
  if (text.empty() || text.size() > 2 || text.find_first_not_of(L"0123456789") != text.npos) {
    arguments.Reject(at, L"is neither a code such as FRA nor a number; see zt where languages");
  }
  return static_cast<int>(arguments.Integer(at, 0, std::ssize(languages) - 1));
}

// The module of another application, mapped so that it has a handle, but not run.
class Module {
 public:
  explicit Module(const Arguments& arguments) {
    const std::wstring path = arguments.FullPath(0);
    // Beside the module the library puts a file of a 20-character name and needs a path for it.
    if (path.rfind(L'\\') + 1 + 20 >= MAX_PATH) arguments.Reject(0, L"lies in a folder with too long a path");
    if (Measure(path).extension != 4) arguments.Reject(0, L"has no extension of three letters");
    handle_ = ::LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (!handle_) {
      DWORD error = ::GetLastError();
      const bool there = IsThere(path, &error);
      Complain(there ? path + L" is no 64-bit program or library, or cannot be read" : L"there is no " + path,
               error);
    }
  }
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module() {
    if (handle_) ::FreeLibrary(handle_);
  }
  HMODULE handle() const { return handle_; }

 private:
  HMODULE handle_;
};

Exit Settings(const Arguments& arguments) {
  const Module module(arguments);
  if (!module.handle()) return no;
  CStringW file;
  int copied = 0;
  const int there = ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(module.handle(), file, &copied);
  PrintLine(file.GetString());
  if (!there) Complain(L"there is no file yet");
  if (there && copied) Complain(L"it was copied just now from the machine-wide settings file");
  return there ? done : no;
}

Exit Data(const Arguments& arguments) {
  const Module module(arguments);
  if (!module.handle()) return no;
  CStringW machine, user;
  if (!ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(module.handle(), machine, user)) {
    Complain(L"the module's path could not be read");
    return no;
  }
  PrintLine(std::wstring(L"machine  ") + machine.GetString());
  PrintLine(std::wstring(L"user     ") + user.GetString());
  return done;
}

Exit ReadLanguage(const Arguments& arguments) {
  const std::wstring file = arguments.FullPath(0);
  if (!CanRead(file)) return no;
  PrintLine(Shown(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(file.c_str())));
  return done;
}

Exit SaveLanguage(const Arguments& arguments) {
  const std::wstring file = arguments.FullPath(0);
  const int language = LanguageOf(arguments, 1);
  // Always 1: only reading back tells.
  ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(language, file.c_str());
  if (!ZERA_TOOLS_FILE_EXIST_UC(file.c_str()) ||
      ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(file.c_str()) != language) {
    Complain(L"could not write " + file, WriteError(file));
    return no;
  }
  Confirm(Shown(language));
  return done;
}

Exit LoadLanguage(const Arguments& arguments) {
  const int language = LanguageOf(arguments, 1);
  if (language == 0) arguments.Reject(1, L"is German, which needs no language module");
  const Module module(arguments);
  if (!module.handle()) return no;
  const HMODULE loaded =
      ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(module.handle(), static_cast<unsigned int>(language));
  if (!loaded) {
    Complain(std::wstring(L"there is no language module for ") + languages[language].name +
             L", nor for English");
    return no;
  }
  std::wstring path(MAX_PATH, L'\0');
  path.resize(::GetModuleFileNameW(loaded, path.data(), MAX_PATH));
  ::FreeLibrary(loaded);
  PrintLine(path);
  return done;
}

Exit ListLanguages(const Arguments&) {
  for (int i = 0; i < std::ssize(languages); ++i) PrintLine(Shown(i));
  return done;
}

const Command commands[] = {
    {L"settings", L"MODULE", L"The settings file of an application",
     L"As the application itself finds it: beside the module if it exists there and the folder\n"
     L"can be written, else in the user's application data. A newer machine-wide file is copied\n"
     L"over the user's, and missing folders are created for it. Exit code 1 if there is no file.\n",
     L"zt where settings C:\\Prog\\Viewer\\view.exe\nC:\\Prog\\Viewer\\view.ini",
     L"ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC", Settings},
    {L"data", L"MODULE", L"The machine-wide and the user's data folder",
     L"Neither is created or looked for.\n",
     L"zt where data C:\\Prog\\Viewer\\view.exe\nmachine  C:\\ProgramData\\Viewer\\view\n"
     L"user     C:\\Users\\anna\\AppData\\Roaming\\Viewer\\view",
     L"ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC", Data},
    {L"language", L"FILE", L"The language that a settings file asks for", L"Without an entry it is German.\n",
     L"zt where language C:\\Prog\\Viewer\\view.ini\n2 FRA French",
     L"ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC", ReadLanguage},
    {L"set-language", L"FILE LANGUAGE", L"Saves a language in a settings file",
     L"LANGUAGE is a code, in upper or lower case, or a number.\n",
     L"zt where set-language C:\\Prog\\Viewer\\view.ini FRA\n2 FRA French",
     L"ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC", SaveLanguage},
    {L"load-language", L"MODULE LANGUAGE", L"Loads a language module and shows which one it is",
     L"The English one if there is none for LANGUAGE, which is a code or a number. The module's\n"
     L"own start code runs. Exit code 1 if\n"
     L"there is none at all.\n",
     L"zt where load-language C:\\Prog\\Viewer\\view.exe FRA\nC:\\Prog\\Viewer\\view_FRA.dll",
     L"ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL", LoadLanguage},
    {L"languages", L"", L"All languages with their numbers and codes", L"",
     L"zt where languages\n0 DEU German\n...", L"nothing", ListLanguages},
};

}  // namespace

const Group whereGroup = {L"where", L"Where an application keeps its settings and data, and its language",
                          L"MODULE is the application's program or library file, of 64 bits.\n", commands};

}  // namespace zt
