// SPDX-License-Identifier: MIT
// The benchmark's measurements as lines of CSV; scripts/bench.sh runs it and makes table and pictures.
//   zera_bench rows   MODE OUT [FAMILY]   every operation once
//   zera_bench growth MODE OUT    operations from small to large
//   zera_bench memory MODE OUT    peak memory from small to large
//   zera_bench profile OPERATION SECONDS   what the export spends in the platform; OPERATION is part of a
//   name
// MODE is quick, standard or full; OUT a file that lines are added to.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <psapi.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "Harness.h"

namespace bench {

volatile long long sink;

namespace {

Mode mode = Mode::quick;
std::wstring folder;
std::FILE* out;
HMODULE library;
// The operation that is profiled, and for how long.
std::string profiled;
double profileSeconds;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "zera_bench: %s\n", what.c_str());
  std::exit(125);
}

struct Times {
  std::vector<double> all;
  int calls = 1;

  double Fastest() const { return *std::min_element(all.begin(), all.end()); }
  double Median() const {
    std::vector<double> sorted = all;
    std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2),
                     sorted.end());
    return sorted[sorted.size() / 2];
  }
};

// One call warms up and tells how many make a batch.
int CallsOfABatch(const Way& way, double batch, double& one) {
  one = way(1);
  if (one < batch / 50) one = way(50) / 50;
  return std::clamp(static_cast<int>(batch / std::max(one, 1.0)), 1, 1'000'000);
}

void Line(const char* family, const std::string& operation, std::size_t size, const std::string& numbers) {
  std::fprintf(out, "%s,%s,%llu,%s\n", family, operation.c_str(), static_cast<unsigned long long>(size),
               numbers.c_str());
  std::fflush(out);
}

}  // namespace

Mode TheMode() {
  return mode;
}

const std::wstring& Folder() {
  return folder;
}

std::vector<std::size_t> Sizes(std::size_t first, std::size_t factor, std::size_t quick, std::size_t standard,
                               std::size_t full) {
  std::vector<std::size_t> sizes;
  for (std::size_t size = first; size <= ByMode(quick, standard, full); size *= factor) sizes.push_back(size);
  return sizes;
}

FARPROC Address(unsigned ordinal) {
  const FARPROC address =
      ::GetProcAddress(library, reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal)));
  if (!address) Fail("no export of ordinal " + std::to_string(ordinal));
  return address;
}

double Nanoseconds() {
  static const double scale = [] {
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    return 1e9 / static_cast<double>(frequency.QuadPart);
  }();
  LARGE_INTEGER count;
  ::QueryPerformanceCounter(&count);
  return static_cast<double>(count.QuadPart) * scale;
}

void Measure(const char* family, const std::string& operation, std::size_t size, const Way& ours,
             const Way& bare, const Way& plain) {
  if (!profiled.empty()) {
    // Others run once, since one may need what another has made.
    ours(1);
    if (operation.find(profiled) == std::string::npos) return;
    ClearProfile();
    int calls = 0;
    double taken = 0;
    for (; taken < profileSeconds * 1e9; ++calls) taken += ours(1);
    ShowProfile(operation, taken, calls);
    return;
  }
  const Way* const ways[] = {&ours, &bare, &plain};
  const double batch = ByMode(5e4, 1e6, 2e6);
  // As many turns as the time allows, for slow operations a few.
  const double budget = ByMode(1e5, 5e8, 5e8);
  const int most = ByMode(2, 150, 150);
  Times times[3];
  double first[3] = {}, slowest = 0;
  for (int i = 0; i < 3; ++i) {
    if (!*ways[i]) continue;
    times[i].calls = CallsOfABatch(*ways[i], batch, first[i]);
    slowest = std::max(slowest, first[i]);
  }
  // What takes seconds needs no warming up.
  const bool slow = slowest > 2e9;
  for (int i = 0; slow && i < 3; ++i) {
    if (*ways[i]) times[i].all.push_back(first[i]);
  }
  const int least = slow ? 1 : slowest > 2e8 ? ByMode(2, 4, 4) : ByMode(2, 15, 15);
  const double start = Nanoseconds();
  for (int turn = 0; turn < least || (turn < most && Nanoseconds() - start < budget); ++turn) {
    for (int i = 0; i < 3; ++i) {
      const int way = (turn + i) % 3;
      if (!*ways[way]) continue;
      times[way].all.push_back((*ways[way])(times[way].calls) / times[way].calls);
    }
  }
  std::string numbers = std::to_string(times[0].all.size());
  for (const Times& one : times) {
    char text[64] = ",,";
    if (!one.all.empty()) std::snprintf(text, sizeof text, ",%.2f,%.2f", one.Fastest(), one.Median());
    numbers += text;
  }
  Line(family, operation, size, numbers);
}

namespace {

constexpr struct {
  const char* name;
  void (*measure)();
} kFamilies[] = {
    {"Frames", Frames},         {"Paths", Paths},
    {"Files", Files},           {"Contents", Contents},
    {"Storage", Storage},       {"Trees", Trees},
    {"Settings", Settings},     {"Lines", Lines},
    {"Encryption", Encryption}, {"Conversions", Conversions},
    {"Processes", Processes},   {"Application", Application},
    {"Layer", Layer},
};

// All families, or one.
void Rows(const char* only = nullptr) {
  for (const auto& family : kFamilies) {
    if (!only || std::strcmp(only, family.name) == 0) family.measure();
  }
}

void Growth() {
  ConversionsGrowth();
  EncryptionGrowth();
  ContentsGrowth();
  SettingsGrowth();
  LinesGrowth();
  TreesGrowth();
}

// What a process of its own gives back: this and the growth of its peak in KiB. Below it, it failed.
constexpr DWORD kMeasured = 1000;

// The peak belongs to a process, so each size has one of its own.
void MemoryOf(const char* operation, std::size_t first, std::size_t factor, std::size_t quick,
              std::size_t standard, std::size_t full) {
  char self[MAX_PATH];
  ::GetModuleFileNameA(nullptr, self, MAX_PATH);
  for (const std::size_t size : Sizes(first, factor, quick, standard, full)) {
    for (const char* const step : {"make", "do"}) {
      std::string command = std::string("\"") + self + "\" " + step + " \"" + operation + "\" " +
                            std::to_string(size) + " " + std::to_string(::GetCurrentProcessId());
      STARTUPINFOA startup = {};
      startup.cb = sizeof startup;
      PROCESS_INFORMATION process;
      if (!::CreateProcessA(self, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &process)) {
        Fail("no process for " + command);
      }
      ::WaitForSingleObject(process.hProcess, INFINITE);
      DWORD code = 125;
      ::GetExitCodeProcess(process.hProcess, &code);
      ::CloseHandle(process.hThread);
      ::CloseHandle(process.hProcess);
      const bool measured = std::strcmp(step, "do") == 0;
      if (measured ? code < kMeasured || code > 0x7FFFFFFF : code != 0) Fail("failed: " + command);
      if (measured) Line("Peak memory", operation, size, std::to_string(code - kMeasured));
    }
  }
}

void MemoryGrowth() {
  constexpr std::size_t kMiB = 1 << 20;
  // What does grow, to see that the platform's count is one.
  MemoryOf("whole file in a buffer", kMiB, 4, kMiB, 64 * kMiB, 64 * kMiB);
  MemoryOf("copy a file", kMiB, 4, kMiB, 64 * kMiB, 1024 * kMiB);
  MemoryOf("compare files", kMiB, 4, kMiB, 64 * kMiB, 1024 * kMiB);
  MemoryOf("copy a tree", 10, 10, 10, 1'000, 100'000);
  MemoryOf("delete a tree", 10, 10, 10, 1'000, 100'000);
}

PROCESS_MEMORY_COUNTERS Counters() {
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof counters;
  ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
  return counters;
}

// What the peak of the memory in use, or of the memory promised, grows by; in KiB.
int PeakOf(const std::string& operation) {
  if (!DoForMemory(operation, Input::small)) Fail(operation);
  const PROCESS_MEMORY_COUNTERS before = Counters();
  if (!DoForMemory(operation, Input::large)) Fail(operation);
  const PROCESS_MEMORY_COUNTERS after = Counters();
  const std::size_t used = after.PeakWorkingSetSize - before.PeakWorkingSetSize;
  const std::size_t promised = after.PeakPagefileUsage - before.PeakPagefileUsage;
  return static_cast<int>(std::max(used, promised) / 1024);
}

void LoadTheLibrary() {
  library = ::LoadLibraryW(L"ZERATools.dll");
  if (!library) Fail("ZERATools.dll cannot be loaded");
}

void MakeFolder(const std::string& of) {
  ::CreateDirectoryW(L"X:\\bench", nullptr);
  folder = L"X:\\bench\\files-" + std::wstring(of.begin(), of.end()) + L"\\";
  ::CreateDirectoryW(folder.c_str(), nullptr);
  if (::GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES) Fail("no folder for the files");
}

}  // namespace
}  // namespace bench

int main(int count, char** arguments) {
  using namespace bench;
  if (count < 4) Fail("rows|growth|memory MODE OUT, or profile OPERATION SECONDS");
  const std::string command = arguments[1];
  if (command == "make" || command == "do") {
    LoadTheLibrary();
    MakeFolder(arguments[4]);
    const std::size_t size = std::strtoull(arguments[3], nullptr, 10);
    if (command == "make") {
      MakeForMemory(arguments[2], size);
      return 0;
    }
    const int peak = PeakOf(arguments[2]);
    CleanAfterMemory();
    return static_cast<int>(kMeasured) + peak;
  }
  MakeFolder(std::to_string(::GetCurrentProcessId()));
  if (command == "profile") {
    profiled = arguments[2];
    profileSeconds = std::atof(arguments[3]);
    mode = Mode::standard;
    LoadTheLibrary();
    StartProfile(library);
    Rows();
  } else {
    const std::string how = arguments[2];
    mode = how == "full" ? Mode::full : how == "standard" ? Mode::standard : Mode::quick;
    out = std::fopen(arguments[3], "ab");
    if (!out) Fail(std::string("cannot write ") + arguments[3]);
    const char* const only = count > 4 ? arguments[4] : nullptr;
    if (command == "rows" && !only) Loading();
    LoadTheLibrary();
    if (command == "rows") Rows(only);
    if (command == "growth") Growth();
    if (command == "memory") MemoryGrowth();
    std::fclose(out);
  }
  ::RemoveDirectoryW(folder.c_str());
  return 0;
}
