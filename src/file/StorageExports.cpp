// SPDX-License-Identifier: MIT
// StorageExports.cpp: the exports about the storage around a file.
#include <afx.h>

#include "Storage.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

int ZERA_TOOLS_FILE_CHECK_WRITE(const char* path) {
  return frame::Enter([&] { return file::CheckWrite(frame::WideText(path)); });
}

int ZERA_TOOLS_FILE_CHECK_WRITE_UC(const wchar_t* path) {
  return frame::Enter([&] { return file::CheckWrite(path); });
}

float ZERA_TOOLS_FILE_GET_FREEDISK_GB(char driveLetter) {
  return frame::Enter([&] { return file::GetFreeDiskGb(static_cast<wchar_t>(driveLetter)); });
}

float ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(wchar_t driveLetter) {
  return frame::Enter([&] { return file::GetFreeDiskGb(driveLetter); });
}

int ZERA_TOOLS_FILE_GET_VERSION(const char* path, char* version, size_t capacity) {
  return frame::Enter([&] { return file::GetVersion(frame::WideText(path), version, capacity); });
}

int ZERA_TOOLS_FILE_GET_VERSION_UC(const wchar_t* path, wchar_t* version, size_t capacity) {
  return frame::Enter([&] { return file::GetVersion(path, version, capacity); });
}
