#include "WideText.h"

#include "afx.h"

namespace frame {

WideText::WideText(const char* text) {
  fixed_[0] = 0;
  if (!text || !text[0]) return;
  if (::MultiByteToWideChar(CP_ACP, 0, text, -1, fixed_, kFixed) != 0) return;
  fixed_[0] = 0;
  if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER) return;
  const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
  auto* const larger = static_cast<wchar_t*>(std::malloc(static_cast<std::size_t>(length) * sizeof(wchar_t)));
  if (!larger) AfxThrowMemoryException();
  ::MultiByteToWideChar(CP_ACP, 0, text, -1, larger, length);
  text_ = larger;
}

}  // namespace frame
