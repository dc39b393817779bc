// SPDX-License-Identifier: MIT
// zt profile text: a whole settings file in one piece.
#include <ZERATools.h>

#include <cfloat>
#include <cmath>
#include <optional>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "settings.h"

namespace zt {
namespace {

// The text so far; every line finds room, so none of them can fail.
class Text {
 public:
  template <class Write, class... Value>
  void Add(Write write, const std::wstring& name, std::size_t length, Value... value) {
    // Key and value, each twice for the UTF-8 companion, in which one unit takes up to three places;
    // a number has up to 320 places.
    buffer_.resize(used_ + 4 * (name.size() + length) + 400);
    std::size_t count = 0;
    write(name.c_str(), buffer_.data() + used_, buffer_.size() - used_, value..., &count);
    used_ += count;
  }
  std::wstring Take() {
    buffer_.resize(used_);
    return std::move(buffer_);
  }

 private:
  std::wstring buffer_;
  std::size_t used_ = 0;
};

// "KEY:TYPE=VALUE" for one argument; numbers are checked as single arguments are.
void AddItem(Text& text, const Arguments& arguments, std::size_t at) {
  const std::wstring& item = arguments.Line(at);
  if (item.starts_with(L'[') && item.ends_with(L']')) {
    const std::wstring section = item.substr(1, item.size() - 2);
    CheckSection(arguments, at, section);
    text.Add(ZERA_TOOLS_BUFWRITE_SECTION_UC, section, 0);
    return;
  }
  const std::size_t equals = item.find(L'=');
  if (equals == item.npos) arguments.Reject(at, L"is neither [SECTION] nor KEY=VALUE");
  if (at == 1) arguments.Reject(at, L"stands before the first [SECTION]");
  std::wstring key = item.substr(0, equals);
  const std::wstring value = item.substr(equals + 1);
  const std::size_t colon = key.rfind(L':');
  const std::wstring type = colon == key.npos ? L"string" : key.substr(colon + 1);
  key = key.substr(0, colon);
  CheckKey(arguments, at, key);
  if (type == L"string") {
    text.Add(ZERA_TOOLS_BUFWRITE_STRING_UC, key, value.size(), value.c_str());
  } else if (type == L"int") {
    text.Add(ZERA_TOOLS_BUFWRITE_INT_UC, key, 0,
             static_cast<int>(arguments.Integer(at, value, INT_MIN, INT_MAX)));
  } else if (type == L"uint") {
    text.Add(ZERA_TOOLS_BUFWRITE_UINT_UC, key, 0,
             static_cast<unsigned int>(arguments.Integer(at, value, 0, UINT_MAX)));
  } else if (type == L"double") {
    text.Add(ZERA_TOOLS_BUFWRITE_DOUBLE_UC, key, 0, arguments.Number(at, value, largestStored));
  } else if (type == L"float") {
    text.Add(ZERA_TOOLS_BUFWRITE_FLOAT_UC, key, 0,
             static_cast<float>(arguments.Number(at, value, static_cast<double>(FLT_MAX))));
  } else {
    arguments.Reject(at, L"has a type other than string, int, uint, double and float");
  }
}

}  // namespace

Exit WriteSettingsText(const Arguments& arguments) {
  const std::wstring file = arguments.FullPath(0);
  Text text;
  for (std::size_t at = 1; at < arguments.Count(); ++at) AddItem(text, arguments, at);
  if (!arguments.Has(L"--overwrite") && ZERA_TOOLS_FILE_EXIST_UC(file.c_str())) {
    Complain(file + L" is already there; --overwrite replaces it");
    return no;
  }
  // Settings files are in the code page; the companion lines hold what that cannot.
  const CStringA bytes(text.Take().c_str());
  if (!ZERA_TOOLS_FILE_FROM_BUFFER_UC(file.c_str(), reinterpret_cast<const unsigned char*>(bytes.GetString()),
                                      static_cast<unsigned>(bytes.GetLength()))) {
    Complain(L"could not write " + file, WriteError(file));
    return no;
  }
  Confirm(L"wrote " + std::to_wstring(bytes.GetLength()) + L" bytes to " + file);
  return done;
}

}  // namespace zt
