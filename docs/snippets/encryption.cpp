// SPDX-License-Identifier: MIT
// Examples of the reference: encryption of texts and bytes.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <string>

TEST(Snippets, EncryptedTexts) {
  {
    //! [ZERA_TOOLS_ENC_STRING_L_UC]
    CStringW cipher;
    ZERA_TOOLS_ENC_STRING_L_UC(L"pass phrase", L"licence 4711", cipher);  // 24 hexadecimal digits
    //! [ZERA_TOOLS_ENC_STRING_L_UC]
    EXPECT_EQ(cipher.GetLength(), 24);
    //! [ZERA_TOOLS_DEC_STRING_UC]
    CStringW plain;
    const int bytes = ZERA_TOOLS_DEC_STRING_UC(L"pass phrase", cipher, plain);  // 12, or -1
    //! [ZERA_TOOLS_DEC_STRING_UC]
    EXPECT_EQ(bytes, 12);
    EXPECT_STREQ(plain, L"licence 4711");
    //! [ZERA_TOOLS_ENC_STRING_S_UC]
    // A short sign that two long texts differ: 8 digits.
    CStringW sign;
    ZERA_TOOLS_ENC_STRING_S_UC(L"pass phrase", L"licence 4711", sign);
    //! [ZERA_TOOLS_ENC_STRING_S_UC]
    EXPECT_EQ(sign.GetLength(), 8);
    EXPECT_EQ(std::wstring(cipher).substr(0, 8), std::wstring(sign));
  }
  {
    //! [ZERA_TOOLS_ENC_STRING_L]
    CStringA cipher;
    ZERA_TOOLS_ENC_STRING_L("pass phrase", "licence 4711", cipher);  // 24 hexadecimal digits
    //! [ZERA_TOOLS_ENC_STRING_L]
    EXPECT_EQ(cipher.GetLength(), 24);
    //! [ZERA_TOOLS_DEC_STRING]
    CStringA plain;
    ZERA_TOOLS_DEC_STRING("pass phrase", cipher, plain);  // texts of at most 99 bytes
    //! [ZERA_TOOLS_DEC_STRING]
    EXPECT_STREQ(plain, "licence 4711");
    //! [ZERA_TOOLS_ENC_STRING_S]
    // A short sign that two long texts differ: 8 digits.
    CStringA sign;
    ZERA_TOOLS_ENC_STRING_S("pass phrase", "licence 4711", sign);
    //! [ZERA_TOOLS_ENC_STRING_S]
    EXPECT_EQ(sign.GetLength(), 8);
  }
}

TEST(Snippets, EncryptedBytes) {
  {
    //! [ZERA_TOOLS_ENC_UC]
    CArray<BYTE, const BYTE&> phrase;
    CArray<BYTE, const BYTE&> bytes;
    for (const BYTE one : {'k', 'e', 'y'}) phrase.Add(one);
    for (BYTE one = 0; one < 32; ++one) bytes.Add(one);
    CStringW cipher;
    ZERA_TOOLS_ENC_UC(phrase, bytes, cipher, TRUE);  // 64
    //! [ZERA_TOOLS_ENC_UC]
    EXPECT_EQ(cipher.GetLength(), 64);
    //! [ZERA_TOOLS_DEC_UC]
    CArray<BYTE, const BYTE&> back;
    const int count = ZERA_TOOLS_DEC_UC(phrase, cipher, TRUE, back);  // 32
    //! [ZERA_TOOLS_DEC_UC]
    EXPECT_EQ(count, 32);
    EXPECT_EQ(back.GetSize(), 32);
    EXPECT_EQ(back[31], 31);
  }
  {
    //! [ZERA_TOOLS_DEC]
    CStringA cipher;
    ZERA_TOOLS_ENC_STRING_L("key", "data", cipher);
    BYTE plain[64];
    const int count = ZERA_TOOLS_DEC("key", cipher, TRUE, plain, sizeof plain);  // 4
    //! [ZERA_TOOLS_DEC]
    EXPECT_EQ(count, 4);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(plain), 4), "data");
  }
  {
    //! [ZERA_TOOLS_ENC]
    // Usable with a count of 0 only; ZERA_TOOLS_ENC_UC and ZERA_TOOLS_ENC_STRING_L take any.
    char text[8] = "";
    const int length = ZERA_TOOLS_ENC("key", nullptr, 0, text, sizeof text, TRUE);  // 0
    //! [ZERA_TOOLS_ENC]
    EXPECT_EQ(length, 0);
    EXPECT_STREQ(text, "");
  }
}
