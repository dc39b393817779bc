// SPDX-License-Identifier: MIT
// ExtensionFilter.h: which extensions a directory operation takes. Text only.
#pragma once

#include "Path.h"

namespace file {

// An extension, or every one; compared without regard to case. `fold(from, to, count)` writes the upper
// case of `count` characters, one for one.
//
// KEPT FOR HOSTS: the two forms below differ. Hosts pass "*.log" or ".*" to the one and ".log" or "*.*"
// to the other; what the one takes for all files matches nothing in the other.
template <class Char>
class ExtensionFilter {
 public:
  // The form of the deletion of all files: one leading "*" is dropped, ".*" means every file.
  template <class Fold>
  static ExtensionFilter StarDropped(Text<Char> filter, Fold fold) {
    const std::size_t star = !filter.empty() && filter[0] == Char('*') ? 1 : 0;
    const Char every[] = {Char('.'), Char('*')};
    return {{filter.data() + star, filter.size() - star}, {every, 2}, fold};
  }

  // The form of the deletion of old files: taken as it is, "*.*" means every file.
  template <class Fold>
  static ExtensionFilter AsItIs(Text<Char> filter, Fold fold) {
    const Char every[] = {Char('*'), Char('.'), Char('*')};
    return {filter, {every, 3}, fold};
  }

  // Whether an extension, with its period or empty, passes.
  template <class Fold>
  bool Matches(Text<Char> extension, Fold fold) const {
    if (every_) return true;
    if (extension.size() != length_ || length_ > kMostComponent) return false;
    Char folded[kMostComponent];
    fold(extension.data(), folded, extension.size());
    return std::char_traits<Char>::compare(folded, text_, length_) == 0;
  }

 private:
  // A text longer than any extension is kept by its length alone, which no extension has.
  template <class Fold>
  ExtensionFilter(Text<Char> filter, Text<Char> every, Fold fold)
      : length_(filter.size()), every_(filter == every) {
    if (length_ <= kMostComponent) fold(filter.data(), text_, filter.size());
  }

  std::size_t length_;
  bool every_;
  Char text_[kMostComponent];
};

}  // namespace file
