// SPDX-License-Identifier: MIT
// One file, its contents, storage, and whole directories.
#include "Scenario.h"

namespace faults {
namespace {

using Unsigned = unsigned int;

const std::string kBytes = [] {
  std::string bytes;
  for (int i = 0; i < 10000; ++i) bytes += static_cast<char>('a' + i % 23);
  return bytes;
}();

template <class... Numbers>
std::string Line(Numbers... numbers) {
  std::string line;
  ((line += (line.empty() ? "" : " ") + std::to_string(numbers)), ...);
  return line;
}

template <class Char>
void AddFiles(std::vector<Scenario>& all) {
  using OnePath = int(const Char*);
  using TwoPaths = int(const Char*, const Char*);
  const auto one = [&all](unsigned plain, const char* what, const char* name,
                          std::function<void(World&)> prepare, const char* clean,
                          std::vector<std::string> allowed) {
    const unsigned ordinal = Twin<Char>(plain);
    all.push_back(
        {ordinal, what, std::move(prepare),
         [=](World& world) { return Line(Bound<OnePath>(ordinal)(world.Path<Char>(name).c_str())); }, clean,
         std::move(allowed)});
  };
  const auto source = [](World& world) { world.Source("a.txt", "12345"); };
  const auto empty = [](World& world) { world.Source("a.txt", ""); };
  const auto file = [](World& world) { world.File("a.txt", "12345"); };

  one(1, "a file", "a.txt", source, "1", {"0"});
  one(1, "an empty file", "a.txt", empty, "1", {"0"});
  one(2, "a file", "a.txt", file, "1", {"0"});
  all.back().after = [](World& world, const std::string&, const Record& record) -> std::string {
    return record.failed.empty() && world.Has("a.txt") ? "the file is there" : "";
  };
  one(4, "a file", "a.txt", source, "5", {"0"});
  all.push_back({Twin<Char>(5),
                 "an extension",
                 {},
                 [](World&) {
                   return Line(Bound<TwoPaths>(Twin<Char>(5))(Text<Char>("X:\\x\\a.txt").c_str(),
                                                              Text<Char>("TX").c_str()));
                 },
                 "1",
                 {"0"}});
  all.push_back(
      {Twin<Char>(6),
       "a file",
       source,
       [](World& world) {
         return Line(Bound<int(const Char*, Unsigned)>(Twin<Char>(6))(world.Path<Char>("a.txt").c_str(), 60));
       },
       "1",
       {"0"}});
  all.push_back({Twin<Char>(7),
                 "onto a file",
                 [](World& world) {
                   world.File("a.txt", kBytes);
                   world.File("b.txt", "old");
                 },
                 [](World& world) {
                   return Line(Bound<TwoPaths>(Twin<Char>(7))(world.Path<Char>("a.txt").c_str(),
                                                              world.Path<Char>("b.txt").c_str()));
                 },
                 "1",
                 {"0"},
                 {},
                 [](World& world, const std::string& got, const Record& record) -> std::string {
                   const bool moved = world.Bytes("b.txt") == kBytes;
                   if (world.Bytes("a.txt") != kBytes && !moved) return "the file is nowhere";
                   return record.failed.empty() && !(got == "1" && moved && !world.Has("a.txt"))
                              ? "not renamed"
                              : "";
                 }});
  all.push_back({Twin<Char>(27),
                 "a file",
                 [](World& world) {
                   world.Source("a.txt", "12345");
                   world.Date("a.txt", 1'000'000'000);
                 },
                 [](World& world) {
                   long long time = 77;
                   const int result = Bound<int(const Char*, long long*)>(Twin<Char>(27))(
                       world.Path<Char>("a.txt").c_str(), &time);
                   return Line(result, time);
                 },
                 "1 1000000000",
                 {"0 3155*"},
                 {kOleException}});
  all.push_back({Twin<Char>(27),
                 "a missing file",
                 [](World&) {},
                 [](World& world) {
                   long long time = 77;
                   const int result = Bound<int(const Char*, long long*)>(Twin<Char>(27))(
                       world.Path<Char>("a.txt").c_str(), &time);
                   return Line(result, time);
                 },
                 "0 3155*",
                 {},
                 {kOleException}});
}

template <class Char>
void AddContents(std::vector<Scenario>& all) {
  using TwoPaths = int(const Char*, const Char*);
  const auto copied = [](World& world, const std::string& got, const Record& record) -> std::string {
    if (!record.failed.empty()) return "";
    return got == "1" && world.Bytes("new\\b.bin") == kBytes ? "" : "not copied";
  };
  const auto copy = [](World& world) {
    return Line(Bound<TwoPaths>(Twin<Char>(16))(world.Path<Char>("a.bin").c_str(),
                                                world.Path<Char>("new\\b.bin").c_str()));
  };
  all.push_back({Twin<Char>(16),
                 "into a missing folder",
                 [](World& world) { world.Source("a.bin", kBytes); },
                 copy,
                 "1",
                 {"0"},
                 {kFileException},
                 copied});
  all.push_back({Twin<Char>(16),
                 "onto a larger file",
                 [](World& world) {
                   world.Source("a.bin", kBytes);
                   world.Folder("new");
                   world.File("new\\b.bin", kBytes + kBytes);
                 },
                 copy,
                 "1",
                 {"0"},
                 {kFileException},
                 copied});
  const auto compare = [](World& world) {
    return Line(Bound<TwoPaths>(Twin<Char>(17))(world.Path<Char>("a.bin").c_str(),
                                                world.Path<Char>("b.bin").c_str()));
  };
  all.push_back({Twin<Char>(17),
                 "equal files",
                 [](World& world) {
                   world.Source("a.bin", kBytes);
                   world.Source("b.bin", kBytes);
                 },
                 compare,
                 "1",
                 {"0"},
                 {kFileException}});
  all.push_back({Twin<Char>(17),
                 "the last byte differs",
                 [](World& world) {
                   world.Source("a.bin", kBytes);
                   world.Source("b.bin", kBytes.substr(0, kBytes.size() - 1) + '#');
                 },
                 compare,
                 "0",
                 {"1"},
                 {kFileException},
                 // Two reads that both answer no bytes are two ends of file, and two paths that cannot be
                 // converted are one text; nothing else makes them equal.
                 [](World&, const std::string& got, const Record& record) -> std::string {
                   return got == "1" && !record.Failed("ReadFile") && !record.Failed("MultiByteToWideChar")
                              ? "different files are equal"
                              : "";
                 }});
  all.push_back({Twin<Char>(19),
                 "a new file",
                 [](World&) {},
                 [](World& world) {
                   return Line(Bound<int(const Char*)>(Twin<Char>(19))(world.Path<Char>("a.txt").c_str()));
                 },
                 "1",
                 {"0"},
                 {},
                 [](World& world, const std::string& got, const Record&) -> std::string {
                   return got == "1" && !world.Has("a.txt") ? "there is no file" : "";
                 }});
  all.push_back({Twin<Char>(19),
                 "a file that is there",
                 [](World& world) { world.File("a.txt", "12345"); },
                 [](World& world) {
                   return Line(Bound<int(const Char*)>(Twin<Char>(19))(world.Path<Char>("a.txt").c_str()));
                 },
                 "1",
                 {"0"},
                 {},
                 // A file of which the platform tells that it is not there is made, and so emptied.
                 [](World& world, const std::string&, const Record& record) -> std::string {
                   return !record.Failed("GetFileAttributesExW") && !record.Failed("GetFullPathNameW") &&
                                  world.Bytes("a.txt") != "12345"
                              ? "the file is changed"
                              : "";
                 }});
  all.push_back(
      {Twin<Char>(25),
       "a whole file",
       [](World& world) { world.Source("a.txt", "12345"); },
       [](World& world) {
         test::GuardedBuffer<unsigned char> buffer(5);
         unsigned long long count = 77;
         const int result = Bound<int(const Char*, unsigned char*, unsigned long long, unsigned long long*)>(
             Twin<Char>(25))(world.Path<Char>("a.txt").c_str(), buffer.data(), buffer.capacity(), &count);
         const std::string bytes(buffer.data(), buffer.data() + 5);
         return Line(result, count) + " " + Shown(bytes) + (buffer.Intact() ? "" : " SURROUNDINGS HARMED");
       },
       "1 5 \"12345\"",
       {"0 77 \"ZZZZZ\"", "0 0 \"ZZZZZ\"", "0 3 \"123ZZ\""}});
  all.push_back(
      {Twin<Char>(26),
       "over a file",
       [](World& world) { world.File("a.txt", "what was there before"); },
       [](World& world) {
         return Line(Bound<int(const Char*, const unsigned char*, unsigned long long)>(Twin<Char>(26))(
             world.Path<Char>("a.txt").c_str(), reinterpret_cast<const unsigned char*>("12345"), 5));
       },
       "1",
       {"0"},
       {},
       [](World& world, const std::string& got, const Record&) -> std::string {
         return got == "1" && world.Bytes("a.txt") != "12345" ? "not written" : "";
       }});
}

template <class Char>
void AddStorage(std::vector<Scenario>& all) {
  const auto check = [](const char* name) {
    return [name](World& world) {
      return Line(Bound<int(const Char*)>(Twin<Char>(31))(world.Path<Char>(name).c_str()));
    };
  };
  all.push_back({Twin<Char>(31),
                 "missing folders",
                 [](World&) {},
                 check("new\\deeper\\a.txt"),
                 "1",
                 {"0"},
                 {},
                 [](World& world, const std::string&, const Record& record) -> std::string {
                   return record.failed.empty() && !world.Has("new\\deeper") ? "no folder was made" : "";
                 }});
  all.push_back({Twin<Char>(31),
                 "a file",
                 [](World& world) { world.Source("a.txt", "12345"); },
                 check("a.txt"),
                 "1",
                 {"0"}});
  all.push_back({Twin<Char>(9),
                 "a drive",
                 {},
                 [](World&) {
                   const float free = Bound<float(Char)>(Twin<Char>(9))('X');
                   return std::string(free > 0 ? "positive" : free == 0 ? "0" : "no number");
                 },
                 "positive",
                 {"0"}});
  all.push_back({Twin<Char>(34),
                 "a module",
                 {},
                 [](World&) {
                   test::GuardedBuffer<Char> version(64);
                   wchar_t path[MAX_PATH];
                   ::GetModuleFileNameW(test::Library(), path, MAX_PATH);
                   const int result = Bound<int(const Char*, Char*, std::size_t)>(Twin<Char>(34))(
                       Text<Char>(test::Ansi(path)).c_str(), version.data(), version.capacity());
                   return Line(result) + " " + Shown(version);
                 },
                 "1 \"1.*",
                 {"0 \"\"", "1 \"\""}});
}

void Tree(World& world) {
  for (const char* const folder : {"s", "s\\sub"}) world.Folder(folder);
  world.Source("s\\keep.txt", "12345");
  world.Source("s\\sub\\keep.txt", "12345");
}

template <class Char>
void AddDirectories(std::vector<Scenario>& all) {
  const auto old = [](World& world) {
    Tree(world);
    for (const char* const name : {"s\\a.log", "s\\sub\\b.log"}) {
      world.File(name, "12345");
      world.Date(name, 1'000'000'000);
    }
  };
  const auto gone = [](World& world, const std::string& got, const Record& record) -> std::string {
    const bool left = world.Has("s\\a.log") || world.Has("s\\sub\\b.log");
    return record.failed.empty() && (got != "1" || left) ? "not all deleted" : "";
  };
  all.push_back({Twin<Char>(3),
                 "a tree",
                 old,
                 [](World& world) {
                   return Line(Bound<int(const Char*, const Char*)>(Twin<Char>(3))(
                       world.Path<Char>("s\\").c_str(), Text<Char>("*.log").c_str()));
                 },
                 "1",
                 {"0"},
                 {},
                 gone});
  all.push_back({Twin<Char>(8),
                 "a tree",
                 old,
                 [](World& world) {
                   return Line(Bound<int(const Char*, const Char*, Unsigned)>(Twin<Char>(8))(
                       world.Path<Char>("s\\").c_str(), Text<Char>(".log").c_str(), 60));
                 },
                 "1",
                 {"0"},
                 {},
                 gone});
  all.push_back(
      {Twin<Char>(29),
       "a tree",
       old,
       [](World& world) {
         const auto path = world.Path<Char>("s\\");
         const auto filter = Text<Char>(".log");
         if constexpr (kWide<Char>) {
           int abort = 0;
           return Line(Bound<int(const Char*, const Char*, Unsigned, int*)>(1029)(
               path.c_str(), filter.c_str(), 60, &abort));
         } else {
           return Line(Bound<int(const Char*, const Char*, Unsigned)>(29)(path.c_str(), filter.c_str(), 60));
         }
       },
       "1",
       {"0"},
       {},
       gone});
  all.push_back({Twin<Char>(18),
                 "a tree",
                 [](World& world) {
                   Tree(world);
                   world.Source("s\\sub\\large.bin", kBytes);
                 },
                 [](World& world) {
                   auto target = world.Path<Char>("t\\");
                   return Line(Bound<int(const Char*, Char*, Unsigned)>(Twin<Char>(18))(
                       world.Path<Char>("s\\").c_str(), target.data(), 1));
                 },
                 "1",
                 // A start path that cannot be converted is refused.
                 kWide<Char> ? std::vector<std::string>{} : std::vector<std::string>{"0"},
                 {kFileException},
                 [](World& world, const std::string& got, const Record& record) -> std::string {
                   if (!record.failed.empty()) return "";
                   return got == "1" && world.Bytes("t\\sub\\large.bin") == kBytes &&
                                  world.Bytes("t\\keep.txt") == "12345"
                              ? ""
                              : "not copied";
                 }});
}

template <class Char>
void Add(std::vector<Scenario>& all) {
  AddFiles<Char>(all);
  AddContents<Char>(all);
  AddStorage<Char>(all);
  AddDirectories<Char>(all);
}

}  // namespace

std::vector<Scenario> FileScenarios() {
  std::vector<Scenario> all;
  Add<char>(all);
  Add<wchar_t>(all);
  return all;
}

}  // namespace faults
