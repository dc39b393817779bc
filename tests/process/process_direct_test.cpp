// SPDX-License-Identifier: MIT
// What the process tools are made of: names compared, and trying again within a budget.
#include <gtest/gtest.h>

#include <locale.h>

#include <string>
#include <vector>

#include "process/Names.h"
#include "process/Retry.h"

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

TEST(ProcessRetry, EndsWithTheFirstSuccess) {
  for (int needed = 1; needed <= 5; ++needed) {
    int attempts = 0;
    std::vector<unsigned> sleeps;
    EXPECT_TRUE(process::RetryWithin(
        100, 10, [&] { return ++attempts == needed; }, [&](unsigned time) { sleeps.push_back(time); }));
    EXPECT_EQ(attempts, needed);
    EXPECT_EQ(sleeps, std::vector<unsigned>(static_cast<std::size_t>(needed) - 1, 10));
  }
}

TEST(ProcessRetry, SleepsOneStepPastTheBudget) {
  const struct {
    unsigned budget, step;
    int attempts;
  } rows[] = {{2000, 10, 201}, {0, 10, 1}, {9, 10, 1}, {10, 10, 2}, {11, 10, 2}, {100, 30, 4}};
  for (const auto& row : rows) {
    int attempts = 0, sleeps = 0;
    EXPECT_FALSE(process::RetryWithin(
        row.budget, row.step, [&] { return ++attempts, false; }, [&](unsigned) { ++sleeps; }));
    EXPECT_EQ(attempts, row.attempts);
    EXPECT_EQ(sleeps, row.attempts);
  }
}

}  // namespace
