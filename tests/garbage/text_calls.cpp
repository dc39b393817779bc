// SPDX-License-Identifier: MIT
// Conversions, rounding and encryption.
#include "Calls.h"

namespace garbage {
namespace {

template <class Char>
std::string Judged(CStringT<Char>& text) {
  const bool whole = text.GetLength() >= 0 && text.GetLength() <= text.GetAllocLength() &&
                     text.GetString()[text.GetLength()] == 0;
  return whole ? "" : "a broken string";
}

template <class Char>
std::basic_string<Char> HexOrNoise(Garbage& random) {
  if (random.Chance(3)) return random.Noise<Char>(random.Length());
  std::basic_string<Char> text;
  for (std::size_t i = random.Length(); i > 0; --i) {
    text += static_cast<Char>("0123456789abcdefABCDEF"[random.Below(22)]);
    if (random.Chance(20)) text += ' ';
  }
  return text;
}

template <class In, class Out>
void AddConversion(Calls& calls, unsigned ordinal) {
  calls[ordinal] = [=](Arguments& arguments) {
    const auto text = ordinal == 118 ? HexOrNoise<In>(arguments.random) : arguments.random.Text<In>();
    auto& out = arguments.String<Out>();
    const In* in = nullptr;
    if constexpr (std::is_same_v<In, Out>) {
      // The text may be the result's own.
      if (arguments.random.Chance(4)) in = out.GetString();
    }
    if (!in && !arguments.random.Chance(16)) in = arguments.Text(text);
    Bound<void(const In*, CStringT<Out>&)>(ordinal)(in, out);
    return Judged(out);
  };
}

template <class Char>
void AddEncrypting(Calls& calls) {
  for (const unsigned plain : {75u, 77u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      const Char* const key = arguments.TextOrNull<Char>();
      auto text = arguments.random.Text<Char>();
      if (arguments.random.Chance(4)) text.append(arguments.random.Below(3), Char(0));
      auto& out = arguments.String(text);
      auto& in = arguments.random.Chance(4) ? out : arguments.String(text);
      const int got =
          Bound<int(const Char*, const CStringT<Char>&, CStringT<Char>&)>(Twin<Char>(plain))(key, in, out);
      const auto whole = static_cast<int>(2 * text.size());
      const bool right = got == whole && out.GetLength() == (plain == 75 ? std::min(whole, 8) : whole);
      return Expect(right, got) + Judged(out);
    };
  }
}

void AddDecrypting(Calls& calls) {
  calls[76] = [](Arguments& arguments) {
    const char* const key = arguments.TextOrNull<char>();
    auto& in = arguments.String(HexOrNoise<char>(arguments.random));
    auto& out = arguments.random.Chance(4) ? in : arguments.String<char>();
    const int got = Bound<int(const char*, const CStringA&, CStringA&)>(76)(key, in, out);
    return Expect(got >= -1 && got <= 99 && out.GetLength() <= std::max(got, 0), got) + Judged(out);
  };
  calls[1076] = [](Arguments& arguments) {
    const wchar_t* const key = arguments.TextOrNull<wchar_t>();
    auto& out = arguments.String(HexOrNoise<wchar_t>(arguments.random));
    const wchar_t* const in =
        arguments.random.Chance(4) ? out.GetString() : arguments.Text(HexOrNoise<wchar_t>(arguments.random));
    const int got = Bound<int(const wchar_t*, const wchar_t*, CStringW&)>(1076)(key, in, out);
    return Expect(out.GetLength() == std::max(got, 0), got) + Judged(out);
  };
  calls[72] = [](Arguments& arguments) {
    const char* const key = arguments.TextOrNull<char>();
    const char* const in = arguments.Text(HexOrNoise<char>(arguments.random));
    const auto out = arguments.Room<BYTE>();
    const unsigned hex = arguments.Told(arguments.random.Below(2));
    const int got = Bound<int(const char*, const char*, UINT, BYTE*, UINT)>(72)(
        key, in, hex, out, static_cast<UINT>(out.capacity));
    return Expect(got >= -1 && got <= static_cast<int>(out.capacity), got);
  };
  calls[1072] = [](Arguments& arguments) {
    auto& out = arguments.Array();
    const ByteArray& key = arguments.random.Chance(9) ? out : arguments.Bytes();
    const wchar_t* const in = arguments.Text(HexOrNoise<wchar_t>(arguments.random));
    const int hex = arguments.Told(static_cast<int>(arguments.random.Below(2)));
    const int got = Bound<int(const ByteArray&, const wchar_t*, BOOL, ByteArray&)>(1072)(key, in, hex, out);
    return Expect(out.GetSize() == std::max(got, 0), got);
  };
}

}  // namespace

void AddTexts(Calls& calls) {
  AddConversion<wchar_t, char>(calls, 110);
  AddConversion<char, char>(calls, 111);
  AddConversion<char, wchar_t>(calls, 112);
  AddConversion<char, char>(calls, 113);
  AddConversion<wchar_t, char>(calls, 114);
  AddConversion<char, char>(calls, 115);
  AddConversion<char, wchar_t>(calls, 116);
  AddConversion<wchar_t, wchar_t>(calls, 117);
  AddConversion<wchar_t, wchar_t>(calls, 118);
  // Any number is a number; what it is rounded to, other tests know.
  calls[100] = [](Arguments& arguments) {
    Bound<int(double)>(100)(arguments.Told(arguments.random.Real()));
    return std::string();
  };
  calls[101] = [](Arguments& arguments) {
    const double value = arguments.Told(arguments.random.Real());
    Bound<double(double, int)>(101)(
        value,
        static_cast<int>(arguments.random.Chance(2) ? arguments.random.Below(40) - 20 : arguments.Number()));
    return std::string();
  };
  calls[102] = [](Arguments& arguments) {
    Bound<unsigned(double)>(102)(arguments.Told(arguments.random.Real()));
    return std::string();
  };
  AddEncrypting<char>(calls);
  AddEncrypting<wchar_t>(calls);
  AddDecrypting(calls);
  calls[71] = [](Arguments& arguments) {
    const char* const key = arguments.TextOrNull<char>();
    const auto out = arguments.Room<char>();
    const int count =
        arguments.Told(arguments.random.Chance(3) ? static_cast<int>(arguments.random.Number()) : 0);
    const int got = Bound<int(const char*, const BYTE*, int, char*, UINT, BOOL)>(71)(
        key, nullptr, count, out, static_cast<UINT>(out.capacity),
        static_cast<BOOL>(arguments.random.Below(2)));
    return Expect(got == (out.capacity > 0 ? 0 : -1), got);
  };
  calls[1071] = [](Arguments& arguments) {
    const ByteArray& key = arguments.Bytes();
    const ByteArray& plain = arguments.random.Chance(9) ? key : arguments.Bytes();
    auto& out = arguments.String<wchar_t>();
    const int hex = arguments.Told(static_cast<int>(arguments.random.Below(2)));
    const int got =
        Bound<int(const ByteArray&, const ByteArray&, CStringW&, BOOL)>(1071)(key, plain, out, hex);
    return Expect(got == out.GetLength() && (!hex || got == 2 * plain.GetSize()), got) + Judged(out);
  };
}

}  // namespace garbage
