// SPDX-License-Identifier: MIT
// Utf8.cpp: text into and out of UTF-8, by the platform's conversion with no flags: what is invalid
// becomes the replacement character.
#include "Conversions.h"

namespace convert {
namespace {

// Lets `convert` measure (no buffer), then fill a buffer of exactly that size, terminator included.
template <class Char, class Convert>
void InTwoPasses(CStringT<Char>& result, Convert convert) {
  const int size = convert(nullptr, 0);
  if (size <= 0) {
    result.Empty();
    return;
  }
  Char* const buffer = result.GetBuffer(size);
  const int written = convert(buffer, size);
  // No terminator goes in but the one at the end, and none comes out. Half a sequence before it may take it
  // with it, so it is looked for, not assumed.
  const bool terminated = written > 0 && buffer[written - 1] == 0;
  result.ReleaseBufferSetLength(terminated ? written - 1 : written);
}

}  // namespace

void UcToUtf8(const wchar_t* text, CStringA& result) {
  InTwoPasses(result, [text](char* buffer, int size) {
    return text ? ::WideCharToMultiByte(CP_UTF8, 0, text, -1, buffer, size, nullptr, nullptr) : 0;
  });
}

void Utf8ToUc(const char* text, CStringW& result) {
  InTwoPasses(result, [text](wchar_t* buffer, int size) {
    return text ? ::MultiByteToWideChar(CP_UTF8, 0, text, -1, buffer, size) : 0;
  });
}

void MbcToUtf8(const char* text, CStringA& result) {
  UcToUtf8(CStringW(text), result);
}

void Utf8ToMbc(const char* text, CStringA& result) {
  CStringW wide;
  Utf8ToUc(text, wide);
  result = wide.GetString();
}

}  // namespace convert
