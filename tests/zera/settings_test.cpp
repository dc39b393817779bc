// SPDX-License-Identifier: MIT
// Settings through the layer, in a file and in memory.
#include <gtest/gtest.h>

#include <ZERATools/zera.hpp>

#include <string>

#include "support/CodePage.h"
#include "support/TempFolder.h"

namespace {

// The same values through both kinds of text.
template <class Char>
struct Texts;
template <>
struct Texts<wchar_t> {
  static constexpr const wchar_t *section = L"View", *key = L"Key", *value = L"plain", *none = L"none";
  static std::wstring File(const std::wstring& path) { return path; }
};
template <>
struct Texts<char> {
  static constexpr const char *section = "View", *key = "Key", *value = "plain", *none = "none";
  static std::string File(const std::wstring& path) { return test::Ansi(path); }
};

template <class Char>
class ZeraSettings : public ::testing::Test {
 protected:
  const test::TempFolder folder;
  const zera::basic_settings<Char> settings{Texts<Char>::File(folder / L"view.ini")};
};
using Characters = ::testing::Types<wchar_t, char>;
TYPED_TEST_SUITE(ZeraSettings, Characters);

TYPED_TEST(ZeraSettings, KeepsEachType) {
  using T = Texts<TypeParam>;
  EXPECT_EQ(T::File(this->folder / L"view.ini"), this->settings.file());
  const auto view = this->settings.section(T::section);
  EXPECT_EQ(7, view.get(T::key, 7));
  EXPECT_TRUE(view.set(T::key, -40));
  EXPECT_EQ(-40, view.get(T::key, 7));
  EXPECT_EQ(0, view.get(T::key, 7, {0, 100}));
  EXPECT_TRUE(view.set(T::key, 4000000000u));
  EXPECT_EQ(4000000000u, view.get(T::key, 7u));
  EXPECT_EQ(100u, view.get(T::key, 7u, {0, 100}));
  EXPECT_TRUE(view.set(T::key, WORD{65535}));
  EXPECT_EQ(WORD{65535}, view.get(T::key, WORD{7}));
  EXPECT_EQ(WORD{1024}, view.get(T::key, WORD{7}, {1, 1024}));
  EXPECT_TRUE(view.set(T::key, -2.5));
  EXPECT_EQ(-2.5, view.get(T::key, 1.0));
  EXPECT_EQ(0.5, view.get(T::key, 1.0, {0.5, 8.0}));
  EXPECT_TRUE(view.set(T::key, 1.25f));
  EXPECT_EQ(1.25f, view.get(T::key, 1.0f));
  EXPECT_EQ(1.0f, view.get(T::key, 1.0f, {0.5f, 1.0f}));
  EXPECT_TRUE(view.set(T::key, T::value));
  EXPECT_EQ(T::value, view.get(T::key, T::none));
  EXPECT_TRUE(view.remove(T::key));
  EXPECT_EQ(T::none, view.get(T::key, T::none));
}

TEST(ZeraSettingsText, TakesViewsOfFileAndSection) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  const std::wstring_view both = L"ViewUser";
  const zera::settings settings{std::wstring_view(file + L"x").substr(0, file.size())};
  EXPECT_TRUE(settings.section(both.substr(0, 4)).set(L"Key", 5));
  EXPECT_EQ(5, zera::settings(file).section(L"View").get(L"Key", 0));
}

TEST(ZeraSettingsText, KeepsEveryLetter) {
  const test::TempFolder folder;
  const auto user = zera::settings(folder / L"view.ini").section(L"User");
  const std::wstring name = L"\u0141ukasz \u039b\u03ac\u03bc";
  EXPECT_TRUE(user.set(L"Name", name));
  EXPECT_EQ(test::FromUtf8Bytes(test::Kept("\xC5\x81ukasz \xCE\x9B\xCE\xAC\xCE\xBC")),
            user.get(L"Name", L""));
  if (test::NeedsCompanion(name)) {
    EXPECT_EQ(L"", user.get(L"Name", L"", 5)) << "a companion that does not fit is not cut";
  }
}

template <class Char>
std::basic_string<Char> Written() {
  using T = Texts<Char>;
  zera::basic_settings_text<Char> text;
  text.section(T::section)
      .set(T::key, T::value)
      .set(T::key, -1)
      .set(T::key, 2u)
      .set(T::key, 1.5)
      .set(T::key, 0.5f);
  return text.str();
}

TEST(ZeraSettingsText, PutsLinesTogether) {
  EXPECT_EQ(L"[View]\nKey=plain\nKey=-1\nKey=2\nKey=1.5000000000\nKey=0.5000000000\n", Written<wchar_t>());
  EXPECT_EQ("[View]\nKey=plain\nKey=-1\nKey=2\nKey=1.5000000000\nKey=0.5000000000\n", Written<char>());
}

TEST(ZeraSettingsText, HasRoomForCompanionsAndTheLongestNumber) {
  const std::wstring value(1000, L'\u20ac');
  zera::settings_text text;
  text.set(L"K", value).set(L"D", -1.7976931348623157e308);
  const std::wstring first = L"K=" + value + L"\n";
  EXPECT_EQ(first, text.str().substr(0, first.size()));
  if (test::NeedsCompanion(value)) {
    EXPECT_EQ(L"K_utf8=", text.str().substr(first.size(), 7));
  }
  EXPECT_EQ(L".0000000000\n", text.str().substr(text.str().size() - 12));
}

}  // namespace
