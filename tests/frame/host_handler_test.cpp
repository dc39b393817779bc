// SPDX-License-Identifier: MIT
// Exceptions that a host's own invalid-parameter handler raises below an export: they pass through as they
// are, and nothing of the library's is left behind, although some kinds run none of its destructors.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/CodePage.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/Leave.h"
#include "support/Library.h"
#include "support/TempFolder.h"

// A host's own class, of a name that the library knows too.
struct CException {
  int number = 0;
};

namespace {

std::function<void()> raise;

void __cdecl Handler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, uintptr_t) {
  raise();
}

class HostHandler : public ::testing::Test {
 protected:
  ~HostHandler() override { ::_set_invalid_parameter_handler(before_); }

 private:
  _invalid_parameter_handler before_ = ::_set_invalid_parameter_handler(&Handler);
};

const auto GetExt = test::Export<decltype(ZERA_TOOLS_FILE_GET_EXT_UC)>(1013);

void TooSmall() {
  wchar_t text[2];
  GetExt(L"a.txt", text, 2);
}

BOOL WINAPI FailToRead(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_CRC);
  return FALSE;
}

// What the library raises is the host's to delete, and gives back then what it took.
TEST(Raised, ExceptionsAreGivenBackWhole) {
  const test::TempFolder temp;
  const std::wstring source = temp.File(L"source.bin", "bytes");
  const test::ImportHook hook("ReadFile", &FailToRead);
  const test::HeapWatch heap;
  void* exception = nullptr;
  const auto copy = [&] {
    test::Export<decltype(ZERA_TOOLS_FILE_COPY_UC)>(1016)(source.c_str(), (temp / L"copy.bin").c_str());
  };
  ASSERT_EQ(test::RaisedBy(copy, &exception), ".PEAVCFileException@@");
  EXPECT_EQ(heap.Outstanding(), 2) << "the object, and the file's name in it";
  test::DeleteException(exception);
  EXPECT_EQ(heap.Outstanding(), 0);
}

// Memory is exhausted but for small blocks: the runtime's account of an exception has none, and each of 32
// threads can have one in flight all the same. None of these places is the heap's.
constexpr int kInFlight = 32;
std::atomic<int> threadsThere, foreignBlocks, blocksRefused;
HANDLE allThere;
thread_local bool isInFlight;

void* SmallBlocksOnly(std::size_t size) {
  blocksRefused += size > 256;
  return size > 256 ? nullptr : std::malloc(size);
}
BOOL WINAPI FailToReadAtOnce(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  isInFlight = true;
  ::SetLastError(ERROR_CRC);
  return FALSE;
}
// The exception's object goes while the exception is still being handled.
void FreeWhenAllAreThere(void* block) {
  HMODULE owner = nullptr;
  foreignBlocks += ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<const wchar_t*>(block), &owner);
  if (std::exchange(isInFlight, false)) {
    if (++threadsThere == kInFlight) ::SetEvent(allThere);
    EXPECT_EQ(::WaitForSingleObject(allThere, 60'000), WAIT_OBJECT_0);
  }
  if (!owner) std::free(block);
}

TEST(Raised, ThirtyTwoThreadsHaveExceptionsWithoutMemory) {
  const test::TempFolder temp;
  const std::wstring source = temp.File(L"source.bin", "bytes");
  const auto toBuffer = test::Export<decltype(ZERA_TOOLS_FILE_TO_BUFFER_UC)>(1025);
  const test::ImportHook allocation("malloc", &SmallBlocksOnly);
  const test::ImportHook release("free", &FreeWhenAllAreThere);
  const test::ImportHook read("ReadFile", &FailToReadAtOnce);
  allThere = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  foreignBlocks = blocksRefused = 0;
  std::atomic<int> refused = 0;
  for (int round = 0; round < 2; ++round) {
    threadsThere = 0;
    ::ResetEvent(allThere);
    std::vector<std::thread> threads;
    for (int i = 0; i < kInFlight; ++i) {
      threads.emplace_back([&] {
        unsigned char bytes[8];
        unsigned __int64 count = 9;
        refused += toBuffer(source.c_str(), bytes, sizeof bytes, &count) == 0 && count == 0;
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  ::CloseHandle(allThere);
  EXPECT_EQ(refused, 2 * kInFlight);
  EXPECT_EQ(foreignBlocks, 0);
  EXPECT_EQ(blocksRefused, 2 * kInFlight);
}

TEST_F(HostHandler, WhatItRaisesPassesThroughAsItIs) {
  raise = [] { throw std::bad_alloc(); };
  EXPECT_THROW(TooSmall(), std::bad_alloc);
  raise = [] { throw 42; };
  EXPECT_THROW(TooSmall(), int);
  raise = [] { throw std::string("text"); };
  EXPECT_THROW(TooSmall(), std::string);
  CException own;
  raise = [&] { throw &own; };
  try {
    TooSmall();
    ADD_FAILURE() << "nothing was raised";
  } catch (CException* caught) {
    EXPECT_EQ(caught, &own);
  }
}

int providers, hashes, keys;

struct CountedCrypto {
  test::ImportHook acquire{"CryptAcquireContextW", +[](HCRYPTPROV* provider, const wchar_t* container,
                                                       const wchar_t* name, DWORD type, DWORD flags) {
                             const BOOL done = ::CryptAcquireContextW(provider, container, name, type, flags);
                             providers += done;
                             return done;
                           }};
  test::ImportHook release{"CryptReleaseContext", +[](HCRYPTPROV provider, DWORD flags) {
                             --providers;
                             return ::CryptReleaseContext(provider, flags);
                           }};
  test::ImportHook hash{"CryptCreateHash",
                        +[](HCRYPTPROV provider, ALG_ID kind, HCRYPTKEY key, DWORD flags, HCRYPTHASH* made) {
                          const BOOL done = ::CryptCreateHash(provider, kind, key, flags, made);
                          hashes += done;
                          return done;
                        }};
  test::ImportHook destroyHash{"CryptDestroyHash", +[](HCRYPTHASH made) {
                                 --hashes;
                                 return ::CryptDestroyHash(made);
                               }};
  test::ImportHook derive{
      "CryptDeriveKey", +[](HCRYPTPROV provider, ALG_ID kind, HCRYPTHASH from, DWORD flags, HCRYPTKEY* made) {
        const BOOL done = ::CryptDeriveKey(provider, kind, from, flags, made);
        keys += done;
        return done;
      }};
  test::ImportHook destroyKey{"CryptDestroyKey", +[](HCRYPTKEY key) {
                                --keys;
                                return ::CryptDestroyKey(key);
                              }};
};

// Leaves as an exception of another ABI does: no destructor of the library runs.
test::Leave leave;
int raised;
bool Leaves(const std::function<void()>& call) {
  raise = [] {
    ++raised;
    leave.Now();
  };
  raised = 0;
  leave.Within(call);
  return raised == 1;
}

TEST_F(HostHandler, NothingOwnedIsLeftByExportsThatBuildTexts) {
  const std::wstring umlauts = L"Gr\u00FC\u00DFe", asBytes = test::Wide("Gr\xC3\xBC\xC3\x9F\x65"),
                     longKey(500, L'k');
  const std::string plainKey(500, 'k');
  wchar_t text[64];
  std::size_t count = 0;
  // The line of the key alone and its terminator, and the companion's line without one.
  const std::size_t exact = 2 + umlauts.size() + 1 + (7 + asBytes.size() + 1);
  const std::function<void()> calls[] = {
      [] { test::Export<decltype(ZERA_TOOLS_ENC)>(71)("pass phrase", nullptr, 0, nullptr, 10, TRUE); },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_SECTION)>(80)(plainKey.c_str(), nullptr, 999, &count);
      },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_SECTION_UC)>(1080)(longKey.c_str(), nullptr, 999, &count);
      },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING)>(81)(plainKey.c_str(), nullptr, 999, "v", &count);
      },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING_UC)>(1081)(longKey.c_str(), nullptr, 2999,
                                                                    umlauts.c_str(), &count);
      },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING_UC)>(1081)(L"k", text, exact, umlauts.c_str(),
                                                                    &count);
      },
      [&] { test::Export<decltype(ZERA_TOOLS_BUFWRITE_INT)>(82)(plainKey.c_str(), nullptr, 999, 7, &count); },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_INT_UC)>(1082)(longKey.c_str(), nullptr, 999, 7, &count);
      },
      [&] {
        test::Export<decltype(ZERA_TOOLS_BUFWRITE_DOUBLE_UC)>(1084)(longKey.c_str(), nullptr, 999, 7, &count);
      },
  };
  constexpr int kWithCompanion = 6;
  const CountedCrypto crypto;
  int number = 0;
  for (const auto& call : calls) {
    ++number;
    const test::HeapWatch heap;
    // The one with a companion's line has no handler's call where there is no companion.
    EXPECT_EQ(Leaves(call), number != kWithCompanion || test::NeedsCompanion(umlauts)) << number;
    EXPECT_EQ(heap.Outstanding(), 0) << number;
  }
  EXPECT_EQ(providers, 0);
  EXPECT_EQ(hashes, 0);
  EXPECT_EQ(keys, 0);
}

// With a handler that returns, a line without a position is as before: the count of a success.
TEST_F(HostHandler, LinesWithoutAPositionCount) {
  int calls = 0;
  raise = [&] { ++calls; };
  std::size_t count = 0;
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_BUFWRITE_STRING_UC)>(1081)(L"k", nullptr, 99, L"\u00FC", &count),
            1);
  const bool companion = test::NeedsCompanion(L"\u00FC");
  EXPECT_EQ(calls, companion ? 2 : 1) << "for each line";
  EXPECT_EQ(count, companion ? 4 + 8 + test::Wide("\xC3\xBC").size() : 4);
}

}  // namespace
