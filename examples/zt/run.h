// SPDX-License-Identifier: MIT
// run.h: one run of the program, whoever starts it.
#pragma once

#include <string>
#include <vector>

#include "command.h"

namespace zt {

/// Does what the words behind the program's name say, on the standard handles
/// of this moment.
Exit Run(std::vector<std::wstring> words);

}  // namespace zt
