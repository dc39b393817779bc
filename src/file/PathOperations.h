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

  static int ReplaceDrive(Char* path, std::size_t capacity, const Char* drive) {
    // Only its first character is taken.
    Char text[] = {0, Char(':')};
    return Rewrite(path, capacity, [&](const Parts<Char>& parts, Change<Char>& change) {
      if (drive) text[0] = *drive;
      change = {0, parts.drive.size(), {}, {text, text[0] ? 2u : 0u}, {}};
      return true;
    });
  }

  static int ReplaceDirectory(Char* path, std::size_t capacity, const Char* directory) {
    return Rewrite(path, capacity, [&](const Parts<Char>& parts, Change<Char>& change) {
      const Text<Char> text = Given(directory);
      change = {parts.drive.size(), parts.directory.size(), {}, text, Closing(text)};
      return true;
    });
  }

  static int ReplaceName(Char* path, std::size_t capacity, const Char* name) {
    return Rewrite(path, capacity, [&](const Parts<Char>& parts, Change<Char>& change) {
      change = {parts.drive.size() + parts.directory.size(), parts.name.size(), {}, Given(name), {}};
      return true;
    });
  }

  static int ReplaceExtension(Char* path, std::size_t capacity, const Char* extension) {
    return Rewrite(path, capacity, [&](const Parts<Char>& parts, Change<Char>& change) {
      const Text<Char> text = Given(extension);
      const bool dotted = text.empty() || text[0] == kPeriod[0];
      change = {NameEnd(parts), parts.extension.size(), {kPeriod, dotted ? 0u : 1u}, text, {}};
      return true;
    });
  }

  // The name and extension, or the drive and directory, of another path. They lie side by side in it.
  static int TakeNameAndExtension(Char* path, std::size_t capacity, const Char* other) {
    return Rewrite(
        path, capacity,
        [&](const Parts<Char>& parts, Change<Char>& change) {
          Parts<Char> theirs;
          const std::size_t from = parts.drive.size() + parts.directory.size();
          if (!SplitGiven(other, theirs)) return false;
          change = {from,
                    parts.name.size() + parts.extension.size(),
                    {},
                    {theirs.name.data(), theirs.name.size() + theirs.extension.size()},
                    {}};
          return true;
        },
        other != nullptr);
  }

  static int TakeDriveAndDirectory(Char* path, std::size_t capacity, const Char* other) {
    return Rewrite(
        path, capacity,
        [&](const Parts<Char>& parts, Change<Char>& change) {
          Parts<Char> theirs;
          if (!SplitGiven(other, theirs)) return false;
          change = {0,
                    parts.drive.size() + parts.directory.size(),
                    {},
                    {theirs.drive.data(), theirs.drive.size() + theirs.directory.size()},
                    {}};
          return true;
        },
        other != nullptr);
  }

  static int AddDirectory(Char* path, std::size_t capacity, const Char* text) {
    return Rewrite(
        path, capacity,
        [&](const Parts<Char>& parts, Change<Char>& change) {
          const Text<Char> added = Given(text);
          change = {parts.drive.size() + parts.directory.size(), 0, {}, added, Closing(added)};
          return text && parts.directory.size() + added.size() <= kMostComponent;
        },
        text != nullptr);
  }

  static int AddName(Char* path, std::size_t capacity, const Char* text) {
    return Rewrite(
        path, capacity,
        [&](const Parts<Char>& parts, Change<Char>& change) {
          const Text<Char> added = Given(text);
          change = {NameEnd(parts), 0, {}, added, {}};
          return text && parts.name.size() + added.size() <= kMostComponent;
        },
        text != nullptr);
  }

  static int AddIndex(Char* path, std::size_t capacity, unsigned int index, unsigned int digits) {
    const IndexText number = FormatIndex(index, digits);
    Char text[kMostComponent + 1];
    for (std::size_t i = 0; i < number.length; ++i) text[i] = static_cast<Char>(number.digits[i]);
    return Rewrite(path, capacity, [&](const Parts<Char>& parts, Change<Char>& change) {
      change = {NameEnd(parts), 0, {}, {text, number.length}, {}};
      return number.fits && parts.name.size() + number.length <= kMostComponent;
    });
  }

 private:
  static constexpr Char kPeriod[] = {'.'};
  static constexpr Char kBackslash[] = {'\\'};

  static Text<Char> Given(const Char* text) {
    return text ? Text<Char>(text, Length(text, static_cast<std::size_t>(-1))) : Text<Char>();
  }

  // What a directory needs behind it.
  static Text<Char> Closing(Text<Char> directory) {
    const bool closed = directory.empty() || EndsInSeparator(directory, LeadBytes());
    return {kBackslash, closed ? 0u : 1u};
  }

  static std::size_t NameEnd(const Parts<Char>& parts) {
    return parts.drive.size() + parts.directory.size() + parts.name.size();
  }

  // False if the text is null or has a component beyond its limit.
  static bool SplitGiven(const Char* path, Parts<Char>& parts) {
    if (!path) return false;
    const std::size_t length = Length(path, kMostPath + 1);
    if (length > kMostPath) return false;
    parts = Split(Text<Char>(path, length), LeadBytes());
    return parts.Fit();
  }

  // Splits the path, lets `decide` say what changes, and changes it. `given` is false for an argument that is
  // missing, which is another error than one that is too long.
  template <class Decide>
  static int Rewrite(Char* path, std::size_t capacity, Decide decide, bool given = true) {
    Parts<Char> parts;
    Change<Char> change = {};
    const bool changed = SplitGiven(path, parts) && decide(parts, change) &&
                         Apply(change, path, NameEnd(parts) + parts.extension.size(), capacity);
    if (!changed) RejectParameter(path, capacity, given ? ERANGE : EINVAL);
    return 1;
  }
};

}  // namespace file
