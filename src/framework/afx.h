// SPDX-License-Identifier: MIT
// afx.h: the part of the framework that the library's sources use, under its usual names.
//
// The classes here stand in for the shared framework runtime, which this toolchain does not have.
// Objects that a host may see (strings, arrays, exceptions) have the published binary layout; the
// rest is ours. See docs/framework.md for what is here and what is not.
#pragma once

#define __AFX_H__

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowInvalidArgException();

#include "ZERATools/Types.h"
#include "atltime.h"
#include "exceptions.h"
#include "file.h"

/// The root of the framework's classes.
class CObject {
 public:
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;
  virtual ~CObject() = default;

 protected:
  CObject() = default;
};

/// Raises the framework's exception for a failing platform code: the memory exception for
/// E_OUTOFMEMORY, the OLE exception that carries the code for any other.
[[noreturn]] void AtlThrow(HRESULT code);

/// Raises the exception for the calling thread's last error.
[[noreturn]] void AtlThrowLastWin32();
