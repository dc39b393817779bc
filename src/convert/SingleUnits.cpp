// SPDX-License-Identifier: MIT
#include "SingleUnits.h"

#include <cstdlib>
#include <initializer_list>

namespace convert {
namespace {

template <class Char>
void Set(Form<Char>& form, const Char* text, int length) {
  if (length < 0) length = 0;
  for (int i = 0; i < length; ++i) form.text[i] = text[i];
  form.length = static_cast<std::uint8_t>(length);
  form.known = true;
}

}  // namespace

UnitsToAnsi::UnitsToAnsi(const Signs& signs) {
  Set(first_.forms[kMicro], signs.micro.bytes, static_cast<int>(std::strlen(signs.micro.bytes)));
  Set(first_.forms[kDegree], signs.degree.bytes, static_cast<int>(std::strlen(signs.degree.bytes)));
}

UnitsToAnsi::~UnitsToAnsi() {
  while (made_) {
    Page* const page = made_;
    made_ = page->next;
    std::free(page);
  }
}

const Form<char>& UnitsToAnsi::Ask(wchar_t unit) {
  Page*& page = pages_[unit / kPageSize];
  if (!page) {
    page = static_cast<Page*>(std::calloc(1, sizeof(Page)));
    if (!page) AfxThrowMemoryException();
    page->next = made_;
    made_ = page;
  }
  const wchar_t text[] = {unit, 0};
  char bytes[Form<char>::kMost + 1];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
  Form<char>& form = page->forms[unit % kPageSize];
  Set(form, bytes, size - 1);
  return form;
}

BytesToUtf16::BytesToUtf16() {
  for (const wchar_t sign : {kMicro, kDegree}) forms_[sign & 0x7F] = {{sign}, 1, true};
}

void BytesToUtf16::Ask(char byte, Form<wchar_t>& form) {
  const char text[] = {byte, 0};
  wchar_t units[Form<wchar_t>::kMost + 1];
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text, -1, units, Form<wchar_t>::kMost + 1);
  Set(form, units, size - 1);
}

}  // namespace convert
