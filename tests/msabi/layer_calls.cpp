// SPDX-License-Identifier: MIT
#include "layer_calls.h"

#include <ZERATools/zera.hpp>

// What the standard library has in its own binary, which is not for this target.
namespace std {
void __throw_bad_alloc() {
  abort();
}
void __throw_bad_array_new_length() {
  abort();
}
void __throw_length_error(const char*) {
  abort();
}
void __throw_logic_error(const char*) {
  abort();
}
void __throw_out_of_range_fmt(const char*, ...) {
  abort();
}
// The header says that these are there.
template class basic_string<char>;
template class basic_string<wchar_t>;
}  // namespace std

void* operator new[](std::size_t size) {
  return std::malloc(size);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}

bool CopyByLayer(const wchar_t* from, const wchar_t* to) {
  return zera::file::copy(std::wstring_view(from), std::wstring_view(to));
}

bool ExistsByLayer(const char* text, unsigned long long length) {
  return zera::file::exists(std::string_view(text, length));
}

int Utf8ByLayer() {
  const std::string text = zera::text::to_utf8(L"Z\u00fc");
  return text == "Z\xC3\xBC" ? static_cast<int>(text.size()) : -1;
}

bool EncryptByLayer(const char* passPhrase, const char* text) {
  return zera::crypt::encrypt(passPhrase, text).has_value();
}

long BuffersOfLayer() {
  return zera_string_buffers_in_use();
}
