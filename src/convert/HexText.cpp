// SPDX-License-Identifier: MIT
// HexText.cpp: text into and out of its hexadecimal form.
#include <wchar.h>

#include <cstring>

#include "Conversions.h"
#include "Exact.h"
#include "Hex.h"

namespace convert {
namespace {

// A piece is read as the C runtime reads numbers, which takes more than we write: a sign, a prefix,
// blanks of other kinds before and anything behind the digits. A piece without a number is a NUL.
wchar_t ReadPiece(const wchar_t* piece, std::size_t length) {
  unsigned int number = 0;
  if (ReadPlainHex(piece, length, number)) return static_cast<wchar_t>(number);
  number = 0;
  return ::_snwscanf(piece, length, L"%X", &number) == 1 ? static_cast<wchar_t>(number) : L'\0';
}

}  // namespace

void UcToHex(const wchar_t* text, CStringW& result) {
  const Source source(text, result);
  std::size_t length = 0;
  for (const wchar_t unit : source) length += static_cast<std::size_t>(HexLength(unit) + 1);
  if (length > 0) --length;

  StoreExactly(result, length, [&](wchar_t* out) {
    // The terminator's place takes the last blank until then.
    const wchar_t* const end = out + length + 1;
    for (const wchar_t unit : source) {
      if (end - out >= kHexRoom) {
        out = FormatHex(unit, out);
      } else {
        wchar_t last[kHexRoom];
        const auto count = FormatHex(unit, last) - last;
        std::memcpy(out, last, static_cast<std::size_t>(count) * sizeof(wchar_t));
        out += count;
      }
    }
  });
}

void HexToUc(const wchar_t* text, CStringW& result) {
  const Source source(text, result);
  std::size_t length = 0;
  ForEachHexPiece(source.begin(), source.end(), [&](const wchar_t*, std::size_t) { ++length; });
  StoreExactly(result, length, [&](wchar_t* out) {
    ForEachHexPiece(source.begin(), source.end(),
                    [&](const wchar_t* piece, std::size_t size) { *out++ = ReadPiece(piece, size); });
  });
}

}  // namespace convert
