// SPDX-License-Identifier: MIT
// BufferExports.cpp: the exports that put a settings file's text into a caller's buffer.
#include <afx.h>

#include "Lines.h"
#include "ZERATools.h"
#include "frame/Frame.h"

int ZERA_TOOLS_BUFWRITE_SECTION(const char* section, char* position, size_t free, size_t* count) {
  return frame::Enter([&] { return profile::BufferSection(section, position, free, count); });
}

int ZERA_TOOLS_BUFWRITE_SECTION_UC(const wchar_t* section, wchar_t* position, size_t free, size_t* count) {
  return frame::Enter([&] { return profile::BufferSection(section, position, free, count); });
}

int ZERA_TOOLS_BUFWRITE_STRING(const char* key, char* position, size_t free, const char* value,
                               size_t* count) {
  return frame::Enter([&] { return profile::BufferText(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_STRING_UC(const wchar_t* key, wchar_t* position, size_t free, const wchar_t* value,
                                  size_t* count) {
  return frame::Enter([&] { return profile::BufferTextAndCompanion(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_INT(const char* key, char* position, size_t free, int value, size_t* count) {
  return frame::Enter([&] { return profile::BufferWhole(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_INT_UC(const wchar_t* key, wchar_t* position, size_t free, int value, size_t* count) {
  return frame::Enter([&] { return profile::BufferWhole(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_UINT(const char* key, char* position, size_t free, unsigned int value,
                             size_t* count) {
  return frame::Enter([&] { return profile::BufferWhole(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_UINT_UC(const wchar_t* key, wchar_t* position, size_t free, unsigned int value,
                                size_t* count) {
  return frame::Enter([&] { return profile::BufferWhole(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_DOUBLE(const char* key, char* position, size_t free, double value, size_t* count) {
  return frame::Enter([&] { return profile::BufferDouble(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_DOUBLE_UC(const wchar_t* key, wchar_t* position, size_t free, double value,
                                  size_t* count) {
  return frame::Enter([&] { return profile::BufferDouble(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_FLOAT(const char* key, char* position, size_t free, float value, size_t* count) {
  return frame::Enter([&] { return profile::BufferDouble(key, position, free, value, count); });
}

int ZERA_TOOLS_BUFWRITE_FLOAT_UC(const wchar_t* key, wchar_t* position, size_t free, float value,
                                 size_t* count) {
  return frame::Enter([&] { return profile::BufferDouble(key, position, free, value, count); });
}
