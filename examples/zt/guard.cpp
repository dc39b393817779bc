// SPDX-License-Identifier: MIT
#include "guard.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>

#include "command.h"
#include "console.h"
#include "failure.h"

namespace zt {
namespace {

// The arguments are checked before any call. What is left is a tree that has longer paths than the
// library can hold; going on with an emptied path is nothing a tool that deletes should do.
void OnInvalidParameter(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, std::uintptr_t) {
  Complain(L"stopped: a path on the way is too long for the library");
  EndJson(L"", no);
  std::_Exit(no);
}

// The library's exceptions are those of the Microsoft ABI, which this program's compiler does not
// catch. They leave the export where reading or writing fails halfway.
LONG WINAPI OnException(EXCEPTION_POINTERS* what) {
  constexpr DWORD microsoftException = 0xE06D7363;
  if (what->ExceptionRecord->ExceptionCode != microsoftException) return EXCEPTION_CONTINUE_SEARCH;
  const DWORD error = ::GetLastError();
  Complain(L"failed: the library raised an exception (reading or writing failed halfway, or memory ran out)",
           error);
  EndJson(L"", no);
  std::_Exit(no);
}

}  // namespace

void InstallGuards() {
  ::_set_invalid_parameter_handler(OnInvalidParameter);
  ::SetUnhandledExceptionFilter(OnException);
}

}  // namespace zt
