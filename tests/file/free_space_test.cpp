// SPDX-License-Identifier: MIT
// The free space of a drive: as a host asks, and the numbers behind it.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <cmath>
#include <random>
#include <string>

#include "file/FreeSpace.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

const auto Plain = test::Export<decltype(ZERA_TOOLS_FILE_GET_FREEDISK_GB)>(9);
const auto Wide = test::Export<decltype(ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC)>(1009);

// What the platform answers next.
struct Answer {
  bool bytesKnown = true;
  ULONGLONG toCaller = 0;
  bool clustersKnown = true;
  DWORD sectors = 0, bytes = 0, clusters = 0;
  std::wstring askedBytes, askedClusters;
} answer;

BOOL WINAPI Bytes(const wchar_t* root, ULARGE_INTEGER* toCaller, ULARGE_INTEGER* total,
                  ULARGE_INTEGER* free) {
  answer.askedBytes += root;
  if (!answer.bytesKnown) return FALSE;
  // The other two counts must not matter.
  if (toCaller) toCaller->QuadPart = answer.toCaller;
  if (total) total->QuadPart = 0x1111111111111111;
  if (free) free->QuadPart = 0x2222222222222222;
  return TRUE;
}

BOOL WINAPI Clusters(const wchar_t* root, DWORD* sectors, DWORD* bytes, DWORD* free, DWORD* total) {
  answer.askedClusters += root;
  if (!answer.clustersKnown) return FALSE;
  *sectors = answer.sectors;
  *bytes = answer.bytes;
  *free = answer.clusters;
  *total = 0xFFFFFFFF;
  return TRUE;
}

class FreeSpace : public ::testing::Test {
 protected:
  FreeSpace() { answer = {}; }

  test::ImportHook bytes_{"GetDiskFreeSpaceExW", &Bytes};
  test::ImportHook clusters_{"GetDiskFreeSpaceW", &Clusters};
};

TEST_F(FreeSpace, BytesFreeToTheCallerAsGigabytes) {
  // Worked out by hand from the formula: 65535 x 65535 bytes for each 4 GiB.
  const struct {
    ULONGLONG bytes;
    double gigabytes;
  } rows[] = {
      {0, 0.0},
      {1, 1.0 / 1073741824},
      {0x40000000, 1.0},
      {0xFFFFFFFF, 3.9999999990686774},
      {0x100000000, 3.99987793061882257462},          // 4294836225 / 1073741824
      {0x280000000, 2 * 3.99987793061882257462 + 2},  // 10 GiB
      {0x10000000000, 256 * 3.99987793061882257462},  // 1 TiB
  };
  for (const auto& row : rows) {
    answer.toCaller = row.bytes;
    EXPECT_EQ(Plain('C'), static_cast<float>(row.gigabytes)) << row.bytes;
    EXPECT_EQ(Wide(L'C'), static_cast<float>(row.gigabytes)) << row.bytes;
  }
}

TEST_F(FreeSpace, RootIsTheLetterAndAColon) {
  Plain('q');
  EXPECT_EQ(answer.askedBytes, L"q:");
  Wide(L'\u0416');
  EXPECT_EQ(answer.askedBytes, L"q:\u0416:");
  EXPECT_EQ(answer.askedClusters, L"");
}

// No code page turns the byte into a letter of its own.
TEST_F(FreeSpace, PlainLetterIsTakenByValue) {
  Plain('\xA9');
  ASSERT_EQ(answer.askedBytes.size(), 2u);
  EXPECT_EQ(answer.askedBytes[0], static_cast<wchar_t>('\xA9'));
}

TEST_F(FreeSpace, ClustersAreTheFallbackInKilobytes) {
  answer.bytesKnown = false;
  answer.sectors = 8;
  answer.bytes = 512;
  answer.clusters = 3;
  EXPECT_EQ(Plain('C'), 12.0f);
  EXPECT_EQ(Wide(L'C'), 12.0f);
  EXPECT_EQ(answer.askedBytes, L"C:C:");
  EXPECT_EQ(answer.askedClusters, L"C:C:");
  answer.sectors = answer.bytes = answer.clusters = 0x10000000;
  EXPECT_EQ(Wide(L'C'), std::ldexp(1.0f, 84 - 10)) << "a product beyond 64 bits";
}

TEST_F(FreeSpace, NoAnswerIsZero) {
  answer.bytesKnown = answer.clustersKnown = false;
  EXPECT_EQ(Plain('C'), 0.0f);
  EXPECT_EQ(Wide(L'C'), 0.0f);
}

TEST(FreeSpaceOfDrives, DriveOfTheBuildHasSpaceAndMissingOnesHaveNone) {
  EXPECT_GT(Plain('X'), 0.0f);
  EXPECT_GT(Wide(L'x'), 0.0f);
  for (const char letter : {'Q', '\0', '\\', '*', '\xFF'}) {
    EXPECT_EQ(Plain(letter), 0.0f) << static_cast<int>(letter);
    EXPECT_EQ(Wide(static_cast<unsigned char>(letter)), 0.0f) << static_cast<int>(letter);
  }
}

// The formula in long double, of the two halves taken apart in another way.
TEST(FreeSpaceNumbers, RandomCountsAgreeWithTheFormula) {
  std::mt19937_64 random(20240607);
  for (int i = 0; i < 100000; ++i) {
    const unsigned long long count = random() >> (random() % 64);
    const long double high = static_cast<long double>(count / 4294967296ull);
    const long double low = static_cast<long double>(count % 4294967296ull);
    const long double expected = (low + high * 65535.0L * 65535.0L) / 1073741824.0L;
    const float got =
        file::GigabytesFree(static_cast<std::uint32_t>(count), static_cast<std::uint32_t>(count >> 32));
    ASSERT_NEAR(got, static_cast<double>(expected), static_cast<double>(expected) * 6.1e-8) << count;
  }
}

TEST(FreeSpaceNumbers, LessThanTheTruthAboveFourGigabytes) {
  EXPECT_LT(file::GigabytesFree(0, 1), 4.0f);
  EXPECT_EQ(file::GigabytesFree(0xC0000000, 0), 3.0f);
}

}  // namespace
