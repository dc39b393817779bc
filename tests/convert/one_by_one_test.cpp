// SPDX-License-Identifier: MIT
// The conversions beside the same work done character by character. Runs once for each code page that the
// signs have a form in.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "Conversions.h"
#include "OneByOne.h"
#include "support/ImportHook.h"

using namespace conversions;

namespace {

int page;
int __cdecl Page() {
  return page;
}

class OneByOne : public ::testing::Test {
 protected:
  test::ImportHook hook_{"_getmbcp", &Page};
  std::mt19937 random_{4711};

  // Long enough for several blocks and a rest. Runs of ASCII, of neighbours and of anything.
  template <class Char>
  std::basic_string<Char> Text(std::size_t most) {
    constexpr unsigned kLast = sizeof(Char) == 1 ? 0xFF : 0xFFFF;
    std::basic_string<Char> text;
    const std::size_t length = random_() % most;
    while (text.size() < length) {
      const unsigned kind = random_() % 5;
      const unsigned base = random_();
      for (unsigned run = random_() % 24; run > 0; --run) {
        unsigned unit = kind == 0   ? 1 + random_() % kLast
                        : kind == 1 ? base + random_() % 64
                        : kind == 2 ? 0xB0 + random_() % 6
                        : kind == 3 ? 0xD7F0 + random_() % 0x820
                                    : 1 + random_() % 0x7F;
        unit &= kLast;
        text += static_cast<Char>(unit ? unit : 1);
      }
    }
    return text;
  }
};

TEST_F(OneByOne, EveryUnit) {
  for (const auto& signs : one_by_one::kSigns) {
    page = signs.page;
    for (unsigned start = 0; start <= 0xFFFF; start += 0x100) {
      std::wstring text;
      for (unsigned unit = start; unit < start + 0x100; ++unit) {
        if (unit != 0) text += static_cast<wchar_t>(unit);
      }
      ASSERT_EQ(Convert(UcToMbc, text), one_by_one::UcToMbc(text, signs)) << page << ' ' << start;
    }
  }
}

TEST_F(OneByOne, EveryByte) {
  for (unsigned byte = 1; byte <= 0xFF; ++byte) {
    for (const std::string& text :
         {std::string(1, static_cast<char>(byte)), std::string(40, static_cast<char>(byte)),
          std::string("0123456789abcdef") + static_cast<char>(byte) + "0123456789abcdef"}) {
      for (const auto& signs : one_by_one::kSigns) {
        page = signs.page;
        ASSERT_EQ(Convert(Char8ToMbc, text), one_by_one::Char8ToMbc(text, signs)) << page << ' ' << byte;
      }
      ASSERT_EQ(Convert(Char8ToUc, text), one_by_one::Char8ToUc(text)) << byte;
    }
  }
}

TEST_F(OneByOne, RandomTexts) {
  for (int round = 0; round < 700; ++round) {
    const std::size_t most = round % 50 == 0 ? 20'000 : 100;
    const std::wstring units = Text<wchar_t>(most);
    const std::string bytes = Text<char>(most);
    const auto& signs = one_by_one::kSigns[static_cast<std::size_t>(round) % std::size(one_by_one::kSigns)];
    page = signs.page;
    ASSERT_EQ(Convert(UcToMbc, units), one_by_one::UcToMbc(units, signs)) << round;
    ASSERT_EQ(Convert(Char8ToMbc, bytes), one_by_one::Char8ToMbc(bytes, signs)) << round;
    ASSERT_EQ(Convert(Char8ToUc, bytes), one_by_one::Char8ToUc(bytes)) << round;
  }
}

TEST_F(OneByOne, HexadecimalTexts) {
  const std::wstring alphabet = L"0123456789abcdefABCDEF  0123456789gGxX+-\t\n\u00A0\u0660\uFF11\uFFFF";
  for (int round = 0; round < 3000; ++round) {
    const std::wstring text = Text<wchar_t>(100);
    ASSERT_EQ(Convert(UcToHex, text), one_by_one::UcToHex(text)) << round;
    // Mostly digits in even rounds, anything in odd ones; pieces of up to eleven digits.
    std::wstring hex;
    for (std::size_t length = random_() % 60; length > 0; --length) {
      if (random_() % 12 == 0) hex += L' ';
      hex += alphabet[random_() % (round % 2 ? alphabet.size() : 24)];
    }
    ASSERT_EQ(Convert(HexToUc, hex), one_by_one::HexToUc(hex)) << ::testing::PrintToString(hex);
  }
}

// Buffers of exactly the length that was asked for, with a pattern behind the terminator.
template <class Char>
class WatchingManager final : public test::CountingManager {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    CStringData* const data = CountingManager::Allocate(chars + kBehind, charSize);
    data->nAllocLength = chars;
    behind_ = static_cast<Char*>(data->data()) + chars + 1;
    std::fill(behind_, behind_ + kBehind, kPattern);
    return data;
  }
  bool Intact() const {
    return !behind_ || std::all_of(behind_, behind_ + kBehind, [](Char one) { return one == kPattern; });
  }

 private:
  static constexpr int kBehind = 40;
  static constexpr Char kPattern = 0x5A;
  Char* behind_ = nullptr;
};

template <class In, class Out>
std::basic_string<Out> Watched(void(__cdecl* conversion)(const In*, CStringT<Out>&),
                               const std::basic_string<In>& text) {
  WatchingManager<Out> manager;
  test::HostString<Out> result(manager);
  conversion(text.c_str(), result.object());
  EXPECT_TRUE(manager.Intact()) << text.size();
  return result.text();
}

TEST_F(OneByOne, EveryLengthUpToSeveralBlocks) {
  const auto& signs = one_by_one::kSigns[6];
  page = signs.page;
  for (std::size_t length = 0; length < 100; ++length) {
    for (const std::size_t sign : {std::size_t{0}, length / 2, length - 1, length}) {
      std::string bytes(length, 'x');
      if (sign < length) bytes[sign] = '\xB5';
      const std::wstring units(bytes.begin(), bytes.end());
      ASSERT_EQ(Watched(Char8ToMbc, bytes), one_by_one::Char8ToMbc(bytes, signs));
      ASSERT_EQ(Watched(Char8ToUc, bytes), one_by_one::Char8ToUc(bytes));
      ASSERT_EQ(Watched(UcToHex, units), one_by_one::UcToHex(units));
      ASSERT_EQ(Watched(HexToUc, one_by_one::UcToHex(units)), units);
    }
  }
}

// The last numbers have no room behind them but the terminator's.
TEST_F(OneByOne, HexadecimalTextsThatEndInNumbersOfAnyLength) {
  const wchar_t units[] = {0x1, 0x12, 0x123, 0x1234};
  for (unsigned choice = 0; choice < 256; ++choice) {
    std::wstring text;
    for (int i = 0; i < 4; ++i) text += units[choice >> 2 * i & 3];
    ASSERT_EQ(Watched(UcToHex, text), one_by_one::UcToHex(text)) << choice;
  }
}

// More of one sign than a byte counts, at one place of each block.
TEST_F(OneByOne, OneSignThousandsOfTimes) {
  for (const auto& signs : one_by_one::kSigns) {
    page = signs.page;
    for (const char sign : {'\xB5', '\xB0'}) {
      const std::string bytes(5000, sign);
      EXPECT_TRUE(Convert(Char8ToMbc, bytes) == one_by_one::Char8ToMbc(bytes, signs)) << page;
    }
  }
}

}  // namespace
