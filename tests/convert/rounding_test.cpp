// SPDX-License-Identifier: MIT
// Rounding, as a host calls it, against exact integer arithmetic on the bits of the numbers.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "support/Library.h"

namespace {

const auto RoundInt = test::Export<decltype(ZERA_TOOLS_ROUND_INT)>(100);
const auto RoundDouble = test::Export<decltype(ZERA_TOOLS_ROUND_DOUBLE)>(101);
const auto RoundUint = test::Export<decltype(ZERA_TOOLS_ROUND_UINT)>(102);

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double FromBits(std::uint64_t bits) {
  return std::bit_cast<double>(bits);
}
std::uint64_t Bits(double value) {
  return std::bit_cast<std::uint64_t>(value);
}

// A 64-bit mantissa and an exponent: sums and products of doubles are rounded from exact integers here,
// never by the processor's own floating point.
struct Exact {
  bool negative;
  unsigned __int128 mantissa;
  int exponent;
  bool more = false;  // there is a remainder below the mantissa
};

// The double nearest to a number, ties to even. Only numbers in the normal range.
double Nearest(Exact number) {
  if (number.mantissa == 0) return number.negative ? -0.0 : 0.0;
  bool sticky = number.more;
  // Keep 55 bits: 53 of the result, one to round by, one for the rest.
  while (number.mantissa >> 55 != 0) {
    sticky = sticky || (number.mantissa & 1) != 0;
    number.mantissa >>= 1;
    ++number.exponent;
  }
  while (number.mantissa >> 54 == 0) {
    number.mantissa <<= 1;
    --number.exponent;
  }
  auto kept = static_cast<std::uint64_t>(number.mantissa >> 2);
  const unsigned rest = static_cast<unsigned>(number.mantissa & 3);
  if (rest > 2 || (rest == 2 && (sticky || (kept & 1) != 0))) ++kept;
  const double value = std::ldexp(static_cast<double>(kept), number.exponent + 2);
  return number.negative ? -value : value;
}

Exact Split(double value) {
  const std::uint64_t bits = Bits(value);
  const int field = static_cast<int>(bits >> 52 & 0x7FF);
  const std::uint64_t fraction = bits & 0xFFFFFFFFFFFFF;
  return {bits >> 63 != 0, field == 0 ? fraction : fraction | 1ull << 52, field == 0 ? -1074 : field - 1075};
}

double Times10(double value) {
  Exact number = Split(value);
  number.mantissa *= 10;
  return Nearest(number);
}

double Over10(double value) {
  Exact number = Split(value);
  number.mantissa <<= 70;
  number.exponent -= 70;
  number.more = number.mantissa % 10 != 0;
  number.mantissa /= 10;
  return Nearest(number);
}

// The magnitude plus one half, as the nearest double.
double PlusHalf(double magnitude) {
  const Exact number = Split(magnitude);
  if (number.exponent > 0) return magnitude;
  if (number.exponent == 0) return Nearest({false, number.mantissa << 1 | 1, -1});  // halfway to the next
  const int shift = -number.exponent;
  if (shift > 110) return 0.5;
  return Nearest({false, number.mantissa + ((unsigned __int128){1} << (shift - 1)), number.exponent});
}

// The integer part of a magnitude below 2^63.
std::uint64_t Whole(double magnitude) {
  const Exact number = Split(magnitude);
  if (number.exponent >= 0) return static_cast<std::uint64_t>(number.mantissa << number.exponent);
  return -number.exponent >= 64 ? 0 : static_cast<std::uint64_t>(number.mantissa >> -number.exponent);
}

int ExpectedInt(double value) {
  const double moved = PlusHalf(std::fabs(value));
  if (value < 0) return moved >= 2147483648.0 ? INT_MIN : -static_cast<int>(Whole(moved));
  return moved >= 2147483647.0 ? INT_MAX : static_cast<int>(Whole(moved));
}

unsigned ExpectedUint(double value) {
  if (value < 0) return 0;
  const double moved = PlusHalf(value);
  return moved >= 4294967295.0 ? 0xFFFFFFFFu : static_cast<unsigned>(Whole(moved));
}

// For scaled magnitudes below 2^52.
double ExpectedDouble(double value, int decimals) {
  double result = value;
  for (int i = 0; i < decimals; ++i) result = Times10(result);
  const bool negative = result < 0.0;
  result = static_cast<double>(Whole(PlusHalf(std::fabs(result))));
  for (int i = 0; i < decimals; ++i) result = result == 0 ? 0 : Over10(result);
  return negative ? -result : result;
}

TEST(Rounding, ArithmeticOfTheTestIsRight) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    const double value =
        std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 60) - 70);
    ASSERT_EQ(Bits(Times10(value)), Bits(value * 10.0)) << value;
    ASSERT_EQ(Bits(Over10(value)), Bits(value / 10.0)) << value;
    ASSERT_EQ(Bits(PlusHalf(value)), Bits(value + 0.5)) << value;
    ASSERT_EQ(Whole(value), static_cast<std::uint64_t>(value));
  }
}

TEST(Rounding, IntegerTable) {
  const struct {
    double value;
    int expected;
  } rows[] = {{0.0, 0},
              {-0.0, 0},
              {2.5, 3},
              {-2.5, -3},
              {0.5, 1},
              {-0.5, -1},
              {0.49999, 0},
              {-0.4, 0},
              {0.49999999999999994, 1},  // the sum rounds up to 1.0; part of the exact result
              {-0.49999999999999994, -1},
              {3e9, INT_MAX},
              {-3e9, INT_MIN},
              {2147483646.4, 2147483646},
              {2147483646.5, 2147483647},
              {2147483647.0, INT_MAX},
              {-2147483647.4, -2147483647},
              {-2147483647.5, INT_MIN},
              {-2147483648.0, INT_MIN},
              {kInfinity, INT_MAX},
              {-kInfinity, INT_MIN},
              {1e308, INT_MAX},
              {-1e308, INT_MIN},
              {5e-324, 0},
              {-5e-324, 0}};
  for (const auto& row : rows) EXPECT_EQ(RoundInt(row.value), row.expected) << row.value;
}

TEST(Rounding, UnsignedTable) {
  const struct {
    double value;
    unsigned expected;
  } rows[] = {{0.0, 0},
              {-0.0, 0},
              {-0.1, 0},
              {-1e308, 0},
              {-kInfinity, 0},
              {0.5, 1},
              {2147483647.5, 2147483648u},
              {3e9, 3000000000u},
              {4294967294.4, 4294967294u},
              {4294967294.5, 4294967295u},
              {4294967294.6, 4294967295u},
              {5e9, 4294967295u},
              {1e300, 4294967295u},
              {kInfinity, 4294967295u}};
  for (const auto& row : rows) EXPECT_EQ(RoundUint(row.value), row.expected) << row.value;
}

TEST(Rounding, NotANumberIsTruncatedAsTheProcessorDoes) {
  for (const std::uint64_t bits : {0x7FF8000000000000u, 0xFFF8000000000000u, 0x7FF8000012345678u}) {
    EXPECT_EQ(RoundInt(FromBits(bits)), INT_MIN);
    EXPECT_EQ(RoundUint(FromBits(bits)), 0u);
    EXPECT_TRUE(std::isnan(RoundDouble(FromBits(bits), 2)));
    EXPECT_EQ(Bits(RoundDouble(FromBits(bits), 16)), bits);
  }
}

TEST(Rounding, DecimalsTable) {
  const struct {
    double value;
    int decimals;
    double expected;
  } rows[] = {{1.25, 1, 1.3},
              {-1.25, 1, -1.3},
              {7.6, -3, 8.0},
              {7.6, 0, 8.0},
              {-7.5, INT_MIN, -8.0},
              {1.005, 2, 1.0},   // 1.005 lies below the half as a double
              {2.675, 2, 2.68},  // lies below too, but the scaled value rounds up to the half
              {1234.5678, 3, 1234.568},
              {0.1, 15, 0.1},
              {1e20, 2, 1e20},
              {0.0, 5, 0.0},
              {kInfinity, 3, kInfinity},
              {-kInfinity, 3, -kInfinity},
              {1e308, 15, kInfinity}};  // the scaling overflows, and nothing brings it back
  for (const auto& row : rows) {
    EXPECT_EQ(Bits(RoundDouble(row.value, row.decimals)), Bits(row.expected))
        << row.value << " " << row.decimals;
  }
}

TEST(Rounding, SignOfZeroIsThatOfTheScaledValue) {
  EXPECT_EQ(Bits(RoundDouble(-0.0, 2)), Bits(0.0));
  EXPECT_EQ(Bits(RoundDouble(-0.001, 2)), Bits(-0.0));
  EXPECT_EQ(Bits(RoundDouble(0.001, 2)), Bits(0.0));
  EXPECT_EQ(Bits(RoundDouble(-5e-324, 3)), Bits(-0.0));
}

TEST(Rounding, SixteenDecimalsAndMoreChangeNothing) {
  for (const double value : {1.0 / 3, -2.0 / 3, 1e-300, 5e-324, -0.0, 1e308}) {
    for (const int decimals : {16, 17, 100, INT_MAX}) {
      EXPECT_EQ(Bits(RoundDouble(value, decimals)), Bits(value)) << value << " " << decimals;
    }
  }
}

// Ten is multiplied in step by step; for these numbers one power of ten gives other bits.
TEST(Rounding, ScalingIsStepByStep) {
  std::mt19937_64 random(1);
  int differing = 0;
  for (int i = 0; i < 20000; ++i) {
    const double value = static_cast<double>(random() >> 11) * 0x1p-43;  // below 1024
    const double once = std::floor(value * 1e12 + 0.5) / 1e12;
    const double expected = ExpectedDouble(value, 12);
    ASSERT_EQ(Bits(RoundDouble(value, 12)), Bits(expected)) << value;
    differing += Bits(once) != Bits(expected);
  }
  EXPECT_GT(differing, 0);
}

std::vector<double> Numbers() {
  std::vector<double> numbers;
  std::mt19937_64 random(99);
  for (int i = 0; i < 20000; ++i) {
    // All sizes up to beyond the integers' range, and halves with their neighbours.
    const double any = std::ldexp(static_cast<double>(random() >> 11), static_cast<int>(random() % 90) - 108);
    const double half = static_cast<double>(random() >> 31) + 0.5;
    for (const double magnitude : {any, half, std::nextafter(half, 0.0), std::nextafter(half, kInfinity)}) {
      numbers.push_back(magnitude);
      numbers.push_back(-magnitude);
    }
  }
  return numbers;
}

TEST(Rounding, IntegersOfAllSizesMatchExactArithmetic) {
  for (const double value : Numbers()) {
    ASSERT_EQ(RoundInt(value), ExpectedInt(value)) << value;
    ASSERT_EQ(RoundUint(value), ExpectedUint(value)) << value;
  }
}

TEST(Rounding, DecimalsOfAllSizesMatchExactArithmetic) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 200000; ++i) {
    const int decimals = static_cast<int>(random() % 18) - 2;
    const double value = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                    -static_cast<int>(random() % 80) - 11);
    if (decimals >= 16 || std::fabs(value) * std::pow(10.0, decimals) >= 0x1p51) continue;
    ASSERT_EQ(Bits(RoundDouble(value, decimals)), Bits(ExpectedDouble(value, decimals)))
        << value << " " << decimals;
  }
}

}  // namespace
