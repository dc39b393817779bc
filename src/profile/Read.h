// SPDX-License-Identifier: MIT
// Read.h: reading settings files. The rules of each stand at its export in ZERATools.h; these are the
// same operations without the frame, for the library's own use.
#pragma once

#include <cstddef>

namespace profile {

// Looks at the key alone.
void ReadString(const char* section, const char* key, const char* file, const char* defaultText, char* text,
                std::size_t capacity);

// Looks at the key's companions first.
void ReadString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* defaultText,
                wchar_t* text, std::size_t capacity);

}  // namespace profile
