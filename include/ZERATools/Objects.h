// SPDX-License-Identifier: MIT
// ZERATools/Objects.h: strings, byte arrays and thread objects for hosts without the family's framework.
//
//   ZERA_WSTRING file;
//   zera_wstring_make(&file);
//   if (ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(NULL, &file)) printf("%ls\n", zera_wstring_text(&file));
//   zera_wstring_free(&file);
//
// An object stands on the stack or in a structure of the host's, at one place from make to free. Everything
// is in this header; there is nothing to link. The strings' buffers belong to a string manager of the host's
// own module, whose functions never raise.
//
// What the examples print needs stdio.h. In C the exports take pointers to these objects. In C++ zera_ref
// gives the references that they are declared with there: ZERA_TOOLS_UC_TO_MBC(text, zera_ref(&result)).
//
// Wrong use that can be seen ends a debug build of the host with a message on the error output and in the
// debugger: an object that was not made or is freed already, one that is made twice. Debug is a build without
// NDEBUG; ZERATOOLS_CHECK_OBJECTS, set to 1 or 0 for all sources of a module, decides otherwise.
//
// An object is for one thread at a time, as with any string; different objects go with different threads.
// C11 and C++17.
#ifndef ZERATOOLS_OBJECTS_H
#define ZERATOOLS_OBJECTS_H

#include <string.h>

#include "../ZERATools.h"
#include "CheckedCalls.h"
#include "ObjectChecks.h"
#include "StringManager.h"
#include "Structures.h"

// What both kinds of strings have in common: `text` is the object's one member.

static inline void zera_string_make_(void* string, void** text, const char* function) {
  zera_check_made_(string, function);
  *text = zera_manager_nil_(&zera_string_manager_.base) + 1;
}

static inline ZERA_STRING_HEADER* zera_string_header_(void* text) {
  return (ZERA_STRING_HEADER*)text - 1;
}

static inline void zera_string_release_(void* text) {
  ZERA_STRING_HEADER* const header = zera_string_header_(text);
  if (InterlockedDecrement(&header->references) <= 0)
    header->manager->functions->free(header->manager, header);
}

static inline void zera_string_empty_(void** text) {
  ZERA_STRING_MANAGER* const manager = zera_string_header_(*text)->manager;
  ZERA_STRING_HEADER* const nil = manager->functions->getNil(manager);
  zera_string_release_(*text);
  *text = nil + 1;
}

// The new buffer is filled before the old one is given back, so the characters may be the string's own.
static inline int zera_string_set_(void** text, const void* characters, size_t length, int charSize) {
  ZERA_STRING_MANAGER* const manager = zera_string_header_(*text)->manager;
  ZERA_STRING_HEADER* fresh;
  if (length == 0) {
    zera_string_empty_(text);
    return 1;
  }
  if (length > 0x3FFFFFF0) return 0;
  fresh = manager->functions->allocate(manager, (int)length, charSize);
  if (!fresh) return 0;
  memcpy(fresh + 1, characters, length * (size_t)charSize);
  memset((char*)(fresh + 1) + length * (size_t)charSize, 0, (size_t)charSize);
  fresh->length = (int)length;
  zera_string_release_(*text);
  *text = fresh + 1;
  return 1;
}

/// Makes an empty UTF-16 string. Every string is made once before it is used, and freed at its end.
/// @param string  the object; what it holds before does not matter
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// zera_wstring_free(&name);
/// @endcode
static inline void zera_wstring_make(ZERA_WSTRING* string) {
  zera_string_make_(string, (void**)&string->text, "zera_wstring_make");
}

/// Gives a string its text.
/// @param string  the object
/// @param text    zero-terminated UTF-16 text, which may be the string's own; null counts as empty
/// @return 1; 0 when out of memory, the string then keeps its text
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// if (!zera_wstring_set(&name, L"Ann")) fputs("out of memory\n", stderr);
/// zera_wstring_free(&name);
/// @endcode
static inline int zera_wstring_set(ZERA_WSTRING* string, _In_opt_z_ const wchar_t* text) {
  zera_check_used_(string, "zera_wstring_set");
  return zera_string_set_((void**)&string->text, text, text ? wcslen(text) : 0, sizeof(wchar_t));
}

/// Gives a string its text by length, NULs included.
/// @param string  the object
/// @param text    the characters; may be null when `length` is 0
/// @param length  their number, not bytes
/// @return 1; 0 when out of memory, the string then keeps its text
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// zera_wstring_set_length(&name, L"Ann and Bob", 3);  // "Ann"
/// zera_wstring_free(&name);
/// @endcode
static inline int zera_wstring_set_length(ZERA_WSTRING* string, const wchar_t* text, size_t length) {
  zera_check_used_(string, "zera_wstring_set_length");
  return zera_string_set_((void**)&string->text, text, length, sizeof(wchar_t));
}

/// Gives a string's text, zero-terminated; valid until the string changes.
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// if (zera_wstring_set(&name, L"Ann")) printf("%ls\n", zera_wstring_text(&name));
/// zera_wstring_free(&name);
/// @endcode
static inline const wchar_t* zera_wstring_text(const ZERA_WSTRING* string) {
  zera_check_used_(string, "zera_wstring_text");
  return string->text;
}

/// Gives the length of a string's text in characters, without the terminator.
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// if (zera_wstring_length(&name) == 0) puts("no name");
/// zera_wstring_free(&name);
/// @endcode
static inline size_t zera_wstring_length(const ZERA_WSTRING* string) {
  zera_check_used_(string, "zera_wstring_length");
  return (size_t)zera_string_header_(string->text)->length;
}

/// Makes a string empty and gives its buffer back. It can be used again.
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// zera_wstring_set(&name, L"Ann");
/// zera_wstring_empty(&name);  // may be set again
/// zera_wstring_free(&name);
/// @endcode
static inline void zera_wstring_empty(ZERA_WSTRING* string) {
  zera_check_used_(string, "zera_wstring_empty");
  zera_string_empty_((void**)&string->text);
}

/// Frees a string. It must be made again before the next use.
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// zera_wstring_free(&name);
/// zera_wstring_make(&name);  // and so may be used again
/// zera_wstring_free(&name);
/// @endcode
static inline void zera_wstring_free(ZERA_WSTRING* string) {
  zera_check_freed_(string, "zera_wstring_free");
  zera_string_release_(string->text);
  string->text = NULL;
}

/// As #zera_wstring_make, for a string in the ANSI code page or of UTF-8 bytes.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// zera_astring_free(&name);
/// @endcode
static inline void zera_astring_make(ZERA_ASTRING* string) {
  zera_string_make_(string, (void**)&string->text, "zera_astring_make");
}

/// As #zera_wstring_set.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// if (!zera_astring_set(&name, "Ann")) fputs("out of memory\n", stderr);
/// zera_astring_free(&name);
/// @endcode
static inline int zera_astring_set(ZERA_ASTRING* string, _In_opt_z_ const char* text) {
  zera_check_used_(string, "zera_astring_set");
  return zera_string_set_((void**)&string->text, text, text ? strlen(text) : 0, sizeof(char));
}

/// As #zera_wstring_set_length, in bytes.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// zera_astring_set_length(&name, "Ann and Bob", 3);  // "Ann"
/// zera_astring_free(&name);
/// @endcode
static inline int zera_astring_set_length(ZERA_ASTRING* string, const char* text, size_t length) {
  zera_check_used_(string, "zera_astring_set_length");
  return zera_string_set_((void**)&string->text, text, length, sizeof(char));
}

/// As #zera_wstring_text.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// if (zera_astring_set(&name, "Ann")) printf("%s\n", zera_astring_text(&name));
/// zera_astring_free(&name);
/// @endcode
static inline const char* zera_astring_text(const ZERA_ASTRING* string) {
  zera_check_used_(string, "zera_astring_text");
  return string->text;
}

/// As #zera_wstring_length, in bytes.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// if (zera_astring_length(&name) == 0) puts("no name");
/// zera_astring_free(&name);
/// @endcode
static inline size_t zera_astring_length(const ZERA_ASTRING* string) {
  zera_check_used_(string, "zera_astring_length");
  return (size_t)zera_string_header_(string->text)->length;
}

/// As #zera_wstring_empty.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// zera_astring_set(&name, "Ann");
/// zera_astring_empty(&name);  // may be set again
/// zera_astring_free(&name);
/// @endcode
static inline void zera_astring_empty(ZERA_ASTRING* string) {
  zera_check_used_(string, "zera_astring_empty");
  zera_string_empty_((void**)&string->text);
}

/// As #zera_wstring_free.
/// @code
/// ZERA_ASTRING name;
/// zera_astring_make(&name);
/// zera_astring_free(&name);
/// zera_astring_make(&name);  // and so may be used again
/// zera_astring_free(&name);
/// @endcode
static inline void zera_astring_free(ZERA_ASTRING* string) {
  zera_check_freed_(string, "zera_astring_free");
  zera_string_release_(string->text);
  string->text = NULL;
}

/// Makes an empty byte array.
/// @code
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// zera_bytes_free(&key);
/// @endcode
static inline void zera_bytes_make(ZERA_BYTES* bytes) {
  zera_check_made_(bytes, "zera_bytes_make");
  memset(bytes, 0, sizeof *bytes);
}

// The old bytes are wiped before their storage goes: arrays carry pass phrases.
static inline void zera_bytes_clear_(ZERA_BYTES* bytes) {
  if (bytes->data) {
    SecureZeroMemory(bytes->data, (size_t)bytes->capacity);
    zera_runtime_free_(bytes->data);
  }
  bytes->data = NULL;
  bytes->size = bytes->capacity = 0;
}

/// Gives an array its bytes. The bytes before are wiped.
/// @param bytes  the object
/// @param data   the bytes, not the array's own; may be null when `size` is 0
/// @param size   their number
/// @return 1; 0 when out of memory, the array then keeps its bytes
/// @code
/// const unsigned char secret[] = {1, 2, 3};
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// if (!zera_bytes_set(&key, secret, sizeof secret)) fputs("out of memory\n", stderr);
/// zera_bytes_free(&key);
/// @endcode
static inline int zera_bytes_set(ZERA_BYTES* bytes, const void* data, size_t size) {
  BYTE* storage = NULL;
  zera_check_used_(bytes, "zera_bytes_set");
  if (size) {
    storage = (BYTE*)zera_runtime_malloc_(size);
    if (!storage) return 0;
    memcpy(storage, data, size);
  }
  zera_bytes_clear_(bytes);
  bytes->data = storage;
  bytes->size = bytes->capacity = (INT_PTR)size;
  return 1;
}

/// Gives an array's bytes; null for an empty one. Valid until the array changes.
/// @code
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// if (zera_bytes_set(&key, "abc", 3)) printf("%c\n", zera_bytes_data(&key)[0]);
/// zera_bytes_free(&key);
/// @endcode
static inline const BYTE* zera_bytes_data(const ZERA_BYTES* bytes) {
  zera_check_used_(bytes, "zera_bytes_data");
  return bytes->data;
}

/// Gives the number of bytes.
/// @code
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// if (zera_bytes_set(&key, "abc", 3)) printf("%u bytes\n", (unsigned)zera_bytes_size(&key));
/// zera_bytes_free(&key);
/// @endcode
static inline size_t zera_bytes_size(const ZERA_BYTES* bytes) {
  zera_check_used_(bytes, "zera_bytes_size");
  return (size_t)bytes->size;
}

/// Wipes an array's bytes and gives their storage back. It can be used again.
/// @code
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// zera_bytes_set(&key, "abc", 3);
/// zera_bytes_empty(&key);  // wiped, and may be set again
/// zera_bytes_free(&key);
/// @endcode
static inline void zera_bytes_empty(ZERA_BYTES* bytes) {
  zera_check_used_(bytes, "zera_bytes_empty");
  zera_bytes_clear_(bytes);
}

/// Wipes and frees an array. It must be made again before the next use.
/// @code
/// ZERA_BYTES key;
/// zera_bytes_make(&key);
/// zera_bytes_set(&key, "abc", 3);
/// zera_bytes_free(&key);  // wiped
/// @endcode
static inline void zera_bytes_free(ZERA_BYTES* bytes) {
  zera_check_freed_(bytes, "zera_bytes_free");
  zera_bytes_clear_(bytes);
}

/// Makes a thread object for #ZERA_TOOLS_POSTTHREADMESSAGE. It holds nothing and needs no freeing.
/// @param thread    the object
/// @param threadId  the thread's identifier, as GetCurrentThreadId gives it
/// @code
/// ZERA_THREAD thread;
/// zera_thread_make(&thread, GetCurrentThreadId());
/// printf("thread %lu\n", (unsigned long)thread.threadId);
/// @endcode
static inline void zera_thread_make(ZERA_THREAD* thread, DWORD threadId) {
  memset(thread, 0, sizeof *thread);
  thread->threadId = threadId;
}

/// Gives the number of string buffers of this module that are not given back yet: 0 once every string is
/// freed or empty.
/// @code
/// printf("%ld buffers are left\n", zera_string_buffers_in_use());
/// @endcode
static inline long zera_string_buffers_in_use(void) {
  return InterlockedCompareExchange(&zera_string_manager_.buffers, 0, 0);
}

#ifdef __cplusplus
/// The reference with which C++ declares the exports. The object must have been made.
/// @code
/// ZERA_WSTRING name;
/// zera_wstring_make(&name);
/// ZERA_TOOLS_STRING_UTF8_TO_UC("Ann", zera_ref(&name));
/// std::printf("%ls\n", zera_wstring_text(&name));
/// zera_wstring_free(&name);
/// @endcode
inline CStringW& zera_ref(ZERA_WSTRING* string) {
  zera_check_used_(string, "zera_ref");
  return *reinterpret_cast<CStringW*>(string);
}
inline CStringA& zera_ref(ZERA_ASTRING* string) {
  zera_check_used_(string, "zera_ref");
  return *reinterpret_cast<CStringA*>(string);
}
inline CArray<BYTE, const BYTE&>& zera_ref(ZERA_BYTES* bytes) {
  zera_check_used_(bytes, "zera_ref");
  return *reinterpret_cast<CArray<BYTE, const BYTE&>*>(bytes);
}
inline CWinThread* zera_ref(ZERA_THREAD* thread) {
  return reinterpret_cast<CWinThread*>(thread);
}
#endif

#endif  // ZERATOOLS_OBJECTS_H
