// SPDX-License-Identifier: MIT
// The frame of every export: module state and exceptions, seen from inside.
#include "frame/Frame.h"

#include <gtest/gtest.h>

#include <string>

#include "frame/App.h"
#include "frame/WideText.h"

namespace {

class FrameDirect : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!AfxGetStaticModuleState()->m_hCurrentInstanceHandle) {
      ASSERT_TRUE(AfxInitModule(::GetModuleHandleW(nullptr)));
    }
  }
};

TEST_F(FrameDirect, ModuleStateIsCurrentForTheCallAndRestoredAfterwards) {
  AFX_MODULE_STATE hosts;
  AfxSetModuleState(&hosts);
  const int result = frame::Enter([&] {
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    return 7;
  });
  EXPECT_EQ(result, 7);
  EXPECT_EQ(AfxGetModuleState(), &hosts);
  AfxSetModuleState(nullptr);
}

TEST_F(FrameDirect, UnguardedFrameLeavesTheCallersStateCurrent) {
  AFX_MODULE_STATE hosts;
  AfxSetModuleState(&hosts);
  frame::EnterUnguarded([&] { EXPECT_EQ(AfxGetModuleState(), &hosts); });
  AfxSetModuleState(nullptr);
}

TEST_F(FrameDirect, ApplicationObjectAlwaysStarts) {
  ASSERT_NE(AfxGetApp(), nullptr);
  EXPECT_EQ(AfxGetApp()->m_pszAppName, nullptr);
  EXPECT_EQ(AfxGetApp()->InitInstance(), TRUE);
  EXPECT_EQ(AfxGetApp()->ExitInstance(), 0);
  const AFX_MSGMAP* const map = AfxGetApp()->GetMessageMap();
  ASSERT_NE(map->pfnGetBaseMap, nullptr);
  EXPECT_EQ(map->lpEntries[0].pfn, nullptr);
  EXPECT_NE(map->pfnGetBaseMap(), map);
}

// Texts of every length around the buffer on the stack, with half a double-byte character at the end
// (under code page 1252 an ordinary letter), against the platform's conversion of the bytes alone.
TEST_F(FrameDirect, TextEndsWhereThePlatformEndsIt) {
  for (const std::size_t length : {0u, 1u, 2u, 257u, 258u, 259u, 260u, 261u, 32767u}) {
    for (const char* const tail : {"", "\x81", "\x83\x5C", "\xE9", "\xFF"}) {
      const std::string text = std::string(length, 'a') + tail;
      const frame::WideText wide(text.c_str());
      const std::wstring got(wide);
      EXPECT_EQ(got.substr(0, length), std::wstring(length, L'a'));
      EXPECT_LE(got.size(), text.size());
      const CStringW string(text.c_str());
      EXPECT_EQ(got, string.GetString()) << length;
      EXPECT_EQ(static_cast<std::size_t>(string.GetLength()), got.size());
    }
  }
  if (::GetACP() == 932) {
    EXPECT_STREQ(frame::WideText("\x83\x5C.txt"), L"\x30BD.txt");
  } else {
    EXPECT_STREQ(frame::WideText("\xE9.txt"), L"\xE9.txt");
  }
}

TEST_F(FrameDirect, NullTextBecomesEmpty) {
  EXPECT_STREQ(frame::WideText(nullptr), L"");
}

}  // namespace
