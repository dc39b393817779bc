// SPDX-License-Identifier: MIT
// The objects of a host without the framework: what the library does with them, and that nothing is left.
#include <gtest/gtest.h>

#include <ZERATools/Objects.h>

#include <string>
#include <vector>

#include "c_host.h"
#include "support/TempFolder.h"

namespace {

// Makes and frees in pairs, so that a failed check leaks nothing into the next test.
struct Wide {
  Wide() { zera_wstring_make(&object); }
  ~Wide() { zera_wstring_free(&object); }
  std::wstring Text() const { return {zera_wstring_text(&object), zera_wstring_length(&object)}; }
  ZERA_WSTRING object;
};

struct Narrow {
  Narrow() { zera_astring_make(&object); }
  ~Narrow() { zera_astring_free(&object); }
  std::string Text() const { return {zera_astring_text(&object), zera_astring_length(&object)}; }
  ZERA_ASTRING object;
};

class ObjectsTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(before_, zera_string_buffers_in_use()); }
  const long before_ = zera_string_buffers_in_use();
};

TEST_F(ObjectsTest, AMadeStringIsEmpty) {
  const Wide wide;
  const Narrow narrow;
  EXPECT_EQ(L"", wide.Text());
  EXPECT_EQ("", narrow.Text());
  EXPECT_EQ(before_, zera_string_buffers_in_use()) << "an empty string has no buffer of its own";
}

TEST_F(ObjectsTest, AStringTakesTextWithAndWithoutALength) {
  Wide wide;
  EXPECT_TRUE(zera_wstring_set(&wide.object, L"Zo\u00eb"));
  EXPECT_EQ(L"Zo\u00eb", wide.Text());
  EXPECT_TRUE(zera_wstring_set_length(&wide.object, L"a\0b", 3));
  EXPECT_EQ(std::wstring(L"a\0b", 3), wide.Text());
  EXPECT_EQ(0, zera_wstring_text(&wide.object)[3]) << "always terminated";
  EXPECT_TRUE(zera_wstring_set(&wide.object, nullptr));
  EXPECT_EQ(L"", wide.Text());
  Narrow narrow;
  EXPECT_TRUE(zera_astring_set(&narrow.object, "text"));
  EXPECT_TRUE(zera_astring_set_length(&narrow.object, "a\0b", 3));
  EXPECT_EQ(std::string("a\0b", 3), narrow.Text());
  EXPECT_TRUE(zera_astring_set_length(&narrow.object, nullptr, 0));
  EXPECT_EQ("", narrow.Text());
}

TEST_F(ObjectsTest, AStringTakesAPieceOfItself) {
  Wide wide;
  ASSERT_TRUE(zera_wstring_set(&wide.object, L"0123456789"));
  EXPECT_TRUE(zera_wstring_set(&wide.object, zera_wstring_text(&wide.object) + 4));
  EXPECT_EQ(L"456789", wide.Text());
}

TEST_F(ObjectsTest, EmptyGivesTheBufferBack) {
  Wide wide;
  ASSERT_TRUE(zera_wstring_set(&wide.object, L"text"));
  EXPECT_EQ(before_ + 1, zera_string_buffers_in_use());
  zera_wstring_empty(&wide.object);
  EXPECT_EQ(before_, zera_string_buffers_in_use());
  EXPECT_EQ(L"", wide.Text());
  Narrow narrow;
  ASSERT_TRUE(zera_astring_set(&narrow.object, "text"));
  zera_astring_empty(&narrow.object);
  EXPECT_EQ("", narrow.Text());
  EXPECT_EQ(before_, zera_string_buffers_in_use());
}

TEST_F(ObjectsTest, ATextThatIsTooLongChangesNothing) {
  Wide wide;
  ASSERT_TRUE(zera_wstring_set(&wide.object, L"kept"));
  EXPECT_FALSE(zera_wstring_set_length(&wide.object, L"", std::size_t{1} << 40));
  EXPECT_EQ(L"kept", wide.Text());
}

TEST_F(ObjectsTest, TheLibraryWritesThroughTheHostsManager) {
  Wide wide;
  const std::wstring large(100000, L'x');
  for (const std::wstring& text : {std::wstring(L"A"), large, std::wstring(L"")}) {
    ZERA_TOOLS_STRING_UC_TO_HEX(text.c_str(), zera_ref(&wide.object));
    EXPECT_EQ(before_ + (text.empty() ? 0 : 1), zera_string_buffers_in_use());
    EXPECT_EQ(text.empty() ? 0 : text.size() * 3 - 1, zera_wstring_length(&wide.object));
  }
}

TEST_F(ObjectsTest, OneStringMayBeInputAndResult) {
  Wide wide;
  ASSERT_TRUE(zera_wstring_set(&wide.object, L"licence"));
  EXPECT_EQ(14, ZERA_TOOLS_ENC_STRING_L_UC(L"key", zera_ref(&wide.object), zera_ref(&wide.object)));
  EXPECT_EQ(7, ZERA_TOOLS_DEC_STRING_UC(L"key", zera_wstring_text(&wide.object), zera_ref(&wide.object)));
  EXPECT_EQ(L"licence", wide.Text());
}

TEST_F(ObjectsTest, BytesAreKeptReplacedAndFreed) {
  ZERA_BYTES bytes;
  zera_bytes_make(&bytes);
  EXPECT_EQ(0u, zera_bytes_size(&bytes));
  EXPECT_EQ(nullptr, zera_bytes_data(&bytes));
  EXPECT_TRUE(zera_bytes_set(&bytes, "abc", 3));
  EXPECT_EQ("abc", std::string(zera_bytes_data(&bytes), zera_bytes_data(&bytes) + zera_bytes_size(&bytes)));
  EXPECT_TRUE(zera_bytes_set(&bytes, nullptr, 0));
  EXPECT_EQ(0u, zera_bytes_size(&bytes));
  EXPECT_TRUE(zera_bytes_set(&bytes, "defg", 4));
  EXPECT_FALSE(zera_bytes_set(&bytes, "", std::size_t{1} << 60));
  EXPECT_EQ(4u, zera_bytes_size(&bytes)) << "kept when memory ran out";
  zera_bytes_empty(&bytes);
  EXPECT_EQ(0u, zera_bytes_size(&bytes));
  zera_bytes_free(&bytes);
}

TEST_F(ObjectsTest, TheLibraryEnlargesTheHostsBytes) {
  ZERA_BYTES key, plain;
  Wide text;
  zera_bytes_make(&key);
  zera_bytes_make(&plain);
  const std::vector<unsigned char> large(100000, 7);
  ASSERT_TRUE(zera_bytes_set(&key, "key", 3) && zera_bytes_set(&plain, large.data(), large.size()));
  EXPECT_EQ(200000, ZERA_TOOLS_ENC_UC(zera_ref(&key), zera_ref(&plain), zera_ref(&text.object), TRUE));
  ASSERT_TRUE(zera_bytes_set(&plain, "x", 1));
  EXPECT_EQ(100000,
            ZERA_TOOLS_DEC_UC(zera_ref(&key), zera_wstring_text(&text.object), TRUE, zera_ref(&plain)));
  EXPECT_EQ(large, std::vector<unsigned char>(zera_bytes_data(&plain),
                                              zera_bytes_data(&plain) + zera_bytes_size(&plain)));
  zera_bytes_free(&plain);
  zera_bytes_free(&key);
}

TEST_F(ObjectsTest, EveryObjectExportAnswersAHostInC) {
  MSG message;
  ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // gives this thread a queue
  CHostAnswers answers;
  CallFromC(&answers, ::GetCurrentThreadId());
  EXPECT_STREQ("text", answers.toAnsi);
  EXPECT_STREQ("signs", answers.signsToAnsi);
  EXPECT_STREQ(L"signs", answers.signsToWide);
  EXPECT_STREQ("ansi", answers.ansiToUtf8);
  EXPECT_STREQ("\xC3\xA9\xE2\x82\xAC", answers.toUtf8);
  EXPECT_STREQ(L"\u00e9\u20ac", answers.utf8ToWide);
  EXPECT_STREQ("plain", answers.utf8ToAnsi);
  EXPECT_STREQ(L"48 65 6C 6C 6F", answers.toHex);
  EXPECT_STREQ(L"Hello", answers.fromHex);
  EXPECT_EQ(8, answers.cipherLength);
  EXPECT_EQ(8u, wcslen(answers.cipher));
  EXPECT_EQ(4, answers.plainCount);
  EXPECT_EQ(0, memcmp(answers.plainBytes, "\0\1\2\xFF", 4));
  EXPECT_EQ(14, answers.longLength);
  EXPECT_EQ(14, answers.shortLength) << "the length of the whole";
  EXPECT_EQ(std::wstring(answers.longText, 8), answers.shortText);
  EXPECT_EQ(7, answers.decryptedLength);
  EXPECT_STREQ(L"licence", answers.decrypted);
  EXPECT_EQ(14, answers.longAnsiLength);
  EXPECT_EQ(14, answers.shortAnsiLength);
  EXPECT_EQ(std::string(answers.longAnsi, 8), answers.shortAnsi);
  EXPECT_EQ(std::wstring(answers.longAnsi, answers.longAnsi + 14), answers.longText) << "ASCII: the same";
  EXPECT_EQ(7, answers.decryptedAnsiLength);
  EXPECT_STREQ("licence", answers.decryptedAnsi);
  // This test program has no settings file; the wide exports name the place all the same.
  for (const int found : answers.settingsFound) EXPECT_EQ(0, found);
  for (const auto& file : answers.settings) EXPECT_TRUE(std::wstring(file).ends_with(L"\\objects_test.ini"));
  for (const auto& file : answers.settingsAnsi) EXPECT_STREQ("", file);
  EXPECT_EQ(1, answers.folders);
  EXPECT_TRUE(std::wstring(answers.commonData).ends_with(L"\\objects_test"));
  EXPECT_TRUE(std::wstring(answers.userData).ends_with(L"\\objects_test"));
  EXPECT_EQ(1, answers.posted);
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  EXPECT_EQ(1u, message.wParam);
  EXPECT_EQ(0, BuffersOfC());
}

}  // namespace
