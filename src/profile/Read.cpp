// SPDX-License-Identifier: MIT
#include "Read.h"

#include "Companion.h"
#include "Platform.h"
#include "convert/Conversions.h"

namespace profile {
namespace {

// A companion's text is longer than the value: three bytes of UTF-8 or five hexadecimal characters for
// each of its units, and what a code page makes of them.
constexpr std::size_t kScratchFactor = 10;
constexpr std::size_t kMostScratch = 0x7FFFFFE0;

DWORD PlatformSize(std::size_t capacity) {
  return capacity > MAXDWORD ? MAXDWORD : static_cast<DWORD>(capacity);
}

// Reads the key itself. The platform cuts the value to the capacity, but a default that it does not
// give, as for an empty value, is copied whole or not at all.
template <class Char>
void ReadKey(const Char* section, const Char* key, const Char* file, const Char* defaultText, Char* text,
             std::size_t capacity) {
  if (Platform<Char>::Read(section, key, defaultText, text, PlatformSize(capacity), file) != 0) return;
  if (!defaultText) defaultText = Platform<Char>::kEmpty;
  const std::size_t size = Platform<Char>::Length(defaultText) + 1;
  if (size <= capacity) ::memmove(text, defaultText, size * sizeof(Char));
}

// A companion's text; empty if there is none.
bool ReadCompanion(const wchar_t* section, const wchar_t* key, const wchar_t* suffix, const wchar_t* file,
                   std::size_t capacity, CStringW& stored) {
  if (capacity > kMostScratch / kScratchFactor) AfxThrowMemoryException();
  const int size = static_cast<int>(capacity * kScratchFactor);
  const CStringW name = CompanionKey(key, suffix);
  wchar_t* const buffer = stored.GetBuffer(size);
  buffer[0] = 0;
  const DWORD count = Platform<wchar_t>::Read(section, name, nullptr, buffer, static_cast<DWORD>(size), file);
  stored.ReleaseBuffer();
  return count > 0;
}

// All or nothing: half a text is of no use to anyone who stored it in a companion.
void Store(const CStringW& value, wchar_t* text, std::size_t capacity) {
  if (static_cast<std::size_t>(value.GetLength()) < capacity) {
    Platform<wchar_t>::Copy(text, capacity, value);
  }
}

}  // namespace

void ReadString(const char* section, const char* key, const char* file, const char* defaultText, char* text,
                std::size_t capacity) {
  if (!text) {
    Platform<char>::Copy(text, capacity, "");
    return;
  }
  ReadKey(section, key, file, defaultText, text, capacity);
}

void ReadString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* defaultText,
                wchar_t* text, std::size_t capacity) {
  Platform<wchar_t>::Copy(text, capacity, L"");
  if (!text || capacity == 0) return;
  CStringW stored;
  if (ReadCompanion(section, key, kUtf8Suffix, file, capacity, stored)) {
    Store(FromUtf8Companion(stored), text, capacity);
    return;
  }
  if (ReadCompanion(section, key, kHexSuffix, file, capacity, stored)) {
    CStringW value;
    convert::HexToUc(stored, value);
    Store(value, text, capacity);
    return;
  }
  ReadKey(section, key, file, defaultText, text, capacity);
}

}  // namespace profile
