// SPDX-License-Identifier: MIT
// Storage: write check, free space and version.
#include <cstdio>
#include <filesystem>
#include <vector>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

void WriteChecks() {
  const auto check = BENCH_EXPORT(ZERA_TOOLS_FILE_CHECK_WRITE_UC);
  const std::wstring folder = Folder();
  Measure("Storage", "write check of a folder", 1, Calls([=] { sink = check(folder.c_str()); }),
          Calls([=] { sink = bare::Probe(folder); }), Calls([=] {
            const std::wstring path = folder + L"probe.tmp";
            std::fclose(::_wfopen(path.c_str(), L"wb"));
            std::error_code error;
            sink = fs::remove(path, error);
          }));

  // Each level that cannot be written to is made, from the root down.
  const std::wstring first = folder + L"a", second = first + L"\\b", deep = second + L"\\";
  const auto absent = [=] {
    ::RemoveDirectoryW(second.c_str());
    ::RemoveDirectoryW(first.c_str());
  };
  Measure("Storage", "write check that makes two folders", 2,
          Prepared(absent, [=] { sink = check(deep.c_str()); }),
          Prepared(absent,
                   [=] {
                     bare::Probe(deep);
                     for (std::size_t at = deep.find(L'\\', 1); at != std::wstring::npos;
                          at = deep.find(L'\\', at + 1)) {
                       const std::wstring level = deep.substr(0, at + 1);
                       if (!bare::Probe(level)) ::_wmkdir(level.c_str());
                     }
                     sink = bare::Probe(deep);
                   }),
          Prepared(absent, [=] {
            std::error_code error;
            sink = fs::create_directories(second, error);
          }));
  absent();
}

void Version() {
  const auto version = BENCH_EXPORT(ZERA_TOOLS_FILE_GET_VERSION_UC);
  wchar_t path[MAX_PATH];
  ::GetModuleFileNameW(::GetModuleHandleW(L"ZERATools.dll"), path, MAX_PATH);
  const std::wstring library = path;
  Measure("Storage", "version of a module", 1, Calls([=] {
            wchar_t text[32];
            sink = version(library.c_str(), text, 32);
          }),
          Calls([=] {
            std::vector<BYTE> resource(::GetFileVersionInfoSizeW(library.c_str(), nullptr));
            ::GetFileVersionInfoW(library.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data());
            void* root = nullptr;
            UINT size = 0;
            ::VerQueryValueW(resource.data(), L"\\", &root, &size);
            const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(root);
            wchar_t text[32];
            sink = ::_snwprintf(text, 32, L"%d.%d.%d.%d", HIWORD(info.dwProductVersionMS),
                                LOWORD(info.dwFileVersionMS), HIWORD(info.dwFileVersionLS),
                                LOWORD(info.dwFileVersionLS));
          }));
}

}  // namespace

void Storage() {
  WriteChecks();
  const auto space = BENCH_EXPORT(ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC);
  Measure("Storage", "free space", 1, Calls([=] { sink = static_cast<long long>(space(L'X')); }), Calls([] {
            ULARGE_INTEGER available;
            ::GetDiskFreeSpaceExW(L"X:", &available, nullptr, nullptr);
            sink = static_cast<long long>(available.QuadPart);
          }),
          Calls([] {
            std::error_code error;
            sink = static_cast<long long>(fs::space(L"X:\\", error).available);
          }));
  Version();
}

}  // namespace bench
