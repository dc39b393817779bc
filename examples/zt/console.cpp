// SPDX-License-Identifier: MIT
#include "console.h"

#include <windows.h>

#include <iterator>

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

Stream& Out() {
  static Stream stream(STD_OUTPUT_HANDLE);
  return stream;
}

Stream& Error() {
  static Stream stream(STD_ERROR_HANDLE);
  return stream;
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

void PrintLine(std::wstring_view text) {
  Out().Write(std::wstring(text) + L"\r\n");
}

void Print(std::wstring_view text) {
  Out().Write(WithLineEnds(text));
}

void PrintBytes(std::string_view bytes) {
  Out().WriteBytes(bytes);
}

void Complain(std::wstring_view text) {
  Error().Write(WithLineEnds(L"zt: " + std::wstring(text) + L"\n"));
}

void PrintError(std::wstring_view text) {
  Error().Write(WithLineEnds(text));
}

bool AskYes(std::wstring_view question) {
  const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode;
  if (!::GetConsoleMode(input, &mode) || !Error().IsConsole()) return true;
  PrintError(std::wstring(question) + L" [y/N] ");
  wchar_t answer[64] = {};
  DWORD count = 0;
  ::ReadConsoleW(input, answer, static_cast<DWORD>(std::size(answer)), &count, nullptr);
  return count && (answer[0] == L'y' || answer[0] == L'Y');
}

bool ErrorsAreOnConsole() {
  return Error().IsConsole();
}

bool OutputArrived() {
  return Out().Arrived();
}

}  // namespace zt
