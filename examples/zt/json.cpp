// SPDX-License-Identifier: MIT
#include "json.h"

namespace zt {
namespace {

bool IsHigh(wchar_t one) {
  return (one & 0xFC00) == 0xD800;
}
bool IsLow(wchar_t one) {
  return (one & 0xFC00) == 0xDC00;
}

std::wstring Escaped(wchar_t one) {
  constexpr wchar_t digits[] = L"0123456789ABCDEF";
  std::wstring text = L"\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += digits[one >> shift & 15];
  return text;
}

std::wstring List(const std::vector<std::wstring>& texts) {
  std::wstring list = L"[";
  for (const std::wstring& text : texts) list += (list.size() > 1 ? L"," : L"") + JsonText(text);
  return list + L"]";
}

}  // namespace

std::wstring JsonText(std::wstring_view text) {
  std::wstring json = L"\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t one = text[i];
    if (one == L'"' || one == L'\\') {
      json += L'\\';
      json += one;
    } else if (IsHigh(one) && i + 1 < text.size() && IsLow(text[i + 1])) {
      json += one;
      json += text[++i];
    } else if (one < L' ' || one == 0x7F || IsHigh(one) || IsLow(one)) {
      json += Escaped(one);
    } else {
      json += one;
    }
  }
  return json + L"\"";
}

std::wstring JsonAnswer(std::wstring_view command, int exit, const std::vector<std::wstring>& result,
                        const std::vector<std::wstring>& remarks) {
  return L"{\"command\":" + JsonText(command) + L",\"exit\":" + std::to_wstring(exit) + L",\"result\":" +
         List(result) + L",\"remarks\":" + List(remarks) + L"}";
}

}  // namespace zt
