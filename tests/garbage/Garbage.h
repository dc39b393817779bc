// SPDX-License-Identifier: MIT
// Garbage.h: numbers and texts that no host means to give, from a seed.
#pragma once

#include <climits>
#include <random>
#include <string>

namespace garbage {

/// The generator of one call: its seed and the call's number give the same arguments again.
class Garbage {
 public:
  Garbage(unsigned seed, unsigned call) : random_(seed * 1000003u + call) {}

  unsigned Any() { return static_cast<unsigned>(random_()); }
  unsigned Below(unsigned end) { return Any() % end; }
  bool Chance(unsigned outOf) { return Below(outOf) == 0; }

  /// Any number, and often one at the end of a type's range.
  unsigned Number() {
    static const unsigned ends[] = {0,      1,      2,       255,     256,        0x7FFF,
                                    0x8000, 0xFFFF, 0x10000, INT_MAX, 0x80000000, UINT_MAX};
    return Chance(2) ? Any() : ends[Below(std::size(ends))];
  }

  /// Any bits of a floating-point number, or an unremarkable one.
  double Real() {
    if (Chance(2)) return static_cast<int>(Any()) / 1000.0;
    const unsigned long long bits = static_cast<unsigned long long>(Any()) << 32 | Any();
    double value;
    static_assert(sizeof value == sizeof bits);
    __builtin_memcpy(&value, &bits, sizeof value);
    return value;
  }

  /// A length at a limit of the library, one below or one above it, or a short one.
  std::size_t Length() {
    static const std::size_t limits[] = {1, 2, 3, 8, 10, 99, 100, 255, 256, 259, 260, 261, 519, 520, 4096};
    if (!Chance(3)) return Below(24);
    return limits[Below(std::size(limits))] - 1 + Below(3);
  }

  /// Any units but the terminator; unpaired surrogates and halves of double-byte characters among them.
  template <class Char>
  std::basic_string<Char> Noise(std::size_t length) {
    std::basic_string<Char> text;
    while (text.size() < length) {
      unsigned unit = Any();
      if (sizeof(Char) == 2 && Chance(4)) unit = 0xD800 + unit % 0x800;
      if (Chance(2)) unit = 0x20 + unit % 0x5F;
      if (const Char one = static_cast<Char>(unit); one != 0) text += one;
    }
    return text;
  }

  /// Pieces of paths in any order: roots, shares, dots and blanks, both separators, and devices, which some
  /// exports would open and then wait for.
  template <class Char>
  std::basic_string<Char> Path(bool devices) {
    static const char* const pieces[] = {"C:",     "X:",  "\\",      "/",       "\\\\",
                                         ".",      "..",  " ",       "a",       "b.ini",
                                         "c.d.e",  "x.",  "y ",      "*",       "?",
                                         "*.*",    ":",   "\"",      "|",       "~1",
                                         ".log",   "%s",  "%n",      "\\\\?\\", "\\\\server\\share\\",
                                         "CON",    "NUL", "aux.txt", "LPT1",    "com1 ",
                                         "\\\\.\\"};
    const std::size_t plain = 25;
    std::basic_string<Char> text;
    for (unsigned i = Below(7); i > 0; --i) {
      if (Chance(5)) {
        text += Noise<Char>(Length());
      } else {
        const std::string piece = pieces[Below(static_cast<unsigned>(devices ? std::size(pieces) : plain))];
        text.append(piece.begin(), piece.end());
      }
    }
    return text;
  }

  /// A text of either kind.
  template <class Char>
  std::basic_string<Char> Text() {
    return Chance(2) ? Path<Char>(true) : Noise<Char>(Length());
  }

  /// A path that stays below a folder, whatever the platform makes of it: no component is made of dots and
  /// blanks alone, and no colon names another drive or stream.
  template <class Char>
  std::basic_string<Char> Inside(const std::wstring& folder) {
    std::basic_string<Char> path;
    if (Chance(8)) path = {'\\', '\\', '?', '\\'};
    path.append(folder.begin(), folder.end());
    for (unsigned i = 1 + Below(3); i > 0; --i) {
      path += Component<Char>();
      if (i > 1 || Chance(4)) path += static_cast<Char>(Chance(4) ? '/' : '\\');
    }
    constexpr std::size_t kMostPath = 260;
    if (Chance(12) && path.size() < kMostPath - 4) path.append(kMostPath - 3 + Below(5) - path.size(), 'n');
    return path;
  }

 private:
  template <class Char>
  std::basic_string<Char> Component() {
    static const char* const names[] = {"a",
                                        "b.txt",
                                        "c.log",
                                        "d.ini",
                                        "sub",
                                        "sub.d",
                                        "x.",
                                        "y ",
                                        "NUL",
                                        "nul.x",
                                        "e.f.g",
                                        ".log",
                                        "long-name-with-many-letters.extension"};
    std::basic_string<Char> name;
    if (!Chance(4)) {
      const std::string known = names[Below(std::size(names))];
      name.assign(known.begin(), known.end());
      return name;
    }
    for (const Char one : Noise<Char>(1 + Length() % 40)) {
      if (one != '\\' && one != '/' && one != ':' && one != '*' && one != '?') name += one;
    }
    // A letter in front and behind: it is neither a folder above nor a device.
    return std::basic_string<Char>(1, 'n') + name + static_cast<Char>('n');
  }

  std::mt19937 random_;
};

}  // namespace garbage
