// SPDX-License-Identifier: MIT
// Random calls of all exports, with every buffer at the edge of inaccessible memory: none crashes, writes
// beside a buffer, answers what its export does not allow, or raises what it may not.
//
//   --calls=N  that many calls, by turns through the exports (ZERA_GARBAGE_CALLS, default 20000)
//   --seed=N   others (ZERA_GARBAGE_SEED); one seed gives the same calls each time
//   --only=N   the call of that number alone (ZERA_GARBAGE_ONLY), with its files as they are at the start
//   --trace=1  tells each call before it is made, for one that does not come back (ZERA_GARBAGE_TRACE)
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Calls.h"
#include "Scratch.h"
#include "support/HostException.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"

namespace {

using garbage::Arguments;
using garbage::Call;
using garbage::Calls;

constexpr unsigned kNone = ~0u;

// An option of the command line, else of the environment.
unsigned Option(const char* option, const char* variable, unsigned otherwise) {
  const std::size_t length = std::strlen(option);
  const char* const set = std::getenv(variable);
  std::string value = set ? set : "";
  for (const std::string& argument : ::testing::internal::GetArgvs()) {
    if (argument.compare(0, length, option) == 0) value = argument.substr(length);
  }
  return value.empty() ? otherwise : static_cast<unsigned>(std::strtoul(value.c_str(), nullptr, 10));
}

// What is going on, for the report of a crash.
unsigned seed, current, ordinalNow;
const Arguments* argumentsNow;

std::string Where() {
  return "seed " + std::to_string(seed) + ", call " + std::to_string(current) + ", ordinal " +
         std::to_string(ordinalNow) + (argumentsNow ? argumentsNow->Shown() : "");
}

LONG CALLBACK TellCrash(EXCEPTION_POINTERS* what) {
  const EXCEPTION_RECORD& record = *what->ExceptionRecord;
  if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && argumentsNow) {
    std::printf("access violation at %p, address %p: %s\n", record.ExceptionAddress,
                reinterpret_cast<void*>(record.ExceptionInformation[1]), Where().c_str());
    std::fflush(stdout);
    argumentsNow = nullptr;
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

void WINAPI NoSleep(DWORD) {}
HANDLE WINAPI NoProcess(DWORD, BOOL, DWORD) {
  ::SetLastError(ERROR_ACCESS_DENIED);
  return nullptr;
}
BOOL WINAPI NoMessage(DWORD, UINT, WPARAM, LPARAM) {
  ::SetLastError(ERROR_INVALID_THREAD_ID);
  return FALSE;
}

bool MayRaise(unsigned ordinal, const std::string& raised) {
  if (raised == ".PEAVCInvalidArgException@@") return ordinal == 71;
  const unsigned plain = ordinal % 1000;
  return raised == ".PEAVCFileException@@" && plain >= 16 && plain <= 18;
}

Calls AllCalls() {
  Calls calls;
  garbage::AddPaths(calls);
  garbage::AddFiles(calls);
  garbage::AddSettings(calls);
  garbage::AddTexts(calls);
  garbage::AddMachine(calls);
  return calls;
}

class GarbageTest : public ::testing::Test {
 protected:
  GarbageTest() : handler_(::AddVectoredExceptionHandler(1, &TellCrash)) {}
  ~GarbageTest() override {
    argumentsNow = nullptr;
    ::RemoveVectoredExceptionHandler(handler_);
  }

  // One call, and all that must be true afterwards.
  void Try(const Call& call) {
    Arguments arguments(seed, current, scratch_.path());
    argumentsNow = &arguments;
    std::string complaint;
    const std::string raised = test::RaisedBy([&] { complaint = call(arguments); });
    if (!raised.empty()) {
      ++exceptions_;
      complaint = MayRaise(ordinalNow, raised) ? "" : "raised " + raised;
    }
    complaint += arguments.Harm();
    if (std::strcmp(::setlocale(LC_NUMERIC, nullptr), "C") != 0) complaint += " LC_NUMERIC is not as before";
    if (!complaint.empty()) {
      ++wrong_;
      ADD_FAILURE() << complaint << ": " << Where();
    }
    argumentsNow = nullptr;
  }

  void Reset() {
    for (const std::wstring& probe : scratch_.Reset()) {
      ++wrong_;
      ADD_FAILURE() << "a probe is left before " << Where() << ": " << test::Ansi(probe);
    }
  }

  garbage::Scratch scratch_;
  const test::ImportHook sleep_{"Sleep", &NoSleep}, process_{"OpenProcess", &NoProcess},
      post_{"PostThreadMessageW", &NoMessage};
  const test::InvalidParameter invalid_;
  unsigned exceptions_ = 0, wrong_ = 0;

 private:
  void* handler_;
};

TEST_F(GarbageTest, NoCallCrashesOrAnswersWhatItMayNot) {
  seed = Option("--seed=", "ZERA_GARBAGE_SEED", 20260101);
  const unsigned count = Option("--calls=", "ZERA_GARBAGE_CALLS", 20000);
  const unsigned only = Option("--only=", "ZERA_GARBAGE_ONLY", kNone);
  const bool trace = Option("--trace=", "ZERA_GARBAGE_TRACE", 0) != 0;
  const Calls calls = AllCalls();
  EXPECT_EQ(calls.size(), 142u);
  const std::vector<std::pair<unsigned, Call>> all(calls.begin(), calls.end());

  // What the calls make is taken away now and then, so that folders stay small.
  constexpr unsigned kRound = 3000, kEnough = 20;
  if (only != kNone) Reset();
  for (current = 0; current < count && wrong_ < kEnough; ++current) {
    if (only != kNone && current != only) continue;
    if (only == kNone && current % kRound == 0) Reset();
    ordinalNow = all[current % all.size()].first;
    if (trace) std::fprintf(stderr, "call %u, ordinal %u\n", current, ordinalNow);
    Try(all[current % all.size()].second);
  }
  Reset();
  EXPECT_TRUE(scratch_.OthersWhole());
  std::printf("garbage: %u calls of %zu exports, seed %u, %u exceptions, %d invalid parameters, %u wrong\n",
              only == kNone ? current : 1, all.size(), seed, exceptions_, invalid_.Count(), wrong_);
  std::fflush(stdout);
}

}  // namespace
