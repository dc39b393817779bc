// SPDX-License-Identifier: MIT
// Text into and out of UTF-8.
#include <gtest/gtest.h>
#include <windows.h>

#include <random>
#include <string>

#include "Conversions.h"
#include "support/CodePage.h"
#include "support/ImportHook.h"
#include "support/TempFolder.h"

using namespace conversions;

namespace {

struct Row {
  const wchar_t* wide;
  const char* utf8;
};

const Row kRows[] = {
    {L"", ""},
    {L"plain", "plain"},
    {L"Gr\u00FC\u00DFe",
     "Gr\xC3\xBC\xC3\x9F"
     "e"},
    {L"\u20AC", "\xE2\x82\xAC"},
    {L"\u65E5\u672C", "\xE6\x97\xA5\xE6\x9C\xAC"},
    {L"\U0001F600!", "\xF0\x9F\x98\x80!"},
    {L"\x7F\x80\x7FF\x800\xFFFD", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD"},
};

TEST(Utf8, KnownTexts) {
  for (const Row& row : kRows) {
    EXPECT_EQ(Convert(UcToUtf8, std::wstring(row.wide)), row.utf8);
    EXPECT_EQ(Convert(Utf8ToUc, std::string(row.utf8)), row.wide);
  }
}

TEST(Utf8, UnpairedSurrogatesBecomeReplacements) {
  const wchar_t high[] = {L'a', 0xD800, L'b', 0}, low[] = {0xDC00, 0}, swapped[] = {0xDC00, 0xD800, 0};
  EXPECT_EQ(Convert(UcToUtf8, std::wstring(high)),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(Convert(UcToUtf8, std::wstring(low)), "\xEF\xBF\xBD");
  EXPECT_EQ(Convert(UcToUtf8, std::wstring(swapped)), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

// An encoder of its own for units that pair up.
std::string Encode(const std::wstring& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = text[i];
    if (code >= 0xD800 && code < 0xDC00) code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00u);
    const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
      bytes += static_cast<char>(code);
    } else if (code < 0x800) {
      bytes += static_cast<char>(0xC0 | code >> 6), tail(0);
    } else if (code < 0x10000) {
      bytes += static_cast<char>(0xE0 | code >> 12), tail(6), tail(0);
    } else {
      bytes += static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0);
    }
  }
  return bytes;
}

std::wstring RandomText(std::mt19937& random) {
  std::wstring text;
  for (std::size_t count = random() % 80; count > 0; --count) {
    const auto unit = static_cast<wchar_t>(1 + random() % 0xFFFF);
    if (unit >= 0xD800 && unit < 0xE000) {
      text += static_cast<wchar_t>(0xD800 + random() % 0x400);
      text += static_cast<wchar_t>(0xDC00 + random() % 0x400);
    } else {
      text += unit;
    }
  }
  return text;
}

TEST(Utf8, RandomTextsSurviveTheWayThereAndBack) {
  std::mt19937 random(8);
  for (int round = 0; round < 2000; ++round) {
    const std::wstring text = RandomText(random);
    const std::string bytes = Convert(UcToUtf8, text);
    ASSERT_EQ(bytes, Encode(text));
    ASSERT_EQ(Convert(Utf8ToUc, bytes), text);
  }
}

TEST(Utf8, InvalidBytesAreThePlatformsAffair) {
  std::mt19937 random(88);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes(random() % 60, '\0');
    for (char& byte : bytes) byte = static_cast<char>(1 + random() % 255);
    // Zeroed: Wine takes a terminator behind half a sequence for a part of it and writes none.
    wchar_t expected[128] = {};
    ASSERT_GT(::MultiByteToWideChar(CP_UTF8, 0, bytes.c_str(), -1, expected, ARRAYSIZE(expected)), 0);
    ASSERT_EQ(Convert(Utf8ToUc, bytes), expected);
  }
}

TEST(Utf8, AnsiVariantsGoThroughTheCodePage) {
  std::mt19937 random(113);
  for (int round = 0; round < 500; ++round) {
    const std::wstring text = RandomText(random);
    const std::string ansi = test::Ansi(text);
    const std::wstring wide = test::Wide(ansi);
    ASSERT_EQ(Convert(MbcToUtf8, ansi), Convert(UcToUtf8, std::wstring(wide.c_str())));
    ASSERT_EQ(Convert(Utf8ToMbc, Encode(text)), ansi);
  }
}

TEST(Utf8, KnownAnsiText) {
  const test::LocalText& local = test::Local();
  EXPECT_EQ(Convert(MbcToUtf8, local.bytes), local.utf8);
  EXPECT_EQ(Convert(Utf8ToMbc, local.utf8), local.bytes);
  if (::GetACP() != 932) return;
  // 0xB1 in Japanese text is a half-width letter.
  EXPECT_EQ(Convert(MbcToUtf8, std::string("\x93\xFA\xB1")), "\xE6\x97\xA5\xEF\xBD\xB1");
  EXPECT_EQ(Convert(Utf8ToMbc, std::string("\xE6\x97\xA5\xEF\xBD\xB1")), "\x93\xFA\xB1");
}

// Each conversion asks the platform twice: for the size, then for the text.
struct Call {
  UINT codePage;
  DWORD flags;
  int length;
  int size;
};
std::vector<Call> calls;
decltype(&MultiByteToWideChar) original;
int WINAPI Record(UINT codePage, DWORD flags, LPCCH text, int length, LPWSTR out, int size) {
  calls.push_back({codePage, flags, length, size});
  return original(codePage, flags, text, length, out, size);
}

TEST(Utf8, IsMeasuredFirst) {
  test::ImportHook hook("MultiByteToWideChar", &Record);
  original = hook.Original<decltype(MultiByteToWideChar)>();
  calls.clear();
  EXPECT_EQ(Convert(Utf8ToUc, std::string("\xC3\xBC.")), L"\u00FC.");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].size, 0);
  EXPECT_EQ(calls[1].size, 3);
  for (const Call& call : calls) {
    EXPECT_EQ(call.codePage, 65001u);
    EXPECT_EQ(call.flags, 0u);
    EXPECT_EQ(call.length, -1);
  }
}

decltype(&WideCharToMultiByte) originalBack;
int WINAPI RecordBack(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR out, int size,
                      LPCCH replacement, LPBOOL replaced) {
  calls.push_back({codePage, flags, length, size});
  EXPECT_EQ(replacement, nullptr);
  EXPECT_EQ(replaced, nullptr);
  return originalBack(codePage, flags, text, length, out, size, replacement, replaced);
}

TEST(Utf8, IsMeasuredFirstOnTheWayBackToo) {
  test::ImportHook hook("WideCharToMultiByte", &RecordBack);
  originalBack = hook.Original<decltype(WideCharToMultiByte)>();
  calls.clear();
  EXPECT_EQ(Convert(UcToUtf8, std::wstring(L"\u00FC.")), "\xC3\xBC.");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].size, 0);
  EXPECT_EQ(calls[1].size, 4);
  for (const Call& call : calls) {
    EXPECT_EQ(call.codePage, 65001u);
    EXPECT_EQ(call.flags, 0u);
    EXPECT_EQ(call.length, -1);
  }
}

// A platform that cannot convert gives an empty text, not the one before.
int failAt;
int WINAPI Fail(UINT codePage, DWORD flags, LPCCH text, int length, LPWSTR out, int size) {
  return --failAt == 0 ? 0 : original(codePage, flags, text, length, out, size);
}

TEST(Utf8, FailingPlatformGivesAnEmptyText) {
  test::ImportHook hook("MultiByteToWideChar", &Fail);
  original = hook.Original<decltype(MultiByteToWideChar)>();
  for (int at = 1; at <= 2; ++at) {
    failAt = at;
    EXPECT_EQ(Convert(Utf8ToUc, std::string("text")), L"") << at;
  }
  // What stands before the buffer is none of its text.
  test::FixedManager<wchar_t, 16> manager;
  test::HostString<wchar_t> out(manager);
  wchar_t* const before = reinterpret_cast<wchar_t*>(out.header() + 1) - 2;
  before[0] = before[1] = 0;
  failAt = 2;
  Utf8ToUc("text", out.object());
  EXPECT_EQ(out.object().GetLength(), 0);
}

}  // namespace
