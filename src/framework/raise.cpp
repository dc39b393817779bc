// SPDX-License-Identifier: MIT
#include "afx.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace framework {

void RaiseToHost(CException* exception) {
  // The protocol of the Microsoft ABI: a code of its own, a version, the address of the thrown
  // value (here a pointer), its type information, and the base that the information's offsets mean.
  constexpr DWORD kCode = 0xE06D7363;
  constexpr ULONG_PTR kVersion = 0x19930520;
  CException* thrown = exception;
  const ULONG_PTR parameters[] = {
      kVersion,
      reinterpret_cast<ULONG_PTR>(&thrown),
      reinterpret_cast<ULONG_PTR>(exception->HostThrowInfo()),
      reinterpret_cast<ULONG_PTR>(&__ImageBase),
  };
  ::RaiseException(kCode, EXCEPTION_NONCONTINUABLE, ARRAYSIZE(parameters), parameters);
  __builtin_unreachable();
}

}  // namespace framework
