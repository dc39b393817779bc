// SPDX-License-Identifier: MIT
// FilesExports.cpp: the exports that ask for or change one file.
#include <afx.h>

#include "Files.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

using frame::WideText;

int ZERA_TOOLS_FILE_EXIST(const char* path) {
  return frame::Enter([&] { return file::Exist(WideText(path)); });
}

int ZERA_TOOLS_FILE_EXIST_UC(const wchar_t* path) {
  return frame::Enter([&] { return file::Exist(path); });
}

int ZERA_TOOLS_FILE_DELETE(const char* path) {
  return frame::Enter([&] { return file::Delete(WideText(path)); });
}

int ZERA_TOOLS_FILE_DELETE_UC(const wchar_t* path) {
  return frame::Enter([&] { return file::Delete(path); });
}

int ZERA_TOOLS_FILE_RENAME(const char* oldPath, const char* newPath) {
  return frame::Enter([&] { return file::Rename(WideText(oldPath), WideText(newPath)); });
}

int ZERA_TOOLS_FILE_RENAME_UC(const wchar_t* oldPath, const wchar_t* newPath) {
  return frame::Enter([&] { return file::Rename(oldPath, newPath); });
}

unsigned int ZERA_TOOLS_FILE_GET_SIZE(const char* path) {
  return frame::Enter([&] { return file::GetSize(WideText(path)); });
}

unsigned int ZERA_TOOLS_FILE_GET_SIZE_UC(const wchar_t* path) {
  return frame::Enter([&] { return file::GetSize(path); });
}

int ZERA_TOOLS_FILE_HAS_EXTENSION(const char* path, const char* extension) {
  return frame::Enter([&] { return file::HasExtension(WideText(path), WideText(extension)); });
}

int ZERA_TOOLS_FILE_HAS_EXTENSION_UC(const wchar_t* path, const wchar_t* extension) {
  return frame::Enter([&] { return file::HasExtension(path, extension); });
}

int ZERA_TOOLS_FILE_WAIT_FOR_FILE(const char* path, unsigned int timeoutMs) {
  return frame::Enter([&] { return file::WaitForFile(WideText(path), timeoutMs); });
}

int ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(const wchar_t* path, unsigned int timeoutMs) {
  return frame::Enter([&] { return file::WaitForFile(path, timeoutMs); });
}

int ZERA_TOOLS_FILE_GET_TIME_MODIFIED(const char* path, __int64* time) {
  return frame::Enter([&] { return file::GetTimeModified(WideText(path), time); });
}

int ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(const wchar_t* path, __int64* time) {
  return frame::Enter([&] { return file::GetTimeModified(path, time); });
}
