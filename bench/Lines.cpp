// SPDX-License-Identifier: MIT
// A settings file's text in a buffer: beside what the C runtime's formatting takes.
#include <clocale>
#include <cstdio>
#include <vector>

#include "Harness.h"

namespace bench {
namespace {

constexpr std::size_t kRoom = 512;

// The separator is a point, whatever the user's locale.
template <class Format>
void InEnglish(Format format) {
  const std::wstring kept = ::_wsetlocale(LC_NUMERIC, nullptr);
  ::_wsetlocale(LC_NUMERIC, L"english");
  format();
  ::_wsetlocale(LC_NUMERIC, kept.c_str());
}

void Wide() {
  wchar_t buffer[kRoom];
  std::size_t count = 0;
  const auto section = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_SECTION_UC);
  Measure("Lines", "section", 1, Calls([&] { section(L"General", buffer, kRoom, &count); }), nullptr,
          Calls([&] { sink = ::_snwprintf(buffer, kRoom, L"[%ls]\n", L"General"); }));
  const auto number = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_INT_UC);
  Measure("Lines", "number", 1, Calls([&] { number(L"Width", buffer, kRoom, 1024, &count); }), nullptr,
          Calls([&] { sink = ::_snwprintf(buffer, kRoom, L"%ls=%d\n", L"Width", 1024); }));
  const auto real = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_DOUBLE_UC);
  Measure(
      "Lines", "floating-point number", 1, Calls([&] { real(L"Zoom", buffer, kRoom, 1.5, &count); }),
      Calls([&] { InEnglish([&] { sink = ::_snwprintf(buffer, kRoom, L"%ls=%.10f\n", L"Zoom", 1.5); }); }),
      Calls([&] { sink = ::_snwprintf(buffer, kRoom, L"%ls=%.10f\n", L"Zoom", 1.5); }));
  const auto text = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_STRING_UC);
  // The rules convert to UTF-8 in two passes and back through the code page to see whether a text is ASCII.
  const auto roundTrip = [](const wchar_t* value) {
    char bytes[64];
    wchar_t back[64];
    ::WideCharToMultiByte(CP_UTF8, 0, value, -1, nullptr, 0, nullptr, nullptr);
    ::WideCharToMultiByte(CP_UTF8, 0, value, -1, bytes, 64, nullptr, nullptr);
    ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, nullptr, 0);
    sink = ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, back, 64);
  };
  for (const wchar_t* const value : {L"plain text", L"L\u00E4nge \u20AC"}) {
    Measure("Lines", value[0] == L'p' ? "text" : "text with companion", 1,
            Calls([&] { text(L"Title", buffer, kRoom, value, &count); }), Calls([&] {
              sink = ::_snwprintf(buffer, kRoom, L"%ls=%ls\n", L"Title", value);
              roundTrip(value);
            }),
            Calls([&] { sink = ::_snwprintf(buffer, kRoom, L"%ls=%ls\n", L"Title", value); }));
  }
}

void Plain() {
  char buffer[kRoom];
  std::size_t count = 0;
  const auto number = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_INT);
  Measure("Lines", "number (plain)", 1, Calls([&] { number("Width", buffer, kRoom, 1024, &count); }), nullptr,
          Calls([&] { sink = ::_snprintf(buffer, kRoom, "%s=%d\n", "Width", 1024); }));
  const auto text = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_STRING);
  Measure("Lines", "text (plain)", 1, Calls([&] { text("Title", buffer, kRoom, "plain text", &count); }),
          nullptr, Calls([&] { sink = ::_snprintf(buffer, kRoom, "%s=%s\n", "Title", "plain text"); }));
}

}  // namespace

void Lines() {
  Wide();
  Plain();
}

// A whole file's text: the position goes on with each line.
void LinesGrowth() {
  const auto number = BENCH_EXPORT(ZERA_TOOLS_BUFWRITE_INT_UC);
  for (const std::size_t lines : Sizes(1, 10, 100, 1000, 1000)) {
    std::vector<wchar_t> buffer(lines * 32);
    Measure("Lines", "numbers into one buffer", lines, Calls([&] {
              std::size_t at = 0, count = 0;
              for (std::size_t i = 0; i < lines; ++i) {
                number(L"Width", buffer.data() + at, buffer.size() - at, static_cast<int>(i), &count);
                at += count;
              }
            }),
            nullptr, Calls([&] {
              std::size_t at = 0;
              for (std::size_t i = 0; i < lines; ++i) {
                at += static_cast<std::size_t>(::_snwprintf(buffer.data() + at, buffer.size() - at,
                                                            L"%ls=%d\n", L"Width", static_cast<int>(i)));
              }
            }));
  }
}

}  // namespace bench
