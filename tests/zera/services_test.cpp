// SPDX-License-Identifier: MIT
// Encryption, conversions, rounding, processes and the application's environment through the layer.
#include <gtest/gtest.h>

#include <ZERATools/zera.hpp>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace {

using namespace zera;  // NOLINT: as a host might

// Nothing that the layer makes for a call outlives it.
class ZeraServices : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(0, zera_string_buffers_in_use()); }
};

TEST_F(ZeraServices, EncryptsTextsAndReadsThemBack) {
  const auto wide = crypt::encrypt(L"key", L"licence");
  const auto narrow = crypt::encrypt("key", "licence");
  ASSERT_TRUE(wide && narrow);
  EXPECT_EQ(*wide, std::wstring(narrow->begin(), narrow->end())) << "ASCII: the same";
  EXPECT_EQ(L"licence", crypt::decrypt(L"key", *wide));
  EXPECT_EQ("licence", crypt::decrypt("key", *narrow));
  EXPECT_EQ(wide->substr(0, 8), crypt::encrypt_short(L"key", L"licence"));
  EXPECT_EQ(narrow->substr(0, 8), crypt::encrypt_short("key", "licence"));
  EXPECT_FALSE(crypt::decrypt(L"key", L"no digits"));
  EXPECT_EQ(6u, crypt::encrypt(L"key", std::wstring_view(L"a\0b", 3)).value().size());
  EXPECT_EQ(6u, crypt::encrypt("key", std::string_view("a\0b", 3)).value().size());
}

TEST_F(ZeraServices, EncryptsBytes) {
  const std::vector<unsigned char> plain = {0, 1, 2, 255};
  const auto text = crypt::encrypt_bytes("key", plain);
  ASSERT_TRUE(text);
  EXPECT_EQ(8u, text->size());
  EXPECT_EQ(plain, crypt::decrypt_bytes(bytes("key"), *text));
  EXPECT_EQ(plain, crypt::decrypt_bytes("key", std::string(text->begin(), text->end())));
  const auto decimal = crypt::encrypt_bytes("key", plain, crypt::form::decimal);
  ASSERT_TRUE(decimal);
  EXPECT_EQ(decimal->npos, decimal->find_first_not_of(L"0123456789"));
}

TEST_F(ZeraServices, Converts) {
  EXPECT_EQ("text", text::to_ansi(L"text"));
  EXPECT_EQ("text", text::latin1_to_ansi("text"));
  EXPECT_EQ(L"text", text::latin1_to_utf16("text"));
  EXPECT_EQ("text", text::ansi_to_utf8("text"));
  EXPECT_EQ("\xE2\x82\xAC", text::to_utf8(L"\u20ac"));
  EXPECT_EQ("text", text::utf8_to_ansi("text"));
  EXPECT_EQ(L"\u20ac", text::from_utf8("\xE2\x82\xAC"));
  EXPECT_EQ(L"48 49", text::to_hex(L"HI"));
  EXPECT_EQ(L"HI", text::from_hex(L"48 49"));
}

TEST_F(ZeraServices, RoundsAwayFromZero) {
  EXPECT_EQ(-3, round_int(-2.5));
  EXPECT_EQ(3u, round_uint(2.5));
  EXPECT_EQ(2.35, zera::round(2.345, 2));
}

TEST_F(ZeraServices, AsksForProcessesAndPostsToThreads) {
  wchar_t own[MAX_PATH];
  ::GetModuleFileNameW(nullptr, own, MAX_PATH);
  EXPECT_EQ(ZERA_TOOLS_GETNUM_APPRUNNING_UC(own), process::count(own));
  EXPECT_GE(process::count(own), 1u);
  EXPECT_GE(process::count(test::Ansi(own)), 1u);
  EXPECT_EQ(ZERA_TOOLS_KILLPROCESS_UC(L"no such program.exe"), process::end(L"no such program.exe"));
  EXPECT_EQ(ZERA_TOOLS_KILLPROCESS("no such program.exe"), process::end("no such program.exe"));
  MSG message;
  ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // gives this thread a queue
  EXPECT_TRUE(process::post(::GetCurrentThreadId(), WM_APP, 1, 2));
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  EXPECT_EQ(1u, message.wParam);
  EXPECT_EQ(2, message.lParam);
  void* const memory = process::allocate(16);
  EXPECT_NE(nullptr, memory);
  std::free(memory);
}

TEST_F(ZeraServices, FindsTheSettingsFile) {
  const auto found = application::settings_file();
  EXPECT_FALSE(found.exists);
  EXPECT_FALSE(found.copied);
  EXPECT_TRUE(found.path.ends_with(L"\\zera_test.ini"));
  const auto folders = application::folders();
  ASSERT_TRUE(folders);
  EXPECT_TRUE(folders->common.ends_with(L"\\zera_test"));
  EXPECT_TRUE(folders->user.ends_with(L"\\zera_test"));
  EXPECT_FALSE(application::folders(reinterpret_cast<HMODULE>(0x10))) << "no such module";
}

TEST_F(ZeraServices, KeepsTheLanguage) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  EXPECT_EQ(language::german, application::language(file));
  EXPECT_TRUE(application::save_language(language::japanese, file));
  EXPECT_EQ(language::japanese, application::language(file));
  EXPECT_TRUE(application::save_language(language::dutch, test::Ansi(file)));
  EXPECT_EQ(language::dutch, application::language(test::Ansi(file)));
  EXPECT_FALSE(application::load_language(language::french)) << "there is no such module beside this program";
}

TEST_F(ZeraServices, AModuleIsFreedOnce) {
  const auto loaded = [] { return ::GetModuleHandleW(L"winmm.dll") != nullptr; };
  ASSERT_FALSE(loaded()) << "the test needs a library that nothing else has loaded";
  {
    language_module module(::LoadLibraryW(L"winmm.dll"));
    ASSERT_TRUE(module);
    language_module moved = std::move(module);
    EXPECT_FALSE(module);  // NOLINT: a moved-from module is empty
    module = std::move(moved);
    EXPECT_NE(nullptr, module.get());
    EXPECT_TRUE(loaded());
  }
  EXPECT_FALSE(loaded());
  language_module module(::LoadLibraryW(L"winmm.dll"));
  const HMODULE given = module.release();
  module.reset();
  EXPECT_TRUE(loaded()) << "given away";
  ::FreeLibrary(given);
}

}  // namespace
