// SPDX-License-Identifier: MIT
// Whole directories: beside loops that make the same calls, and std::filesystem.
#include <ctime>
#include <filesystem>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

// Twenty files to a folder, fifty folders to one above.
void MakeTree(const std::wstring& folder, std::size_t files) {
  ::CreateDirectoryW(folder.c_str(), nullptr);
  for (std::size_t i = 0; i < files; ++i) {
    const std::wstring inside = folder + std::to_wstring(i / 1000) + L"\\";
    if (i % 1000 == 0) ::CreateDirectoryW(inside.c_str(), nullptr);
    const std::wstring below = inside + std::to_wstring(i / 20 % 50) + L"\\";
    if (i % 20 == 0) ::CreateDirectoryW(below.c_str(), nullptr);
    bare::Make(below + L"file" + std::to_wstring(i) + L".txt", 100);
  }
}

// A file in each folder of a chain.
void MakeDeepTree(const std::wstring& folder, std::size_t levels) {
  std::wstring inside = folder;
  ::CreateDirectoryW(inside.c_str(), nullptr);
  for (std::size_t i = 0; i < levels; ++i) {
    inside += L"d\\";
    ::CreateDirectoryW(inside.c_str(), nullptr);
    bare::Make(inside + L"f.t", 100);
  }
}

// One pass over a folder's entries, with the calls of the platform's finder.
template <class File, class Directory>
void Walk(const std::wstring& folder, File file, Directory directory) {
  const std::wstring pattern = folder + L"*.*";
  wchar_t full[MAX_PATH];
  WIN32_FIND_DATAW found;
  ::GetFullPathNameW(pattern.c_str(), MAX_PATH, full, nullptr);
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      directory(folder + name + L"\\");
    } else {
      file(folder + name);
    }
  } while (::FindNextFileW(search, &found));
  ::FindClose(search);
}

bool HasExtension(const std::wstring& path, const wchar_t* extension) {
  const wchar_t* const period = ::wcsrchr(path.c_str(), L'.');
  return period && ::_wcsicmp(period, extension) == 0;
}

void DeleteTree(const std::wstring& folder) {
  Walk(
      folder, [](const std::wstring& file) { bare::Delete(file.c_str()); },
      [](const std::wstring& inside) {
        DeleteTree(inside);
        ::RemoveDirectoryW(inside.c_str());
      });
}

// Of a tree whose files are all too young: what it costs to find that out.
void PruneTree(const std::wstring& folder, long long ageSeconds) {
  const auto old = [ageSeconds](const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    wchar_t full[MAX_PATH];
    if (!bare::Status(path.c_str(), data, full)) return false;
    const long long created =
        static_cast<long long>(data.ftCreationTime.dwHighDateTime) << 32 | data.ftCreationTime.dwLowDateTime;
    constexpr long long kSecondsTo1970 = 11'644'473'600;
    return ::_time64(nullptr) - (created / 10'000'000 - kSecondsTo1970) > ageSeconds;
  };
  Walk(
      folder,
      [old](const std::wstring& file) {
        if (HasExtension(file, L".txt") && old(file)) bare::Delete(file.c_str());
      },
      [old, ageSeconds](const std::wstring& inside) {
        PruneTree(inside, ageSeconds);
        if (old(inside.substr(0, inside.size() - 1))) ::RemoveDirectoryW(inside.c_str());
      });
}

// Each missing folder is found out by a probe that fails, and made.
void CopyTree(const std::wstring& folder, const std::wstring& to) {
  Walk(
      folder,
      [&](const std::wstring& file) { bare::Copy(file.c_str(), (to + file.substr(folder.size())).c_str()); },
      [&](const std::wstring& inside) {
        const std::wstring target = to + inside.substr(folder.size());
        if (!bare::Probe(target)) {
          ::CreateDirectoryW(target.c_str(), nullptr);
          bare::Probe(target);
        }
        CopyTree(inside, target);
      });
}

// The three operations on a tree that `make` makes.
template <class Make>
void OnATree(const std::string& shape, std::size_t size, Make make) {
  const std::wstring folder = Folder() + L"t\\", copy = Folder() + L"c\\";
  const auto there = [=] { make(folder, size); };
  const auto absent = [=] {
    std::error_code error;
    fs::remove_all(copy, error);
  };
  const auto uncopied = [=] {
    absent();
    ::CreateDirectoryW(copy.c_str(), nullptr);
  };
  there();
  const auto copyAll = BENCH_EXPORT(ZERA_TOOLS_FILE_COPY_ALL_UC);
  Measure("Trees", "copy" + shape, size,
          Prepared(uncopied, [=] { sink = copyAll(folder.c_str(), copy.c_str(), 1); }),
          Prepared(uncopied, [=] { CopyTree(folder, copy); }), Prepared(absent, [=] {
            // Without the backslashes, and to nowhere yet: this toolchain's copies onto nothing that exists.
            std::error_code error;
            fs::copy(folder.substr(0, folder.size() - 1), copy.substr(0, copy.size() - 1),
                     fs::copy_options::recursive, error);
            if (error) std::abort();
          }));
  absent();

  constexpr unsigned kYear = 365 * 24 * 3600;
  const auto prune = BENCH_EXPORT(ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC);
  Measure("Trees", "prune" + shape, size, Calls([=] { sink = prune(folder.c_str(), L".txt", kYear); }),
          Calls([=] { PruneTree(folder, kYear); }), Calls([=] {
            std::error_code error;
            const auto limit = fs::file_time_type::clock::now() - std::chrono::seconds(kYear);
            for (const auto& entry : fs::recursive_directory_iterator(folder, error)) {
              if (entry.path().extension() == L".txt" && entry.last_write_time() < limit)
                fs::remove(entry.path(), error);
            }
          }));

  const auto deleteAll = BENCH_EXPORT(ZERA_TOOLS_FILE_DELETE_ALL_UC);
  Measure("Trees", "delete" + shape, size, Prepared(there, [=] { sink = deleteAll(folder.c_str(), L".*"); }),
          Prepared(there, [=] { DeleteTree(folder); }), Prepared(there, [=] {
            std::error_code error;
            fs::remove_all(folder, error);
          }));
  std::error_code error;
  fs::remove_all(folder, error);
}

}  // namespace

void Trees() {
  OnATree("", ByMode(20, 200, 2000), MakeTree);
}

void TreesGrowth() {
  for (const std::size_t files : Sizes(100, 10, 100, 1'000, 100'000)) OnATree("", files, MakeTree);
  for (const std::size_t levels : {4, 15, 30, 45, 60}) {
    if (levels <= ByMode<std::size_t>(4, 60, 60)) OnATree(" (by depth)", levels, MakeDeepTree);
  }
}

}  // namespace bench
