// SPDX-License-Identifier: MIT
// ZERATools/Structures.h: the objects that cross the boundary, as plain structures of their published layout.
//
// In C the exports that take the framework's objects are declared with these; ZERATools.h includes them
// there. ZERATools/Objects.h has the functions that make, read and free them. In C++ they lie exactly as
// CStringW, CStringA, CArray<BYTE, const BYTE&> and CWinThread do.
//
// C11 and C++17.
#ifndef ZERATOOLS_STRUCTURES_H
#define ZERATOOLS_STRUCTURES_H

#include <stddef.h>
#include <windows.h>

/// A UTF-16 string object: one pointer to zero-terminated characters behind a #ZERA_STRING_HEADER.
typedef struct ZERA_WSTRING {
  wchar_t* text;
} ZERA_WSTRING;

/// A string object in the ANSI code page, or of UTF-8 bytes where an export says so.
typedef struct ZERA_ASTRING {
  char* text;
} ZERA_ASTRING;

/// A byte array. Its storage comes from the universal C runtime's heap, whatever the host's own is.
typedef struct ZERA_BYTES {
  const void* table;  ///< the library never calls through it
  BYTE* data;
  INT_PTR size;      ///< bytes in use
  INT_PTR capacity;  ///< bytes there is room for
  INT_PTR growBy;
} ZERA_BYTES;

/// The part of a thread object that the library reads.
typedef struct ZERA_THREAD {
  BYTE reserved[96];
  DWORD threadId;
} ZERA_THREAD;

typedef struct ZERA_STRING_MANAGER ZERA_STRING_MANAGER;

/// What stands before the characters of every string.
typedef struct ZERA_STRING_HEADER {
  ZERA_STRING_MANAGER* manager;
  int length;       ///< characters in use, without the terminator
  int capacity;     ///< characters there is room for, without the terminator
  LONG references;  ///< above 1: shared; below 0: locked, the buffer must stay where it is
} ZERA_STRING_HEADER;

/// A string manager's functions, in the order in which the library calls them. None of them may raise.
typedef struct ZERA_STRING_MANAGER_FUNCTIONS {
  /// A new buffer for `chars` characters of `charSize` bytes and a terminator; null when out of memory.
  ZERA_STRING_HEADER*(__cdecl* allocate)(ZERA_STRING_MANAGER* manager, int chars, int charSize);
  /// Takes back a buffer whose last reference is gone.
  void(__cdecl* free)(ZERA_STRING_MANAGER* manager, ZERA_STRING_HEADER* header);
  /// Enlarges an unshared buffer; null when out of memory, the old buffer then stays valid.
  ZERA_STRING_HEADER*(__cdecl* reallocate)(ZERA_STRING_MANAGER* manager, ZERA_STRING_HEADER* header,
                                           int chars, int charSize);
  /// The empty string, with a reference counted for the caller.
  ZERA_STRING_HEADER*(__cdecl* getNil)(ZERA_STRING_MANAGER* manager);
  /// The manager that copies of this manager's strings use.
  ZERA_STRING_MANAGER*(__cdecl* clone)(ZERA_STRING_MANAGER* manager);
} ZERA_STRING_MANAGER_FUNCTIONS;

/// A string manager, as the library sees it; a host's own data may follow.
struct ZERA_STRING_MANAGER {
  const ZERA_STRING_MANAGER_FUNCTIONS* functions;
};

#ifdef __cplusplus
  #define ZERATOOLS_STATIC_ASSERT static_assert
#else
  #define ZERATOOLS_STATIC_ASSERT _Static_assert
#endif
ZERATOOLS_STATIC_ASSERT(sizeof(ZERA_WSTRING) == sizeof(void*) && sizeof(ZERA_ASTRING) == sizeof(void*),
                        "a string object is one pointer");
ZERATOOLS_STATIC_ASSERT(sizeof(ZERA_STRING_HEADER) == 24 && offsetof(ZERA_STRING_HEADER, length) == 8 &&
                            offsetof(ZERA_STRING_HEADER, capacity) == 12 &&
                            offsetof(ZERA_STRING_HEADER, references) == 16,
                        "hosts and library read each other's string headers");
ZERATOOLS_STATIC_ASSERT(sizeof(ZERA_BYTES) == 40 && offsetof(ZERA_BYTES, data) == 8 &&
                            offsetof(ZERA_BYTES, size) == 16 && offsetof(ZERA_BYTES, capacity) == 24,
                        "hosts and library share byte arrays");
ZERATOOLS_STATIC_ASSERT(offsetof(ZERA_THREAD, threadId) == 96, "thread objects carry their identifier here");

#endif  // ZERATOOLS_STRUCTURES_H
