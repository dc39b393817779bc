// SPDX-License-Identifier: MIT
// ConversionExports.cpp: the exports that convert text.
#include <afx.h>

#include "Conversions.h"
#include "ZERATools.h"
#include "frame/Frame.h"

void ZERA_TOOLS_UC_TO_MBC(const wchar_t* text, CStringA& result) {
  frame::Enter([&] { convert::UcToMbc(text, result); });
}

void ZERA_TOOLS_CHAR8_TO_MBC(const char* text, CStringA& result) {
  frame::Enter([&] { convert::Char8ToMbc(text, result); });
}

void ZERA_TOOLS_CHAR8_TO_UC(const char* text, CStringW& result) {
  frame::Enter([&] { convert::Char8ToUc(text, result); });
}

void ZERA_TOOLS_STRING_MBC_TO_UTF8(const char* text, CStringA& result) {
  frame::Enter([&] { convert::MbcToUtf8(text, result); });
}

void ZERA_TOOLS_STRING_UC_TO_UTF8(const wchar_t* text, CStringA& result) {
  frame::Enter([&] { convert::UcToUtf8(text, result); });
}

void ZERA_TOOLS_STRING_UTF8_TO_MBC(const char* text, CStringA& result) {
  frame::Enter([&] { convert::Utf8ToMbc(text, result); });
}

void ZERA_TOOLS_STRING_UTF8_TO_UC(const char* text, CStringW& result) {
  frame::Enter([&] { convert::Utf8ToUc(text, result); });
}

void ZERA_TOOLS_STRING_UC_TO_HEX(const wchar_t* text, CStringW& result) {
  frame::Enter([&] { convert::UcToHex(text, result); });
}

void ZERA_TOOLS_STRING_HEX_TO_UC(const wchar_t* text, CStringW& result) {
  frame::Enter([&] { convert::HexToUc(text, result); });
}
