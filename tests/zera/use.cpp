// SPDX-License-Identifier: MIT
// The whole layer: every class of it is made from its template, and the compiler is told to keep what is
// inline.
#include <ZERATools/zera.hpp>

#if defined(MINMAX_MACROS) && !defined(max)
  #error "The platform's header defines no macro here; the test needs it."
#endif

template class zera::basic_argument<wchar_t>;
template class zera::basic_argument<char>;
template class zera::basic_section<wchar_t>;
template class zera::basic_section<char>;
template class zera::basic_settings<wchar_t>;
template class zera::basic_settings<char>;
template class zera::basic_settings_text<wchar_t>;
template class zera::basic_settings_text<char>;

int Use();

int Use() {
  const auto found = zera::application::settings_file();
  const zera::settings settings{found.path};
  const double zoom = settings.section(L"View").get(L"Zoom", 1.0, {0.1, 8.0});
  const zera::language language = zera::application::language(found.path);
  const zera::language_module texts = zera::application::load_language(language);
  return static_cast<int>(zoom) + (texts ? 1 : 0) + (zera::crypt::encrypt(L"key", L"text") ? 1 : 0) +
         (zera::file::write(found.path, "contents") ? 1 : 0);
}
