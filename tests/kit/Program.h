// SPDX-License-Identifier: MIT
// Program.h: one test program, run to its end.
#pragma once

#include <windows.h>

#include <string>

namespace kit {

struct Outcome {
  bool passed;
  double seconds;
  std::string said;  // what it wrote; why it could not be started or was ended
};

/// Runs a program of the folder `bin` of the kit's drive; what it writes goes through a file at `output`,
/// which is deleted. It, and whatever it started, is ended when it takes too long or the runner ends.
Outcome RunProgram(const std::wstring& name, DWORD seconds, const std::wstring& output);

}  // namespace kit
