// Read.h: reading settings files. The rules of each stand at its export in ZERATools.h; these are the
// same operations without the frame, for the library's own use.
#pragma once

#include <cstddef>

namespace profile {

void ReadString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* defaultText,
                wchar_t* text, std::size_t capacity);

}  // namespace profile
