// SPDX-License-Identifier: MIT
// Compiled as C++17 and C++20 with exceptions and type information off: the layer needs neither.
#include <ZERATools/zera.hpp>

int Use();

int Use() {
  const auto found = zera::application::settings_file();
  const zera::settings settings{found.path};
  const double zoom = settings.section(L"View").get(L"Zoom", 1.0, {0.1, 8.0});
  const zera::language language = zera::application::language(found.path);
  zera::language_module texts = zera::application::load_language(language);
  return static_cast<int>(zoom) + (texts ? 1 : 0) + (zera::crypt::encrypt(L"key", L"text") ? 1 : 0);
}
