// SPDX-License-Identifier: MIT
// Path.h: taking paths apart and putting them together. Text only, no platform calls.
#pragma once

#include <cstddef>
#include <string_view>

namespace file {

// The split components' limits in characters, terminators not counted.
inline constexpr std::size_t kMostDrive = 2;
inline constexpr std::size_t kMostComponent = 255;
inline constexpr std::size_t kMostPath = kMostDrive + 3 * kMostComponent;

template <class Char>
using Text = std::basic_string_view<Char>;

template <class Char>
constexpr bool IsSeparator(Char one) {
  return one == Char('\\') || one == Char('/');
}

// A path's components, as views into it.
template <class Char>
struct Parts {
  Text<Char> drive;      // "C:"
  Text<Char> directory;  // with its leading and trailing separators
  Text<Char> name;       // up to, not including, the last period
  Text<Char> extension;  // with its period

  bool Fit() const {
    return drive.size() <= kMostDrive && directory.size() <= kMostComponent &&
           name.size() <= kMostComponent && extension.size() <= kMostComponent;
  }
};

// Splits a path. `isLead` tells whether a character is the first half of a double-byte one; the
// second half, whatever its value, is no separator and no period.
template <class Char, class IsLead>
Parts<Char> Split(Text<Char> path, IsLead isLead) {
  const std::size_t drive = path.size() >= 2 && path[1] == Char(':') ? 2 : 0;
  std::size_t name = drive;
  std::size_t period = path.npos;
  if constexpr (sizeof(Char) > 1) {
    // No unit of UTF-16 hides in another one's second half, so the name is found from the end.
    for (name = path.size(); name > drive && !IsSeparator(path[name - 1]); --name) {
      if (period == path.npos && path[name - 1] == Char('.')) period = name - 1;
    }
  } else {
    for (std::size_t i = drive; i < path.size(); ++i) {
      const Char one = path[i];
      if (isLead(one)) {
        ++i;
      } else if (IsSeparator(one)) {
        name = i + 1;
        period = path.npos;
      } else if (one == Char('.')) {
        period = i;
      }
    }
  }
  if (period == path.npos) period = path.size();
  const Char* const text = path.data();
  return {{text, drive},
          {text + drive, name - drive},
          {text + name, period - name},
          {text + period, path.size() - period}};
}

// Whether the last character of a text is a separator; needs the text from a character's start.
template <class Char, class IsLead>
bool EndsInSeparator(Text<Char> text, IsLead isLead) {
  if constexpr (sizeof(Char) > 1) return !text.empty() && IsSeparator(text.back());
  bool separator = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    separator = IsSeparator(text[i]);
    if (isLead(text[i])) {
      separator = false;
      ++i;
    }
  }
  return separator;
}

// What a path is composed of: the components, and a text that directory or name is extended by.
template <class Char>
struct Composition {
  Parts<Char> parts;
  Text<Char> directoryTail;
  Text<Char> nameTail;
};

// Composes a path into `out`: the drive's first character and a colon, the directory and a backslash
// if it does not end in a separator, the name, and the extension with a period before it if it has
// none. False, with nothing written, if it does not fit `capacity` with its terminator.
//
// `moving` is the one component that may lie inside `out` itself; it is brought to its place before
// anything else is written.
template <class Char, class IsLead>
bool Compose(const Composition<Char>& from, Text<Char> moving, Char* out, std::size_t capacity,
             IsLead isLead) {
  const Char driveText[] = {from.parts.drive.empty() ? Char(0) : from.parts.drive[0], Char(':')};
  const Char backslash[] = {Char('\\')};
  const Char period[] = {Char('.')};
  const bool hasDirectory = !from.parts.directory.empty() || !from.directoryTail.empty();
  const bool closed =
      !hasDirectory ||
      EndsInSeparator(from.directoryTail.empty() ? from.parts.directory : from.directoryTail, isLead);
  const bool dotted = from.parts.extension.empty() || from.parts.extension[0] == Char('.');

  const Text<Char> pieces[] = {
      {driveText, from.parts.drive.empty() ? 0u : 2u},
      from.parts.directory,
      from.directoryTail,
      {backslash, closed ? 0u : 1u},
      from.parts.name,
      from.nameTail,
      {period, dotted ? 0u : 1u},
      from.parts.extension,
  };

  std::size_t length = 0;
  std::size_t movingTo = moving.npos;
  for (const auto& piece : pieces) {
    if (!piece.empty() && piece.data() == moving.data()) movingTo = length;
    length += piece.size();
    if (length >= capacity) return false;
  }
  using Traits = std::char_traits<Char>;
  if (movingTo != moving.npos) Traits::move(out + movingTo, moving.data(), moving.size());
  Char* to = out;
  for (const auto& piece : pieces) {
    if (!piece.empty() && piece.data() != moving.data()) Traits::copy(to, piece.data(), piece.size());
    to += piece.size();
  }
  *to = Char(0);
  return true;
}

// A number's text for a file name.
struct IndexText {
  char digits[kMostComponent + 1];
  std::size_t length;
  bool fits;
};

// The index as a signed decimal number of at least `digits` digits; none at all for zero with no
// digits asked for. Counts beyond any name do not fit. A count that is negative as a signed number
// asks for nothing.
inline IndexText FormatIndex(unsigned int index, unsigned int digits) {
  IndexText text = {{}, 0, true};
  const bool negative = static_cast<int>(index) < 0;
  unsigned int rest = negative ? 0u - index : index;
  std::size_t least = static_cast<int>(digits) < 0 ? 1 : digits;
  char reversed[10];
  std::size_t used = 0;
  for (; rest != 0; rest /= 10) reversed[used++] = static_cast<char>('0' + rest % 10);
  if (least < used) least = used;
  if (least + negative > kMostComponent) {
    text.fits = false;
    return text;
  }
  if (negative) text.digits[text.length++] = '-';
  for (std::size_t i = used; i < least; ++i) text.digits[text.length++] = '0';
  while (used > 0) text.digits[text.length++] = reversed[--used];
  return text;
}

}  // namespace file
