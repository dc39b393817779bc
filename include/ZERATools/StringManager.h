// SPDX-License-Identifier: MIT
// ZERATools/StringManager.h: the string manager of a host's own module, and the heap of byte arrays. Part of
// ZERATools/Objects.h; hosts do not call what ends in an underscore.
#ifndef ZERATOOLS_STRING_MANAGER_H
#define ZERATOOLS_STRING_MANAGER_H

#include "Structures.h"

// One manager a module, however many of its sources include this.
#define ZERATOOLS_ONE_A_MODULE __declspec(selectany)

typedef struct ZERA_MODULE_STRING_MANAGER_ {
  ZERA_STRING_MANAGER base;
  volatile LONG buffers;  // given out and not given back yet
  // The empty string. Two references that nobody gives back keep it shared, so every writer takes a buffer of
  // its own first.
  struct {
    ZERA_STRING_HEADER header;
    wchar_t terminator[2];
  } nil;
} ZERA_MODULE_STRING_MANAGER_;

static inline size_t zera_manager_bytes_(int chars, int charSize) {
  if (chars < 0 || chars >= 0x7FFFFFF0) return 0;
  return sizeof(ZERA_STRING_HEADER) + ((size_t)chars + 1) * (size_t)charSize;
}

static inline ZERA_STRING_HEADER* __cdecl zera_manager_allocate_(ZERA_STRING_MANAGER* manager, int chars,
                                                                 int charSize) {
  const size_t bytes = zera_manager_bytes_(chars, charSize);
  ZERA_STRING_HEADER* const header =
      bytes ? (ZERA_STRING_HEADER*)HeapAlloc(GetProcessHeap(), 0, bytes) : NULL;
  if (!header) return NULL;
  header->manager = manager;
  header->length = 0;
  header->capacity = chars;
  header->references = 1;
  InterlockedIncrement(&((ZERA_MODULE_STRING_MANAGER_*)manager)->buffers);
  return header;
}

static inline void __cdecl zera_manager_free_(ZERA_STRING_MANAGER* manager, ZERA_STRING_HEADER* header) {
  ZERA_MODULE_STRING_MANAGER_* const own = (ZERA_MODULE_STRING_MANAGER_*)manager;
  if (header == &own->nil.header) return;
  HeapFree(GetProcessHeap(), 0, header);
  InterlockedDecrement(&own->buffers);
}

static inline ZERA_STRING_HEADER* __cdecl zera_manager_reallocate_(ZERA_STRING_MANAGER* manager,
                                                                   ZERA_STRING_HEADER* header, int chars,
                                                                   int charSize) {
  const size_t bytes = zera_manager_bytes_(chars, charSize);
  ZERA_STRING_HEADER* const larger =
      bytes ? (ZERA_STRING_HEADER*)HeapReAlloc(GetProcessHeap(), 0, header, bytes) : NULL;
  (void)manager;
  if (larger) larger->capacity = chars;
  return larger;
}

static inline ZERA_STRING_HEADER* __cdecl zera_manager_nil_(ZERA_STRING_MANAGER* manager) {
  ZERA_STRING_HEADER* const nil = &((ZERA_MODULE_STRING_MANAGER_*)manager)->nil.header;
  InterlockedIncrement(&nil->references);
  return nil;
}

static inline ZERA_STRING_MANAGER* __cdecl zera_manager_clone_(ZERA_STRING_MANAGER* manager) {
  return manager;
}

static const ZERA_STRING_MANAGER_FUNCTIONS zera_manager_functions_ = {
    zera_manager_allocate_, zera_manager_free_, zera_manager_reallocate_, zera_manager_nil_,
    zera_manager_clone_};

#ifdef __cplusplus
extern "C" {
#endif
ZERATOOLS_ONE_A_MODULE ZERA_MODULE_STRING_MANAGER_ zera_string_manager_ = {
    {&zera_manager_functions_}, 0, {{&zera_string_manager_.base, 0, 2, 2}, {0, 0}}};
#ifdef __cplusplus
}
#endif

// Byte arrays live on the universal C runtime's heap, where the library enlarges them. The host's own runtime
// may be another one (a debug build's is), so that heap is asked for by name.
static inline FARPROC zera_runtime_(const char* function) {
  HMODULE runtime = GetModuleHandleW(L"ucrtbase.dll");
  if (!runtime) runtime = LoadLibraryW(L"ucrtbase.dll");
  return runtime ? GetProcAddress(runtime, function) : NULL;
}

static inline void* zera_runtime_malloc_(size_t size) {
  typedef void*(__cdecl * Malloc)(size_t);
  const Malloc function = (Malloc)(void (*)(void))zera_runtime_("malloc");
  return function ? function(size) : NULL;
}

static inline void zera_runtime_free_(void* block) {
  typedef void(__cdecl * Free)(void*);
  const Free function = (Free)(void (*)(void))zera_runtime_("free");
  if (function) function(block);
}

#endif  // ZERATOOLS_STRING_MANAGER_H
