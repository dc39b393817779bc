// SPDX-License-Identifier: MIT
// Extension.h: whether a text occurs in a path's extension. Text only.
#pragma once

#include "Path.h"

namespace file {

// `fold(from, to, count)` writes the upper case of `count` characters, one for one. A text longer
// than any extension cannot occur in one, so that buffers on the stack suffice.
template <class Char, class Fold>
bool OccursIgnoringCase(Text<Char> text, Text<Char> extension, Fold fold) {
  if (text.size() > extension.size() || extension.size() > kMostComponent) return false;
  Char foldedText[kMostComponent];
  Char foldedExtension[kMostComponent];
  fold(text.data(), foldedText, text.size());
  fold(extension.data(), foldedExtension, extension.size());
  const Text<Char> within(foldedExtension, extension.size());
  return within.find(Text<Char>(foldedText, text.size())) != within.npos;
}

}  // namespace file
