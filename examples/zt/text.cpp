// SPDX-License-Identifier: MIT
// zt text: character sets.
#include <ZERATools.h>

#include <string_view>

#include "arguments.h"
#include "console.h"

namespace zt {
namespace {

std::wstring_view View(const CStringW& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

void PrintHex(const CStringA& bytes) {
  constexpr wchar_t digits[] = L"0123456789ABCDEF";
  std::wstring text;
  for (int i = 0; i < bytes.GetLength(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (i) text += L' ';
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  PrintLine(text);
}

bool IsHexDigit(wchar_t one) {
  return std::wstring_view(L"0123456789ABCDEFabcdef").find(one) != std::wstring_view::npos;
}

using TextToText = void (*)(const wchar_t*, CStringW&);
using TextToBytes = void (*)(const wchar_t*, CStringA&);
using BytesToText = void (*)(const char*, CStringW&);
using BytesToBytes = void (*)(const char*, CStringA&);

Exit Convert(TextToText convert, const Arguments& arguments) {
  CStringW result;
  convert(arguments.Text(0).c_str(), result);
  PrintLine(View(result));
  return done;
}

Exit Convert(TextToBytes convert, const Arguments& arguments) {
  CStringA result;
  convert(arguments.Text(0).c_str(), result);
  PrintHex(result);
  return done;
}

Exit Convert(BytesToText convert, const Arguments& arguments) {
  CStringW result;
  convert(arguments.Bytes(0).c_str(), result);
  PrintLine(View(result));
  return done;
}

Exit Convert(BytesToBytes convert, const Arguments& arguments) {
  CStringA result;
  convert(arguments.Bytes(0).c_str(), result);
  PrintHex(result);
  return done;
}

// Numbers of one to four digits, one blank between them: what the library would end the text at, or
// cut to 16 bits, is refused.
Exit FromHex(const Arguments& arguments) {
  const std::wstring& text = arguments.Text(0);
  std::size_t digits = 0;
  bool zero = true;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const wchar_t one = i < text.size() ? text[i] : L' ';
    if (one != L' ') {
      ++digits;
      zero = zero && one == L'0';
      if (!IsHexDigit(one) || digits > 4) digits = 5;
      continue;
    }
    if (!text.empty() && (digits == 0 || digits > 4 || zero)) {
      arguments.Reject(0, L"is not made of numbers 1 to FFFF with one blank between them");
    }
    digits = 0;
    zero = true;
  }
  return Convert(ZERA_TOOLS_STRING_HEX_TO_UC, arguments);
}

const Command commands[] = {
    {L"to-hex", L"TEXT", L"Text to its UTF-16 numbers", L"The form in which old settings files keep texts.\n",
     L"zt text to-hex Hi\n48 69", L"ZERA_TOOLS_STRING_UC_TO_HEX",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_STRING_UC_TO_HEX, arguments); }},
    {L"from-hex", L"NUMBERS", L"UTF-16 numbers to text",
     L"Hexadecimal numbers 1 to FFFF with one blank between them.\n", L"zt text from-hex \"48 69\"\nHi",
     L"ZERA_TOOLS_STRING_HEX_TO_UC", FromHex},
    {L"to-utf8", L"TEXT", L"Text to its UTF-8 bytes", L"", L"zt text to-utf8 Hi\n48 69",
     L"ZERA_TOOLS_STRING_UC_TO_UTF8",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_STRING_UC_TO_UTF8, arguments); }},
    {L"from-utf8", L"BYTES", L"UTF-8 bytes to text", L"", L"zt text from-utf8 \"47 72 C3 BC 6E\"\nGr\u00FCn",
     L"ZERA_TOOLS_STRING_UTF8_TO_UC",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_STRING_UTF8_TO_UC, arguments); }},
    {L"to-ansi", L"TEXT", L"Text to bytes of the code page",
     L"Degree and micro signs by the table of the multi-byte code page in use.\n",
     L"zt text to-ansi Hi\n48 69", L"ZERA_TOOLS_UC_TO_MBC",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_UC_TO_MBC, arguments); }},
    {L"utf8-to-ansi", L"BYTES", L"UTF-8 bytes to bytes of the code page", L"",
     L"zt text utf8-to-ansi \"48 69\"\n48 69", L"ZERA_TOOLS_STRING_UTF8_TO_MBC",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_STRING_UTF8_TO_MBC, arguments); }},
    {L"ansi-to-utf8", L"BYTES", L"Bytes of the code page to UTF-8 bytes", L"",
     L"zt text ansi-to-utf8 \"48 69\"\n48 69", L"ZERA_TOOLS_STRING_MBC_TO_UTF8",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_STRING_MBC_TO_UTF8, arguments); }},
    {L"latin-to-ansi", L"BYTES", L"Latin degree and micro signs to those of the code page",
     L"B0 and B5 by the table of the multi-byte code page in use; other bytes stay.\n",
     L"zt text latin-to-ansi \"48 69\"\n48 69", L"ZERA_TOOLS_CHAR8_TO_MBC",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_CHAR8_TO_MBC, arguments); }},
    {L"from-latin", L"BYTES", L"Bytes with Latin degree and micro signs to text",
     L"Other bytes by the code page.\n", L"zt text from-latin \"32 35 B0\"\n25\u00B0",
     L"ZERA_TOOLS_CHAR8_TO_UC",
     [](const Arguments& arguments) { return Convert(ZERA_TOOLS_CHAR8_TO_UC, arguments); }},
};

}  // namespace

const Group textGroup = {L"text", L"Convert between text, UTF-8, the code page and hexadecimal numbers",
                         L"BYTES are pairs of hexadecimal digits, with or without blanks between them.\n",
                         commands};

}  // namespace zt
