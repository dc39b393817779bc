// SPDX-License-Identifier: MIT
// Conversions: beside one platform conversion of the whole text, and what is written without the platform.
#include <cstring>
#include <string>

#include "Harness.h"

namespace bench {
namespace {

// What settings and reports of the family hold: mostly ASCII, some letters, some signs.
std::wstring Wide(std::size_t units) {
  constexpr wchar_t kPiece[] = L"25,5 \u00B0C L\u00E4nge 12 \u00B5m; ok ";
  std::wstring text;
  while (text.size() < units) text += kPiece;
  text.resize(units);
  return text;
}

std::string Latin1(const std::wstring& wide) {
  std::string text;
  for (const wchar_t unit : wide) text += static_cast<char>(unit);
  return text;
}

std::string Utf8(const std::wstring& wide) {
  std::string text(static_cast<std::size_t>(
                       ::WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr)),
                   0);
  ::WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), -1, text.data(), static_cast<int>(text.size()), nullptr,
                        nullptr);
  text.pop_back();
  return text;
}

// One platform conversion of the whole, into a string object as the export has it.
void ToPage(UINT page, const wchar_t* text, int most, CStringA& result) {
  result.Empty();
  const int size =
      ::WideCharToMultiByte(page, 0, text, -1, result.GetBuffer(most), most + 1, nullptr, nullptr);
  result.ReleaseBufferSetLength(size - 1);
}

void FromPage(UINT page, const char* text, int most, CStringW& result) {
  result.Empty();
  const int size = ::MultiByteToWideChar(page, 0, text, -1, result.GetBuffer(most), most + 1);
  result.ReleaseBufferSetLength(size - 1);
}

// Two passes: the rules ask for the size first.
void ToUtf8(const wchar_t* text, CStringA& result) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  ToPage(CP_UTF8, text, size - 1, result);
}

void FromUtf8(const char* text, CStringW& result) {
  const int size = ::MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0);
  FromPage(CP_UTF8, text, size - 1, result);
}

void CodePages(const std::wstring& text, const std::string& length) {
  const std::string bytes = Latin1(text);
  CStringA narrow;
  CStringW wide;
  const auto toPage = BENCH_EXPORT(ZERA_TOOLS_UC_TO_MBC);
  Measure("Conversions", "UTF-16 to code page" + length, text.size(),
          Calls([&] { toPage(text.c_str(), narrow); }),
          Calls([&] { ToPage(CP_ACP, text.c_str(), static_cast<int>(text.size()), narrow); }), Calls([&] {
            std::string result(text.size() * 2 + 1, 0);
            result.resize(::wcstombs(result.data(), text.c_str(), result.size()));
            sink = static_cast<long long>(result.size());
          }));
  const auto latinToPage = BENCH_EXPORT(ZERA_TOOLS_CHAR8_TO_MBC);
  Measure("Conversions", "Latin-1 to code page" + length, text.size(),
          Calls([&] { latinToPage(bytes.c_str(), narrow); }), Calls([&] {
            // What the result has, moved: a sign may become several bytes.
            CStringA copy;
            const int size = static_cast<int>(bytes.size());
            std::memcpy(copy.GetBuffer(size), bytes.data(), bytes.size());
            copy.ReleaseBufferSetLength(size);
            sink = copy.GetLength();
          }),
          Calls([&] {
            std::string result;
            for (const char one : bytes) {
              if (one == '\xB0') {
                result += "deg";
              } else {
                result += one == '\xB5' ? 'u' : one;
              }
            }
            sink = static_cast<long long>(result.size());
          }));
  const auto latinToWide = BENCH_EXPORT(ZERA_TOOLS_CHAR8_TO_UC);
  Measure("Conversions", "Latin-1 to UTF-16" + length, text.size(),
          Calls([&] { latinToWide(bytes.c_str(), wide); }),
          Calls([&] { FromPage(CP_ACP, bytes.c_str(), static_cast<int>(bytes.size()), wide); }), Calls([&] {
            std::wstring result;
            for (const char one : bytes) result += static_cast<unsigned char>(one);
            sink = static_cast<long long>(result.size());
          }));
}

void Utf8Forms(const std::wstring& text, const std::string& length) {
  const std::string bytes = Utf8(text), ansi = Latin1(text);
  CStringA narrow;
  CStringW wide;
  const auto toUtf8 = BENCH_EXPORT(ZERA_TOOLS_STRING_UC_TO_UTF8);
  Measure("Conversions", "UTF-16 to UTF-8" + length, text.size(),
          Calls([&] { toUtf8(text.c_str(), narrow); }), Calls([&] { ToUtf8(text.c_str(), narrow); }),
          Calls([&] {
            std::string result;
            for (const wchar_t unit : text) {
              if (unit < 0x80) {
                result += static_cast<char>(unit);
              } else {
                result += static_cast<char>(0xC0 | unit >> 6);
                result += static_cast<char>(0x80 | (unit & 0x3F));
              }
            }
            sink = static_cast<long long>(result.size());
          }));
  const auto fromUtf8 = BENCH_EXPORT(ZERA_TOOLS_STRING_UTF8_TO_UC);
  Measure("Conversions", "UTF-8 to UTF-16" + length, text.size(),
          Calls([&] { fromUtf8(bytes.c_str(), wide); }), Calls([&] { FromUtf8(bytes.c_str(), wide); }),
          Calls([&] {
            std::wstring result;
            for (std::size_t i = 0; i < bytes.size(); ++i) {
              const auto one = static_cast<unsigned char>(bytes[i]);
              result += one < 0x80 ? one : static_cast<wchar_t>((one & 0x1F) << 6 | (bytes[++i] & 0x3F));
            }
            sink = static_cast<long long>(result.size());
          }));
  const auto pageToUtf8 = BENCH_EXPORT(ZERA_TOOLS_STRING_MBC_TO_UTF8);
  Measure("Conversions", "code page to UTF-8" + length, text.size(),
          Calls([&] { pageToUtf8(ansi.c_str(), narrow); }), Calls([&] {
            FromPage(CP_ACP, ansi.c_str(), ::MultiByteToWideChar(CP_ACP, 0, ansi.c_str(), -1, nullptr, 0) - 1,
                     wide);
            ToUtf8(wide, narrow);
          }));
  const auto utf8ToPage = BENCH_EXPORT(ZERA_TOOLS_STRING_UTF8_TO_MBC);
  Measure("Conversions", "UTF-8 to code page" + length, text.size(),
          Calls([&] { utf8ToPage(bytes.c_str(), narrow); }), Calls([&] {
            FromUtf8(bytes.c_str(), wide);
            ToPage(CP_ACP, wide, ::WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr) - 1,
                   narrow);
          }));
}

// The platform has no call for this text; its C runtime has one for a piece.
void Hexadecimal(const std::wstring& text, const std::string& length) {
  CStringW result;
  const auto toHex = BENCH_EXPORT(ZERA_TOOLS_STRING_UC_TO_HEX);
  Measure("Conversions", "to hexadecimal" + length, text.size(), Calls([&] { toHex(text.c_str(), result); }),
          nullptr, Calls([&] {
            std::wstring hex;
            for (const wchar_t unit : text) {
              if (!hex.empty()) hex += L' ';
              bool begun = false;
              for (int shift = 12; shift >= 0; shift -= 4) {
                const unsigned digit = unit >> shift & 15;
                begun = begun || digit != 0 || shift == 0;
                if (begun) hex += L"0123456789ABCDEF"[digit];
              }
            }
            sink = static_cast<long long>(hex.size());
          }));
  const std::wstring hex = [&] {
    toHex(text.c_str(), result);
    return std::wstring(result);
  }();
  const auto fromHex = BENCH_EXPORT(ZERA_TOOLS_STRING_HEX_TO_UC);
  Measure("Conversions", "from hexadecimal" + length, text.size(),
          Calls([&] { fromHex(hex.c_str(), result); }), nullptr, Calls([&] {
            std::wstring units;
            for (const wchar_t* piece = hex.c_str(); *piece;) {
              wchar_t* end;
              units += static_cast<wchar_t>(std::wcstoul(piece, &end, 16));
              piece = *end ? end + 1 : end;
            }
            sink = static_cast<long long>(units.size());
          }));
}

void All(std::size_t units, const std::string& length) {
  const std::wstring text = Wide(units);
  CodePages(text, length);
  Utf8Forms(text, length);
  Hexadecimal(text, length);
}

}  // namespace

void Conversions() {
  All(24, " (short)");
  All(ByMode(1 << 10, 1 << 20, 1 << 20), " (long)");
}

void ConversionsGrowth() {
  constexpr std::size_t kMi = 1 << 20;
  for (const std::size_t units : Sizes(64, 4, 1024, kMi, 16 * kMi)) All(units, "");
}

}  // namespace bench
