// SPDX-License-Identifier: MIT
// Looking for a text in a path's extension, as a host calls it.
#include "CallLog.h"
#include "FileApi.h"
#include "support/CodePage.h"
#include "support/InvalidParameter.h"

namespace {

using test::CallLog;

class Extensions : public test::BothVariants {};
ZERA_BOTH_VARIANTS(Extensions);

TEST_P(Extensions, TextIsFoundAnywhereIgnoringCase) {
  const struct {
    const wchar_t *path, *text;
    int found;
  } cases[] = {
      {L"C:\\data\\run.txt", L"txt", 1},
      {L"C:\\data\\run.txt", L".txt", 1},
      {L"C:\\data\\run.txt", L"TX", 1},
      {L"C:\\data\\run.txt", L"t", 1},
      {L"C:\\data\\run.txt", L"T", 1},
      {L"C:\\data\\run.txt", L".", 1},
      {L"C:\\data\\run.txt", L"", 1},
      {L"C:\\data\\RUN.TXT", L"xt", 1},
      {L"C:\\data\\run.txt", L"tt", 0},
      {L"C:\\data\\run.txt", L"txts", 0},
      {L"C:\\data\\run.txt", L".txt.", 0},
      {L"C:\\data\\run.txt", L"run", 0},
      {L"C:\\data\\run.txt", L"*", 0},
      {L"data.ini", L"IN", 1},
      {L"readme", L"", 1},
      {L"readme", L"r", 0},
      {L"readme", L".", 0},
      {L"", L"", 1},
      {L"", L"x", 0},
      {L"a.tar.gz", L"gz", 1},
      {L"a.tar.gz", L"tar", 0},
      {L"C:\\v1.2\\readme", L"2", 0},
      {L"C:/v1.2/readme.md", L"MD", 1},
      {L"C:\\data\\", L"", 1},
      {L"name.", L".", 1},
      {L".ini", L"ini", 1},
      {L"C:.x", L"X", 1},
      {L"a. b", L" B", 1},
  };
  const CallLog log;
  for (const auto& one : cases) {
    EXPECT_EQ(api.HasExtension(one.path, one.text), one.found)
        << test::Ansi(one.path) << " <- " << test::Ansi(one.text);
  }
  EXPECT_EQ(log.Sequence("?FNDMsORWC"), "") << "text only";
}

TEST_P(Extensions, LettersOfTheCodePageFold) {
  const test::LocalText& local = test::Local();
  EXPECT_EQ(api.HasExtension(L"a." + local.wide + L"x", L"X"), 1);
  EXPECT_EQ(api.HasExtension(L"a." + local.wide + L"x", local.wide), 1);
  EXPECT_EQ(api.HasExtension(L"a.x" + local.wide, L"\\"), 0);
  if (!local.small.empty()) {
    EXPECT_EQ(api.HasExtension(L"a.x" + local.small, local.capital), 1);
    EXPECT_EQ(api.HasExtension(L"a." + local.capital + L"x", L"." + local.small + L"X"), 1);
  }
  if (::GetACP() == 932) {
    // Greek, Cyrillic and full-width Latin.
    EXPECT_EQ(api.HasExtension(L"a.\u03b1\u03b2", L"\u0391\u0392"), 1);
    EXPECT_EQ(api.HasExtension(L"a.\u0416", L"\u0436"), 1);
    EXPECT_EQ(api.HasExtension(L"a.\uff54\uff58\uff54", L"\uff34\uff38"), 1);
  } else if (::GetACP() == 1252) {
    EXPECT_EQ(api.HasExtension(L"a.\u00e4\u00f6", L"\u00c4\u00d6"), 1);
    EXPECT_EQ(api.HasExtension(L"a.\u00c4", L"\u00e4"), 1);
    EXPECT_EQ(api.HasExtension(L"a.\u00e4", L"a"), 0);
    EXPECT_EQ(api.HasExtension(L"a.\u00df", L"SS"), 0) << "one character stays one";
  }
}

TEST_P(Extensions, LongestExtensionAndTextAreCompared) {
  test::InvalidParameter handler;
  const std::wstring longest = L"." + std::wstring(253, L'x') + L"y";
  ASSERT_EQ(longest.size(), 255u);
  EXPECT_EQ(api.HasExtension(L"a" + longest, longest), 1);
  EXPECT_EQ(api.HasExtension(L"a" + longest, L"XY"), 1);
  EXPECT_EQ(api.HasExtension(L"a" + longest, longest + L"y"), 0);
  EXPECT_EQ(api.HasExtension(L"a" + longest, std::wstring(32766, L'x')), 0);
  EXPECT_EQ(handler.Count(), 0);
}

TEST_P(Extensions, OverlongComponentLeavesNoExtension) {
  test::InvalidParameter handler;
  const std::wstring tooLong(256, L'x');
  EXPECT_EQ(api.HasExtension(L"a." + tooLong, L"x"), 0);
  EXPECT_EQ(api.HasExtension(tooLong + L".txt", L"txt"), 0);
  EXPECT_EQ(api.HasExtension(L"\\" + tooLong + L"\\a.txt", L"txt"), 0);
  EXPECT_EQ(api.HasExtension(std::wstring(32763, L'x') + L".txt", L"txt"), 0);
  EXPECT_EQ(api.HasExtension(std::wstring(32763, L'x') + L".txt", L""), 1);
  const std::wstring all = L"C:\\" + std::wstring(253, L'd') + L"\\" + std::wstring(255, L'n') + L"." +
                           std::wstring(253, L'e') + L"y";
  EXPECT_EQ(api.HasExtension(all, L"y"), 1) << "all components at their limits";
  EXPECT_EQ(api.HasExtension(all + L"y", L"y"), 0);
  EXPECT_EQ(handler.Count(), 0);
}

TEST(ExtensionsWide, FoldingIsNotBoundToTheCodePage) {
  const auto has = test::Export<decltype(ZERA_TOOLS_FILE_HAS_EXTENSION_UC)>(1005);
  EXPECT_EQ(has(L"a.\u0436\u03b1", L"\u0416\u0391"), 1);
  EXPECT_EQ(has(L"a.\xD800x", L"\xD800X"), 1) << "a lone surrogate is a character like others";
  EXPECT_EQ(has(nullptr, L""), 1);
  EXPECT_EQ(has(nullptr, L"x"), 0);
  EXPECT_EQ(has(L"a.x", nullptr), 1);
}

}  // namespace
