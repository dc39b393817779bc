// SPDX-License-Identifier: MIT
// Write.h: writing settings files. The rules of each stand at its export in ZERATools.h; these are the
// same operations without the frame, for the library's own use.
#pragma once

namespace profile {

// Writes the key and brings its companions into line. 1, always.
int WriteString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* value);

}  // namespace profile
