// SPDX-License-Identifier: MIT
// A large tree: the work grows with the number of files, the memory with the depth alone.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

#include "DirectoryApi.h"
#include "support/ImportHook.h"

namespace {

constexpr int kFolders = 50;
constexpr int kFilesEach = 200;

// How much the library holds at most, by its own count of blocks.
std::atomic<int> held, most;

void* Malloc(std::size_t size) {
  const int now = ++held;
  if (now > most) most = now;
  return std::malloc(size);
}
void Free(void* block) {
  if (block) --held;
  std::free(block);
}

int calls[3];

HANDLE WINAPI First(const wchar_t* pattern, WIN32_FIND_DATAW* data) {
  ++calls[0];
  return ::FindFirstFileW(pattern, data);
}
BOOL WINAPI Next(HANDLE search, WIN32_FIND_DATAW* data) {
  ++calls[1];
  return ::FindNextFileW(search, data);
}
BOOL WINAPI Delete(const wchar_t* path) {
  ++calls[2];
  return ::DeleteFileW(path);
}

TEST(DirectorySize, LinearCallsAndConstantMemory) {
  const test::TempFolder temp;
  for (int folder = 0; folder < kFolders; ++folder) {
    const std::wstring path = temp.Folder(std::to_wstring(folder));
    for (int file = 0; file < kFilesEach; ++file) {
      ::CloseHandle(::CreateFileW((path + std::to_wstring(file) + L".log").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_NEW, 0, nullptr));
    }
  }
  const test::ImportHook hooks[] = {{"malloc", &Malloc},
                                    {"free", &Free},
                                    {"FindFirstFileW", &First},
                                    {"FindNextFileW", &Next},
                                    {"DeleteFileW", &Delete}};
  EXPECT_EQ(test::DirectoryApi(true).DeleteAll(temp.path(), L".log"), 1);
  EXPECT_EQ(calls[0], 1 + kFolders);
  EXPECT_EQ(calls[1], (2 + kFolders) + kFolders * (2 + kFilesEach)) << "each entry once, dots included";
  EXPECT_EQ(calls[2], kFolders * kFilesEach);
  EXPECT_LE(most, 6) << "a few texts for each of two levels";
  EXPECT_EQ(held, 0);
  EXPECT_EQ(temp.Entries(), test::Names{});
}

}  // namespace
