// SPDX-License-Identifier: MIT
// Exceptions that are not the library's pass through it: the host's own, raised by the invalid-parameter
// handler that it installed, and the platform's, raised by a bad pointer.
#include "framework.h"
#include "support.h"

namespace {

using namespace host;

int alive = 0;
int statesInHandler = 0;

// Thrown by value, as hosts do, with a destructor of its own.
struct HostError {
  HostError() { ++alive; }
  HostError(const HostError& other) : number(other.number) { ++alive; }
  ~HostError() { --alive; }
  int number = 4711;
};

void ThrowingHandler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {
  statesInHandler = CurrentStates();
  throw HostError();
}

int RaiseFromHandler(unsigned ordinal) {
  wchar_t small[4] = {};
  return Export<int(const wchar_t*, wchar_t*, size_t)>(ordinal)(L"C:\\folder\\name.txt", small, 4);
}

void CheckHandlersException(unsigned ordinal) {
  int witnessed = 0;
  bool caught = false;
  try {
    const Witness witness(witnessed);
    RaiseFromHandler(ordinal);
  } catch (const HostError& error) {
    caught = true;
    CHECK_EQUAL(error.number, 4711);
  }
  CHECK(caught);
  CHECK_EQUAL(witnessed, 1);
  CHECK_EQUAL(alive, 0);
  CHECK_EQUAL(statesInHandler, 1);
  CHECK_EQUAL(CurrentStates(), 0);
}

// Apart from objects with destructors, which a structured handler's function may not have.
bool ReadsBadPointer() {
  __try {
    Export<unsigned(const wchar_t*)>(1004)(reinterpret_cast<const wchar_t*>(8));
  } __except (1) {
    return true;
  }
  return false;
}

}  // namespace

void TestForeignExceptions() {
  const InvalidParameterHandler before = _set_invalid_parameter_handler(&ThrowingHandler);

  Subject("host's exception from the invalid-parameter handler");
  CheckHandlersException(1012);
  CheckNoGrowth(100'000, [] { CheckHandlersException(1012); });

  Subject("library's exception after a host's exception");
  wchar_t name[16] = {};
  CHECK_EQUAL(Export<int(const wchar_t*, wchar_t*, size_t)>(1012)(L"C:\\folder\\name.txt", name, 16), 1);
  CHECK(memcmp(name, L"name", 10) == 0);
  _set_invalid_parameter_handler(before);

  Subject("bad pointer");
  CHECK(ReadsBadPointer());
  CHECK_EQUAL(CurrentStates(), 0);
}
