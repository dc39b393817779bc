// SPDX-License-Identifier: MIT
#include "system_folders.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <vector>

namespace zt {
namespace {

bool StartsWith(const std::wstring& text, const std::wstring& start) {
  return text.size() >= start.size() &&
         ::CompareStringOrdinal(text.data(), static_cast<int>(start.size()), start.data(),
                                static_cast<int>(start.size()), TRUE) == CSTR_EQUAL;
}

bool Same(const std::wstring& first, const std::wstring& second) {
  return first.size() == second.size() && StartsWith(first, second);
}

std::wstring WithBackslash(std::wstring folder) {
  if (!folder.empty() && !folder.ends_with(L'\\')) folder += L'\\';
  return folder;
}

std::wstring Parent(const std::wstring& folder) {
  const std::size_t end = folder.size() < 2 ? folder.npos : folder.rfind(L'\\', folder.size() - 2);
  return end == folder.npos ? L"" : folder.substr(0, end + 1);
}

// One name for what short names, links and substituted drives lead to; of a folder that is missing, the
// name of the nearest one above it and the rest.
std::wstring Real(const std::wstring& folder) {
  const HANDLE handle =
      ::CreateFileW(folder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    const std::wstring parent = Parent(folder);
    return parent.empty() ? folder : Real(parent) + folder.substr(parent.size());
  }
  wchar_t path[1024];
  const DWORD length = ::GetFinalPathNameByHandleW(handle, path, static_cast<DWORD>(std::size(path)), 0);
  ::CloseHandle(handle);
  return length && length < std::size(path) ? WithBackslash(path) : folder;
}

std::wstring Special(int id) {
  wchar_t path[MAX_PATH] = {};
  return ::SHGetSpecialFolderPathW(nullptr, path, id, FALSE) ? WithBackslash(path) : L"";
}

std::wstring FromEnvironment(const wchar_t* name) {
  wchar_t path[MAX_PATH];
  const DWORD length = ::GetEnvironmentVariableW(name, path, MAX_PATH);
  return length && length < MAX_PATH ? WithBackslash(path) : L"";
}

constexpr int specialFolders[] = {CSIDL_WINDOWS,
                                  CSIDL_SYSTEM,
                                  CSIDL_SYSTEMX86,
                                  CSIDL_PROGRAM_FILES,
                                  CSIDL_PROGRAM_FILESX86,
                                  CSIDL_PROGRAM_FILES_COMMON,
                                  CSIDL_PROGRAM_FILES_COMMONX86,
                                  CSIDL_COMMON_APPDATA,
                                  CSIDL_COMMON_DESKTOPDIRECTORY,
                                  CSIDL_COMMON_DOCUMENTS,
                                  CSIDL_COMMON_STARTMENU,
                                  CSIDL_COMMON_PROGRAMS,
                                  CSIDL_PROFILE,
                                  CSIDL_APPDATA,
                                  CSIDL_LOCAL_APPDATA,
                                  CSIDL_DESKTOPDIRECTORY,
                                  CSIDL_PERSONAL,
                                  CSIDL_MYPICTURES,
                                  CSIDL_MYMUSIC,
                                  CSIDL_MYVIDEO,
                                  CSIDL_FAVORITES,
                                  CSIDL_STARTMENU,
                                  CSIDL_PROGRAMS};
// A 32-bit environment on 64 bits, and systems whose shell answers nothing.
constexpr const wchar_t* variables[] = {L"SystemRoot",   L"ProgramFiles", L"ProgramFiles(x86)",
                                        L"ProgramW6432", L"ProgramData",  L"ALLUSERSPROFILE",
                                        L"PUBLIC",       L"USERPROFILE"};
// In the root of every drive.
constexpr const wchar_t* rootFolders[] = {L"System Volume Information", L"$Recycle.Bin", L"Boot", L"EFI",
                                          L"Recovery"};

std::vector<std::wstring> Protected() {
  std::vector<std::wstring> folders;
  for (const int id : specialFolders) folders.push_back(Special(id));
  for (const wchar_t* name : variables) folders.push_back(FromEnvironment(name));
  std::erase(folders, L"");
  return folders;
}

// The folder that profiles lie in; each of them is the root of one.
std::wstring Users() {
  const std::wstring profile = Special(CSIDL_PROFILE);
  return Parent(profile.empty() ? FromEnvironment(L"USERPROFILE") : profile);
}

}  // namespace

std::wstring SystemFolderAt(const std::wstring& folder) {
  const std::wstring real = Real(folder);
  const auto holds = [&](const std::wstring& special) {
    return StartsWith(special, folder) || StartsWith(Real(special), real);
  };
  const auto liesIn = [&](const std::wstring& special) {
    return StartsWith(folder, special) || StartsWith(real, Real(special));
  };
  for (const std::wstring& special : Protected()) {
    if (holds(special)) return special;
  }
  const std::wstring windows = FromEnvironment(L"SystemRoot");
  for (const std::wstring& special : {Special(CSIDL_WINDOWS), windows}) {
    if (!special.empty() && liesIn(special)) return special;
  }
  const std::wstring users = Users();
  if (!users.empty() && users.find(L'\\') + 1 < users.size()) {
    if (holds(users)) return users;
    if (Same(Parent(folder), users) || Same(Parent(real), Real(users))) return folder;
  }
  for (const wchar_t* name : rootFolders) {
    const std::wstring special = folder.substr(0, folder.find(L'\\') + 1) + name + L"\\";
    if (StartsWith(folder, special)) return special;
  }
  return L"";
}

}  // namespace zt
