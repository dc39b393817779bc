// SPDX-License-Identifier: MIT
// Platform.h: what the settings-file operations take from the platform, for either character type.
#pragma once

#include <windows.h>

#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include <cstddef>

#include "base/QuietErrors.h"

namespace profile {

template <class Char>
struct Platform;

template <>
struct Platform<char> {
  static constexpr char kEmpty[] = "";
  static constexpr char kEnglish[] = "english";
  static constexpr char kDouble[] = "%.10f";

  static DWORD Read(const char* section, const char* key, const char* defaultText, char* text, DWORD size,
                    const char* file) {
    return base::Quietly(
        [&] { return ::GetPrivateProfileStringA(section, key, defaultText, text, size, file); });
  }
  static BOOL Write(const char* section, const char* key, const char* value, const char* file) {
    return base::Quietly([&] { return ::WritePrivateProfileStringA(section, key, value, file); });
  }
  static const char* SetNumericLocale(const char* name) { return ::setlocale(LC_NUMERIC, name); }

  static int ToInt(const char* text) { return ::atoi(text); }
  static unsigned int ToUnsigned(const char* text) { return ::strtoul(text, nullptr, 10); }
  static double ToDouble(const char* text) { return ::atof(text); }

  // The C runtime's own formatting, as its locale has it; the toolchain would put in another.
  template <class Value>
  static void Format(char* text, std::size_t size, const char* format, Value value) {
    ::_sprintf_s_l(text, size, format, nullptr, value);
  }
  static void Copy(char* to, std::size_t capacity, const char* text) { ::strcpy_s(to, capacity, text); }
  static std::size_t Length(const char* text) { return ::strlen(text); }
};

template <>
struct Platform<wchar_t> {
  static constexpr wchar_t kEmpty[] = L"";
  static constexpr wchar_t kEnglish[] = L"english";
  static constexpr wchar_t kDouble[] = L"%.10f";

  static DWORD Read(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText, wchar_t* text,
                    DWORD size, const wchar_t* file) {
    return base::Quietly(
        [&] { return ::GetPrivateProfileStringW(section, key, defaultText, text, size, file); });
  }
  static BOOL Write(const wchar_t* section, const wchar_t* key, const wchar_t* value, const wchar_t* file) {
    return base::Quietly([&] { return ::WritePrivateProfileStringW(section, key, value, file); });
  }
  static const wchar_t* SetNumericLocale(const wchar_t* name) { return ::_wsetlocale(LC_NUMERIC, name); }

  static int ToInt(const wchar_t* text) { return ::_wtoi(text); }
  static unsigned int ToUnsigned(const wchar_t* text) { return ::wcstoul(text, nullptr, 10); }
  static double ToDouble(const wchar_t* text) { return ::_wtof(text); }

  template <class Value>
  static void Format(wchar_t* text, std::size_t size, const wchar_t* format, Value value) {
    ::_swprintf_s_l(text, size, format, nullptr, value);
  }
  static void Copy(wchar_t* to, std::size_t capacity, const wchar_t* text) { ::wcscpy_s(to, capacity, text); }
  static std::size_t Length(const wchar_t* text) { return ::wcslen(text); }
};

}  // namespace profile
