// SPDX-License-Identifier: MIT
// The frame that every export opens, and rounding: a call into the library beside the same work here.
#include <cmath>

#include "Harness.h"

namespace bench {
namespace {

int RoundHere(double value) {
  if (value >= 0) return value + 0.5 > 2147483647.0 ? 2147483647 : static_cast<int>(value + 0.5);
  return value - 0.5 < -2147483648.0 ? static_cast<int>(-2147483648.0) : static_cast<int>(value - 0.5);
}

unsigned int RoundUnsignedHere(double value) {
  if (value < 0) return 0;
  if (value + 0.5 > 4294967295.0) return 4294967295U;
  return static_cast<unsigned int>(static_cast<long long>(value + 0.5));
}

// One multiplication and division for each decimal: the steps decide the result's last bits.
double RoundDecimalsHere(double value, int decimals) {
  if (decimals >= 16) return value;
  for (int i = 0; i < decimals; ++i) value *= 10.0;
  value += value >= 0 ? 0.5 : -0.5;
  std::modf(value, &value);
  for (int i = 0; i < decimals; ++i) value /= 10.0;
  return value;
}

}  // namespace

void Frames() {
  // Through a pointer, as a host calls the library.
  int (*volatile here)(double) = &RoundHere;
  unsigned int (*volatile unsignedHere)(double) = &RoundUnsignedHere;
  double (*volatile decimalsHere)(double, int) = &RoundDecimalsHere;
  const auto round = BENCH_EXPORT(ZERA_TOOLS_ROUND_INT);
  const auto roundUnsigned = BENCH_EXPORT(ZERA_TOOLS_ROUND_UINT);
  const auto roundDecimals = BENCH_EXPORT(ZERA_TOOLS_ROUND_DOUBLE);
  const auto used = [](double value) { sink = static_cast<long long>(value); };

  Measure("Rounding", "to a whole number", 1, Calls([=] { sink = round(2.5); }),
          Calls([&] { sink = here(2.5); }), Calls([] {
            volatile double value = 2.5;
            sink = std::lround(value);
          }));
  Measure("Rounding", "to an unsigned number", 1, Calls([=] { sink = roundUnsigned(2.5); }),
          Calls([&] { sink = unsignedHere(2.5); }), Calls([] {
            volatile double value = 2.5;
            sink = std::llround(value);
          }));
  Measure("Rounding", "to four decimals", 1, Calls([=] { used(roundDecimals(2.50004, 4)); }),
          Calls([&] { used(decimalsHere(2.50004, 4)); }), Calls([=] {
            volatile double value = 2.50004;
            used(std::round(value * 1e4) / 1e4);
          }));
}

}  // namespace bench
