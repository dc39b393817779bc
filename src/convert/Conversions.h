// SPDX-License-Identifier: MIT
// Conversions.h: text between UTF-16, the ANSI code page, UTF-8 and hexadecimal text. The rules of each
// stand at its export in ZERATools.h; these are the same operations without the frame, for the
// library's own use. A null text counts as empty. The input may lie in the result itself.
#pragma once

#include <afx.h>

namespace convert {

void UcToMbc(const wchar_t* text, CStringA& result);
void Char8ToMbc(const char* text, CStringA& result);
void Char8ToUc(const char* text, CStringW& result);

void MbcToUtf8(const char* text, CStringA& result);
void UcToUtf8(const wchar_t* text, CStringA& result);
void Utf8ToMbc(const char* text, CStringA& result);
void Utf8ToUc(const char* text, CStringW& result);

void UcToHex(const wchar_t* text, CStringW& result);
void HexToUc(const wchar_t* text, CStringW& result);

}  // namespace convert
