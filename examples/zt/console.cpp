// SPDX-License-Identifier: MIT
#include "console.h"

#include <windows.h>

#include <iterator>
#include <vector>

#include "json.h"

namespace zt {
namespace {

class Stream {
 public:
  explicit Stream(DWORD which) : handle_(::GetStdHandle(which)) {
    DWORD mode;
    console_ = ::GetConsoleMode(handle_, &mode) != 0;
  }

  bool IsConsole() const { return console_; }
  bool Arrived() const { return arrived_; }

  void Write(std::wstring_view text) {
    if (!console_) {
      const int chars = static_cast<int>(text.size());
      const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, nullptr, 0, nullptr, nullptr);
      std::string bytes(static_cast<std::size_t>(size), '\0');
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, bytes.data(), size, nullptr, nullptr);
      WriteBytes(bytes);
      return;
    }
    while (!text.empty() && arrived_) {
      // Older consoles refuse long texts at once.
      DWORD written = 0;
      const DWORD piece = static_cast<DWORD>(text.size() < 8192 ? text.size() : 8192);
      arrived_ = ::WriteConsoleW(handle_, text.data(), piece, &written, nullptr) && written != 0;
      text.remove_prefix(written);
    }
  }

  void WriteBytes(std::string_view bytes) {
    while (!bytes.empty() && arrived_) {
      DWORD written = 0;
      const DWORD piece = static_cast<DWORD>(bytes.size() < 1u << 20 ? bytes.size() : 1u << 20);
      arrived_ = ::WriteFile(handle_, bytes.data(), piece, &written, nullptr) && written != 0;
      bytes.remove_prefix(written);
    }
  }

 private:
  HANDLE handle_;
  bool console_ = false;
  bool arrived_ = true;
};

// One run: where it talks to, how, and what it has said for --json.
struct Run {
  Manner manner;
  Stream out{STD_OUTPUT_HANDLE}, error{STD_ERROR_HANDLE};
  std::vector<std::wstring> result = {}, remarks = {};
};

Run& Current() {
  static Run run;
  return run;
}

std::wstring WithLineEnds(std::wstring_view text) {
  std::wstring result;
  for (const wchar_t one : text) {
    if (one == L'\n') result += L'\r';
    result += one;
  }
  return result;
}

}  // namespace

void Begin(const Manner& manner) {
  Current() = Run();
  Current().manner = manner;
}

bool IsJson() {
  return Current().manner.json;
}

void EndJson(std::wstring_view command, int exit) {
  Run& run = Current();
  if (!run.manner.json) return;
  run.manner.json = false;
  PrintLine(JsonAnswer(command, exit, run.result, run.remarks));
}

void PrintLine(std::wstring_view text) {
  if (IsJson()) {
    Current().result.emplace_back(text);
  } else {
    Current().out.Write(std::wstring(text) + L"\r\n");
  }
}

void Confirm(std::wstring_view text) {
  if (IsJson() || !Current().manner.quiet) PrintLine(text);
}

void Print(std::wstring_view text) {
  Current().out.Write(WithLineEnds(text));
}

void PrintBytes(std::string_view bytes) {
  Current().out.WriteBytes(bytes);
}

void Complain(std::wstring_view text) {
  if (IsJson()) {
    Current().remarks.emplace_back(text);
    return;
  }
  Current().error.Write(WithLineEnds(L"zt: " + std::wstring(text) + L"\n"));
}

void PrintError(std::wstring_view text) {
  Current().error.Write(WithLineEnds(text));
}

bool AskYes(std::wstring_view question) {
  const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode;
  if (!::GetConsoleMode(input, &mode) || !Current().error.IsConsole()) return true;
  PrintError(std::wstring(question) + L" [y/N] ");
  wchar_t answer[64] = {};
  DWORD count = 0;
  ::ReadConsoleW(input, answer, static_cast<DWORD>(std::size(answer)), &count, nullptr);
  return count && (answer[0] == L'y' || answer[0] == L'Y');
}

bool AskSecretly(std::wstring_view question, std::wstring& answer) {
  const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode;
  if (!::GetConsoleMode(input, &mode) || !Current().error.IsConsole()) return false;
  PrintError(question);
  ::SetConsoleMode(input, (mode | ENABLE_LINE_INPUT | ENABLE_PROCESSED_INPUT) & ~DWORD{ENABLE_ECHO_INPUT});
  wchar_t text[1024];
  DWORD count = 0;
  const BOOL read = ::ReadConsoleW(input, text, static_cast<DWORD>(std::size(text)), &count, nullptr);
  ::SetConsoleMode(input, mode);
  PrintError(L"\n");
  while (count && (text[count - 1] == L'\r' || text[count - 1] == L'\n')) --count;
  answer.assign(text, count);
  ::SecureZeroMemory(text, sizeof text);
  return read != 0;
}

bool ErrorsAreOnConsole() {
  return Current().error.IsConsole();
}

bool OutputArrived() {
  return Current().out.Arrived();
}

}  // namespace zt
