// SPDX-License-Identifier: MIT
// Settings files, some of random bytes, and their text in a buffer.
#include "Calls.h"
#include "support/TempFolder.h"

namespace garbage {
namespace {

// The path of the settings file, which often gets other bytes first.
template <class Char>
const Char* Settings(Arguments& arguments) {
  const std::wstring file = arguments.scratch() + L"settings.ini";
  Garbage& random = arguments.random;
  if (random.Chance(4)) {
    std::string bytes = "[s]\r\nk=" + random.Noise<char>(random.Length()) +
                        "\r\nk_utf8=" + random.Noise<char>(random.Length()) + "\r\nk_UC=4 " +
                        random.Noise<char>(9) + "\r\n";
    if (random.Chance(3)) {
      bytes.clear();
      for (std::size_t i = random.Length(); i > 0; --i) bytes += static_cast<char>(random.Any());
      if (random.Chance(3)) bytes = "\xFF\xFE" + bytes;
    }
    test::WriteBytes(file, bytes);
  }
  return arguments.Text(std::basic_string<Char>(file.begin(), file.end()));
}

// The name of a section or key, often one that is there. Wine itself does not survive writing without both.
enum class Missing { kNever, kSometimes };
template <class Char>
const Char* Name(Arguments& arguments, char known, Missing missing = Missing::kSometimes) {
  if (arguments.random.Chance(2)) return arguments.Text(std::basic_string<Char>(1, static_cast<Char>(known)));
  return missing == Missing::kSometimes ? arguments.TextOrNull<Char>() : arguments.Text<Char>();
}

template <class Char, class Number>
void AddNumber(Calls& calls, unsigned read, unsigned write, unsigned line) {
  const auto number = [](Arguments& arguments) {
    if constexpr (std::is_floating_point_v<Number>)
      return static_cast<Number>(arguments.Told(arguments.random.Real()));
    return static_cast<Number>(arguments.Number());
  };
  calls[Twin<Char>(read)] = [=](Arguments& arguments) {
    const Char* const section = Name<Char>(arguments, 's');
    const Char* const key = Name<Char>(arguments, 'k');
    const Char* const file = Settings<Char>(arguments);
    const Number otherwise = number(arguments);
    const auto low = static_cast<Number>(arguments.random.Below(100));
    const auto high = static_cast<Number>(100 + arguments.random.Below(100));
    const Number got = Bound<Number(const Char*, const Char*, const Char*, Number, Number, Number)>(
        Twin<Char>(read))(section, key, file, otherwise, low, high);
    // A text that means no number at all passes the clamp, and so does the default.
    const bool isDefault = std::memcmp(&got, &otherwise, sizeof got) == 0;
    return std::string(isDefault || (got >= low && got <= high) || got != got ? "" : "out of its range");
  };
  calls[Twin<Char>(write)] = [=](Arguments& arguments) {
    const Char* const section = Name<Char>(arguments, 's', Missing::kNever);
    const Char* const key = Name<Char>(arguments, 'k');
    const Char* const file = Settings<Char>(arguments);
    return Truth(Bound<int(const Char*, const Char*, const Char*, Number)>(Twin<Char>(write))(
        section, key, file, number(arguments)));
  };
  if (line == 0) return;
  calls[Twin<Char>(line)] = [=](Arguments& arguments) {
    const Char* const key = arguments.TextOrNull<Char>();
    const auto out = arguments.Room<Char>();
    std::size_t count = 0;
    const int got = Bound<int(const Char*, Char*, std::size_t, Number, std::size_t*)>(Twin<Char>(line))(
        key, out, out.capacity, number(arguments), &count);
    return count <= out.capacity ? Truth(got) : "more than there is room for";
  };
}

template <class Char>
void AddTexts(Calls& calls) {
  calls[Twin<Char>(50)] = [](Arguments& arguments) {
    const Char* const section = Name<Char>(arguments, 's');
    const Char* const key = Name<Char>(arguments, 'k');
    const Char* const file = Settings<Char>(arguments);
    const Char* const otherwise = arguments.TextOrNull<Char>();
    // Wine itself writes before a list's buffer that has room for one character.
    const auto out = arguments.Room<Char>(section && key ? 1 : 2);
    Bound<void(const Char*, const Char*, const Char*, const Char*, Char*, std::size_t)>(Twin<Char>(50))(
        section, key, file, otherwise, out, out.capacity);
    return std::string(out.Terminated() ? "" : "no terminator");
  };
  calls[Twin<Char>(60)] = [](Arguments& arguments) {
    const Char* const section = Name<Char>(arguments, 's', Missing::kNever);
    const Char* const key = Name<Char>(arguments, 'k');
    const Char* const file = Settings<Char>(arguments);
    return Truth(Bound<int(const Char*, const Char*, const Char*, const Char*)>(Twin<Char>(60))(
        section, key, file, arguments.TextOrNull<Char>()));
  };
  calls[Twin<Char>(80)] = [](Arguments& arguments) {
    const Char* const section = arguments.TextOrNull<Char>();
    const auto out = arguments.Room<Char>();
    std::size_t count = 0;
    const int got = Bound<int(const Char*, Char*, std::size_t, std::size_t*)>(Twin<Char>(80))(
        section, out, out.capacity, &count);
    return count <= out.capacity ? Truth(got) : "more than there is room for";
  };
  calls[Twin<Char>(81)] = [](Arguments& arguments) {
    const Char* const key = arguments.TextOrNull<Char>();
    const auto out = arguments.Room<Char>();
    const Char* const value = arguments.random.Chance(8) ? key : arguments.TextOrNull<Char>();
    std::size_t count = 0;
    const int got = Bound<int(const Char*, Char*, std::size_t, const Char*, std::size_t*)>(Twin<Char>(81))(
        key, out, out.capacity, value, &count);
    return count <= out.capacity ? Truth(got) : "more than there is room for";
  };
  constexpr unsigned kStep = sizeof(Char) == 2 ? 1 : 0;
  calls[202 + kStep] = [](Arguments& arguments) {
    const int got = Bound<int(const Char*)>(202 + kStep)(Settings<Char>(arguments));
    return Expect(got >= 0 && got <= 12, got);
  };
  calls[205 + kStep] = [](Arguments& arguments) {
    const auto language =
        static_cast<int>(arguments.random.Chance(2) ? arguments.random.Below(14) : arguments.random.Number());
    const int got =
        Bound<int(int, const Char*)>(205 + kStep)(arguments.Told(language), Settings<Char>(arguments));
    return Expect(got == 1, got);
  };
}

template <class Char>
void Add(Calls& calls) {
  AddTexts<Char>(calls);
  AddNumber<Char, int>(calls, 51, 61, 82);
  AddNumber<Char, unsigned>(calls, 52, 62, 83);
  AddNumber<Char, double>(calls, 53, 63, 84);
  AddNumber<Char, float>(calls, 54, 64, 85);
  AddNumber<Char, WORD>(calls, 58, 65, 0);
}

}  // namespace

void AddSettings(Calls& calls) {
  Add<char>(calls);
  Add<wchar_t>(calls);
}

}  // namespace garbage
