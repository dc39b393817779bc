// SPDX-License-Identifier: MIT
// Faults.h: every platform function that the library imports, made to count and to fail.
//
// All entries of the loaded library's import table are replaced by thunks of one generic stub. A thunk counts
// its call and passes it on untouched, with every register that carries an argument, unless the plan of the
// running call says that it fails; then the failure table says how that function fails.
#pragma once

#include <string>
#include <vector>

namespace faults {

/// Which calls fail, counted over all calls that can fail at all, from 1.
enum class Mode {
  kNone,
  kOnce,        ///< the n-th
  kOnward,      ///< the n-th and all later ones of the same function
  kEverything,  ///< from the n-th on every function
  kWithMemory,  ///< the n-th, and from then on memory is exhausted
};
constexpr Mode kModes[] = {Mode::kOnce, Mode::kOnward, Mode::kEverything, Mode::kWithMemory};
const char* Name(Mode mode);

struct Plan {
  Mode mode = Mode::kNone;
  std::size_t position = 0;
  std::size_t code = 0;  ///< which of the function's error codes; taken modulo their number
};

/// What was seen while a call ran.
struct Record {
  std::vector<std::size_t> calls;  ///< the function of each call that can fail, in order
  std::vector<std::string> failed;
  std::vector<std::string> complaints;  ///< handles closed twice and the like
  bool memoryFailed = false;
  bool localeLost = false;  ///< the call that restores the numeric locale was made to fail

  bool Failed(const std::string& function) const;
};

/// Replaces the whole import table while it lives. Sleeps take no time.
class Hooks {
 public:
  Hooks();
  Hooks(const Hooks&) = delete;
  Hooks& operator=(const Hooks&) = delete;
  ~Hooks();
};

void Begin(const Plan& plan);
Record End();

/// A call of a host's string manager counts as one that can fail: whether this one shall.
bool HostAllocationFails();

/// What the library took and did not give back since the last Begin: blocks of the heap, but not those that
/// the host owns now, and open handles by kind.
std::vector<std::string> Leftovers(const std::vector<const void*>& hosts);

/// The files and folders that the library made since the last Begin, in the order of making.
const std::vector<std::wstring>& Made();

/// The number of ways in which a function can fail.
std::size_t Codes(std::size_t function);
std::string NameOf(std::size_t function);

/// The library's data of this thread, its module state among them.
std::string ThreadData();

struct Row {
  std::string name;
  bool canFail;
  unsigned long long seen;
  unsigned long long failed;
};
std::vector<Row> Table();

}  // namespace faults
