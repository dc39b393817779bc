// SPDX-License-Identifier: MIT
// console.h: text to stdout and stderr. A console gets UTF-16, a file or pipe UTF-8, so that no
// character depends on a code page.
#pragma once

#include <string>
#include <string_view>

namespace zt {

/// A result: the text as it is, and a line end.
void PrintLine(std::wstring_view text);
/// What a command did, where that is all it has to say. --quiet leaves it out.
void Confirm(std::wstring_view text);
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

/// Asks for a text that is not shown; false without a terminal.
bool AskSecretly(std::wstring_view question, std::wstring& answer);

/// How this run talks. Every run begins with it, on the standard handles of
/// that moment.
struct Manner {
  bool quiet = false;
  /// Collects what is said, for EndJson.
  bool json = false;
};
void Begin(const Manner& manner);
/// Shows what was collected, if --json was asked for.
void EndJson(std::wstring_view command, int exit);
bool IsJson();

/// Whether somebody watches stderr.
bool ErrorsAreOnConsole();
/// Whether everything printed so far has reached stdout.
bool OutputArrived();

}  // namespace zt
