// SPDX-License-Identifier: MIT
// Which extensions pass a filter, in its two forms.
#include "file/ExtensionFilter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Filter = file::ExtensionFilter<wchar_t>;
using Text = file::Text<wchar_t>;

// Upper case of the alphabet alone, so that the test does not depend on the platform.
void Fold(const wchar_t* from, wchar_t* to, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) to[i] = from[i] >= L'a' && from[i] <= L'z' ? from[i] - 32 : from[i];
}

struct Row {
  std::wstring filter, extension;
  bool starDropped, asItIs;
};

const std::wstring kLongest = L"." + std::wstring(254, L'x');

const Row kRows[] = {
    {L".log", L".LOG", true, true},
    {L".LOG", L".log", true, true},
    {L"*.log", L".log", true, false},
    {L"**.log", L".log", false, false},
    {L"log", L".log", false, false},
    {L"*log", L".log", false, false},
    {L".lo", L".log", false, false},
    {L".logs", L".log", false, false},
    {L".log ", L".log", false, false},
    {L".*", L".log", true, false},
    {L".*", L"", true, false},
    {L"*.*", L".log", true, true},
    {L"*.*", L"", true, true},
    {L"**.*", L".log", false, false},
    {L"", L"", true, true},
    {L"", L".log", false, false},
    {L"*", L"", true, false},
    {L"*", L".log", false, false},
    {L"*", L".*", false, false},
    {L".", L".", true, true},
    {kLongest, kLongest, true, true},
    {L"*" + kLongest, kLongest, true, false},
    {kLongest + L"x", kLongest, false, false},
    {kLongest + L"x", kLongest + L"x", false, false},  // no extension is that long
};

TEST(ExtensionFilter, BothForms) {
  for (const Row& row : kRows) {
    const auto dropped = Filter::StarDropped(Text(row.filter), Fold);
    const auto taken = Filter::AsItIs(Text(row.filter), Fold);
    const std::string what(row.filter.begin(), row.filter.end());
    EXPECT_EQ(dropped.Matches(Text(row.extension), Fold), row.starDropped) << what;
    EXPECT_EQ(taken.Matches(Text(row.extension), Fold), row.asItIs) << what;
  }
}

TEST(ExtensionFilter, EmptyTextWithoutCharacters) {
  EXPECT_TRUE(Filter::StarDropped(Text(), Fold).Matches(Text(), Fold));
  EXPECT_FALSE(Filter::AsItIs(Text(), Fold).Matches(Text(L".x"), Fold));
}

}  // namespace
