// SPDX-License-Identifier: MIT
// ZERATools/ObjectChecks.h: sees wrong use of the objects of ZERATools/Objects.h in a debug build of the
// host. Part of that header; hosts do not call what ends in an underscore.
//
// The addresses of all objects between make and free stand in a table of the module. An object without a
// place there was not made, or is freed; one that has its place already is made twice.
#ifndef ZERATOOLS_OBJECT_CHECKS_H
#define ZERATOOLS_OBJECT_CHECKS_H

#include <windows.h>

#ifndef ZERATOOLS_CHECK_OBJECTS
  #ifdef NDEBUG
    #define ZERATOOLS_CHECK_OBJECTS 0
  #else
    #define ZERATOOLS_CHECK_OBJECTS 1
  #endif
#endif

#if ZERATOOLS_CHECK_OBJECTS
  #include <stdio.h>
  #include <stdlib.h>

typedef struct ZERA_OBJECT_ {
  const void* object;
  struct ZERA_OBJECT_* next;
} ZERA_OBJECT_;

  #ifdef __cplusplus
extern "C" {
  #endif
__declspec(selectany) SRWLOCK zera_objects_lock_ = SRWLOCK_INIT;
__declspec(selectany) ZERA_OBJECT_* zera_objects_[256] = {0};
  #ifdef __cplusplus
}
  #endif

static inline void zera_check_failed_(const char* function, const char* what) {
  char message[160];
  snprintf(message, sizeof message, "ZERATools: %s: %s\n", function, what);
  OutputDebugStringA(message);
  fputs(message, stderr);
  fflush(stderr);
  abort();
}

// Where the object's place is, or would be. The table's lock is held.
static inline ZERA_OBJECT_** zera_check_find_(const void* object) {
  ZERA_OBJECT_** place = &zera_objects_[((size_t)object >> 3) % 256];
  while (*place && (*place)->object != object) place = &(*place)->next;
  return place;
}

static inline void zera_check_made_(const void* object, const char* function) {
  ZERA_OBJECT_** place;
  int known;
  ZERA_OBJECT_* const entry = (ZERA_OBJECT_*)HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof *entry);
  if (!entry) zera_check_failed_(function, "no memory for the check; see ZERATOOLS_CHECK_OBJECTS");
  entry->object = object;
  AcquireSRWLockExclusive(&zera_objects_lock_);
  place = zera_check_find_(object);
  known = *place != NULL;
  if (!known) *place = entry;
  ReleaseSRWLockExclusive(&zera_objects_lock_);
  if (known) zera_check_failed_(function, "the object is made already and was not freed");
}

static inline void zera_check_used_(const void* object, const char* function) {
  int known;
  AcquireSRWLockShared(&zera_objects_lock_);
  known = *zera_check_find_(object) != NULL;
  ReleaseSRWLockShared(&zera_objects_lock_);
  if (!known) zera_check_failed_(function, "the object was not made, or is freed");
}

static inline void zera_check_freed_(const void* object, const char* function) {
  ZERA_OBJECT_* entry;
  AcquireSRWLockExclusive(&zera_objects_lock_);
  {
    ZERA_OBJECT_** const place = zera_check_find_(object);
    entry = *place;
    if (entry) *place = entry->next;
  }
  ReleaseSRWLockExclusive(&zera_objects_lock_);
  if (!entry) zera_check_failed_(function, "the object was not made, or is freed already");
  HeapFree(GetProcessHeap(), 0, entry);
}
#else
static inline void zera_check_made_(const void* object, const char* function) {
  (void)object, (void)function;
}
static inline void zera_check_used_(const void* object, const char* function) {
  (void)object, (void)function;
}
static inline void zera_check_freed_(const void* object, const char* function) {
  (void)object, (void)function;
}
#endif

#endif  // ZERATOOLS_OBJECT_CHECKS_H
