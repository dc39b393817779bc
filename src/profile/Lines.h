// SPDX-License-Identifier: MIT
// Lines.h: a settings file's text, line by line into a caller's buffer, once for both character types.
// Each gives 1 if its line fitted with a terminator and was written, 0 otherwise.
#pragma once

#include <afx.h>

#include "Companion.h"
#include "Numbers.h"
#include "Platform.h"
#include "base/CheckedCopy.h"

namespace profile {

template <class Char>
CStringT<Char> KeyLine(const Char* key, const Char* value) {
  CStringT<Char> line(key);
  line.AppendChar(Char('='));
  line.Append(value);
  line.AppendChar(Char('\n'));
  return line;
}

// Without a position the runtime's handler runs. It may raise an exception of the host's, which runs no
// destructor of ours: the line is gone by then.
template <class Char>
int PutLine(CStringT<Char> line, Char* position, std::size_t free, std::size_t* count) {
  const auto length = static_cast<std::size_t>(line.GetLength());
  if (free <= length) return 0;
  if (!position) line.Empty();
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

// The line of a key's companion; empty if the value is ASCII.
inline CStringW CompanionLine(const wchar_t* key, const wchar_t* value) {
  const CStringW companion = ToUtf8Companion(value);
  return Differs(companion, value) ? KeyLine<wchar_t>(CompanionKey(key, kUtf8Suffix), companion) : CStringW();
}

// The key's line, and that of its companion if the value is not ASCII.
inline int BufferTextAndCompanion(const wchar_t* key, wchar_t* position, std::size_t free,
                                  const wchar_t* value, std::size_t* count) {
  *count = 0;
  CStringW line = KeyLine(key, value);
  const auto length = static_cast<std::size_t>(line.GetLength());
  if (free <= length) return 0;
  // Made before anything is written: key and value may lie where the line goes.
  CStringW second = CompanionLine(key, value);
  const auto secondLength = static_cast<std::size_t>(second.GetLength());

  // As in PutLine: whatever is rejected, both lines are gone by then.
  if (!position) second.Empty();
  if (!position) line.Empty();
  Platform<wchar_t>::Copy(position, free, line);
  line.Empty();
  *count = length;
  if (secondLength == 0) return 1;
  const std::size_t rest = free - length;
  // KEPT FOR HOSTS: this line alone needs no room for a terminator here. With exactly its length left,
  // the bounded copy fails as an invalid parameter, and count and result are those of success; hosts
  // that size their buffers so have a handler for it.
  if (rest < secondLength) return 0;
  if (position && rest > secondLength) {
    Platform<wchar_t>::Copy(position + length, rest, second);
  } else {
    second.Empty();
    base::RejectParameter(position ? position + length : nullptr, rest);
  }
  *count += secondLength;
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
