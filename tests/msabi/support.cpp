// SPDX-License-Identifier: MIT
#include "support.h"

namespace host {
namespace {

int failures = 0;
const char* subject = "";

void PrintNumber(long long number) {
  char digits[24];
  int at = sizeof digits;
  digits[--at] = 0;
  unsigned long long rest = number < 0 ? 0ull - number : number;
  do digits[--at] = static_cast<char>('0' + rest % 10);
  while (rest /= 10);
  if (number < 0) digits[--at] = '-';
  Print(digits + at);
}

template <class Value>
Value At(const BYTE* base, unsigned long long offset) {
  Value value;
  memcpy(&value, base + offset, sizeof value);
  return value;
}

// The image's headers, as the platform's format documentation numbers them.
const BYTE* Base() {
  return static_cast<const BYTE*>(Library());
}
const BYTE* OptionalHeader() {
  return Base() + At<DWORD>(Base(), 0x3C) + 24;
}
DWORD DirectoryOffset(int index) {
  return At<DWORD>(OptionalHeader(), 112 + 8 * index);
}

void** FindImport(const char* name) {
  const DWORD kImports = 1;
  for (const BYTE* one = Base() + DirectoryOffset(kImports); At<DWORD>(one, 12) != 0; one += 20) {
    const BYTE* names = Base() + At<DWORD>(one, 0);
    auto* entries = reinterpret_cast<void**>(const_cast<BYTE*>(Base()) + At<DWORD>(one, 16));
    for (; At<unsigned long long>(names, 0) != 0; names += 8, ++entries) {
      const auto offset = At<unsigned long long>(names, 0);
      if (offset >> 63) continue;
      if (strcmp(reinterpret_cast<const char*>(Base() + offset + 2), name) == 0) return entries;
    }
  }
  return nullptr;
}

void Store(void** entry, void* value) {
  const DWORD kReadWrite = 4;
  DWORD old = 0;
  VirtualProtect(entry, sizeof *entry, kReadWrite, &old);
  *entry = value;
  VirtualProtect(entry, sizeof *entry, old, &old);
}

}  // namespace

void Print(const char* text) {
  DWORD written = 0;
  const DWORD kOutput = static_cast<DWORD>(-11);
  WriteFile(GetStdHandle(kOutput), text, static_cast<DWORD>(strlen(text)), &written, nullptr);
}

void Report(const char* file, int line, const char* what, const char* expression) {
  ++failures;
  Print(file);
  Print(":");
  PrintNumber(line);
  Print(": [");
  Print(subject);
  Print("] failed: ");
  Print(expression);
  Print(what);
  Print("\n");
}

void ReportNumbers(const char* file, int line, const char* expression, long long got, long long expected) {
  Report(file, line, "", expression);
  Print("    got ");
  PrintNumber(got);
  Print(", expected ");
  PrintNumber(expected);
  Print("\n");
}

int Failures() {
  return failures;
}

void Subject(const char* name) {
  subject = name;
}

void* Library() {
  static void* module = nullptr;
  if (!module) module = LoadLibraryW(L"ZERATools.dll");
  if (!module) {
    Print("ZERATools.dll cannot be loaded\n");
    ExitProcess(125);
  }
  return module;
}

void* Address(unsigned ordinal) {
  void* const address =
      GetProcAddress(Library(), reinterpret_cast<const char*>(static_cast<uintptr_t>(ordinal)));
  if (!address) {
    Print("the library has no export of ordinal ");
    PrintNumber(ordinal);
    Print("\n");
    ExitProcess(125);
  }
  return address;
}

// As in support/main.cpp: under Wine the prefix shows C: and X: alone; Windows shows all its drives, and X:
// is the folder that the kit's runner names.
void RefuseOtherDrives() {
  if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")) {
    const DWORD kDrivesCAndX = 1u << 2 | 1u << 23;
    if (GetLogicalDrives() == kDrivesCAndX) return;
  } else {
    const wchar_t start[] = L"\\??\\";
    static wchar_t expected[1024], target[1024];
    memcpy(expected, start, sizeof start);
    const DWORD length = GetEnvironmentVariableW(L"ZERA_TEST_KIT", expected + 4, 1020);
    const bool named = length > 0 && length < 1020 && QueryDosDeviceW(L"X:", target, 1024);
    if (named && memcmp(expected, target, (length + 5) * sizeof(wchar_t)) == 0) return;
  }
  Print("more than the test's own folder can be reached here; nothing is run\n");
  ExitProcess(125);
}

int CurrentStates() {
  const DWORD kTls = 9;
  const BYTE* const directory = Base() + DirectoryOffset(kTls);
  const auto start = At<uintptr_t>(directory, 0);
  const auto end = At<uintptr_t>(directory, 8);
  const DWORD index = *At<const DWORD*>(directory, 16);
  const BYTE* const* blocks;
  asm("movq %%gs:0x58, %0" : "=r"(blocks));
  const auto image = reinterpret_cast<uintptr_t>(Base());
  const DWORD size = At<DWORD>(OptionalHeader(), 56);
  int found = 0;
  for (uintptr_t at = 0; at + 8 <= end - start; at += 8) {
    found += At<uintptr_t>(blocks[index], at) - image < size;
  }
  return found;
}

Fault::Fault(const char* name, void* replacement)
    : entry_(name ? FindImport(name) : nullptr), original_(nullptr) {
  if (!name) return;
  if (!entry_) {
    Report(__FILE__, __LINE__, " is not imported by the library", name);
    return;
  }
  original_ = *entry_;
  Store(entry_, replacement);
}

Fault::~Fault() {
  if (entry_) Store(entry_, original_);
}

BOOL FailingRead(HANDLE, void*, DWORD, DWORD*, void*) {
  SetLastError(kReadFault);
  return 0;
}
void* NoMemory(size_t) {
  return nullptr;
}
void* NoZeros(size_t, size_t) {
  return nullptr;
}
long long NoTime(void*) {
  return -1;
}

Holdings Hold() {
  Holdings held = {};
  DWORD handles = 0;
  GetProcessHandleCount(GetCurrentProcess(), &handles);
  held.handles = static_cast<int>(handles);

  static DWORD taken[2048];
  while (held.tlsIndexes < 2048 && (taken[held.tlsIndexes] = TlsAlloc()) != 0xFFFFFFFF) ++held.tlsIndexes;
  for (int at = 0; at < held.tlsIndexes; ++at) TlsFree(taken[at]);

  HANDLE heaps[64];
  const DWORD count = GetProcessHeaps(64, heaps);
  for (DWORD at = 0; at < count && at < 64; ++at) {
    struct {
      void* data;
      DWORD bytes;
      BYTE overhead, region;
      WORD flags;
      void* rest[3];
    } entry = {};
    const WORD kBusy = 4;
    while (HeapWalk(heaps[at], &entry)) {
      if (entry.flags & kBusy) held.heapBytes += entry.bytes;
    }
  }
  return held;
}

int Rounds(int all) {
  char digits[12] = {};
  if (!GetEnvironmentVariableA("ZERA_TEST_ROUNDS", digits, sizeof digits)) return all;
  int most = 0;
  for (const char* at = digits; *at >= '0' && *at <= '9'; ++at) most = most * 10 + (*at - '0');
  return most > 0 && most < all ? most : all;
}

InFolder::InFolder(const wchar_t* name) {
  const wchar_t start[] = L"X:\\tmp\\msabi-";
  size_t at = sizeof start / sizeof *start - 1;
  memcpy(text, start, sizeof start);
  for (DWORD rest = GetCurrentProcessId(); rest; rest /= 10)
    text[at++] = static_cast<wchar_t>(L'0' + rest % 10);
  text[at++] = L'\\';
  text[at] = 0;
  CreateDirectoryW(L"X:\\tmp", nullptr);
  CreateDirectoryW(text, nullptr);
  memcpy(text + at, name, (wcslen(name) + 1) * sizeof *name);
}

void RemoveFolder() {
  CHECK(RemoveDirectoryW(InFolder(L"")));
}

void WriteFileBytes(const wchar_t* path, const void* bytes, unsigned count) {
  const DWORD kGenericWrite = 0x40000000, kCreateAlways = 2;
  const HANDLE file = CreateFileW(path, kGenericWrite, 0, nullptr, kCreateAlways, 0, nullptr);
  DWORD written = 0;
  CHECK(WriteFile(file, bytes, count, &written, nullptr));
  CloseHandle(file);
}

}  // namespace host
