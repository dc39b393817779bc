// SPDX-License-Identifier: MIT
// QuietErrors.h: no message box of the system's.
#pragma once

#include <windows.h>

namespace base {

/// While it lives, a call of this thread that meets a drive without its medium fails at once, instead of
/// asking the user for the medium. It stands around platform calls alone, so that nothing of a host's
/// runs meanwhile; the last error stays that of the call.
class QuietErrors {
 public:
  QuietErrors() noexcept : before_(::GetThreadErrorMode()) {
    if (!IsQuiet()) ::SetThreadErrorMode(before_ | SEM_FAILCRITICALERRORS, nullptr);
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
  ~QuietErrors() {
    if (!IsQuiet()) ::SetThreadErrorMode(before_, nullptr);
  }

 private:
  bool IsQuiet() const noexcept { return (before_ & SEM_FAILCRITICALERRORS) != 0; }

  DWORD before_;
};

/// The result of a platform call that is made so.
template <class Call>
auto Quietly(Call call) -> decltype(call()) {
  const QuietErrors quiet;
  return call();
}

}  // namespace base
