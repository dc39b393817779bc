// SPDX-License-Identifier: MIT
// Examples of the reference: conversions and rounding.
#include <ZERATools.h>
#include <gtest/gtest.h>

TEST(Snippets, Conversions) {
  {
    //! [ZERA_TOOLS_STRING_UC_TO_UTF8]
    CStringA utf8;
    ZERA_TOOLS_STRING_UC_TO_UTF8(L"25 \u00b0C", utf8);  // the bytes 32 35 20 C2 B0 43
    //! [ZERA_TOOLS_STRING_UC_TO_UTF8]
    EXPECT_STREQ(utf8, "25 \xC2\xB0\x43");
    //! [ZERA_TOOLS_STRING_UTF8_TO_UC]
    CStringW wide;
    ZERA_TOOLS_STRING_UTF8_TO_UC(utf8, wide);
    //! [ZERA_TOOLS_STRING_UTF8_TO_UC]
    EXPECT_STREQ(wide, L"25 \u00b0C");
    //! [ZERA_TOOLS_STRING_UTF8_TO_MBC]
    CStringA ansi;
    ZERA_TOOLS_STRING_UTF8_TO_MBC(utf8, ansi);
    //! [ZERA_TOOLS_STRING_UTF8_TO_MBC]
    EXPECT_STREQ(ansi, ::GetACP() == CP_UTF8 ? "25 \xC2\xB0\x43" : "25 \xB0\x43");
    //! [ZERA_TOOLS_STRING_MBC_TO_UTF8]
    CStringA again;
    ZERA_TOOLS_STRING_MBC_TO_UTF8(ansi, again);
    //! [ZERA_TOOLS_STRING_MBC_TO_UTF8]
    EXPECT_STREQ(again, utf8);
  }
  {
    //! [ZERA_TOOLS_STRING_UC_TO_HEX]
    CStringW numbers;
    ZERA_TOOLS_STRING_UC_TO_HEX(L"A\u03a9", numbers);  // "41 3A9"
    //! [ZERA_TOOLS_STRING_UC_TO_HEX]
    EXPECT_STREQ(numbers, L"41 3A9");
    //! [ZERA_TOOLS_STRING_HEX_TO_UC]
    CStringW text;
    ZERA_TOOLS_STRING_HEX_TO_UC(numbers, text);
    //! [ZERA_TOOLS_STRING_HEX_TO_UC]
    EXPECT_STREQ(text, L"A\u03a9");
  }
  {
    //! [ZERA_TOOLS_UC_TO_MBC]
    CStringA ansi;
    ZERA_TOOLS_UC_TO_MBC(L"plain text", ansi);
    //! [ZERA_TOOLS_UC_TO_MBC]
    EXPECT_STREQ(ansi, "plain text");
    //! [ZERA_TOOLS_CHAR8_TO_UC]
    CStringW wide;
    ZERA_TOOLS_CHAR8_TO_UC("25 \xB0\x43", wide);
    //! [ZERA_TOOLS_CHAR8_TO_UC]
    EXPECT_STREQ(wide, L"25 \u00b0C");
    //! [ZERA_TOOLS_CHAR8_TO_MBC]
    CStringA device;
    ZERA_TOOLS_CHAR8_TO_MBC("25 C", device);
    //! [ZERA_TOOLS_CHAR8_TO_MBC]
    EXPECT_STREQ(device, "25 C");
  }
}

TEST(Snippets, Rounding) {
  {
    //! [ZERA_TOOLS_ROUND_INT]
    const int up = ZERA_TOOLS_ROUND_INT(2.5);        // 3
    const int down = ZERA_TOOLS_ROUND_INT(-2.5);     // -3: away from zero
    const int largest = ZERA_TOOLS_ROUND_INT(1e12);  // 2147483647
    //! [ZERA_TOOLS_ROUND_INT]
    EXPECT_EQ(up, 3);
    EXPECT_EQ(down, -3);
    EXPECT_EQ(largest, 2147483647);
  }
  {
    //! [ZERA_TOOLS_ROUND_UINT]
    const unsigned int count = ZERA_TOOLS_ROUND_UINT(2.5);  // 3
    //! [ZERA_TOOLS_ROUND_UINT]
    EXPECT_EQ(count, 3u);
  }
  {
    //! [ZERA_TOOLS_ROUND_DOUBLE]
    const double price = ZERA_TOOLS_ROUND_DOUBLE(2.125, 2);  // 2.13
    //! [ZERA_TOOLS_ROUND_DOUBLE]
    EXPECT_DOUBLE_EQ(price, 2.13);
  }
}
