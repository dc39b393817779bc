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
  Set(Place(kMicro), signs.micro.bytes, static_cast<int>(std::strlen(signs.micro.bytes)));
  Set(Place(kDegree), signs.degree.bytes, static_cast<int>(std::strlen(signs.degree.bytes)));
}

UnitsToAnsi::~UnitsToAnsi() {
  while (made_) {
    Page* const page = made_;
    made_ = page->next;
    std::free(page);
  }
}

// Where a unit's form lies, in a page that is made if it is not there yet.
Form<char>& UnitsToAnsi::Place(wchar_t unit) {
  if (unit < kPageSize) return latin_[unit % 0x80];
  if (!pages_) pages_.emplace();
  Page*& page = (*pages_)[unit / kPageSize];
  if (!page) {
    page = static_cast<Page*>(std::calloc(1, sizeof(Page)));
    if (!page) AfxThrowMemoryException();
    page->next = made_;
    made_ = page;
  }
  return page->forms[unit % kPageSize];
}

const Form<char>& UnitsToAnsi::Ask(wchar_t unit) {
  Form<char>& form = Place(unit);
  const wchar_t text[] = {unit, 0};
  char bytes[Form<char>::kMost + 1];
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
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
