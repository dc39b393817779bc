// SPDX-License-Identifier: MIT
// system_folders.h: folders in which nothing is deleted or replaced by mistake.
#pragma once

#include <string>

namespace zt {

/// The folder of the system or of a user because of which `folder` (a full path with a final
/// backslash) is not to be worked on: it is that folder, holds it, or lies in the system's own. Empty
/// if there is none.
std::wstring SystemFolderAt(const std::wstring& folder);

}  // namespace zt
