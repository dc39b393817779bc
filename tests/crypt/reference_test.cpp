// SPDX-License-Identifier: MIT
// The reference cipher against the published vectors: what the other tests compare with is right itself.
#include "Reference.h"

#include <gtest/gtest.h>

namespace {

TEST(CryptReference, Md5OfThePublishedSuite) {
  using reference::Hex;
  using reference::Md5;
  EXPECT_EQ(Hex(Md5("")), "D41D8CD98F00B204E9800998ECF8427E");
  EXPECT_EQ(Hex(Md5("a")), "0CC175B9C0F1B6A831C399E269772661");
  EXPECT_EQ(Hex(Md5("abc")), "900150983CD24FB0D6963F7D28E17F72");
  EXPECT_EQ(Hex(Md5("message digest")), "F96B697D7CB7938D525A2F31AAF161D0");
  EXPECT_EQ(Hex(Md5("abcdefghijklmnopqrstuvwxyz")), "C3FCD3D76192E4007DFB496CCA67E13B");
  EXPECT_EQ(Hex(Md5("12345678901234567890123456789012345678901234567890123456789012345678901234567890")),
            "57EDF4A22BE3C955AC49DA2E2107B67A");
}

TEST(CryptReference, Rc4KeyStreamOfThePublishedVectors) {
  const std::string zeros(16, '\0');
  const std::string key = "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10";
  EXPECT_EQ(reference::Hex(reference::Rc4(key.substr(0, 5), zeros)), "B2396305F03DC027CCC3524A0A1118A8");
  EXPECT_EQ(reference::Hex(reference::Rc4(key, zeros)), "9AC7CC9A609D1EF7B2932899CDE41B97");
}

}  // namespace
