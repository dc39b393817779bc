// SPDX-License-Identifier: MIT
// Data.cpp: what the viewer does with the user's data folder.
#include <ZERATools.h>

#include <cstdlib>

#include "ByOrdinal.h"
#include "Console.h"
#include "Viewer.h"

namespace viewer {
namespace {

// Adds lines to a settings file's text. Each call of the library writes one line (two for a text that the
// code page cannot hold) and tells how many characters that took.
class SettingsText {
 public:
  template <class Write>
  void Add(Write write) {
    std::size_t count = 0;
    complete_ = write(text_ + used_, kCapacity - used_, &count) && complete_;
    used_ += count;
  }
  bool complete() const { return complete_; }
  const wchar_t* text() const { return text_; }

 private:
  static constexpr std::size_t kCapacity = 1000;

  wchar_t text_[kCapacity] = {};
  std::size_t used_ = 0;
  bool complete_ = true;
};

}  // namespace

int Prune(const std::wstring& days) {
  const std::wstring folder = DataFolder() + L"logs\\";
  const unsigned age = static_cast<unsigned>(std::wcstoul(days.c_str(), nullptr, 10)) * 24 * 60 * 60;
  Print(L"prune", folder);
  // An age of 0 would take today's files as well.
  const int result = age > 0 ? DeleteOld(folder.c_str(), L".log", age) : 0;
  Print(L"all removed", result ? L"yes" : L"no");
  return result ? 0 : 1;
}

int CopyTemplates() {
  wchar_t templates[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, templates, MAX_PATH);
  ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC(templates, MAX_PATH, L"");
  ZERA_TOOLS_FILE_ADD_DIR_UC(templates, MAX_PATH, L"templates");
  const std::wstring folder = DataFolder() + L"templates\\";
  Print(L"copy", templates);
  Print(L"to", folder);
  return CopyAll(templates, folder.c_str(), 0) ? 0 : 1;
}

int Export() {
  SettingsText settings;
  settings.Add([](wchar_t* to, std::size_t free, std::size_t* count) {
    return ZERA_TOOLS_BUFWRITE_SECTION_UC(L"View", to, free, count);
  });
  settings.Add([](wchar_t* to, std::size_t free, std::size_t* count) {
    return ZERA_TOOLS_BUFWRITE_STRING_UC(L"Title", to, free, L"Łódź at night", count);
  });
  settings.Add([](wchar_t* to, std::size_t free, std::size_t* count) {
    return ZERA_TOOLS_BUFWRITE_INT_UC(L"Pages", to, free, 12, count);
  });
  settings.Add([](wchar_t* to, std::size_t free, std::size_t* count) {
    return ZERA_TOOLS_BUFWRITE_DOUBLE_UC(L"Zoom", to, free, 1.5, count);
  });

  CStringA bytes;
  ZERA_TOOLS_UC_TO_MBC(settings.text(), bytes);
  const std::wstring file = DataFolder() + L"export.ini";
  const int written =
      settings.complete() && ZERA_TOOLS_FILE_CHECK_WRITE_UC(file.c_str()) &&
      ZERA_TOOLS_FILE_FROM_BUFFER_UC(file.c_str(), reinterpret_cast<const BYTE*>(bytes.GetString()),
                                     static_cast<unsigned long long>(bytes.GetLength()));
  Print(L"written", written ? file : L"nothing");

  wchar_t title[50];
  ReadString(L"View", L"Title", file.c_str(), L"none", title, 50);
  Print(L"title read back", title);
  return written ? 0 : 1;
}

}  // namespace viewer
