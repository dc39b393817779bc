// SPDX-License-Identifier: MIT
// WriteExports.cpp: the exports that write settings files.
#include <afx.h>

#include "Numbers.h"
#include "Write.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

// The key alone: companions are neither written nor emptied.
int ZERA_TOOLS_WRITE_STRING(const char* section, const char* key, const char* file, const char* value) {
  return frame::Enter([&] { return profile::Platform<char>::Write(section, key, value, file); });
}

int ZERA_TOOLS_WRITE_STRING_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                               const wchar_t* value) {
  return frame::Enter([&] { return profile::WriteString(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_INT(const char* section, const char* key, const char* file, int value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_INT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file, int value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_UINT(const char* section, const char* key, const char* file, unsigned int value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_UINT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                             unsigned int value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_WORD(const char* section, const char* key, const char* file, WORD value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, unsigned{value}); });
}

int ZERA_TOOLS_WRITE_WORD_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file, WORD value) {
  return frame::Enter([&] { return profile::WriteWhole(section, key, file, unsigned{value}); });
}

// KEPT FOR HOSTS: the plain floating-point writers convert their names, unlike the other plain writers. A
// host whose section or key the ANSI code page turns into another text finds its value there.
int ZERA_TOOLS_WRITE_DOUBLE(const char* section, const char* key, const char* file, double value) {
  return frame::Enter([&] {
    return profile::WriteDouble(frame::WideText(section), frame::WideText(key), frame::WideText(file), value);
  });
}

int ZERA_TOOLS_WRITE_DOUBLE_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                               double value) {
  return frame::Enter([&] { return profile::WriteDouble(section, key, file, value); });
}

int ZERA_TOOLS_WRITE_FLOAT(const char* section, const char* key, const char* file, float value) {
  return frame::Enter([&] {
    return profile::WriteDouble(frame::WideText(section), frame::WideText(key), frame::WideText(file), value);
  });
}

int ZERA_TOOLS_WRITE_FLOAT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file, float value) {
  return frame::Enter([&] { return profile::WriteDouble(section, key, file, value); });
}
