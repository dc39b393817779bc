// SPDX-License-Identifier: MIT
// zt: the exports of ZERATools.dll as a command-line tool.
#include <windows.h>

#include <shellapi.h>

#include <ZERATools.h>

#include <algorithm>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "arguments.h"
#include "console.h"
#include "guard.h"
#include "help.h"

namespace zt {
namespace {

const Group* const groups[] = {&whereGroup, &profileGroup, &cryptGroup, &treeGroup,   &pathGroup,
                               &fileGroup,  &textGroup,    &roundGroup, &processGroup};

bool AsksForHelp(const std::wstring& text) {
  return text == L"--help" || text == L"-h" || text == L"-?" || text == L"/?";
}

template <class Entries>
auto Find(const Entries& entries, const std::wstring& name) {
  return std::ranges::find_if(entries, [&](const auto& entry) {
    if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(entry)>>) {
      return name == entry->name;
    } else {
      return name == entry.name;
    }
  });
}

Exit ShowVersions() {
  wchar_t path[MAX_PATH];
  wchar_t version[24];
  ::GetModuleFileNameW(::GetModuleHandleW(L"ZERATools.dll"), path, MAX_PATH);
  ZERA_TOOLS_FILE_GET_VERSION_UC(path, version, std::size(version));
  PrintLine(
      L"zt "
      L"" ZT_VERSION);
  PrintLine(std::wstring(L"ZERATools.dll ") + version + L" (" + path + L")");
  return done;
}

Exit RunCommand(const Group& group, const Command& command, std::span<const std::wstring> rest) {
  const auto end = std::ranges::find(rest, L"--");
  if (std::find(rest.begin(), end, L"--help") != end) {
    Print(HelpOf(group, command));
    return done;
  }
  try {
    return command.run(Arguments(command, rest));
  } catch (const BadInput& e) {
    const std::wstring call = std::wstring(group.name) + L" " + command.name;
    throw BadInput{call + L": " + e.why + L"\nUsage: zt " + call + L" " + command.arguments + L"\nMore: zt " +
                   call + L" --help"};
  }
}

Exit RunGroup(const Group& group, std::span<const std::wstring> rest) {
  if (rest.empty()) {
    PrintError(HelpOf(group));
    return bad;
  }
  if (AsksForHelp(rest[0])) {
    Print(HelpOf(group));
    return done;
  }
  const auto command = Find(group.commands, rest[0]);
  if (command == group.commands.end()) {
    throw BadInput{std::wstring(group.name) + L" has no command \"" + rest[0] + L"\"; see zt " + group.name +
                   L" --help"};
  }
  return RunCommand(group, *command, rest.subspan(1));
}

Exit Run(std::vector<std::wstring> words) {
  if (words.empty()) {
    PrintError(HelpOf(groups));
    return bad;
  }
  if (words[0] == L"help") {
    std::rotate(words.begin(), words.begin() + 1, words.end());
    words.back() = L"--help";
  }
  if (AsksForHelp(words[0])) {
    Print(HelpOf(groups));
    return done;
  }
  if (words[0] == L"--version") return ShowVersions();
  const auto group = Find(groups, words[0]);
  if (group == std::end(groups)) throw BadInput{L"there is no command \"" + words[0] + L"\"; see zt --help"};
  return RunGroup(**group, std::span(words).subspan(1));
}

}  // namespace
}  // namespace zt

// Not the arguments of main: the runtime's start-up may replace wildcards by file names, and what a
// filter of a deleting command says must arrive as it was written.
int main() {
  zt::InstallGuards();
  try {
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    const zt::Exit exit = zt::Run(std::vector<std::wstring>(words + 1, words + count));
    if (zt::OutputArrived()) return exit;
    zt::Complain(L"the output could not be written");
  } catch (const zt::BadInput& e) {
    zt::Complain(e.why);
    return zt::bad;
  } catch (const std::bad_alloc&) {
    zt::Complain(L"memory ran out");
  }
  return zt::no;
}
