// SPDX-License-Identifier: MIT
// Which extensions the directory operations take, and the search in an extension; both character types.
#include "Fuzz.h"
#include "file/Extension.h"
#include "file/ExtensionFilter.h"

namespace {

using fuzz::String;

// An upper case that is not ASCII's alone: also 0xE0 to 0xFE but 0xF7, as in the Latin code pages.
template <class Char>
Char Upper(Char one) {
  const auto unit =
      static_cast<std::make_unsigned_t<std::conditional_t<sizeof(Char) == 1, char, short>>>(one);
  const bool small = (unit >= 'a' && unit <= 'z') || (unit >= 0xE0 && unit <= 0xFE && unit != 0xF7);
  return small ? static_cast<Char>(unit - 0x20) : one;
}

template <class Char>
String<Char> Upper(String<Char> text) {
  for (Char& one : text) one = Upper(one);
  return text;
}

template <class Char>
String<Char> Of(const char* ascii) {
  return String<Char>(ascii, ascii + std::strlen(ascii));
}

template <class Char>
bool StarDropped(const String<Char>& filter, const String<Char>& extension) {
  String<Char> prepared = Upper(filter);
  if (!prepared.empty() && prepared.front() == '*') prepared.erase(0, 1);
  return prepared == Of<Char>(".*") || prepared == Upper(extension);
}

template <class Char>
bool AsItIs(const String<Char>& filter, const String<Char>& extension) {
  const String<Char> prepared = Upper(filter);
  return prepared == Of<Char>("*.*") || prepared == Upper(extension);
}

template <class Char>
bool Occurs(const String<Char>& text, const String<Char>& extension) {
  const String<Char> what = Upper(text);
  const String<Char> where = Upper(extension);
  for (std::size_t at = 0; at + what.size() <= where.size(); ++at) {
    if (where.compare(at, what.size(), what) == 0) return true;
  }
  return false;
}

template <class Char>
void Run(fuzz::Input& input) {
  const auto fold = [](const Char* from, Char* to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) to[i] = Upper(from[i]);
  };
  const bool every = input.Bit();
  const bool same = input.Bit();
  const String<Char> filter = input.Text<Char>();
  String<Char> extension = same ? filter : input.Text<Char>();
  if (same && every && !extension.empty()) extension.erase(0, 1);
  // No file has a longer one.
  if (extension.size() > file::kMostComponent) extension.resize(file::kMostComponent);

  // Exactly as long as they are, so that the sanitizer sees every step beyond.
  const std::vector<Char> filterUnits(filter.begin(), filter.end());
  const std::vector<Char> extensionUnits(extension.begin(), extension.end());
  const file::Text<Char> filterText(filterUnits.data(), filterUnits.size());
  const file::Text<Char> extensionText(extensionUnits.data(), extensionUnits.size());

  using Filter = file::ExtensionFilter<Char>;
  CHECK(Filter::StarDropped(filterText, fold).Matches(extensionText, fold) == StarDropped(filter, extension));
  CHECK(Filter::AsItIs(filterText, fold).Matches(extensionText, fold) == AsItIs(filter, extension));
  CHECK(file::OccursIgnoringCase(filterText, extensionText, fold) == Occurs(filter, extension));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  input.Bit() ? Run<wchar_t>(input) : Run<char>(input);
  return 0;
}
