// SPDX-License-Identifier: MIT
// Lines.h: a settings file's text, line by line into a caller's buffer, once for both character types.
// Each gives 1 if its line fitted with a terminator and was written, 0 otherwise.
#pragma once

#include <afx.h>

#include <algorithm>
#include <string_view>

#include "Companion.h"
#include "Numbers.h"
#include "Platform.h"
#include "base/CheckedCopy.h"
#include "base/TextLength.h"

namespace profile {

// A null text is an empty one.
template <class Char>
Text<Char> Given(const Char* text) {
  return {text, text ? base::TextLength(text) : 0};
}

// A line, put together where it goes. Key and value may lie there themselves.
template <class Char>
struct Line {
  Text<Char> opening;
  Text<Char> key;
  Text<Char> middle;
  Text<Char> value;
  Text<Char> end;

  std::size_t Length() const {
    return opening.size() + key.size() + middle.size() + value.size() + end.size();
  }

  // Without a position this is an invalid parameter, for which a handler of the host's runs. It may raise an
  // exception, which runs no destructor of ours: nothing is owned by then.
  void PutTo(Char* position, std::size_t free) const {
    if (!position) return base::RejectParameter(position, free);
    if (!value.empty() && value.data() <= position + Length() && position <= value.data() + value.size()) {
      const CStringT<Char> copy(value.data(), static_cast<int>(value.size()));
      return Put(position, {copy.GetString(), value.size()});
    }
    Put(position, value);
  }

 private:
  void Put(Char* position, Text<Char> valueApart) const {
    std::char_traits<Char>::move(position + opening.size(), key.data(), key.size());
    Char* to = std::copy(opening.begin(), opening.end(), position) + key.size();
    to = std::copy(middle.begin(), middle.end(), to);
    std::char_traits<Char>::copy(to, valueApart.data(), valueApart.size());
    to = std::copy(end.begin(), end.end(), to + valueApart.size());
    *to = Char(0);
  }
};

template <class Char>
Line<Char> KeyLine(Text<Char> key, Text<Char> value) {
  static constexpr Char kEquals[] = {'='}, kEnd[] = {'\n'};
  return {{}, key, {kEquals, 1}, value, {kEnd, 1}};
}

template <class Char>
int PutLine(const Line<Char>& line, Char* position, std::size_t free, std::size_t* count) {
  const std::size_t length = line.Length();
  if (free <= length) return 0;
  line.PutTo(position, free);
  *count = length;
  return 1;
}

// KEPT FOR HOSTS: lines of text set the count to 0 when they do not fit, lines of numbers leave it as it
// was. Hosts add up counts without looking at the result.

template <class Char>
int BufferSection(const Char* section, Char* position, std::size_t free, std::size_t* count) {
  *count = 0;
  static constexpr Char kOpening[] = {'['}, kEnd[] = {']', '\n'};
  return PutLine<Char>({{kOpening, 1}, Given(section), {}, {}, {kEnd, 2}}, position, free, count);
}

// The key's line alone.
template <class Char>
int BufferText(const Char* key, Char* position, std::size_t free, const Char* value, std::size_t* count) {
  *count = 0;
  return PutLine(KeyLine(Given(key), Given(value)), position, free, count);
}

// The line of a key's companion; empty if the value is ASCII.
inline CStringW CompanionLine(const wchar_t* key, const wchar_t* value) {
  if (IsAscii(value)) return CStringW();
  const CStringW companion = ToUtf8Companion(value);
  if (!Differs(companion, value)) return CStringW();
  CStringW line = CompanionKey(key, kUtf8Suffix);
  line.AppendChar(L'=');
  line += companion;
  line.AppendChar(L'\n');
  return line;
}

// The key's line, and that of its companion if the value is not ASCII.
inline int BufferTextAndCompanion(const wchar_t* key, wchar_t* position, std::size_t free,
                                  const wchar_t* value, std::size_t* count) {
  *count = 0;
  const Line<wchar_t> line = KeyLine(Given(key), Given(value));
  const std::size_t length = line.Length();
  if (free <= length) return 0;
  // Made before anything is written: key and value may lie where the line goes.
  CStringW second = CompanionLine(key, value);
  const auto secondLength = static_cast<std::size_t>(second.GetLength());

  // As in PutTo: whatever is rejected, the second line is gone by then.
  if (!position) second.Empty();
  line.PutTo(position, free);
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
int BufferWhole(const Char* key, Char* position, std::size_t free, Value value, std::size_t* count) {
  Char digits[kMostDigits];
  return PutLine(KeyLine(Given(key), FormatWhole(digits, value)), position, free, count);
}

template <class Char>
int BufferDouble(const Char* key, Char* position, std::size_t free, double value, std::size_t* count) {
  Char text[kFormattedSize];
  FormatDouble(text, value);
  return PutLine(KeyLine(Given(key), Given<Char>(text)), position, free, count);
}

}  // namespace profile
