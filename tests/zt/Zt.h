// SPDX-License-Identifier: MIT
// Zt.h: runs the command-line host as a user's shell does.
#pragma once

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

namespace test {

struct Result {
  DWORD exit = 0xFFFFFFFF;
  std::string out;  ///< stdout, line ends as written
  std::string err;
};
std::ostream& operator<<(std::ostream& stream, const Result& result);

/// Starts zt.exe in `folder` (by default the program's own) with these arguments and waits for it.
Result Zt(const std::vector<std::wstring>& arguments, const std::string& input = {},
          const std::wstring& folder = {});

/// The same within this process, which is much faster: for what is refused, and for the help.
Result ZtHere(const std::vector<std::wstring>& arguments, const std::string& input = {},
              const std::wstring& folder = {});

/// The arguments of a command line as shells and the help write it, without the program.
std::vector<std::wstring> Words(const std::wstring& line);

/// The path of a program or library beside the test.
std::wstring Beside(const std::wstring& name);

std::string Utf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);
std::vector<std::string> Lines(const std::string& text);

}  // namespace test
