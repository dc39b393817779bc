// SPDX-License-Identifier: MIT
// zt round: numbers.
#include <ZERATools.h>

#include <cfloat>
#include <cstdio>

#include "arguments.h"
#include "console.h"

namespace zt {
namespace {

Exit ToInt(const Arguments& arguments) {
  PrintLine(std::to_wstring(ZERA_TOOLS_ROUND_INT(arguments.Number(0, DBL_MAX))));
  return done;
}

Exit ToUint(const Arguments& arguments) {
  PrintLine(std::to_wstring(ZERA_TOOLS_ROUND_UINT(arguments.Number(0, DBL_MAX))));
  return done;
}

Exit ToDecimals(const Arguments& arguments) {
  const double value = arguments.Number(0, DBL_MAX);
  const int decimals = static_cast<int>(arguments.Integer(1, 0, 15));
  wchar_t text[DBL_MAX_10_EXP + 32];
  std::swprintf(text, std::size(text), L"%.*f", decimals, ZERA_TOOLS_ROUND_DOUBLE(value, decimals));
  PrintLine(text);
  return done;
}

const Command commands[] = {
    {L"int", L"VALUE", L"To a signed whole number", L"At least -2147483648, at most 2147483647.\n",
     L"zt round int -2.5\n-3", L"ZERA_TOOLS_ROUND_INT", ToInt},
    {L"uint", L"VALUE", L"To an unsigned whole number", L"At least 0, at most 4294967295.\n",
     L"zt round uint 2.5\n3", L"ZERA_TOOLS_ROUND_UINT", ToUint},
    {L"double", L"VALUE DECIMALS", L"To a number of decimals", L"DECIMALS from 0 to 15.\n",
     L"zt round double 1.25 1\n1.3", L"ZERA_TOOLS_ROUND_DOUBLE", ToDecimals},
};

}  // namespace

const Group roundGroup = {L"round", L"Round numbers, halves away from zero", L"", commands};

}  // namespace zt
