// SPDX-License-Identifier: MIT
// Splitting, composing and numbering of paths, without the platform.
#include "file/Path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

namespace {

using Text = file::Text<char>;

// A code page of this test: only '<' leads, and takes whatever follows.
bool Leads(char one) {
  return one == '<';
}
bool NoneLeads(char) {
  return false;
}

TEST(Split, PartsAreTheWholePathInOrder) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string path;
    for (unsigned length = random() % 12; length > 0; --length) path += "\\/.:a<"[random() % 6];
    const auto parts = file::Split(Text(path), Leads);
    std::string joined(parts.drive);
    joined += parts.directory;
    joined += parts.name;
    joined += parts.extension;
    ASSERT_EQ(joined, path);
    ASSERT_TRUE(parts.extension.empty() || parts.extension[0] == '.') << path;
    ASSERT_TRUE(parts.drive.empty() || parts.drive.size() == 2) << path;
  }
}

TEST(Split, SecondHalvesAreOrdinary) {
  const auto parts = file::Split(Text("a<\\b<.c"), Leads);
  EXPECT_EQ(parts.directory, "");
  EXPECT_EQ(parts.name, "a<\\b<.c");
  EXPECT_EQ(file::Split(Text("a<"), Leads).name, "a<");
  EXPECT_EQ(file::Split(Text("<<\\x"), Leads).directory, "<<\\") << "a lead byte may be the second half";
}

TEST(Split, LimitsCountEachPart) {
  const std::string longest(255, 'x');
  EXPECT_TRUE(file::Split(Text(longest), NoneLeads).Fit());
  EXPECT_FALSE(file::Split(Text(longest + "x"), NoneLeads).Fit());
  EXPECT_TRUE(
      file::Split(Text("C:" + longest.substr(1) + "\\" + longest + "." + longest.substr(1)), NoneLeads)
          .Fit());
  EXPECT_FALSE(file::Split(Text(longest + "\\"), NoneLeads).Fit());
  EXPECT_FALSE(file::Split(Text("." + longest), NoneLeads).Fit());
}

TEST(EndsInSeparator, LooksAtWholeCharacters) {
  EXPECT_FALSE(file::EndsInSeparator(Text(""), Leads));
  EXPECT_TRUE(file::EndsInSeparator(Text("a\\"), Leads));
  EXPECT_TRUE(file::EndsInSeparator(Text("/"), Leads));
  EXPECT_FALSE(file::EndsInSeparator(Text("a<\\"), Leads));
  EXPECT_TRUE(file::EndsInSeparator(Text("a<\\\\"), Leads));
  EXPECT_TRUE(file::EndsInSeparator(Text("<<\\"), Leads));
  EXPECT_FALSE(file::EndsInSeparator(Text("a\\<"), Leads));
}

TEST(Change, FitsExactlyOrWritesNothing) {
  const std::string path = "C:\\data\\run.ini";
  const std::string expected = "C:\\data\\run-old-.ini";
  for (std::size_t capacity = 0; capacity < 40; ++capacity) {
    char out[64];
    std::fill(out, out + 64, '#');
    path.copy(out, path.size());
    const bool fits = capacity > expected.size();
    EXPECT_EQ(file::Apply({11, 0, "-", Text("old"), "-"}, out, path.size(), capacity), fits);
    EXPECT_EQ(std::string(out, expected.size() + 2), fits ? expected + '\0' + '#' : path + "#######");
  }
}

// Long enough that copying forwards or backwards would overwrite what is still to be read.
TEST(Change, MovesATextThatLiesInTheBuffer) {
  std::string name;
  for (int i = 0; i < 200; ++i) name += static_cast<char>('a' + i * 7 % 26);
  for (std::size_t at = 0; at < 30; ++at) {
    for (const std::size_t from : {std::size_t{0}, at / 2, at}) {
      const std::string path = std::string(at, '#') + name + ".ini";
      char out[600] = {};
      path.copy(out, path.size());
      const Text text(out + at, name.size());
      EXPECT_TRUE(file::Apply({from, at - from, "<", text, ">"}, out, path.size(), sizeof out));
      EXPECT_EQ(out, std::string(from, '#') + "<" + name + ">" + name + ".ini") << at;
    }
  }
}

TEST(FormatIndex, AgreesWithTheRuntimesFormat) {
  std::mt19937 random(3);
  for (int i = 0; i < 20000; ++i) {
    const unsigned index = random() >> (random() % 32);
    const unsigned digits = random() % 254;
    char expected[300];
    const int length =
        std::snprintf(expected, sizeof expected, "%.*i", static_cast<int>(digits), static_cast<int>(index));
    const file::IndexText text = file::FormatIndex(index, digits);
    ASSERT_TRUE(text.fits);
    ASSERT_EQ(std::string(text.digits, text.length), std::string(expected, static_cast<std::size_t>(length)));
  }
}

TEST(FormatIndex, BeyondAnyNameDoesNotFit) {
  EXPECT_TRUE(file::FormatIndex(1, 255).fits);
  EXPECT_FALSE(file::FormatIndex(1, 256).fits);
  EXPECT_TRUE(file::FormatIndex(0xFFFFFFFF, 254).fits);
  EXPECT_FALSE(file::FormatIndex(0xFFFFFFFF, 255).fits);
  EXPECT_FALSE(file::FormatIndex(0, 0x7FFFFFFF).fits);
}

}  // namespace
