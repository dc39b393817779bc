// SPDX-License-Identifier: MIT
// Harness.h: how one operation is measured in up to three ways at once.
//
// The ways run in turns, in batches (the library's export, the bare platform calls that its rules require,
// what a host's author would write instead, the export again), and each turn begins with another one. The
// fastest batch leaves out what other programs of the machine take; the median shows how much that was.
#pragma once

#include <windows.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "ZERATools.h"

namespace bench {

enum class Mode { quick, standard, full };

// What to measure how long, from the command line.
Mode TheMode();
// A folder for the files of one run; ends in a backslash.
const std::wstring& Folder();

// One of three, for a size that depends on the mode.
template <class Value>
Value ByMode(Value quick, Value standard, Value full) {
  return TheMode() == Mode::quick ? quick : TheMode() == Mode::standard ? standard : full;
}

// From `first` in steps of `factor` up to the mode's end.
std::vector<std::size_t> Sizes(std::size_t first, std::size_t factor, std::size_t quick, std::size_t standard,
                               std::size_t full);

// The library as hosts bind it:  const auto exist = BENCH_EXPORT(ZERA_TOOLS_FILE_EXIST_UC);
FARPROC Address(unsigned ordinal);
#define BENCH_EXPORT(name) \
  reinterpret_cast<decltype(&::name)>(reinterpret_cast<void*>(::bench::Address(name##_ORDINAL)))

double Nanoseconds();

// What is measured is used.
extern volatile long long sink;

// Runs one way a number of times; gives the nanoseconds of all calls together.
using Way = std::function<double(int)>;

template <class Body>
Way Calls(Body body) {
  return [body](int calls) mutable {
    const double start = Nanoseconds();
    for (int i = 0; i < calls; ++i) body();
    return Nanoseconds() - start;
  };
}

// For a way that uses something up: `prepare` runs before every call, and its time is not counted.
template <class Prepare, class Body>
Way Prepared(Prepare prepare, Body body) {
  return [prepare, body](int calls) mutable {
    double taken = 0;
    for (int i = 0; i < calls; ++i) {
      prepare();
      const double start = Nanoseconds();
      body();
      taken += Nanoseconds() - start;
    }
    return taken;
  };
}

// Measures one operation and writes its line. `size` is what it works on: units, bytes, files, keys. A way
// that does not exist is empty.
void Measure(const char* family, const std::string& operation, std::size_t size, const Way& ours,
             const Way& bare, const Way& plain = nullptr);

// The families. Each measures its operations, and, where a larger input could cost more than its share,
// how they grow.
void Loading();
void Frames();
void Paths();
void Files();
void Contents();
void ContentsGrowth();
void Storage();
void Trees();
void TreesGrowth();
void Settings();
void SettingsGrowth();
void Lines();
void LinesGrowth();
void Encryption();
void EncryptionGrowth();
void Conversions();
void ConversionsGrowth();
void Processes();
void Application();
void Layer();

// Where the time goes: what the library takes from the platform is counted and timed from the start on.
void StartProfile(HMODULE library);
void ClearProfile();
void ShowProfile(const std::string& operation, double nanoseconds, int calls);

// Peak memory: what one operation needs is made in one process, the operation runs in another. A small one
// of the same kind takes first what only the first takes.
enum class Input { small, large };
void MakeForMemory(const std::string& operation, std::size_t size);
bool DoForMemory(const std::string& operation, Input input);
void CleanAfterMemory();

}  // namespace bench
