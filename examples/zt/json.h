// SPDX-License-Identifier: MIT
// json.h: the one shape in which --json shows what a command says. Text only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zt {

/// A text in quotation marks; what cannot stand there, halves of surrogate
/// pairs included, as \uXXXX.
std::wstring JsonText(std::wstring_view text);

/// {"command":"file size","exit":0,"result":["1024"],"remarks":[]}
std::wstring JsonAnswer(std::wstring_view command, int exit, const std::vector<std::wstring>& result,
                        const std::vector<std::wstring>& remarks);

}  // namespace zt
