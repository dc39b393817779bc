// SPDX-License-Identifier: MIT
// Sixty-four threads over every export that any thread may call at any time, each answer checked. They are
// older than the library, and outlive it.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <list>
#include <mutex>
#include <set>
#include <thread>

#include "faults/Scenario.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"
#include "support/Machine.h"
#include "support/Rounds.h"

namespace {

using faults::Scenario;
using faults::World;

constexpr int kThreads = 64;

// A process to open, and what lists processes.
HANDLE WINAPI Snapshot(DWORD, DWORD) {
  return ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
}
HANDLE WINAPI Open(DWORD access, BOOL inherit, DWORD) {
  return ::OpenProcess(access, inherit, ::GetCurrentProcessId());
}
// Numbers with a decimal point are converted under a locale that is the process's: hosts let one thread at a
// time do it (docs/threads.md).
bool IsReentrant(unsigned ordinal) {
  static const std::set<unsigned> shared = {53, 54, 63, 64, 84, 85};
  return shared.count(ordinal >= 1000 ? ordinal - 1000 : ordinal) == 0;
}

std::vector<Scenario> Reentrant() {
  std::vector<Scenario> all;
  for (auto* const family :
       {&faults::PathScenarios, &faults::FileScenarios, &faults::ProfileScenarios, &faults::CryptScenarios,
        &faults::ConvertScenarios, &faults::ProcessScenarios, &faults::ApplicationScenarios}) {
    for (const Scenario& one : family()) {
      if (IsReentrant(one.ordinal)) all.push_back(one);
    }
  }
  return all;
}

bool Matches(const std::string& pattern, const std::string& text) {
  if (pattern.empty() || pattern.back() != '*') return pattern == text;
  return text.compare(0, pattern.size() - 1, pattern, 0, pattern.size() - 1) == 0;
}

std::mutex complaintsLock;
std::vector<std::string> complaints;
std::atomic<long long> calls;

void Try(const Scenario& scenario, World& world) {
  world.hosts.clear();
  world.objects.clear();
  if (scenario.prepare) {
    world.Clear();
    scenario.prepare(world);
  }
  ++calls;
  const std::string got = scenario.call(world);
  std::string wrong;
  if (!Matches(scenario.clean, got)) wrong = "got " + got;
  if (scenario.prepare && wrong.empty()) wrong = world.Harm();
  if (scenario.prepare && scenario.after && wrong.empty()) wrong = scenario.after(world, got, {});
  world.objects.clear();
  if (wrong.empty()) return;
  const std::lock_guard lock(complaintsLock);
  complaints.push_back("ordinal " + std::to_string(scenario.ordinal) + ", " + scenario.what + ": " + wrong);
}

// What a pass over all of them leaves: blocks that became the host's, and under Wine a handle for each key of
// the cipher. One thread's count is what each of the others may leave.
struct Kept {
  int blocks, handles;
};

TEST(Threads, SixtyFourOverAllReentrantExports) {
  const std::vector<Scenario> scenarios = Reentrant();
  // What touches files takes its time: each thread does one part of that in a pass.
  constexpr std::size_t kParts = 8;
  const int passes = (test::Rounds(400) + 49) / 50;
  std::barrier together(kThreads + 1);
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      World world;
      MSG message;
      ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the thread's queue, which is a handle
      together.arrive_and_wait();
      // The library is loaded here.
      together.arrive_and_wait();
      for (int pass = 0; pass < passes; ++pass) {
        // Each begins elsewhere, so that different exports meet.
        for (std::size_t i = 0; i < scenarios.size(); ++i) {
          const std::size_t which = (i + static_cast<std::size_t>(number) * 7) % scenarios.size();
          if (scenarios[which].prepare &&
              which % kParts != static_cast<std::size_t>(number + pass) % kParts) {
            continue;
          }
          Try(scenarios[which], world);
        }
      }
      world.Clear();
      together.arrive_and_wait();
      // The library is unloaded here.
      together.arrive_and_wait();
    });
  }
  together.arrive_and_wait();
  ASSERT_EQ(::GetModuleHandleW(L"ZERATools.dll"), nullptr) << "the threads are older than the library";
  std::set<unsigned> missing;
  for (unsigned ordinal = 1; ordinal <= 1091; ++ordinal) {
    if (IsReentrant(ordinal) &&
        ::GetProcAddress(test::Library(), reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal)))) {
      missing.insert(ordinal);
    }
  }
  EXPECT_EQ(missing.size(), 142u - 12u);
  for (const Scenario& one : scenarios) missing.erase(one.ordinal);
  EXPECT_EQ(missing, std::set<unsigned>()) << "no call for these";
  {
    std::list<test::ImportHook> hooks;
    hooks.emplace_back("CreateToolhelp32Snapshot", &Snapshot);
    hooks.emplace_back("OpenProcess", &Open);
    for (const test::StandIn& one : test::Machine()) hooks.emplace_back(one.name, one.function);
    const test::HeapWatch heap;
    World world;
    const auto pass = [&](bool files) {
      const int blocks = heap.Outstanding(), handles = static_cast<int>(test::OpenHandles());
      for (const Scenario& one : scenarios) {
        if ((one.prepare != nullptr) == files) Try(one, world);
      }
      return Kept{heap.Outstanding() - blocks, static_cast<int>(test::OpenHandles()) - handles};
    };
    for (const bool files : {true, false}) pass(files);  // lets the platform set up what it keeps
    const Kept none = pass(true), kept = pass(false);
    EXPECT_EQ(none.blocks, 0);
    EXPECT_EQ(none.handles, 0);
    const int blocks = heap.Outstanding(), handles = static_cast<int>(test::OpenHandles());
    const auto start = ::GetTickCount64();
    together.arrive_and_wait();
    together.arrive_and_wait();
    EXPECT_EQ(heap.Outstanding() - blocks, kThreads * passes * kept.blocks);
    // Where two threads first meet at a lock of the platform it makes an event; a handle of each thread would
    // show.
    EXPECT_NEAR(static_cast<int>(test::OpenHandles()) - handles, kThreads * passes * kept.handles,
                kThreads / 2);
    std::printf("load: %d threads, %zu exports, %lld checked calls, %llu ms\n", kThreads,
                std::size_t{142 - 12}, calls.load(), ::GetTickCount64() - start);
  }
  EXPECT_TRUE(::FreeLibrary(test::Library()));
  EXPECT_EQ(::GetModuleHandleW(L"ZERATools.dll"), nullptr) << "the library stays in memory";
  together.arrive_and_wait();
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(complaints.size(), 0u);
  for (std::size_t i = 0; i < complaints.size() && i < 20; ++i) ADD_FAILURE() << complaints[i];
}

}  // namespace
