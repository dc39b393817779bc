// The frame of every export: module state and exceptions, seen from inside.
#include "frame/Frame.h"

#include <gtest/gtest.h>

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

TEST_F(FrameDirect, NullTextBecomesEmpty) {
  EXPECT_STREQ(frame::WideText(nullptr), L"");
}

}  // namespace
