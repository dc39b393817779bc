// SPDX-License-Identifier: MIT
// FolderTail.h: what an application's folders and files are named after. Text only, no platform calls.
#pragma once

#include <cstddef>
#include <string_view>

namespace application {

using Text = std::wstring_view;

// The backslash that opens the folder in which "\TOOLS" stands, in an upper-cased module path; npos
// without "\TOOLS" or without a backslash before it. Only the first "\TOOLS" counts, and it may as well
// be the beginning of a longer name.
inline std::size_t ToolsPosition(Text upperPath) {
  const std::size_t tools = upperPath.find(L"\\TOOLS");
  return tools == Text::npos || tools == 0 ? Text::npos : upperPath.rfind(L'\\', tools - 1);
}

// The parts of a module's path that its data folders and settings files are named after.
struct ModuleNames {
  Text tail;      // the folders that are repeated below the application-data folders: "\Maker\TOOLS\Viewer"
  Text baseName;  // the file name without its extension: "view"
};

// KEPT FOR HOSTS: a module in the root of a drive has the drive as its tail ("C:", no backslash), and a
// path without a folder has neither part. The files of such installations are where this puts them.
inline ModuleNames NamesOf(Text path, std::size_t toolsPosition) {
  const std::size_t end = path.rfind(L'\\');
  if (end == Text::npos || end == 0) return {};
  ModuleNames names = {path, path};
  names.tail.remove_suffix(path.size() - end);
  names.baseName.remove_prefix(end + 1);

  const std::size_t lastFolder = names.tail.rfind(L'\\');
  if (lastFolder != Text::npos && lastFolder > 0) {
    names.tail.remove_prefix(toolsPosition == Text::npos ? lastFolder : toolsPosition);
  }
  const std::size_t period = names.baseName.rfind(L'.');
  if (period != Text::npos && period > 0) names.baseName.remove_suffix(names.baseName.size() - period);
  return names;
}

}  // namespace application
