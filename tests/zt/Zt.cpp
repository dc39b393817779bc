// SPDX-License-Identifier: MIT
#include "Zt.h"

#include <gtest/gtest.h>
#include <shellapi.h>

#include <run.h>

#include "support/StartProcess.h"
#include "support/TempFolder.h"

namespace test {
namespace {

HANDLE Open(const std::wstring& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition, 0,
                       nullptr);
}

// The rules of the platform's own parser: backslashes count double before a quotation mark only.
std::wstring Quoted(const std::wstring& argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\"") == argument.npos) return argument;
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t one : argument) {
    if (one == L'"') text.append(backslashes + 1, L'\\');
    backslashes = one == L'\\' ? backslashes + 1 : 0;
    text += one;
  }
  return text.append(backslashes, L'\\') + L"\"";
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Result& result) {
  return stream << "exit " << result.exit << "\nstdout: " << result.out << "\nstderr: " << result.err;
}

Result Zt(const std::vector<std::wstring>& arguments, const std::string& input, const std::wstring& folder) {
  const TempFolder streams;
  std::wstring line = Quoted(Beside(L"zt.exe"));
  for (const std::wstring& argument : arguments) line += L" " + Quoted(argument);

  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = Open(streams.File(L"in", input), GENERIC_READ, OPEN_EXISTING);
  startup.hStdOutput = Open(streams / L"out", GENERIC_WRITE, CREATE_ALWAYS);
  startup.hStdError = Open(streams / L"err", GENERIC_WRITE, CREATE_ALWAYS);
  PROCESS_INFORMATION process = {};
  const BOOL started = test::StartProcess(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                          folder.empty() ? nullptr : folder.c_str(), &startup, &process);
  Result result;
  if (started) {
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::GetExitCodeProcess(process.hProcess, &result.exit);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
  } else {
    ADD_FAILURE() << "zt.exe cannot be started, error " << ::GetLastError();
  }
  for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
    ::CloseHandle(handle);
  result.out = ReadBytes(streams / L"out");
  result.err = ReadBytes(streams / L"err");
  return result;
}

Result ZtHere(const std::vector<std::wstring>& arguments, const std::string& input,
              const std::wstring& folder) {
  const TempFolder streams;
  const struct {
    DWORD which;
    HANDLE before, now;
  } handles[] = {{STD_INPUT_HANDLE, ::GetStdHandle(STD_INPUT_HANDLE),
                  Open(streams.File(L"in", input), GENERIC_READ, OPEN_EXISTING)},
                 {STD_OUTPUT_HANDLE, ::GetStdHandle(STD_OUTPUT_HANDLE),
                  Open(streams / L"out", GENERIC_WRITE, CREATE_ALWAYS)},
                 {STD_ERROR_HANDLE, ::GetStdHandle(STD_ERROR_HANDLE),
                  Open(streams / L"err", GENERIC_WRITE, CREATE_ALWAYS)}};
  wchar_t before[MAX_PATH];
  ::GetCurrentDirectoryW(MAX_PATH, before);
  if (!folder.empty()) ::SetCurrentDirectoryW(folder.c_str());
  for (const auto& one : handles) ::SetStdHandle(one.which, one.now);
  Result result;
  result.exit = static_cast<DWORD>(zt::Run(arguments));
  for (const auto& one : handles) {
    ::SetStdHandle(one.which, one.before);
    ::CloseHandle(one.now);
  }
  ::SetCurrentDirectoryW(before);
  result.out = ReadBytes(streams / L"out");
  result.err = ReadBytes(streams / L"err");
  return result;
}

std::vector<std::wstring> Words(const std::wstring& line) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(line.c_str(), &count);
  std::vector<std::wstring> result(words + 1, words + count);
  ::LocalFree(words);
  return result;
}

std::wstring Beside(const std::wstring& name) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.rfind(L'\\') + 1) + name;
}

std::string Utf8(const std::wstring& text) {
  const int chars = static_cast<int>(text.size());
  std::string bytes(static_cast<std::size_t>(
                        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, nullptr, 0, nullptr, nullptr)),
                    '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
  return bytes;
}

std::wstring FromUtf8(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find("\r\n", start);
    if (end == text.npos) {
      ADD_FAILURE() << "the last line has no end: " << text;
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

}  // namespace test
