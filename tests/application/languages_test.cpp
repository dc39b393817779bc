// SPDX-License-Identifier: MIT
// The language of the user interface, as a host sees it: the saved choice, and the language module.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include "Installation.h"
#include "support/Library.h"

namespace {

const auto GetMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC)>(202);
const auto GetUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC)>(203);
const auto Load = test::Export<decltype(ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL)>(204);
const auto SaveMbc = test::Export<decltype(ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC)>(205);
const auto SaveUc = test::Export<decltype(ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC)>(206);

const char* const kCodes[] = {"DEU", "ENG", "FRA", "NLD", "ITA", "ESP", "PTG",
                              "SVE", "NOR", "CHS", "KOR", "JPN", "BGR"};

// Wine keeps a profile file in the process for a moment; a new name for each file does without that.
class Language : public ::testing::Test {
 protected:
  std::wstring Settings(const std::string& text) {
    return temp_.File(std::to_wstring(++count_) + L".ini", text);
  }

  test::TempFolder temp_;
  int count_ = 0;
};

TEST_F(Language, IsReadFromTheSettingsFile) {
  struct Row {
    const char* text;
    int number;
  };
  const Row rows[] = {
      {"[Vorgaben]\r\nLanguage=DEU\r\n", 0},
      {"[Vorgaben]\r\nLanguage=GER\r\n", 0},
      {"[Vorgaben]\r\nLanguage=ger\r\n", 0},
      {"[Vorgaben]\r\nLanguage=Jpn\r\n", 11},
      {"[Vorgaben]\r\nLanguage=fra\r\n", 2},
      {"[vorgaben]\r\nLANGUAGE=BGR\r\n", 12},
      {"[Vorgaben]\r\nLanguage=XYZ\r\n", 0},
      {"[Vorgaben]\r\nLanguage=\r\n", 0},
      {"[Vorgaben]\r\nLanguage=1\r\n", 0},
      {"[Vorgaben]\r\nOther=ENG\r\n", 0},
      {"[Other]\r\nLanguage=ENG\r\n", 0},
      {"", 0},
      // Quotes keep the blanks, which the platform takes away otherwise.
      {"[Vorgaben]\r\nLanguage=\"ENG\"\r\n", 1},
      {"[Vorgaben]\r\nLanguage=\"ENG \"\r\n", 0},
      {"[Vorgaben]\r\nLanguage=\" ENG\"\r\n", 0},
      // Nine characters are read at most.
      {"[Vorgaben]\r\nLanguage=ENGENGENGENG\r\n", 0},
      {"[Vorgaben]\r\nLanguage=ENGLISH\r\n", 0},
      // The companion keys win, whole or not at all.
      {"[Vorgaben]\r\nLanguage=ENG\r\nLanguage_utf8=fra\r\n", 2},
      {"[Vorgaben]\r\nLanguage=ENG\r\nLanguage_utf8=FRAFRAFRAFRA\r\n", 0},
      {"[Vorgaben]\r\nLanguage=ENG\r\nLanguage_UC=4A 50 4E\r\n", 11},
      {"\xFF\xFE\x01\x02[[[[=\r\n\0\0\x80", 0},
  };
  for (const Row& row : rows) {
    const std::wstring file = Settings(row.text);
    EXPECT_EQ(GetUc(file.c_str()), row.number) << row.text;
    EXPECT_EQ(GetMbc(test::Ansi(file).c_str()), row.number) << row.text;
  }
}

TEST_F(Language, EveryCodeHasItsNumber) {
  for (int number = 0; number < 13; ++number) {
    const std::wstring file = Settings(std::string("[Vorgaben]\r\nLanguage=") + kCodes[number] + "\r\n");
    EXPECT_EQ(GetUc(file.c_str()), number);
    EXPECT_EQ(GetMbc(test::Ansi(file).c_str()), number);
  }
}

// The key with room for nine characters; its companions' texts are longer.
std::vector<DWORD> sizes;
DWORD WINAPI NoteSize(LPCWSTR, LPCWSTR, LPCWSTR, LPWSTR, DWORD size, LPCWSTR) {
  sizes.push_back(size);
  return 0;
}

TEST_F(Language, IsReadWithRoomForNineCharacters) {
  const test::ImportHook hook("GetPrivateProfileStringW", &NoteSize);
  sizes.clear();
  EXPECT_EQ(GetUc((temp_ / L"any.ini").c_str()), 0);
  EXPECT_EQ(sizes, (std::vector<DWORD>{100, 100, 10}));
}

TEST_F(Language, IsGermanWithoutAFile) {
  EXPECT_EQ(GetUc((temp_ / L"none.ini").c_str()), 0);
  EXPECT_EQ(GetUc((temp_ / L"no\\folder.ini").c_str()), 0);
  EXPECT_EQ(GetUc(temp_.path().c_str()), 0);
  EXPECT_EQ(GetMbc(nullptr), 0);
  EXPECT_EQ(GetUc(L""), 0);
}

TEST_F(Language, IsSavedAsACode) {
  for (const int number : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, -1, 13, 14, 1000, INT_MIN, INT_MAX}) {
    const bool known = number >= 0 && number <= 12;
    const std::string expected =
        std::string("[Vorgaben]\r\nLanguage=") + (known ? kCodes[number] : "DEU") + "\r\n";
    for (const bool wide : {true, false}) {
      const std::wstring file = temp_ / (std::to_wstring(++count_) + L".ini");
      EXPECT_EQ(wide ? SaveUc(number, file.c_str()) : SaveMbc(number, test::Ansi(file).c_str()), 1);
      EXPECT_EQ(test::ReadBytes(file), expected) << number;
      EXPECT_EQ(GetUc(file.c_str()), known ? number : 0);
    }
  }
}

TEST_F(Language, SavingKeepsTheRestOfTheFileAndEmptiesCompanions) {
  const std::wstring file = Settings(
      "[A]\r\nb=c\r\n[Vorgaben]\r\nLanguage=ENG\r\nLanguage_utf8=FRA\r\nLanguage_UC=4A 50 4E\r\nx=y\r\n");
  EXPECT_EQ(SaveUc(4, file.c_str()), 1);
  EXPECT_EQ(test::ReadBytes(file),
            "[A]\r\nb=c\r\n[Vorgaben]\r\nLanguage=ITA\r\nLanguage_utf8=\r\nLanguage_UC=\r\nx=y\r\n");
  EXPECT_EQ(GetUc(file.c_str()), 4);
}

TEST_F(Language, SavingReportsSuccessEvenWhereNothingCanBeWritten) {
  const std::wstring nowhere = temp_ / L"no\\folder.ini";
  EXPECT_EQ(SaveUc(4, nowhere.c_str()), 1);
  EXPECT_EQ(SaveMbc(4, test::Ansi(nowhere).c_str()), 1);
  EXPECT_TRUE(temp_.Entries().empty());
}

// Modules that load in place of the platform's answer, and every name that was asked for.
std::vector<std::wstring> asked;
std::wstring present;
const HMODULE kLoaded = reinterpret_cast<HMODULE>(0x7770000);
HMODULE WINAPI LoadPresent(const wchar_t* name) {
  asked.push_back(name);
  return present == name ? kLoaded : nullptr;
}

class LanguageModule : public ::testing::Test {
 protected:
  LanguageModule() {
    asked.clear();
    present.clear();
  }

  test::Installation installation_{L"C:\\Prog\\Viewer\\view.exe"};
  test::ImportHook load_{"LoadLibraryW", &LoadPresent};
  const HMODULE module_ = reinterpret_cast<HMODULE>(0x1234);
};

TEST_F(LanguageModule, NamesAreTriedInOrder) {
  for (unsigned number = 2; number <= 12; ++number) {
    const std::wstring code(kCodes[number], kCodes[number] + 3);
    const std::vector<std::wstring> names = {
        L"C:\\Prog\\Viewer\\view_" + code + L".dll", L"C:\\Prog\\Viewer\\view" + code + L".dll",
        L"C:\\Prog\\Viewer\\view_ENG.dll", L"C:\\Prog\\Viewer\\viewENG.dll"};
    present.clear();
    asked.clear();
    EXPECT_EQ(Load(module_, number), nullptr);
    EXPECT_EQ(asked, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
      present = names[i];
      asked.clear();
      EXPECT_EQ(Load(module_, number), kLoaded);
      EXPECT_EQ(asked, std::vector<std::wstring>(names.begin(), names.begin() + static_cast<int>(i) + 1));
    }
  }
  EXPECT_EQ(installation_.handles[0], module_);
  EXPECT_EQ(installation_.capacities[0], 260u);
}

TEST_F(LanguageModule, EnglishHasNoFallback) {
  EXPECT_EQ(Load(module_, 1), nullptr);
  EXPECT_EQ(asked,
            (std::vector<std::wstring>{L"C:\\Prog\\Viewer\\view_ENG.dll", L"C:\\Prog\\Viewer\\viewENG.dll"}));
}

TEST_F(LanguageModule, NoneForGermanAndUnknownNumbers) {
  for (const unsigned number : {0u, 13u, 14u, 0x80000001u, 0xFFFFFFFFu}) {
    EXPECT_EQ(Load(module_, number), nullptr) << number;
  }
  EXPECT_TRUE(asked.empty());
}

TEST_F(LanguageModule, NoneWithoutAModulePath) {
  installation_.module.clear();
  EXPECT_EQ(Load(module_, 2), nullptr);
  EXPECT_TRUE(asked.empty());
}

TEST_F(LanguageModule, LastFourCharactersAreReplacedWhateverTheyAre) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"X:\\a\\view.com1", L"X:\\a\\view._ENG.dll"},
                                                            {L"X:\\a\\view.so", L"X:\\a\\vie_ENG.dll"},
                                                            {L".exe", L"_ENG.dll"},
                                                            {L"abc", L"_ENG.dll"},
                                                            {L"X:\\a.b\\v.2.ocx", L"X:\\a.b\\v.2_ENG.dll"}};
  for (const auto& [module, name] : rows) {
    installation_.module = module;
    asked.clear();
    EXPECT_EQ(Load(module_, 1), nullptr);
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0], name);
  }
}

TEST_F(LanguageModule, PathIsReadUpTo259Characters) {
  installation_.module.assign(400, L'p');
  EXPECT_EQ(Load(module_, 12), nullptr);
  ASSERT_EQ(asked.size(), 4u);
  EXPECT_EQ(asked[0], std::wstring(255, L'p') + L"_BGR.dll");
}

TEST_F(LanguageModule, TakesNothingFromTheHeap) {
  const test::HeapWatch heap;
  Load(module_, 12);
  EXPECT_EQ(heap.Allocations(), 0);
}

// A real installation: the application's module and its language modules are libraries of resources.
class Installed : public ::testing::Test {
 protected:
  Installed() {
    Copy(L"view.exe");
    application_ = ::LoadLibraryW((temp_ / L"view.exe").c_str());
  }
  ~Installed() override { ::FreeLibrary(application_); }

  void Copy(const std::wstring& name) {
    wchar_t source[MAX_PATH];
    ::GetModuleFileNameW(nullptr, source, MAX_PATH);
    *std::wcsrchr(source, L'\\') = 0;
    ASSERT_TRUE(::CopyFileW((std::wstring(source) + L"\\test_language_module.dll").c_str(),
                            (temp_ / name).c_str(), TRUE));
  }

  // The name of the language module that is loaded, with a text out of it.
  std::wstring Loaded(unsigned number) {
    const HMODULE module = Load(application_, number);
    if (!module) return L"none";
    wchar_t path[MAX_PATH], text[10] = {};
    ::GetModuleFileNameW(module, path, MAX_PATH);
    ::LoadStringW(module, 1, text, 10);
    EXPECT_STREQ(text, L"text");
    EXPECT_TRUE(::FreeLibrary(module));
    EXPECT_EQ(::GetModuleHandleW(path), nullptr) << "the handle was not the only one";
    return std::wcsrchr(path, L'\\') + 1;
  }

  test::TempFolder temp_;
  HMODULE application_ = nullptr;
};

TEST_F(Installed, NothingToLoad) {
  ASSERT_NE(application_, nullptr);
  EXPECT_EQ(Loaded(1), L"none");
  EXPECT_EQ(Loaded(2), L"none");
}

TEST_F(Installed, FirstOfTheNamesThatIsThere) {
  Copy(L"viewENG.dll");
  EXPECT_EQ(Loaded(2), L"viewENG.dll");
  Copy(L"view_ENG.dll");
  EXPECT_EQ(Loaded(2), L"view_ENG.dll");
  Copy(L"viewFRA.dll");
  EXPECT_EQ(Loaded(2), L"viewFRA.dll");
  Copy(L"view_FRA.dll");
  EXPECT_EQ(Loaded(2), L"view_FRA.dll");
  EXPECT_EQ(Loaded(1), L"view_ENG.dll");
  EXPECT_EQ(Loaded(4), L"view_ENG.dll");
  EXPECT_EQ(Loaded(0), L"none");
}

TEST_F(Installed, WhatIsNoLibraryIsPassedOver) {
  temp_.File(L"view_FRA.dll", "no library");
  temp_.Folder(L"viewFRA.dll");
  Copy(L"viewENG.dll");
  EXPECT_EQ(Loaded(2), L"viewENG.dll");
}

TEST_F(Installed, NoModuleMeansTheExecutable) {
  const DWORD handles = test::OpenHandles();
  EXPECT_EQ(Load(nullptr, 2), nullptr);
  EXPECT_EQ(Load(reinterpret_cast<HMODULE>(0x10), 2), nullptr);
  EXPECT_EQ(test::OpenHandles(), handles);
}

}  // namespace
