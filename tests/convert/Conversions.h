// SPDX-License-Identifier: MIT
// Conversions.h: the conversion exports, bound by ordinal, as functions from text to text.
#pragma once

#include <ZERATools.h>

#include <string>

#include "support/HostString.h"
#include "support/Library.h"

namespace conversions {

inline const auto UcToMbc = test::Export<decltype(ZERA_TOOLS_UC_TO_MBC)>(110);
inline const auto Char8ToMbc = test::Export<decltype(ZERA_TOOLS_CHAR8_TO_MBC)>(111);
inline const auto Char8ToUc = test::Export<decltype(ZERA_TOOLS_CHAR8_TO_UC)>(112);
inline const auto MbcToUtf8 = test::Export<decltype(ZERA_TOOLS_STRING_MBC_TO_UTF8)>(113);
inline const auto UcToUtf8 = test::Export<decltype(ZERA_TOOLS_STRING_UC_TO_UTF8)>(114);
inline const auto Utf8ToMbc = test::Export<decltype(ZERA_TOOLS_STRING_UTF8_TO_MBC)>(115);
inline const auto Utf8ToUc = test::Export<decltype(ZERA_TOOLS_STRING_UTF8_TO_UC)>(116);
inline const auto UcToHex = test::Export<decltype(ZERA_TOOLS_STRING_UC_TO_HEX)>(117);
inline const auto HexToUc = test::Export<decltype(ZERA_TOOLS_STRING_HEX_TO_UC)>(118);

// What a conversion makes of a text, in a host's string that held another text before. NULs inside the
// result are kept.
template <class In, class Out>
std::basic_string<Out> Convert(void(__cdecl* conversion)(const In*, CStringT<Out>&),
                               const std::basic_string<In>& text) {
  const Out before[] = {'o', 'l', 'd', 0};
  CStringT<Out> result(before);
  conversion(text.c_str(), result);
  return {result.GetString(), static_cast<std::size_t>(result.GetLength())};
}

}  // namespace conversions
