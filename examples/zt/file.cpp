// SPDX-License-Identifier: MIT
// zt file: one file.
#include <ZERATools.h>
#include <time.h>

#include <cstdio>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "progress.h"

namespace zt {
namespace {

constexpr unsigned int largestUint = 4294967295;

Exit Answer(int yes) {
  PrintLine(yes ? L"yes" : L"no");
  return yes ? done : no;
}

// `why` asks the platform, only after a failure.
template <class Why>
Exit Report(int success, const std::wstring& what, const std::wstring& failure, Why why) {
  if (success) {
    if (!what.empty()) Confirm(what);
  } else {
    Complain(failure, why());
  }
  return success ? done : no;
}

bool Missing(const std::wstring& path) {
  if (ZERA_TOOLS_FILE_EXIST_UC(path.c_str())) return false;
  DWORD error = ERROR_FILE_NOT_FOUND;
  IsThere(path, &error);
  Complain(L"there is no " + path, error);
  return true;
}

// The library's sizes have 32 bits.
std::uint64_t TrueSize(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
      data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
    return ZERA_TOOLS_FILE_GET_SIZE_UC(path.c_str());
  }
  return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

// Existing contents are only replaced on demand.
bool Blocked(const std::wstring& target, const Arguments& arguments) {
  if (arguments.Has(L"--overwrite") || !ZERA_TOOLS_FILE_EXIST_UC(target.c_str())) return false;
  Complain(target + L" is already there; --overwrite replaces it");
  return true;
}

// Renaming deletes the target first: onto itself it would lose the file.
void RefuseSameFile(const Arguments& arguments) {
  if (SameFile(arguments.Path(0), arguments.Path(1))) arguments.Reject(1, L"is the same file");
}

Exit Exists(const Arguments& arguments) {
  return Answer(ZERA_TOOLS_FILE_EXIST_UC(arguments.Path(0).c_str()));
}

Exit Size(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  if (Missing(path)) return no;
  PrintLine(std::to_wstring(TrueSize(path)));
  return done;
}

Exit Time(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  __int64 seconds = 0;
  if (!ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(path.c_str(), &seconds)) {
    Missing(path);
    return no;
  }
  constexpr __int64 year3000 = 32535215999;  // as far as the runtime's calendar goes
  tm calendar = {};
  wchar_t text[32];
  if (seconds < 0 || seconds > year3000 || ::_gmtime64_s(&calendar, &seconds)) {
    PrintLine(std::to_wstring(seconds) + L" seconds since 1970-01-01T00:00:00Z");
    return done;
  }
  ::wcsftime(text, std::size(text), L"%Y-%m-%dT%H:%M:%SZ", &calendar);
  PrintLine(text);
  return done;
}

Exit HasExtension(const Arguments& arguments) {
  return Answer(ZERA_TOOLS_FILE_HAS_EXTENSION_UC(arguments.PathText(0).c_str(), arguments.Text(1).c_str()));
}

Exit Wait(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  // Below one poll of 20 ms the library waits for ever.
  const auto timeout = static_cast<unsigned int>(arguments.Integer(1, 20, largestUint));
  const Progress progress(L"waiting for " + path);
  return Answer(ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(path.c_str(), timeout));
}

Exit Create(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  const bool there = ZERA_TOOLS_FILE_EXIST_UC(path.c_str()) != 0;
  return Report(ZERA_TOOLS_FILE_CREATE_UC(path.c_str()), (there ? L"already there: " : L"created ") + path,
                L"could not create " + path, [&] { return WriteError(path); });
}

Exit Delete(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  const bool there = ZERA_TOOLS_FILE_EXIST_UC(path.c_str()) != 0;
  return Report(ZERA_TOOLS_FILE_DELETE_UC(path.c_str()), (there ? L"deleted " : L"there was no ") + path,
                L"could not delete " + path, [&] {
                  const DWORD attributes = ::GetFileAttributesW(path.c_str());
                  const bool folder =
                      attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY;
                  return folder ? ERROR_ACCESS_DENIED : DeleteError(path);
                });
}

Exit Rename(const Arguments& arguments) {
  const std::wstring& from = arguments.Path(0);
  const std::wstring& to = arguments.Path(1);
  RefuseSameFile(arguments);
  if (Missing(from) || Blocked(to, arguments)) return no;
  return Report(ZERA_TOOLS_FILE_RENAME_UC(from.c_str(), to.c_str()), L"renamed " + from + L" to " + to,
                L"could not rename " + from + L" to " + to, [&] {
                  // A target that is still there could not be deleted.
                  const DWORD error = IsThere(to) ? DeleteError(to) : WriteError(to);
                  return error ? error : DeleteError(from);
                });
}

Exit Copy(const Arguments& arguments) {
  const std::wstring& from = arguments.Path(0);
  const std::wstring& to = arguments.Path(1);
  RefuseSameFile(arguments);
  if (Missing(from) || Blocked(to, arguments)) return no;
  const Progress progress(L"copying " + from);
  return Report(ZERA_TOOLS_FILE_COPY_UC(from.c_str(), to.c_str()), L"copied " + from + L" to " + to,
                L"could not copy " + from + L" to " + to, [&] {
                  const DWORD error = ReadError(from);
                  return error ? error : WriteError(to);
                });
}

Exit Compare(const Arguments& arguments) {
  const std::wstring& first = arguments.Path(0);
  const std::wstring& second = arguments.Path(1);
  // The library calls two files different when it cannot look.
  for (const std::wstring& path : {first, second}) {
    if (Missing(path)) return bad;
    if (const DWORD error = ReadError(path)) {
      Complain(L"could not read " + path, error);
      return bad;
    }
  }
  const Progress progress(L"comparing");
  const int equal = ZERA_TOOLS_FILE_COMPARE_UC(first.c_str(), second.c_str());
  PrintLine(equal ? L"equal" : L"different");
  return equal ? done : no;
}

Exit Read(const Arguments& arguments) {
  if (IsJson()) throw BadInput{L"the bytes of a file go to stdout as they are, not as JSON"};
  const std::wstring& path = arguments.Path(0);
  if (Missing(path)) return no;
  // The library would read the size modulo 4 GiB, and succeed.
  if (TrueSize(path) > largestUint)
    arguments.Reject(0, L"holds 4 GiB or more, which the library cannot read");
  std::string bytes(ZERA_TOOLS_FILE_GET_SIZE_UC(path.c_str()), '\0');
  unsigned __int64 count = 0;
  if (!ZERA_TOOLS_FILE_TO_BUFFER_UC(path.c_str(), reinterpret_cast<unsigned char*>(bytes.data()),
                                    bytes.size(), &count)) {
    const DWORD error = ReadError(path);
    Complain(L"could not read " + path + (error ? L"" : L", which is empty"), error);
    return no;
  }
  PrintBytes(bytes);
  return done;
}

Exit Write(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  if (Blocked(path, arguments)) return no;
  std::string bytes;
  char piece[65536];
  const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
  for (DWORD count = 0; ::ReadFile(input, piece, sizeof piece, &count, nullptr) && count;) {
    bytes.append(piece, count);
    // The library's count of bytes has 32 bits.
    if (bytes.size() > largestUint) throw BadInput{L"stdin holds 4 GiB or more"};
  }
  return Report(ZERA_TOOLS_FILE_FROM_BUFFER_UC(
                    path.c_str(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()),
                L"wrote " + std::to_wstring(bytes.size()) + L" bytes to " + path, L"could not write " + path,
                [&] { return WriteError(path); });
}

Exit CheckWrite(const Arguments& arguments) {
  return Answer(ZERA_TOOLS_FILE_CHECK_WRITE_UC(arguments.Path(0).c_str()));
}

Exit Version(const Arguments& arguments) {
  const std::wstring& path = arguments.Path(0);
  if (Missing(path)) return no;
  wchar_t version[64];  // four numbers of at most 5 digits
  const int found = ZERA_TOOLS_FILE_GET_VERSION_UC(path.c_str(), version, std::size(version));
  if (found) PrintLine(version);
  return Report(found, L"", path + L" has no version information", [&] {
    const DWORD error = ReadError(path);
    return error ? error : ERROR_RESOURCE_DATA_NOT_FOUND;
  });
}

Exit FreeSpace(const Arguments& arguments) {
  const std::wstring& drive = arguments.Text(0);
  const wchar_t letter = drive.empty() ? L'\0' : static_cast<wchar_t>(drive[0] | 0x20);
  if (letter < L'a' || letter > L'z' ||
      (drive.size() != 1 && drive.substr(1) != L":" && drive.substr(1) != L":\\")) {
    arguments.Reject(0, L"is not a drive such as C or C:");
  }
  const float gigabytes = ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC(drive[0]);
  wchar_t text[64];
  std::swprintf(text, std::size(text), L"%.3f GB", static_cast<double>(gigabytes));
  if (gigabytes > 0) PrintLine(text);
  return Report(gigabytes > 0, L"", L"the free space of drive " + drive + L" is not known", [&] {
    ULARGE_INTEGER free;
    const std::wstring root = drive.substr(0, 1) + L":";
    return ::GetDiskFreeSpaceExW(root.c_str(), &free, nullptr, nullptr) ? DWORD{0} : ::GetLastError();
  });
}

const Command commands[] = {
    {L"exists", L"PATH", L"Whether a file or folder exists", L"Prints yes or no; exit code 0 or 1.\n",
     L"zt file exists C:\\data\\run.ini\nyes", L"ZERA_TOOLS_FILE_EXIST_UC", Exists},
    {L"size", L"PATH", L"The size in bytes",
     L"Also of files of 4 GiB or more, of which the library itself gives the size modulo 4 GiB.\n",
     L"zt file size C:\\data\\run.ini\n1024", L"ZERA_TOOLS_FILE_GET_SIZE_UC", Size},
    {L"time", L"PATH", L"When it was last modified (UTC)", L"",
     L"zt file time C:\\data\\run.ini\n2024-03-05T14:07:09Z", L"ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC", Time},
    {L"has-ext", L"PATH TEXT", L"Whether the extension contains a text, ignoring case",
     L"Prints yes or no; exit code 0 or 1. Looks at the path only, not at the disk.\n",
     L"zt file has-ext C:\\data\\run.ini INI\nyes", L"ZERA_TOOLS_FILE_HAS_EXTENSION_UC", HasExtension},
    {L"wait", L"PATH MILLISECONDS", L"Waits until a file exists and is not empty",
     L"MILLISECONDS from 20 to 4294967295. Prints yes when the file came, no when time ran out.\n",
     L"zt file wait C:\\data\\ready.txt 5000\nyes", L"ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC", Wait},
    {L"create", L"PATH", L"Creates an empty file unless it exists", L"Missing folders are not created.\n",
     L"zt file create C:\\data\\new.txt\ncreated C:\\data\\new.txt", L"ZERA_TOOLS_FILE_CREATE_UC", Create},
    {L"delete", L"PATH", L"Deletes a file",
     L"Tries for a quarter of a second while somebody holds the file open.\n",
     L"zt file delete C:\\data\\old.txt\ndeleted C:\\data\\old.txt", L"ZERA_TOOLS_FILE_DELETE_UC", Delete},
    {L"rename", L"[--overwrite] OLD NEW", L"Renames a file", L"--overwrite deletes a file NEW that exists.\n",
     L"zt file rename C:\\data\\a.txt C:\\data\\b.txt\nrenamed C:\\data\\a.txt to C:\\data\\b.txt",
     L"ZERA_TOOLS_FILE_RENAME_UC", Rename},
    {L"copy", L"[--overwrite] SOURCE TARGET", L"Copies a file's contents, not its times and attributes",
     L"Creates missing folders of TARGET. --overwrite replaces a file TARGET that exists.\n",
     L"zt file copy C:\\data\\a.txt D:\\b.txt\ncopied C:\\data\\a.txt to D:\\b.txt",
     L"ZERA_TOOLS_FILE_COPY_UC", Copy},
    {L"compare", L"FIRST SECOND", L"Whether two files have the same contents",
     L"Prints equal or different; exit code 0 or 1, and 2 if a file is missing or cannot be read.\n",
     L"zt file compare C:\\data\\a.txt D:\\b.txt\nequal", L"ZERA_TOOLS_FILE_COMPARE_UC", Compare},
    {L"read", L"PATH", L"Writes a file's bytes to stdout", L"A file of 4 GiB or more is refused.\n",
     L"zt file read C:\\data\\run.ini > copy.ini", L"ZERA_TOOLS_FILE_TO_BUFFER_UC", Read},
    {L"write", L"[--overwrite] PATH", L"Writes the bytes of stdin to a file",
     L"--overwrite replaces a file that exists.\n",
     L"zt file write C:\\data\\new.ini < run.ini\nwrote 1024 bytes to C:\\data\\new.ini",
     L"ZERA_TOOLS_FILE_FROM_BUFFER_UC", Write},
    {L"check-write", L"PATH", L"Whether it can be written; creates missing folders",
     L"A folder ends in a backslash. Missing folders are created and stay. Prints yes or no;\nexit code 0 or "
     L"1.\n",
     L"zt file check-write D:\\new\\folder\\\nyes", L"ZERA_TOOLS_FILE_CHECK_WRITE_UC", CheckWrite},
    {L"version", L"PATH", L"The version number of a program or library", L"",
     L"zt file version C:\\Prog\\Viewer\\view.exe\n2.5.3.7", L"ZERA_TOOLS_FILE_GET_VERSION_UC", Version},
    {L"free-space", L"DRIVE", L"The free space of a drive", L"In gigabytes of 1024 x 1024 x 1024 bytes.\n",
     L"zt file free-space C:\n118.204 GB", L"ZERA_TOOLS_FILE_GET_FREEDISK_GB_UC", FreeSpace},
};

}  // namespace

const Group fileGroup = {L"file", L"One file: wait, create, copy, compare, rename, delete, read, write",
                         L"A path has at most 259 characters; wildcards are refused.\n", commands};

}  // namespace zt
