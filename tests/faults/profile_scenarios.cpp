// SPDX-License-Identifier: MIT
// Settings files: reading, writing, and their text in a buffer. The numeric locale of the harness is one
// with a decimal comma.
#include "Scenario.h"

namespace faults {
namespace {

const char kSettings[] =
    "[s]\r\nn=5\r\nd=2.5\r\nt=text\r\nu=Gr\xFC\xDF\x65\r\nu_utf8=Gr\xC3\xBC\xC3\x9F\x65\r\nh=old\r\nh_UC=48 "
    "69\r\n";

void Settings(World& world) {
  world.Source("a.ini", kSettings);
}
void Changeable(World& world) {
  world.File("a.ini", kSettings);
}

// What a call wrote does not cost the other settings.
std::string OthersStay(World& world, const std::string&, const Record&) {
  const std::string now = world.Bytes("a.ini");
  return now.find("[s]\r\n") == std::string::npos || now.find("t=text") == std::string::npos
             ? "other settings are gone: " + now
             : "";
}

template <class Char>
auto In(World& world) {
  return world.Path<Char>("a.ini");
}

template <class Char, class Number>
void AddNumber(std::vector<Scenario>& all, unsigned plain, const char* key, Number number, const char* clean,
               std::vector<std::string> allowed) {
  const unsigned ordinal = Twin<Char>(plain);
  all.push_back({ordinal, "a number", &Settings,
                 [=](World& world) {
                   using Read = Number(const Char*, const Char*, const Char*, Number, Number, Number);
                   const Number read =
                       Bound<Read>(ordinal)(Text<Char>("s").c_str(), Text<Char>(key).c_str(),
                                            In<Char>(world).c_str(), number, Number(0), Number(9));
                   // In tenths, so that the text does not depend on the locale.
                   return std::to_string(static_cast<int>(read * 10));
                 },
                 clean, std::move(allowed)});
}

template <class Char>
void AddReading(std::vector<Scenario>& all) {
  AddNumber<Char, int>(all, 51, "n", 7, "50", {"70"});
  AddNumber<Char, unsigned>(all, 52, "n", 7, "50", {"70"});
  AddNumber<Char, WORD>(all, 58, "n", 7, "50", {"70"});
  // Without its locale the number ends at the point.
  AddNumber<Char, double>(all, 53, "d", 7, "25", {"70", "20"});
  AddNumber<Char, float>(all, 54, "d", 7, "25", {"70", "20"});
  const auto text = [&all](const char* key, const char* clean, std::vector<std::string> allowed) {
    all.push_back({Twin<Char>(50), std::string("the text ") + key, &Settings,
                   [=](World& world) {
                     test::GuardedBuffer<Char> out(16);
                     using Read =
                         void(const Char*, const Char*, const Char*, const Char*, Char*, std::size_t);
                     Bound<Read>(Twin<Char>(50))(Text<Char>("s").c_str(), Text<Char>(key).c_str(),
                                                 In<Char>(world).c_str(), Text<Char>("default").c_str(),
                                                 out.data(), out.capacity());
                     return Shown(out);
                   },
                   clean, std::move(allowed)});
  };
  text("t", "\"text\"", {"\"default\""});
  if constexpr (kWide<Char>) {
    text("u", "\"Gr<FC><DF>e\"", {"\"default\"", "\"\""});
    text("h", "\"Hi\"", {"\"H\"", "\"old\"", "\"default\"", "\"\""});
  } else {
    text("u", "\"Gr<FC><DF>e\"", {"\"default\""});
  }
}

template <class Char, class Number>
void AddWriter(std::vector<Scenario>& all, unsigned plain, Number number, const char* line) {
  const unsigned ordinal = Twin<Char>(plain);
  all.push_back({ordinal,
                 "a number",
                 &Changeable,
                 [=](World& world) {
                   using Write = int(const Char*, const Char*, const Char*, Number);
                   return std::to_string(Bound<Write>(ordinal)(
                       Text<Char>("s").c_str(), Text<Char>("n").c_str(), In<Char>(world).c_str(), number));
                 },
                 "1",
                 {"0"},
                 {},
                 [=](World& world, const std::string& got, const Record& record) -> std::string {
                   if (record.failed.empty() && world.Bytes("a.ini").find(line) == std::string::npos) {
                     return "not written: " + world.Bytes("a.ini");
                   }
                   return OthersStay(world, got, record);
                 }});
}

template <class Char>
void AddWriting(std::vector<Scenario>& all) {
  AddWriter<Char, int>(all, 61, -8, "n=-8\r\n");
  AddWriter<Char, unsigned>(all, 62, 8, "n=8\r\n");
  AddWriter<Char, WORD>(all, 65, 8, "n=8\r\n");
  AddWriter<Char, double>(all, 63, 8.5, "n=8.5000000000\r\n");
  AddWriter<Char, float>(all, 64, 8.5f, "n=8.5000000000\r\n");
  const auto text = [&all](const char* what, const char* key, const Char* value, const char* line) {
    all.push_back({Twin<Char>(60),
                   what,
                   &Changeable,
                   [=](World& world) {
                     using Write = int(const Char*, const Char*, const Char*, const Char*);
                     return std::to_string(Bound<Write>(Twin<Char>(60))(
                         Text<Char>("s").c_str(), Text<Char>(key).c_str(), In<Char>(world).c_str(), value));
                   },
                   "1",
                   kWide<Char> ? std::vector<std::string>{} : std::vector<std::string>{"0"},
                   {},
                   [=](World& world, const std::string& got, const Record& record) -> std::string {
                     if (record.failed.empty() && world.Bytes("a.ini").find(line) == std::string::npos) {
                       return "not written: " + world.Bytes("a.ini");
                     }
                     return OthersStay(world, got, record);
                   }});
  };
  if constexpr (kWide<Char>) {
    text("an ASCII text over one with companions", "u", L"plain", "u=plain\r\nu_utf8=\r\n");
    text("an ASCII text over a hexadecimal one", "h", L"plain", "h=plain\r\nh_UC=\r\n");
    text("a text beyond ASCII", "u", L"\xE4", "u=\xE4\r\nu_utf8=\xC3\xA4\r\n");
  } else {
    text("a text", "u", "plain", "u=plain\r\n");
  }
}

template <class Char>
std::string Put(int result, test::GuardedBuffer<Char>& out, std::size_t count) {
  return std::to_string(result) + " " + std::to_string(count) + " " + Shown(out);
}

template <class Char, class Value>
void AddLine(std::vector<Scenario>& all, unsigned plain, Value value, const char* clean,
             std::vector<std::string> allowed) {
  const unsigned ordinal = Twin<Char>(plain);
  // A checked copy that is refused leaves an empty text, and the line counts as written.
  const std::string line = clean;
  allowed.push_back(line.substr(0, line.find('"')) + "\"\"");
  all.push_back({ordinal,
                 "a line",
                 {},
                 [=](World&) {
                   test::GuardedBuffer<Char> out(40);
                   out.data()[0] = 0;
                   std::size_t count = 77;
                   using Write = int(const Char*, Char*, std::size_t, Value, std::size_t*);
                   const int result = Bound<Write>(ordinal)(Text<Char>("k").c_str(), out.data(),
                                                            out.capacity(), value, &count);
                   return Put(result, out, count);
                 },
                 clean,
                 std::move(allowed)});
}

template <class Char>
void AddLines(std::vector<Scenario>& all) {
  all.push_back({Twin<Char>(80),
                 "a section",
                 {},
                 [](World&) {
                   test::GuardedBuffer<Char> out(40);
                   out.data()[0] = 0;
                   std::size_t count = 77;
                   using Write = int(const Char*, Char*, std::size_t, std::size_t*);
                   const int result = Bound<Write>(Twin<Char>(80))(Text<Char>("General").c_str(), out.data(),
                                                                   out.capacity(), &count);
                   return Put(result, out, count);
                 },
                 "1 10 \"[General]<A>\"",
                 {"0 0 \"\"", "1 10 \"\""}});
  static const Char ascii[] = {'t', 'e', 'x', 't', 0};
  // Without its conversions a text is not known to be plain: its companion is written, empty, and an empty
  // one is none.
  AddLine<Char, const Char*>(all, 81, ascii, "1 7 \"k=text<A>\"",
                             {"0 0 \"\"", "1 15 \"k=text<A>k_utf8=<A>\"", "1 15 \"\""});
  if constexpr (kWide<Char>) {
    AddLine<Char, const Char*>(
        all, 81, L"\xE4", "1 14 \"k=<E4><A>k_utf8=<C3><A4><A>\"",
        {"0 0 \"\"", "0 4 \"k=<E4><A>\"", "1 4 \"k=<E4><A>\"", "1 12 \"k=<E4><A>k_utf8=<A>\"",
         "1 14 \"k=<E4><A>\"", "1 12 \"k=<E4><A>\"", "1 12 \"\"", "1 4 \"\""});
  }
  // Should the C runtime refuse to print a number, there is none.
  AddLine<Char, int>(all, 82, -8, "1 5 \"k=-8<A>\"", {"0 77 \"\"", "1 3 \"k=<A>\""});
  AddLine<Char, unsigned>(all, 83, 8, "1 4 \"k=8<A>\"", {"0 77 \"\"", "1 3 \"k=<A>\""});
  // Under the caller's locale the number has its comma.
  AddLine<Char, double>(all, 84, 8.5, "1 15 \"k=8.5000000000<A>\"",
                        {"0 77 \"\"", "1 3 \"k=<A>\"", "1 15 \"k=8,5000000000<A>\""});
  AddLine<Char, float>(all, 85, 8.5f, "1 15 \"k=8.5000000000<A>\"",
                       {"0 77 \"\"", "1 3 \"k=<A>\"", "1 15 \"k=8,5000000000<A>\""});
}

template <class Char>
void Add(std::vector<Scenario>& all) {
  AddReading<Char>(all);
  AddWriting<Char>(all);
  AddLines<Char>(all);
}

}  // namespace

std::vector<Scenario> ProfileScenarios() {
  std::vector<Scenario> all;
  Add<char>(all);
  Add<wchar_t>(all);
  return all;
}

}  // namespace faults
