// SPDX-License-Identifier: MIT
// CodePage.cpp: text into and out of the ANSI code page, character by character.
#include <type_traits>

#include "Conversions.h"
#include "Signs.h"

// Behind the others: it claims short names as macros.
#include <mbctype.h>

namespace convert {
namespace {

// More than one character has in any code page, terminator included.
constexpr int kMostOfOne = 8;

// ASCII is the same in every ANSI code page; the platform is asked for the rest.
void AppendAnsi(CStringA& to, wchar_t one) {
  if (one < 0x80) {
    to.AppendChar(static_cast<char>(one));
    return;
  }
  const wchar_t text[] = {one, 0};
  char bytes[kMostOfOne];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text, -1, bytes, kMostOfOne, nullptr, nullptr);
  to.Append(bytes, size - 1);
}

void AppendWide(CStringW& to, char one) {
  if ((one & 0x80) == 0) {
    to.AppendChar(static_cast<wchar_t>(one));
    return;
  }
  const char text[] = {one, 0};
  wchar_t units[kMostOfOne];
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text, -1, units, kMostOfOne);
  to.Append(units, size - 1);
}

void AppendSign(CStringA& to, const Sign& sign) {
  if (sign.dropsTextBefore) to.Empty();
  to.Append(sign.bytes);
}

// Each result is built apart and stored at the end: the text may lie in the result's own buffer.

// The signs by table, every other character by `append`.
template <class Char, class Append>
void ToMbc(const Char* text, const Signs& signs, CStringA& result, Append append) {
  CStringA built;
  for (; text && *text; ++text) {
    switch (static_cast<std::make_unsigned_t<Char>>(*text)) {
      case kMicro:
        AppendSign(built, signs.micro);
        break;
      case kDegree:
        AppendSign(built, signs.degree);
        break;
      default:
        append(built, *text);
    }
  }
  result.SetString(built, built.GetLength());
}

}  // namespace

void UcToMbc(const wchar_t* text, CStringA& result) {
  ToMbc(text, SignsOfUtf16(::_getmbcp()), result, &AppendAnsi);
}

void Char8ToMbc(const char* text, CStringA& result) {
  ToMbc(text, SignsOfLatin1(::_getmbcp()), result, [](CStringA& to, char one) { to.AppendChar(one); });
}

void Char8ToUc(const char* text, CStringW& result) {
  CStringW built;
  for (; text && *text; ++text) {
    const auto byte = static_cast<unsigned char>(*text);
    if (byte == kDegree || byte == kMicro) {
      built.AppendChar(byte);
    } else {
      AppendWide(built, *text);
    }
  }
  result.SetString(built, built.GetLength());
}

}  // namespace convert
