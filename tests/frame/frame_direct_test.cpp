// SPDX-License-Identifier: MIT
// The frame of every export: module state and exceptions, seen from inside.
#include "frame/Frame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <iterator>
#include <new>
#include <string>

#include "frame/App.h"
#include "frame/WideText.h"
#include "support/CodePage.h"
#include "support/ImportHook.h"

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
  ASSERT_NE(map->pfnGetBaseMap(), map);
  for (const AFX_MSGMAP_ENTRY* const last : {map->lpEntries, map->pfnGetBaseMap()->lpEntries}) {
    EXPECT_EQ(last->nMessage | last->nCode | last->nID | last->nLastID, 0u);
    EXPECT_EQ(last->nSig, 0u);
    EXPECT_EQ(last->pfn, nullptr);
  }
}

// Where the framework calls it, and what it answers.
class StubbornApp final : public CWinApp {
 public:
  BOOL InitInstance() override {
    ++started;
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    return FALSE;
  }
  int ExitInstance() override {
    ++ended;
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    return 7;
  }
  int started = 0, ended = 0;
};

TEST_F(FrameDirect, LoadingAsksTheApplicationObjectWhileThereIsOne) {
  CWinApp* const own = AfxGetApp();
  const HINSTANCE instance = AfxGetStaticModuleState()->m_hCurrentInstanceHandle;
  const auto another = reinterpret_cast<HINSTANCE>(::GetModuleHandleW(L"kernel32.dll"));
  {
    StubbornApp app;
    EXPECT_EQ(AfxGetApp(), &app);
    EXPECT_FALSE(AfxInitModule(another)) << "the object's answer";
    EXPECT_EQ(AfxGetStaticModuleState()->m_hCurrentInstanceHandle, another);
    EXPECT_EQ(app.started, 1);
    AfxTermModule();
    EXPECT_EQ(app.ended, 1);
    EXPECT_EQ(app.CWinApp::InitInstance(), TRUE);
    EXPECT_EQ(app.CWinApp::ExitInstance(), 0);
    ASSERT_NE(app.GetMessageMap(), nullptr);
    EXPECT_EQ(app.GetMessageMap()->pfnGetBaseMap, nullptr) << "the framework's own map ends the chain";
  }
  EXPECT_EQ(AfxGetApp(), nullptr);
  EXPECT_TRUE(AfxInitModule(instance)) << "nobody to ask";
  AfxTermModule();
  framework::moduleState.m_pCurrentWinApp = own;
}

// Texts of every length around the buffer on the stack, with half a double-byte character at the end
// (under code page 1252 an ordinary letter), against the platform's conversion of the bytes alone.
TEST_F(FrameDirect, TextEndsWhereThePlatformEndsIt) {
  for (const std::size_t length : {0u, 1u, 2u, 257u, 258u, 259u, 260u, 261u, 32767u}) {
    for (const char* const tail : {"", "\x81", "\x83\x5C", "\xE9", "\xFF"}) {
      const std::string text = std::string(length, 'a') + tail;
      // Under UTF-8 as the ANSI code page Wine 8 takes a terminator for the rest of half a sequence and
      // writes none: what it answers then is no text to agree on.
      wchar_t answer[32800] = {};
      const int units = ::MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, answer, ARRAYSIZE(answer));
      if (::GetACP() == CP_UTF8 && answer[units - 1] != 0) continue;
      const frame::WideText wide(text.c_str());
      const std::wstring got(wide);
      EXPECT_EQ(got.substr(0, length), std::wstring(length, L'a'));
      EXPECT_LE(got.size(), text.size());
      const CStringW string(text.c_str());
      EXPECT_EQ(got, string.GetString()) << length;
      EXPECT_EQ(static_cast<std::size_t>(string.GetLength()), got.size());
    }
  }
  const test::LocalText& local = test::Local();
  EXPECT_STREQ(frame::WideText((local.bytes + ".txt").c_str()), (local.wide + L".txt").c_str());
}

TEST_F(FrameDirect, NothingIsWrittenBehindTheObject) {
  using frame::WideText;
  for (const std::size_t length : {258, 259, 260}) {
    alignas(WideText) unsigned char memory[sizeof(WideText) + 16];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xA7));
    const WideText& wide = *new (memory) WideText(std::string(length, 'a').c_str());
    EXPECT_EQ(std::wcslen(wide), length);
    EXPECT_EQ(std::count(memory + sizeof(WideText), std::end(memory), 0xA7), 16) << length;
    wide.~WideText();
  }
}

// The conversion of a text that is longer than the buffer fails: at once, at the measuring, at the last step.
int conversions;
int failingConversion;
int WINAPI FailingConversion(UINT page, DWORD flags, const char* text, int size, wchar_t* out, int room) {
  if (++conversions == failingConversion) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  static auto* const real =
      test::Platform<decltype(MultiByteToWideChar)>(L"kernel32.dll", "MultiByteToWideChar");
  return real(page, flags, text, size, out, room);
}

TEST_F(FrameDirect, TextThatCannotBeConvertedIsEmpty) {
  const std::string text(1000, 'a');
  const test::ImportHook hook("MultiByteToWideChar", &FailingConversion, ::GetModuleHandleW(nullptr));
  for (failingConversion = 1; failingConversion <= 3; ++failingConversion) {
    conversions = 0;
    EXPECT_STREQ(frame::WideText(text.c_str()), L"") << failingConversion;
  }
  failingConversion = 0;
  EXPECT_EQ(std::wcslen(frame::WideText(text.c_str())), 1000u);
}

// A long text's block has room for its units, the terminator and one unit more; it is given back.
std::size_t asked;
void* block;
int freed;
TEST_F(FrameDirect, LongTextHasABlockOfItsSizeForTheCall) {
  const std::string text(1000, 'a');
  const test::ImportHook allocation(
      "malloc",
      +[](std::size_t size) -> void* {
        asked = size;
        return block = test::Platform<void*(std::size_t)>(L"ucrtbase.dll", "malloc")(size);
      },
      ::GetModuleHandleW(nullptr));
  const test::ImportHook release(
      "free",
      +[](void* one) {
        freed += one == block;
        test::Platform<void(void*)>(L"ucrtbase.dll", "free")(one);
      },
      ::GetModuleHandleW(nullptr));
  asked = 0;
  freed = 0;
  std::size_t units = 0;
  {
    const frame::WideText wide(text.c_str());
    units = std::wcslen(wide);
    EXPECT_EQ(freed, 0);
  }
  EXPECT_EQ(freed, 1);
  EXPECT_EQ(units, 1000u);
  EXPECT_EQ(asked, 1002 * sizeof(wchar_t));
}

TEST_F(FrameDirect, LongTextWithoutMemoryRaisesTheMemoryException) {
  const std::string text(1000, 'a');
  const test::ImportHook hook(
      "malloc",
      +[](std::size_t size) -> void* {
        if (size == 1002 * sizeof(wchar_t)) return nullptr;
        return test::Platform<void*(std::size_t)>(L"ucrtbase.dll", "malloc")(size);
      },
      ::GetModuleHandleW(nullptr));
  bool raised = false;
  try {
    const frame::WideText wide(text.c_str());
  } catch (CMemoryException*) {
    raised = true;
  }
  EXPECT_TRUE(raised);
}

// Whatever the memory held before, and without asking the platform.
TEST_F(FrameDirect, NullTextBecomesEmpty) {
  using frame::WideText;
  const test::ImportHook hook("MultiByteToWideChar", &FailingConversion, ::GetModuleHandleW(nullptr));
  conversions = failingConversion = 0;
  for (const char* const text : {static_cast<const char*>(nullptr), ""}) {
    alignas(WideText) volatile unsigned char memory[sizeof(WideText)];
    for (volatile unsigned char& byte : memory) byte = 0xCD;
    const WideText& wide = *new (const_cast<unsigned char*>(memory)) WideText(text);
    EXPECT_STREQ(static_cast<const wchar_t*>(wide), L"");
    wide.~WideText();
  }
  EXPECT_EQ(conversions, 0);
}

}  // namespace
