// SPDX-License-Identifier: MIT
// Loading and unloading the library again and again in one process, as hosts do that load it for each task.
// Each round makes the library throw and catch an exception inside, which is when a C++ runtime sets up
// what it keeps for a thread.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "ZERATools.h"
#include "support/ImportHook.h"
#include "support/Rounds.h"
#include "support/TempFolder.h"

namespace {

constexpr unsigned kFileToBuffer = 1025;

// How many thread-local-storage indexes the process has left.
int FreeTlsIndexes() {
  std::vector<DWORD> taken;
  for (DWORD index; (index = ::TlsAlloc()) != TLS_OUT_OF_INDEXES;) taken.push_back(index);
  for (const DWORD index : taken) ::TlsFree(index);
  return static_cast<int>(taken.size());
}

// What is allocated from the process's heaps; the C runtime's is one of them.
long long HeapBytes() {
  HANDLE heaps[64];
  const DWORD there = ::GetProcessHeaps(ARRAYSIZE(heaps), heaps);
  EXPECT_LE(there, ARRAYSIZE(heaps));
  const DWORD count = std::min<DWORD>(there, ARRAYSIZE(heaps));
  long long sum = 0;
  for (DWORD at = 0; at < count; ++at) {
    PROCESS_HEAP_ENTRY entry = {};
    ::HeapLock(heaps[at]);
    while (::HeapWalk(heaps[at], &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) sum += entry.cbData;
    }
    ::HeapUnlock(heaps[at]);
  }
  return sum;
}

BOOL WINAPI FailingRead(HANDLE, LPVOID, DWORD, LPDWORD, LPOVERLAPPED) {
  ::SetLastError(ERROR_READ_FAULT);
  return FALSE;
}

class Load : public ::testing::Test {
 protected:
  // The library is not bound for the whole program here, so its handle is passed about.
  static HMODULE LoadIt() {
    const HMODULE module = ::LoadLibraryW(L"ZERATools.dll");
    EXPECT_NE(module, nullptr) << "error " << ::GetLastError();
    return module;
  }

  static void UnloadIt(HMODULE module) {
    EXPECT_TRUE(::FreeLibrary(module));
    EXPECT_EQ(::GetModuleHandleW(L"ZERATools.dll"), nullptr) << "the library stays in memory";
  }

  static auto ToBuffer(HMODULE module) {
    return reinterpret_cast<decltype(&ZERA_TOOLS_FILE_TO_BUFFER_UC)>(reinterpret_cast<void*>(
        ::GetProcAddress(module, reinterpret_cast<const char*>(static_cast<ULONG_PTR>(kFileToBuffer)))));
  }

  // The read fails, its exception is caught inside, and the result tells of it.
  bool CatchInside(HMODULE module) const {
    const auto toBuffer = ToBuffer(module);
    BYTE buffer[8] = {};
    unsigned long long count = 77;
    return toBuffer && toBuffer(file_.c_str(), buffer, sizeof buffer, &count) == 0 && count == 0;
  }

  void RoundOfCalls() const {
    const HMODULE module = LoadIt();
    {
      const test::ImportHook hook("ReadFile", &FailingRead, module);
      EXPECT_TRUE(CatchInside(module));
    }
    UnloadIt(module);
  }

  // Runs a round many times; what the process holds must be the same afterwards. The first rounds are
  // for what the platform sets up once.
  //
  // The platform's heap may serve small blocks from groups that it takes when a size was asked for often, and
  // HeapWalk may count a whole group as in use: Wine 10 does; Wine 8 gives the blocks themselves, and so does
  // Windows by its documentation. So the rounds are repeated while the heap grows; a round that keeps
  // anything makes it grow every time.
  static void ExpectNoGrowth(int all, const std::function<void()>& round) {
    constexpr int kAttempts = 4;
    const int rounds = test::Rounds(all);
    for (int i = 0; i < 50; ++i) round();
    const int indexes = FreeTlsIndexes();
    const DWORD handles = test::OpenHandles();
    long long grown = 0;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      const long long heap = HeapBytes();
      for (int i = 0; i < rounds && !HasFailure(); ++i) round();
      EXPECT_EQ(FreeTlsIndexes(), indexes) << "thread-local-storage indexes";
      EXPECT_EQ(test::OpenHandles(), handles) << "handles";
      // Less than a byte for each round: anything kept would show.
      grown = HeapBytes() - heap;
      if (grown < rounds) break;
    }
    EXPECT_LT(grown, rounds) << "bytes of the heap";
  }

  static DWORD WINAPI RunThread(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return 0;
  }
  static HANDLE Start(const std::function<void()>& work) {
    return ::CreateThread(nullptr, 0, &RunThread, const_cast<std::function<void()>*>(&work), 0, nullptr);
  }
  static void Join(HANDLE thread) {
    EXPECT_EQ(::WaitForSingleObject(thread, 60'000), WAIT_OBJECT_0);
    ::CloseHandle(thread);
  }

  test::TempFolder folder_;
  std::wstring file_ = folder_.File(L"data.bin", "12345678");
};

TEST_F(Load, TenThousandRoundsKeepNothing) {
  ExpectNoGrowth(10'000, [&] { RoundOfCalls(); });
}

// Each thread that has called leaves with what was kept for it, while the library stays.
TEST_F(Load, ThreadsThatComeAndGoKeepNothing) {
  const HMODULE module = LoadIt();
  {
    const test::ImportHook hook("ReadFile", &FailingRead, module);
    ExpectNoGrowth(2'000, [&] { Join(Start([&] { EXPECT_TRUE(CatchInside(module)); })); });
  }
  UnloadIt(module);
}

TEST_F(Load, ThreadsBetweenLoadAndUnloadKeepNothing) {
  ExpectNoGrowth(1'000, [&] {
    const HMODULE module = LoadIt();
    {
      const test::ImportHook hook("ReadFile", &FailingRead, module);
      const std::function<void()> work = [&] { EXPECT_TRUE(CatchInside(module)); };
      const HANDLE threads[] = {Start(work), Start(work), Start(work)};
      for (const HANDLE thread : threads) Join(thread);
    }
    UnloadIt(module);
  });
}

// A thread of the host that is older than the library and outlives it, many times over.
TEST_F(Load, ThreadThatOutlivesTheLibraryKeepsNothing) {
  const HANDLE go = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
  const HANDLE done = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HMODULE module = nullptr;
  const std::function<void()> work = [&] {
    while (::WaitForSingleObject(go, 60'000) == WAIT_OBJECT_0 && module) {
      EXPECT_TRUE(CatchInside(module));
      ::SetEvent(done);
    }
  };
  const HANDLE thread = Start(work);
  ExpectNoGrowth(2'000, [&] {
    module = LoadIt();
    {
      const test::ImportHook hook("ReadFile", &FailingRead, module);
      ::SetEvent(go);
      EXPECT_EQ(::WaitForSingleObject(done, 60'000), WAIT_OBJECT_0);
      EXPECT_TRUE(CatchInside(module));
    }
    UnloadIt(module);
  });
  module = nullptr;
  ::SetEvent(go);
  Join(thread);
  ::CloseHandle(go);
  ::CloseHandle(done);
}

// All of a thread's exceptions lie in that thread's storage: threads that throw at the same time do not
// see each other's.
TEST_F(Load, ThreadsThrowAtTheSameTime) {
  const HMODULE module = LoadIt();
  {
    const test::ImportHook hook("ReadFile", &FailingRead, module);
    const std::function<void()> work = [&] {
      for (int i = 0; i < test::Rounds(2'000) && !HasFailure(); ++i) EXPECT_TRUE(CatchInside(module));
    };
    const HANDLE threads[] = {Start(work), Start(work), Start(work), Start(work)};
    for (const HANDLE thread : threads) Join(thread);
  }
  UnloadIt(module);
}

// Each thread loads, calls and unloads as if it were alone: the library comes and goes under the others,
// stays as long as one of them has it, and is gone at the end.
TEST_F(Load, ThreadsLoadAndUnloadUnderOneAnother) {
  constexpr int kThreads = 8;
  const std::function<void()> work = [&] {
    for (int i = 0; i < 5 && !HasFailure(); ++i) {
      const HMODULE module = LoadIt();
      BYTE buffer[16] = {};
      unsigned long long count = 0;
      const auto toBuffer = ToBuffer(module);
      ASSERT_NE(toBuffer, nullptr);
      EXPECT_EQ(toBuffer(file_.c_str(), buffer, sizeof buffer, &count), 1);
      EXPECT_EQ(count, 8u);
      EXPECT_EQ(std::string(buffer, buffer + 8), "12345678");
      EXPECT_TRUE(::FreeLibrary(module));
    }
  };
  ExpectNoGrowth(100, [&] {
    HANDLE threads[kThreads];
    for (HANDLE& thread : threads) thread = Start(work);
    for (const HANDLE thread : threads) Join(thread);
    EXPECT_EQ(::GetModuleHandleW(L"ZERATools.dll"), nullptr) << "the library stays in memory";
  });
}

}  // namespace
