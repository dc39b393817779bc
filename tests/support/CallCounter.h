// SPDX-License-Identifier: MIT
// CallCounter.h: how often the library calls what it imports.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace test {

/// Counts every call through the loaded library's import table while it lives. Each entry leads through a few
/// instructions of the test's own that count and go on to the function.
class CallCounter {
 public:
  CallCounter();
  CallCounter(const CallCounter&) = delete;
  CallCounter& operator=(const CallCounter&) = delete;
  ~CallCounter();

  /// Forgets what was counted.
  void Reset();
  /// What was called since, by name: "CloseHandle 1, CreateFileW 1". Functions that only look at memory
  /// (mem..., str..., wcs...) and the last error are left out.
  std::string Calls() const;
  /// The same, as a map.
  std::map<std::string, int> Counts() const;
  /// How often one function was called.
  int Count(const std::string& name) const;

 private:
  struct Entry {
    std::string name;
    void** place;
    void* original;
    unsigned char* code;
  };

  std::vector<Entry> entries_;
  unsigned char* code_;
};

}  // namespace test
