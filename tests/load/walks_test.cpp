// SPDX-License-Identifier: MIT
// Walks that another thread stops, at moments chosen by chance.
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include "file/DirectoryApi.h"
#include "support/OpenSearches.h"
#include "support/Rounds.h"

namespace {

constexpr int kFolders = 3, kFilesEach = 5;
constexpr int kFiles = kFolders * kFilesEach;

std::atomic<int> deletions, wanted, reached;

BOOL WINAPI Deleting(const wchar_t* path) {
  const BOOL deleted = ::DeleteFileW(path);
  if (++deletions == wanted) {
    // The other thread has set the flag when this returns.
    reached = 1;

    while (reached == 1) ::Sleep(0);
  }
  return deleted;
}

class AbortedWalks : public ::testing::Test {
 protected:
  void Plant() {
    for (int folder = 0; folder < kFolders; ++folder) {
      const std::wstring path = temp_.Folder(std::to_wstring(folder));
      test::WriteBytes(path + L"keep.txt", "kept");
      for (int file = 0; file < kFilesEach; ++file) {
        test::WriteBytes(path + std::to_wstring(file) + L".log", "old");
        test::SetAge(path + std::to_wstring(file) + L".log", 1000);
      }
      test::SetAge(temp_ / std::to_wstring(folder), 1000);
    }
    deletions = 0;
  }
  int Walk(int* flag) { return api_.DeleteOldEx(temp_.path(), L".log", 60, flag); }

  // All that may not be touched is there; how many of the others.
  int Left() {
    int kept = 0, left = 0;
    for (const std::wstring& entry : temp_.Entries()) {
      kept += entry.ends_with(L"\\keep.txt");
      left += entry.ends_with(L".log");
    }
    EXPECT_EQ(kept, kFolders);
    return left;
  }
  void Clear() {
    int go = 0;
    EXPECT_EQ(Walk(&go), 1);
    EXPECT_EQ(Left(), 0);
    for (int folder = 0; folder < kFolders; ++folder) {
      const std::wstring path = temp_ / std::to_wstring(folder);
      EXPECT_TRUE(::DeleteFileW((path + L"\\keep.txt").c_str()));
      EXPECT_TRUE(::RemoveDirectoryW(path.c_str()));
    }
  }

  const test::TempFolder temp_;
  const test::DirectoryApi api_{true};
  std::mt19937 random_{1029};
};

TEST_F(AbortedWalks, StopBeforeTheNextEntry) {
  for (int round = test::Rounds(500) / 3; round > 0; --round) {
    Plant();
    wanted = 1 + static_cast<int>(random_() % kFiles);
    reached = 0;
    int flag = 0;
    std::thread other([&] {
      while (reached == 0) ::Sleep(0);
      std::atomic_ref<int>{flag}.store(1);
      reached = 2;
    });
    {
      const test::ImportHook hook("DeleteFileW", &Deleting);
      const test::OpenSearches searches;
      const test::HeapWatch heap;
      EXPECT_EQ(Walk(&flag), 1);
      EXPECT_EQ(heap.Outstanding(), 0);
      EXPECT_EQ(searches.Count(), 0);
    }
    other.join();
    EXPECT_EQ(deletions, wanted);
    EXPECT_EQ(Left(), kFiles - wanted);
    Clear();
  }
}

// Whenever the flag comes: what is not deleted is whole, and a further walk deletes it.
TEST_F(AbortedWalks, AnyMoment) {
  for (int round = test::Rounds(500); round > 0; --round) {
    Plant();
    wanted = 0;
    int flag = 0;
    std::atomic<bool> start = false;
    const std::chrono::microseconds moment(random_() % 15'000);
    std::thread other([&] {
      while (!start) ::Sleep(0);
      // Not by rounds of giving way: on a busy machine each of them takes long.
      const auto end = std::chrono::steady_clock::now() + moment;
      while (std::chrono::steady_clock::now() < end) {
      }
      std::atomic_ref<int>{flag}.store(1);
    });
    {
      const test::ImportHook hook("DeleteFileW", &Deleting);
      start = true;

      EXPECT_EQ(Walk(&flag), 1);
    }
    other.join();
    EXPECT_EQ(Left(), kFiles - deletions);
    Clear();
  }
}
}  // namespace
