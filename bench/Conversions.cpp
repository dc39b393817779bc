// SPDX-License-Identifier: MIT
// Conversions: beside one platform conversion of the whole text, and what is written without the platform.
#include <cstring>
#include <string>
#include <utility>

#include "Harness.h"

namespace bench {
namespace {

// What settings and reports of the family hold: mostly ASCII, some letters, some signs.
constexpr wchar_t kUsual[] = L"25,5 \u00B0C L\u00E4nge 12 \u00B5m; ok ";
constexpr wchar_t kAscii[] = L"25.5 C length 12 mm; ok ";
// As texts of other languages are.
constexpr wchar_t kNoAscii[] = L"\u00E4\u00F6\u00FC\u00DF\u00E9\u00E8\u00F1\u00E7\u00C4\u00D6\u00DC";

std::wstring Wide(std::size_t units, const wchar_t* piece = kUsual) {
  std::wstring text;
  while (text.size() < units) text += piece;
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

// The export, into a string object that is given back and made again.
template <class Export, class Text, class Result>
Way Fresh(Export convert, const Text& text, Result& result) {
  return Calls([=, &result] {
    result.Empty();
    convert(text, result);
  });
}

// One platform conversion of the whole, into a string object of the same kind.
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

void ToCodePage(const std::wstring& text, const std::string& kind) {
  CStringA narrow;
  const auto toPage = BENCH_EXPORT(ZERA_TOOLS_UC_TO_MBC);
  Measure("Conversions", "UTF-16 to code page" + kind, text.size(), Fresh(toPage, text.c_str(), narrow),
          Calls([&] { ToPage(CP_ACP, text.c_str(), static_cast<int>(text.size()), narrow); }), Calls([&] {
            std::string result(text.size() * 2 + 1, 0);
            result.resize(::wcstombs(result.data(), text.c_str(), result.size()));
            sink = static_cast<long long>(result.size());
          }));
}

void FromLatin1(const std::wstring& text, const std::string& kind) {
  const std::string bytes = Latin1(text);
  CStringA narrow;
  CStringW wide;
  const auto latinToPage = BENCH_EXPORT(ZERA_TOOLS_CHAR8_TO_MBC);
  Measure("Conversions", "Latin-1 to code page" + kind, text.size(),
          Fresh(latinToPage, bytes.c_str(), narrow), Calls([&] {
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
  Measure("Conversions", "Latin-1 to UTF-16" + kind, text.size(), Fresh(latinToWide, bytes.c_str(), wide),
          Calls([&] { FromPage(CP_ACP, bytes.c_str(), static_cast<int>(bytes.size()), wide); }), Calls([&] {
            std::wstring result;
            for (const char one : bytes) result += static_cast<unsigned char>(one);
            sink = static_cast<long long>(result.size());
          }));
}

void Utf16AndUtf8(const std::wstring& text, const std::string& kind) {
  const std::string bytes = Utf8(text);
  CStringA narrow;
  CStringW wide;
  const auto toUtf8 = BENCH_EXPORT(ZERA_TOOLS_STRING_UC_TO_UTF8);
  Measure("Conversions", "UTF-16 to UTF-8" + kind, text.size(), Fresh(toUtf8, text.c_str(), narrow),
          Calls([&] { ToUtf8(text.c_str(), narrow); }), Calls([&] {
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
  Measure("Conversions", "UTF-8 to UTF-16" + kind, text.size(), Fresh(fromUtf8, bytes.c_str(), wide),
          Calls([&] { FromUtf8(bytes.c_str(), wide); }), Calls([&] {
            std::wstring result;
            for (std::size_t i = 0; i < bytes.size(); ++i) {
              const auto one = static_cast<unsigned char>(bytes[i]);
              result += one < 0x80 ? one : static_cast<wchar_t>((one & 0x1F) << 6 | (bytes[++i] & 0x3F));
            }
            sink = static_cast<long long>(result.size());
          }));
}

void CodePageAndUtf8(const std::wstring& text, const std::string& kind) {
  const std::string bytes = Utf8(text), ansi = Latin1(text);
  CStringA narrow;
  CStringW wide;
  const auto pageToUtf8 = BENCH_EXPORT(ZERA_TOOLS_STRING_MBC_TO_UTF8);
  Measure("Conversions", "code page to UTF-8" + kind, text.size(), Fresh(pageToUtf8, ansi.c_str(), narrow),
          Calls([&] {
            FromPage(CP_ACP, ansi.c_str(), ::MultiByteToWideChar(CP_ACP, 0, ansi.c_str(), -1, nullptr, 0) - 1,
                     wide);
            ToUtf8(wide, narrow);
          }));
  const auto utf8ToPage = BENCH_EXPORT(ZERA_TOOLS_STRING_UTF8_TO_MBC);
  Measure("Conversions", "UTF-8 to code page" + kind, text.size(), Fresh(utf8ToPage, bytes.c_str(), narrow),
          Calls([&] {
            FromUtf8(bytes.c_str(), wide);
            ToPage(CP_ACP, wide, ::WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr) - 1,
                   narrow);
          }));
}

// The platform has no call for this text; its C runtime has one for a piece.
void Hexadecimal(const std::wstring& text, const std::string& kind) {
  CStringW result;
  const auto toHex = BENCH_EXPORT(ZERA_TOOLS_STRING_UC_TO_HEX);
  Measure("Conversions", "to hexadecimal" + kind, text.size(), Fresh(toHex, text.c_str(), result), nullptr,
          Calls([&] {
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
  Measure("Conversions", "from hexadecimal" + kind, text.size(), Fresh(fromHex, hex.c_str(), result), nullptr,
          Calls([&] {
            std::wstring units;
            for (const wchar_t* piece = hex.c_str(); *piece;) {
              wchar_t* end;
              units += static_cast<wchar_t>(std::wcstoul(piece, &end, 16));
              piece = *end ? end + 1 : end;
            }
            sink = static_cast<long long>(units.size());
          }));
}

void All(std::size_t units, const std::string& kind) {
  const std::wstring text = Wide(units);
  ToCodePage(text, kind);
  FromLatin1(text, kind);
  Utf16AndUtf8(text, kind);
  CodePageAndUtf8(text, kind);
  Hexadecimal(text, kind);
}

}  // namespace

void Conversions() {
  All(24, " (short)");
  All(ByMode(1 << 10, 1 << 20, 1 << 20), " (long)");
}

void ConversionsGrowth() {
  constexpr std::size_t kMi = 1 << 20;
  for (const std::size_t units : Sizes(64, 4, 1024, kMi, 16 * kMi)) All(units, "");
  for (const std::size_t units : Sizes(256, 16, 256, 65536, 65536)) {
    for (const auto& [kind, piece] :
         {std::pair(" (ASCII alone)", kAscii), std::pair(" (no ASCII)", kNoAscii)}) {
      ToCodePage(Wide(units, piece), kind);
      Utf16AndUtf8(Wide(units, piece), kind);
    }
  }
}

}  // namespace bench
