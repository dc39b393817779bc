// SPDX-License-Identifier: MIT
// CallLog.h: what the file operations ask of the platform, in order, and what it answers them.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/ImportHook.h"

namespace test {

/// One platform call. `kind` is a letter, so that a sequence of calls reads as a word:
///   ? GetFileAttributesExW   F FindFirstFileW   N GetFullPathNameW   D DeleteFileW   M MoveFileW
///   s Sleep   O CreateFileW   R ReadFile   W WriteFile   C CloseHandle
struct Call {
  char kind = 0;
  int nth = 0;  // of this kind, from 1
  std::wstring path = {};
  std::wstring second = {};  // the new path of a move
  DWORD number = 0;          // milliseconds, or the bytes asked for
  DWORD access = 0, share = 0, disposition = 0;
  bool inherit = false;
  HANDLE handle = nullptr;
};

/// What a test makes of a call.
struct Answer {
  enum What {
    kReal,     // the platform's own
    kFail,     // nothing is done, failure is reported
    kDoFail,   // done, but failure is reported
    kPretend,  // nothing is done, success is reported
  };
  What what = kReal;
  DWORD error = ERROR_GEN_FAILURE;
};

/// Watches the library (or another module) while it lives; one at a time.
class CallLog {
 public:
  using Script = std::function<Answer(const Call&)>;

  /// The script answers every call; without one all calls are real, but no sleep takes time.
  explicit CallLog(Script script = nullptr, HMODULE module = nullptr);
  CallLog(const CallLog&) = delete;
  CallLog& operator=(const CallLog&) = delete;
  ~CallLog();

  /// The kinds of the calls in order, of those kinds that are asked for.
  std::string Sequence(const std::string& kinds = "?FDMs") const;
  /// All calls of one kind.
  std::vector<Call> Of(char kind) const;

  // For the replacements.
  static CallLog& Current();
  Answer Record(Call call);
  const ImportHook& Hook(char kind) const;

 private:
  Script script_;
  std::vector<Call> calls_;
  std::vector<std::pair<char, std::unique_ptr<ImportHook>>> hooks_;
};

/// `text`, `count` times.
std::string Times(int count, const std::string& text);

}  // namespace test
