// SPDX-License-Identifier: MIT
#include "WideText.h"

#include "afx.h"

namespace frame {

// Half a character at the end of a text may take the terminator with it: each buffer has one place more
// than the conversion is told of, and the text is ended where the platform ended it.
WideText::WideText(const char* text) {
  fixed_[0] = 0;
  if (!text || !text[0]) return;
  int written = ::MultiByteToWideChar(CP_ACP, 0, text, -1, fixed_, kFixed);
  if (written == 0 && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    // What cannot be converted is an empty text, as the platform's string class has it.
    if (length > 0) {
      const auto size = (static_cast<std::size_t>(length) + 1) * sizeof(wchar_t);
      auto* const larger = static_cast<wchar_t*>(std::malloc(size));
      if (!larger) AfxThrowMemoryException();
      text_ = larger;
      written = ::MultiByteToWideChar(CP_ACP, 0, text, -1, larger, length);
    }
  }
  text_[written] = 0;
}

}  // namespace frame
