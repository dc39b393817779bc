// SPDX-License-Identifier: MIT
// UTF-16 text as hexadecimal numbers.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <random>
#include <string>

#include "Conversions.h"
#include "support/ImportHook.h"

using namespace conversions;

namespace {

std::wstring Hex(const std::wstring& text) {
  std::wstring hex;
  for (const wchar_t unit : text) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(unit));
    if (!hex.empty()) hex += L' ';
    for (const char* digit = digits; *digit; ++digit) hex += static_cast<wchar_t>(*digit);
  }
  return hex;
}

TEST(HexText, KnownTexts) {
  EXPECT_EQ(Convert(UcToHex, std::wstring(L"Hi")), L"48 69");
  EXPECT_EQ(Convert(UcToHex, std::wstring(L"\u00E9")), L"E9");
  EXPECT_EQ(Convert(UcToHex, std::wstring(L"")), L"");
  EXPECT_EQ(Convert(UcToHex, std::wstring(L"\u0001\uFFFF\u0FFF")), L"1 FFFF FFF");
  EXPECT_EQ(Convert(UcToHex, std::wstring(L"\U0001F600")), L"D83D DE00");
}

TEST(HexText, WhatIsRead) {
  const std::wstring nul(1, L'\0');
  const struct {
    const wchar_t* text;
    std::wstring expected;
  } rows[] = {
      {L"", L""},
      {L"48 69", L"Hi"},
      {L"0048 000069", L"Hi"},
      {L"e9 E9", L"\u00E9\u00E9"},
      {L"48 69 ", L"Hi"},
      {L" 48 69", L""},
      {L"48  69", L"H"},
      {L"  ", L""},
      {L"48 ZZ 49", L"H" + nul + L"I"},
      {L"ZZ", nul},
      {L"48 0 49", L"H" + nul + L"I"},
      // The C runtime's numbers: a sign, a prefix, other white space before and anything behind.
      {L"0x48 0X69", L"Hi"},
      {L"+48 -1", L"H\uFFFF"},
      {L"\t48 \n69", L"Hi"},
      {L"48\t69", L"H"},
      {L"48ZZ 69", L"Hi"},
      {L"\t", nul},
      {L"g", nul},
      // The low half of a longer number.
      {L"10048 FFFF0069", L"Hi"},
      {L"D83D DE00", L"\U0001F600"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Convert(HexToUc, std::wstring(row.text)), row.expected) << ::testing::PrintToString(row.text);
  }
}

// The result has no room to spare: the last numbers are written otherwise than those before them.
TEST(HexText, ShortNumbersAtTheEnd) {
  const std::wstring units = L"\u0001\u0020\u0FFF\uFFFF";
  for (unsigned choice = 0; choice < 1024; ++choice) {
    std::wstring text;
    for (int i = 0; i < 5; ++i) text += units[choice >> 2 * i & 3];
    ASSERT_EQ(Convert(UcToHex, text), Hex(text)) << choice;
  }
}

TEST(HexText, EveryUnitSurvivesTheWayThereAndBack) {
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    const std::wstring text(1, static_cast<wchar_t>(unit));
    ASSERT_EQ(Convert(HexToUc, Convert(UcToHex, text)), text) << unit;
  }
}

TEST(HexText, RandomTextsSurviveTheWayThereAndBack) {
  std::mt19937 random(117);
  for (int round = 0; round < 1000; ++round) {
    std::wstring text(random() % 60, L'\0');
    for (wchar_t& unit : text) unit = static_cast<wchar_t>(1 + random() % 0xFFFF);
    const std::wstring hex = Convert(UcToHex, text);
    ASSERT_EQ(hex, Hex(text));
    ASSERT_EQ(Convert(HexToUc, hex), text);
  }
}

// Text of any characters: each result has one unit for each piece before the first empty one.
TEST(HexText, GarbageGivesAUnitForEachPiece) {
  std::mt19937 random(118);
  const std::wstring alphabet = L"0123456789abcdefXYZ+-x \t\u00E9\uFFFF";
  for (int round = 0; round < 2000; ++round) {
    std::wstring text(random() % 40, L'\0');
    for (wchar_t& unit : text) unit = alphabet[random() % alphabet.size()];
    std::size_t pieces = 0;
    for (std::size_t start = 0; start < text.size() && text[start] != L' '; ++pieces) {
      const std::size_t blank = text.find(L' ', start);
      if (blank == text.npos)
        start = text.size();
      else
        start = blank + 1;
    }
    ASSERT_EQ(Convert(HexToUc, text).size(), pieces) << ::testing::PrintToString(text);
  }
}

// The runtime reads what is not plain digits. It is handed each such piece with its length, so that it never
// looks through the rest of a text.
std::size_t read;
decltype(&__stdio_common_vswscanf) original;
int __cdecl CountRead(unsigned __int64 options, const wchar_t* text, size_t length, const wchar_t* format,
                      _locale_t locale, va_list arguments) {
  read += length;
  return original(options, text, length, format, locale, arguments);
}

TEST(HexText, LongTextsTakeLinearWork) {
  const std::size_t length = 100'000;
  const std::wstring text(length, L'\u65E5');
  const std::wstring hex = Convert(UcToHex, text);
  ASSERT_EQ(hex.size(), 5 * length - 1);
  test::ImportHook hook("__stdio_common_vswscanf", &CountRead);
  original = hook.Original<decltype(__stdio_common_vswscanf)>();
  read = 0;
  test::HeapWatch heap;
  CStringW back;
  HexToUc(hex.c_str(), back);
  EXPECT_EQ(back.GetLength(), static_cast<int>(length));
  EXPECT_EQ(read, 0u);
  EXPECT_EQ(heap.Allocations(), 0);

  std::wstring prefixed;
  for (std::size_t i = 0; i < length; ++i) prefixed += L"0x41 ";
  HexToUc(prefixed.c_str(), back);
  EXPECT_EQ(back.GetLength(), static_cast<int>(length));
  EXPECT_EQ(read, 4 * length);
}

}  // namespace
