// SPDX-License-Identifier: MIT
// Every export, every platform call that it makes, each of them failing in every way that it can: what comes
// back is what the export's rules allow, and nothing is left, lost or harmed.
//
// ZERA_FAULTS=all in the environment tries every error code in every mode, and a clean call after each;
// ZERA_FAULTS_PART=2/24 every 24th scenario from the second on, ZERA_FAULTS_ORDINAL=16 those of one export.
// Without it the first call of each function in a scenario fails alone with every code and once in each other
// mode; a later call fails alone and in one other mode, with codes by turns; a clean call comes after each
// position.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "Scenario.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"

namespace {

using faults::Mode;
using faults::Plan;
using faults::Record;
using faults::Scenario;
using faults::World;

struct Figures {
  std::set<unsigned> exports;
  unsigned long long scenarios = 0, faults = 0, exceptions = 0, violations = 0, calls = 0;
};
Figures figures;

bool Matches(const std::string& pattern, const std::string& text) {
  if (!pattern.empty() && pattern.back() == '*')
    return text.compare(0, pattern.size() - 1, pattern, 0, pattern.size() - 1) == 0;
  return pattern == text;
}

bool MatchesAny(const std::vector<std::string>& patterns, const std::string& text) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::string& pattern) { return Matches(pattern, text); });
}

// Numbers under the locale of a user with a decimal comma.
class NumericLocale {
 public:
  NumericLocale() {
    EXPECT_NE(::setlocale(LC_NUMERIC, "german"), nullptr);
    name_ = ::setlocale(LC_NUMERIC, nullptr);
  }
  NumericLocale(const NumericLocale&) = delete;
  NumericLocale& operator=(const NumericLocale&) = delete;
  ~NumericLocale() { ::setlocale(LC_NUMERIC, "C"); }
  bool Kept() const { return name_ == ::setlocale(LC_NUMERIC, nullptr); }
  void Restore() const { ::setlocale(LC_NUMERIC, name_.c_str()); }

 private:
  std::string name_;
};

class FaultHarness : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { hooks_ = new faults::Hooks; }
  static void TearDownTestSuite() {
    PrintFigures();
    delete hooks_;
  }

  static void Run(const std::vector<Scenario>& scenarios) {
    for (const Scenario& scenario : scenarios) {
      if (!IsChosen(scenario)) continue;
      const auto before = ::GetTickCount64();
      Run(scenario);
      if (std::getenv("ZERA_FAULTS_TIMES")) {
        std::printf("%u %s: %llu ms\n", scenario.ordinal, scenario.what.c_str(), ::GetTickCount64() - before);
      }
    }
  }

 private:
  static bool IsChosen(const Scenario& scenario) {
    static unsigned number = 0;
    ++number;
    unsigned first = 1, step = 1;
    if (const char* const part = std::getenv("ZERA_FAULTS_PART")) std::sscanf(part, "%u/%u", &first, &step);
    const char* const only = std::getenv("ZERA_FAULTS_ORDINAL");
    return number % step == first % step &&
           (!only || static_cast<unsigned>(std::atoi(only)) == scenario.ordinal);
  }

  static void Run(const Scenario& scenario) {
    ++figures.scenarios;
    figures.exports.insert(scenario.ordinal);
    World world;
    // The first call lets the platform set up what it keeps.
    Try(scenario, world, {});
    const DWORD handles = test::OpenHandles();
    const unsigned long long violations = figures.violations;
    const Record clean = Try(scenario, world, {});
    static const bool all = std::getenv("ZERA_FAULTS") != nullptr;
    std::set<std::size_t> functions;
    for (std::size_t position = 1; position <= clean.calls.size(); ++position) {
      const std::size_t function = clean.calls[position - 1];
      const bool first = functions.insert(function).second;
      for (const Mode mode : faults::kModes) {
        const bool everyCode = all || (first && mode == Mode::kOnce);
        // Behind a function's first call the three other modes take turns.
        if (!all && !first && mode != Mode::kOnce && mode != faults::kModes[1 + position % 3]) continue;
        for (std::size_t code = 0; code < (everyCode ? faults::Codes(function) : 1); ++code) {
          Try(scenario, world, {mode, position, everyCode ? code : position});
          if (all) Try(scenario, world, {});
          if (figures.violations > 40) return;
        }
      }
      // A clean call afterwards is right.
      if (!all) Try(scenario, world, {});
    }
    world.Clear();
    // The framework of the tests opens some when it reports a failure.
    // Wine keeps one for each key of the cipher; those are counted by their calls alone.
    const bool cipher = scenario.ordinal % 1000 >= 71 && scenario.ordinal % 1000 <= 77;
    if (!cipher && figures.violations == violations && test::OpenHandles() != handles)
      Complain(scenario, {}, {}, "kernel handles stay open", {});
  }

  // One call under a plan, and all that must be true afterwards.
  static Record Try(const Scenario& scenario, World& world, const Plan& plan) {
    static const NumericLocale locale;
    const test::InvalidParameter invalid;
    world.hosts.clear();
    world.objects.clear();
    if (scenario.prepare) {
      world.Clear();
      scenario.prepare(world);
    }
    const std::string data = faults::ThreadData();
    std::string got;
    void* exception = nullptr;
    ++figures.calls;
    // What the scenario sets up for the host ends with the call, except when an exception cuts it off; so
    // that is recorded inside.
    faults::Begin(plan);
    const std::string raised = test::RaisedBy([&] { got = scenario.call(world); }, &exception);
    Record record = faults::End();
    const auto complain = [&](const std::string& about) { Complain(scenario, plan, record, about, got); };
    if (plan.mode != Mode::kNone) ++figures.faults;
    if (exception) {
      ++figures.exceptions;
      test::DeleteException(exception);
      got = raised;
      const bool memory = raised == test::kMemoryException && record.memoryFailed;
      if (!memory && (record.failed.empty() || !MatchesAny(scenario.raises, raised))) complain("raised");
    } else if (!Matches(scenario.clean, got) &&
               (record.failed.empty() || !MatchesAny(scenario.allowed, got))) {
      complain("a result that is not allowed");
    }
    for (const std::string& one : record.complaints) complain(one);
    for (const std::string& one : faults::Leftovers(world.hosts)) complain("left behind: " + one);
    for (const auto& object : world.objects) {
      const std::string shown = object->Shown();
      if (shown.find(" HARMED") != std::string::npos) complain("an object of the host: " + shown);
    }
    if (faults::ThreadData() != data) complain("the module state or the runtime's account is not as before");
    if (!locale.Kept()) {
      if (!record.localeLost) complain("LC_NUMERIC is not as before");
      locale.Restore();
    }
    // A deletion that fails once is tried again.
    const bool undeletable =
        record.Failed("DeleteFileW") && (plan.mode == Mode::kOnward || plan.mode == Mode::kEverything);
    for (const std::wstring& probe : LeftBehind(world)) {
      if (!undeletable) complain("a probe is left: " + test::Ansi(probe));
    }
    if (scenario.prepare) {
      const std::string harm = world.Harm();
      if (!harm.empty()) complain("source data: " + harm);
      if (scenario.after) {
        const std::string complaint = scenario.after(world, got, record);
        if (!complaint.empty()) complain(complaint);
      }
    }
    return record;
  }

  // The probes that were made and are still there. A write check tries the folders on the way from the root,
  // and a path without the shell's answer begins there: what was made outside the scenario's folder goes.
  static std::vector<std::wstring> LeftBehind(const World& world) {
    std::vector<std::wstring> probes;
    const auto& made = faults::Made();
    for (auto path = made.rbegin(); path != made.rend(); ++path) {
      const bool outside = path->compare(0, world.path().size(), world.path()) != 0;
      if (outside) outside_.insert(*path);
      if ((!outside && !IsProbe(*path)) || !test::Exists(*path)) continue;
      if (IsProbe(*path)) probes.push_back(*path);
      if (outside && !::DeleteFileW(path->c_str())) ::RemoveDirectoryW(path->c_str());
    }
    return probes;
  }
  static bool IsProbe(const std::wstring& path) {
    return path.size() > 4 && path.compare(path.size() - 4, 4, L".$$$") == 0;
  }

  static void Complain(const Scenario& scenario, const Plan& plan, const Record& record,
                       const std::string& about, const std::string& got) {
    ++figures.violations;
    std::string failed;
    for (const std::string& one : record.failed) {
      if (failed.size() < 200) failed += " " + one;
    }
    ADD_FAILURE() << "ordinal " << scenario.ordinal << ", " << scenario.what << "; "
                  << faults::Name(plan.mode) << ", call " << plan.position << ", code " << plan.code
                  << "; failed:" << failed << "\n  " << about << "; got: " << got;
  }

  static void PrintFigures() {
    const auto rows = faults::Table();
    unsigned long long seen = 0, failing = 0, failed = 0;
    std::printf("\n%-36s %12s %10s\n", "platform function", "calls seen", "failed");
    for (const faults::Row& row : rows) {
      if (row.seen == 0) continue;
      ++seen;
      if (row.canFail) ++failing;
      failed += row.failed;
      std::printf("%-36s %12llu %10s\n", row.name.c_str(), row.seen,
                  row.canFail ? std::to_string(row.failed).c_str() : "cannot");
    }
    std::printf("never called:");
    for (const faults::Row& row : rows) {
      if (row.seen == 0) std::printf(" %s", row.name.c_str());
    }
    std::printf(
        "\n\nfault harness: %zu exports, %llu scenarios, %zu imported functions, %llu of them called, %llu "
        "of "
        "those made to fail\nfault harness: %llu faults (%llu failing calls), %llu exceptions, %llu calls in "
        "all, %llu violations\n",
        figures.exports.size(), figures.scenarios, rows.size(), seen, failing, figures.faults, failed,
        figures.exceptions, figures.calls, figures.violations);
    std::fflush(stdout);
  }

  static inline faults::Hooks* hooks_;

 protected:
  // What was ever made outside a scenario's folder.
  static inline std::set<std::wstring> outside_;
};

TEST_F(FaultHarness, Paths) {
  Run(faults::PathScenarios());
}
TEST_F(FaultHarness, Files) {
  Run(faults::FileScenarios());
}
TEST_F(FaultHarness, Profiles) {
  Run(faults::ProfileScenarios());
}
TEST_F(FaultHarness, Encryption) {
  Run(faults::CryptScenarios());
}
TEST_F(FaultHarness, Conversions) {
  Run(faults::ConvertScenarios());
}
TEST_F(FaultHarness, Processes) {
  Run(faults::ProcessScenarios());
}
TEST_F(FaultHarness, Applications) {
  Run(faults::ApplicationScenarios());
}

TEST_F(FaultHarness, NoExportIsMissing) {
  if (std::getenv("ZERA_FAULTS_ORDINAL") || std::getenv("ZERA_FAULTS_PART"))
    GTEST_SKIP() << "some exports only";
  unsigned exports = 0;
  for (unsigned ordinal = 1; ordinal <= 1091; ++ordinal) {
    if (!::GetProcAddress(test::Library(), reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal))))
      continue;
    ++exports;
    EXPECT_EQ(figures.exports.count(ordinal), 1u) << "no scenario for ordinal " << ordinal;
  }
  EXPECT_EQ(exports, 142u);
}

TEST_F(FaultHarness, NothingIsLeftOnTheDrive) {
  for (const std::wstring& path : outside_) EXPECT_FALSE(test::Exists(path)) << test::Ansi(path);
}

}  // namespace
