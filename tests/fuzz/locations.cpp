// SPDX-License-Identifier: MIT
// What an application's folders and files are named after.
#include "Fuzz.h"
#include "application/FolderTail.h"

namespace {

using String = fuzz::String<wchar_t>;

// ASCII, and one letter beyond.
wchar_t Upper(wchar_t one) {
  if (one == 0xE9) return 0xC9;
  return one >= 'a' && one <= 'z' ? static_cast<wchar_t>(one - 'a' + 'A') : one;
}

int LastBackslash(const String& text) {
  for (int i = static_cast<int>(text.size()); i-- > 0;) {
    if (text[static_cast<std::size_t>(i)] == '\\') return i;
  }
  return -1;
}

int Find(const String& text, const String& what) {
  for (std::size_t i = 0; i + what.size() <= text.size(); ++i) {
    if (text.substr(i, what.size()) == what) return static_cast<int>(i);
  }
  return -1;
}

// Step by step as the rule is told: positions are signed, -1 is "not found".
struct Names {
  int tools = -1;
  String tail, baseName;

  explicit Names(const String& path) {
    String upper = path;
    for (wchar_t& one : upper) one = Upper(one);
    const wchar_t what[] = {'\\', 'T', 'O', 'O', 'L', 'S', 0};
    const int found = Find(upper, what);
    if (found >= 0) tools = LastBackslash(upper.substr(0, static_cast<std::size_t>(found)));

    const int end = LastBackslash(path);
    if (end <= 0) return;
    tail = path.substr(0, static_cast<std::size_t>(end));
    baseName = path.substr(static_cast<std::size_t>(end) + 1);
    const int folder = LastBackslash(tail);
    if (folder > 0) tail = tail.substr(static_cast<std::size_t>(tools >= 0 ? tools : folder));
    int period = -1;
    for (std::size_t i = 0; i < baseName.size(); ++i) {
      if (baseName[i] == '.') period = static_cast<int>(i);
    }
    if (period > 0) baseName = baseName.substr(0, static_cast<std::size_t>(period));
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  const String path = input.Text<wchar_t>();
  const Names expected(path);

  std::vector<wchar_t> units(path.begin(), path.end());
  std::vector<wchar_t> upper = units;
  for (wchar_t& one : upper) one = Upper(one);
  const std::size_t tools = application::ToolsPosition({upper.data(), upper.size()});
  CHECK(tools == (expected.tools < 0 ? application::Text::npos : static_cast<std::size_t>(expected.tools)));
  const application::ModuleNames names = application::NamesOf({units.data(), units.size()}, tools);
  CHECK(String(names.tail) == expected.tail);
  CHECK(String(names.baseName) == expected.baseName);
  return 0;
}
