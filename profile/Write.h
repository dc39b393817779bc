// Write.h: writing settings files. The rules of each stand at its export in ZERATools.h; these are the
// same operations without the frame, for the library's own use.
#pragma once

namespace profile {

int WriteString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* value);

}  // namespace profile
