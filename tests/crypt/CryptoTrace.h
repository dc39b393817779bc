// SPDX-License-Identifier: MIT
// CryptoTrace.h: the library's calls into the platform's cryptographic service, seen and made to fail.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "support/ImportHook.h"

namespace test {

/// Records every call of the service while it lives, one line each with what the caller chose, and
/// keeps count of what is open.
class CryptoTrace {
 public:
  explicit CryptoTrace(HMODULE module = nullptr);
  ~CryptoTrace();

  /// Makes the n-th call of a function fail with an error code.
  void Fail(const std::string& function, DWORD error, int nth = 1);

  std::vector<std::string> Calls() const;
  /// The calls' functions without their arguments.
  std::vector<std::string> Functions() const;
  /// Providers, hashes and keys that were given out and not taken back.
  int Open() const;
  void Clear();

 private:
  std::vector<std::unique_ptr<ImportHook>> hooks_;
};

}  // namespace test
