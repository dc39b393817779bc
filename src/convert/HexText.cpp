// SPDX-License-Identifier: MIT
// HexText.cpp: text into and out of its hexadecimal form.
#include <wchar.h>

#include "Conversions.h"
#include "Hex.h"

namespace convert {

void UcToHex(const wchar_t* text, CStringW& result) {
  CStringW built;
  for (; text && *text; ++text) {
    if (!built.IsEmpty()) built.AppendChar(L' ');
    wchar_t digits[kMostHexDigits];
    built.Append(digits, FormatHex(*text, digits));
  }
  result.SetString(built, built.GetLength());
}

// A piece is read as the C runtime reads numbers, which takes more than we write: a sign, a prefix,
// blanks of other kinds before and anything behind the digits. A piece without a number is a NUL.
void HexToUc(const wchar_t* text, CStringW& result) {
  CStringW built;
  ForEachHexPiece(text ? text : L"", [&](const wchar_t* piece, std::size_t length) {
    unsigned int number = 0;
    const int fields = ::_snwscanf(piece, length, L"%X", &number);
    built.AppendChar(fields == 1 ? static_cast<wchar_t>(number) : L'\0');
  });
  result.SetString(built, built.GetLength());
}

}  // namespace convert
