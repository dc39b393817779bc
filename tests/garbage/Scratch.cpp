// SPDX-License-Identifier: MIT
#include "Scratch.h"

#include <windows.h>

namespace garbage {
namespace {

const char kBeside[] = "stays as it is";

// Takes away what is in a folder, by names that the platform does not change: some end in a dot or a blank.
void Clear(const std::wstring& folder, std::vector<std::wstring>& probes) {
  WIN32_FIND_DATAW found;
  const HANDLE search = ::FindFirstFileW((folder + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring path = folder + name;
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      Clear(path + L"\\", probes);
      ::RemoveDirectoryW(path.c_str());
    } else {
      if (name.size() == 20 && name.compare(16, 4, L".$$$") == 0) probes.push_back(path);
      ::DeleteFileW(path.c_str());
    }
  } while (::FindNextFileW(search, &found));
  ::FindClose(search);
}

}  // namespace

Scratch::Scratch() : path_(folder_.Folder(L"scratch")) {
  folder_.File(L"beside.txt", kBeside);
  wchar_t before[MAX_PATH];
  ::GetCurrentDirectoryW(MAX_PATH, before);
  before_ = before;
  ::SetCurrentDirectoryW(path_.c_str());
}

Scratch::~Scratch() {
  ::SetCurrentDirectoryW(before_.c_str());
  std::vector<std::wstring> probes;
  Clear(L"\\\\?\\" + path_, probes);
}

std::vector<std::wstring> Scratch::Reset() {
  std::vector<std::wstring> probes;
  Clear(L"\\\\?\\" + path_, probes);
  for (const wchar_t* const name : {L"sub", L"sub.d", L"tree", L"tree\\sub", L"copy"}) {
    ::CreateDirectoryW((path_ + name).c_str(), nullptr);
  }
  for (const wchar_t* const name : {L"a", L"b.txt", L"sub\\c.log", L"tree\\b.txt", L"tree\\sub\\d.ini"}) {
    test::WriteBytes(path_ + name, "some bytes");
  }
  return probes;
}

bool Scratch::OthersWhole() const {
  if (test::ReadBytes(folder_ / L"beside.txt") != kBeside) return false;
  for (const std::wstring& entry : folder_.Entries()) {
    if (entry != L"beside.txt" && entry.compare(0, 8, L"scratch\\") != 0) return false;
  }
  return true;
}

}  // namespace garbage
