// SPDX-License-Identifier: MIT
// Console.h: what the viewer prints, as UTF-8.
#pragma once

#include <string>

namespace viewer {

/// "  label  text" and a line feed.
void Print(const wchar_t* label, const std::wstring& text);

}  // namespace viewer
