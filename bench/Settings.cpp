// SPDX-License-Identifier: MIT
// Settings files: beside the profile calls that the rules require, and reading and writing the file by lines.
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include "Harness.h"

namespace bench {
namespace {

// What a host's author would write: the file's lines, looked through from the start.
std::string LookUp(const wchar_t* file, const char* section, const char* key) {
  std::FILE* const from = ::_wfopen(file, L"rt");
  const std::string heading = std::string("[") + section + "]\n", start = std::string(key) + "=";
  std::string value;
  char line[512];
  for (bool inside = false; std::fgets(line, sizeof line, from);) {
    if (line[0] == '[') {
      inside = heading == line;
    } else if (inside && start.compare(0, start.size(), line, start.size()) == 0) {
      value = line + start.size();
      while (!value.empty() && value.back() == '\n') value.pop_back();
      break;
    }
  }
  std::fclose(from);
  return value;
}

void Replace(const wchar_t* file, const char* key, const std::string& value) {
  const std::string start = std::string(key) + "=";
  std::vector<std::string> lines;
  char line[512];
  std::FILE* const from = ::_wfopen(file, L"rt");
  while (std::fgets(line, sizeof line, from)) {
    lines.push_back(start.compare(0, start.size(), line, start.size()) == 0 ? start + value + "\n" : line);
  }
  std::fclose(from);
  std::FILE* const to = ::_wfopen(file, L"wt");
  for (const std::string& one : lines) std::fputs(one.c_str(), to);
  std::fclose(to);
}

// A file of `keys` numbers, with three kinds of text at its end.
class File {
 public:
  explicit File(std::size_t keys)
      : path_(Folder() + L"settings.ini"), last_("Key" + std::to_string(keys - 1)) {
    std::FILE* const to = ::_wfopen(path_.c_str(), L"wt");
    std::fputs("[Section]\n", to);
    for (std::size_t i = 0; i < keys; ++i) std::fprintf(to, "Key%u=1234\n", static_cast<unsigned>(i));
    std::fputs(
        "Real=1.5000000000\nText=plain text\nName=L\xE4nge ?\nName_utf8=L\xC3\xA4nge \xE2\x82\xAC\n"
        "Old=Hello\nOld_UC=48 65 6C 6C 6F\n",
        to);
    std::fclose(to);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { ::DeleteFileW(path_.c_str()); }

  const wchar_t* Path() const { return path_.c_str(); }
  std::string PlainPath() const { return {path_.begin(), path_.end()}; }
  std::string Last() const { return last_; }
  std::wstring WideLast() const { return {last_.begin(), last_.end()}; }

 private:
  std::wstring path_;
  std::string last_;
};

// The locale of numbers is English for the length of one conversion.
class English {
 public:
  English() : kept_(::_wsetlocale(LC_NUMERIC, nullptr)) { ::_wsetlocale(LC_NUMERIC, L"english"); }
  English(const English&) = delete;
  English& operator=(const English&) = delete;
  ~English() { ::_wsetlocale(LC_NUMERIC, kept_.c_str()); }

 private:
  std::wstring kept_;
};

void Numbers(const File& file, std::size_t keys, bool all) {
  const wchar_t* const path = file.Path();
  const std::wstring wideKey = file.WideLast();
  const wchar_t* const key = wideKey.c_str();
  const std::string narrowKey = file.Last(), plainPath = file.PlainPath();
  const auto bareText = [=](const wchar_t* of, wchar_t* text) {
    std::memset(text, 0, 256 * sizeof(wchar_t));
    ::GetPrivateProfileStringW(L"Section", of, L"", text, 256, path);
  };
  const auto readInt = BENCH_EXPORT(ZERA_TOOLS_READ_INT_UC);
  Measure("Settings", "read a number", keys,
          Calls([=] { sink = readInt(L"Section", key, path, 0, 0, 10'000); }), Calls([=] {
            wchar_t text[256];
            bareText(key, text);
            sink = ::_wtoi(text);
          }),
          Calls([=] { sink = std::atoi(LookUp(path, "Section", narrowKey.c_str()).c_str()); }));
  const auto writeInt = BENCH_EXPORT(ZERA_TOOLS_WRITE_INT_UC);
  int value = 0;
  Measure("Settings", "write a number", keys,
          Calls([=]() mutable { writeInt(L"Section", key, path, ++value); }), Calls([=]() mutable {
            wchar_t text[32];
            ::_snwprintf(text, 32, L"%i", ++value);
            ::WritePrivateProfileStringW(L"Section", key, text, path);
          }),
          Calls([=]() mutable { Replace(path, narrowKey.c_str(), std::to_string(++value)); }));
  if (!all) return;
  const auto readUnsigned = BENCH_EXPORT(ZERA_TOOLS_READ_UINT_UC);
  Measure(
      "Settings", "read an unsigned number", keys,
      Calls([=] { sink = readUnsigned(L"Section", key, path, 0, 0, 10'000); }), Calls([=] {
        wchar_t text[256];
        bareText(key, text);
        sink = std::wcstoul(text, nullptr, 10);
      }),
      Calls([=] { sink = std::strtoul(LookUp(path, "Section", narrowKey.c_str()).c_str(), nullptr, 10); }));
  const auto readDouble = BENCH_EXPORT(ZERA_TOOLS_READ_DOUBLE_UC);
  Measure("Settings", "read a floating-point number", keys,
          Calls([=] { sink = static_cast<long long>(readDouble(L"Section", L"Real", path, 0, 0, 10)); }),
          Calls([=] {
            wchar_t text[256];
            bareText(L"Real", text);
            const English english;
            sink = static_cast<long long>(::_wtof(text));
          }),
          Calls([=] { sink = static_cast<long long>(std::atof(LookUp(path, "Section", "Real").c_str())); }));
  const auto writeDouble = BENCH_EXPORT(ZERA_TOOLS_WRITE_DOUBLE_UC);
  double real = 0;
  Measure("Settings", "write a floating-point number", keys,
          Calls([=]() mutable { writeDouble(L"Section", L"Real", path, ++real); }), Calls([=]() mutable {
            wchar_t text[64];
            {
              const English english;
              ::_snwprintf(text, 64, L"%.10f", ++real);
            }
            ::WritePrivateProfileStringW(L"Section", L"Real", text, path);
          }),
          Calls([=]() mutable { Replace(path, "Real", std::to_string(++real)); }));
  const auto plainInt = BENCH_EXPORT(ZERA_TOOLS_READ_INT);
  Measure("Settings", "read a number (plain)", keys,
          Calls([=] { sink = plainInt("Section", narrowKey.c_str(), plainPath.c_str(), 0, 0, 10'000); }),
          Calls([=] {
            char text[256] = {};
            ::GetPrivateProfileStringA("Section", narrowKey.c_str(), "", text, 256, plainPath.c_str());
            sink = std::atoi(text);
          }),
          Calls([=] { sink = std::atoi(LookUp(path, "Section", narrowKey.c_str()).c_str()); }));
}

// One look for a companion, in ten times the room of the text.
DWORD Companion(const wchar_t* key, const wchar_t* suffix, std::vector<wchar_t>& scratch,
                const wchar_t* path) {
  const std::wstring name = std::wstring(key) + suffix;
  return ::GetPrivateProfileStringW(L"Section", name.c_str(), nullptr, scratch.data(),
                                    static_cast<DWORD>(scratch.size()), path);
}

void ReadTexts(const File& file, std::size_t keys) {
  constexpr DWORD kCapacity = 128;
  const wchar_t* const path = file.Path();
  const auto read = BENCH_EXPORT(ZERA_TOOLS_READ_STRING_UC);
  const auto ours = [=](const wchar_t* key) {
    return Calls([=] {
      wchar_t text[kCapacity];
      read(L"Section", key, path, L"", text, kCapacity);
      sink = text[0];
    });
  };
  const auto byLines = [=](const char* key) {
    return Calls([=] { sink = static_cast<long long>(LookUp(path, "Section", key).size()); });
  };
  Measure("Settings", "read a text", keys, ours(L"Text"), Calls([=] {
            wchar_t text[kCapacity];
            std::vector<wchar_t> scratch(10 * kCapacity), second(10 * kCapacity);
            if (!Companion(L"Text", L"_utf8", scratch, path) && !Companion(L"Text", L"_UC", second, path)) {
              ::GetPrivateProfileStringW(L"Section", L"Text", L"", text, kCapacity, path);
            }
            sink = text[0];
          }),
          byLines("Text"));
  Measure("Settings", "read a text with UTF-8 companion", keys, ours(L"Name"), Calls([=] {
            wchar_t text[kCapacity];
            char bytes[10 * kCapacity];
            std::vector<wchar_t> scratch(10 * kCapacity);
            Companion(L"Name", L"_utf8", scratch, path);
            ::WideCharToMultiByte(CP_ACP, 0, scratch.data(), -1, nullptr, 0, nullptr, nullptr);
            ::WideCharToMultiByte(CP_ACP, 0, scratch.data(), -1, bytes, sizeof bytes, nullptr, nullptr);
            ::MultiByteToWideChar(CP_UTF8, 0, bytes, -1, nullptr, 0);
            sink = ::MultiByteToWideChar(CP_UTF8, 0, bytes, -1, text, kCapacity);
          }),
          byLines("Name_utf8"));
  Measure("Settings", "read a text with hexadecimal companion", keys, ours(L"Old"), Calls([=] {
            wchar_t text[kCapacity];
            text[0] = 0;
            std::vector<wchar_t> scratch(10 * kCapacity), second(10 * kCapacity);
            if (!Companion(L"Old", L"_utf8", scratch, path) && Companion(L"Old", L"_UC", second, path)) {
              wchar_t* out = text;
              for (const wchar_t* piece = second.data(); *piece;) {
                wchar_t* end;
                *out++ = static_cast<wchar_t>(std::wcstoul(piece, &end, 16));
                piece = *end ? end + 1 : end;
              }
              *out = 0;
            }
            sink = text[0];
          }),
          byLines("Old_UC"));
}

void WriteTexts(const File& file, std::size_t keys) {
  const wchar_t* const path = file.Path();
  const auto write = BENCH_EXPORT(ZERA_TOOLS_WRITE_STRING_UC);
  const auto present = [=](const wchar_t* name) {
    wchar_t text[256] = {};
    return ::GetPrivateProfileStringW(L"Section", name, nullptr, text, 256, path) != 0;
  };
  int turn = 0;
  // Another value each time: the platform may leave out what changes nothing.
  Measure(
      "Settings", "write a text", keys,
      Calls([=]() mutable { write(L"Section", L"Text", path, ++turn % 2 ? L"plain text" : L"other text"); }),
      Calls([=]() mutable {
        ::WritePrivateProfileStringW(L"Section", L"Text", ++turn % 2 ? L"plain text" : L"other text", path);
        sink = present(L"Text_utf8") + present(L"Text_UC");
      }),
      Calls([=]() mutable { Replace(path, "Text", ++turn % 2 ? "plain text" : "other text"); }));
  Measure("Settings", "write a text with companion", keys, Calls([=]() mutable {
            write(L"Section", L"Name", path, ++turn % 2 ? L"L\u00E4nge \u20AC" : L"Gr\u00F6\u00DFe \u20AC");
          }),
          Calls([=]() mutable {
            const wchar_t* const value = ++turn % 2 ? L"L\u00E4nge \u20AC" : L"Gr\u00F6\u00DFe \u20AC";
            ::WritePrivateProfileStringW(L"Section", L"Name", value, path);
            char bytes[64];
            wchar_t back[64];
            ::WideCharToMultiByte(CP_UTF8, 0, value, -1, nullptr, 0, nullptr, nullptr);
            ::WideCharToMultiByte(CP_UTF8, 0, value, -1, bytes, 64, nullptr, nullptr);
            ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, nullptr, 0);
            ::MultiByteToWideChar(CP_ACP, 0, bytes, -1, back, 64);
            ::WritePrivateProfileStringW(L"Section", L"Name_utf8", back, path);
            sink = present(L"Name_UC");
          }),
          Calls([=]() mutable {
            Replace(path, "Name_utf8",
                    ++turn % 2 ? "L\xC3\xA4nge \xE2\x82\xAC"
                               : "Gr\xC3\xB6\xC3\x9F"
                                 "e \xE2\x82\xAC");
          }));
}

}  // namespace

void Settings() {
  constexpr std::size_t kKeys = 50;
  const File file(kKeys);
  Numbers(file, kKeys, true);
  ReadTexts(file, kKeys);
  WriteTexts(file, kKeys);
}

void SettingsGrowth() {
  for (const std::size_t keys : Sizes(10, 10, 100, 1'000, 10'000)) {
    const File file(keys);
    Numbers(file, keys, false);
    ReadTexts(file, keys);
  }
}

}  // namespace bench
