// HostException.h: runs a call that may raise an exception of the host's kind.
#pragma once

#include <windows.h>

#include <functional>

#include "support/ImportHook.h"

namespace test {

/// Runs a call on a thread of its own. An exception that would leave the library ends the thread instead,
/// since this compiler's programs cannot catch that kind. Gives the exception's code, 0 without one.
class RaisedBy {
 public:
  explicit RaisedBy(std::function<void()> call) {
    const ImportHook hook("RaiseException", &Raise);
    raised = 0;
    const HANDLE thread = ::CreateThread(nullptr, 0, &Run, &call, 0, nullptr);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
  }
  operator DWORD() const { return raised; }

 private:
  static DWORD WINAPI Run(void* call) {
    (*static_cast<std::function<void()>*>(call))();
    return 0;
  }
  // The library's own exceptions, which it catches itself, go the same way under another code.
  static void WINAPI Raise(DWORD code, DWORD flags, DWORD count, const ULONG_PTR* parameters) {
    if (code != 0xE06D7363) {
      ::RaiseException(code, flags, count, parameters);
      return;
    }
    raised = code;
    ::ExitThread(0);
  }

  static inline DWORD raised = 0;
};

}  // namespace test
