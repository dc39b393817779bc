// SPDX-License-Identifier: MIT
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

/// Holds a lock while it lives.
class CSingleLock {
 public:
  explicit CSingleLock(CCriticalSection* section, BOOL initialLock = FALSE) : section_(section) {
    if (initialLock) Lock();
  }
  CSingleLock(const CSingleLock&) = delete;
  CSingleLock& operator=(const CSingleLock&) = delete;
  ~CSingleLock() { Unlock(); }

  void Lock() {
    section_->Lock();
    locked_ = true;
  }
  void Unlock() {
    if (locked_) section_->Unlock();
    locked_ = false;
  }

 private:
  CCriticalSection* section_;
  bool locked_ = false;
};
