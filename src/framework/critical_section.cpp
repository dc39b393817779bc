// SPDX-License-Identifier: MIT
#include "afxmt.h"

CCriticalSection::CCriticalSection() {
  if (!::InitializeCriticalSectionAndSpinCount(&section_, 0)) AtlThrowLastWin32();
}
