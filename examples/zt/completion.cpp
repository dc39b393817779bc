// SPDX-License-Identifier: MIT
// zt completion: scripts that let a shell complete groups, commands and
// options, made from the tables of commands.
#include <string>
#include <vector>

#include "arguments.h"
#include "console.h"
#include "groups.h"

namespace zt {
namespace {

using Names = std::vector<std::wstring>;

// The names in quotation marks, with `between` from one to the next.
std::wstring Joined(const Names& names, const wchar_t* quote, const wchar_t* between) {
  std::wstring text;
  for (const std::wstring& name : names) text += (text.empty() ? L"" : between) + (quote + name + quote);
  return text;
}

Names GroupNames() {
  Names names;
  for (const Group* group : AllGroups()) names.push_back(group->name);
  names.insert(names.end(), {L"help", L"--help", L"--version"});
  return names;
}

Names CommandNames(const Group& group) {
  Names names;
  for (const Command& command : group.commands) names.push_back(command.name);
  names.push_back(L"--help");
  return names;
}

Names OptionNames(const Command& command) {
  Names names = OptionsOf(command);
  names.insert(names.end(), std::begin(commonOptions), std::end(commonOptions));
  return names;
}

// A script as it is: shells take line feeds only.
Exit Show(const std::wstring& script) {
  PrintBytes(std::string(script.begin(), script.end()));
  return done;
}

Exit Bash(const Arguments&) {
  std::wstring commands, options;
  for (const Group* group : AllGroups()) {
    commands += std::wstring(L"        ") + group->name + L") words=\"" +
                Joined(CommandNames(*group), L"", L" ") + L"\" ;;\n";
    for (const Command& command : group->commands) {
      options += std::wstring(L"        \"") + group->name + L" " + command.name + L"\") words=\"" +
                 Joined(OptionNames(command), L"", L" ") + L"\" ;;\n";
    }
  }
  return Show(
      L"# SPDX-License-Identifier: MIT\n"
      L"# Completes zt in bash. Made by: zt completion bash. Use: "
      L"source zt.bash\n"
      L"_zt() {\n"
      L"  local current=${COMP_WORDS[COMP_CWORD]} words=\n"
      L"  COMPREPLY=()\n"
      L"  case $COMP_CWORD in\n"
      L"    1) words=\"" +
      Joined(GroupNames(), L"", L" ") +
      L"\" ;;\n"
      L"    2)\n"
      L"      case ${COMP_WORDS[1]} in\n" +
      commands +
      L"      esac\n"
      L"      ;;\n"
      L"    *)\n"
      L"      # Anything but an option is a file name or a text.\n"
      L"      [[ $current == -* ]] || return 0\n"
      L"      case \"${COMP_WORDS[1]} ${COMP_WORDS[2]}\" in\n" +
      options +
      L"      esac\n"
      L"      ;;\n"
      L"  esac\n"
      L"  COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
      L"}\n"
      L"complete -o default -F _zt zt zt.exe\n");
}

Exit PowerShell(const Arguments&) {
  std::wstring commands, options;
  for (const Group* group : AllGroups()) {
    commands +=
        std::wstring(L"    '") + group->name + L"' = " + Joined(CommandNames(*group), L"'", L", ") + L"\n";
    for (const Command& command : group->commands) {
      options += std::wstring(L"    '") + group->name + L" " + command.name + L"' = " +
                 Joined(OptionNames(command), L"'", L", ") + L"\n";
    }
  }
  return Show(
      L"# SPDX-License-Identifier: MIT\n"
      L"# Completes zt in PowerShell. Made by: zt completion powershell. Use: "
      L". .\\zt.ps1\n"
      L"Register-ArgumentCompleter -Native -CommandName zt, zt.exe "
      L"-ScriptBlock {\n"
      L"  param($wordToComplete, $commandAst, $cursorPosition)\n"
      L"  $groups = " +
      Joined(GroupNames(), L"'", L", ") +
      L"\n"
      L"  $commands = @{\n" +
      commands +
      L"  }\n"
      L"  $options = @{\n" +
      options +
      L"  }\n"
      L"  $words = @($commandAst.CommandElements | ForEach-Object { "
      L"$_.ToString() })\n"
      L"  $given = $words.Count - 1\n"
      L"  if ($wordToComplete) { $given-- }\n"
      L"  $candidates = switch ($given) {\n"
      L"    0 { $groups }\n"
      L"    1 { $commands[$words[1]] }\n"
      L"    default { if ($wordToComplete -like '-*') { "
      L"$options[\"$($words[1]) $($words[2])\"] } }\n"
      L"  }\n"
      L"  $candidates | Where-Object { $_ -like \"$wordToComplete*\" } |\n"
      L"    ForEach-Object { "
      L"[System.Management.Automation.CompletionResult]::new($_) }\n"
      L"}\n");
}

const Command commands[] = {
    {L"bash", L"", L"The script for bash", L"", L"zt completion bash > zt.bash", L"nothing", Bash},
    {L"powershell", L"", L"The script for PowerShell", L"", L"zt completion powershell > zt.ps1", L"nothing",
     PowerShell},
};

}  // namespace

const Group completionGroup = {L"completion", L"Scripts that let a shell complete commands and options",
                               L"The same scripts are installed beside the sources of zt, in the folder "
                               L"completion.\n",
                               commands};

}  // namespace zt
