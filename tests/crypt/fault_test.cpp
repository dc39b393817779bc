// SPDX-License-Identifier: MIT
// The platform's failures on the way of every encrypting and decrypting export: what is called in which
// order, what is given back, and that no secret stays in memory that was given back.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "CryptoTrace.h"
#include "Reference.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

using Strings = std::vector<std::string>;
using ByteArray = CArray<BYTE, const BYTE&>;

// Long enough to be found in memory, and of one kind of byte only.
const std::string kPhrase = "PASSPHRASE-PASSPHRASE-PASSPHRASE";
const std::string kPlain = "PLAINTEXT--PLAINTEXT--PLAINTEXT-";
const std::string kCipher = reference::Hex(reference::Cipher(kPhrase, kPlain));
const std::wstring kWidePhrase = reference::Widened(kPhrase);
const std::wstring kWideCipher = reference::Widened(kCipher);

void Fill(ByteArray& array, const std::string& bytes) {
  for (const char one : bytes) array.Add(static_cast<BYTE>(one));
}

// The exports, each with arguments that work, and what it gives then.
struct Call {
  const char* name;
  bool encrypts;
  int result;
  std::function<int()> run;
  int givesBack = 0;  // blocks of the host, in an array that is emptied
};

std::vector<Call> Calls() {
  return {
      {"ENC", true, 0,
       [] {
         char out[8];
         return test::Export<decltype(ZERA_TOOLS_ENC)>(71)(kPhrase.c_str(), nullptr, 0, out, 8, TRUE);
       }},
      {"ENC_UC", true, 64,
       [] {
         ByteArray key, plain;
         Fill(key, kPhrase);
         Fill(plain, kPlain);
         CStringW out(L"before");
         const int result = test::Export<decltype(ZERA_TOOLS_ENC_UC)>(1071)(key, plain, out, TRUE);
         EXPECT_EQ(out.IsEmpty(), result == -1);
         return result;
       }},
      {"ENC_STRING_S", true, 64,
       [] {
         CStringA out("before");
         const int result = test::Export<decltype(ZERA_TOOLS_ENC_STRING_S)>(75)(
             kPhrase.c_str(), CStringA(kPlain.c_str()), out);
         EXPECT_EQ(out.IsEmpty(), result == -1);
         return result;
       }},
      {"ENC_STRING_L", true, 64,
       [] {
         CStringA out("before");
         const int result = test::Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77)(
             kPhrase.c_str(), CStringA(kPlain.c_str()), out);
         EXPECT_EQ(out.IsEmpty(), result == -1);
         return result;
       }},
      {"ENC_STRING_S_UC", true, 64,
       [] {
         CStringW out(L"before");
         const int result = test::Export<decltype(ZERA_TOOLS_ENC_STRING_S_UC)>(1075)(
             kWidePhrase.c_str(), CStringW(kPlain.c_str()), out);
         EXPECT_EQ(out.IsEmpty(), result == -1);
         return result;
       }},
      {"ENC_STRING_L_UC", true, 64,
       [] {
         CStringW out(L"before");
         const int result = test::Export<decltype(ZERA_TOOLS_ENC_STRING_L_UC)>(1077)(
             kWidePhrase.c_str(), CStringW(kPlain.c_str()), out);
         EXPECT_EQ(out.IsEmpty(), result == -1);
         return result;
       }},
      {"DEC", false, 32,
       [] {
         BYTE out[64];
         return test::Export<decltype(ZERA_TOOLS_DEC)>(72)(kPhrase.c_str(), kCipher.c_str(), 1, out, 64);
       }},
      {"DEC_UC", false, 32,
       [] {
         ByteArray key, out;
         Fill(key, kPhrase);
         Fill(out, "before");
         const int result =
             test::Export<decltype(ZERA_TOOLS_DEC_UC)>(1072)(key, kWideCipher.c_str(), TRUE, out);
         EXPECT_EQ(out.IsEmpty(), result <= 0);
         return result;
       },
       1},
      {"DEC_STRING", false, 32,
       [] {
         CStringA out("before");
         const int result = test::Export<decltype(ZERA_TOOLS_DEC_STRING)>(76)(kPhrase.c_str(),
                                                                              CStringA(kCipher.c_str()), out);
         EXPECT_EQ(out.IsEmpty(), result <= 0);
         return result;
       }},
      {"DEC_STRING_UC", false, 32,
       [] {
         CStringW out(L"before");
         const int result = test::Export<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076)(kWidePhrase.c_str(),
                                                                                   kWideCipher.c_str(), out);
         EXPECT_EQ(out.IsEmpty(), result <= 0);
         return result;
       }},
  };
}

const char* Cipher(const Call& call) {
  return call.encrypts ? "CryptEncrypt" : "CryptDecrypt";
}

TEST(CryptFaults, CallsInTheirOrderAndAllGivenBack) {
  for (const Call& call : Calls()) {
    SCOPED_TRACE(call.name);
    test::CryptoTrace trace;
    EXPECT_EQ(call.run(), call.result);
    const std::string size = call.result == 0 ? "0" : "20";  // in hexadecimal
    EXPECT_EQ(
        trace.Calls(),
        (Strings{"CryptAcquireContextW(type 1, flags 0)", "CryptCreateHash(algorithm 8003, key 0, flags 0)",
                 "CryptHashData(count 20, flags 0)", "CryptDeriveKey(algorithm 6801, flags 1)",
                 call.encrypts ? "CryptEncrypt(hash 0, final 1, flags 0, count " + size + ", capacity 100)"
                               : "CryptDecrypt(hash 0, final 1, flags 0, count " + size + ")",
                 "CryptDestroyKey()", "CryptDestroyHash()", "CryptReleaseContext(flags 0)"}));
    EXPECT_EQ(trace.Open(), 0);
  }
}

TEST(CryptFaults, MissingKeyContainerIsCreatedOnce) {
  for (const Call& call : Calls()) {
    SCOPED_TRACE(call.name);
    test::CryptoTrace trace;
    trace.Fail("CryptAcquireContextW", static_cast<DWORD>(NTE_BAD_KEYSET));
    EXPECT_EQ(call.run(), call.result);
    const Strings calls = trace.Calls();
    ASSERT_EQ(calls.size(), 9u);
    EXPECT_EQ(calls[0], "CryptAcquireContextW(type 1, flags 0)");
    EXPECT_EQ(calls[1], "CryptAcquireContextW(type 1, flags 8)");
    EXPECT_EQ(trace.Open(), 0);
  }
}

TEST(CryptFaults, ContainerThatCannotBeCreatedEndsTheCall) {
  for (const Call& call : Calls()) {
    SCOPED_TRACE(call.name);
    test::CryptoTrace trace;
    const auto fail = [&](DWORD error) { trace.Fail("CryptAcquireContextW", error); };
    fail(static_cast<DWORD>(NTE_BAD_KEYSET));
    const test::ImportHook second(
        "CryptAcquireContextW", +[](HCRYPTPROV*, LPCWSTR, LPCWSTR, DWORD, DWORD) -> BOOL {
          ::SetLastError(static_cast<DWORD>(NTE_BAD_KEYSET));
          return FALSE;
        });
    EXPECT_EQ(call.run(), call.encrypts ? -1 : 0);
    EXPECT_EQ(trace.Calls(), Strings{});
  }
}

TEST(CryptFaults, OtherErrorOfTheFirstAcquireIsNotRetried) {
  for (const Call& call : Calls()) {
    SCOPED_TRACE(call.name);
    test::CryptoTrace trace;
    trace.Fail("CryptAcquireContextW", static_cast<DWORD>(NTE_KEYSET_NOT_DEF));
    EXPECT_EQ(call.run(), call.encrypts ? -1 : 0);
    EXPECT_EQ(trace.Calls(), (Strings{"CryptAcquireContextW(type 1, flags 0)",
                                      "CryptCreateHash(no provider, algorithm 8003, key 0, flags 0)"}));
    EXPECT_EQ(trace.Open(), 0);
  }
}

TEST(CryptFaults, EachStepFailsOnceAndTheStepsBeforeAreUndone) {
  for (const Call& call : Calls()) {
    const Strings steps = {"CryptAcquireContextW", "CryptCreateHash", "CryptHashData", "CryptDeriveKey",
                           Cipher(call)};
    const Strings undone[] = {{"CryptReleaseContext"},
                              {"CryptDestroyHash", "CryptReleaseContext"},
                              {"CryptDestroyHash", "CryptReleaseContext"},
                              {"CryptDestroyKey", "CryptDestroyHash", "CryptReleaseContext"}};
    for (std::size_t failing = 1; failing < steps.size(); ++failing) {
      SCOPED_TRACE(std::string(call.name) + ", " + steps[failing]);
      test::CryptoTrace trace;
      const test::HeapWatch heap;
      trace.Fail(steps[failing], static_cast<DWORD>(NTE_FAIL));
      EXPECT_EQ(call.run(), call.encrypts ? -1 : 0);
      Strings expected(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(failing) + 1);
      expected.insert(expected.end(), undone[failing - 1].begin(), undone[failing - 1].end());
      EXPECT_EQ(trace.Functions(), expected);
      EXPECT_EQ(trace.Open(), 0);
      EXPECT_EQ(heap.Outstanding(), -call.givesBack);
    }
  }
}

TEST(CryptFaults, ProviderSeesAtLeast256BytesOfRoom) {
  for (const int size : {0, 255, 256, 257, 1000}) {
    test::CryptoTrace trace;
    CStringA out;
    test::Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77)("key", CStringA(std::string(size, 'x').c_str()), out);
    char expected[80];
    std::snprintf(expected, sizeof expected, "CryptEncrypt(hash 0, final 1, flags 0, count %x, capacity %x)",
                  size, size < 256 ? 256 : size);
    EXPECT_EQ(trace.Calls().at(4), expected);
  }
}

TEST(CryptFaults, EmptyPassPhraseHashesNoBytesButNoNullPointer) {
  test::CryptoTrace trace;
  CStringA out;
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77)("", CStringA("abc"), out), 6);
  EXPECT_EQ(trace.Calls().at(2), "CryptHashData(count 0, flags 0)");
}

// The C runtime's heap as the library sees it: the n-th allocation fails, and every block that is given
// back is searched for the secrets.
int allocationsLeft;
bool secretFound;

bool Refused() {
  return allocationsLeft > 0 && --allocationsLeft == 0;
}

void Search(void* block) {
  if (!block) return;
  const std::string bytes(static_cast<const char*>(block), _msize(block));
  for (const std::string& secret : {kPhrase, kPlain}) {
    // A piece is enough: the runtime may have written over the beginning.
    if (bytes.find(secret.substr(16)) != std::string::npos) secretFound = true;
  }
}

struct WatchedHeap {
  WatchedHeap() {
    secretFound = false;
    allocationsLeft = 0;
  }
  test::ImportHook malloc{"malloc",
                          +[](std::size_t size) -> void* { return Refused() ? nullptr : std::malloc(size); }};
  test::ImportHook calloc{"calloc", +[](std::size_t count, std::size_t size) -> void* {
                            return Refused() ? nullptr : std::calloc(count, size);
                          }};
  test::ImportHook realloc{"realloc", +[](void* block, std::size_t size) -> void* {
                             Search(block);
                             return Refused() ? nullptr : std::realloc(block, size);
                           }};
  test::ImportHook free{"free", +[](void* block) {
                          Search(block);
                          std::free(block);
                        }};
};

TEST(CryptFaults, NothingGivenBackHoldsASecret) {
  for (const Call& call : Calls()) {
    SCOPED_TRACE(call.name);
    const WatchedHeap heap;
    EXPECT_EQ(call.run(), call.result);
    EXPECT_FALSE(secretFound);
    for (const char* const step : {"CryptCreateHash", "CryptHashData", "CryptDeriveKey", Cipher(call)}) {
      SCOPED_TRACE(step);
      test::CryptoTrace trace;
      trace.Fail(step, static_cast<DWORD>(NTE_FAIL));
      call.run();
      EXPECT_FALSE(secretFound);
    }
  }
}

// The same heap with watched bytes behind each block.
constexpr std::size_t kWatched = 16;
std::map<void*, std::size_t> watched;
int overrun;

void* Watch(void* block, std::size_t size) {
  std::memset(static_cast<char*>(block) + size, 0xA7, kWatched);
  watched[block] = size;
  return block;
}
void Look(const void* block, std::size_t size) {
  const auto* const behind = static_cast<const unsigned char*>(block) + size;
  if (std::count(behind, behind + kWatched, 0xA7) != static_cast<std::ptrdiff_t>(kWatched)) ++overrun;
}
void Unwatch(void* block) {
  const auto found = watched.find(block);
  if (found == watched.end()) return;
  Look(block, found->second);
  watched.erase(found);
}
void LookAtAll() {
  for (const auto& [block, size] : watched) Look(block, size);
  watched.clear();
}

TEST(CryptFaults, NoBlockIsWrittenBehindItsEnd) {
  overrun = 0;
  const test::ImportHook malloc(
      "malloc", +[](std::size_t size) -> void* { return Watch(std::malloc(size + kWatched), size); });
  const test::ImportHook calloc(
      "calloc", +[](std::size_t count, std::size_t size) -> void* {
        return Watch(std::calloc(count * size + kWatched, 1), count * size);
      });
  const test::ImportHook realloc(
      "realloc", +[](void* block, std::size_t size) -> void* {
        Unwatch(block);
        return Watch(std::realloc(block, size + kWatched), size);
      });
  const test::ImportHook free(
      "free", +[](void* block) {
        Unwatch(block);
        std::free(block);
      });
  for (const Call& call : Calls()) {
    EXPECT_EQ(call.run(), call.result) << call.name;
    watched.clear();  // the host has given back the rest
  }
  for (const std::size_t size : {0, 1, 2, 7, 8, 9, 255, 256, 257}) {
    const std::string plain(size, 'p'), cipher = reference::Hex(reference::Cipher("key", plain));
    CStringA narrow;
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77)("key", CStringA(plain.c_str()), narrow),
              static_cast<int>(2 * size));
    LookAtAll();
    CStringW wide;
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076)(
                  L"key", reference::Widened(cipher).c_str(), wide),
              static_cast<int>(size));
    LookAtAll();
    const std::wstring bytes(size, L'c');
    ByteArray key, out;
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_DEC_UC)>(1072)(key, bytes.c_str(), FALSE, out),
              static_cast<int>(size));
    LookAtAll();
  }
  EXPECT_EQ(overrun, 0);
}

TEST(CryptFaults, ResultArrayIsWipedBeforeItsOldStorageIsGivenBack) {
  const WatchedHeap heap;
  ByteArray out;
  Fill(out, kPlain);
  ByteArray key;
  Fill(key, "key");
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_DEC_UC)>(1072)(key, L"00", TRUE, out), 1);
  EXPECT_FALSE(secretFound);
}

TEST(CryptFaults, EachAllocationFailsOnce) {
  for (const Call& call : Calls()) {
    int refusals = 0;
    for (int number = 1;; ++number) {
      SCOPED_TRACE(std::string(call.name) + ", allocation " + std::to_string(number));
      const test::HeapWatch balance;
      const WatchedHeap heap;
      test::CryptoTrace trace;
      const auto run = [&](const std::function<int()>& body) {
        int result = -2;
        const std::string raised = test::RaisedBy([&] {
          allocationsLeft = number;
          result = body();
        });
        const bool refused = allocationsLeft == 0;
        allocationsLeft = 0;
        if (!refused) {
          EXPECT_EQ(result, call.result);
        } else if (raised.empty()) {
          EXPECT_EQ(result, -1);
          EXPECT_TRUE(trace.Calls().empty()) << "the working buffer comes before the service";
        } else {
          EXPECT_EQ(raised, test::kMemoryException);
        }
        return refused;
      };
      const bool refused = run(call.run);
      EXPECT_EQ(trace.Open(), 0);
      EXPECT_FALSE(secretFound);
      if (!refused) break;
      ++refusals;
    }
    EXPECT_GE(refusals, 2) << call.name;
  }
}

}  // namespace
