// SPDX-License-Identifier: MIT
// What looking for a settings file leaves behind, whatever fails on the way: no probe, no handle and no
// memory, and the result in the host's own strings.
#include <algorithm>
#include <cwchar>
#include <set>

#include "SettingsFile.h"
#include "support/HostException.h"
#include "support/HostString.h"

namespace {

using namespace settings;

BOOL WINAPI FailingRead(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  ::SetLastError(ERROR_READ_FAULT);
  return FALSE;
}

class SettingsFileTraces : public SettingsFile {};
INSTANTIATE_TEST_SUITE_P(, SettingsFileTraces, ::testing::ValuesIn(kVariants),
                         [](const auto& variant) { return std::string(variant.param.name); });

TEST_P(SettingsFileTraces, TheProbeHasItsForm) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  Ask();
  ASSERT_EQ(opened.size(), 1u);
  const std::wstring folder = temp_ / L"Prog\\Viewer\\";
  ASSERT_EQ(opened[0].compare(0, folder.size(), folder), 0);
  const std::wstring name = opened[0].substr(folder.size());
  ASSERT_EQ(name.size(), 20u);
  EXPECT_EQ(name.substr(16), L".$$$");
  EXPECT_EQ(name.find_first_not_of(L"0123456789ABCDEF"), 16u);
}

TEST_P(SettingsFileTraces, TakesNothingFromTheHeapAndNoHandles) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  Ask();
  const DWORD handles = test::OpenHandles();
  const test::HeapWatch heap;
  Ask();
  ::DeleteFileW((temp_ / L"Prog\\Viewer\\view.ini").c_str());
  MakeCommon("common");
  Ask();
  EXPECT_EQ(heap.Allocations(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
}

// A file that can be opened but not read is a copy without success: the next place is taken.
TEST_P(SettingsFileTraces, ReadErrorOfTheFileBesidePassesItOver) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  MakeUser("user");
  const test::HeapWatch heap;
  const test::ImportHook read("ReadFile", &FailingRead);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 0);
  EXPECT_EQ(heap.Outstanding(), 0);
}

// The seeding copy has made the user's file before it fails; it stays as it is, and it exists.
TEST_P(SettingsFileTraces, ReadErrorOfTheMachineWideFileLeavesACutFile) {
  MakeCommon("common");
  const test::HeapWatch heap;
  const test::ImportHook read("ReadFile", &FailingRead);
  Expect(Ask(), 1, temp_ / L"User\\Viewer\\view.ini", 1);
  EXPECT_EQ(test::ReadBytes(temp_ / L"User\\Viewer\\view.ini"), "");
  EXPECT_EQ(heap.Outstanding(), 0);
}

// Telling of the read error needs memory that is not there: that is the memory exception, and the probe is
// gone all the same, though its deletion needs a second attempt.
bool exhausted;
void* ExhaustedMalloc(std::size_t size) {
  return exhausted ? nullptr : std::malloc(size);
}
BOOL WINAPI FailingReadWithoutMemory(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
  exhausted = true;
  ::SetLastError(ERROR_READ_FAULT);
  return FALSE;
}
int deletions;
int failingDeletions;
BOOL WINAPI DeleteLate(const wchar_t* path) {
  if (++deletions > failingDeletions) return ::DeleteFileW(path);
  ::SetLastError(ERROR_SHARING_VIOLATION);
  return FALSE;
}

TEST_P(SettingsFileTraces, ReadErrorWithoutMemoryLeavesNoProbe) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  exhausted = false;
  deletions = 0;
  failingDeletions = 1;
  const DWORD handles = test::OpenHandles();
  {
    const test::ImportHook memory("malloc", &ExhaustedMalloc);
    const test::ImportHook read("ReadFile", &FailingReadWithoutMemory);
    const test::ImportHook deletion("DeleteFileW", &DeleteLate);
    CStringW file;
    CStringA plain;
    int copied = 7;
    EXPECT_EQ(test::RaisedBy([&] {
                GetParam().wide ? IniExUc(kModule, file, &copied) : IniExMbc(kModule, plain, &copied);
              }),
              test::kMemoryException);
    exhausted = false;
  }
  EXPECT_EQ(temp_.Entries(), (std::vector<std::wstring>{L"Common\\", L"Prog\\", L"Prog\\Viewer\\",
                                                        L"Prog\\Viewer\\view.ini", L"User\\"}));
  EXPECT_EQ(deletions, 2);
  EXPECT_EQ(test::OpenHandles(), handles);
}

// A scanner that holds the probe for a moment is waited for.
TEST_P(SettingsFileTraces, AProbeThatIsHeldIsDeletedInTheEnd) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  for (failingDeletions = 0; failingDeletions <= 25; failingDeletions += 5) {
    deletions = 0;
    const test::ImportHook deletion("DeleteFileW", &DeleteLate);
    Expect(Ask(), 1, beside, 0);
    EXPECT_EQ(deletions, failingDeletions + 1);
  }
}

// The name is made of an address on the stack and must not tell it.
TEST_P(SettingsFileTraces, TheProbeTellsNoAddress) {
  temp_.File(L"Prog\\Viewer\\view.ini", "beside");
  ULONG_PTR low, high;
  ::GetCurrentThreadStackLimits(&low, &high);
  constexpr ULONG_PTR kMegabytes = ~ULONG_PTR{0xFFFFFF} & 0xFFFFFFFFFFFF;
  std::set<ULONG_PTR> values;
  for (int round = 0; round < 8; ++round) {
    opened.clear();
    Ask();
    ASSERT_EQ(opened.size(), 1u);
    const auto value = std::wcstoull(opened[0].c_str() + opened[0].size() - 20, nullptr, 16);
    EXPECT_NE(value & kMegabytes, low & kMegabytes);
    EXPECT_NE(value & kMegabytes, high & kMegabytes);
    values.insert(value);
  }
  EXPECT_EQ(values.size(), 8u) << "the same call at the same depth has another name each time";
}

// Every platform call on the way fails once; whatever comes of it, nothing stays open and no probe stays.
int calls;
int failAt;

bool Fails() {
  return ++calls == failAt;
}

struct Fault {
  const char* name;
  void* replacement;
  bool mayHide = false;
};
const Fault kFaults[] = {
    {"GetModuleFileNameW", reinterpret_cast<void*>(+[](HMODULE, wchar_t*, DWORD) -> DWORD {
       ++calls;
       return 0;
     })},
    {"SHGetSpecialFolderPathW", reinterpret_cast<void*>(+[](HWND, wchar_t* path, int, BOOL) -> BOOL {
       ++calls;
       std::wcscpy(path, L"X:\\not taken");
       return FALSE;
     })},
    {"GetFileAttributesExW",
     reinterpret_cast<void*>(+[](const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data) -> BOOL {
       if (!Fails()) return ::GetFileAttributesExW(path, level, data);
       ::SetLastError(ERROR_INVALID_FUNCTION);
       return FALSE;
     }),
     true},
    {"GetFullPathNameW",
     reinterpret_cast<void*>(+[](const wchar_t* path, DWORD size, wchar_t* full, wchar_t** name) -> DWORD {
       return Fails() ? 0 : ::GetFullPathNameW(path, size, full, name);
     }),
     true},
    {"CreateFileW", reinterpret_cast<void*>(+[](const wchar_t* path, DWORD access, DWORD share,
                                                SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                                HANDLE other) -> HANDLE {
       if (!Fails()) return ::CreateFileW(path, access, share, security, disposition, flags, other);
       ::SetLastError(ERROR_ACCESS_DENIED);
       return INVALID_HANDLE_VALUE;
     })},
    {"ReadFile", reinterpret_cast<void*>(
                     +[](HANDLE file, void* data, DWORD count, DWORD* done, OVERLAPPED* overlapped) -> BOOL {
                       return Fails() ? FALSE : ::ReadFile(file, data, count, done, overlapped);
                     })},
    {"WriteFile", reinterpret_cast<void*>(+[](HANDLE file, const void* data, DWORD count, DWORD* done,
                                              OVERLAPPED* overlapped) -> BOOL {
       return Fails() ? FALSE : ::WriteFile(file, data, count, done, overlapped);
     })},
    {"CloseHandle", reinterpret_cast<void*>(+[](HANDLE handle) -> BOOL {
       const BOOL closed = ::CloseHandle(handle);
       return Fails() ? FALSE : closed;
     })},
    {"DeleteFileW", reinterpret_cast<void*>(
                        +[](const wchar_t* path) -> BOOL { return Fails() ? FALSE : ::DeleteFileW(path); })},
    {"CharUpperBuffW", reinterpret_cast<void*>(+[](wchar_t* text, DWORD count) -> DWORD {
       return Fails() ? 0 : ::CharUpperBuffW(text, count);
     })},
};

TEST_P(SettingsFileTraces, NothingStaysOpenWhicheverCallFails) {
  const std::wstring common = temp_ / L"Common\\Viewer\\view.ini";
  const std::wstring user = temp_ / L"User\\Viewer\\view.ini";
  const std::wstring beside = temp_ / L"Prog\\Viewer\\view.ini";
  MakeCommon("common");
  for (const Fault& fault : kFaults) {
    for (const bool hasBeside : {true, false}) {
      int made = 0;
      for (failAt = 1; failAt <= 40; ++failAt) {
        ::DeleteFileW(user.c_str());
        ::RemoveDirectoryW((temp_ / L"User\\Viewer").c_str());
        if (hasBeside) test::WriteBytes(beside, "beside");
        calls = 0;
        const DWORD handles = test::OpenHandles();
        {
          const test::ImportHook hook(fault.name, fault.replacement);
          const test::HeapWatch heap;
          Answer answer = {0, L"", 0};
          const std::string raised = test::RaisedBy([&] { answer = Ask(); });
          EXPECT_EQ(raised, "") << fault.name << failAt;
          EXPECT_TRUE(answer.result == 0 || answer.result == 1) << fault.name << failAt;
          EXPECT_EQ(heap.Outstanding(), 0) << fault.name << failAt;
        }
        EXPECT_EQ(test::OpenHandles(), handles) << fault.name << failAt;
        for (const std::wstring& entry : temp_.Entries()) {
          if (entry.find(L".$$$") == entry.npos) continue;
          // A probe can stay where it cannot be seen.
          EXPECT_TRUE(fault.mayHide) << fault.name << failAt;
          ::DeleteFileW((temp_ / entry).c_str());
        }
        made = calls;
        if (calls < failAt) break;
      }
      // Without a file beside the module no probe is copied, and so on: every call is made on one way.
      EXPECT_TRUE(made > 0 || !hasBeside || fault.name == std::string("SHGetSpecialFolderPathW"))
          << fault.name;
      ::DeleteFileW(beside.c_str());
    }
  }
}

// Results land in the buffers of the host's own string manager, whatever that is.
TEST_P(SettingsFileTraces, ResultsBelongToTheHostsManager) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::CountingManager manager;
  {
    test::HostString<wchar_t> wide(manager, L"before");
    test::HostString<char> plain(manager, "before");
    int copied = 7;
    EXPECT_EQ(IniExUc(kModule, wide.object(), &copied), 1);
    EXPECT_EQ(IniExMbc(kModule, plain.object(), &copied), 1);
    EXPECT_EQ(wide.text(), beside);
    EXPECT_EQ(plain.text(), test::Ansi(beside));
    EXPECT_EQ(wide.header()->pStringMgr, &manager);
    EXPECT_EQ(plain.header()->pStringMgr, &manager);
  }
  EXPECT_EQ(manager.outstanding, 0);
  EXPECT_TRUE(manager.NilIntact());
}

TEST_P(SettingsFileTraces, SharedStringsOfTheHostKeepTheirText) {
  temp_.File(L"Prog\\Viewer\\view.ini", "x");
  CStringW wide(L"before");
  const CStringW sharer(wide);
  EXPECT_EQ(IniUc(kModule, wide), 1);
  EXPECT_STREQ(sharer.GetString(), L"before");
}

TEST_P(SettingsFileTraces, FixedBuffersOfTheHostStayWhereTheyAre) {
  const std::wstring beside = temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::FixedManager<wchar_t, 300> manager;
  test::HostString<wchar_t> file(manager, L"before");
  EXPECT_EQ(IniUc(kModule, file.object()), 1);
  EXPECT_EQ(manager.text(), beside);
  EXPECT_EQ(manager.allocations, 0);
  installation_->module.clear();
  EXPECT_EQ(IniUc(kModule, file.object()), 0);
  EXPECT_EQ(manager.text()[0], 0);
}

// The path is the host's before anything is made there.
class OnePath final : public test::CountingManager {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    return allocations > 0 ? nullptr : CountingManager::Allocate(chars, charSize);
  }
  CStringData* Reallocate(CStringData*, int, int) noexcept override { return nullptr; }
};

TEST_P(SettingsFileTraces, NothingIsMadeForAPathThatTheHostCannotHold) {
  MakeCommon("common");
  installation_->user = temp_ / (L"User\\" + std::wstring(100, L'u'));
  OnePath manager;
  test::HostString<wchar_t> file(manager);
  int copied = 7;
  EXPECT_EQ(test::RaisedBy([&] { IniExUc(kModule, file.object(), &copied); }), test::kMemoryException);
  EXPECT_EQ(file.text(), temp_ / L"Prog\\Viewer\\view.ini") << "as far as it was known";
  EXPECT_FALSE(test::Exists(installation_->user));
}

TEST_P(SettingsFileTraces, ExhaustedMemoryOfTheHostReachesIt) {
  temp_.File(L"Prog\\Viewer\\view.ini", "x");
  test::CountingManager manager;
  manager.failing = true;
  test::HostString<wchar_t> wide(manager);
  test::HostString<char> plain(manager);
  int copied = 7;
  EXPECT_EQ(test::RaisedBy([&] { IniExUc(kModule, wide.object(), &copied); }), test::kMemoryException);
  EXPECT_EQ(test::RaisedBy([&] { IniExMbc(kModule, plain.object(), &copied); }), test::kMemoryException);
  EXPECT_TRUE(wide.text().empty());
  EXPECT_TRUE(plain.text().empty());
  EXPECT_EQ(temp_.Entries().size(), 5u) << "no probe";
}

}  // namespace
