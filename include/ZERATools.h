// SPDX-License-Identifier: MIT
// ZERATools.h: the exports of ZERATools.dll.
//
// A utility library for the desktop applications of one family: paths and files, settings files,
// printable encryption, text conversion, rounding, process tools, the place of an application's
// settings file and the language of its user interface.
//
// Bind by name through the import library, or by ordinal with GetProcAddress; the numbers never
// change. There is no call to make first: the library is ready once it is loaded.
//
// Common to all exports, unless a declaration says otherwise:
// - Names without a suffix (or with _MBC) take text in the process's ANSI code page, names with _UC
//   take UTF-16. Text is zero-terminated; a null text given to a plain variant that converts counts
//   as empty.
// - A capacity is counted in characters of the variant's type, not in bytes, terminator included. A
//   result is never cut silently: one that does not fit is an invalid parameter of the C runtime,
//   whose handler runs and by default ends the process. With a handler that returns, the buffer
//   holds an empty string, errno is what the runtime's checked functions set (EINVAL for a missing
//   buffer, ERANGE for one that is too small), and the result is still the success value.
// - The result is 1 for success and 0 for failure. The library shows no message and writes no log; nor
//   does the system ask the user for the medium of an empty drive.
// - Any thread may call at any time. The library keeps nothing between calls.
// - Exceptions: exhausted memory raises the framework's CMemoryException; others are named at the
//   export. They are C++ exceptions of the Microsoft ABI, of pointers to framework objects that the
//   catching host deletes. The library's own state is restored before they leave. What a handler of
//   the host's own raises passes through as it is, std::bad_alloc included.
//
// C11 and C++17. Objects are references to the framework's in C++ and pointers to the structures of
// ZERATools/Structures.h in C, where ZERATools/Objects.h makes, reads and frees them.
#ifndef ZERATOOLS_H
#define ZERATOOLS_H

#include <stddef.h>
#include <windows.h>

// Below C++17 there is this one error and none that follow from it: what needs the language is left out.
// (The Microsoft compiler tells its language in a name of its own; __cplusplus is an old one's there.)
#if defined(__cplusplus) && __cplusplus < 201703L && (!defined(_MSVC_LANG) || _MSVC_LANG < 201703L)
  #error "ZERATools.h needs C++17 or later (/std:c++17, -std=c++17); in C, C11."
  #define ZERATOOLS_OLD_LANGUAGE
#endif

// ZERATOOLS_HOST_FRAMEWORK: the host's own framework provides CStringA, CStringW, CArray and
// CWinThread. Set without your help when its headers were included before this one.
#if defined(__AFX_H__) && !defined(ZERATOOLS_HOST_FRAMEWORK)
  #define ZERATOOLS_HOST_FRAMEWORK
#endif
#if defined(__cplusplus) && !defined(ZERATOOLS_HOST_FRAMEWORK) && !defined(ZERATOOLS_OLD_LANGUAGE)
  #include "ZERATools/Types.h"
#endif
#ifndef __cplusplus
  #include "ZERATools/Structures.h"
#endif

#include "ZERATools/Annotations.h"
#include "ZERATools/Ordinals.h"
#include "ZERATools/Version.h"

#if defined(ZERATOOLS_BUILDING)
  #define ZERATOOLS_IMPORT
#else
  #define ZERATOOLS_IMPORT __declspec(dllimport)
#endif
#define ZERATOOLS_API(result) ZERATOOLS_IMPORT result __cdecl
// Behind each declaration. Under /EHsc, the Microsoft compiler's usual setting, an extern "C" function
// is taken never to throw unless it says otherwise, and a host's catch block around the call is left out.
#if defined(__cplusplus) && !defined(ZERATOOLS_OLD_LANGUAGE)
  #define ZERATOOLS_RAISES noexcept(false)
#else
  #define ZERATOOLS_RAISES
#endif

// The objects that cross: the framework's, or structures of the same layout.
#ifdef __cplusplus
  #define ZERATOOLS_STRING_W CStringW&
  #define ZERATOOLS_STRING_A CStringA&
  #define ZERATOOLS_BYTES CArray<BYTE, const BYTE&>&
  #define ZERATOOLS_THREAD CWinThread*
#else
  #define ZERATOOLS_STRING_W ZERA_WSTRING*
  #define ZERATOOLS_STRING_A ZERA_ASTRING*
  #define ZERATOOLS_BYTES ZERA_BYTES*
  #define ZERATOOLS_THREAD ZERA_THREAD*
#endif

#ifdef __cplusplus
extern "C" {
#endif

// --------------------------------------------------------------------------------------------------
// Paths as text
// None of these touches the disk or asks whether a path exists. They always return 1.
//
// Plain variants work on the bytes and never convert, so nothing that the code page can hold is lost;
// lead bytes of a double-byte code page are respected.
//
// A component longer than its limit (drive 2, directory, name and extension 255 characters), a result
// that does not fit its capacity, a null buffer or a null path is an invalid parameter: the C runtime's
// invalid-parameter handler runs, which by default ends the process. If the host installed one that
// returns, the buffer holds an empty string and the result is still 1.
//
// Any thread may call, as long as no two rewrite one buffer.

/// Gives the drive ("C:") of a path.
///
/// @param path      any text, zero-terminated
/// @param drive     receives the result; left empty when the component is
/// @param capacity  room at `drive` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{10}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DRIVE(_In_z_ const char* path, _Out_writes_z_(capacity) char* drive, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_DRIVE, with UTF-16 text.
/// @ordinal{1010}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DRIVE_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* drive,
                             size_t capacity)
ZERATOOLS_RAISES;

/// Gives the directory with its leading and trailing separators ("\\data\\run\\") of a path.
///
/// @param path      any text, zero-terminated
/// @param directory receives the result; left empty when the component is
/// @param capacity  room at `directory` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{11}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DIR(_In_z_ const char* path, _Out_writes_z_(capacity) char* directory, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_DIR, with UTF-16 text.
/// @ordinal{1011}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DIR_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* directory,
                           size_t capacity)
ZERATOOLS_RAISES;

/// Gives the file name without its extension of a path.
///
/// @param path      any text, zero-terminated
/// @param name      receives the result; left empty when the component is
/// @param capacity  room at `name` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{12}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_NAME(_In_z_ const char* path, _Out_writes_z_(capacity) char* name, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_NAME, with UTF-16 text.
/// @ordinal{1012}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_NAME_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* name,
                            size_t capacity)
ZERATOOLS_RAISES;

/// Gives the extension with its period (".ini") of a path.
///
/// @param path      any text, zero-terminated
/// @param extension receives the result; left empty when the component is
/// @param capacity  room at `extension` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{13}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_EXT(_In_z_ const char* path, _Out_writes_z_(capacity) char* extension, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_EXT, with UTF-16 text.
/// @ordinal{1013}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_EXT_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* extension,
                           size_t capacity)
ZERATOOLS_RAISES;

/// Gives drive and directory of a path.
///
/// @param path      any text, zero-terminated
/// @param folder    receives the result; left empty when the component is
/// @param capacity  room at `folder` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{14}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DRIVE_DIR(_In_z_ const char* path, _Out_writes_z_(capacity) char* folder, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_DRIVE_DIR, with UTF-16 text.
/// @ordinal{1014}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* folder,
                                 size_t capacity)
ZERATOOLS_RAISES;

/// Gives file name and extension of a path.
///
/// @param path      any text, zero-terminated
/// @param file      receives the result; left empty when the component is
/// @param capacity  room at `file` in characters, not bytes, terminator included
/// @return 1, whatever the text
/// @ordinal{15}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_NAME_EXT(_In_z_ const char* path, _Out_writes_z_(capacity) char* file, size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_NAME_EXT, with UTF-16 text.
/// @ordinal{1015}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_NAME_EXT_UC(_In_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* file,
                                size_t capacity)
ZERATOOLS_RAISES;

/// Replaces the drive.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param drive     its first character, followed by a colon, becomes the drive; empty or null removes it
/// @return 1, whatever the text
/// @ordinal{20}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DRIVE(_Inout_updates_z_(capacity) char* path, size_t capacity,
                              _In_opt_z_ const char* drive)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_DRIVE, with UTF-16 text.
/// @ordinal{1020}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DRIVE_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                                 _In_opt_z_ const wchar_t* drive)
ZERATOOLS_RAISES;

/// Replaces the directory; the drive stays.
///
/// KEPT FOR HOSTS: the `_UC` variant alone runs under the module state of its caller.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param directory taken as given; a separator is added behind it if it has none; null counts as empty
/// @return 1, whatever the text
/// @ordinal{21}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DIR(_Inout_updates_z_(capacity) char* path, size_t capacity,
                            _In_opt_z_ const char* directory)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_DIR, with UTF-16 text.
/// @ordinal{1021}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DIR_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                               _In_opt_z_ const wchar_t* directory)
ZERATOOLS_RAISES;

/// Replaces the file name; the extension stays.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param name      taken as given; null counts as empty
/// @return 1, whatever the text
/// @ordinal{22}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_NAME(_Inout_updates_z_(capacity) char* path, size_t capacity,
                             _In_opt_z_ const char* name)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_NAME, with UTF-16 text.
/// @ordinal{1022}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_NAME_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                                _In_opt_z_ const wchar_t* name)
ZERATOOLS_RAISES;

/// Replaces the extension.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param extension with or without its period; empty or null removes the extension
/// @return 1, whatever the text
/// @ordinal{23}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_EXT(_Inout_updates_z_(capacity) char* path, size_t capacity,
                            _In_opt_z_ const char* extension)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_EXT, with UTF-16 text.
/// @ordinal{1023}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_EXT_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                               _In_opt_z_ const wchar_t* extension)
ZERATOOLS_RAISES;

/// Replaces file name and extension by those of another path.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param file      a path; its drive and directory are ignored
/// @return 1, whatever the text
/// @ordinal{24}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_NAME_EXT(_Inout_updates_z_(capacity) char* path, size_t capacity,
                                 _In_z_ const char* file)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_NAME_EXT, with UTF-16 text.
/// @ordinal{1024}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                                    _In_z_ const wchar_t* file)
ZERATOOLS_RAISES;

/// Replaces drive and directory by those of another path.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param folder    a path, ending in a separator; what follows the last separator is ignored
/// @return 1, whatever the text
/// @ordinal{28}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR(_Inout_updates_z_(capacity) char* path, size_t capacity,
                                  _In_z_ const char* folder)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR, with UTF-16 text.
/// @ordinal{1028}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                                     _In_z_ const wchar_t* folder)
ZERATOOLS_RAISES;

/// Appends a text to the directory.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param text      appended as it is; a separator is added behind it if it has none
/// @return 1, whatever the text
/// @ordinal{30}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_DIR(_Inout_updates_z_(capacity) char* path, size_t capacity, _In_z_ const char* text)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_ADD_DIR, with UTF-16 text.
/// @ordinal{1030}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_DIR_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                           _In_z_ const wchar_t* text)
ZERATOOLS_RAISES;

/// Appends a text to the file name, before the extension.
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param text      appended as it is
/// @return 1, whatever the text
/// @ordinal{32}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_NAME(_Inout_updates_z_(capacity) char* path, size_t capacity, _In_z_ const char* text)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_ADD_NAME, with UTF-16 text.
/// @ordinal{1032}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_NAME_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                            _In_z_ const wchar_t* text)
ZERATOOLS_RAISES;

/// Appends a number to the file name, before the extension: "run.txt" with 7 and 4 gives "run0007.txt".
///
/// @param path      the path, rewritten in place
/// @param capacity  room at `path` in characters, not bytes, terminator included
/// @param index     written as a signed decimal number, so 2147483648 and above come out negative
/// @param digits    least number of digits, filled up with zeros; 0 with an index of 0 appends nothing.
///                  Counts of 2147483648 and above are not supported.
/// @return 1, whatever the text
/// @ordinal{33}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_IDX_NAME(_Inout_updates_z_(capacity) char* path, size_t capacity, unsigned int index,
                             unsigned int digits)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_ADD_IDX_NAME, with UTF-16 text.
/// @ordinal{1033}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(_Inout_updates_z_(capacity) wchar_t* path, size_t capacity,
                                unsigned int index, unsigned int digits)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// One file
// Plain variants convert their text from the ANSI code page and do what the _UC variants do.
//
// A path that does not exist is an ordinary answer, never an exception. So is a path that cannot be asked
// for: a null or empty one, one of 260 characters or more, one with the wildcards * or ? (but not for the
// question mark with which a verbatim path begins, "\\\\?\\C:\\data"). All count as missing. A folder counts
// as a path of size 0, and so does a symbolic link to a file, whatever that holds.
//
// Nothing is locked. What other processes may hold for a moment is tried again, with short sleeps on the
// calling thread; the answer is what the disk says afterwards, not what the last attempt reported.

/// Tells whether a file or folder exists.
///
/// KEPT FOR HOSTS: an empty file or a folder is asked for twice, the second time by its full name.
///
/// @param path      of a file or folder, with or without a backslash at its end
/// @return 1 if it exists, else 0
/// @ordinal{1}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_EXIST(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_EXIST, with UTF-16 text.
/// @ordinal{1001}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_EXIST_UC(_In_opt_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Deletes a file.
///
/// Tries up to 25 times with 10 milliseconds after each attempt, so a file that stays in use costs about a
/// quarter of a second. A folder is not deleted, but costs as much.
///
/// @param path      of the file
/// @return 1 if it is gone, also when it never existed; 0 if it is still there after all attempts
/// @ordinal{2}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_DELETE(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_DELETE, with UTF-16 text.
/// @ordinal{1002}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_DELETE_UC(_In_opt_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Gives the size of a file.
///
/// KEPT FOR HOSTS: 32 bits wide. A file of 4 GiB or more gives its size modulo 4 GiB, so one of exactly
/// 4 GiB gives 0.
///
/// @param path      of the file
/// @return the size in bytes; 0 for a folder, and when it is missing or cannot be read
/// @ordinal{4}
ZERATOOLS_API(unsigned int) ZERA_TOOLS_FILE_GET_SIZE(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_SIZE, with UTF-16 text.
/// @ordinal{1004}
ZERATOOLS_API(unsigned int) ZERA_TOOLS_FILE_GET_SIZE_UC(_In_opt_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Tells whether a text occurs in a path's extension, ignoring case.
///
/// The path is only text; nothing is looked up on the disk. The extension is that of
/// #ZERA_TOOLS_FILE_GET_EXT, with its period. A path with a component longer than its limit counts as one
/// without extension, and so does a null path.
///
/// KEPT FOR HOSTS: the text is looked for anywhere in the extension: "txt", ".txt", "TX" and "t" are all
/// found in ".txt", and an empty text in every path, even in one without extension.
///
/// @param path      any text
/// @param extension the text to look for, with or without period; null counts as empty
/// @return 1 if it occurs, else 0
/// @ordinal{5}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_HAS_EXTENSION(_In_opt_z_ const char* path, _In_opt_z_ const char* extension) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_HAS_EXTENSION, with UTF-16 text.
/// @ordinal{1005}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_HAS_EXTENSION_UC(_In_opt_z_ const wchar_t* path, _In_opt_z_ const wchar_t* extension)
ZERATOOLS_RAISES;

/// Waits until a file exists and is not empty.
///
/// Looks, and sleeps 20 milliseconds after each look in vain; `timeoutMs` / 20 looks in all, the last one
/// followed by its sleep as well. A folder and an empty file are waited for like a missing file.
///
/// KEPT FOR HOSTS: a time-out below 20 milliseconds, 0 among them, sets no limit: the call returns only when
/// the file is there.
///
/// @param path      of the file
/// @param timeoutMs in milliseconds
/// @return 1 as soon as the file has content, 0 when the time-out has run out
/// @ordinal{6}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_WAIT_FOR_FILE(_In_opt_z_ const char* path, unsigned int timeoutMs) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_WAIT_FOR_FILE, with UTF-16 text.
/// @ordinal{1006}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(_In_opt_z_ const wchar_t* path, unsigned int timeoutMs) ZERATOOLS_RAISES;

/// Renames or moves a file, in place of one that the new path may name.
///
/// An existing file at the new path is deleted first, as #ZERA_TOOLS_FILE_DELETE does it, even if the old
/// path should turn out to be missing; if that fails, the old file is left alone. Then tries up to 10 times,
/// with 10 milliseconds after each attempt in vain.
///
/// KEPT FOR HOSTS: the result depends on the old path alone; whether the new path exists afterwards is not
/// looked at. Two texts that name the same file, and be it in other case, delete it and give 0.
///
/// @param oldPath   of the file
/// @param newPath   the path it gets; its folder must exist
/// @return 1 if the old path is gone after an attempt; 0 if it was missing before one, if it is still there
///         after all of them, or if the file at the new path could not be deleted
/// @ordinal{7}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_RENAME(_In_opt_z_ const char* oldPath, _In_opt_z_ const char* newPath) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_RENAME, with UTF-16 text.
/// @ordinal{1007}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_RENAME_UC(_In_opt_z_ const wchar_t* oldPath, _In_opt_z_ const wchar_t* newPath)
ZERATOOLS_RAISES;

/// Gives the time when a file or folder was last modified.
///
/// @param path      of the file or folder
/// @param time      receives it in seconds since 1 January 1970 UTC; when the path is missing, 1 January
///                  1980, 01:00:00 local standard time. May be null.
/// @return 1 if the path exists, else 0
/// @exception COleException with E_INVALIDARG, should the C runtime be unable to convert that local time;
///            `time` is not written then
/// @ordinal{27}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_TIME_MODIFIED(_In_opt_z_ const char* path, _Out_opt_ __int64* time) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_TIME_MODIFIED, with UTF-16 text.
/// @ordinal{1027}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(_In_opt_z_ const wchar_t* path, _Out_opt_ __int64* time)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Contents of one file
// Plain variants convert their text from the ANSI code page and do what the _UC variants do.
//
// A file that is read may be read by others meanwhile, but not written. A path that cannot be opened (also
// a null or empty one, one of 260 characters or more, a folder) gives 0. Nothing that was written is taken
// back after a failure.
//
// A name that the platform keeps for a device, such as AUX.txt or COM1, opens the device in any folder;
// reading or writing it may wait for ever. Hosts that take names from elsewhere look at them first.

/// Copies a file's content to another path, byte for byte, in blocks of 4096 bytes.
///
/// The target is made, or emptied first if it exists; nobody else can open it meanwhile. If it cannot be
/// opened, #ZERA_TOOLS_FILE_CHECK_WRITE is asked, which makes missing folders, and if that says 1, the target
/// is tried once more. Times and attributes are not carried over.
///
/// @param source    of the file to read
/// @param target    of the file to write; the same text as `source`, exactly, is a success that touches
/// nothing
/// @return 1 when copied, 0 if one of the two cannot be opened
/// @exception CFileException when a read or write fails, or closing the target; both files are closed, a
///            partly written target stays
/// @ordinal{16}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COPY(_In_opt_z_ const char* source, _In_opt_z_ const char* target) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_COPY, with UTF-16 text.
/// @ordinal{1016}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COPY_UC(_In_opt_z_ const wchar_t* source, _In_opt_z_ const wchar_t* target) ZERATOOLS_RAISES;

/// Tells whether two files have the same content.
///
/// Sizes are compared first, with #ZERA_TOOLS_FILE_GET_SIZE, then the bytes in blocks of 4096.
///
/// @param first     of one file
/// @param second    of the other; the same text as `first`, exactly, gives 1 even if there is no such file
/// @return 1 when equal; 0 when not, or when one of the two cannot be opened
/// @exception CFileException when a read fails; both files are closed
/// @ordinal{17}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COMPARE(_In_opt_z_ const char* first, _In_opt_z_ const char* second) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_COMPARE, with UTF-16 text.
/// @ordinal{1017}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COMPARE_UC(_In_opt_z_ const wchar_t* first, _In_opt_z_ const wchar_t* second)
ZERATOOLS_RAISES;

/// Makes an empty file, unless the path exists already.
///
/// @param path      of the file; its folder must exist. What exists, be it a folder, is left as it is.
/// @return 1 if the path existed or was made, else 0
/// @ordinal{19}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_CREATE(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_CREATE, with UTF-16 text.
/// @ordinal{1019}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_CREATE_UC(_In_opt_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Reads a whole file into a buffer, in one request.
///
/// KEPT FOR HOSTS: an empty file cannot be read so, and the size is that of #ZERA_TOOLS_FILE_GET_SIZE: of a
/// file of 4 GiB or more, as many bytes are read as its size has modulo 4 GiB.
///
/// @param path      of the file
/// @param buffer    receives the bytes; untouched when the file is missing, empty or larger than `capacity`
/// @param capacity  room at `buffer` in bytes
/// @param count     receives the number of bytes read, 0 after a failed read; untouched when nothing could be
///                  read at all: no such file, an empty one, one larger than `capacity`, or one that cannot
///                  be opened. May be null.
/// @return 1 when all bytes were read; 0 when not, also when the file became shorter meanwhile
/// @ordinal{25}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_TO_BUFFER(_In_opt_z_ const char* path,
                          _Out_writes_bytes_to_opt_(capacity, *count) unsigned char* buffer,
                          unsigned __int64 capacity, _Out_opt_ unsigned __int64* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_TO_BUFFER, with UTF-16 text.
/// @ordinal{1025}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_TO_BUFFER_UC(_In_opt_z_ const wchar_t* path,
                             _Out_writes_bytes_to_opt_(capacity, *count) unsigned char* buffer,
                             unsigned __int64 capacity, _Out_opt_ unsigned __int64* count)
ZERATOOLS_RAISES;

/// Writes a buffer as a file, in one request. The file is made, or emptied first if it exists; nobody else
/// can open it meanwhile.
///
/// KEPT FOR HOSTS: the request's count has 32 bits; 4 GiB or more are taken modulo 4 GiB.
///
/// @param path      of the file; its folder must exist
/// @param buffer    the bytes
/// @param count     how many; 0 makes an empty file
/// @return 1 when written; 0 if the file cannot be opened, or not written in full
/// @ordinal{26}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_FROM_BUFFER(_In_opt_z_ const char* path,
                            _In_reads_bytes_opt_(count) const unsigned char* buffer, unsigned __int64 count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_FROM_BUFFER, with UTF-16 text.
/// @ordinal{1026}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_FROM_BUFFER_UC(_In_opt_z_ const wchar_t* path,
                               _In_reads_bytes_opt_(count) const unsigned char* buffer,
                               unsigned __int64 count)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Storage: write check, free space, version
// Plain variants convert their text and then do what the UTF-16 variant does, except where they say
// otherwise. Exceptions: none of their own.

/// Tells whether a file can be written, and makes the missing folders of its path.
///
/// A path with a folder, a name and an extension that exists is opened for writing and closed at once;
/// nothing is created or changed, and nothing else is tried. Any other path is judged by its folder, where
/// a probe file (sixteen hexadecimal digits and ".$$$") is created and deleted at once. If it cannot be
/// created, the folders on the way are tried the same way from the root down, each one that no file can
/// be created in is made, and the probe is tried once more. Folders that were made stay.
///
/// A name without an extension counts as a file in its folder: no folder of that name is ever made. Only
/// backslashes part the folders that are made.
///
/// @param path  a file, or a folder ending in a backslash. A path whose folder leaves no room for the
///              probe below 260 characters, or with a component beyond its limit (drive 2, directory, name
///              and extension 255 characters), is not writable; a path without a folder means the current
///              folder, and so does an empty text.
/// @return 1 if it can be written, else 0 for whatever reason
/// @ordinal{31}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_CHECK_WRITE(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_CHECK_WRITE, with UTF-16 text; a null path gives 0.
/// @ordinal{1031}
ZERATOOLS_API(int) ZERA_TOOLS_FILE_CHECK_WRITE_UC(_In_opt_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Gives the space on a drive that is free to the caller.
///
/// KEPT FOR HOSTS: above 4 GiB the result is a little too small (each 4 GiB count as 65535 x 65535 bytes),
/// and for a drive that only tells its free clusters it is in kilobytes.
///
/// @param driveLetter  the drive's letter; taken as a number, without conversion
/// @return free gigabytes (1024 x 1024 x 1024 bytes); 0 when the drive does not answer
/// @ordinal{9}
ZERATOOLS_API(float) ZERA_TOOLS_FILE_GET_FREEDISK_GB(char driveLetter) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_FREEDISK_GB, with a UTF-16 letter.
/// @ordinal{1009}
ZERATOOLS_API(float) ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(wchar_t driveLetter) ZERATOOLS_RAISES;

/// Gives the version of a module (program or library) as text: "2.5.3.7".
///
/// KEPT FOR HOSTS: the first number is the product version's, the others are the file version's.
///
/// @param path      the module
/// @param version   receives the text, or an empty one when the result is 0
/// @param capacity  room at `version` in characters, not bytes, terminator included; 24 always suffice
/// @return 1 if the module has a version and it fits, else 0. A buffer that is too small or null is no
///         invalid parameter here.
/// @ordinal{34}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_VERSION(_In_opt_z_ const char* path, _Out_writes_opt_z_(capacity) char* version,
                            size_t capacity)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_GET_VERSION, with UTF-16 text; a buffer that is too small or null is an invalid
/// parameter.
///
/// @param path      the module
/// @param version   receives the text, or an empty one when the result is 0
/// @param capacity  room at `version` in characters, not bytes, terminator included; 24 always suffice
/// @return 1 if the module has a version, else 0
/// @ordinal{1034}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_GET_VERSION_UC(_In_opt_z_ const wchar_t* path, _Out_writes_z_(capacity) wchar_t* version,
                               size_t capacity)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Whole directories
// A start path names the directory to work on by any path inside it: the directory with a trailing
// backslash, a file in it, or either with wildcards ("C:\\log\\", "C:\\log\\run.txt" and "C:\\log\\*.*" are
// the same). An empty start path, "*.*" alone and one of 260 characters or more (or with a component beyond
// its limit) are refused: the result is 0, and nothing is touched. A directory that does not exist holds
// nothing.
//
// Beware: any other name without drive and directory ("run.ini", "*.log", "sub") means the entries of the
// process's current folder, all of them.
//
// Every file of the directory and of all directories below it is visited. Links to folders are neither
// followed nor removed, so no walk leaves its start directory. A walk goes as deep as paths may be long:
// what lies beyond 260 characters cannot be reached.
//
// Extensions are compared without regard to case, and with their period; a file without one has the
// empty extension. Plain variants convert their texts and then do what the UTF-16 variants do. Hosts that
// call on threads of their own: the deepest walk takes up to 320 KiB of stack.

/// Deletes the files of a directory tree that have an extension, and the directories that are empty then.
///
/// A file that others hold is tried as in #ZERA_TOOLS_FILE_DELETE. The walk goes on after a failure; a
/// directory with a failure below it is not removed.
///
/// KEPT FOR HOSTS: the filter is not read as in #ZERA_TOOLS_FILE_DELETE_ALL_OLD.
///
/// @param startPath  any path inside the directory; the directory itself stays
/// @param filter     the extension: ".log" or "*.log"; ".*" or "*.*" for every file, empty for files
///                   without an extension
/// @return 1 if every matching file is gone, 0 if the start path was refused, a file could not be deleted or
///         an extension could not be taken (its directory has more than 255 characters). A matching file
///         whose path has 260 characters or more stays and is no failure: it counts as missing. Nor is a
///         directory that cannot be removed.
/// @ordinal{3}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL(_In_opt_z_ const char* startPath, _In_opt_z_ const char* filter) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_DELETE_ALL, with UTF-16 text.
/// @ordinal{1003}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL_UC(_In_opt_z_ const wchar_t* startPath, _In_opt_z_ const wchar_t* filter)
ZERATOOLS_RAISES;

/// Deletes the files of a directory tree that have an extension and were created long enough ago, and the
/// directories that are empty then and were created long enough ago.
///
/// A file that others hold is tried as in #ZERA_TOOLS_FILE_DELETE. The walk goes on after a failure; a
/// directory with a failure below it is not removed.
///
/// KEPT FOR HOSTS: the filter is not read as in #ZERA_TOOLS_FILE_DELETE_ALL: "*.log" matches nothing here.
///
/// @param startPath   any path inside the directory; the directory itself stays
/// @param filter      the extension: ".log"; "*.*" for every file, empty for files without an extension
/// @param ageSeconds  only what was created more than so many seconds ago; the time of creation counts, not
///                    that of the last change
/// @return 1 if every matching file of that age is gone, 0 if the start path was refused, a file could not be
///         deleted, or its extension or its age could not be taken. A directory that cannot be removed or
///         whose age cannot be taken is no failure.
/// @ordinal{8}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL_OLD(_In_opt_z_ const char* startPath, _In_opt_z_ const char* filter,
                               unsigned int ageSeconds)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_DELETE_ALL_OLD, with UTF-16 text.
/// @ordinal{1008}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC(_In_opt_z_ const wchar_t* startPath, _In_opt_z_ const wchar_t* filter,
                                  unsigned int ageSeconds)
ZERATOOLS_RAISES;

/// The same as #ZERA_TOOLS_FILE_DELETE_ALL_OLD.
///
/// KEPT FOR HOSTS: only the `_UC` variant has an abort flag.
///
/// @param startPath   any path inside the directory; the directory itself stays
/// @param filter      the extension: ".log"; "*.*" for every file, empty for files without an extension
/// @param ageSeconds  only what was created more than so many seconds ago
/// @return as #ZERA_TOOLS_FILE_DELETE_ALL_OLD
/// @ordinal{29}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX(_In_opt_z_ const char* startPath, _In_opt_z_ const char* filter,
                                  unsigned int ageSeconds)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC, and can be stopped.
///
/// KEPT FOR HOSTS: runs under the module state of its caller.
///
/// @param startPath   any path inside the directory; the directory itself stays
/// @param filter      the extension: ".log"; "*.*" for every file, empty for files without an extension
/// @param ageSeconds  only what was created more than so many seconds ago
/// @param abortFlag   any thread may set it to another value than 0 while the call runs: the walk ends before
///                    its next entry, with the result so far. Null for none.
/// @return as #ZERA_TOOLS_FILE_DELETE_ALL_OLD; 1 if the flag was set from the start
/// @ordinal{1029}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(_In_opt_z_ const wchar_t* startPath, _In_opt_z_ const wchar_t* filter,
                                     unsigned int ageSeconds, _In_opt_ int* abortFlag)
ZERATOOLS_RAISES;

/// Copies the files of a directory and all directories below it into another directory.
///
/// Missing directories are made, empty ones included. Each file is copied as by #ZERA_TOOLS_FILE_COPY, and
/// once more if its destination had to be made first (#ZERA_TOOLS_FILE_CHECK_WRITE).
///
/// KEPT FOR HOSTS: 1 for every walk that started, whatever single copies came to; look at the destination.
///
/// @param startPath    any path inside the directory to copy
/// @param destination  the directory to copy to, ending in a backslash; an empty or null one means the
///                     current folder. One inside the directory that is copied is copied into itself, level
///                     by level, until the path limit ends it.
/// @param overwrite    0 leaves files alone that are there already, anything else replaces them
/// @return 1, or 0 if the start path was refused
/// @exception CFileException when a file cannot be read or written to its end; what was copied stays
/// @ordinal{18}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COPY_ALL(_In_opt_z_ const char* startPath, _In_opt_z_ const char* destination,
                         unsigned int overwrite)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_FILE_COPY_ALL, with UTF-16 text.
/// @ordinal{1018}
ZERATOOLS_API(int)
ZERA_TOOLS_FILE_COPY_ALL_UC(_In_opt_z_ const wchar_t* startPath, _In_opt_z_ const wchar_t* destination,
                            unsigned int overwrite)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Reading settings files
// Files of sections and keys that the platform's private-profile functions read and write; the format, with
// the keys beside a text key, is in docs/settings-files.md.
//
// An empty value counts as a missing one. A missing file, section or key gives the default; there is no
// failure. Values of numbers are cut after 255 characters. Names are passed to the platform as they are;
// null ones have the meaning that it gives them.

/// Reads a text.
///
/// Looks at the key alone, not at its companions.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultText  taken when the key is missing or its value empty; null counts as empty
/// @param text         receives the text; should not be null
/// @param capacity     room at `text` in characters, not bytes, terminator included. A longer value, and the
///                     default of a missing key, are cut to it by the platform. The default of an empty
///                     value is given whole or, if it does not fit, not at all; `text` then stays as the
///                     platform left it, which is empty.
/// @ordinal{50}
ZERATOOLS_API(void)
ZERA_TOOLS_READ_STRING(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                       _In_opt_z_ const char* defaultText, _Out_writes_z_(capacity) char* text,
                       size_t capacity)
ZERATOOLS_RAISES;

/// Reads a UTF-16 text, with the characters that the file's code page cannot carry.
///
/// Three places are asked; the first with a value that is not empty wins: the key with `_utf8` behind its
/// name, UTF-8 bytes; the key with `_UC` behind its name, hexadecimal numbers as #ZERA_TOOLS_STRING_UC_TO_HEX
/// writes them, of which the text up to the first NUL is given, though all of them must fit; the key itself.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultText  as for #ZERA_TOOLS_READ_STRING
/// @param text         receives the text; set to an empty one first, so it should not hold `defaultText`
/// @param capacity     room at `text` in characters, not bytes, terminator included. Text of a companion is
///                     given whole or, if it does not fit, as an empty text. Text of the key itself and
///                     defaults are as for #ZERA_TOOLS_READ_STRING. Ten times as much memory is taken for
///                     the call; a capacity for which there is none raises CMemoryException, with `text`
///                     empty.
/// @ordinal{1050}
ZERATOOLS_API(void)
ZERA_TOOLS_READ_STRING_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                          _In_z_ const wchar_t* file, _In_opt_z_ const wchar_t* defaultText,
                          _Out_writes_z_(capacity) wchar_t* text, size_t capacity)
ZERATOOLS_RAISES;

/// Reads a signed number.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultValue given as it is, unclamped, when the key is missing or its value empty
/// @param minimum      the least value given
/// @param maximum      the greatest value given; a `minimum` above it wins for values below the minimum
/// @return the value, clamped; text without a number counts as 0, which is then clamped
/// @ordinal{51}
ZERATOOLS_API(int)
ZERA_TOOLS_READ_INT(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                    int defaultValue, int minimum, int maximum)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_READ_INT, with UTF-16 text.
/// @ordinal{1051}
ZERATOOLS_API(int)
ZERA_TOOLS_READ_INT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                       _In_z_ const wchar_t* file, int defaultValue, int minimum, int maximum)
ZERATOOLS_RAISES;

/// Reads an unsigned number.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultValue given as it is, unclamped, when the key is missing or its value empty
/// @param minimum      the least value given
/// @param maximum      the greatest value given; a `minimum` above it wins for values below the minimum
/// @return the value, clamped; text without a number counts as 0, which is then clamped
///         Decimal only. A minus sign wraps: "-1" is 4294967295 before clamping.
/// @ordinal{52}
ZERATOOLS_API(unsigned int)
ZERA_TOOLS_READ_UINT(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                     unsigned int defaultValue, unsigned int minimum, unsigned int maximum)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_READ_UINT, with UTF-16 text.
/// @ordinal{1052}
ZERATOOLS_API(unsigned int)
ZERA_TOOLS_READ_UINT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                        _In_z_ const wchar_t* file, unsigned int defaultValue, unsigned int minimum,
                        unsigned int maximum)
ZERATOOLS_RAISES;

/// Reads an unsigned 16-bit number.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultValue given as it is, unclamped, when the key is missing or its value empty
/// @param minimum      the least value given
/// @param maximum      the greatest value given; a `minimum` above it wins for values below the minimum
/// @return the value, clamped; text without a number counts as 0, which is then clamped
///         Read and clamped as 32 bits: "65536" gives `maximum`, and so does "-1".
/// @ordinal{58}
ZERATOOLS_API(WORD)
ZERA_TOOLS_READ_WORD(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                     WORD defaultValue, WORD minimum, WORD maximum)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_READ_WORD, with UTF-16 text.
/// @ordinal{1058}
ZERATOOLS_API(WORD)
ZERA_TOOLS_READ_WORD_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                        _In_z_ const wchar_t* file, WORD defaultValue, WORD minimum, WORD maximum)
ZERATOOLS_RAISES;

/// Reads a floating-point number.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultValue given as it is, unclamped, when the key is missing or its value empty
/// @param minimum      the least value given
/// @param maximum      the greatest value given; a `minimum` above it wins for values below the minimum
/// @return the value, clamped; text without a number counts as 0, which is then clamped
///         The decimal separator is a point under every locale. A text that is no number to the C runtime
///         ("nan") passes the clamp.
///
/// Threads: the process's LC_NUMERIC is "english" during the conversion. Another thread that formats or
/// parses a number in that moment sees English rules. No lock is taken: two such calls at the same time,
/// whatever they read, write or format, can leave the whole process with English numbers.
/// @ordinal{53}
ZERATOOLS_API(double)
ZERA_TOOLS_READ_DOUBLE(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                       double defaultValue, double minimum, double maximum)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_READ_DOUBLE, with UTF-16 text.
/// @ordinal{1053}
ZERATOOLS_API(double)
ZERA_TOOLS_READ_DOUBLE_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                          _In_z_ const wchar_t* file, double defaultValue, double minimum, double maximum)
ZERATOOLS_RAISES;

/// Reads a floating-point number.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param defaultValue given as it is, unclamped, when the key is missing or its value empty
/// @param minimum      the least value given
/// @param maximum      the greatest value given; a `minimum` above it wins for values below the minimum
/// @return the value, clamped; text without a number counts as 0, which is then clamped
///         As #ZERA_TOOLS_READ_DOUBLE, clamped in double precision and narrowed last.
///
/// KEPT FOR HOSTS: the plain variant alone converts its names from the ANSI code page to UTF-16.
/// @ordinal{54}
ZERATOOLS_API(float)
ZERA_TOOLS_READ_FLOAT(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_opt_z_ const char* file,
                      float defaultValue, float minimum, float maximum)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_READ_FLOAT, with UTF-16 text.
/// @ordinal{1054}
ZERATOOLS_API(float)
ZERA_TOOLS_READ_FLOAT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                         _In_z_ const wchar_t* file, float defaultValue, float minimum, float maximum)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Writing settings files
// Each call is an update of the file for itself. The platform makes a missing file, not a missing folder.

/// Writes a text.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        null removes the key; with a null `key`, the platform removes the whole section
/// @return the platform's answer: not 0 if the value was written
///
/// The key alone is written. Companions stay, so #ZERA_TOOLS_READ_STRING_UC may still give an older text.
/// @ordinal{60}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_STRING(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                        _In_opt_z_ const char* value)
ZERATOOLS_RAISES;

/// Writes a UTF-16 text, with the characters that the file's code page cannot carry.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        null removes the key. With a null `key` the platform removes the whole section, and a
///                     value outside ASCII then makes it anew, with a key named `_utf8`.
///
/// The key gets what the file's code page can carry. If there is a character outside ASCII, the key with
/// `_utf8` behind its name gets the text's UTF-8 bytes; otherwise that key is emptied if it has a value. The
/// key with `_UC` behind its name is emptied if it has a value. Emptied keys stay in the file.
///
/// Under the double-byte code pages 932, 936, 949 and 950 some texts lose characters on the way through the
/// code page; see docs/settings-files.md.
///
/// @return 1, even when nothing could be written
/// @ordinal{1060}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_STRING_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                           _In_z_ const wchar_t* file, _In_opt_z_ const wchar_t* value)
ZERATOOLS_RAISES;

/// Writes a signed number as decimal text.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        any
/// @return the platform's answer: not 0 if the value was written
/// @ordinal{61}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_INT(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                     int value)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_WRITE_INT, with UTF-16 text.
/// @ordinal{1061}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_INT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                        _In_z_ const wchar_t* file, int value)
ZERATOOLS_RAISES;

/// Writes an unsigned number as decimal text.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        any
/// @return the platform's answer: not 0 if the value was written
/// @ordinal{62}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_UINT(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                      unsigned int value)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_WRITE_UINT, with UTF-16 text.
/// @ordinal{1062}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_UINT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                         _In_z_ const wchar_t* file, unsigned int value)
ZERATOOLS_RAISES;

/// Writes an unsigned 16-bit number as decimal text.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        any
/// @return the platform's answer: not 0 if the value was written
/// @ordinal{65}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_WORD(_In_opt_z_ const char* section, _In_opt_z_ const char* key, _In_z_ const char* file,
                      WORD value)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_WRITE_WORD, with UTF-16 text.
/// @ordinal{1065}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_WORD_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                         _In_z_ const wchar_t* file, WORD value)
ZERATOOLS_RAISES;

/// Writes a floating-point number with ten decimals and a point, under every locale.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        any
/// @return the platform's answer: not 0 if the value was written
///
/// KEPT FOR HOSTS: the plain variant converts its names from the ANSI code page to UTF-16, unlike the other
/// plain writers.
///
/// Threads: as #ZERA_TOOLS_READ_DOUBLE.
/// @ordinal{63}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_DOUBLE(_In_opt_z_ const char* section, _In_opt_z_ const char* key,
                        _In_opt_z_ const char* file, double value)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_WRITE_DOUBLE, with UTF-16 text.
/// @ordinal{1063}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_DOUBLE_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                           _In_z_ const wchar_t* file, double value)
ZERATOOLS_RAISES;

/// Writes a floating-point number, as #ZERA_TOOLS_WRITE_DOUBLE does.
///
/// @param section      name of the section, without brackets
/// @param key          name of the key
/// @param file         path of the settings file; without a folder, the platform looks in the Windows folder
/// @param value        widened to double first
/// @return the platform's answer: not 0 if the value was written
/// @ordinal{64}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_FLOAT(_In_opt_z_ const char* section, _In_opt_z_ const char* key,
                       _In_opt_z_ const char* file, float value)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_WRITE_FLOAT, with UTF-16 text.
/// @ordinal{1064}
ZERATOOLS_API(int)
ZERA_TOOLS_WRITE_FLOAT_UC(_In_opt_z_ const wchar_t* section, _In_opt_z_ const wchar_t* key,
                          _In_z_ const wchar_t* file, float value)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// A settings file's text in a buffer
// Each call puts one line (the UTF-16 text one or two) with its terminator at a position of the caller's
// buffer. The next call goes to that position plus the count, over the terminator. Lines end in a line feed.
// A null text counts as empty.

/// Puts the line of a section, "[section]" and a line feed.
///
/// @param section      name of the section
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param count        receives the line's length in characters without the terminator; 0 if it did not fit
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
/// @ordinal{80}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_SECTION(_In_opt_z_ const char* section, _Out_writes_z_(free) char* position, size_t free,
                            _Out_ size_t* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_BUFWRITE_SECTION, with UTF-16 text.
/// @ordinal{1080}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_SECTION_UC(_In_opt_z_ const wchar_t* section, _Out_writes_z_(free) wchar_t* position,
                               size_t free, _Out_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of a text, "key=text" and a line feed.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        the text, written as it is
/// @param count        receives the line's length in characters without the terminator; 0 if it did not fit
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
/// @ordinal{81}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_STRING(_In_opt_z_ const char* key, _Out_writes_z_(free) char* position, size_t free,
                           _In_opt_z_ const char* value, _Out_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of a UTF-16 text, "key=text" and a line feed, and behind it, if there is a character outside
/// ASCII, the line of its companion "key_utf8" as #ZERA_TOOLS_WRITE_STRING_UC writes it.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        the text
/// @param count        receives the length of what was written, in characters without the terminator: 0 if
///                     the first line did not fit, the first line's length if only the second did not
/// @return 1 if all lines fitted and were written, 0 otherwise
///
/// KEPT FOR HOSTS: the second line is taken to fit when its terminator does not. With exactly that room, the
/// copy is an invalid parameter; if the C runtime's handler returns, the first line is there, while count and
/// result are those of success. Leave room for one more character.
/// @ordinal{1081}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_STRING_UC(_In_opt_z_ const wchar_t* key, _Out_writes_z_(free) wchar_t* position,
                              size_t free, _In_opt_z_ const wchar_t* value, _Out_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of a signed number, "key=number" and a line feed.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        any
/// @param count        receives the line's length in characters without the terminator; left as it was
/// otherwise
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
/// @ordinal{82}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_INT(_In_opt_z_ const char* key, _Out_writes_z_(free) char* position, size_t free,
                        int value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_BUFWRITE_INT, with UTF-16 text.
/// @ordinal{1082}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_INT_UC(_In_opt_z_ const wchar_t* key, _Out_writes_z_(free) wchar_t* position, size_t free,
                           int value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of an unsigned number, "key=number" and a line feed.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        any
/// @param count        receives the line's length in characters without the terminator; left as it was
/// otherwise
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
/// @ordinal{83}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_UINT(_In_opt_z_ const char* key, _Out_writes_z_(free) char* position, size_t free,
                         unsigned int value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_BUFWRITE_UINT, with UTF-16 text.
/// @ordinal{1083}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_UINT_UC(_In_opt_z_ const wchar_t* key, _Out_writes_z_(free) wchar_t* position,
                            size_t free, unsigned int value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of a floating-point number with ten decimals and a point, and a line feed.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        any
/// @param count        receives the line's length in characters without the terminator; left as it was
/// otherwise
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
///
/// Threads: as #ZERA_TOOLS_READ_DOUBLE.
/// @ordinal{84}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_DOUBLE(_In_opt_z_ const char* key, _Out_writes_z_(free) char* position, size_t free,
                           double value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_BUFWRITE_DOUBLE, with UTF-16 text.
/// @ordinal{1084}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_DOUBLE_UC(_In_opt_z_ const wchar_t* key, _Out_writes_z_(free) wchar_t* position,
                              size_t free, double value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// Puts the line of a floating-point number, as #ZERA_TOOLS_BUFWRITE_DOUBLE does.
///
/// @param key          name of the key
/// @param position     where to write; a null one is an invalid parameter when the line would fit
/// @param free         room at `position` in characters, not bytes, terminator included
/// @param value        widened to double first
/// @param count        receives the line's length in characters without the terminator; left as it was
/// otherwise
/// @return 1 if the line and its terminator fitted and were written, 0 with nothing written otherwise
/// @ordinal{85}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_FLOAT(_In_opt_z_ const char* key, _Out_writes_z_(free) char* position, size_t free,
                          float value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_BUFWRITE_FLOAT, with UTF-16 text.
/// @ordinal{1085}
ZERATOOLS_API(int)
ZERA_TOOLS_BUFWRITE_FLOAT_UC(_In_opt_z_ const wchar_t* key, _Out_writes_z_(free) wchar_t* position,
                             size_t free, float value, _Inout_ size_t* count)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Rounding
//
// Halves go away from zero, and a number out of range becomes the nearest end of the range. Nothing fails.
// The results are exact to the bit on every machine: the steps below are taken as they stand, in double
// precision. So a number whose sum with 0.5 is not a double rounds as that sum does: 0.49999999999999994
// gives 1.

/// Rounds to a 32-bit integer: adds or subtracts 0.5 and cuts off the fraction.
///
/// @param value  any number
/// @return the integer; 2147483647 or -2147483648 beyond the range, also for an infinity. A NaN gives what
///         the processor makes of it, -2147483648.
/// @ordinal{100}
ZERATOOLS_API(int) ZERA_TOOLS_ROUND_INT(double value) ZERATOOLS_RAISES;

/// Rounds to a 32-bit unsigned integer: adds 0.5 and cuts off the fraction.
///
/// @param value  any number
/// @return the integer; 0 for everything below 0.0, 4294967295 beyond the range. A NaN gives 0.
/// @ordinal{102}
ZERATOOLS_API(unsigned int) ZERA_TOOLS_ROUND_UINT(double value) ZERATOOLS_RAISES;

/// Rounds to a number of decimals.
///
/// The number is multiplied by 10.0 once for each decimal, rounded to a whole number, and divided by 10.0 as
/// often. One multiplication by a power of ten would give another last bit now and then.
///
/// @param value     any number
/// @param decimals  how many; 16 and more give `value` back as it is, below 0 counts as 0
/// @return the rounded number; infinity if the multiplication overflows, NaN for a NaN. A negative number
///         that rounds to zero gives -0.0.
/// @ordinal{101}
ZERATOOLS_API(double) ZERA_TOOLS_ROUND_DOUBLE(double value, int decimals) ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Processes
//
// Processes and modules are read from one snapshot of the machine; what starts or ends meanwhile may be
// missed. A process that the caller has no right to is passed over.

/// Ends every process of an executable's name, at once and with exit code 0.
///
/// The caller's own process is ended too if its name matches. Nothing is saved, no window is asked. An empty
/// name ends nothing.
///
/// @param fileName  the executable's file name without a path; letter case counts, unlike in
///                  #ZERA_TOOLS_GETNUM_APPRUNNING
/// @return 1, whether there was such a process and whether it could be ended or not
/// @ordinal{90}
ZERATOOLS_API(int) ZERA_TOOLS_KILLPROCESS(_In_opt_z_ const char* fileName) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_KILLPROCESS, with UTF-16 text.
/// @ordinal{1090}
ZERATOOLS_API(int) ZERA_TOOLS_KILLPROCESS_UC(_In_z_ const wchar_t* fileName) ZERATOOLS_RAISES;

/// Counts the running instances of an executable.
///
/// @param path  its full path with backslashes, as the system reports it; letter case does not count
/// @return how many processes of that file name have a module of that path; 0 also for a path without a
///         backslash and when the system gives no list
/// @ordinal{91}
ZERATOOLS_API(unsigned int) ZERA_TOOLS_GETNUM_APPRUNNING(_In_opt_z_ const char* path) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_GETNUM_APPRUNNING, with UTF-16 text.
/// @ordinal{1091}
ZERATOOLS_API(unsigned int) ZERA_TOOLS_GETNUM_APPRUNNING_UC(_In_z_ const wchar_t* path) ZERATOOLS_RAISES;

/// Allocates memory and gives null, not an exception, when there is none.
///
/// @param size  in bytes; 0 gives a block too
/// @return the block, not initialised; null when memory is exhausted. It is the caller's: give it back with
///         `delete[]` on a pointer to bytes, or `free`, of the shared C runtime.
/// @ordinal{93}
ZERATOOLS_API(void*) ZERA_TOOLS_SAFE_NEW(unsigned int size) ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Languages
//

/// Reads the chosen language of the user interface from an application's settings file: section
/// "Vorgaben", key "Language", one code of three letters in any case.
///
/// 0 DEU (also GER), 1 ENG, 2 FRA, 3 NLD, 4 ITA, 5 ESP, 6 PTG, 7 SVE, 8 NOR, 9 CHS, 10 KOR, 11 JPN,
/// 12 BGR.
///
/// @param settingsFile  full path of the file, as #ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC gives it
/// @return the language's number; 0 (German) without an entry and for any text that is not exactly a code,
///         blanks in front or behind included
/// @ordinal{202}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC(_In_opt_z_ const char* settingsFile) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC, with UTF-16 text.
/// @ordinal{203}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(_In_z_ const wchar_t* settingsFile) ZERATOOLS_RAISES;

/// Saves the choice of a language where #ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC reads it.
///
/// @param language      the language's number; any that is not from 1 to 12 saves "DEU"
/// @param settingsFile  full path of the file; it is made if it is missing, its folder is not
/// @return 1, always: whether the file could be written is not reported
/// @ordinal{205}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC(int language, _In_opt_z_ const char* settingsFile) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_MBC, with UTF-16 text.
/// @ordinal{206}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(int language, _In_z_ const wchar_t* settingsFile) ZERATOOLS_RAISES;

/// Loads the language module of an application: a library with the texts of its user interface, beside
/// the application's own module.
///
/// For "C:\\Prog\\view.exe" and French these files are tried in turn: "C:\\Prog\\view_FRA.dll",
/// "C:\\Prog\\viewFRA.dll", "C:\\Prog\\view_ENG.dll", "C:\\Prog\\viewENG.dll". The module's own extension
/// counts as three letters.
///
/// The module is loaded as an ordinary library. Take it into use as your framework does and give it back
/// with FreeLibrary.
///
/// @param module    the application's module; null for the process's executable
/// @param language  the language's number, 1 to 12; 0 (German is built into the applications) and any other
///                  number load nothing
/// @return the module, yours to free; null if there is none to load
/// @ordinal{204}
ZERATOOLS_API(HMODULE)
ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(_In_opt_ HMODULE module, unsigned int language) ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Encryption with buffers
//
// The rules of all encryption stand with the exports that take framework objects, under "Encryption".

/// Encrypts no bytes into a buffer: with any count but 0 this raises an exception.
///
/// KEPT FOR HOSTS: only a count of 0 has ever worked. Use #ZERA_TOOLS_ENC_STRING_L or #ZERA_TOOLS_ENC_UC.
///
/// @param passPhrase  the pass phrase
/// @param plain       never read
/// @param count       0
/// @param text        receives the cipher text with its terminator, an empty text; unchanged on failure
/// @param capacity    room at `text` in bytes, terminator included
/// @param hex         not 0: hexadecimal digits, 0: decimal values
/// @return the length of the cipher text, 0; -1 if the platform's service fails or for too little room
/// @exception CInvalidArgException for any count but 0, negative ones too
/// @ordinal{71}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC(_In_opt_z_ const char* passPhrase, _In_reads_bytes_opt_(count) const BYTE* plain, int count,
               _Out_writes_z_(capacity) char* text, UINT capacity, BOOL hex)
ZERATOOLS_RAISES;

/// Decrypts a text into a buffer of bytes.
///
/// @param passPhrase  the pass phrase
/// @param text        the cipher text. With `hex` 0 each character, once widened by the ANSI code page, is a
///                    cipher byte by its low 8 bits.
/// @param hex         not 0: the text is hexadecimal digits
/// @param plain       receives the bytes, without a terminator; unchanged on failure
/// @param capacity    room at `plain` in bytes
/// @return the number of bytes; -1 if a pair cannot be read, for too little room or memory; 0 if the
///         platform's service fails
/// @ordinal{72}
ZERATOOLS_API(int)
ZERA_TOOLS_DEC(_In_opt_z_ const char* passPhrase, _In_opt_z_ const char* text, UINT hex,
               _Out_writes_bytes_(capacity) BYTE* plain, UINT capacity)
ZERATOOLS_RAISES;

#if !defined(ZERATOOLS_OLD_LANGUAGE)

// --------------------------------------------------------------------------------------------------
// Exports that take or give framework objects: conversions
//

/// Converts UTF-16 text to the ANSI code page, each code unit for itself.
///
/// The degree and the micro sign are written as the multi-byte code page of the C runtime has them: as they
/// are without one; as that page's own characters in 932, 936, 949 and 950; in any other the micro sign as
/// "u" and the degree sign as "deg", in 874 the latter not at all.
///
/// KEPT FOR HOSTS: a degree sign under 932, 936, 949 and 950 drops the text before it.
///
/// @param text         UTF-16 text; null counts as empty
/// @param result       receives the converted text
/// @ordinal{110}
ZERATOOLS_API(void)
ZERA_TOOLS_UC_TO_MBC(_In_opt_z_ const wchar_t* text, ZERATOOLS_STRING_A result) ZERATOOLS_RAISES;

/// Brings the degree and the micro sign of Latin-1 text to the ANSI code page; other bytes stay as they are.
///
/// @param text         Latin-1 text; null counts as empty; may be that of `result`
/// @param result       receives the text. The signs, bytes 0xB0 and 0xB5, are written as by
///                     #ZERA_TOOLS_UC_TO_MBC, but the degree sign in 874 as "deg".
/// @ordinal{111}
ZERATOOLS_API(void)
ZERA_TOOLS_CHAR8_TO_MBC(_In_opt_z_ const char* text, ZERATOOLS_STRING_A result) ZERATOOLS_RAISES;

/// Converts text in the ANSI code page to UTF-16, byte by byte, but keeps the degree and the micro sign.
///
/// Double-byte characters are not put together.
///
/// @param text         ANSI text in which bytes 0xB0 and 0xB5 mean the two signs; null counts as empty
/// @param result       receives the converted text, U+00B0 and U+00B5 for the signs
/// @ordinal{112}
ZERATOOLS_API(void)
ZERA_TOOLS_CHAR8_TO_UC(_In_opt_z_ const char* text, ZERATOOLS_STRING_W result) ZERATOOLS_RAISES;

/// Converts text in the ANSI code page to UTF-8.
///
/// @param text         ANSI text; null counts as empty; may be that of `result`
/// @param result       receives the UTF-8 bytes
/// @ordinal{113}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_MBC_TO_UTF8(_In_opt_z_ const char* text, ZERATOOLS_STRING_A result) ZERATOOLS_RAISES;

/// Converts UTF-16 text to UTF-8.
///
/// @param text         UTF-16 text; null counts as empty; an unpaired surrogate becomes U+FFFD
/// @param result       receives the UTF-8 bytes
/// @ordinal{114}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_UC_TO_UTF8(_In_opt_z_ const wchar_t* text, ZERATOOLS_STRING_A result) ZERATOOLS_RAISES;

/// Converts UTF-8 to text in the ANSI code page.
///
/// @param text         UTF-8 bytes; null counts as empty; may be that of `result`
/// @param result       receives the ANSI text; what the code page has not becomes its replacement character
/// @ordinal{115}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_UTF8_TO_MBC(_In_opt_z_ const char* text, ZERATOOLS_STRING_A result) ZERATOOLS_RAISES;

/// Converts UTF-8 to UTF-16 text.
///
/// @param text         UTF-8 bytes; null counts as empty; invalid ones become U+FFFD
/// @param result       receives the UTF-16 text
/// @ordinal{116}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_UTF8_TO_UC(_In_opt_z_ const char* text, ZERATOOLS_STRING_W result) ZERATOOLS_RAISES;

/// Writes each code unit of a UTF-16 text as a hexadecimal number: "Hi" gives "48 69".
///
/// @param text         UTF-16 text; null counts as empty; may be that of `result`
/// @param result       receives upper-case numbers without leading zeros, a single blank between them
/// @ordinal{117}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_UC_TO_HEX(_In_opt_z_ const wchar_t* text, ZERATOOLS_STRING_W result) ZERATOOLS_RAISES;

/// Puts a UTF-16 text together from hexadecimal numbers, the inverse of #ZERA_TOOLS_STRING_UC_TO_HEX.
///
/// @param text         numbers with single blanks between them; the first empty piece, as a second blank or a
///                     trailing one makes it, ends the text; null counts as empty; may be that of `result`
/// @param result       receives one code unit for each piece: the low 16 bits of its number, a NUL for none
/// @ordinal{118}
ZERATOOLS_API(void)
ZERA_TOOLS_STRING_HEX_TO_UC(_In_opt_z_ const wchar_t* text, ZERATOOLS_STRING_W result) ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Encryption
//
// RC4 under the MD5 digest of a pass phrase, by the platform's cryptographic service, for the stored texts
// that exist. It keeps a text from being read by chance and is no protection against an attacker: the same
// pass phrase gives the same key stream every time. See docs/cipher-text.md.
//
// A pass phrase and a plain text are bytes: the bytes of `char` text, the low byte of each UTF-16 unit,
// without the terminator. Every byte counts, letter case too; a null text counts as empty, and an empty pass
// phrase is valid. Cipher text is two upper-case hexadecimal digits for each byte, nothing else. Bytes of any
// number work, as far as a string object holds twice as many characters.
//
// Reading takes digits of both cases and ignores a last character without a partner. A pair is read as the C
// runtime's "%X" does it: one leading digit is enough ("A?" is 0x0A).
//
// Encrypting gives -1 when the platform's service fails or memory for the work is exhausted. KEPT FOR HOSTS:
// decrypting gives -1 when a pair cannot be read or memory for the work is exhausted, but 0 when the
// platform's service fails. For either, memory for the library's copy of the pass phrase or for the result
// that is exhausted raises CMemoryException.
//
// One string may be input and result. Pass phrases and working memory of the library are wiped before they
// are given back. #ZERA_TOOLS_ENC and #ZERA_TOOLS_DEC, for plain C too, stand above.

/// Encrypts bytes into a text.
///
/// @param passPhrase  the bytes of the pass phrase
/// @param plain       the bytes
/// @param text        receives the cipher text; empty on failure
/// @param hex         not 0: hexadecimal digits; 0: the decimal value of each byte, 1 to 3 digits with
///                    nothing between them, which nothing can read back
/// @return the length of the cipher text in characters; -1 for failure
/// @exception CInvalidArgException for an array with a negative size, or with a size and no data
/// @ordinal{1071}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC_UC(const ZERATOOLS_BYTES passPhrase, const ZERATOOLS_BYTES plain, ZERATOOLS_STRING_W text,
                  BOOL hex)
ZERATOOLS_RAISES;

/// Decrypts a text into bytes.
///
/// @param passPhrase  the bytes of the pass phrase
/// @param text        the cipher text; with `hex` 0 the low 8 bits of each character are a cipher byte
/// @param hex         not 0: the text is hexadecimal digits
/// @param plain       receives the bytes; empty on failure. Emptied before the pass phrase is read, so an
///                    array that is both gives an empty pass phrase.
/// @return the number of bytes; -1 if a pair cannot be read or memory is exhausted, 0 if the platform's
///         service fails
/// @exception CInvalidArgException for a pass phrase with a negative size, or with a size and no data
/// @ordinal{1072}
ZERATOOLS_API(int)
ZERA_TOOLS_DEC_UC(const ZERATOOLS_BYTES passPhrase, _In_opt_z_ const wchar_t* text, BOOL hex,
                  ZERATOOLS_BYTES plain)
ZERATOOLS_RAISES;

/// Encrypts a text and gives the beginning of the cipher text.
///
/// @param passPhrase  the pass phrase
/// @param plain       the text, with zero bytes if it has any
/// @param text        receives the first 8 characters of what #ZERA_TOOLS_ENC_STRING_L gives, fewer if there
///                    are not so many; empty on failure
/// @return the length of the whole cipher text, twice that of the text, not of what was given; -1 for failure
/// @ordinal{75}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC_STRING_S(_In_opt_z_ const char* passPhrase, const ZERATOOLS_STRING_A plain,
                        ZERATOOLS_STRING_A text)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_ENC_STRING_S, with UTF-16 text: of each character only the low byte is encrypted.
/// @ordinal{1075}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC_STRING_S_UC(_In_opt_z_ const wchar_t* passPhrase, const ZERATOOLS_STRING_W plain,
                           ZERATOOLS_STRING_W text)
ZERATOOLS_RAISES;

/// Encrypts a text.
///
/// @param passPhrase  the pass phrase
/// @param plain       the text, with zero bytes if it has any
/// @param text        receives the whole cipher text; empty on failure
/// @return the length of the cipher text, twice that of the text; -1 for failure
/// @ordinal{77}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC_STRING_L(_In_opt_z_ const char* passPhrase, const ZERATOOLS_STRING_A plain,
                        ZERATOOLS_STRING_A text)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_ENC_STRING_L, with UTF-16 text: of each character only the low byte is encrypted.
/// @ordinal{1077}
ZERATOOLS_API(int)
ZERA_TOOLS_ENC_STRING_L_UC(_In_opt_z_ const wchar_t* passPhrase, const ZERATOOLS_STRING_W plain,
                           ZERATOOLS_STRING_W text)
ZERATOOLS_RAISES;

/// Decrypts a text of at most 99 bytes.
///
/// @param passPhrase  the pass phrase
/// @param text        the cipher text in hexadecimal digits
/// @param plain       receives the text, which ends at its first zero byte; empty on failure
/// @return the number of bytes before that cut; -1 if a pair cannot be read or the text has more than 99
///         bytes, 0 if the platform's service fails
/// @ordinal{76}
ZERATOOLS_API(int)
ZERA_TOOLS_DEC_STRING(_In_opt_z_ const char* passPhrase, const ZERATOOLS_STRING_A text,
                      ZERATOOLS_STRING_A plain)
ZERATOOLS_RAISES;

/// Decrypts a text of any length.
///
/// @param passPhrase  the pass phrase; of each character only the low byte counts
/// @param text        the cipher text in hexadecimal digits; null counts as empty
/// @param plain       receives one character, U+0000 to U+00FF, for each byte, zero bytes included; empty on
/// failure
/// @return the number of bytes; -1 if a pair cannot be read or memory is exhausted, 0 if the platform's
///         service fails
/// @ordinal{1076}
ZERATOOLS_API(int)
ZERA_TOOLS_DEC_STRING_UC(_In_opt_z_ const wchar_t* passPhrase, _In_opt_z_ const wchar_t* text,
                         ZERATOOLS_STRING_W plain)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Where an application keeps its files
//

/// Finds an application's settings file and makes the user's own if it is due.
///
/// As #ZERA_TOOLS_APPLICATION_GET_INIFILE_UC, but `file` stays empty when the result is 0. Characters
/// that the code page lacks are replaced in the result.
///
/// @param module  the application's module; null for the process's executable
/// @param file    receives the path with result 1, is emptied otherwise
/// @return 1 if the file exists at the end of the call, else 0
/// @ordinal{200}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC(_In_opt_ HMODULE module, ZERATOOLS_STRING_A file) ZERATOOLS_RAISES;

/// Finds an application's settings file and makes the user's own if it is due.
///
/// A file with the module's name and the extension "ini" beside the module wins if files can be made in
/// that folder. Otherwise it is the user's file, made from the machine-wide one if it is missing, and
/// replaced by it whenever the machine-wide one is newer. Times count in whole seconds, without their
/// fractions: two moments within one second of the clock are equal. Both are named as
/// #ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC tells, with ".ini" behind.
///
/// A copy that breaks off is not told: in the folder beside the module it counts as one that cannot be
/// written, and a user's file that is cut by it stays so.
///
/// @param module  the application's module; null for the process's executable
/// @param file    receives the path; also with result 0, then it is where the user's file would be (empty
///                only if the module's path cannot be read)
/// @return 1 if the file exists at the end of the call, else 0
/// @ordinal{201}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(_In_opt_ HMODULE module, ZERATOOLS_STRING_W file) ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC, and tells whether the user's file was made anew.
///
/// @param module  the application's module; null for the process's executable
/// @param file    receives the path with result 1, is emptied otherwise
/// @param copied  receives 1 if a copy of the machine-wide file was due in this call, even if it failed,
///                else 0
/// @return 1 if the file exists at the end of the call, else 0
/// @ordinal{207}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC(_In_opt_ HMODULE module, ZERATOOLS_STRING_A file, _Out_ int* copied)
ZERATOOLS_RAISES;

/// As #ZERA_TOOLS_APPLICATION_GET_INIFILE_UC, and tells whether the user's file was made anew.
///
/// @param module  the application's module; null for the process's executable
/// @param file    receives the path, also with result 0
/// @param copied  receives 1 if a copy of the machine-wide file was due in this call, even if it failed,
///                else 0
/// @return 1 if the file exists at the end of the call, else 0
/// @ordinal{208}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(_In_opt_ HMODULE module, ZERATOOLS_STRING_W file, _Out_ int* copied)
ZERATOOLS_RAISES;

/// Tells the paths below the application-data folders that belong to an application. Nothing is made
/// there, and nothing is looked for.
///
/// Each is the shell's folder (the common one, the user's roaming one), the last folder of the module's
/// path and the module's name without extension: "C:\\ProgramData\\Viewer\\view" for
/// "C:\\Prog\\Viewer\\view.exe". If "\\TOOLS" occurs in the module's path, in any case, the folders are
/// taken from the one before it on: "C:\\Prog\\Maker\\TOOLS\\Viewer\\view.exe" gives
/// "C:\\ProgramData\\Maker\\TOOLS\\Viewer\\view". Without a common folder the user's is taken for both.
///
/// @param module      the application's module; null for the process's executable
/// @param commonData  receives the machine-wide path
/// @param userData    receives the user's path
/// @return 1 with both paths set; 0 with both empty if the module's path cannot be read
/// @ordinal{209}
ZERATOOLS_API(int)
ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(_In_opt_ HMODULE module, ZERATOOLS_STRING_W commonData,
                                           ZERATOOLS_STRING_W userData)
ZERATOOLS_RAISES;

// --------------------------------------------------------------------------------------------------
// Thread messages
//
// The thread object is the framework's; the library reads nothing of it but the thread's identifier.

/// Posts a message to a thread, again and again for two seconds if it does not take any yet.
///
/// A thread takes messages once it has a queue, which it gets with its first call for one. After each failure
/// this sleeps 10 ms on the caller's thread, at most 201 times.
///
/// @param thread   the thread's object; null gives 0. Only read at the start.
/// @param message  the message
/// @param wParam   its first parameter
/// @param lParam   its second parameter
/// @return 1 if it was posted, 0 if it was not after 201 attempts
/// @ordinal{92}
ZERATOOLS_API(int)
ZERA_TOOLS_POSTTHREADMESSAGE(_In_opt_ ZERATOOLS_THREAD thread, UINT message, WPARAM wParam, LPARAM lParam)
ZERATOOLS_RAISES;

#endif  // ZERATOOLS_OLD_LANGUAGE

#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // ZERATOOLS_H
