// SPDX-License-Identifier: MIT
// A host as its author writes it: the public header, the import library, and one of the compiler's exception
// switches. What the compiler takes for granted of a declaration shows only here: a function that is bound
// through GetProcAddress may always throw.
#include "framework.h"
#include "support.h"

// The host's own framework, as far as the header names it.
using CStringA = HostString<char>;
using CStringW = HostString<wchar_t>;
template <class Type, class Argument>
class CArray;
class CWinThread;
#define ZERATOOLS_HOST_FRAMEWORK
#include <ZERATools.h>

namespace {

using namespace host;

struct HostError {
  int number = 4711;
};
void ThrowingHandler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {
  throw HostError();
}

void Give(CException* e) {
  e->Delete();
}
void Give(CObject* e) {
  static_cast<CException*>(e)->Delete();
}
void Give(void* e) {
  static_cast<CException*>(e)->Delete();
}

// --- One function for each class, with the call itself between the try and the catch: a compiler that takes
// the export for one that never throws leaves the block out, and the witness's destructor with it.

template <class Caught>
void CatchFile() {
  Subject("copy whose read fails");
  const InFolder source(L"linked.bin"), target(L"copy.bin");
  WriteFileBytes(source, "0123456789", 10);
  int witnessed = 0, caught = 0;
  {
    const Fault fault("ReadFile", &FailingRead);
    try {
      const Witness witness(witnessed);
      ZERA_TOOLS_FILE_COPY_UC(source, target);
    } catch (Caught e) {
      ++caught;
      Give(e);
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK_EQUAL(witnessed, 1);
  CHECK(DeleteFileW(source));
  CHECK(DeleteFileW(target));
}

template <class Caught>
void CatchMemory() {
  Subject("conversion without memory");
  static char text[1000];
  memset(text, 'a', sizeof text - 1);
  int witnessed = 0, caught = 0;
  {
    const Fault fault("malloc", &NoMemory);
    try {
      const Witness witness(witnessed);
      ZERA_TOOLS_FILE_EXIST(text);
    } catch (Caught e) {
      ++caught;
      Give(e);
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK_EQUAL(witnessed, 1);
}

template <class Caught>
void CatchOle() {
  Subject("date that cannot be converted");
  int witnessed = 0, caught = 0;
  {
    const Fault fault("_mktime64", &NoTime);
    try {
      const Witness witness(witnessed);
      long long time = 0;
      ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(L"X:\\tmp\\missing.txt", &time);
    } catch (Caught e) {
      ++caught;
      Give(e);
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK_EQUAL(witnessed, 1);
}

template <class Caught>
void CatchInvalidArgument() {
  Subject("encryption of a count of bytes");
  char text[16];
  int witnessed = 0, caught = 0;
  try {
    const Witness witness(witnessed);
    ZERA_TOOLS_ENC("key", nullptr, 1, text, sizeof text, 1);
  } catch (Caught e) {
    ++caught;
    Give(e);
  }
  CHECK_EQUAL(caught, 1);
  CHECK_EQUAL(witnessed, 1);
}

void CatchHostsOwn() {
  Subject("host's exception from the invalid-parameter handler");
  const InvalidParameterHandler before = _set_invalid_parameter_handler(&ThrowingHandler);
  wchar_t small[4];
  int witnessed = 0, caught = 0;
  try {
    const Witness witness(witnessed);
    ZERA_TOOLS_FILE_GET_NAME_UC(L"C:\\folder\\name.txt", small, 4);
  } catch (const HostError& error) {
    caught += error.number;
  }
  CHECK_EQUAL(caught, 4711);
  CHECK_EQUAL(witnessed, 1);
  _set_invalid_parameter_handler(before);
}

template <class Caught>
void CatchEach() {
  CatchFile<Caught>();
  CatchMemory<Caught>();
  CatchOle<Caught>();
  CatchInvalidArgument<Caught>();
}

}  // namespace

extern "C" void Start() {
  RefuseOtherDrives();
  CatchFile<CFileException*>();
  CatchMemory<CMemoryException*>();
  CatchOle<COleException*>();
  CatchInvalidArgument<CInvalidArgException*>();
  CatchMemory<CSimpleException*>();
  CatchInvalidArgument<CSimpleException*>();
  CatchEach<CException*>();
  CatchEach<CObject*>();
  CatchEach<void*>();
  CatchHostsOwn();
  RemoveFolder();
  Print(Failures() == 0 ? "all passed\n" : "FAILED\n");
  ExitProcess(Failures() == 0 ? 0 : 1);
}
