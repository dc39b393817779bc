// SPDX-License-Identifier: MIT
// OpenSearches.h: the searches of folders that the library begins and ends.
#pragma once

#include "ImportHook.h"

namespace test {

/// Counts them while it lives; one object at a time.
class OpenSearches {
 public:
  OpenSearches() { count = 0; }

  /// Begun and not ended.
  int Count() const { return count; }

 private:
  static HANDLE WINAPI First(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
    const HANDLE search = ::FindFirstFileW(pattern, found);
    count += search != INVALID_HANDLE_VALUE;
    return search;
  }
  static BOOL WINAPI Close(HANDLE search) {
    --count;
    return ::FindClose(search);
  }

  static inline int count = 0;
  ImportHook first_{"FindFirstFileW", &First};
  ImportHook close_{"FindClose", &Close};
};

}  // namespace test
