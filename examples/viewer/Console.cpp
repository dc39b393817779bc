// SPDX-License-Identifier: MIT
#include "Console.h"

#include <windows.h>

namespace viewer {

void Print(const wchar_t* label, const std::wstring& text) {
  std::wstring line = std::wstring(L"  ") + label;
  line.resize(line.size() < 22 ? 22 : line.size() + 1, L' ');
  line += text + L'\n';
  std::string bytes(line.size() * 3, '\0');
  const int count = ::WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()),
                                          bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  DWORD written;
  ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(count), &written, nullptr);
}

}  // namespace viewer
