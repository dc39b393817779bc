// SPDX-License-Identifier: MIT
// Paths as text: no disk and no memory, only the C runtime's checked functions can refuse.
#include "Scenario.h"

namespace faults {
namespace {

template <class Char>
void AddGet(std::vector<Scenario>& all, unsigned plain, const char* what, const char* expected) {
  const unsigned ordinal = Twin<Char>(plain);
  const std::string quoted = std::string("1 \"") + expected + "\"";
  all.push_back({ordinal,
                 what,
                 {},
                 [=](World&) {
                   test::GuardedBuffer<Char> out(32);
                   const int result = Bound<int(const Char*, Char*, std::size_t)>(ordinal)(
                       Text<Char>("C:\\data\\run.ini").c_str(), out.data(), out.capacity());
                   return std::to_string(result) + " " + Shown(out);
                 },
                 quoted,
                 {"1 \"\""}});
}

template <class Char>
void AddChange(std::vector<Scenario>& all, unsigned plain, const char* what, const char* argument,
               const char* expected) {
  const unsigned ordinal = Twin<Char>(plain);
  all.push_back({ordinal,
                 what,
                 {},
                 [=](World&) {
                   test::GuardedBuffer<Char> path(64, Text<Char>("C:\\data\\run.ini"));
                   const int result = Bound<int(Char*, std::size_t, const Char*)>(ordinal)(
                       path.data(), path.capacity(), Text<Char>(argument).c_str());
                   return std::to_string(result) + " " + Shown(path);
                 },
                 std::string("1 \"") + expected + "\"",
                 {"1 \"\""}});
}

template <class Char>
void Add(std::vector<Scenario>& all) {
  AddGet<Char>(all, 10, "drive", "C:");
  AddGet<Char>(all, 11, "directory", "\\data\\");
  AddGet<Char>(all, 12, "name", "run");
  AddGet<Char>(all, 13, "extension", ".ini");
  AddGet<Char>(all, 14, "drive and directory", "C:\\data\\");
  AddGet<Char>(all, 15, "name and extension", "run.ini");
  AddChange<Char>(all, 20, "another drive", "D", "D:\\data\\run.ini");
  AddChange<Char>(all, 21, "another directory", "\\new", "C:\\new\\run.ini");
  AddChange<Char>(all, 22, "another name", "walk", "C:\\data\\walk.ini");
  AddChange<Char>(all, 23, "another extension", "bak", "C:\\data\\run.bak");
  AddChange<Char>(all, 24, "another name and extension", "E:\\x\\y.z", "C:\\data\\y.z");
  AddChange<Char>(all, 28, "another drive and directory", "E:\\x\\y.z", "E:\\x\\run.ini");
  AddChange<Char>(all, 30, "more directory", "old", "C:\\data\\old\\run.ini");
  AddChange<Char>(all, 32, "more name", "_bak", "C:\\data\\run_bak.ini");
  const unsigned index = Twin<Char>(33);
  all.push_back({index,
                 "a number",
                 {},
                 [=](World&) {
                   test::GuardedBuffer<Char> path(64, Text<Char>("C:\\data\\run.ini"));
                   const int result = Bound<int(Char*, std::size_t, unsigned, unsigned)>(index)(
                       path.data(), path.capacity(), 7, 4);
                   return std::to_string(result) + " " + Shown(path);
                 },
                 "1 \"C:\\data\\run0007.ini\"",
                 {"1 \"\""}});
}

}  // namespace

std::vector<Scenario> PathScenarios() {
  std::vector<Scenario> all;
  Add<char>(all);
  Add<wchar_t>(all);
  return all;
}

}  // namespace faults
