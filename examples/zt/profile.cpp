// SPDX-License-Identifier: MIT
// zt profile: values in settings files.
#include <ZERATools.h>

#include <cfloat>
#include <cstdio>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "settings.h"

namespace zt {
namespace {

// What the commands of each type of number differ in.
struct Int {
  using Value = int;
  static Value Parse(const Arguments& arguments, std::size_t at) {
    return static_cast<Value>(arguments.Integer(at, INT_MIN, INT_MAX));
  }
  static constexpr Value least = INT_MIN, most = INT_MAX;
  static auto Read() { return ZERA_TOOLS_READ_INT_UC; }
  static auto Write() { return ZERA_TOOLS_WRITE_INT_UC; }
};

struct Uint {
  using Value = unsigned int;
  static Value Parse(const Arguments& arguments, std::size_t at) {
    return static_cast<Value>(arguments.Integer(at, 0, UINT_MAX));
  }
  static constexpr Value least = 0, most = UINT_MAX;
  static auto Read() { return ZERA_TOOLS_READ_UINT_UC; }
  static auto Write() { return ZERA_TOOLS_WRITE_UINT_UC; }
};

struct Word {
  using Value = WORD;
  static Value Parse(const Arguments& arguments, std::size_t at) {
    return static_cast<Value>(arguments.Integer(at, 0, 65535));
  }
  static constexpr Value least = 0, most = 65535;
  static auto Read() { return ZERA_TOOLS_READ_WORD_UC; }
  static auto Write() { return ZERA_TOOLS_WRITE_WORD_UC; }
};

struct Double {
  using Value = double;
  static Value Parse(const Arguments& arguments, std::size_t at) {
    return arguments.Number(at, largestStored);
  }
  static constexpr Value least = -DBL_MAX, most = DBL_MAX;
  static auto Read() { return ZERA_TOOLS_READ_DOUBLE_UC; }
  static auto Write() { return ZERA_TOOLS_WRITE_DOUBLE_UC; }
};

struct Float {
  using Value = float;
  static Value Parse(const Arguments& arguments, std::size_t at) {
    return static_cast<Value>(arguments.Number(at, static_cast<double>(FLT_MAX)));
  }
  static constexpr Value least = -FLT_MAX, most = FLT_MAX;
  static auto Read() { return ZERA_TOOLS_READ_FLOAT_UC; }
  static auto Write() { return ZERA_TOOLS_WRITE_FLOAT_UC; }
};

template <class Value>
std::wstring Shown(Value value) {
  return std::to_wstring(static_cast<std::int64_t>(value));
}

// As settings files hold them.
template <>
std::wstring Shown(double value) {
  wchar_t text[DBL_MAX_10_EXP + 16];
  std::swprintf(text, std::size(text), L"%.10f", value);
  return text;
}

template <>
std::wstring Shown(float value) {
  return Shown(static_cast<double>(value));
}

template <class Type>
Exit GetNumber(const Arguments& arguments) {
  const Place place(arguments);
  const typename Type::Value fallback = Type::Parse(arguments, 3);
  typename Type::Value least = Type::least, most = Type::most;
  if (arguments.Count() == 5) arguments.Reject(4, L"needs a MAX behind it");
  if (arguments.Count() == 6) {
    least = Type::Parse(arguments, 4);
    most = Type::Parse(arguments, 5);
    if (least > most) arguments.Reject(4, L"is above MAX");
  }
  if (!CanRead(place.file)) return no;
  PrintLine(Shown(
      Type::Read()(place.section.c_str(), place.key.c_str(), place.file.c_str(), fallback, least, most)));
  return done;
}

template <class Type>
Exit SetNumber(const Arguments& arguments) {
  const Place place(arguments);
  const typename Type::Value value = Type::Parse(arguments, 3);
  if (Type::Write()(place.section.c_str(), place.key.c_str(), place.file.c_str(), value)) {
    Confirm(place.key + L"=" + Shown(value));
    return done;
  }
  Complain(L"could not write " + place.file, WriteError(place.file));
  return no;
}

Exit GetString(const Arguments& arguments) {
  const Place place(arguments);
  const std::wstring fallback = arguments.Count() > 3 ? arguments.Text(3) : L"";
  if (!CanRead(place.file)) return no;
  const std::wstring text = ReadText(place, fallback);
  if (text.empty() && fallback.empty()) {
    ComplainOfNoValue(place);
    return no;
  }
  PrintLine(text);
  return done;
}

Exit SetString(const Arguments& arguments) {
  const Place place(arguments);
  const std::wstring& value = arguments.Line(3);
  if (!WriteText(place, value)) return no;
  Confirm(place.key + L"=" + value);
  return done;
}

Exit Remove(const Arguments& arguments) {
  const Place place(arguments);
  if (!CanRead(place.file)) return no;
  if (!HasKey(place) && ReadText(place, L"").empty()) {
    Confirm(L"there was no " + place.key);
    return done;
  }
  // Always 1; without a value no key is left, and its companions are emptied.
  ZERA_TOOLS_WRITE_STRING_UC(place.section.c_str(), place.key.c_str(), place.file.c_str(), nullptr);
  if (HasKey(place) || !ReadText(place, L"").empty()) {
    Complain(L"could not write " + place.file, WriteError(place.file));
    return no;
  }
  Confirm(L"removed " + place.key);
  return done;
}

const Command commands[] = {
    {L"get-string", L"FILE SECTION KEY [DEFAULT]", L"Reads a text",
     L"Without a value and without a DEFAULT, the exit code is 1. So it is, whatever the DEFAULT, if the "
     L"file is there but cannot be read.\n",
     L"zt profile get-string C:\\data\\view.ini View Title\nOverview", L"ZERA_TOOLS_READ_STRING_UC",
     GetString},
    {L"get-int", L"FILE SECTION KEY DEFAULT [MIN MAX]", L"Reads a signed whole number",
     L"From -2147483648 to 2147483647. A value outside MIN to MAX becomes the nearer of the two;\n"
     L"without a value, DEFAULT is shown as it is.\n",
     L"zt profile get-int C:\\data\\view.ini View Offset 0 -10 10\n-3", L"ZERA_TOOLS_READ_INT_UC",
     GetNumber<Int>},
    {L"get-uint", L"FILE SECTION KEY DEFAULT [MIN MAX]", L"Reads an unsigned whole number",
     L"From 0 to 4294967295, otherwise as get-int.\n",
     L"zt profile get-uint C:\\data\\view.ini View Count 0\n12", L"ZERA_TOOLS_READ_UINT_UC", GetNumber<Uint>},
    {L"get-word", L"FILE SECTION KEY DEFAULT [MIN MAX]", L"Reads an unsigned 16-bit number",
     L"From 0 to 65535, otherwise as get-int.\n",
     L"zt profile get-word C:\\data\\view.ini Net Port 8080 1024 65535\n9000", L"ZERA_TOOLS_READ_WORD_UC",
     GetNumber<Word>},
    {L"get-double", L"FILE SECTION KEY DEFAULT [MIN MAX]", L"Reads a decimal number",
     L"Numbers have a point, whatever the user's locale; otherwise as get-int.\n",
     L"zt profile get-double C:\\data\\view.ini View Scale 1 0.1 10\n1.5000000000",
     L"ZERA_TOOLS_READ_DOUBLE_UC", GetNumber<Double>},
    {L"get-float", L"FILE SECTION KEY DEFAULT [MIN MAX]", L"Reads a decimal number of single precision",
     L"As get-double.\n", L"zt profile get-float C:\\data\\view.ini View Scale 1\n1.5000000000",
     L"ZERA_TOOLS_READ_FLOAT_UC", GetNumber<Float>},
    {L"set-string", L"FILE SECTION KEY VALUE", L"Writes a text",
     L"A text outside ASCII also gets a key KEY_utf8 beside KEY, so that nothing is lost. The\n"
     L"value is read back, since the library does not report whether it was written.\n",
     L"zt profile set-string C:\\data\\view.ini View Title Overview\nTitle=Overview",
     L"ZERA_TOOLS_WRITE_STRING_UC, ZERA_TOOLS_READ_STRING_UC", SetString},
    {L"set-int", L"FILE SECTION KEY VALUE", L"Writes a signed whole number",
     L"VALUE from -2147483648 to 2147483647.\n",
     L"zt profile set-int C:\\data\\view.ini View Offset -3\nOffset=-3", L"ZERA_TOOLS_WRITE_INT_UC",
     SetNumber<Int>},
    {L"set-uint", L"FILE SECTION KEY VALUE", L"Writes an unsigned whole number",
     L"VALUE from 0 to 4294967295.\n", L"zt profile set-uint C:\\data\\view.ini View Count 12\nCount=12",
     L"ZERA_TOOLS_WRITE_UINT_UC", SetNumber<Uint>},
    {L"set-word", L"FILE SECTION KEY VALUE", L"Writes an unsigned 16-bit number", L"VALUE from 0 to 65535.\n",
     L"zt profile set-word C:\\data\\view.ini Net Port 9000\nPort=9000", L"ZERA_TOOLS_WRITE_WORD_UC",
     SetNumber<Word>},
    {L"set-double", L"FILE SECTION KEY VALUE", L"Writes a decimal number, with ten decimals",
     L"VALUE with a point.\n", L"zt profile set-double C:\\data\\view.ini View Scale 1.5\nScale=1.5000000000",
     L"ZERA_TOOLS_WRITE_DOUBLE_UC", SetNumber<Double>},
    {L"set-float", L"FILE SECTION KEY VALUE", L"Writes a decimal number of single precision",
     L"As set-double.\n", L"zt profile set-float C:\\data\\view.ini View Scale 1.5\nScale=1.5000000000",
     L"ZERA_TOOLS_WRITE_FLOAT_UC", SetNumber<Float>},
    {L"remove", L"FILE SECTION KEY", L"Removes a key",
     L"Its companions KEY_utf8 and KEY_UC are emptied, not removed.\n",
     L"zt profile remove C:\\data\\view.ini View Title\nremoved Title", L"ZERA_TOOLS_WRITE_STRING_UC",
     Remove},
    {L"text", L"[--overwrite] FILE ITEM...", L"Writes a whole settings file in one piece",
     L"Each ITEM is a line: [SECTION], or KEY=VALUE for a text, or KEY:TYPE=VALUE with int, uint,\n"
     L"double or float for a number. The first is a section. --overwrite replaces a file that\n"
     L"exists.\n",
     L"zt profile text D:\\view.ini [View] Title=Plan Zoom:int=150 Scale:double=1.5\n"
     L"wrote 49 bytes to D:\\view.ini",
     L"ZERA_TOOLS_BUFWRITE_SECTION_UC, ..._STRING_UC, ..._INT_UC, ..._UINT_UC, ..._DOUBLE_UC,\n"
     L"..._FLOAT_UC, ZERA_TOOLS_FILE_FROM_BUFFER_UC",
     WriteSettingsText},
};

}  // namespace

const Group profileGroup = {
    L"profile", L"Values in settings files, and a settings file's text in one piece",
    L"FILE is created when something is written; its folder must exist. An empty value counts as\n"
    L"missing.\n",
    commands};

}  // namespace zt
