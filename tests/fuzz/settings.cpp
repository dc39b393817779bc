// SPDX-License-Identifier: MIT
// Settings: the companions of a text key, the lines of a file in a caller's buffer, numbers and their limits.
#include "Fuzz.h"
#include "profile/Lines.h"
#include "profile/Numbers.h"
#include "profile/Read.h"

namespace {

using fuzz::String;
using Wide = String<wchar_t>;

template <class Char>
String<Char> Of(const char* ascii) {
  return String<Char>(ascii, ascii + std::strlen(ascii));
}

// A value's UTF-8 bytes as the code page shows them, and the way back.
Wide ToCompanion(const Wide& value) {
  std::vector<char> bytes(value.size() * 4 + 1);
  ::WideCharToMultiByte(CP_UTF8, 0, value.c_str(), -1, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
  std::vector<wchar_t> shown(bytes.size() + 1);
  ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), -1, shown.data(), static_cast<int>(shown.size()));
  return shown.data();
}
Wide FromCompanion(const Wide& stored) {
  std::vector<char> bytes(stored.size() * 2 + 1);
  ::WideCharToMultiByte(CP_ACP, 0, stored.c_str(), -1, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
  std::vector<wchar_t> text(bytes.size() + 1);
  ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), -1, text.data(), static_cast<int>(text.size()));
  return text.data();
}
Wide FromHexCompanion(const Wide& stored) {
  Wide text;
  Wide rest = stored;
  while (!rest.empty() && rest[0] != ' ') {
    const std::size_t blank = rest.find(wchar_t(' '));
    const Wide piece = rest.substr(0, blank);
    unsigned number = 0;
    const wchar_t format[] = {'%', 'X', 0};
    const int values = ::_snwscanf(piece.c_str(), piece.size(), format, &number);
    text += values == 1 ? static_cast<wchar_t>(number) : 0;
    rest = blank == Wide::npos ? Wide() : rest.substr(blank + 1);
  }
  return text;
}

const Wide kKey = Of<wchar_t>("key");

void Companions(fuzz::Input& input) {
  platform::state.doubleByte = input.Bit();
  const std::size_t capacity = input.Byte() % 80;
  const unsigned char present = input.Byte();
  const Wide utf8 = input.Text<wchar_t>();
  const Wide hex = input.Text<wchar_t>();
  const Wide plain = input.Text<wchar_t>();
  const Wide instead = input.Text<wchar_t>();
  if (present & 1) platform::state.settings.push_back({kKey + Of<wchar_t>("_utf8"), utf8});
  if (present & 2) platform::state.settings.push_back({kKey + Of<wchar_t>("_UC"), hex});
  if (present & 4) platform::state.settings.push_back({kKey, plain});

  fuzz::Buffer<wchar_t> out(capacity);
  fuzz::Buffer<wchar_t> section(Of<wchar_t>("section"));
  fuzz::Buffer<wchar_t> key(kKey);
  fuzz::Buffer<wchar_t> defaultText(instead);
  profile::ReadString(section.data(), key.data(), section.data(), defaultText.data(), out.data(), capacity);
  CHECK(out.GuardsAreWhole());
  CHECK(platform::state.invalidParameters == (capacity == 0 ? 1 : 0));
  if (capacity == 0) return;

  // The platform cuts what it reads into ten times the buffer.
  const auto cut = [](const Wide& text, std::size_t size) { return text.substr(0, size - 1); };
  const auto whole = [&](const Wide& text) { return text.size() < capacity ? text : Wide(); };
  Wide expected;
  if ((present & 1) && !utf8.empty()) {
    expected = whole(FromCompanion(cut(utf8, capacity * 10)));
  } else if ((present & 2) && !hex.empty()) {
    // Whether it fits counts what lies behind a NUL; what is stored ends there.
    expected = whole(FromHexCompanion(cut(hex, capacity * 10))).c_str();
  } else {
    expected = cut((present & 4) ? plain : instead, capacity);
    if (expected.empty() && instead.size() < capacity) expected = instead;
  }
  CHECK(Wide(out.data()) == expected);
}

// What a value becomes in a file is what comes back from it, if the code page carries all bytes.
void CompanionsReturn(fuzz::Input& input) {
  const Wide value = input.Text<wchar_t>();
  const Wide stored(profile::ToUtf8Companion(value.c_str()).GetString());
  CHECK(stored == ToCompanion(value));
  CHECK(profile::Differs(CStringW(stored.c_str()), value.c_str()) == (stored != value));
  bool paired = true;
  bool ascii = true;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const unsigned unit = std::uint16_t(value[i]);
    ascii = ascii && unit < 0x80;
    if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < value.size() && (value[i + 1] & 0xFC00) == 0xDC00) {
      ++i;
    } else if (unit >= 0xD800 && unit < 0xE000) {
      paired = false;
    }
  }
  CHECK((stored == value) == ascii);
  if (paired) CHECK(Wide(profile::FromUtf8Companion(stored.c_str()).GetString()) == value);
}

// --------------------------------------------------------------------------------------------------
// Lines

template <class Char>
struct Line {
  fuzz::Buffer<Char> out;
  std::size_t count = 4711;

  explicit Line(std::size_t room) : out(room) {}
  void Expect(const String<Char>& line, int result, bool countsZero) {
    const bool fits = line.size() < out.capacity();
    CHECK(result == (fits ? 1 : 0));
    CHECK(count == (fits ? line.size() : countsZero ? 0 : 4711));
    CHECK(out.GuardsAreWhole());
    CHECK(fits ? std::memcmp(out.data(), line.c_str(), (line.size() + 1) * sizeof(Char)) == 0
               : out.Untouched());
    CHECK(platform::state.invalidParameters == 0);
  }
};

template <class Char>
void Lines(fuzz::Input& input) {
  const unsigned char what = input.Byte();
  std::size_t room = input.Byte();
  const auto bits = input.Raw<std::uint32_t>();
  const auto real = input.Raw<double>();
  const String<Char> key = input.Text<Char>();
  const String<Char> value = input.Text<Char>();
  // Near the line's length, where it matters.
  const auto near = [&](std::size_t length) {
    return what & 0x80 ? length + room % 4 - (length > 1 ? 2 : 0) : room;
  };
  const String<Char> equals = Of<Char>("=");
  const String<Char> feed = Of<Char>("\n");
  char number[400];
  fuzz::Buffer<Char> keyText(key);
  fuzz::Buffer<Char> valueText(value);
  switch (what % 5) {
    case 0: {
      const String<Char> text = Of<Char>("[") + key + Of<Char>("]\n");
      Line<Char> line(near(text.size()));
      line.Expect(text,
                  profile::BufferSection(keyText.data(), line.out.data(), line.out.capacity(), &line.count),
                  true);
      break;
    }
    case 1: {
      const String<Char> text = key + equals + value + feed;
      Line<Char> line(near(text.size()));
      line.Expect(text,
                  profile::BufferText(keyText.data(), line.out.data(), line.out.capacity(), valueText.data(),
                                      &line.count),
                  true);
      break;
    }
    case 2: {
      std::snprintf(number, sizeof number, "%i", static_cast<int>(bits));
      const String<Char> text = key + equals + Of<Char>(number) + feed;
      Line<Char> line(near(text.size()));
      line.Expect(text,
                  profile::BufferWhole(keyText.data(), line.out.data(), line.out.capacity(),
                                       static_cast<int>(bits), &line.count),
                  false);
      break;
    }
    case 3: {
      std::snprintf(number, sizeof number, "%u", bits);
      const String<Char> text = key + equals + Of<Char>(number) + feed;
      Line<Char> line(near(text.size()));
      line.Expect(
          text, profile::BufferWhole(keyText.data(), line.out.data(), line.out.capacity(), bits, &line.count),
          false);
      break;
    }
    default: {
      std::snprintf(number, sizeof number, "%.10f", real);
      const String<Char> text = key + equals + Of<Char>(number) + feed;
      Line<Char> line(near(text.size()));
      line.Expect(
          text,
          profile::BufferDouble(keyText.data(), line.out.data(), line.out.capacity(), real, &line.count),
          false);
    }
  }
}

void LinesWithCompanion(fuzz::Input& input) {
  platform::state.doubleByte = input.Bit();
  const unsigned char delta = input.Byte();
  const std::size_t any = input.Byte();
  const Wide key = input.Text<wchar_t>();
  const Wide value = input.Text<wchar_t>();
  const Wide equals = Of<wchar_t>("=");
  const Wide feed = Of<wchar_t>("\n");
  const Wide first = key + equals + value + feed;
  const Wide companion = ToCompanion(value);
  const Wide second = key + Of<wchar_t>("_utf8") + equals + companion + feed;
  // About the places where one line more fits.
  const std::size_t place = delta & 0x40 ? first.size() : first.size() + second.size();
  const std::size_t room = delta & 0x80 ? place + delta % 4 - 2 : any;

  fuzz::Buffer<wchar_t> out(room);
  fuzz::Buffer<wchar_t> keyText(key);
  fuzz::Buffer<wchar_t> valueText(value);
  std::size_t count = 4711;
  const int result =
      profile::BufferTextAndCompanion(keyText.data(), out.data(), room, valueText.data(), &count);
  CHECK(out.GuardsAreWhole());
  Wide expected;
  int expectedResult = 0;
  std::size_t expectedCount = 0;
  bool rejected = false;
  if (room > first.size()) {
    expected = first;
    expectedCount = first.size();
    const std::size_t rest = room - first.size();
    if (companion == value) {
      expectedResult = 1;
    } else if (rest >= second.size()) {
      expectedResult = 1;
      expectedCount += second.size();
      // With room for the line but not its terminator, the bounded copy leaves an empty text there.
      rejected = rest == second.size();
      if (!rejected) expected += second;
    }
  }
  CHECK(result == expectedResult);
  CHECK(count == expectedCount);
  CHECK(platform::state.invalidParameters == (rejected ? 1 : 0));
  if (room <= first.size()) {
    CHECK(out.Untouched());
  } else {
    CHECK(std::memcmp(out.data(), expected.c_str(), (expected.size() + 1) * sizeof(wchar_t)) == 0);
  }
}

// --------------------------------------------------------------------------------------------------
// Numbers

template <class Number>
Number Limited(Number value, Number least, Number most) {
  Number limited = value;
  if (value < least) {
    limited = least;
  } else if (value > most) {
    limited = most;
  }
  return limited;
}

// Bit for bit, for numbers that may be none.
template <class Number>
bool Same(Number a, Number b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

template <class Char>
void Numbers(fuzz::Input& input) {
  const unsigned char what = input.Byte();
  const bool missing = (what & 0xF0) == 0xF0;
  const Wide value = input.Text<wchar_t>();
  if (!missing) platform::state.settings.push_back({kKey, value});
  const String<Char> name = Of<Char>("key");
  const Char* const key = name.c_str();
  // What the platform gives of it: at most 255 characters.
  std::string text;
  for (const wchar_t one : value.substr(0, 255)) text += one > 0 && one < 0x80 ? static_cast<char>(one) : '?';
  const bool none = missing || value.empty();
  switch (what % 5) {
    case 0: {
      const int instead = input.Raw<int>(), least = input.Raw<int>(), most = input.Raw<int>();
      CHECK(profile::ReadInt(key, key, key, instead, least, most) ==
            (none ? instead : Limited(::StandInAtoi(text.c_str()), least, most)));
      break;
    }
    case 1: {
      const unsigned instead = input.Raw<unsigned>(), least = input.Raw<unsigned>(),
                     most = input.Raw<unsigned>();
      CHECK(profile::ReadUnsigned(key, key, key, instead, least, most) ==
            (none ? instead : Limited(::StandInStrtoul(text.c_str(), nullptr, 10), least, most)));
      break;
    }
    case 2: {
      const WORD instead = input.Raw<WORD>(), least = input.Raw<WORD>(), most = input.Raw<WORD>();
      const unsigned read = ::StandInStrtoul(text.c_str(), nullptr, 10);
      CHECK(profile::ReadWord(key, key, key, instead, least, most) ==
            (none ? instead : static_cast<WORD>(Limited<unsigned>(read, least, most))));
      break;
    }
    case 3: {
      const double instead = input.Raw<double>(), least = input.Raw<double>(), most = input.Raw<double>();
      CHECK(Same(profile::ReadDouble(key, key, key, instead, least, most),
                 none ? instead : Limited(::strtod(text.c_str(), nullptr), least, most)));
      break;
    }
    default: {
      const float instead = input.Raw<float>(), least = input.Raw<float>(), most = input.Raw<float>();
      const wchar_t* const wide = kKey.c_str();
      const double read = Limited<double>(::strtod(text.c_str(), nullptr), least, most);
      // A number beyond every float is not narrowed by the language's rules; it is by the processor's.
      CHECK(Same(profile::ReadFloat(wide, wide, wide, instead, least, most),
                 none ? instead : static_cast<float>(read)));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  switch (input.Byte() % 8) {
    case 0:
    case 1:
      Companions(input);
      break;
    case 2:
      CompanionsReturn(input);
      break;
    case 3:
      Lines<char>(input);
      break;
    case 4:
      Lines<wchar_t>(input);
      break;
    case 5:
      LinesWithCompanion(input);
      break;
    case 6:
      Numbers<char>(input);
      break;
    default:
      Numbers<wchar_t>(input);
  }
  CHECK(platform::state.locale == 0);
  CHECK(platform::state.errorMode == 0);
  return 0;
}
