// SPDX-License-Identifier: MIT
// zera/round.hpp: rounding half away from zero, with the ends of the type where a number leaves it.
#pragma once

#include "../../ZERATools.h"

namespace zera {

/// To a whole number. As #ZERA_TOOLS_ROUND_INT.
[[nodiscard]] inline int round_int(double value) {
  return ZERA_TOOLS_ROUND_INT(value);
}
/// To a whole number without a sign. As #ZERA_TOOLS_ROUND_UINT.
[[nodiscard]] inline unsigned int round_uint(double value) {
  return ZERA_TOOLS_ROUND_UINT(value);
}
/// To decimals. As #ZERA_TOOLS_ROUND_DOUBLE.
[[nodiscard]] inline double round(double value, int decimals) {
  return ZERA_TOOLS_ROUND_DOUBLE(value, decimals);
}

}  // namespace zera
