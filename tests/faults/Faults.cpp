// SPDX-License-Identifier: MIT
#include "Faults.h"

#include <direct.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <tlhelp32.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "FailureTable.h"
#include "support/Imports.h"
#include "support/Library.h"
#include "support/Machine.h"
#include "support/TempFolder.h"

// The thunks: each loads its number and jumps to the stub, which keeps the registers of the arguments, asks
// zera_faults_decide where to go, and goes there with the stack as it was. So whatever the function is, its
// arguments, its result and its way of leaving are its own.
//
// clang-format off
asm(R"(
  .text
  .balign 16
  .globl zera_faults_thunks
zera_faults_thunks:
  .set number, 0
  .rept 256
  .balign 16
  movl $number, %r11d
  jmp zera_faults_stub
  .set number, number + 1
  .endr
  .balign 16
  .seh_proc zera_faults_stub
zera_faults_stub:
  subq $0x88, %rsp
  .seh_stackalloc 0x88
  .seh_endprologue
  movq %rcx, 0x20(%rsp)
  movq %rdx, 0x28(%rsp)
  movq %r8, 0x30(%rsp)
  movq %r9, 0x38(%rsp)
  movups %xmm0, 0x40(%rsp)
  movups %xmm1, 0x50(%rsp)
  movups %xmm2, 0x60(%rsp)
  movups %xmm3, 0x70(%rsp)
  movl %r11d, %ecx
  call zera_faults_decide
  movq 0x20(%rsp), %rcx
  movq 0x28(%rsp), %rdx
  movq 0x30(%rsp), %r8
  movq 0x38(%rsp), %r9
  movups 0x40(%rsp), %xmm0
  movups 0x50(%rsp), %xmm1
  movups 0x60(%rsp), %xmm2
  movups 0x70(%rsp), %xmm3
  addq $0x88, %rsp
  jmp *%rax
  .seh_endproc
)");
// clang-format on

extern "C" const char zera_faults_thunks[];

namespace faults {

namespace {

constexpr std::size_t kThunks = 256;
constexpr std::size_t kThunkSize = 16;

struct Import {
  std::string name;
  void** entry = nullptr;
  void* original = nullptr;
  void* watcher = nullptr;  // passes the call on and keeps the books
  const Failure* failure = nullptr;
  bool memory = false;
  unsigned long long seen = 0, failed = 0;
};

std::vector<Import> imports;
std::size_t hostManager;  // the number behind the last import
bool active;
DWORD activeThread;
Plan plan;
Record record;
std::size_t target;  // the function of the call at the plan's position

std::vector<std::wstring> made;
std::set<void*> blocks;
std::set<std::pair<std::string, ULONG_PTR>> handles;

void Opened(const char* kind, ULONG_PTR handle) {
  if (active && !handles.insert({kind, handle}).second) {
    record.complaints.push_back(std::string("opened twice: ") + kind);
  }
}
void Closed(const char* kind, ULONG_PTR handle) {
  if (active && handles.erase({kind, handle}) == 0) {
    record.complaints.push_back(std::string("closed, but not open: ") + kind);
  }
}
ULONG_PTR Number(const void* handle) {
  return reinterpret_cast<ULONG_PTR>(handle);
}

void* WatchedMalloc(std::size_t size) {
  void* const block = std::malloc(size);
  if (active && block) blocks.insert(block);
  return block;
}
void* WatchedCalloc(std::size_t count, std::size_t size) {
  void* const block = std::calloc(count, size);
  if (active && block) blocks.insert(block);
  return block;
}
void* WatchedRealloc(void* old, std::size_t size) {
  const ULONG_PTR before = Number(old);
  void* const block = std::realloc(old, size);
  if (active && (block || size == 0)) {
    blocks.erase(reinterpret_cast<void*>(before));
    if (block) blocks.insert(block);
  }
  return block;
}
// What is given back after the call, with an exception object for example, counts as well.
void WatchedFree(void* block) {
  blocks.erase(block);
  std::free(block);
}
HANDLE WINAPI WatchedCreateFile(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                                DWORD creation, DWORD flags, HANDLE pattern) {
  const HANDLE file = ::CreateFileW(path, access, share, security, creation, flags, pattern);
  if (file == INVALID_HANDLE_VALUE) return file;
  Opened("file or snapshot or process", Number(file));
  if (active && creation != OPEN_EXISTING) made.emplace_back(path);
  return file;
}
int WatchedMakeFolder(const wchar_t* path) {
  const int result = ::_wmkdir(path);
  if (active && result == 0) made.emplace_back(path);
  return result;
}
HANDLE WINAPI WatchedSnapshot(DWORD flags, DWORD) {
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(flags, ::GetCurrentProcessId());
  if (snapshot != INVALID_HANDLE_VALUE) Opened("file or snapshot or process", Number(snapshot));
  return snapshot;
}
HANDLE WINAPI WatchedOpenProcess(DWORD access, BOOL inherit, DWORD) {
  const HANDLE process = ::OpenProcess(access, inherit, ::GetCurrentProcessId());
  if (process) Opened("file or snapshot or process", Number(process));
  return process;
}
HANDLE WINAPI WatchedFindFirst(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
  const HANDLE search = ::FindFirstFileW(pattern, found);
  if (search != INVALID_HANDLE_VALUE) Opened("search", Number(search));
  return search;
}
BOOL WINAPI WatchedAcquire(HCRYPTPROV* provider, const wchar_t* container, const wchar_t* name, DWORD type,
                           DWORD flags) {
  const BOOL acquired = ::CryptAcquireContextW(provider, container, name, type, flags);
  if (acquired) Opened("provider", *provider);
  return acquired;
}
BOOL WINAPI WatchedCreateHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags,
                              HCRYPTHASH* hash) {
  const BOOL created = ::CryptCreateHash(provider, algorithm, key, flags, hash);
  if (created) Opened("hash", *hash);
  return created;
}
BOOL WINAPI WatchedDeriveKey(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTHASH hash, DWORD flags,
                             HCRYPTKEY* key) {
  const BOOL derived = ::CryptDeriveKey(provider, algorithm, hash, flags, key);
  if (derived) Opened("key", *key);
  return derived;
}

// The harness has no time to sleep.
void WINAPI WatchedSleep(DWORD) {}

const test::StandIn kWatchers[] = {
    {"malloc", reinterpret_cast<void*>(&WatchedMalloc)},
    {"calloc", reinterpret_cast<void*>(&WatchedCalloc)},
    {"realloc", reinterpret_cast<void*>(&WatchedRealloc)},
    {"free", reinterpret_cast<void*>(&WatchedFree)},
    {"CreateFileW", reinterpret_cast<void*>(&WatchedCreateFile)},
    {"_wmkdir", reinterpret_cast<void*>(&WatchedMakeFolder)},
    {"CreateToolhelp32Snapshot", reinterpret_cast<void*>(&WatchedSnapshot)},
    {"OpenProcess", reinterpret_cast<void*>(&WatchedOpenProcess)},
    {"FindFirstFileW", reinterpret_cast<void*>(&WatchedFindFirst)},
    {"CryptAcquireContextW", reinterpret_cast<void*>(&WatchedAcquire)},
    {"CryptCreateHash", reinterpret_cast<void*>(&WatchedCreateHash)},
    {"CryptDeriveKey", reinterpret_cast<void*>(&WatchedDeriveKey)},
    {"Sleep", reinterpret_cast<void*>(&WatchedSleep)},
};

// Closing is counted from the arguments, before the call, whether it then fails or not.
void CountClosing(const std::string& name, ULONG_PTR first) {
  static const struct {
    const char* function;
    const char* kind;
  } kinds[] = {{"CloseHandle", "file or snapshot or process"},
               {"FindClose", "search"},
               {"CryptReleaseContext", "provider"},
               {"CryptDestroyHash", "hash"},
               {"CryptDestroyKey", "key"}};
  for (const auto& [function, kind] : kinds) {
    if (name == function) Closed(kind, first);
  }
}

bool Fails(std::size_t function, bool memory) {
  record.calls.push_back(function);
  const std::size_t position = record.calls.size();
  if (position == plan.position) target = function;
  switch (plan.mode) {
    case Mode::kNone:
      return false;
    case Mode::kOnce:
      return position == plan.position;
    case Mode::kOnward:
      return position >= plan.position && function == target;
    case Mode::kEverything:
      return position >= plan.position;
    case Mode::kWithMemory:
      return position == plan.position || (position > plan.position && memory);
  }
  return false;
}

}  // namespace

extern "C" void* zera_faults_decide(unsigned number, ULONG_PTR, ULONG_PTR, ULONG_PTR, ULONG_PTR first) {
  // The stub's own stack holds the first argument of the call where a fifth argument of ours would lie.
  Import& import = imports[number];
  ++import.seen;
  if (active && ::GetCurrentThreadId() == activeThread) {
    CountClosing(import.name, first);
    if (import.failure && Fails(number, import.memory)) {
      ++import.failed;
      record.failed.push_back(import.name);
      record.memoryFailed = record.memoryFailed || import.memory;
      failingCode = import.failure->codes[plan.code % import.failure->codes.size()];
      return import.failure->failing;
    }
  }
  return import.watcher ? import.watcher : import.original;
}

const char* Name(Mode mode) {
  switch (mode) {
    case Mode::kNone:
      return "none";
    case Mode::kOnce:
      return "once";
    case Mode::kOnward:
      return "it and all later ones of the function";
    case Mode::kEverything:
      return "everything from there on";
    case Mode::kWithMemory:
      return "once, memory exhausted from there on";
  }
  return "";
}

bool Record::Failed(const std::string& function) const {
  return std::find(failed.begin(), failed.end(), function) != failed.end();
}

Hooks::Hooks() {
  test::ForEachImport(test::Library(), [](const char* name, void** entry) {
    Import import;
    import.name = name;
    import.entry = entry;
    import.original = *entry;
    import.failure = FindFailure(name);
    import.memory = import.name == "malloc" || import.name == "calloc" || import.name == "realloc";
    for (const test::StandIn& one : kWatchers) {
      if (import.name == one.name) import.watcher = one.function;
    }
    for (const test::StandIn& one : test::Machine()) {
      if (import.name == one.name) import.watcher = one.function;
    }
    imports.push_back(import);
  });
  hostManager = imports.size();
  if (imports.size() > kThunks) {
    std::fprintf(stderr, "more imports than thunks\n");
    std::exit(125);
  }
  for (std::size_t number = 0; number < imports.size(); ++number) {
    test::StoreImport(imports[number].entry, const_cast<char*>(zera_faults_thunks) + number * kThunkSize);
  }
}

Hooks::~Hooks() {
  for (const Import& import : imports) test::StoreImport(import.entry, import.original);
  imports.clear();
}

void Begin(const Plan& now) {
  plan = now;
  record = {};
  record.calls.reserve(4096);
  made.clear();
  blocks.clear();
  handles.clear();
  restoringLocaleFailed = false;
  target = ~std::size_t{0};
  activeThread = ::GetCurrentThreadId();
  active = true;
}

Record End() {
  active = false;
  record.localeLost = restoringLocaleFailed;
  return record;
}

bool HostAllocationFails() {
  if (!active || !Fails(hostManager, true)) return false;
  record.failed.push_back("the host's string manager");
  record.memoryFailed = true;
  return true;
}

std::vector<std::string> Leftovers(const std::vector<const void*>& hosts) {
  std::vector<std::string> left;
  for (void* const block : blocks) {
    if (std::find(hosts.begin(), hosts.end(), block) == hosts.end()) {
      left.push_back("a block of " + std::to_string(_msize(block)) + " bytes");
    }
  }
  for (const auto& handle : handles) left.push_back("an open handle: " + handle.first);
  return left;
}

const std::vector<std::wstring>& Made() {
  return made;
}

std::size_t Codes(std::size_t function) {
  return function == hostManager ? 1 : imports[function].failure->codes.size();
}

std::string NameOf(std::size_t function) {
  return function == hostManager ? "the host's string manager" : imports[function].name;
}

std::string ThreadData() {
  const auto& directory = test::Directory(test::Library(), IMAGE_DIRECTORY_ENTRY_TLS);
  if (directory.Size == 0) return {};
  const auto& tls = *reinterpret_cast<const IMAGE_TLS_DIRECTORY64*>(
      reinterpret_cast<const char*>(test::Library()) + directory.VirtualAddress);
  const DWORD index = *reinterpret_cast<const DWORD*>(tls.AddressOfIndex);
  // The thread's array of such storage, from its environment block.
  const char* const* storage;
  asm("movq %%gs:0x58, %0" : "=r"(storage));
  return {storage[index],
          static_cast<std::size_t>(tls.EndAddressOfRawData - tls.StartAddressOfRawData) + tls.SizeOfZeroFill};
}

std::vector<Row> Table() {
  std::vector<Row> rows;
  for (const Import& import : imports) {
    rows.push_back({import.name, import.failure != nullptr, import.seen, import.failed});
  }
  return rows;
}

}  // namespace faults
