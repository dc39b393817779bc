// SPDX-License-Identifier: MIT
// Byte arrays, thread objects and memory that cross the boundary.
#include "manager.h"

namespace {

using namespace host;

const BYTE kKey[] = {'s', 'e', 'c', 'r', 'e', 't'};
const BYTE kPlain[] = {0, 1, 2, 250, 251, 252, 253, 254, 255, 128};
constexpr int kCount = sizeof kPlain;
const void* const kTable[] = {nullptr};  // never called: arrays cross as data

// An array as the host's framework has it, with its storage from the host's array new.
ByteArray NewArray(const BYTE* bytes, int count, int room) {
  ByteArray array = {kTable, nullptr, count, room, 7};
  if (room > 0) array.m_pData = static_cast<BYTE*>(malloc(static_cast<size_t>(room)));
  if (count > 0) memcpy(array.m_pData, bytes, static_cast<size_t>(count));
  return array;
}

void CheckInput(const ByteArray& array, const BYTE* bytes, int count) {
  CHECK_EQUAL(array.m_nSize, count);
  CHECK_EQUAL(array.m_nMaxSize, count);
  CHECK(memcmp(array.m_pData, bytes, static_cast<size_t>(count)) == 0);
}

// Encrypts with byte arrays into the host's string, and decrypts into an array with the given room.
void RoundTrip(int room) {
  const ByteArray key = NewArray(kKey, sizeof kKey, sizeof kKey);
  const ByteArray plain = NewArray(kPlain, kCount, kCount);
  CountingManager<wchar_t> manager;
  HostString<wchar_t> text = StringOf<wchar_t>(manager.GetNilString());
  CHECK_EQUAL(
      Export<int(const ByteArray&, const ByteArray&, HostString<wchar_t>&, BOOL)>(1071)(key, plain, text, 1),
      2 * kCount);
  CHECK_EQUAL(text.data().nDataLength, 2 * kCount);
  CHECK(text.data().pStringMgr == &manager);

  BYTE junk[64];
  memset(junk, 'j', sizeof junk);
  ByteArray result = NewArray(junk, room, room);
  const BYTE* const storage = result.m_pData;
  CHECK_EQUAL(
      Export<int(const ByteArray&, const wchar_t*, BOOL, ByteArray&)>(1072)(key, text.text, 1, result),
      kCount);
  CHECK_EQUAL(result.m_nSize, kCount);
  CHECK(result.m_nMaxSize >= kCount);
  CHECK(memcmp(result.m_pData, kPlain, kCount) == 0);
  CHECK(result.table == kTable);
  CHECK_EQUAL(result.m_nGrowBy, 7);
  // With room enough nothing new is needed; bytes behind the result stay.
  if (room > kCount && result.m_pData == storage) CHECK_EQUAL(result.m_pData[room - 1], 'j');

  CheckInput(key, kKey, sizeof kKey);
  CheckInput(plain, kPlain, kCount);
  free(result.m_pData);
  free(plain.m_pData);
  free(key.m_pData);
  Release(text);
  CHECK_EQUAL(manager.outstanding, 0);
  manager.CheckNil(0);
}

void TestRoundTrips() {
  Subject("ENC_UC and DEC_UC");
  CheckNoGrowth(100, [] {
    const int rooms[] = {0, 1, kCount - 1, kCount, kCount + 1, 60};
    for (const int room : rooms) RoundTrip(room);
  });
}

// No bytes at all: empty arrays of the host's have no storage.
void TestEmptyArrays() {
  Subject("ENC_UC and DEC_UC of nothing");
  const ByteArray key = NewArray(kKey, sizeof kKey, sizeof kKey);
  const ByteArray nothing = NewArray(nullptr, 0, 0);
  CountingManager<wchar_t> manager;
  HostString<wchar_t> text = NewString(manager, L"old", 10);
  CHECK_EQUAL(Export<int(const ByteArray&, const ByteArray&, HostString<wchar_t>&, BOOL)>(1071)(key, nothing,
                                                                                                text, 1),
              0);
  CHECK_EQUAL(text.data().nDataLength, 0);
  ByteArray result = NewArray(kPlain, 5, 5);
  CHECK_EQUAL(Export<int(const ByteArray&, const wchar_t*, BOOL, ByteArray&)>(1072)(key, L"", 1, result), 0);
  CHECK_EQUAL(result.m_nSize, 0);
  free(result.m_pData);
  free(key.m_pData);
  Release(text);
  CHECK_EQUAL(manager.outstanding, 0);
}

// The identifier stands at byte 96 of the host's thread object.
void TestThreadObject() {
  Subject("POSTTHREADMESSAGE");
  struct Message {
    void* window;
    UINT message;
    unsigned long long wide;
    long long longer;
    DWORD time, x, y, rest;
  };
  using Peek = BOOL(Message*, void*, UINT, UINT, UINT);
  auto* const peek = reinterpret_cast<Peek*>(GetProcAddress(LoadLibraryW(L"user32.dll"), "PeekMessageW"));
  const UINT kMessage = 0x8123;
  Message message = {};
  peek(&message, nullptr, 0, 0, 0);  // makes the thread's message queue

  alignas(8) BYTE thread[128];
  memset(thread, 0xEE, sizeof thread);
  const DWORD id = GetCurrentThreadId();
  memcpy(thread + 96, &id, sizeof id);
  const auto post = Export<BOOL(void*, UINT, unsigned long long, long long)>(92);
  CHECK_EQUAL(post(thread, kMessage, 0x123456789ABCull, -5), 1);
  CHECK_EQUAL(peek(&message, nullptr, kMessage, kMessage, 1), 1);
  CHECK_EQUAL(message.wide, 0x123456789ABCll);
  CHECK_EQUAL(message.longer, -5);
  CHECK_EQUAL(post(nullptr, kMessage, 0, 0), 0);
}

// The one block that the library hands out is released by the host's own array delete.
void TestSafeNew() {
  Subject("SAFE_NEW");
  const auto safeNew = Export<void*(UINT)>(93);
  CheckNoGrowth(10'000, [&] {
    void* const block = safeNew(1000);
    CHECK(block != nullptr);
    memset(block, 1, 1000);
    free(block);
  });
  const Fault fault(
      "malloc", +[](size_t) -> void* { return nullptr; });
  CheckNoGrowth(10'000, [&] { CHECK(safeNew(1000) == nullptr); });
}

}  // namespace

void TestArrays() {
  TestRoundTrips();
  TestEmptyArrays();
  TestThreadObject();
  TestSafeNew();
}
