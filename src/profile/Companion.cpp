// SPDX-License-Identifier: MIT
#include "Companion.h"

#include "convert/Conversions.h"

namespace profile {

CStringW CompanionKey(const wchar_t* key, const wchar_t* suffix) {
  CStringW name(key);
  name += suffix;
  return name;
}

CStringW ToUtf8Companion(const wchar_t* value) {
  CStringA bytes;
  convert::UcToUtf8(value, bytes);
  return CStringW(bytes.GetString());
}

CStringW FromUtf8Companion(const wchar_t* stored) {
  const CStringA bytes(stored);
  CStringW text;
  convert::Utf8ToUc(bytes, text);
  return text;
}

}  // namespace profile
