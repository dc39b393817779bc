// SPDX-License-Identifier: MIT
// pass_phrase.h: a pass phrase from where others do not see it. On a command
// line it stands in the list of processes and in the shell's history.
#pragma once

#include <string>

#include "arguments.h"

namespace zt {

/// The pass phrase that the argument at `at` is, or says where to find:
/// @prompt, @file:PATH (the first line, UTF-8) or @env:NAME. Behind @text: any
/// text stands for itself. `twice` prompts twice, since a mistyped phrase
/// encrypts all the same.
std::wstring PassPhrase(const Arguments& arguments, std::size_t at, bool twice = false);

}  // namespace zt
