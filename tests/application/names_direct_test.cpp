// SPDX-License-Identifier: MIT
// What an application's files are named after, and the language table: text in, text out.
#include <gtest/gtest.h>

#include <new>
#include <random>
#include <string>

#include "application/FolderTail.h"
#include "application/LanguageTable.h"
#include "application/LocationText.h"
#include "application/ModulePath.h"

namespace {

using application::NamesOf;
using application::ToolsPosition;

std::wstring Upper(std::wstring text) {
  for (wchar_t& one : text) {
    if (one >= L'a' && one <= L'z') one = static_cast<wchar_t>(one - 32);
  }
  return text;
}

struct Row {
  const wchar_t* path;
  const wchar_t* tail;
  const wchar_t* base;
};

class Names : public ::testing::TestWithParam<Row> {};

TEST_P(Names, OfPath) {
  const Row& row = GetParam();
  const auto names = NamesOf(row.path, ToolsPosition(Upper(row.path)));
  EXPECT_EQ(std::wstring(names.tail), row.tail) << std::string(row.path, row.path + wcslen(row.path));
  EXPECT_EQ(std::wstring(names.baseName), row.base) << std::string(row.path, row.path + wcslen(row.path));
}

const Row kRows[] = {
    // The last folder.
    {L"C:\\Prog\\Viewer\\view.exe", L"\\Viewer", L"view"},
    {L"C:\\Viewer\\view.exe", L"\\Viewer", L"view"},
    {L"\\\\server\\share\\view.exe", L"\\share", L"view"},
    {L"C:\\Prog\\My Viewer 2.0\\view.exe", L"\\My Viewer 2.0", L"view"},
    // From the folder before "\TOOLS" on, in the module's own case.
    {L"C:\\Prog\\Maker\\TOOLS\\Viewer\\view.exe", L"\\Maker\\TOOLS\\Viewer", L"view"},
    {L"c:\\prog\\Maker\\tools\\viewer\\View.exe", L"\\Maker\\tools\\viewer", L"View"},
    {L"C:\\Prog\\Maker\\ToOlS\\Viewer\\view.exe", L"\\Maker\\ToOlS\\Viewer", L"view"},
    {L"C:\\Prog\\Maker\\Tools2\\Viewer\\view.exe", L"\\Maker\\Tools2\\Viewer", L"view"},
    {L"C:\\Maker\\TOOLS\\view.exe", L"\\Maker\\TOOLS", L"view"},
    {L"C:\\Maker\\TOOLS\\a\\b\\c\\view.exe", L"\\Maker\\TOOLS\\a\\b\\c", L"view"},
    {L"\\\\server\\share\\TOOLS\\view.exe", L"\\share\\TOOLS", L"view"},
    // Only the first one counts.
    {L"C:\\A\\TOOLS\\B\\TOOLS\\C\\v.exe", L"\\A\\TOOLS\\B\\TOOLS\\C", L"v"},
    {L"C:\\TOOLS\\A\\TOOLS\\B\\v.exe", L"\\B", L"v"},
    // At the front there is no folder before it.
    {L"C:\\TOOLS\\Viewer\\view.exe", L"\\Viewer", L"view"},
    {L"C:\\TOOLS\\view.exe", L"\\TOOLS", L"view"},
    {L"\\TOOLS\\d\\view.exe", L"\\d", L"view"},
    {L"\\\\TOOLS\\share\\d\\view.exe", L"\\\\TOOLS\\share\\d", L"view"},
    // Part of a longer name, at its beginning only.
    {L"C:\\A\\MYTOOLS\\B\\v.exe", L"\\B", L"v"},
    {L"C:\\A\\B\\toolsview.exe", L"\\B", L"toolsview"},
    {L"C:\\Prog\\toolsview.exe", L"\\Prog", L"toolsview"},
    {L"C:\\A/TOOLS\\B\\v.exe", L"\\B", L"v"},
    // Modules in a root, or without a folder.
    {L"C:\\view.exe", L"C:", L"view"},
    {L"C:\\toolsview.exe", L"C:", L"toolsview"},
    {L"\\x\\view.exe", L"\\x", L"view"},
    {L"\\x\\tools.exe", L"\\x", L"tools"},
    {L"\\view.exe", L"", L""},
    {L"view.exe", L"", L""},
    {L"C:view.exe", L"", L""},
    {L"", L"", L""},
    // Periods.
    {L"C:\\P\\V\\view.2.exe", L"\\V", L"view.2"},
    {L"C:\\P\\V\\view", L"\\V", L"view"},
    {L"C:\\P\\V\\view.", L"\\V", L"view"},
    {L"C:\\P\\V\\.exe", L"\\V", L".exe"},
    {L"C:\\P\\V\\..exe", L"\\V", L"."},
    {L"C:\\P\\V\\.view.exe", L"\\V", L".view"},
    {L"C:\\P\\V.1\\view", L"\\V.1", L"view"},
    {L"C:\\P\\V\\", L"\\V", L""},
};
INSTANTIATE_TEST_SUITE_P(Paths, Names, ::testing::ValuesIn(kRows));

// The same told step by step with string objects, to compare random paths with.
std::pair<std::wstring, std::wstring> Told(const std::wstring& path) {
  const std::wstring upper = Upper(path);
  const std::size_t tools = upper.find(L"\\TOOLS");
  int from = -1;
  if (tools != std::wstring::npos) {
    const std::wstring left = upper.substr(0, tools);
    for (int i = 0; i < static_cast<int>(left.size()); ++i) {
      if (left[static_cast<std::size_t>(i)] == L'\\') from = i;
    }
  }
  std::wstring tail, base;
  const std::size_t end = path.find_last_of(L'\\');
  if (end != std::wstring::npos && end > 0) {
    tail = path.substr(0, end);
    base = path.substr(end + 1);
    const std::size_t last = tail.find_last_of(L'\\');
    if (last != std::wstring::npos && last > 0) {
      tail = tail.substr(from >= 0 ? static_cast<std::size_t>(from) : last);
    }
    const std::size_t period = base.find_last_of(L'.');
    if (period != std::wstring::npos && period > 0) base = base.substr(0, period);
  }
  return {tail, base};
}

TEST(NamesRandom, AreAsToldStepByStep) {
  std::mt19937 random(7);
  const wchar_t* const pieces[] = {L"\\", L"\\", L"TOOLS",  L"\\tools", L".",
                                   L"C:", L"ab", L"\\TooL", L"S",       L"ä"};
  int withTools = 0;
  for (int round = 0; round < 200000; ++round) {
    std::wstring path;
    for (unsigned count = random() % 12; count > 0; --count) path += pieces[random() % std::size(pieces)];
    const std::size_t position = ToolsPosition(Upper(path));
    withTools += position != std::wstring::npos;
    const auto names = NamesOf(path, position);
    const auto told = Told(path);
    ASSERT_EQ(std::wstring(names.tail), told.first) << round;
    ASSERT_EQ(std::wstring(names.baseName), told.second) << round;
  }
  EXPECT_GT(withTools, 10000);
}

TEST(LanguageTable, NumbersAndCodes) {
  const std::wstring codes[] = {L"DEU", L"ENG", L"FRA", L"NLD", L"ITA", L"ESP", L"PTG",
                                L"SVE", L"NOR", L"CHS", L"KOR", L"JPN", L"BGR"};
  for (unsigned number = 0; number < 13; ++number) {
    ASSERT_NE(application::CodeOf(number), nullptr) << number;
    EXPECT_EQ(application::CodeOf(number), codes[number]) << number;
    EXPECT_EQ(application::NumberOf(codes[number]), static_cast<int>(number));
  }
  for (const unsigned none : {13u, 14u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(application::CodeOf(none), nullptr) << none;
  }
  for (const wchar_t* const other : {L"GER", L"", L"EN", L"ENGL", L"ENG ", L" ENG", L"fra", L"XYZ"}) {
    EXPECT_EQ(application::NumberOf(other), 0);
  }
}

TEST(LanguageTable, CodesLieInTheirOrderWithTheAliasAmongThem) {
  std::wstring all;
  for (const auto& code : application::kCodes) all += code;
  EXPECT_EQ(all, L"DEUENGFRAGERNLDITAESPPTGSVENORCHSKORJPNBGR");
  EXPECT_EQ(sizeof application::kCodes, 14u * 4 * sizeof(wchar_t)) << "each with its terminator alone";
}

TEST(LocationText, IsEmptyAtFirstAndGrowsAtItsEnd) {
  using application::LocationText;
  alignas(LocationText) volatile unsigned char memory[sizeof(LocationText)];
  for (volatile unsigned char& byte : memory) byte = 0xCD;
  LocationText& text = *new (const_cast<unsigned char*>(memory)) LocationText;
  EXPECT_STREQ(static_cast<const wchar_t*>(text), L"");
  EXPECT_TRUE(text.view().empty());
  EXPECT_STREQ(static_cast<const wchar_t*>(text.Append(L"ab").Append(L"").Append(L"c")), L"abc");
  EXPECT_EQ(LocationText::kShellFolder, 260u) << "what the shell may write";
}

// Shorter than what is to be taken away: cut off by the buffer.
TEST(ModulePath, HasNothingLeftThatItDoesNotHave) {
  const application::ModulePath<4> path(nullptr);
  ASSERT_EQ(path.view().size(), 3u);
  EXPECT_EQ(path.Without(2), path.view().substr(0, 1));
  EXPECT_TRUE(path.Without(3).empty());
  EXPECT_TRUE(path.Without(4).empty());
}

}  // namespace
