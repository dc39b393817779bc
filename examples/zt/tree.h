// SPDX-License-Identifier: MIT
// tree.h: what the commands on whole folders have in common.
#pragma once

#include <string>

#include "arguments.h"

namespace zt {

/// The full path of a folder, written as such. The library takes the last part of a path without a
/// final backslash for a file name and works on the folder above.
const std::wstring& TreeFolder(const Arguments& arguments, std::size_t at);
/// Refuses folders of the system and whole profiles, unless --force is given.
void RefuseSystemFolder(const Arguments& arguments, std::size_t at);
/// False after a complaint if there is no such folder.
bool IsTreeThere(const std::wstring& folder);
/// Asks whether to go on, on a terminal and without --yes; else true.
bool MayGoOn(const Arguments& arguments, const std::wstring& question);

/// zt tree copy
Exit CopyTree(const Arguments& arguments);

}  // namespace zt
