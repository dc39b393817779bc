// SPDX-License-Identifier: MIT
// What the process tools are made of: names compared, and trying again within a budget.
#include <gtest/gtest.h>

#include <locale.h>

#include <string>
#include <vector>

#include "process/Names.h"

namespace {

TEST(ProcessNames, NameStandsBehindTheLastBackslash) {
  EXPECT_STREQ(process::NameBehindBackslash(L"C:\\a\\b.exe"), L"b.exe");
  EXPECT_STREQ(process::NameBehindBackslash(L"\\b.exe"), L"b.exe");
  EXPECT_STREQ(process::NameBehindBackslash(L"C:\\a\\"), L"");
  EXPECT_STREQ(process::NameBehindBackslash(L"b.exe"), L"");
  EXPECT_STREQ(process::NameBehindBackslash(L"C:/a/b.exe"), L"");
  EXPECT_STREQ(process::NameBehindBackslash(L""), L"");
}

TEST(ProcessNames, EqualInUpperCase) {
  const struct {
    const wchar_t* a;
    const wchar_t* b;
    bool equal;
  } rows[] = {{L"", L"", true},
              {L"a", L"", false},
              {L"Ab.exe", L"aB.EXE", true},
              {L"ab", L"abc", false},
              {L"ab", L"ac", false},
              {L"[", L"{", false},
              {L"@", L"`", false},
              {L"\xE4", L"\xE4", true},
              {L"\xE4", L"\xF6", false},
              {L"\xD800", L"\xD800", true}};
  for (const auto& row : rows) {
    EXPECT_EQ(process::EqualInUpperCase(row.a, row.b), row.equal);
    EXPECT_EQ(process::EqualInUpperCase(row.b, row.a), row.equal);
  }
}

TEST(ProcessNames, LettersBeyondAsciiAreFoldedUnderEveryLocale) {
  EXPECT_TRUE(process::EqualInUpperCase(L"\xE4", L"\xC4"));
  EXPECT_TRUE(process::EqualInUpperCase(L"\x0436", L"\x0416"));
  ASSERT_NE(::setlocale(LC_CTYPE, "german"), nullptr);
  EXPECT_TRUE(process::EqualInUpperCase(L"\xE4", L"\xC4"));
  ::setlocale(LC_CTYPE, "C");
}

}  // namespace
