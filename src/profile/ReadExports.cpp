// SPDX-License-Identifier: MIT
// ReadExports.cpp: the exports that read settings files.
#include <afx.h>

#include "Numbers.h"
#include "Read.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

void ZERA_TOOLS_READ_STRING(const char* section, const char* key, const char* file, const char* defaultText,
                            char* text, size_t capacity) {
  return frame::Enter([&] { return profile::ReadString(section, key, file, defaultText, text, capacity); });
}

void ZERA_TOOLS_READ_STRING_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                               const wchar_t* defaultText, wchar_t* text, size_t capacity) {
  return frame::Enter([&] { return profile::ReadString(section, key, file, defaultText, text, capacity); });
}

int ZERA_TOOLS_READ_INT(const char* section, const char* key, const char* file, int defaultValue, int minimum,
                        int maximum) {
  return frame::Enter([&] { return profile::ReadInt(section, key, file, defaultValue, minimum, maximum); });
}

int ZERA_TOOLS_READ_INT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file, int defaultValue,
                           int minimum, int maximum) {
  return frame::Enter([&] { return profile::ReadInt(section, key, file, defaultValue, minimum, maximum); });
}

unsigned int ZERA_TOOLS_READ_UINT(const char* section, const char* key, const char* file,
                                  unsigned int defaultValue, unsigned int minimum, unsigned int maximum) {
  return frame::Enter(
      [&] { return profile::ReadUnsigned(section, key, file, defaultValue, minimum, maximum); });
}

unsigned int ZERA_TOOLS_READ_UINT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                                     unsigned int defaultValue, unsigned int minimum, unsigned int maximum) {
  return frame::Enter(
      [&] { return profile::ReadUnsigned(section, key, file, defaultValue, minimum, maximum); });
}

WORD ZERA_TOOLS_READ_WORD(const char* section, const char* key, const char* file, WORD defaultValue,
                          WORD minimum, WORD maximum) {
  return frame::Enter([&] { return profile::ReadWord(section, key, file, defaultValue, minimum, maximum); });
}

WORD ZERA_TOOLS_READ_WORD_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                             WORD defaultValue, WORD minimum, WORD maximum) {
  return frame::Enter([&] { return profile::ReadWord(section, key, file, defaultValue, minimum, maximum); });
}

double ZERA_TOOLS_READ_DOUBLE(const char* section, const char* key, const char* file, double defaultValue,
                              double minimum, double maximum) {
  return frame::Enter(
      [&] { return profile::ReadDouble(section, key, file, defaultValue, minimum, maximum); });
}

double ZERA_TOOLS_READ_DOUBLE_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                                 double defaultValue, double minimum, double maximum) {
  return frame::Enter(
      [&] { return profile::ReadDouble(section, key, file, defaultValue, minimum, maximum); });
}

// KEPT FOR HOSTS: alone among the plain readers this one converts its names. A host whose section or key the
// ANSI code page turns into another text finds its value only this way.
float ZERA_TOOLS_READ_FLOAT(const char* section, const char* key, const char* file, float defaultValue,
                            float minimum, float maximum) {
  return frame::Enter([&] {
    return profile::ReadFloat(frame::WideText(section), frame::WideText(key), frame::WideText(file),
                              defaultValue, minimum, maximum);
  });
}

float ZERA_TOOLS_READ_FLOAT_UC(const wchar_t* section, const wchar_t* key, const wchar_t* file,
                               float defaultValue, float minimum, float maximum) {
  return frame::Enter([&] { return profile::ReadFloat(section, key, file, defaultValue, minimum, maximum); });
}
