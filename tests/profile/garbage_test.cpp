// SPDX-License-Identifier: MIT
// Settings files of any bytes: every reader gives something within its limits, and nothing is damaged.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <random>

#include "Settings.h"
#include "support/CodePage.h"
#include "support/GuardedBuffer.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

const auto ReadPlain = test::Export<decltype(ZERA_TOOLS_READ_STRING)>(50);
const auto ReadWide = test::Export<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050);
const auto ReadInt = test::Export<decltype(ZERA_TOOLS_READ_INT)>(51);
const auto ReadIntWide = test::Export<decltype(ZERA_TOOLS_READ_INT_UC)>(1051);
const auto ReadUint = test::Export<decltype(ZERA_TOOLS_READ_UINT)>(52);
const auto ReadWordWide = test::Export<decltype(ZERA_TOOLS_READ_WORD_UC)>(1058);
const auto ReadDouble = test::Export<decltype(ZERA_TOOLS_READ_DOUBLE)>(53);
const auto ReadFloatWide = test::Export<decltype(ZERA_TOOLS_READ_FLOAT_UC)>(1054);
const auto WriteWide = test::Export<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060);

// Reads every type from the file; results lie within limits, buffers keep theirs.
void ReadAll(const settings::File& file) {
  for (const std::size_t capacity : {1, 2, 16, 300}) {
    test::GuardedBuffer<char> plain(capacity);
    ReadPlain("S", "K", file.plain(), "default", plain.data(), capacity);
    EXPECT_TRUE(plain.Intact());
    EXPECT_LT(plain.text().size(), capacity);
    test::GuardedBuffer<wchar_t> wide(capacity);
    ReadWide(L"S", L"K", file.wide(), L"default", wide.data(), capacity);
    EXPECT_TRUE(wide.Intact());
    EXPECT_LT(wide.text().size(), capacity);
  }
  const auto within = [](auto value, auto low, auto high) { return value >= low && value <= high; };
  EXPECT_TRUE(within(ReadInt("S", "K", file.plain(), 1, 1, 9), 1, 9));
  EXPECT_TRUE(within(ReadIntWide(L"S", L"K", file.wide(), 1, 1, 9), 1, 9));
  EXPECT_TRUE(within(ReadUint("S", "K", file.plain(), 1, 1, 9), 1u, 9u));
  EXPECT_TRUE(within(ReadWordWide(L"S", L"K", file.wide(), 1, 1, 9), 1, 9));
  const double d = ReadDouble("S", "K", file.plain(), 1, 1, 9);
  EXPECT_TRUE(d != d || within(d, 1.0, 9.0));
  const float f = ReadFloatWide(L"S", L"K", file.wide(), 1, 1, 9);
  EXPECT_TRUE(f != f || within(f, 1.0f, 9.0f));
}

TEST(Garbage, RandomBytesBehindTheKeys) {
  std::mt19937 random(31);
  test::HeapWatch heap;
  settings::File file;
  for (int round = 0; round < 60; ++round) {
    std::string bytes = "[S]\r\n";
    for (const char* const key : {"K=", "K_utf8=", "K_UC="}) {
      if (random() % 2) continue;
      bytes += key;
      for (std::size_t count = random() % 400; count > 0; --count) bytes += static_cast<char>(random());
      bytes += "\r\n";
    }
    file.Put(bytes);
    ReadAll(file);
  }
  EXPECT_EQ(heap.Outstanding(), 0);
}

TEST(Garbage, RandomFiles) {
  std::mt19937 random(32);
  const std::string likely = "[]=SK_utf8UC\r\n \"';.09-";
  settings::File file;
  for (int round = 0; round < 60; ++round) {
    std::string bytes(random() % 2000, '\0');
    for (char& byte : bytes) {
      byte = random() % 3 ? likely[random() % likely.size()] : static_cast<char>(random());
    }
    file.Put(bytes);
    ReadAll(file);
  }
}

TEST(Garbage, OddFiles) {
  using namespace std::string_literals;
  const std::string files[] = {
      ""s,
      "\0"s,
      "[S"s,
      "[S]"s,
      "[S]K=1"s,
      "[S]\nK"s,
      "[S]\nK=7"s,  // no end of line
      "[S]\rK=7\r"s,
      "[S]\r\nK=\0\0\0\r\n"s,
      "[S]\r\nK=1\0002\r\n"s,
      "[S]\r\nK=" + std::string(300'000, '9'),
      "[S]\r\nK_utf8=" + std::string(70'000, '\xC3'),
      "[S]\r\nK_UC=" + std::string(70'000, 'F'),
      "[" + std::string(100'000, 'S') + "]\r\nK=1\r\n",
      std::string(100'000, '['),
      std::string(100'000, '\n') + "[S]\nK=7",
      "\xEF\xBB\xBF[S]\r\nK=7\r\n"s,
      "\xFF\xFE"s,
      "\xFF\xFE[\0"s,
      "\xFF\xFE[\0S\0]\0\r\0\n\0K\0=\0\x37"s,
  };
  settings::File file;
  for (const std::string& bytes : files) {
    SCOPED_TRACE(bytes.substr(0, 20));
    file.Put(bytes);
    ReadAll(file);
  }
}

// A file that begins with the mark of UTF-16 text is one to the platform: it needs no companion to hold any
// text, and the library's still come and go with it.
TEST(Garbage, FilesOfUtf16Text) {
  const std::wstring text = L"\xFEFF[S]\r\nK=\u65E5\u672C\r\nN=5\r\n";
  const settings::File file(std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2));
  wchar_t back[32];
  ReadWide(L"S", L"K", file.wide(), L"default", back, 32);
  EXPECT_STREQ(back, L"\u65E5\u672C");
  EXPECT_EQ(ReadInt("S", "N", file.plain(), 0, 0, 9), 5);
  EXPECT_EQ(WriteWide(L"S", L"K", file.wide(), L"\u00E4\u20AC"), 1);
  EXPECT_EQ(file.Bytes().substr(0, 2), "\xFF\xFE");
  ReadWide(L"S", L"K", file.wide(), L"default", back, 32);
  EXPECT_EQ(back, test::FromUtf8Bytes(test::Kept("\xC3\xA4\xE2\x82\xAC")));
}

TEST(Garbage, FilesThatAreNone) {
  const test::TempFolder folder;
  const std::wstring paths[] = {
      folder / L"missing.ini",
      folder / L"missing\\settings.ini",
      folder.path(),
      L"X:\\tmp\\<>|?*.ini",
      L"\\\\.\\missing-device",
      L"",
      L"X:\\" + std::wstring(32'000, L'p'),
  };
  for (const std::wstring& path : paths) {
    wchar_t wide[16] = L"before";
    ReadWide(L"S", L"K", path.c_str(), L"default", wide, 16);
    EXPECT_STREQ(wide, L"default") << test::Ansi(path).substr(0, 60);
    char plain[16] = "before";
    ReadPlain("S", "K", test::Ansi(path).c_str(), "default", plain, 16);
    EXPECT_STREQ(plain, "default") << test::Ansi(path).substr(0, 60);
    EXPECT_EQ(ReadIntWide(L"S", L"K", path.c_str(), 42, 0, 9), 42);
  }
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>());
}

TEST(Garbage, NamesOfAnyLength) {
  settings::File file("[S]\r\nK=1\r\n");
  const std::wstring name(32'767, L'n');
  wchar_t wide[16];
  ReadWide(name.c_str(), name.c_str(), file.wide(), L"default", wide, 16);
  EXPECT_STREQ(wide, L"default");
  const std::wstring value(32'767, L'\u00E4');
  EXPECT_EQ(WriteWide(L"S", L"K", file.wide(), value.c_str()), 1);
  EXPECT_EQ(WriteWide(L"S", name.c_str(), file.wide(), L"x"), 1);
  ReadWide(L"S", name.c_str(), file.wide(), L"default", wide, 16);
  EXPECT_STREQ(wide, L"x");
}

}  // namespace
