// The path exports as a host calls them, both character sets from one table.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include "support/GuardedBuffer.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

namespace {

const auto GetDrive = test::Export<decltype(ZERA_TOOLS_FILE_GET_DRIVE)>(10);

TEST(Path, GetDriveLeavesTheRestOfTheBufferAlone) {
  test::GuardedBuffer<char> out(8);
  EXPECT_EQ(GetDrive("C:\\data\\run.ini", out.data(), out.capacity()), 1);
  EXPECT_EQ(out.text(), "C:");
  EXPECT_TRUE(out.UntouchedFrom(3));
  EXPECT_TRUE(out.Intact());
}

TEST(Path, ResultThatDoesNotFitIsAnInvalidParameter) {
  test::InvalidParameter handler;
  test::GuardedBuffer<char> out(2);
  EXPECT_EQ(GetDrive("C:\\data\\run.ini", out.data(), out.capacity()), 1);
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(handler.Count(), 1);
  EXPECT_TRUE(out.Intact());
}

}  // namespace
