// SPDX-License-Identifier: MIT
#include "arguments.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "groups.h"
#include "suggest.h"

namespace zt {
namespace {

bool IsDigit(wchar_t one) {
  return one >= L'0' && one <= L'9';
}

int HexDigit(wchar_t one) {
  if (IsDigit(one)) return one - L'0';
  if (one >= L'A' && one <= L'F') return one - L'A' + 10;
  if (one >= L'a' && one <= L'f') return one - L'a' + 10;
  return -1;
}

// The words of a command's list of arguments, with the marks that say how often each may come.
struct Signature {
  std::vector<std::wstring> names, options;
  std::size_t least = 0;
  bool repeated = false;

  explicit Signature(std::wstring_view list) {
    bool optional = false;
    while (!list.empty()) {
      const std::size_t end = std::min(list.find(L' '), list.size());
      std::wstring word(list.substr(0, end));
      list.remove_prefix(std::min(end + 1, list.size()));
      if (word.starts_with(L'[')) optional = true;
      const bool closes = word.ends_with(L']');
      std::erase_if(word, [](wchar_t one) { return one == L'[' || one == L']'; });
      if (word.ends_with(L"...")) {
        repeated = true;
        word.resize(word.size() - 3);
      }
      if (word.starts_with(L"--")) {
        options.push_back(word);
      } else {
        names.push_back(word);
        if (!optional) ++least;
      }
      if (closes) optional = false;
    }
  }
};

}  // namespace

bool IsOption(std::wstring_view text) {
  if (text.starts_with(L"--")) return text.size() > 2;
  const wchar_t letter = text.size() > 1 && text[0] == L'-' ? static_cast<wchar_t>(text[1] | 0x20) : L' ';
  return letter >= L'a' && letter <= L'z';
}

std::wstring OptionName(std::wstring_view text) {
  return (text.starts_with(L"--") ? L"" : L"-") + std::wstring(text);
}

std::vector<std::wstring> OptionsOf(const Command& command) {
  return Signature(command.arguments).options;
}

Arguments::Arguments(const Command& command, std::span<const std::wstring> given) {
  const Signature signature(command.arguments);
  names_ = signature.names;
  bool optionsMayCome = true;
  for (const std::wstring& text : given) {
    if (optionsMayCome && text == L"--") {
      optionsMayCome = false;
    } else if (optionsMayCome && IsOption(text)) {
      const std::wstring option = OptionName(text);
      if (std::ranges::find(signature.options, option) == signature.options.end()) {
        std::vector<std::wstring> known = signature.options;
        known.insert(known.end(), std::begin(commonOptions), std::end(commonOptions));
        throw BadInput{L"there is no option " + text + L" here (a text that begins so goes behind --)" +
                       DidYouMean(option, known)};
      }
      options_.push_back(option);
    } else {
      texts_.push_back(text);
    }
  }
  if (texts_.size() < signature.least) {
    std::wstring why = names_[texts_.size()] + L" is missing";
    // "C:\my logs\" gives a quotation mark where the user meant the end of the argument.
    if (std::ranges::any_of(texts_, [](const std::wstring& text) { return text.find(L'"') != text.npos; })) {
      why += L"; an argument holds a quotation mark: inside quotes a final backslash is written twice";
    }
    throw BadInput{why};
  }
  if (texts_.size() > names_.size() && !signature.repeated) {
    throw BadInput{L"too many arguments, from \"" + texts_[names_.size()] +
                   L"\" on (a text with blanks goes in quotes)"};
  }
}

bool Arguments::Has(std::wstring_view option) const {
  return std::ranges::find(options_, option) != options_.end();
}

void Arguments::Reject(std::size_t at, std::wstring_view why) const {
  throw BadInput{names_[std::min(at, names_.size() - 1)] + L" \"" + texts_[at] + L"\" " + std::wstring(why)};
}

const std::wstring& Arguments::Line(std::size_t at) const {
  const std::wstring& text = texts_[at];
  if (text.empty()) Reject(at, L"is empty");
  if (text.find_first_of(L"\r\n") != text.npos) Reject(at, L"holds a line break");
  return text;
}

const std::wstring& Arguments::PathText(std::size_t at) const {
  const PathParts parts = Measure(texts_[at]);
  if (parts.directory > longestPart) Reject(at, L"has a directory of more than 255 characters");
  if (parts.name > longestPart) Reject(at, L"has a file name of more than 255 characters");
  if (parts.extension > longestPart) Reject(at, L"has an extension of more than 255 characters");
  return texts_[at];
}

const std::wstring& Arguments::Path(std::size_t at) const {
  const std::wstring& text = PathText(at);
  if (text.empty()) Reject(at, L"is empty");
  if (text.find_first_of(L"*?\"<>|") != text.npos)
    Reject(at, L"holds a character that no file name can have");
  for (const wchar_t one : text) {
    if (one < L' ') Reject(at, L"holds a control character");
  }
  if (text.size() >= MAX_PATH || Absolute(text).size() >= MAX_PATH) {
    Reject(at, L"is longer than the 259 characters of a path");
  }
  return text;
}

std::wstring Arguments::FullPath(std::size_t at) const {
  return Absolute(Path(at));
}

std::int64_t Arguments::Integer(std::size_t at, const std::wstring& text, std::int64_t least,
                                std::int64_t most) const {
  const std::wstring range =
      L"is not a whole number from " + std::to_wstring(least) + L" to " + std::to_wstring(most);
  const std::size_t first = text.starts_with(L'-') ? 1 : 0;
  // 18 digits are more than any argument needs and always fit.
  if (text.size() == first || text.size() > first + 18) Reject(at, range);
  std::int64_t value = 0;
  for (const wchar_t one : std::wstring_view(text).substr(first)) {
    if (!IsDigit(one)) Reject(at, range);
    value = value * 10 + (one - L'0');
  }
  if (first) value = -value;
  if (value < least || value > most) Reject(at, range);
  return value;
}

double Arguments::Number(std::size_t at, const std::wstring& text, double most) const {
  wchar_t* end = nullptr;
  const double value = std::wcstod(text.c_str(), &end);
  // The runtime also reads hexadecimal numbers, names of infinities, and blanks in front.
  if (text.empty() || text.find_first_not_of(L"0123456789.+-eE") != text.npos || *end ||
      !std::isfinite(value)) {
    Reject(at, L"is not a decimal number such as 2.5");
  }
  if (std::fabs(value) > most) Reject(at, L"is too large");
  return value;
}

std::string Arguments::Bytes(std::size_t at) const {
  const std::wstring& text = texts_[at];
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    if (text[i] == L' ' && i) ++i;
    const int high = i < text.size() ? HexDigit(text[i]) : -1;
    const int low = i + 1 < text.size() ? HexDigit(text[i + 1]) : -1;
    if (high < 0 || low < 0) Reject(at, L"is not made of pairs of hexadecimal digits such as C3 BC");
    if (high + low == 0) Reject(at, L"holds a zero byte, which would end the text");
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

PathParts Measure(std::wstring_view path) {
  if (path.size() >= 2 && path[1] == L':') path.remove_prefix(2);
  const std::size_t separator = path.find_last_of(L"\\/");
  const std::size_t directory = separator == path.npos ? 0 : separator + 1;
  path.remove_prefix(directory);
  const std::size_t period = std::min(path.rfind(L'.'), path.size());
  return {directory, period, path.size() - period};
}

bool SameFile(const std::wstring& first, const std::wstring& second) {
  BY_HANDLE_FILE_INFORMATION identity[2];
  const std::wstring* const paths[] = {&first, &second};
  for (int i = 0; i < 2; ++i) {
    const HANDLE file =
        ::CreateFileW(paths[i]->c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const BOOL known = ::GetFileInformationByHandle(file, &identity[i]);
    ::CloseHandle(file);
    if (!known) return false;
  }
  return identity[0].dwVolumeSerialNumber == identity[1].dwVolumeSerialNumber &&
         identity[0].nFileIndexHigh == identity[1].nFileIndexHigh &&
         identity[0].nFileIndexLow == identity[1].nFileIndexLow;
}

std::wstring Absolute(const std::wstring& path) {
  std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace zt
