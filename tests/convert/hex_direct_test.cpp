// SPDX-License-Identifier: MIT
// The pure parts of the hexadecimal text form and the table of signs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

#include "convert/Hex.h"
#include "convert/Signs.h"

namespace {

std::vector<std::wstring> Pieces(const std::wstring& text) {
  std::vector<std::wstring> pieces;
  convert::ForEachHexPiece(
      text.data(), text.data() + text.size(),
      [&](const wchar_t* start, std::size_t length) { pieces.emplace_back(start, length); });
  return pieces;
}

TEST(Hex, EveryUnitIsFormattedAsTheRuntimeFormatsIt) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    wchar_t digits[convert::kHexRoom];
    const wchar_t* const end = convert::FormatHex(static_cast<wchar_t>(unit), digits);
    ASSERT_EQ(end - digits, convert::HexLength(static_cast<wchar_t>(unit)) + 1);
    char expected[8];
    std::snprintf(expected, sizeof expected, "%X ", unit);
    ASSERT_EQ(std::wstring(static_cast<const wchar_t*>(digits), end),
              std::wstring(expected, expected + std::char_traits<char>::length(expected)));
  }
}

TEST(Hex, NothingIsWrittenBehindTheRoom) {
  for (const wchar_t unit : {L'\x1', L'\x12', L'\x123', L'\x1234'}) {
    wchar_t digits[convert::kHexRoom + 4];
    std::fill(std::begin(digits), std::end(digits), L'#');
    convert::FormatHex(unit, digits);
    EXPECT_EQ(std::wstring(digits + convert::kHexRoom, 4), L"####") << static_cast<int>(unit);
  }
}

TEST(Hex, PiecesEndAtTheFirstEmptyOne) {
  using List = std::vector<std::wstring>;
  const struct {
    const wchar_t* text;
    List pieces;
  } rows[] = {
      {L"", {}},
      {L" ", {}},
      {L" 48", {}},
      {L"48", {L"48"}},
      {L"48 ", {L"48"}},
      {L"48 69", {L"48", L"69"}},
      {L"48  69", {L"48"}},
      {L"48 69 ", {L"48", L"69"}},
      {L"48\t69 \n", {L"48\t69", L"\n"}},
      {L"a b c d", {L"a", L"b", L"c", L"d"}},
  };
  for (const auto& row : rows) EXPECT_EQ(Pieces(row.text), row.pieces) << ::testing::PrintToString(row.text);
}

// More than 32 bits are the runtime's own matter.
TEST(Hex, UpToEightDigitsAreReadWithoutTheRuntime) {
  for (const std::size_t length : {std::size_t{1}, std::size_t{7}, std::size_t{8}}) {
    unsigned int number = 0;
    EXPECT_TRUE(convert::ReadPlainHex(L"9abcdef01", length, number));
    EXPECT_EQ(number, 0x9ABCDEF0u >> (32 - 4 * length));
  }
  unsigned int number = 0;
  EXPECT_FALSE(convert::ReadPlainHex(L"9abcdef01", 9, number));
  EXPECT_FALSE(convert::ReadPlainHex(L"9", 0, number));
}

TEST(Signs, OnlyDoubleByteDegreesDropTheTextBefore) {
  for (const int page : {0, 874, 932, 936, 949, 950, 1252, 1361, 65001}) {
    for (const auto& signs : {convert::SignsOfUtf16(page), convert::SignsOfLatin1(page)}) {
      EXPECT_FALSE(signs.micro.dropsTextBefore) << page;
      EXPECT_EQ(signs.degree.dropsTextBefore, page >= 932 && page <= 950) << page;
    }
  }
}

}  // namespace
