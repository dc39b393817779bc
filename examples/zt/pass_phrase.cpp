// SPDX-License-Identifier: MIT
#include "pass_phrase.h"

#include "console.h"
#include "failure.h"

namespace zt {
namespace {

constexpr DWORD longest = 4096;

std::wstring FromFile(const Arguments& arguments, std::size_t at, const std::wstring& path) {
  const HANDLE file =
      ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) arguments.Reject(at, L"cannot be read: " + Reason(::GetLastError()));
  std::string bytes(longest, '\0');
  DWORD count = 0;
  const BOOL done = ::ReadFile(file, bytes.data(), longest, &count, nullptr);
  const DWORD error = ::GetLastError();
  ::CloseHandle(file);
  if (!done) arguments.Reject(at, L"cannot be read: " + Reason(error));
  if (count == longest) arguments.Reject(at, L"holds more than a pass phrase");
  bytes.resize(count);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  bytes.resize(std::min(bytes.find_first_of("\r\n"), bytes.size()));
  std::wstring text(bytes.size(), L'\0');
  const int size = static_cast<int>(bytes.size());
  const int length =
      ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), size);
  if (size && !length) arguments.Reject(at, L"is not in UTF-8");
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring FromEnvironment(const Arguments& arguments, std::size_t at, const std::wstring& name) {
  std::wstring text(longest, L'\0');
  ::SetLastError(0);
  const DWORD length = ::GetEnvironmentVariableW(name.c_str(), text.data(), longest);
  if (!length && ::GetLastError()) arguments.Reject(at, L"names no variable of the environment");
  if (length >= longest) arguments.Reject(at, L"holds more than a pass phrase");
  text.resize(length);
  return text;
}

}  // namespace

std::wstring PassPhrase(const Arguments& arguments, std::size_t at, bool twice) {
  const std::wstring& text = arguments.Text(at);
  if (text.starts_with(L"@text:")) return text.substr(6);
  if (text.starts_with(L"@file:")) return FromFile(arguments, at, text.substr(6));
  if (text.starts_with(L"@env:")) return FromEnvironment(arguments, at, text.substr(5));
  if (text != L"@prompt") return text;
  std::wstring phrase, again;
  if (!AskSecretly(L"Pass phrase: ", phrase)) arguments.Reject(at, L"needs a terminal");
  if (twice && (!AskSecretly(L"Once more: ", again) || again != phrase)) {
    arguments.Reject(at, L"was given two different pass phrases");
  }
  return phrase;
}

}  // namespace zt
