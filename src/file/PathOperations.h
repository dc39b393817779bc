// SPDX-License-Identifier: MIT
// PathOperations.h: the path operations, once for both character types. All return 1, always.
#pragma once

#include "PathPlatform.h"

namespace file {

template <class Char>
struct PathOperations {
  // Gives a run of adjacent components, from `first` to `last`.
  using Component = Text<Char> Parts<Char>::*;

  static int Get(Component first, Component last, const Char* path, Char* out, std::size_t capacity) {
    const Text<Char> text(path, path ? Length(path, kMostPath + 1) : 0);
    const Parts<Char> parts = Split(text, LeadBytes());
    if (!path || !parts.Fit()) {
      RejectParameter(out, capacity, path ? ERANGE : EINVAL);
      return 1;
    }
    const Char* const start = (parts.*first).data();
    const Char* const end = (parts.*last).data() + (parts.*last).size();
    CopyChecked(Text<Char>(start, static_cast<std::size_t>(end - start)), out, capacity);
    return 1;
  }

  // Replaces one component by a text as it is; a null text is an empty component.
  static int Replace(Component component, Char* path, std::size_t capacity, const Char* text) {
    return Rewrite(path, capacity, [&](Composition<Char>& to, Text<Char>& moving) {
      moving = Given(text);
      to.parts.*component = moving;
      return true;
    });
  }

  // Replaces two components by those of another path.
  static int ReplaceFrom(Component first, Component second, Char* path, std::size_t capacity,
                         const Char* other) {
    // The other path may lie in the buffer that is rewritten, so its text is kept apart.
    Char copy[kMostPath + 1];
    Parts<Char> parts;
    const bool fits = CopyAndSplit(other, copy, parts);
    return Rewrite(
        path, capacity,
        [&](Composition<Char>& to, Text<Char>&) {
          to.parts.*first = parts.*first;
          to.parts.*second = parts.*second;
          return fits;
        },
        other != nullptr);
  }

  static int AddDirectory(Char* path, std::size_t capacity, const Char* text) {
    return Rewrite(
        path, capacity,
        [&](Composition<Char>& to, Text<Char>& moving) {
          to.directoryTail = moving = Given(text);
          return text && to.parts.directory.size() + moving.size() <= kMostComponent;
        },
        text != nullptr);
  }

  static int AddName(Char* path, std::size_t capacity, const Char* text) {
    return Rewrite(
        path, capacity,
        [&](Composition<Char>& to, Text<Char>& moving) {
          to.nameTail = moving = Given(text);
          return text && to.parts.name.size() + moving.size() <= kMostComponent;
        },
        text != nullptr);
  }

  static int AddIndex(Char* path, std::size_t capacity, unsigned int index, unsigned int digits) {
    const IndexText number = FormatIndex(index, digits);
    Char text[kMostComponent + 1];
    for (std::size_t i = 0; i < number.length; ++i) text[i] = static_cast<Char>(number.digits[i]);
    return Rewrite(path, capacity, [&](Composition<Char>& to, Text<Char>&) {
      to.nameTail = {text, number.length};
      return number.fits && to.parts.name.size() + number.length <= kMostComponent;
    });
  }

 private:
  static Text<Char> Given(const Char* text) { return text ? Text<Char>(text) : Text<Char>(); }

  // False if the text is null or has a component beyond its limit.
  static bool CopyAndSplit(const Char* path, Char (&copy)[kMostPath + 1], Parts<Char>& parts) {
    if (!path) return false;
    const std::size_t length = Length(path, kMostPath + 1);
    if (length > kMostPath) return false;
    std::char_traits<Char>::copy(copy, path, length);
    parts = Split(Text<Char>(copy, length), LeadBytes());
    return parts.Fit();
  }

  // Splits a copy of the path, lets `change` alter the composition, and composes back into the path. `given`
  // is false for an argument that is missing, which is another error than one that is too long.
  template <class Change>
  static int Rewrite(Char* path, std::size_t capacity, Change change, bool given = true) {
    Char copy[kMostPath + 1];
    Composition<Char> composition = {};
    Text<Char> moving;
    const bool composed = CopyAndSplit(path, copy, composition.parts) && change(composition, moving) &&
                          Compose(composition, moving, path, capacity, LeadBytes());
    if (!composed) RejectParameter(path, capacity, given ? ERANGE : EINVAL);
    return 1;
  }
};

}  // namespace file
