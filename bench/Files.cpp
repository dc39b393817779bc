// SPDX-License-Identifier: MIT
// One file: beside the status calls that the rules require, and std::filesystem.
#include <filesystem>
#include <string>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

using bare::Exists;
using bare::Make;
using bare::Status;

void Questions(const std::wstring& path, const std::wstring& empty, const std::wstring& missing) {
  const auto exist = BENCH_EXPORT(ZERA_TOOLS_FILE_EXIST_UC);
  const struct {
    const char* operation;
    const std::wstring& path;
  } rows[] = {
      {"existence", path}, {"existence of an empty file", empty}, {"existence of a missing file", missing}};
  for (const auto& row : rows) {
    const wchar_t* const text = row.path.c_str();
    Measure("Files", row.operation, 1, Calls([=] { sink = exist(text); }),
            Calls([=] { sink = Exists(text); }), Calls([=] {
              std::error_code error;
              sink = fs::exists(text, error);
            }));
  }
  const wchar_t* const text = path.c_str();
  const auto bare = [=] {
    WIN32_FILE_ATTRIBUTE_DATA data;
    wchar_t full[MAX_PATH];
    sink = Status(text, data, full) ? data.nFileSizeLow : 0;
  };
  const auto size = BENCH_EXPORT(ZERA_TOOLS_FILE_GET_SIZE_UC);
  Measure("Files", "size", 1, Calls([=] { sink = size(text); }), Calls(bare), Calls([=] {
            std::error_code error;
            sink = static_cast<long long>(fs::file_size(text, error));
          }));
  const auto modified = BENCH_EXPORT(ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC);
  Measure("Files", "time of modification", 1, Calls([=] {
            long long time = 0;
            modified(text, &time);
            sink = time;
          }),
          Calls(bare), Calls([=] {
            std::error_code error;
            sink = fs::last_write_time(text, error).time_since_epoch().count();
          }));
  const auto has = BENCH_EXPORT(ZERA_TOOLS_FILE_HAS_EXTENSION_UC);
  Measure("Files", "extension match", 1, Calls([=] { sink = has(text, L"IN"); }), Calls([=] {
            wchar_t extension[_MAX_EXT], wanted[] = L"IN";
            ::_wsplitpath_s(text, nullptr, 0, nullptr, 0, nullptr, 0, extension, _MAX_EXT);
            ::_wcsupr_s(extension, _MAX_EXT);
            ::_wcsupr_s(wanted, 3);
            sink = ::wcsstr(extension, wanted) != nullptr;
          }),
          Calls([=] { sink = fs::path(text).extension() == L".ini"; }));
}

void Changes(const std::wstring& path, const std::wstring& other) {
  const wchar_t* const text = path.c_str();
  const wchar_t* const to = other.c_str();
  const auto remove = BENCH_EXPORT(ZERA_TOOLS_FILE_DELETE_UC);
  const auto make = [path] { Make(path, 7); };
  Measure("Files", "delete", 1, Prepared(make, [=] { sink = remove(text); }),
          Prepared(make, [=] { sink = bare::Delete(text); }), Prepared(make, [=] {
            std::error_code error;
            sink = fs::remove(text, error);
          }));
  const auto rename = BENCH_EXPORT(ZERA_TOOLS_FILE_RENAME_UC);
  const auto start = [=] {
    Make(path, 7);
    ::DeleteFileW(to);
  };
  Measure(
      "Files", "rename", 1, Prepared(start, [=] { sink = rename(text, to); }),
      Prepared(start, [=] { sink = !Exists(to) && Exists(text) && ::MoveFileW(text, to) && !Exists(text); }),
      Prepared(start, [=] {
        std::error_code error;
        fs::rename(text, to, error);
      }));
}

}  // namespace

void Files() {
  const std::wstring path = Folder() + L"present.ini", empty = Folder() + L"empty.ini";
  Make(path, 7);
  Make(empty, 0);
  Questions(path, empty, Folder() + L"missing.ini");
  Changes(path, Folder() + L"renamed.ini");
  for (const wchar_t* const name : {L"present.ini", L"empty.ini", L"renamed.ini"}) {
    ::DeleteFileW((Folder() + name).c_str());
  }
}

}  // namespace bench
