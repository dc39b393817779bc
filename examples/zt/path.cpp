// SPDX-License-Identifier: MIT
// zt path: paths as text.
#include <ZERATools.h>

#include <algorithm>

#include "arguments.h"
#include "console.h"

namespace zt {
namespace {

using Get = int (*)(const wchar_t* path, wchar_t* part, size_t capacity);
using Replace = int (*)(wchar_t* path, size_t capacity, const wchar_t* text);

// Four parts of 255 characters and what the composer puts between them always fit.
constexpr std::size_t room = 4 * 256 + 8;

Exit Part(Get get, const Arguments& arguments) {
  std::wstring part(room, L'\0');
  get(arguments.PathText(0).c_str(), part.data(), part.size());
  PrintLine(part.c_str());
  return done;
}

// A buffer that the path and `more` characters fit.
std::wstring Buffer(const std::wstring& path, std::size_t more) {
  std::wstring buffer = path;
  buffer.resize(room + path.size() + more);
  return buffer;
}

Exit Rewrite(Replace replace, const std::wstring& path, const std::wstring& text) {
  std::wstring buffer = Buffer(path, text.size());
  replace(buffer.data(), buffer.size(), text.c_str());
  PrintLine(buffer.c_str());
  return done;
}

// The text is taken as given.
Exit Set(Replace replace, const Arguments& arguments) {
  return Rewrite(replace, arguments.PathText(0), arguments.Text(1));
}

// The text is a path that is taken apart.
Exit SetFrom(Replace replace, const Arguments& arguments) {
  return Rewrite(replace, arguments.PathText(0), arguments.PathText(1));
}

Exit SetDrive(const Arguments& arguments) {
  return Set(ZERA_TOOLS_FILE_REPLACE_DRIVE_UC, arguments);
}

Exit AddDirectory(const Arguments& arguments) {
  if (Measure(arguments.PathText(0)).directory + arguments.Text(1).size() > longestPart) {
    arguments.Reject(1, L"makes the directory longer than 255 characters");
  }
  return Set(ZERA_TOOLS_FILE_ADD_DIR_UC, arguments);
}

Exit AddName(const Arguments& arguments) {
  if (Measure(arguments.PathText(0)).name + arguments.Text(1).size() > longestPart) {
    arguments.Reject(1, L"makes the file name longer than 255 characters");
  }
  return Set(ZERA_TOOLS_FILE_ADD_NAME_UC, arguments);
}

Exit AddIndex(const Arguments& arguments) {
  const std::wstring& path = arguments.PathText(0);
  const auto index = static_cast<unsigned int>(arguments.Integer(1, 0, 2147483647));
  const auto digits = static_cast<unsigned int>(arguments.Integer(2, 0, longestPart));
  if (Measure(path).name + std::max<std::size_t>(digits, arguments.Text(1).size()) > longestPart) {
    arguments.Reject(2, L"makes the file name longer than 255 characters");
  }
  std::wstring buffer = Buffer(path, longestPart);
  ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(buffer.data(), buffer.size(), index, digits);
  PrintLine(buffer.c_str());
  return done;
}

const Command commands[] = {
    {L"drive", L"PATH", L"The drive", L"", L"zt path drive C:\\data\\run.ini\nC:",
     L"ZERA_TOOLS_FILE_GET_DRIVE_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_DRIVE_UC, arguments); }},
    {L"dir", L"PATH", L"The directory without the drive", L"", L"zt path dir C:\\data\\run.ini\n\\data\\",
     L"ZERA_TOOLS_FILE_GET_DIR_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_DIR_UC, arguments); }},
    {L"name", L"PATH", L"The file name without the extension", L"", L"zt path name C:\\data\\run.ini\nrun",
     L"ZERA_TOOLS_FILE_GET_NAME_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_NAME_UC, arguments); }},
    {L"ext", L"PATH", L"The extension with its period", L"", L"zt path ext C:\\data\\run.ini\n.ini",
     L"ZERA_TOOLS_FILE_GET_EXT_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_EXT_UC, arguments); }},
    {L"folder", L"PATH", L"Drive and directory", L"", L"zt path folder C:\\data\\run.ini\nC:\\data\\",
     L"ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC, arguments); }},
    {L"file", L"PATH", L"File name and extension", L"", L"zt path file C:\\data\\run.ini\nrun.ini",
     L"ZERA_TOOLS_FILE_GET_NAME_EXT_UC",
     [](const Arguments& arguments) { return Part(ZERA_TOOLS_FILE_GET_NAME_EXT_UC, arguments); }},
    {L"set-drive", L"PATH DRIVE", L"Replaces the drive",
     L"Only the first character of DRIVE counts; \"\" removes the drive.\n",
     L"zt path set-drive C:\\data\\run.ini D:\nD:\\data\\run.ini", L"ZERA_TOOLS_FILE_REPLACE_DRIVE_UC",
     SetDrive},
    {L"set-dir", L"PATH DIRECTORY", L"Replaces the directory, keeps the drive",
     L"DIRECTORY is taken as given: begin it with a backslash and do not give it a drive.\n",
     L"zt path set-dir C:\\data\\run.ini \\new\nC:\\new\\run.ini", L"ZERA_TOOLS_FILE_REPLACE_DIR_UC",
     [](const Arguments& arguments) { return Set(ZERA_TOOLS_FILE_REPLACE_DIR_UC, arguments); }},
    {L"set-name", L"PATH NAME", L"Replaces the file name, keeps the extension", L"",
     L"zt path set-name C:\\data\\run.ini old\nC:\\data\\old.ini", L"ZERA_TOOLS_FILE_REPLACE_NAME_UC",
     [](const Arguments& arguments) { return Set(ZERA_TOOLS_FILE_REPLACE_NAME_UC, arguments); }},
    {L"set-ext", L"PATH EXTENSION", L"Replaces the extension",
     L"EXTENSION with or without its period; \"\" removes the extension.\n",
     L"zt path set-ext C:\\data\\run.ini bak\nC:\\data\\run.bak", L"ZERA_TOOLS_FILE_REPLACE_EXT_UC",
     [](const Arguments& arguments) { return Set(ZERA_TOOLS_FILE_REPLACE_EXT_UC, arguments); }},
    {L"set-file", L"PATH OTHER", L"Takes file name and extension from another path", L"",
     L"zt path set-file C:\\data\\run.ini D:\\x\\old.txt\nC:\\data\\old.txt",
     L"ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC",
     [](const Arguments& arguments) { return SetFrom(ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC, arguments); }},
    {L"set-folder", L"PATH OTHER", L"Takes drive and directory from another path",
     L"What follows the last backslash of OTHER is ignored, so end a folder with one.\n",
     L"zt path set-folder C:\\data\\run.ini D:\\new\\\nD:\\new\\run.ini",
     L"ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC",
     [](const Arguments& arguments) { return SetFrom(ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC, arguments); }},
    {L"add-dir", L"PATH TEXT", L"Appends a text to the directory", L"",
     L"zt path add-dir C:\\data\\run.ini old\nC:\\data\\old\\run.ini", L"ZERA_TOOLS_FILE_ADD_DIR_UC",
     AddDirectory},
    {L"add-name", L"PATH TEXT", L"Appends a text to the file name, before the extension", L"",
     L"zt path add-name C:\\data\\run.ini _bak\nC:\\data\\run_bak.ini", L"ZERA_TOOLS_FILE_ADD_NAME_UC",
     AddName},
    {L"add-index", L"PATH INDEX DIGITS", L"Appends a number to the file name, before the extension",
     L"INDEX from 0 to 2147483647, filled up with zeros to at least DIGITS digits (0 to 255).\n",
     L"zt path add-index C:\\log\\run.txt 7 4\nC:\\log\\run0007.txt", L"ZERA_TOOLS_FILE_ADD_IDX_NAME_UC",
     AddIndex},
};

}  // namespace

const Group pathGroup = {
    L"path", L"Take paths apart and put them together, as text",
    L"Nothing here looks at the disk. A directory, a file name and an extension have at most 255\n"
    L"characters each. The text after the last backslash is the file name, so a folder ends in one.\n",
    commands};

}  // namespace zt
