// SPDX-License-Identifier: MIT
#include "help.h"

#include <algorithm>
#include <string_view>

namespace zt {
namespace {

constexpr std::wstring_view commonTasks =
    L"Common tasks:\n"
    L"  Find an application's settings file:\n"
    L"    zt where settings C:\\Prog\\Viewer\\view.exe\n"
    L"  Read the language of its user interface, save another, load its language module:\n"
    L"    zt where language C:\\Prog\\Viewer\\view.ini\n"
    L"    zt where set-language C:\\Prog\\Viewer\\view.ini FRA\n"
    L"    zt where load-language C:\\Prog\\Viewer\\view.exe FRA\n"
    L"  Encrypt a licence text into a settings file, read it back:\n"
    L"    zt crypt store C:\\Prog\\Viewer\\view.ini Licence Text \"pass phrase\" \"Licensed to Anna\"\n"
    L"    zt crypt load C:\\Prog\\Viewer\\view.ini Licence Text \"pass phrase\"\n"
    L"  Delete log files older than 30 days:\n"
    L"    zt tree prune C:\\ProgramData\\Viewer\\logs\\ .log 30d\n"
    L"  Copy a template tree, keeping files that are already there:\n"
    L"    zt tree copy C:\\Prog\\Viewer\\template\\ D:\\project\\ keep\n"
    L"  Write a settings file in one piece:\n"
    L"    zt profile text D:\\view.ini [View] Title=Overview Zoom:int=150 Scale:double=1.5\n";

constexpr std::wstring_view exitCodes =
    L"Exit codes: 0 done or yes, 1 failed or no, 2 the input was refused and nothing was changed.\n";

std::wstring Padded(std::wstring text, std::size_t width) {
  text.resize(std::max(text.size() + 2, width), L' ');
  return text;
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
      L"zt --version              shows the versions of zt and of the library\n\n";
  help += exitCodes;
  help += L"Results go to stdout, remarks and errors to stderr; both as UTF-8 when redirected.\n";
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
    if (width + std::wstring_view(command.summary).size() > 96) {
      help += L"  " + text + L"\n      " + command.summary + L"\n";
    } else {
      help += L"  " + Padded(text, width) + command.summary + L"\n";
    }
  }
  if (*group.details) help += std::wstring(L"\n") + group.details;
  return help + L"\nzt " + group.name + L" COMMAND --help explains a command.\n";
}

std::wstring HelpOf(const Group& group, const Command& command) {
  const std::wstring call = std::wstring(L"zt ") + group.name + L" " + command.name;
  std::wstring help =
      call + L" - " + command.summary + L"\n\nUsage: " + call + L" " + command.arguments + L"\n\n";
  if (*command.details) help += std::wstring(command.details) + L"\n";
  if (*group.details) help += std::wstring(group.details) + L"\n";
  help += L"Example:\n" + Indented(command.example);
  help += std::wstring(L"\nCalls ") + command.exports + L".\n";
  help += exitCodes;
  return help;
}

}  // namespace zt
