// SPDX-License-Identifier: MIT
#include "Scenario.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "application/Installation.h"

namespace faults {

void World::Source(const std::string& name, const std::string& bytes) {
  sources_[name] = bytes;
  File(name, bytes);
}

void World::File(const std::string& name, const std::string& bytes) {
  test::WriteBytes(Path<wchar_t>(name), bytes);
}

void World::Folder(const std::string& name) {
  ::CreateDirectoryW(Path<wchar_t>(name).c_str(), nullptr);
}

void World::Date(const std::string& name, long long seconds) {
  test::SetModified(Path<wchar_t>(name), seconds);
}

bool World::Has(const std::string& name) const {
  return test::Exists(Path<wchar_t>(name));
}

std::string World::Bytes(const std::string& name) const {
  return Has(name) ? test::ReadBytes(Path<wchar_t>(name)) : std::string();
}

void World::Clear() {
  std::vector<std::wstring> entries = Entries();
  // Sorted, a folder stands before its contents.
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    const std::wstring path = folder_.path() + *entry;
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry->back() == L'\\') {
      ::RemoveDirectoryW(path.c_str());
    } else {
      ::DeleteFileW(path.c_str());
    }
  }
  sources_.clear();
}

std::string World::Harm() const {
  for (const auto& [name, bytes] : sources_) {
    if (!Has(name)) return name + " is gone";
    if (test::ReadBytes(Path<wchar_t>(name)) != bytes) return name + " is changed";
  }
  return {};
}

}  // namespace faults
