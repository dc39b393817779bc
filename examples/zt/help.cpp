// SPDX-License-Identifier: MIT
#include "help.h"

#include <algorithm>
#include <string_view>

namespace zt {
namespace {

constexpr std::wstring_view commonTasks =
    L"Common tasks:\n"
    L"  Find an application's settings file:\n"
    L"    zt where settings C:\\App\\view.exe\n"
    L"  Read the language of its texts, save another, load its language module:\n"
    L"    zt where language C:\\App\\view.ini\n"
    L"    zt where set-language C:\\App\\view.ini FRA\n"
    L"    zt where load-language C:\\App\\view.exe FRA\n"
    L"  Encrypt a licence text into a settings file, read it back:\n"
    L"    zt crypt store C:\\App\\view.ini Licence Text @env:ZT_PASS \"Licensed to "
    L"Ann\"\n"
    L"    zt crypt load C:\\App\\view.ini Licence Text @env:ZT_PASS\n"
    L"  Delete log files older than 30 days:\n"
    L"    zt tree prune --yes C:\\ProgramData\\Viewer\\logs\\ .log 30d\n"
    L"  Copy a template tree, keeping files that are already there:\n"
    L"    zt tree copy C:\\App\\template\\ D:\\project\\ keep\n"
    L"  Write a settings file in one piece:\n"
    L"    zt profile text D:\\view.ini [View] Title=Plan Zoom:int=150 Scale:double=1.5\n";

constexpr std::wstring_view exitCodes =
    L"Exit codes: 0 done or yes, 1 failed or no, 2 the input was refused and nothing was changed.\n";

std::wstring Padded(std::wstring text, std::size_t width) {
  text.resize(std::max(text.size() + 2, width), L' ');
  return text;
}

// Prose for a console of 80 columns, of which the last would already begin a line of its own.
constexpr std::size_t columns = 79;

std::wstring Wrapped(std::wstring_view text, std::size_t indent = 0) {
  std::wstring result, line;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(L" \n"), text.size());
    const std::wstring_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (word.empty()) continue;
    if (!line.empty() && line.size() + 1 + word.size() > columns) {
      result += line + L"\n";
      line.clear();
    }
    line += line.empty() ? std::wstring(indent, L' ') : L" ";
    line += word;
  }
  return line.empty() ? result : result + line + L"\n";
}

std::wstring Indented(std::wstring_view text) {
  std::wstring result = L"  ";
  for (const wchar_t one : text) {
    result += one;
    if (one == L'\n') result += L"  ";
  }
  return result + L"\n";
}

}  // namespace

std::wstring HelpOf(std::span<const Group* const> groups) {
  std::wstring help =
      L"zt - paths, files, settings files and more, as ZERATools.dll handles them\n\n"
      L"Usage: zt GROUP COMMAND [ARGUMENTS]\n\nGroups:\n";
  for (const Group* group : groups) help += L"  " + Padded(group->name, 10) + group->summary + L"\n";
  help += L"\n";
  help += commonTasks;
  help +=
      L"\nzt GROUP --help           lists the commands of a group\n"
      L"zt GROUP COMMAND --help   explains a command\n"
      L"zt --version              shows the versions of zt and of the "
      L"library\n\n"
      L"Every command takes --json (what it says as one line of JSON) and --quiet (no\n"
      L"word about what was done). Options begin with one dash or two.\n\n";
  help += Wrapped(exitCodes);
  help += Wrapped(L"Results go to stdout, remarks and errors to stderr; both as UTF-8 when redirected.");
  return help;
}

std::wstring HelpOf(const Group& group) {
  std::wstring help = std::wstring(L"zt ") + group.name + L" - " + group.summary + L"\n\nCommands:\n";
  std::size_t width = 0;
  const auto call = [](const Command& command) {
    return std::wstring(command.name) + (*command.arguments ? L" " : L"") + command.arguments;
  };
  for (const Command& command : group.commands) width = std::max(width, call(command).size() + 2);
  for (const Command& command : group.commands) {
    // Long lists of arguments get a line of their own.
    const std::wstring text = call(command);
    if (2 + width + std::wstring_view(command.summary).size() > columns) {
      help += L"  " + text + L"\n" + Wrapped(command.summary, 6);
    } else {
      help += L"  " + Padded(text, width) + command.summary + L"\n";
    }
  }
  if (*group.details) help += L"\n" + Wrapped(group.details);
  return help + L"\nzt " + group.name + L" COMMAND --help explains a command.\n";
}

std::wstring HelpOf(const Group& group, const Command& command) {
  const std::wstring call = std::wstring(L"zt ") + group.name + L" " + command.name;
  std::wstring help =
      call + L" - " + command.summary + L"\n\nUsage: " + call + L" " + command.arguments + L"\n\n";
  if (*command.details) help += Wrapped(command.details) + L"\n";
  if (*group.details) help += Wrapped(group.details) + L"\n";
  help += L"Example:\n" + Indented(command.example);
  help += L"\n" + Wrapped(std::wstring(L"Calls ") + command.exports + L".");
  help += Wrapped(exitCodes);
  return help;
}

}  // namespace zt
