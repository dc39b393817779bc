// SPDX-License-Identifier: MIT
#include "Locations.h"

#include <shlobj.h>

#include "FolderTail.h"
#include "LocationText.h"
#include "ModulePath.h"
#include "base/QuietErrors.h"
#include "file/Contents.h"
#include "file/Files.h"
#include "file/PathPlatform.h"
#include "file/Probe.h"
#include "file/Storage.h"

namespace application {
namespace {

using LocationModule = ModulePath<LocationText::kModulePath>;

// The search for "\TOOLS" ignores case. Upper-casing keeps every character's position.
std::size_t FindTools(const LocationModule& module) {
  wchar_t upper[LocationText::kModulePath];
  const Text path = module.view();
  std::char_traits<wchar_t>::copy(upper, path.data(), path.size());
  ::CharUpperBuffW(upper, static_cast<DWORD>(path.size()));
  return ToolsPosition({upper, path.size()});
}

// Appends a folder of the shell; nothing if the platform has none.
void AppendShellFolder(LocationText& to, int folder) {
  wchar_t path[LocationText::kShellFolder] = {};
  const base::QuietErrors quiet;
  if (::SHGetSpecialFolderPathW(nullptr, path, folder, FALSE)) to.Append(path);
}

struct Folders {
  LocationText common;
  LocationText user;

  explicit Folders(const ModuleNames& names) {
    AppendShellFolder(common, CSIDL_COMMON_APPDATA);
    if (common.view().empty()) AppendShellFolder(common, CSIDL_APPDATA);
    AppendShellFolder(user, CSIDL_APPDATA);
    common.Append(names.tail).Append(L"\\").Append(names.baseName);
    user.Append(names.tail).Append(L"\\").Append(names.baseName);
  }
};

// Whether files can be made in the folder of a file, tried with a copy of that file. No probe fits into the
// deepest folders that the platform's paths allow; they count as not writable.
bool CanCopyBeside(const LocationText& file) {
  const auto parts = file::Split(file.view(), file::LeadBytes());
  const std::size_t folder = parts.drive.size() + parts.directory.size();
  if (folder + file::kProbeNameLength >= _MAX_PATH) return false;
  return file::Probe(file.view().substr(0, folder), file::ProbeName(&parts)).CopyOf(file);
}

// Makes the folders of the user's file. An installation below "\TOOLS" has a deeper tree of them, and
// gets a second try by way of the folder's own path.
void MakeFolders(const LocationText& userFile, bool isTools) {
  if (file::CheckWrite(userFile) || !isTools) return;
  const std::size_t end = userFile.view().rfind(L'\\');
  if (end == Text::npos || end == 0) return;
  LocationText folder;
  folder.Append({userFile, end});
  if (file::CheckWrite(folder)) file::CheckWrite(userFile);
}

// Copies the machine-wide file over the user's if that is due; `copied` tells whether it was.
void Seed(const LocationText& commonFile, const LocationText& userFile, bool isTools, int& copied) {
  CFileStatus common;
  if (!CFile::GetStatus(commonFile, common)) return;
  CFileStatus user;
  if (!CFile::GetStatus(userFile, user)) {
    copied = 1;
    MakeFolders(userFile, isTools);
  } else if (common.m_mtime > user.m_mtime) {
    copied = 1;
  }
  // What came of it shows in whether the user's file is there.
  if (copied) file::CopySucceeds(commonFile, userFile);
}

// Gives every path that it settles on to `store`, the last one counts.
template <class Store>
int FindSettingsFile(HMODULE handle, int& copied, Store store) {
  copied = 0;
  const LocationModule module(handle);
  if (module.empty()) return 0;
  const std::size_t tools = FindTools(module);

  // KEPT FOR HOSTS: the extension counts as three characters long. Modules with another length have
  // their settings under the name that is cut or padded by this.
  LocationText beside;
  beside.Append(module.Without(3)).Append(L"ini");
  store(beside);
  if (file::Exist(beside) && CanCopyBeside(beside)) return 1;

  Folders files(NamesOf(module.view(), tools));
  files.common.Append(L".ini");
  files.user.Append(L".ini");
  store(files.user);
  Seed(files.common, files.user, tools != Text::npos, copied);
  CFileStatus status;
  return CFile::GetStatus(files.user, status) ? 1 : 0;
}

}  // namespace

int DataFolders(HMODULE handle, CStringW& common, CStringW& user) {
  common.Empty();
  user.Empty();
  const LocationModule module(handle);
  if (module.empty()) return 0;
  const Folders folders(NamesOf(module.view(), FindTools(module)));
  common = folders.common;
  user = folders.user;
  return 1;
}

int SettingsFile(HMODULE module, CStringW& file, int& copied) {
  file.Empty();
  return FindSettingsFile(module, copied, [&](const LocationText& path) { file = path; });
}

// KEPT FOR HOSTS: unlike the UTF-16 variant, this one stores nothing when there is no settings file.
// Hosts take an empty text for "none".
int SettingsFile(HMODULE module, CStringA& file, int& copied) {
  file.Empty();
  LocationText found;
  const int result = FindSettingsFile(module, copied, [&](const LocationText& path) { found = path; });
  if (result) file = static_cast<const wchar_t*>(found);
  return result;
}

}  // namespace application
