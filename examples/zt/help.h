// SPDX-License-Identifier: MIT
// help.h: the help at each level, made from the tables of commands.
#pragma once

#include <span>
#include <string>

#include "command.h"

namespace zt {

std::wstring HelpOf(std::span<const Group* const> groups);
std::wstring HelpOf(const Group& group);
std::wstring HelpOf(const Group& group, const Command& command);

}  // namespace zt
