// SPDX-License-Identifier: MIT
#include <windows.h>

#include <stdarg.h>

#include "afx.h"

platform::State platform::state;

namespace {

// Gives a converted text as the platform's conversions do: only its size without a buffer; an error, and
// nothing more, if it does not fit.
template <class Char>
int Give(const std::basic_string<Char>& text, Char* out, int size) {
  const int length = static_cast<int>(text.size());
  if (size == 0) return length;
  if (length > size) {
    platform::state.lastError = ERROR_INSUFFICIENT_BUFFER;
    return 0;
  }
  for (int i = 0; i < length; ++i) out[i] = text[static_cast<std::size_t>(i)];
  return length;
}

// How many units to convert: a negative length means the terminator, which is then converted as well.
template <class Char>
std::size_t Count(const Char* text, int length) {
  if (length >= 0) return static_cast<std::size_t>(length);
  std::size_t count = 0;
  while (text[count]) ++count;
  return count + 1;
}

void AppendUnits(platform::Wide& to, std::uint32_t code) {
  if (code >= 0x10000) {
    to += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    to += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
  } else {
    to += static_cast<wchar_t>(code);
  }
}

// Each byte that does not belong to a valid sequence is a replacement character of its own.
platform::Wide FromUtf8(const char* text, std::size_t count) {
  platform::Wide wide;
  for (std::size_t i = 0; i < count;) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char first = byte(i);
    const std::size_t more = first < 0x80                    ? 0
                             : first >= 0xC2 && first < 0xE0 ? 1
                             : first >= 0xE0 && first < 0xF0 ? 2
                             : first >= 0xF0 && first < 0xF5 ? 3
                                                             : 9;
    std::uint32_t code = more == 0 ? first : first & (0x3Fu >> more);
    bool valid = more < 9 && i + more < count;
    for (std::size_t k = 1; valid && k <= more; ++k) {
      valid = (byte(i + k) & 0xC0) == 0x80;
      code = code << 6 | (byte(i + k) & 0x3Fu);
    }
    const std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
    if (valid && (code < least[more] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))) valid = false;
    AppendUnits(wide, valid ? code : 0xFFFD);
    i += valid ? more + 1 : 1;
  }
  return wide;
}

std::string ToUtf8(const wchar_t* text, std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    std::uint32_t code = static_cast<std::uint16_t>(text[i]);
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < count && (text[i + 1] & 0xFC00) == 0xDC00) {
      code = 0x10000 + ((code & 0x3FF) << 10) + (static_cast<std::uint32_t>(text[++i]) & 0x3FF);
    } else if (code >= 0xD800 && code < 0xE000) {
      code = 0xFFFD;
    }
    if (code < 0x80) {
      bytes += static_cast<char>(code);
      continue;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const int marks[] = {0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(marks[more] | static_cast<int>(code >> (6 * more)));
    for (int k = more - 1; k >= 0; --k) bytes += static_cast<char>(0x80 | ((code >> (6 * k)) & 0x3F));
  }
  return bytes;
}

platform::Wide FromPage(const char* text, std::size_t count) {
  platform::Wide wide;
  for (std::size_t i = 0; i < count; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (!platform::IsLead(byte)) {
      wide += static_cast<wchar_t>(byte);
    } else if (i + 1 < count && text[i + 1] != 0) {
      wide += static_cast<wchar_t>(0x4E00 + ((byte & 0x7F) << 8) + static_cast<unsigned char>(text[++i]));
    } else {
      wide += L'?';
    }
  }
  return wide;
}

std::string ToPage(const wchar_t* text, std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned unit = static_cast<std::uint16_t>(text[i]);
    const unsigned pair = unit - 0x4E00;
    if (unit < 0x100 && !platform::IsLead(static_cast<unsigned char>(unit))) {
      bytes += static_cast<char>(unit);
    } else if (platform::state.doubleByte && unit >= 0x4E00 && pair < 0x8000 && (pair & 0xFF) != 0 &&
               platform::IsLead(static_cast<unsigned char>(0x80 | pair >> 8))) {
      bytes += static_cast<char>(0x80 | pair >> 8);
      bytes += static_cast<char>(pair);
    } else {
      bytes += '?';
    }
  }
  return bytes;
}

template <class Char>
bool IsSpace(Char one) {
  return one == ' ' || (one >= 9 && one <= 13);
}

template <class Char>
unsigned ToUnsigned(const Char* text) {
  while (IsSpace(*text)) ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  unsigned long long value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 + static_cast<unsigned>(*text - '0');
    if (value > 0xFFFFFFFF) value = 0xFFFFFFFF + 1ull;
  }
  if (value > 0xFFFFFFFF) return 0xFFFFFFFF;
  const auto narrow = static_cast<unsigned>(value);
  return negative ? 0u - narrow : narrow;
}

template <class Char>
int ToInt(const Char* text) {
  while (IsSpace(*text)) ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  long long value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 + (*text - '0');
    if (value > 0x80000000LL) value = 0x80000000LL;
  }
  if (negative) value = -value;
  return value > 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<int>(value);
}

int Digit(wchar_t one) {
  if (one >= '0' && one <= '9') return one - '0';
  if (one >= 'a' && one <= 'f') return one - 'a' + 10;
  if (one >= 'A' && one <= 'F') return one - 'A' + 10;
  return -1;
}

// "%X" of a text that ends at its terminator or after `length` units; what no 64 bits hold is the largest.
int ScanHex(const wchar_t* text, std::size_t length, unsigned* value) {
  std::size_t i = 0;
  const auto at = [&] { return i < length ? text[i] : wchar_t(0); };
  while (IsSpace(at())) ++i;
  if (!at()) return -1;
  const bool negative = at() == '-';
  if (at() == '-' || at() == '+') ++i;
  bool any = false;
  if (at() == '0') {
    any = true;
    ++i;
    if (at() == 'x' || at() == 'X') {
      ++i;
      any = Digit(at()) >= 0;
    }
  }
  unsigned long long number = 0;
  bool over = false;
  for (; Digit(at()) >= 0; ++i) {
    any = true;
    over = over || number >> 60 != 0;
    number = number << 4 | static_cast<unsigned>(Digit(at()));
  }
  if (!any) return 0;
  if (over) number = ~0ull;
  *value = static_cast<unsigned>(negative && !over ? 0 - number : number);
  return 1;
}

template <class Char>
errno_t CopyText(Char* to, std::size_t capacity, const Char* text) {
  std::size_t length = 0;
  while (text && text[length]) ++length;
  if (!to || capacity == 0 || !text || length >= capacity) {
    if (to && capacity > 0) *to = 0;
    _invalid_parameter_noinfo();
    return 34;
  }
  for (std::size_t i = 0; i <= length; ++i) to[i] = text[i];
  return 0;
}

template <class Char>
DWORD Cut(const std::basic_string<Char>& value, Char* out, DWORD size) {
  if (!out || size == 0) return 0;
  DWORD i = 0;
  for (; i + 1 < size && i < value.size(); ++i) out[i] = value[i];
  out[i] = 0;
  return i;
}

// Days from 1970 to the first of a month, counted year by year.
long long DaysTo(int year, int month) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const auto leap = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
  long long days = 0;
  for (int y = 1970; y < year; ++y) days += leap(y) ? 366 : 365;
  for (int m = 0; m < month; ++m) days += kDays[m] + (m == 1 && leap(year));
  return days;
}

}  // namespace

int MultiByteToWideChar(UINT page, DWORD, const char* text, int length, wchar_t* out, int size) {
  const std::size_t count = Count(text, length);
  return Give(page == CP_UTF8 ? FromUtf8(text, count) : FromPage(text, count), out, size);
}
int WideCharToMultiByte(UINT page, DWORD, const wchar_t* text, int length, char* out, int size, const char*,
                        BOOL*) {
  const std::size_t count = Count(text, length);
  return Give(page == CP_UTF8 ? ToUtf8(text, count) : ToPage(text, count), out, size);
}
DWORD GetLastError() {
  return platform::state.lastError;
}

DWORD GetPrivateProfileStringW(const wchar_t*, const wchar_t* key, const wchar_t* instead, wchar_t* out,
                               DWORD size, const wchar_t*) {
  for (const auto& [name, value] : platform::state.settings) {
    if (name == key) return Cut(value, out, size);
  }
  return Cut(platform::Wide(instead ? instead : L""), out, size);
}
DWORD GetPrivateProfileStringA(const char*, const char* key, const char* instead, char* out, DWORD size,
                               const char*) {
  for (const auto& [name, value] : platform::state.settings) {
    if (ToPage(name.data(), name.size()) == key) return Cut(ToPage(value.data(), value.size()), out, size);
  }
  return Cut(std::string(instead ? instead : ""), out, size);
}
BOOL WritePrivateProfileStringW(const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*) {
  return TRUE;
}
BOOL WritePrivateProfileStringA(const char*, const char*, const char*, const char*) {
  return TRUE;
}

void _invalid_parameter_noinfo(void) {
  ++platform::state.invalidParameters;
}
unsigned int StandInStrtoul(const char* text, char**, int) {
  return ToUnsigned(text);
}
unsigned int StandInWcstoul(const wchar_t* text, wchar_t**, int) {
  return ToUnsigned(text);
}
int StandInAtoi(const char* text) {
  return ToInt(text);
}
int _wtoi(const wchar_t* text) {
  return ToInt(text);
}
double _wtof(const wchar_t* text) {
  std::string narrow;
  for (; *text && *text < 0x80; ++text) narrow += static_cast<char>(*text);
  return ::atof(narrow.c_str());
}

// "C" is what every run starts and has to end with.
const wchar_t* _wsetlocale(int, const wchar_t* name) {
  if (!name) return L"C";
  platform::state.locale += name[0] == L'e' ? 1 : -1;
  return name;
}
const char* StandInSetlocale(int, const char* name) {
  if (!name) return "C";
  platform::state.locale += name[0] == 'e' ? 1 : -1;
  return name;
}
errno_t strcpy_s(char* to, std::size_t capacity, const char* text) {
  return CopyText(to, capacity, text);
}
errno_t wcscpy_s(wchar_t* to, std::size_t capacity, const wchar_t* text) {
  return CopyText(to, capacity, text);
}
int _snwscanf(const wchar_t* text, std::size_t length, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int values = ScanHex(text, length, va_arg(arguments, unsigned*));
  va_end(arguments);
  return values;
}
int __stdio_common_vswscanf(unsigned long long, const wchar_t* text, std::size_t length, const wchar_t*,
                            void*, va_list arguments) {
  return ScanHex(text, length, va_arg(arguments, unsigned*));
}
int _getmbcp(void) {
  return platform::state.multiBytePage;
}
int _ismbblead(unsigned int one) {
  return platform::IsLead(static_cast<unsigned char>(one));
}

// Local time is that of Greenwich; the runtime knows years up to 3000.
__time64_t _mktime64(struct tm* fields) {
  const int year = fields->tm_year + 1900;
  if (year < 1970 || year > 3000) return -1;
  return ((DaysTo(year, fields->tm_mon) + fields->tm_mday - 1) * 24 + fields->tm_hour) * 3600 +
         fields->tm_min * 60 + fields->tm_sec;
}
errno_t _localtime64_s(struct tm* fields, const __time64_t* time) {
  if (*time < 0 || *time > 32535291599) return 22;
  const time_t seconds = *time;
  return gmtime_r(&seconds, fields) ? 0 : 22;
}
wchar_t* _wctime64(const __time64_t* time) {
  static wchar_t text[32];
  struct tm fields;
  if (_localtime64_s(&fields, time) != 0) return nullptr;
  char narrow[32];
  strftime(narrow, sizeof narrow, "%a %b %e %H:%M:%S %Y\n", &fields);
  for (std::size_t i = 0; i < sizeof narrow; ++i) text[i] = static_cast<unsigned char>(narrow[i]);
  return text;
}

void AfxThrowMemoryException() {
  throw E_OUTOFMEMORY;
}
void AfxThrowInvalidArgException() {
  throw E_INVALIDARG;
}
void AtlThrow(HRESULT code) {
  throw code;
}

// This machine's C library has these for characters of 32 bits.
extern "C" {
std::size_t wcslen(const wchar_t* text) {
  std::size_t length = 0;
  while (text[length]) ++length;
  return length;
}
int wmemcmp(const wchar_t* a, const wchar_t* b, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (a[i] != b[i]) return static_cast<std::uint16_t>(a[i]) < static_cast<std::uint16_t>(b[i]) ? -1 : 1;
  }
  return 0;
}
int wcscmp(const wchar_t* a, const wchar_t* b) {
  while (*a && *a == *b) ++a, ++b;
  return *a == *b ? 0 : static_cast<std::uint16_t>(*a) < static_cast<std::uint16_t>(*b) ? -1 : 1;
}
wchar_t* wmemchr(const wchar_t* text, wchar_t one, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (text[i] == one) return const_cast<wchar_t*>(text + i);
  }
  return nullptr;
}
wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, std::size_t count) {
  return static_cast<wchar_t*>(memcpy(to, from, count * sizeof(wchar_t)));
}
wchar_t* wmemmove(wchar_t* to, const wchar_t* from, std::size_t count) {
  return static_cast<wchar_t*>(memmove(to, from, count * sizeof(wchar_t)));
}
wchar_t* wmemset(wchar_t* to, wchar_t one, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) to[i] = one;
  return to;
}
}
