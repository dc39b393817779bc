// SPDX-License-Identifier: MIT
// Lines.h: a settings file's text, line by line into a caller's buffer, once for both character types.
// Each gives 1 if its line fitted with a terminator and was written, 0 otherwise.
#pragma once

#include <afx.h>

#include "Companion.h"
#include "Numbers.h"
#include "Platform.h"

namespace profile {

template <class Char>
CStringT<Char> KeyLine(const Char* key, const Char* value) {
  CStringT<Char> line(key);
  line.AppendChar(Char('='));
  line.Append(value);
  line.AppendChar(Char('\n'));
  return line;
}

template <class Char>
int PutLine(const CStringT<Char>& line, Char* position, std::size_t free, std::size_t* count) {
  const auto length = static_cast<std::size_t>(line.GetLength());
  if (free <= length) return 0;
  Platform<Char>::Copy(position, free, line);
  *count = length;
  return 1;
}

// KEPT FOR HOSTS: lines of text set the count to 0 when they do not fit, lines of numbers leave it as it
// was. Hosts add up counts without looking at the result.

template <class Char>
int BufferSection(const Char* section, Char* position, std::size_t free, std::size_t* count) {
  *count = 0;
  CStringT<Char> line;
  line.AppendChar(Char('['));
  line.Append(section);
  line.AppendChar(Char(']'));
  line.AppendChar(Char('\n'));
  return PutLine(line, position, free, count);
}

// The key's line alone.
template <class Char>
int BufferText(const Char* key, Char* position, std::size_t free, const Char* value, std::size_t* count) {
  *count = 0;
  return PutLine(KeyLine(key, value), position, free, count);
}

// The key's line, and that of its companion if the value is not ASCII.
inline int BufferTextAndCompanion(const wchar_t* key, wchar_t* position, std::size_t free,
                                  const wchar_t* value, std::size_t* count) {
  *count = 0;
  const CStringW line = KeyLine(key, value);
  if (free <= static_cast<std::size_t>(line.GetLength())) return 0;
  // Made before anything is written: key and value may lie where the line goes.
  const CStringW companion = ToUtf8Companion(value);
  const bool needed = Differs(companion, value);
  const CStringW second = needed ? KeyLine<wchar_t>(CompanionKey(key, kUtf8Suffix), companion) : CStringW();

  PutLine(line, position, free, count);
  if (!needed) return 1;
  const auto length = static_cast<std::size_t>(second.GetLength());
  const std::size_t rest = free - *count;
  // KEPT FOR HOSTS: this line alone needs no room for a terminator here. With exactly its length left,
  // the bounded copy fails as an invalid parameter, and count and result are those of success; hosts
  // that size their buffers so have a handler for it.
  if (rest < length) return 0;
  Platform<wchar_t>::Copy(position + *count, rest, second);
  *count += length;
  return 1;
}

template <class Char, class Value>
int BufferNumber(const Char* key, Char* position, std::size_t free, const Char* format, Value value,
                 std::size_t* count) {
  Char text[kFormattedSize];
  Platform<Char>::Format(text, kFormattedSize, format, value);
  return PutLine(KeyLine<Char>(key, text), position, free, count);
}

template <class Char>
int BufferInt(const Char* key, Char* position, std::size_t free, int value, std::size_t* count) {
  return BufferNumber(key, position, free, Platform<Char>::kSigned, value, count);
}

template <class Char>
int BufferUnsigned(const Char* key, Char* position, std::size_t free, unsigned int value,
                   std::size_t* count) {
  return BufferNumber(key, position, free, Platform<Char>::kUnsigned, value, count);
}

template <class Char>
int BufferDouble(const Char* key, Char* position, std::size_t free, double value, std::size_t* count) {
  Char text[kFormattedSize];
  FormatDouble(text, value);
  return PutLine(KeyLine<Char>(key, text), position, free, count);
}

}  // namespace profile
