// SPDX-License-Identifier: MIT
// What the operations that stream need of memory.
#include <filesystem>
#include <vector>

#include "Bare.h"
#include "Harness.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

std::wstring Path(Input input, const wchar_t* name) {
  return Folder() + (input == Input::small ? L"small-" : L"large-") + name;
}

void MakeTree(const std::wstring& folder, std::size_t files) {
  for (std::size_t i = 0; i < files; ++i) {
    const std::wstring inside = folder + std::to_wstring(i / 50) + L"\\";
    if (i % 50 == 0) fs::create_directories(inside);
    bare::Make(inside + std::to_wstring(i), 10);
  }
}

bool OnATree(const std::string& operation) {
  return operation.find("tree") != std::string::npos;
}

}  // namespace

void MakeForMemory(const std::string& operation, std::size_t size) {
  if (OnATree(operation)) {
    MakeTree(Path(Input::small, L"tree\\"), 3);
    MakeTree(Path(Input::large, L"tree\\"), size);
    return;
  }
  for (const Input input : {Input::small, Input::large}) {
    bare::Make(Path(input, L"file"), input == Input::small ? 10'000 : size);
    if (operation == "compare files") bare::Copy(Path(input, L"file").c_str(), Path(input, L"copy").c_str());
  }
}

bool DoForMemory(const std::string& operation, Input input) {
  const std::wstring file = Path(input, L"file"), copy = Path(input, L"copy");
  const std::wstring tree = Path(input, L"tree\\"), to = Path(input, L"copied\\");
  if (operation == "whole file in a buffer") {
    std::vector<BYTE> bytes(fs::file_size(file));
    unsigned long long count = 0;
    return BENCH_EXPORT(ZERA_TOOLS_FILE_TO_BUFFER_UC)(file.c_str(), bytes.data(), bytes.size(), &count) == 1;
  }
  if (operation == "copy a file")
    return BENCH_EXPORT(ZERA_TOOLS_FILE_COPY_UC)(file.c_str(), copy.c_str()) == 1;
  if (operation == "compare files")
    return BENCH_EXPORT(ZERA_TOOLS_FILE_COMPARE_UC)(file.c_str(), copy.c_str()) == 1;
  if (operation == "copy a tree")
    return BENCH_EXPORT(ZERA_TOOLS_FILE_COPY_ALL_UC)(tree.c_str(), to.c_str(), 1) == 1;
  if (operation == "delete a tree")
    return BENCH_EXPORT(ZERA_TOOLS_FILE_DELETE_ALL_UC)(tree.c_str(), L".*") == 1;
  return false;
}

void CleanAfterMemory() {
  std::error_code error;
  fs::remove_all(Folder(), error);
}

}  // namespace bench
