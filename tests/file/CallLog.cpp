// SPDX-License-Identifier: MIT
#include "CallLog.h"

#include <algorithm>

namespace test {
namespace {

CallLog* current = nullptr;

// Runs a call as the script wants it. `real` does it, `success` and `failure` are what it returns.
template <class Result, class Real>
Result Play(Call call, Real real, Result success, Result failure) {
  const Answer answer = CallLog::Current().Record(std::move(call));
  switch (answer.what) {
    case Answer::kReal:
      return real();
    case Answer::kDoFail:
      real();
      [[fallthrough]];
    case Answer::kFail:
      ::SetLastError(answer.error);
      return failure;
    default:
      return success;
  }
}

template <class Function>
Function* Real(char kind) {
  return CallLog::Current().Hook(kind).Original<Function>();
}

std::wstring Text(const wchar_t* text) {
  return text ? text : L"";
}

BOOL WINAPI Query(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data) {
  return Play<BOOL>(
      {.kind = '?', .path = Text(path)},
      [&] { return Real<decltype(GetFileAttributesExW)>('?')(path, level, data); }, TRUE, FALSE);
}

HANDLE WINAPI Find(LPCWSTR path, LPWIN32_FIND_DATAW data) {
  return Play<HANDLE>(
      {.kind = 'F', .path = Text(path)}, [&] { return Real<decltype(FindFirstFileW)>('F')(path, data); },
      nullptr, INVALID_HANDLE_VALUE);
}

DWORD WINAPI FullName(LPCWSTR path, DWORD capacity, LPWSTR out, LPWSTR* file) {
  return Play<DWORD>(
      {.kind = 'N', .path = Text(path)},
      [&] { return Real<decltype(GetFullPathNameW)>('N')(path, capacity, out, file); }, 0, 0);
}

BOOL WINAPI Remove(LPCWSTR path) {
  return Play<BOOL>(
      {.kind = 'D', .path = Text(path)}, [&] { return Real<decltype(DeleteFileW)>('D')(path); }, TRUE, FALSE);
}

BOOL WINAPI Move(LPCWSTR from, LPCWSTR to) {
  return Play<BOOL>(
      {.kind = 'M', .path = Text(from), .second = Text(to)},
      [&] { return Real<decltype(MoveFileW)>('M')(from, to); }, TRUE, FALSE);
}

void WINAPI Pause(DWORD milliseconds) {
  CallLog::Current().Record({.kind = 's', .number = milliseconds});
}

HANDLE WINAPI Open(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD flags, HANDLE model) {
  return Play<HANDLE>(
      {.kind = 'O',
       .path = Text(path),
       .access = access,
       .share = share,
       .disposition = disposition,
       .inherit = security && security->bInheritHandle},
      [&] {
        return Real<decltype(CreateFileW)>('O')(path, access, share, security, disposition, flags, model);
      },
      INVALID_HANDLE_VALUE, INVALID_HANDLE_VALUE);
}

BOOL WINAPI Read(HANDLE file, LPVOID buffer, DWORD most, LPDWORD count, LPOVERLAPPED where) {
  *count = 0;
  return Play<BOOL>(
      {.kind = 'R', .number = most, .handle = file},
      [&] { return Real<decltype(ReadFile)>('R')(file, buffer, most, count, where); }, TRUE, FALSE);
}

BOOL WINAPI Write(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD count, LPOVERLAPPED where) {
  *count = 0;
  return Play<BOOL>(
      {.kind = 'W', .number = size, .handle = file},
      [&] { return Real<decltype(WriteFile)>('W')(file, buffer, size, count, where); }, TRUE, FALSE);
}

BOOL WINAPI CloseIt(HANDLE handle) {
  return Play<BOOL>(
      {.kind = 'C', .handle = handle}, [&] { return Real<decltype(CloseHandle)>('C')(handle); }, TRUE, FALSE);
}

}  // namespace

CallLog::CallLog(Script script, HMODULE module) : script_(std::move(script)) {
  current = this;
  const auto add = [&](char kind, const char* name, auto* replacement) {
    hooks_.emplace_back(kind, std::make_unique<ImportHook>(name, replacement, module));
  };
  add('?', "GetFileAttributesExW", &Query);
  add('F', "FindFirstFileW", &Find);
  add('N', "GetFullPathNameW", &FullName);
  add('D', "DeleteFileW", &Remove);
  add('M', "MoveFileW", &Move);
  add('s', "Sleep", &Pause);
  add('O', "CreateFileW", &Open);
  add('R', "ReadFile", &Read);
  add('W', "WriteFile", &Write);
  add('C', "CloseHandle", &CloseIt);
}

CallLog::~CallLog() {
  hooks_.clear();
  current = nullptr;
}

CallLog& CallLog::Current() {
  return *current;
}

Answer CallLog::Record(Call call) {
  call.nth = 1 + static_cast<int>(std::count_if(calls_.begin(), calls_.end(), [&](const Call& earlier) {
               return earlier.kind == call.kind;
             }));
  calls_.push_back(call);
  // The script may itself make calls that are watched, in a direct test; so it gets a copy.
  return script_ ? script_(call) : Answer();
}

const ImportHook& CallLog::Hook(char kind) const {
  return *std::find_if(hooks_.begin(), hooks_.end(), [&](const auto& hook) {
            return hook.first == kind;
          })->second;
}

std::string CallLog::Sequence(const std::string& kinds) const {
  std::string sequence;
  for (const Call& call : calls_) {
    if (kinds.find(call.kind) != kinds.npos) sequence += call.kind;
  }
  return sequence;
}

std::vector<Call> CallLog::Of(char kind) const {
  std::vector<Call> found;
  std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
               [&](const Call& call) { return call.kind == kind; });
  return found;
}

std::string Times(int count, const std::string& text) {
  std::string all;
  while (count-- > 0) all += text;
  return all;
}

}  // namespace test
