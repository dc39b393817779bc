// SPDX-License-Identifier: MIT
// Viewer.h: what the viewer does, one function for each command. Each gives the program's exit code.
#pragma once

#include <string>

namespace viewer {

/// Finds the settings file, speaks the user's language, greets the user.
int Start();
/// Saves another language, given by its code.
int SaveLanguage(const std::wstring& code);

/// Stores a licence text encrypted in the settings file.
int StoreLicence(const std::wstring& text);
/// Reads the licence text back.
int ShowLicence();
/// Removes log files older than so many days from the user's data folder.
int Prune(const std::wstring& days);
/// Copies the templates beside the program into the user's data folder.
int CopyTemplates();
/// Writes a settings file's text in one piece, and reads it back.
int Export();

/// The settings file; empty if there is none.
std::wstring SettingsFile();
/// The user's data folder, ending in a backslash.
std::wstring DataFolder();

}  // namespace viewer
