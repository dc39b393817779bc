// SPDX-License-Identifier: MIT
// Locations.h: where an application's settings file and data folders are. The rules of each stand at its
// export in ZERATools.h; these are the same operations without the frame.
#pragma once

#include <afx.h>

namespace application {

int DataFolders(HMODULE module, CStringW& common, CStringW& user);

// The path is stored as far as it is known, also when the result is 0.
int SettingsFile(HMODULE module, CStringW& file, int& copied);
// The path is stored with the result 1 only.
int SettingsFile(HMODULE module, CStringA& file, int& copied);

}  // namespace application
