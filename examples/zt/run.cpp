// SPDX-License-Identifier: MIT
#include "run.h"

#include <windows.h>

#include <ZERATools.h>

#include <algorithm>
#include <new>
#include <span>

#include "arguments.h"
#include "console.h"
#include "groups.h"
#include "help.h"
#include "suggest.h"

namespace zt {
namespace {

bool AsksForHelp(const std::wstring& text) {
  return text == L"--help" || text == L"-help" || text == L"-h" || text == L"-?" || text == L"/?";
}

// The entry of this name; null if there is none.
const Group* FindGroup(const std::wstring& name) {
  for (const Group* group : AllGroups()) {
    if (name == group->name) return group;
  }
  return nullptr;
}

const Command* FindCommand(const Group& group, const std::wstring& name) {
  for (const Command& command : group.commands) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

std::vector<std::wstring> CommandNames(const Group& group) {
  std::vector<std::wstring> names;
  for (const Command& command : group.commands) names.push_back(command.name);
  return names;
}

std::vector<std::wstring> GroupNames() {
  std::vector<std::wstring> names = {L"help", L"--help", L"--version"};
  for (const Group* group : AllGroups()) names.push_back(group->name);
  return names;
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
  if (std::any_of(rest.begin(), end, AsksForHelp)) {
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
  if (const Command* const command = FindCommand(group, rest[0])) {
    return RunCommand(group, *command, rest.subspan(1));
  }
  throw BadInput{std::wstring(group.name) + L" has no command \"" + rest[0] + L"\"; see zt " + group.name +
                 L" --help" + DidYouMean(rest[0], CommandNames(group))};
}

Exit RunWords(std::vector<std::wstring> words) {
  if (words.empty()) {
    PrintError(HelpOf(AllGroups()));
    return bad;
  }
  if (words[0] == L"help") {
    std::rotate(words.begin(), words.begin() + 1, words.end());
    words.back() = L"--help";
  }
  if (AsksForHelp(words[0])) {
    Print(HelpOf(AllGroups()));
    return done;
  }
  if (words[0] == L"--version" || words[0] == L"-version") return ShowVersions();
  if (const Group* const group = FindGroup(words[0])) return RunGroup(*group, std::span(words).subspan(1));
  throw BadInput{L"there is no command \"" + words[0] + L"\"; see zt --help" +
                 DidYouMean(words[0], GroupNames())};
}

// Takes the options that are no command's own out of the words.
Manner MannerOf(std::vector<std::wstring>& words) {
  Manner manner;
  const auto end = std::ranges::find(words, L"--");
  const bool help = std::any_of(words.begin(), end, AsksForHelp);
  words.erase(std::remove_if(words.begin(), end,
                             [&](const std::wstring& word) {
                               const bool json = word == L"--json" || word == L"-json";
                               const bool quiet = word == L"--quiet" || word == L"-quiet";
                               manner.json |= json && !help;
                               manner.quiet |= quiet;
                               return json || quiet;
                             }),
              end);
  return manner;
}

std::wstring CommandOf(const std::vector<std::wstring>& words) {
  std::wstring command;
  for (std::size_t i = 0; i < words.size() && i < 2; ++i) command += (i ? L" " : L"") + words[i];
  return command;
}

}  // namespace

Exit Run(std::vector<std::wstring> words) {
  Begin(MannerOf(words));
  const std::wstring command = CommandOf(words);
  Exit exit = no;
  try {
    exit = RunWords(std::move(words));
  } catch (const BadInput& e) {
    Complain(e.why);
    exit = bad;
  } catch (const std::bad_alloc&) {
    Complain(L"memory ran out");
  }
  EndJson(command, exit);
  if (OutputArrived() || exit != done) return exit;
  Complain(L"the output could not be written");
  return no;
}

}  // namespace zt
