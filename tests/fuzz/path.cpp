// SPDX-License-Identifier: MIT
// The path operations, for both character types, with and without bytes that lead double-byte characters.
#include "Fuzz.h"
#include "file/PathOperations.h"

namespace {

using fuzz::String;

// Components in a model's plain form.
template <class Char>
struct Pieces {
  String<Char> of[4];  // drive, directory, name, extension
  bool Fit() const {
    return of[0].size() <= 2 && of[1].size() <= 255 && of[2].size() <= 255 && of[3].size() <= 255;
  }
};

// One flag per unit from `start`: whether it is the second half of a double-byte character.
template <class Char>
std::string SecondHalves(const String<Char>& text, std::size_t start) {
  std::string second(text.size(), 0);
  if (sizeof(Char) > 1) return second;
  for (std::size_t i = start; i < text.size(); ++i) {
    const bool isSecond =
        i > start && second[i - 1] == 0 && platform::IsLead(static_cast<unsigned char>(text[i - 1]));
    second[i] = isSecond;
  }
  return second;
}

template <class Char>
Pieces<Char> Split(const String<Char>& path) {
  Pieces<Char> pieces;
  const std::size_t start = path.size() >= 2 && path[1] == ':' ? 2 : 0;
  const std::string second = SecondHalves(path, start);
  std::size_t name = start;
  for (std::size_t i = start; i < path.size(); ++i) {
    if (!second[i] && (path[i] == '\\' || path[i] == '/')) name = i + 1;
  }
  std::size_t period = path.size();
  for (std::size_t i = path.size(); i-- > name;) {
    if (!second[i] && path[i] == '.') {
      period = i;
      break;
    }
  }
  pieces.of[0] = path.substr(0, start);
  pieces.of[1] = path.substr(start, name - start);
  pieces.of[2] = path.substr(name, period - name);
  pieces.of[3] = path.substr(period);
  return pieces;
}

template <class Char>
String<Char> Compose(const Pieces<Char>& pieces) {
  String<Char> path;
  if (!pieces.of[0].empty()) {
    path += pieces.of[0][0];
    path += ':';
  }
  const String<Char>& directory = pieces.of[1];
  path += directory;
  if (!directory.empty()) {
    const std::string second = SecondHalves(directory, 0);
    const Char last = directory.back();
    const bool lead = sizeof(Char) == 1 && platform::IsLead(static_cast<unsigned char>(last));
    if (second.back() || lead || (last != '\\' && last != '/')) path += '\\';
  }
  path += pieces.of[2];
  if (!pieces.of[3].empty() && pieces.of[3][0] != '.') path += '.';
  path += pieces.of[3];
  return path;
}

template <class Char>
struct Target {
  using Operations = file::PathOperations<Char>;
  using Parts = file::Parts<Char>;

  static void Get(fuzz::Input& input) {
    static constexpr struct {
      typename Operations::Component first, last;
      int from, to;
    } kOperations[] = {
        {&Parts::drive, &Parts::drive, 0, 0},     {&Parts::directory, &Parts::directory, 1, 1},
        {&Parts::name, &Parts::name, 2, 2},       {&Parts::extension, &Parts::extension, 3, 3},
        {&Parts::drive, &Parts::directory, 0, 1}, {&Parts::name, &Parts::extension, 2, 3},
    };
    const auto& operation = kOperations[input.Byte() % 6];
    const unsigned char nulls = input.Byte();
    const bool noPath = (nulls & 0xF0) == 0xF0;
    const bool noOut = (nulls & 0x0F) == 0x0F;
    const std::size_t capacity = input.Byte() + (input.Bit() ? 200 : 0);
    const String<Char> path = input.Text<Char>();
    fuzz::Buffer<Char> from(path);
    fuzz::Buffer<Char> out(capacity);

    const int result = Operations::Get(operation.first, operation.last, noPath ? nullptr : from.data(),
                                       noOut ? nullptr : out.data(), capacity);
    CHECK(result == 1);
    const Pieces<Char> pieces = Split(path);
    String<Char> expected;
    for (int i = operation.from; i <= operation.to; ++i) expected += pieces.of[i];
    const bool good = !noPath && !noOut && pieces.Fit() && expected.size() < capacity;
    if (!noOut) Expect(good, expected, out, capacity);
    CHECK(platform::state.invalidParameters == (good ? 0 : 1));
    CHECK(std::memcmp(from.data(), path.c_str(), (path.size() + 1) * sizeof(Char)) == 0);
    CHECK(from.GuardsAreWhole());
  }

  static void Rewrite(fuzz::Input& input) {
    const int operation = input.Byte() % 9;
    const unsigned char nulls = input.Byte();
    const bool noPath = (nulls & 0xF0) == 0xF0;
    const bool noText = (nulls & 0x0F) == 0x0F;
    const std::size_t room = input.Byte() + (input.Bit() ? 300 : 0);
    const bool inside = (input.Byte() & 7) == 7;
    const auto index = input.Raw<std::uint32_t>();
    std::uint32_t digits = input.Byte();
    if (digits == 0xFF) digits = input.Raw<std::uint32_t>();
    const String<Char> path = input.Text<Char>();
    String<Char> text = input.Text<Char>();

    // The room that the caller tells may be less than the text in it has.
    fuzz::Buffer<Char> buffer(path, room);
    const std::size_t capacity = input.Bit() ? buffer.capacity() : room;
    fuzz::Buffer<Char> own(text);
    Char* argument = own.data();
    if (inside && operation < 8 && !noPath) {
      const std::size_t offset = input.Byte() % (path.size() + 1);
      argument = buffer.data() + offset;
      text = path.substr(offset);
    }
    if (noText) argument = nullptr;
    Char* const target = noPath ? nullptr : buffer.data();

    Pieces<Char> pieces = Split(path);
    bool good = !noPath && pieces.Fit();
    const Pieces<Char> others = Split(text);
    int result = 0;
    switch (operation) {
      case 0:
      case 1:
      case 2:
      case 3: {
        static constexpr decltype(&Operations::ReplaceDrive) kReplace[] = {
            &Operations::ReplaceDrive, &Operations::ReplaceDirectory, &Operations::ReplaceName,
            &Operations::ReplaceExtension};
        result = kReplace[operation](target, capacity, argument);
        pieces.of[operation] = noText ? String<Char>() : text;
        break;
      }
      case 4:
        result = Operations::TakeNameAndExtension(target, capacity, argument);
        pieces.of[2] = others.of[2];
        pieces.of[3] = others.of[3];
        good = good && !noText && others.Fit();
        break;
      case 5:
        result = Operations::TakeDriveAndDirectory(target, capacity, argument);
        pieces.of[0] = others.of[0];
        pieces.of[1] = others.of[1];
        good = good && !noText && others.Fit();
        break;
      case 6:
        result = Operations::AddDirectory(target, capacity, argument);
        pieces.of[1] += text;
        good = good && !noText && pieces.of[1].size() <= 255;
        break;
      case 7:
        result = Operations::AddName(target, capacity, argument);
        pieces.of[2] += text;
        good = good && !noText && pieces.of[2].size() <= 255;
        break;
      default:
        // What a negative number of digits does is open; it stays in its bounds.
        result = Operations::AddIndex(target, capacity, index, digits);
        if (static_cast<int>(digits) < 0) {
          CHECK(result == 1 && buffer.GuardsAreWhole());
          return;
        }
        char number[400];
        std::snprintf(number, sizeof number, "%.*i", digits < 300 ? static_cast<int>(digits) : 300,
                      static_cast<int>(index));
        for (const char* one = number; *one; ++one) pieces.of[2] += static_cast<Char>(*one);
        good = good && pieces.of[2].size() <= 255;
    }
    CHECK(result == 1);
    const String<Char> expected = Compose(pieces);
    good = good && expected.size() < capacity;
    if (!noPath) Expect(good, expected, buffer, capacity);
    CHECK(platform::state.invalidParameters == (good ? 0 : 1));
    CHECK(own.GuardsAreWhole());
  }

  // The text, or an empty one in whatever room there is.
  static void Expect(bool good, const String<Char>& text, fuzz::Buffer<Char>& out, std::size_t capacity) {
    CHECK(out.GuardsAreWhole());
    if (good) {
      CHECK(std::memcmp(out.data(), text.c_str(), (text.size() + 1) * sizeof(Char)) == 0);
    } else if (capacity > 0) {
      CHECK(out.data()[0] == 0);
    }
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  const unsigned char what = input.Byte();
  platform::state.doubleByte = (what & 4) != 0;
  if (what & 1) {
    what & 2 ? Target<wchar_t>::Rewrite(input) : Target<wchar_t>::Get(input);
  } else {
    what & 2 ? Target<char>::Rewrite(input) : Target<char>::Get(input);
  }
  return 0;
}
