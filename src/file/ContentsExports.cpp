// SPDX-License-Identifier: MIT
// ContentsExports.cpp: the exports that move the content of one file.
#include <afx.h>

#include "Contents.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

using frame::WideText;

int ZERA_TOOLS_FILE_COPY(const char* source, const char* target) {
  return frame::Enter([&] { return file::Copy(WideText(source), WideText(target)); });
}

int ZERA_TOOLS_FILE_COPY_UC(const wchar_t* source, const wchar_t* target) {
  return frame::Enter([&] { return file::Copy(source, target); });
}

int ZERA_TOOLS_FILE_COMPARE(const char* first, const char* second) {
  return frame::Enter([&] { return file::Compare(WideText(first), WideText(second)); });
}

int ZERA_TOOLS_FILE_COMPARE_UC(const wchar_t* first, const wchar_t* second) {
  return frame::Enter([&] { return file::Compare(first, second); });
}

int ZERA_TOOLS_FILE_CREATE(const char* path) {
  return frame::Enter([&] { return file::Create(WideText(path)); });
}

int ZERA_TOOLS_FILE_CREATE_UC(const wchar_t* path) {
  return frame::Enter([&] { return file::Create(path); });
}

int ZERA_TOOLS_FILE_TO_BUFFER(const char* path, unsigned char* buffer, unsigned __int64 capacity,
                              unsigned __int64* count) {
  return frame::Enter([&] { return file::ToBuffer(WideText(path), buffer, capacity, count); });
}

int ZERA_TOOLS_FILE_TO_BUFFER_UC(const wchar_t* path, unsigned char* buffer, unsigned __int64 capacity,
                                 unsigned __int64* count) {
  return frame::Enter([&] { return file::ToBuffer(path, buffer, capacity, count); });
}

int ZERA_TOOLS_FILE_FROM_BUFFER(const char* path, const unsigned char* buffer, unsigned __int64 count) {
  return frame::Enter([&] { return file::FromBuffer(WideText(path), buffer, count); });
}

int ZERA_TOOLS_FILE_FROM_BUFFER_UC(const wchar_t* path, const unsigned char* buffer, unsigned __int64 count) {
  return frame::Enter([&] { return file::FromBuffer(path, buffer, count); });
}
