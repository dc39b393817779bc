// SPDX-License-Identifier: MIT
// support.h: checks, the library under test, faults and counts for the Microsoft-ABI host.
#pragma once

#include "platform.h"

namespace host {

// --- Checks: a failed one is printed with what was found, and counted; the program goes on.

void Report(const char* file, int line, const char* what, const char* expression);
void ReportNumbers(const char* file, int line, const char* expression, long long got, long long expected);
int Failures();
void Print(const char* text);

/// Names what is being checked, for the report of a failure.
void Subject(const char* name);

#define CHECK(condition)                                                \
  do {                                                                  \
    if (!(condition)) host::Report(__FILE__, __LINE__, "", #condition); \
  } while (false)
#define CHECK_EQUAL(got, expected)                                                         \
  do {                                                                                     \
    const long long got_ = (long long)(got), expected_ = (long long)(expected);            \
    if (got_ != expected_) host::ReportNumbers(__FILE__, __LINE__, #got, got_, expected_); \
  } while (false)

/// The library deletes folders: nothing runs where more than the build folder can be reached.
void RefuseOtherDrives();

// --- The library

void* Library();
void* Address(unsigned ordinal);

/// An export, bound by ordinal:  host::Export<int(const wchar_t*)>(1001)(path)
template <class Function>
Function* Export(unsigned ordinal) {
  return reinterpret_cast<Function*>(Address(ordinal));
}

/// How many pointers into the library's image the calling thread's storage of the library holds: one
/// while a module state is current, none otherwise.
int CurrentStates();

/// Replaces a platform function in the library's import table while it lives; with a null name, nothing.
class Fault {
 public:
  template <class Function>
  Fault(const char* name, Function* replacement) : Fault(name, reinterpret_cast<void*>(replacement)) {}
  Fault(const char* name, void* replacement);
  Fault(const Fault&) = delete;
  ~Fault();

  void* Original() const { return original_; }

 private:
  void** entry_;
  void* original_;
};

// Platform functions that fail, for the above.
BOOL FailingRead(HANDLE, void*, DWORD, DWORD*, void*);
const DWORD kReadFault = 30;  ///< the last error behind it
void* NoMemory(size_t);
void* NoZeros(size_t, size_t);
long long NoTime(void*);

// --- What the process holds

struct Holdings {
  int handles;
  int tlsIndexes;
  long long heapBytes;
};
Holdings Hold();

/// How many rounds are made of so many: at most as many as ZERA_TEST_ROUNDS says.
int Rounds(int all);

/// Runs a round many times and checks that the process holds no more afterwards than before.
///
/// The platform's heap may serve small blocks from groups that it takes when a size was asked for often, and
/// HeapWalk may count a whole group as in use: Wine 10 does; Wine 8 gives the blocks themselves, and so does
/// Windows by its documentation. So the rounds are repeated while the heap grows; a round that keeps anything
/// makes it grow every time.
template <class Round>
void CheckNoGrowth(int all, Round round) {
  for (int i = 0; i < 5; ++i) round();
  const int rounds = Rounds(all);
  const int failures = Failures();
  Holdings before = {}, after = Hold();
  for (int attempt = 0; attempt < 10 && after.heapBytes != before.heapBytes; ++attempt) {
    before = after;
    for (int i = 0; i < rounds && Failures() == failures; ++i) round();
    after = Hold();
    CHECK_EQUAL(after.handles, before.handles);
    CHECK_EQUAL(after.tlsIndexes, before.tlsIndexes);
  }
  CHECK_EQUAL(after.heapBytes, before.heapBytes);
}

/// Counts its destruction: an object of the host in a frame that an exception passes.
class Witness {
 public:
  explicit Witness(int& count) : count_(count) {}
  Witness(const Witness&) = delete;
  ~Witness() { ++count_; }

 private:
  int& count_;
};

// --- Files of the test

/// A path in the folder of this run.
struct InFolder {
  explicit InFolder(const wchar_t* name);
  operator const wchar_t*() const { return text; }
  wchar_t text[128];
};
void WriteFileBytes(const wchar_t* path, const void* bytes, unsigned count);
void RemoveFolder();

}  // namespace host

void TestExceptions();
void TestForeignExceptions();
void TestStrings();
void TestArrays();
