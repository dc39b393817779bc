// SPDX-License-Identifier: MIT
// Paths as text through the layer: the answers are those of the exports, for each kind of argument.
#include <gtest/gtest.h>

#include <ZERATools/zera.hpp>

#include <string>

namespace {

using namespace zera;  // NOLINT: as a host might

TEST(ZeraPath, TakesPartsOfBothKindsOfText) {
  const std::wstring wide = L"C:\\data\\run.ini";
  const std::string narrow = "C:\\data\\run.ini";
  EXPECT_EQ(L"C:", path::drive(wide));
  EXPECT_EQ("C:", path::drive(narrow));
  EXPECT_EQ(L"\\data\\", path::directory(wide));
  EXPECT_EQ("\\data\\", path::directory(narrow));
  EXPECT_EQ(L"run", path::name(wide));
  EXPECT_EQ("run", path::name(narrow));
  EXPECT_EQ(L".ini", path::extension(wide));
  EXPECT_EQ(".ini", path::extension(narrow));
  EXPECT_EQ(L"C:\\data\\", path::folder(wide));
  EXPECT_EQ("C:\\data\\", path::folder(narrow));
  EXPECT_EQ(L"run.ini", path::file(wide));
  EXPECT_EQ("run.ini", path::file(narrow));
}

TEST(ZeraPath, PutsPartsInPlace) {
  const wchar_t* const wide = L"C:\\data\\run.ini";
  const char* const narrow = "C:\\data\\run.ini";
  EXPECT_EQ(L"D:\\data\\run.ini", path::with_drive(wide, L"D:"));
  EXPECT_EQ("D:\\data\\run.ini", path::with_drive(narrow, "D:"));
  EXPECT_EQ(L"C:\\new\\run.ini", path::with_directory(wide, L"\\new\\"));
  EXPECT_EQ("C:\\new\\run.ini", path::with_directory(narrow, "\\new\\"));
  EXPECT_EQ(L"E:\\new\\run.ini", path::with_folder(wide, L"E:\\new\\"));
  EXPECT_EQ("E:\\new\\run.ini", path::with_folder(narrow, "E:\\new\\"));
  EXPECT_EQ(L"C:\\data\\a much longer name.ini", path::with_name(wide, L"a much longer name"));
  EXPECT_EQ("C:\\data\\a much longer name.ini", path::with_name(narrow, "a much longer name"));
  EXPECT_EQ(L"C:\\data\\run.log", path::with_extension(wide, L".log"));
  EXPECT_EQ("C:\\data\\run.log", path::with_extension(narrow, ".log"));
  EXPECT_EQ(L"C:\\data\\view.exe", path::with_file(wide, L"view.exe"));
  EXPECT_EQ("C:\\data\\view.exe", path::with_file(narrow, "view.exe"));
}

// What the export makes of it is the oracle: the layer must give the same text, whatever the room.
template <class Char, class Export>
std::basic_string<Char> Direct(Export function, const Char* path, const Char* text) {
  Char buffer[1024];
  std::char_traits<Char>::copy(buffer, path, std::char_traits<Char>::length(path) + 1);
  function(buffer, 1024, text);
  return buffer;
}

TEST(ZeraPath, AddsAsTheExportsDo) {
  const wchar_t* const wide = L"C:\\data\\run.ini";
  const char* const narrow = "C:\\data\\run.ini";
  EXPECT_EQ(Direct(ZERA_TOOLS_FILE_ADD_DIR_UC, wide, L"sub"), path::add_directory(wide, L"sub"));
  EXPECT_EQ(Direct(ZERA_TOOLS_FILE_ADD_DIR, narrow, "sub"), path::add_directory(narrow, "sub"));
  EXPECT_EQ(Direct(ZERA_TOOLS_FILE_ADD_NAME_UC, wide, L"-2"), path::add_name(wide, L"-2"));
  EXPECT_EQ(Direct(ZERA_TOOLS_FILE_ADD_NAME, narrow, "-2"), path::add_name(narrow, "-2"));
  EXPECT_EQ(L"C:\\data\\run007.ini", path::add_index(wide, 7, 3));
  EXPECT_EQ("C:\\data\\run007.ini", path::add_index(narrow, 7, 3));
}

TEST(ZeraPath, AViewEndsWhereItEnds) {
  const std::wstring_view wide = std::wstring_view(L"C:\\data\\run.ini").substr(0, 11);
  EXPECT_EQ(L"run", path::file(wide));
  const std::string_view narrow = std::string_view("C:\\data\\run.ini").substr(0, 11);
  EXPECT_EQ("run", path::file(narrow));
  const std::wstring name(200, L'n');
  const std::wstring more = L"C:\\" + name + L"\\" + name + L".ini";
  EXPECT_EQ(name, path::name(std::wstring_view(more))) << "longer than the room without the heap";
}

TEST(ZeraPath, EveryComponentAtItsLimitFits) {
  const std::wstring part(253, L'd');
  const std::wstring longest =
      L"C:\\" + part + L"\\" + std::wstring(255, L'n') + L"." + std::wstring(254, L'e');
  EXPECT_EQ(longest, path::with_drive(longest, L"C:"));
  EXPECT_EQ(L"." + std::wstring(254, L'e'), path::extension(longest));
}

}  // namespace
