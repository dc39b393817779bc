// SPDX-License-Identifier: MIT
// console.h: text to stdout and stderr. A console gets UTF-16, a file or pipe UTF-8, so that no
// character depends on a code page.
#pragma once

#include <string>
#include <string_view>

namespace zt {

/// A result: the text as it is, and a line end.
void PrintLine(std::wstring_view text);
/// Help and tables: line feeds become line ends.
void Print(std::wstring_view text);
/// Bytes as they are.
void PrintBytes(std::string_view bytes);
/// "zt: TEXT" on stderr: what went wrong, or what a command wants to remark.
void Complain(std::wstring_view text);
/// The text on stderr as it is.
void PrintError(std::wstring_view text);

/// Asks a question on stderr; true for yes. Without a terminal nobody is asked, and the answer is yes:
/// scripts have decided already.
bool AskYes(std::wstring_view question);

/// Whether somebody watches stderr.
bool ErrorsAreOnConsole();
/// Whether everything printed so far has reached stdout.
bool OutputArrived();

}  // namespace zt
