// SPDX-License-Identifier: MIT
// RoundingExports.cpp: the exports that round.
#include <afx.h>

#include "Rounding.h"
#include "ZERATools.h"
#include "frame/Frame.h"

int ZERA_TOOLS_ROUND_INT(double value) {
  return frame::Enter([&] { return convert::RoundInt(value); });
}

unsigned int ZERA_TOOLS_ROUND_UINT(double value) {
  return frame::Enter([&] { return convert::RoundUint(value); });
}

double ZERA_TOOLS_ROUND_DOUBLE(double value, int decimals) {
  return frame::Enter([&] { return convert::RoundDouble(value, decimals); });
}
