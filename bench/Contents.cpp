// SPDX-License-Identifier: MIT
// Contents of one file: beside loops with the same blocks, and the platform's own copy or the C runtime.
#include <cstdio>
#include <vector>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

bool SameContents(const wchar_t* first, const wchar_t* second) {
  std::FILE* const one = ::_wfopen(first, L"rb");
  std::FILE* const two = ::_wfopen(second, L"rb");
  char blocks[2][4096];
  bool same = true;
  for (std::size_t count = 1; same && count > 0;) {
    count = std::fread(blocks[0], 1, sizeof blocks[0], one);
    same = std::fread(blocks[1], 1, sizeof blocks[1], two) == count &&
           std::memcmp(blocks[0], blocks[1], count) == 0;
  }
  std::fclose(two);
  std::fclose(one);
  return same;
}

void CopyAndCompare(std::size_t size) {
  const std::wstring sourcePath = Folder() + L"source.bin", targetPath = Folder() + L"target.bin";
  const wchar_t* const source = sourcePath.c_str();
  const wchar_t* const target = targetPath.c_str();
  bare::Make(sourcePath, size);
  const auto copy = BENCH_EXPORT(ZERA_TOOLS_FILE_COPY_UC);
  Measure("Contents", "copy", size, Calls([=] { sink = copy(source, target); }),
          Calls([=] { bare::Copy(source, target); }),
          Calls([=] { sink = ::CopyFileW(source, target, FALSE); }));
  const auto compare = BENCH_EXPORT(ZERA_TOOLS_FILE_COMPARE_UC);
  Measure("Contents", "compare", size, Calls([=] { sink = compare(source, target); }),
          Calls([=] { sink = bare::Equal(source, target); }),
          Calls([=] { sink = SameContents(source, target); }));
  ::DeleteFileW(target);

  std::vector<BYTE> bytes(size);
  const auto toBuffer = BENCH_EXPORT(ZERA_TOOLS_FILE_TO_BUFFER_UC);
  Measure("Contents", "into a buffer", size, Calls([&] {
            unsigned long long count = 0;
            sink = toBuffer(source, bytes.data(), bytes.size(), &count);
          }),
          Calls([&] {
            WIN32_FILE_ATTRIBUTE_DATA data;
            wchar_t full[MAX_PATH];
            bare::Status(source, data, full);
            DWORD count = 0;
            const HANDLE from = bare::OpenToRead(source);
            ::ReadFile(from, bytes.data(), static_cast<DWORD>(size), &count, nullptr);
            ::CloseHandle(from);
          }),
          Calls([&] {
            std::FILE* const from = ::_wfopen(source, L"rb");
            sink = static_cast<long long>(std::fread(bytes.data(), 1, size, from));
            std::fclose(from);
          }));
  const auto fromBuffer = BENCH_EXPORT(ZERA_TOOLS_FILE_FROM_BUFFER_UC);
  Measure("Contents", "from a buffer", size, Calls([&] { sink = fromBuffer(target, bytes.data(), size); }),
          Calls([&] {
            DWORD count = 0;
            const HANDLE to = bare::OpenToWrite(target);
            ::WriteFile(to, bytes.data(), static_cast<DWORD>(size), &count, nullptr);
            ::CloseHandle(to);
          }),
          Calls([&] {
            std::FILE* const to = ::_wfopen(target, L"wb");
            sink = static_cast<long long>(std::fwrite(bytes.data(), 1, size, to));
            std::fclose(to);
          }));
  ::DeleteFileW(source);
  ::DeleteFileW(target);
}

void Create() {
  const std::wstring path = Folder() + L"made.txt";
  const wchar_t* const text = path.c_str();
  const auto absent = [=] { ::DeleteFileW(text); };
  const auto create = BENCH_EXPORT(ZERA_TOOLS_FILE_CREATE_UC);
  Measure("Contents", "create an empty file", 1, Prepared(absent, [=] { sink = create(text); }),
          Prepared(absent,
                   [=] {
                     if (!bare::Exists(text)) ::CloseHandle(bare::OpenToWrite(text));
                   }),
          Prepared(absent, [=] { std::fclose(::_wfopen(text, L"wb")); }));
  ::DeleteFileW(text);
}

}  // namespace

void Contents() {
  CopyAndCompare(ByMode(1 << 12, 1 << 20, 1 << 20));
  Create();
}

void ContentsGrowth() {
  constexpr std::size_t kMiB = 1 << 20;
  for (const std::size_t size : Sizes(4096, 4, 4096, 16 * kMiB, 1024 * kMiB)) CopyAndCompare(size);
}

}  // namespace bench
