// SPDX-License-Identifier: MIT
// Path.h: taking paths apart and putting them together. Text only, no platform calls.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
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

// Where the name of a UTF-16 path starts and where its last period is, npos without one. No unit hides in
// another one's second half, so both are found from the end, eight units at a time.
struct NamePlace {
  std::size_t name;
  std::size_t period;
};

[[gnu::noinline]] inline NamePlace FindName(Text<wchar_t> path, std::size_t drive) {
  NamePlace place = {path.size(), path.npos};
  if (path.size() - drive < 8) {
    for (; place.name > drive && !IsSeparator(path[place.name - 1]); --place.name) {
      if (place.period == path.npos && path[place.name - 1] == L'.') place.period = place.name - 1;
    }
    return place;
  }
  while (place.name > drive) {
    // The first block may look at units again that the one behind it found nothing in.
    const std::size_t from = place.name - drive >= 8 ? place.name - 8 : drive;
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(path.data() + from));
    const auto last = [&](__m128i found) {
      const auto bits = static_cast<unsigned>(_mm_movemask_epi8(found));
      return bits == 0 ? path.npos : from + static_cast<std::size_t>(std::bit_width(bits) - 1) / 2;
    };
    const auto equal = [&](wchar_t one) {
      return _mm_cmpeq_epi16(block, _mm_set1_epi16(static_cast<short>(one)));
    };
    const std::size_t separator = last(_mm_or_si128(equal(L'\\'), equal(L'/')));
    if (place.period == path.npos) place.period = last(equal(L'.'));
    if (separator != path.npos) {
      place.name = separator + 1;
      if (place.period < place.name) place.period = path.npos;
      return place;
    }
    place.name = from;
  }
  return place;
}

// Splits a path. `isLead` tells whether a character is the first half of a double-byte one; the
// second half, whatever its value, is no separator and no period.
template <class Char, class IsLead>
Parts<Char> Split(Text<Char> path, IsLead isLead) {
  const std::size_t drive = path.size() >= 2 && path[1] == Char(':') ? 2 : 0;
  std::size_t name = drive;
  std::size_t period = path.npos;
  if constexpr (sizeof(Char) > 1) {
    const NamePlace place = FindName(path, drive);
    name = place.name;
    period = place.period;
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

// What a rewritten path changes: the text from `from` on, `length` characters of it, becomes `before`, `text`
// and `after`. Everything else stays.
template <class Char>
struct Change {
  std::size_t from;
  std::size_t length;
  Text<Char> before;
  Text<Char> text;
  Text<Char> after;
};

// Makes a change in a path of `length` characters, where it stands. False, with nothing written, if the
// result does not fit `capacity` with its terminator. The change's text may lie in the path's own buffer.
template <class Char>
bool Apply(const Change<Char>& change, Char* path, std::size_t length, std::size_t capacity) {
  const std::size_t fresh = change.before.size() + change.text.size() + change.after.size();
  const std::size_t rest = length - change.from - change.length;
  if (change.from + fresh + rest >= capacity) return false;
  using Traits = std::char_traits<Char>;
  const Char* following = path + change.from + change.length;
  Char* to = path + change.from;
  // A text that reaches into what is written is brought to its place first, and what follows is kept apart
  // for that time.
  const auto address = [](const Char* at) { return reinterpret_cast<std::uintptr_t>(at); };
  const bool own = address(change.text.data()) <= address(to + fresh + rest) &&
                   address(change.text.data() + change.text.size()) >= address(to);
  Char kept[kMostPath + 1];
  if (own) {
    Traits::copy(kept, following, rest);
    following = kept;
  } else {
    Traits::move(to + fresh, following, rest);
  }
  Traits::move(to + change.before.size(), change.text.data(), change.text.size());
  for (const Char one : change.before) *to++ = one;
  to += change.text.size();
  for (const Char one : change.after) *to++ = one;
  if (own) Traits::copy(to, following, rest);
  to[rest] = Char(0);
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
  const std::size_t least = static_cast<int>(digits) < 0 ? 1 : digits;
  char reversed[10];
  std::size_t used = 0;
  for (; rest != 0; rest /= 10) reversed[used++] = static_cast<char>('0' + rest % 10);
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
