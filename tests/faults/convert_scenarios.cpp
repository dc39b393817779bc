// SPDX-License-Identifier: MIT
// Conversions between encodings, and rounding. A conversion that the platform refuses gives no text or a
// text without what was refused, never something that was not in the argument.
#include "Scenario.h"

namespace faults {
namespace {

template <class In, class Out>
void Add(std::vector<Scenario>& all, unsigned ordinal, const In* text, const char* clean,
         std::vector<std::string> allowed) {
  all.push_back({ordinal,
                 "a text",
                 {},
                 [=](World& world) {
                   static const Out before[] = {'b', 'e', 'f', 'o', 'r', 'e', 0};
                   auto& out = world.New<Host<Out>>(before);
                   Bound<void(const In*, CStringT<Out>&)>(ordinal)(text, out.object());
                   return out.Shown();
                 },
                 clean,
                 std::move(allowed)});
}

}  // namespace

std::vector<Scenario> ConvertScenarios() {
  std::vector<Scenario> all;
  Add<wchar_t, char>(all, 110, L"\xE4z", "\"<E4>z\"", {"\"\"", "\"z\"", "\"<E4>\""});
  Add<char, char>(all, 111, "\xE4z", "\"<E4>z\"", {"\"\""});
  Add<char, wchar_t>(all, 112, "\xE4z", "\"<E4>z\"", {"\"\"", "\"z\"", "\"<E4>\""});
  Add<char, char>(all, 113, "\xE4z", "\"<C3><A4>z\"", {"\"\""});
  Add<wchar_t, char>(all, 114, L"\xE4z", "\"<C3><A4>z\"", {"\"\""});
  Add<char, char>(all, 115, "\xC3\xA4z", "\"<E4>z\"", {"\"\""});
  Add<char, wchar_t>(all, 116, "\xC3\xA4z", "\"<E4>z\"", {"\"\""});
  Add<wchar_t, wchar_t>(all, 117, L"Hi", "\"48 69\"", {"\"\""});
  Add<wchar_t, wchar_t>(all, 118, L"48 69", "\"Hi\"",
                        {"\"\"", "\"H\"", "\"<0>i\"", "\"<0><0>\"", "\"H<0>\""});
  all.push_back(
      {100,
       "a number",
       {},
       [](World&) { return std::to_string(test::Export<decltype(ZERA_TOOLS_ROUND_INT)>(100)(-2.5)); },
       "-3",
       {}});
  all.push_back({101,
                 "a number",
                 {},
                 [](World&) {  // In tenths, so that the text does not depend on the locale.
                   return std::to_string(
                       static_cast<int>(test::Export<decltype(ZERA_TOOLS_ROUND_DOUBLE)>(101)(1.25, 1) * 10));
                 },
                 "13",
                 {}});
  all.push_back(
      {102,
       "a number",
       {},
       [](World&) { return std::to_string(test::Export<decltype(ZERA_TOOLS_ROUND_UINT)>(102)(2.5)); },
       "3",
       {}});
  return all;
}

}  // namespace faults
