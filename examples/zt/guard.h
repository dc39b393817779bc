// SPDX-License-Identifier: MIT
// guard.h: what still goes wrong inside the library ends the program with a message and exit code 1.
#pragma once

namespace zt {

void InstallGuards();

}  // namespace zt
