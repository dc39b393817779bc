// SPDX-License-Identifier: MIT
// StartProcess.h: starting programs, hundreds of them.
#pragma once

#include <windows.h>

namespace test {

/// CreateProcessW, tried a few times when Wine answers with an internal error, which it does once in some
/// thousand starts on a busy machine. Any other failure is one at once.
inline BOOL StartProcess(const wchar_t* program, wchar_t* line, SECURITY_ATTRIBUTES* process,
                         SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, void* environment,
                         const wchar_t* folder, STARTUPINFOW* startup, PROCESS_INFORMATION* started) {
  for (int attempt = 1;; ++attempt) {
    if (::CreateProcessW(program, line, process, thread, inherit, flags, environment, folder, startup,
                         started)) {
      return TRUE;
    }
    if (attempt == 5 || ::GetLastError() != ERROR_INTERNAL_ERROR) return FALSE;
    ::Sleep(100);
  }
}

}  // namespace test
