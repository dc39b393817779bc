// SPDX-License-Identifier: MIT
// Frame.h: what every export does around its work.
#pragma once

#include "afxwin.h"

namespace frame {

// Runs the body of an export and lets a framework exception leave in the host's form.
//
// Inside the library exceptions are ordinary C++ exceptions. A host of another ABI cannot catch
// those, and its own kind would skip our destructors; so the exception is caught here, behind the
// last destructor, and raised again as the host's. There is no catch-all: anything else comes from
// below, from a handler of the host's that raised it, and passes through as it is. The library's own
// failing allocations are framework exceptions from the start; see framework/memory.cpp.
template <class Body>
auto EnterUnguarded(Body&& body) -> decltype(body()) {
  CException* leaving = nullptr;
  try {
    return body();
  } catch (CException* exception) {
    // A host may know classes of the same name.
    if (!framework::IsOwnExceptionInFlight()) throw;
    leaving = exception;
  }
  framework::RaiseToHost(leaving);
}

// The frame of an export: the library's module state is current for the call, and the caller's
// comes back on every way out.
template <class Body>
auto Enter(Body&& body) -> decltype(body()) {
  return EnterUnguarded(
      [&]() -> decltype(body()) { return framework::CallInModuleState(AfxGetStaticModuleState(), body); });
}

}  // namespace frame
