// SPDX-License-Identifier: MIT
// command.h: what a command is. Every subject keeps one table of them; nothing else is registered.
#pragma once

#include <span>
#include <string>

namespace zt {

class Arguments;

/// The exit codes of the program.
enum Exit : int {
  done = 0,  ///< done, or "yes"
  no = 1,    ///< failed, or "no"
  bad = 2,   ///< the input was refused and nothing was touched
};

/// Thrown for input that a command refuses; shown on stderr, exit code 2.
struct BadInput {
  std::wstring why;
};

struct Command {
  const wchar_t* name;
  /// As the help shows them, and as they are counted: "PATH [DEFAULT] ITEM...", options first:
  /// "[--overwrite]".
  const wchar_t* arguments;
  const wchar_t* summary;  ///< one line
  const wchar_t* details;  ///< the rest of the help, may be empty
  const wchar_t* example;  ///< one command line and, behind a line feed, what it prints
  const wchar_t* exports;  ///< the exports that it calls
  Exit (*run)(const Arguments& arguments);
};

struct Group {
  const wchar_t* name;
  const wchar_t* summary;
  const wchar_t* details;  ///< common to its commands, may be empty
  std::span<const Command> commands;
};

extern const Group pathGroup;
extern const Group fileGroup;
extern const Group treeGroup;
extern const Group profileGroup;
extern const Group cryptGroup;
extern const Group textGroup;
extern const Group whereGroup;
extern const Group processGroup;
extern const Group roundGroup;
extern const Group completionGroup;

}  // namespace zt
