// afxmt.h: the framework's critical section.
#pragma once

#include "afx.h"

/// A lock for the threads of one process. Construction raises the platform's error when it fails.
class CCriticalSection {
 public:
  CCriticalSection();
  CCriticalSection(const CCriticalSection&) = delete;
  CCriticalSection& operator=(const CCriticalSection&) = delete;
  ~CCriticalSection() { ::DeleteCriticalSection(&section_); }

  void Lock() { ::EnterCriticalSection(&section_); }
  void Unlock() { ::LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};
