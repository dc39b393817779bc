// SPDX-License-Identifier: MIT
// afx.h: the framework's strings and arrays as they are; its exceptions are codes that are thrown.
#pragma once

#include <windows.h>

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowInvalidArgException();

#include "ZERATools/Types.h"
#include "framework/atltime.h"

[[noreturn]] void AtlThrow(HRESULT code);
