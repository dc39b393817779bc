// SPDX-License-Identifier: MIT
// groups.h: all commands, in the order of the help.
#pragma once

#include <span>

#include "command.h"

namespace zt {

std::span<const Group* const> AllGroups();

/// Options that every command has beside its own.
inline constexpr const wchar_t* commonOptions[] = {L"--help", L"--json", L"--quiet"};

}  // namespace zt
