// SPDX-License-Identifier: MIT
// Where an application's settings file is, and its language.
#include "Scenario.h"
#include "support/Machine.h"

namespace faults {
namespace {

using test::kLanguageModule;
using test::places;

const char kSeed[] = "[Vorgaben]\r\nLanguage=FRA\r\n";

void Install(World& world) {
  for (const char* const folder :
       {"app", "app\\TOOLS", "common", "common\\app", "common\\app\\TOOLS", "user"}) {
    world.Folder(folder);
  }
  places.module = world.Path<wchar_t>("app\\TOOLS\\view.exe");
  places.common = world.Path<wchar_t>("common");
  places.user = world.Path<wchar_t>("user");
}

void Beside(World& world) {
  Install(world);
  world.Source("app\\TOOLS\\view.ini", kSeed);
}
void Missing(World& world) {
  Install(world);
  world.Source("common\\app\\TOOLS\\view.ini", kSeed);
}
void Older(World& world) {
  Missing(world);
  for (const char* const folder : {"user\\app", "user\\app\\TOOLS"}) world.Folder(folder);
  world.File("user\\app\\TOOLS\\view.ini", "old");
  world.Date("user\\app\\TOOLS\\view.ini", 1'000'000'000);
}

// Paths as seen from the world's folder.
std::string Relative(const World& world, std::string text) {
  const std::string whole = test::Ansi(world.path());
  for (std::size_t at; (at = text.find(whole)) != std::string::npos;) text.replace(at, whole.size(), "~\\");
  return text;
}

template <class Char>
void AddLocations(std::vector<Scenario>& all, unsigned ordinal, bool flag) {
  const auto call = [=](World& world) {
    auto& out = world.New<Host<Char>>(Text<Char>("before").c_str());
    int copied = 77;
    const int result =
        flag ? Bound<int(HMODULE, CStringT<Char>&, int*)>(ordinal)(nullptr, out.object(), &copied)
             : Bound<int(HMODULE, CStringT<Char>&)>(ordinal)(nullptr, out.object());
    return Relative(world,
                    std::to_string(result) + " " + out.Shown() + (flag ? " " + std::to_string(copied) : ""));
  };
  const auto outcome = [=](int result, const std::string& path, int copied) {
    return std::to_string(result) + " \"" + path + "\"" + (flag ? " " + std::to_string(copied) : "");
  };
  const std::string beside = "~\\app\\TOOLS\\view.ini";
  const std::string user = "~\\user\\app\\TOOLS\\view.ini";
  // Where the shell names no folder, or text cannot be converted, the path is a shorter one.
  const std::string lost = "\\app\\TOOLS\\view.ini";
  std::vector<std::string> failures;
  for (const int copied : {0, 1}) {
    for (const std::string& path : {user, lost, std::string()}) failures.push_back(outcome(0, path, copied));
    failures.push_back(outcome(1, lost, copied));
    if (!kWide<Char>) failures.push_back(outcome(1, "", copied));
  }
  const auto with = [&](std::string more) {
    std::vector<std::string> list = failures;
    list.push_back(std::move(more));
    return list;
  };
  all.push_back(
      {ordinal, "beside the module", &Beside, call, outcome(1, beside, 0), failures, {kFileException}});
  all.push_back({ordinal,
                 "to be seeded",
                 &Missing,
                 call,
                 outcome(1, user, 1),
                 failures,
                 {kFileException},
                 [](World& world, const std::string& got, const Record& record) -> std::string {
                   const bool seeded = world.Bytes("user\\app\\TOOLS\\view.ini") == kSeed;
                   return record.failed.empty() && (got[0] != '1' || !seeded) ? "not seeded" : "";
                 }});
  all.push_back({ordinal,
                 "to be seeded again",
                 &Older,
                 call,
                 outcome(1, user, 1),
                 with(outcome(1, user, 0)),
                 {kFileException}});
}

template <class Char>
void AddLanguages(std::vector<Scenario>& all, unsigned get, unsigned save) {
  all.push_back({get,
                 "a language",
                 [](World& world) { world.Source("view.ini", kSeed); },
                 [=](World& world) {
                   return std::to_string(Bound<int(const Char*)>(get)(world.Path<Char>("view.ini").c_str()));
                 },
                 "2",
                 {"0"}});
  all.push_back(
      {save,
       "a language",
       [](World& world) { world.File("view.ini", kSeed); },
       [=](World& world) {
         return std::to_string(Bound<int(int, const Char*)>(save)(12, world.Path<Char>("view.ini").c_str()));
       },
       "1",
       {},
       {},
       [](World& world, const std::string&, const Record& record) -> std::string {
         const std::string now = world.Bytes("view.ini");
         // An empty companion is none.
         const bool saved = now == "[Vorgaben]\r\nLanguage=BGR\r\n" ||
                            now == "[Vorgaben]\r\nLanguage=BGR\r\nLanguage_utf8=\r\n";
         return !saved && (record.failed.empty() || now != kSeed) ? "the settings became " + now : "";
       }});
}

}  // namespace

std::vector<Scenario> ApplicationScenarios() {
  std::vector<Scenario> all;
  AddLocations<char>(all, 200, false);
  AddLocations<wchar_t>(all, 201, false);
  AddLocations<char>(all, 207, true);
  AddLocations<wchar_t>(all, 208, true);
  AddLanguages<char>(all, 202, 205);
  AddLanguages<wchar_t>(all, 203, 206);
  all.push_back({209,
                 "both folders",
                 &Install,
                 [](World& world) {
                   auto& common = world.New<Host<wchar_t>>(L"before");
                   auto& user = world.New<Host<wchar_t>>(L"before");
                   const int result = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)>(209)(
                       nullptr, common.object(), user.object());
                   return Relative(world, std::to_string(result) + " " + common.Shown() + " " + user.Shown());
                 },
                 "1 \"~\\common\\app\\TOOLS\\view\" \"~\\user\\app\\TOOLS\\view\"",
                 {"0 \"\" \"\"", "1 \"~\\user\\app\\TOOLS\\view\" \"~\\user\\app\\TOOLS\\view\"",
                  "1 \"~\\common\\app\\TOOLS\\view\" \"\\app\\TOOLS\\view\"",
                  "1 \"\\app\\TOOLS\\view\" \"\\app\\TOOLS\\view\""}});
  all.push_back({204,
                 "a language module",
                 [](World& world) {
                   Install(world);
                   world.Source("app\\TOOLS\\view_FRA.dll", "a module");
                 },
                 [](World&) {
                   const HMODULE module =
                       test::Export<decltype(ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL)>(204)(nullptr, 2);
                   return std::string(module == kLanguageModule ? "the module" : module ? "another" : "null");
                 },
                 "the module",
                 {"null"}});
  return all;
}

}  // namespace faults
