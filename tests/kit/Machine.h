// SPDX-License-Identifier: MIT
// Machine.h: what the report says about the machine, and who runs the kit.
#pragma once

#include <string>

namespace kit {

/// Whether the process has an administrator's rights. Under Wine every user looks so.
bool IsElevated();

/// Windows' version, the ANSI code page, the processor: a line each, in UTF-8.
std::string DescribeMachine();

std::string Utf8(const std::wstring& text);

}  // namespace kit
