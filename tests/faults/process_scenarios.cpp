// SPDX-License-Identifier: MIT
// Processes, thread messages and guarded allocation; the processes are the machine's of the tests.
#include "Scenario.h"
#include "support/Machine.h"

namespace faults {
namespace {

template <class Char>
void Add(std::vector<Scenario>& all) {
  all.push_back({Twin<Char>(90),
                 "two processes",
                 {},
                 [](World&) {
                   return std::to_string(Bound<int(const Char*)>(Twin<Char>(90))(
                       Text<Char>(test::Ansi(test::kMachineProcess)).c_str()));
                 },
                 "1",
                 {}});
  all.push_back({Twin<Char>(91),
                 "two processes",
                 {},
                 [](World&) {
                   return std::to_string(Bound<unsigned(const Char*)>(Twin<Char>(91))(
                       Text<Char>(test::Ansi(test::kMachineModule)).c_str()));
                 },
                 "2",
                 {"0", "1"}});
}

}  // namespace

std::vector<Scenario> ProcessScenarios() {
  std::vector<Scenario> all;
  Add<char>(all);
  Add<wchar_t>(all);
  all.push_back({92,
                 "to this thread",
                 {},
                 [](World&) {
                   MSG message;
                   ::PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_REMOVE);
                   CWinThread thread(::GetCurrentThreadId());
                   const int result =
                       test::Export<decltype(ZERA_TOOLS_POSTTHREADMESSAGE)>(92)(&thread, WM_USER, 1, 2);
                   const bool there = ::PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_REMOVE);
                   return std::to_string(result) + (there ? " posted" : " not posted");
                 },
                 "1 posted",
                 {"0 not posted"}});
  all.push_back({93,
                 "a block",
                 {},
                 [](World& world) {
                   void* const block = test::Export<decltype(ZERA_TOOLS_SAFE_NEW)>(93)(1000);
                   if (!block) return std::string("null");
                   world.hosts.push_back(block);
                   const bool large = _msize(block) >= 1000;
                   // The address is compared with what is left, and never used again.
                   std::free(block);
                   return std::string(large ? "a block" : "too small a block");
                 },
                 "a block",
                 {"null"}});
  return all;
}

}  // namespace faults
