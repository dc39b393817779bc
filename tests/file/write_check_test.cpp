// SPDX-License-Identifier: MIT
// The write check as a host calls it: which paths can be written, and which calls it takes to tell.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <thread>

#include "support/CodePage.h"
#include "support/CurrentFolder.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

using Calls = std::vector<std::wstring>;

const auto Plain = test::Export<decltype(ZERA_TOOLS_FILE_CHECK_WRITE)>(31);
const auto Wide = test::Export<decltype(ZERA_TOOLS_FILE_CHECK_WRITE_UC)>(1031);

int CallPlain(const std::wstring& path) {
  return Plain(test::Ansi(path).c_str());
}
int CallWide(const std::wstring& path) {
  return Wide(path.c_str());
}

bool IsProbeName(const std::wstring& name) {
  return name.size() == 20 && name.substr(16) == L".$$$" &&
         std::all_of(name.begin(), name.begin() + 16, [](wchar_t one) {
           return (one >= L'0' && one <= L'9') || (one >= L'A' && one <= L'F');
         });
}

// The library's file calls in their order, as "open", "create", "delete" or "mkdir" and a path in which
// a probe's name is "<probe>". Calls can be refused; what is not refused is done.
class Recorder {
 public:
  Recorder()
      : create_("CreateFileW", &Create), delete_("DeleteFileW", &Delete), mkdir_("_wmkdir", &MakeFolder) {
    self_ = this;
  }
  ~Recorder() { self_ = nullptr; }

  Calls Take() {
    std::lock_guard lock(mutex_);
    return std::exchange(calls_, {});
  }

  std::function<bool(const std::wstring&)> refuseCreate = [](const std::wstring&) { return false; };
  int refuseDeletes = 0;  // as many of the first ones
  bool refuseMakeFolder = false;
  std::set<std::wstring> probeNames;

 private:
  static void Record(const wchar_t* what, std::wstring path) {
    std::lock_guard lock(self_->mutex_);
    const std::size_t name = path.find_last_of(L"\\/:") + 1;
    if (IsProbeName(path.substr(name))) {
      self_->probeNames.insert(path.substr(name));
      path.replace(name, path.npos, L"<probe>");
    }
    self_->calls_.push_back(std::wstring(what) + L" " + path);
  }

  static HANDLE WINAPI Create(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD attributes, HANDLE likeness) {
    // Both kinds of opening write only and let nobody else in.
    EXPECT_EQ(access, static_cast<DWORD>(GENERIC_WRITE));
    EXPECT_EQ(share, 0u);
    EXPECT_TRUE(disposition == OPEN_EXISTING || disposition == CREATE_ALWAYS) << disposition;
    Record(disposition == OPEN_EXISTING ? L"open" : L"create", path);
    if (self_->refuseCreate(path)) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      return INVALID_HANDLE_VALUE;
    }
    return ::CreateFileW(path, access, share, security, disposition, attributes, likeness);
  }
  static BOOL WINAPI Delete(const wchar_t* path) {
    Record(L"delete", path);
    if (self_->refuseDeletes > 0) {
      --self_->refuseDeletes;
      ::SetLastError(ERROR_SHARING_VIOLATION);
      return FALSE;
    }
    return ::DeleteFileW(path);
  }
  static int __cdecl MakeFolder(const wchar_t* path) {
    Record(L"mkdir", path);
    return self_->refuseMakeFolder ? -1 : ::_wmkdir(path);
  }

  static inline Recorder* self_ = nullptr;
  std::mutex mutex_;
  Calls calls_;
  test::ImportHook create_;
  test::ImportHook delete_;
  test::ImportHook mkdir_;
};

class WriteCheck : public ::testing::TestWithParam<int (*)(const std::wstring&)> {
 protected:
  // What is asked must not leave handles or memory behind, nor run the invalid-parameter handler.
  int Check(const std::wstring& path) {
    const test::InvalidParameter handler;
    const DWORD handles = test::OpenHandles();
    test::HeapWatch heap;
    const int result = GetParam()(path);
    EXPECT_EQ(heap.Outstanding(), 0);
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(handler.Count(), 0);
    return result;
  }

  test::TempFolder temp_;
};

INSTANTIATE_TEST_SUITE_P(Both, WriteCheck, ::testing::Values(&CallPlain, &CallWide),
                         [](const auto& instance) {
                           return instance.param == &CallPlain ? "Plain" : "Wide";
                         });

TEST_P(WriteCheck, FolderIsProbedOnce) {
  Recorder recorder;
  EXPECT_EQ(Check(temp_.path()), 1);
  EXPECT_EQ(recorder.Take(),
            (Calls{L"create " + temp_.path() + L"<probe>", L"delete " + temp_.path() + L"<probe>"}));
  EXPECT_EQ(recorder.probeNames.size(), 1u);
  EXPECT_EQ(temp_.Entries(), Calls{});
}

TEST_P(WriteCheck, MissingFileIsJudgedByItsFolder) {
  Recorder recorder;
  EXPECT_EQ(Check(temp_ / L"new.txt"), 1);
  EXPECT_EQ(recorder.Take().size(), 2u);
  EXPECT_EQ(temp_.Entries(), Calls{});
}

TEST_P(WriteCheck, ExistingFileIsOpenedAndLeftAlone) {
  const std::wstring path = temp_.File(L"old.txt", "content");
  Recorder recorder;
  EXPECT_EQ(Check(path), 1);
  EXPECT_EQ(recorder.Take(), Calls{L"open " + path});
  EXPECT_EQ(test::ReadBytes(path), "content");
}

TEST_P(WriteCheck, ExistingEmptyFileIsOpened) {
  const std::wstring path = temp_.File(L"empty.txt", "");
  Recorder recorder;
  EXPECT_EQ(Check(path), 1);
  EXPECT_EQ(recorder.Take(), Calls{L"open " + path});
}

TEST_P(WriteCheck, ExistingFileThatCannotBeOpenedGivesZeroWithoutTryingItsFolder) {
  const std::wstring path = temp_.File(L"held.txt", "content");
  const HANDLE holder =
      ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  Recorder recorder;
  EXPECT_EQ(Check(path), 0);
  EXPECT_EQ(recorder.Take(), Calls{L"open " + path});
  ::CloseHandle(holder);
}

// Wine lets the superuser write read-only files, so the refusal comes from the test.
TEST_P(WriteCheck, ReadOnlyFileGivesZeroWithoutTryingItsFolder) {
  const std::wstring path = temp_.File(L"read-only.txt", "content");
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  Recorder recorder;
  recorder.refuseCreate = [&](const std::wstring& one) { return one == path; };
  EXPECT_EQ(Check(path), 0);
  EXPECT_EQ(recorder.Take(), Calls{L"open " + path});
}

TEST_P(WriteCheck, FolderWithAnExtensionIsNoFileToWrite) {
  const std::wstring folder = temp_.Folder(L"folder.dir");
  Recorder recorder;
  EXPECT_EQ(Check(temp_ / L"folder.dir"), 0);
  EXPECT_EQ(recorder.Take().size(), 1u);
  EXPECT_EQ(Check(folder), 1);
}

TEST_P(WriteCheck, NameWithoutExtensionIsJudgedByItsFolder) {
  const std::wstring path = temp_.File(L"name", "content");
  Recorder recorder;
  EXPECT_EQ(Check(path), 1);
  EXPECT_EQ(Check(temp_ / L"other"), 1);
  const Calls probe{L"create " + temp_.path() + L"<probe>", L"delete " + temp_.path() + L"<probe>"};
  EXPECT_EQ(recorder.Take(), (Calls{probe[0], probe[1], probe[0], probe[1]}));
  EXPECT_EQ(temp_.Entries(), Calls{L"name"});
  EXPECT_EQ(test::ReadBytes(path), "content");
}

TEST_P(WriteCheck, ExtensionAloneIsJudgedByItsFolder) {
  const std::wstring path = temp_.File(L".txt", "content");
  Recorder recorder;
  EXPECT_EQ(Check(path), 1);
  EXPECT_EQ(recorder.Take().front(), L"create " + temp_.path() + L"<probe>");
}

TEST_P(WriteCheck, MissingFoldersAreMadeFromTheRootDown) {
  const std::wstring deep = temp_ / L"new\\deeper\\";
  Recorder recorder;
  EXPECT_EQ(Check(deep + L"file.txt"), 1);

  Calls expected{L"create " + deep + L"<probe>"};
  for (std::size_t at = deep.find(L'\\'); at != deep.npos; at = deep.find(L'\\', at + 1)) {
    const std::wstring prefix = deep.substr(0, at + 1);
    expected.push_back(L"create " + prefix + L"<probe>");
    const bool missing = prefix.size() > temp_.path().size();
    expected.push_back((missing ? L"mkdir " + prefix : L"delete " + prefix + L"<probe>"));
  }
  expected.push_back(L"create " + deep + L"<probe>");
  expected.push_back(L"delete " + deep + L"<probe>");
  EXPECT_EQ(recorder.Take(), expected);
  EXPECT_EQ(recorder.probeNames.size(), 1u);
  EXPECT_EQ(temp_.Entries(), (Calls{L"new\\", L"new\\deeper\\"}));
}

TEST_P(WriteCheck, NoFolderOfTheNameIsMade) {
  EXPECT_EQ(Check(temp_ / L"new\\last"), 1);
  EXPECT_EQ(temp_.Entries(), Calls{L"new\\"});
}

TEST_P(WriteCheck, NothingWritableGivesZeroAfterOneWalk) {
  Recorder recorder;
  recorder.refuseCreate = [](const std::wstring&) { return true; };
  recorder.refuseMakeFolder = true;
  EXPECT_EQ(Check(L"X:\\a\\b.c\\file.txt"), 0);
  EXPECT_EQ(recorder.Take(), (Calls{L"create X:\\a\\b.c\\<probe>", L"create X:\\<probe>", L"mkdir X:\\",
                                    L"create X:\\a\\<probe>", L"mkdir X:\\a\\", L"create X:\\a\\b.c\\<probe>",
                                    L"mkdir X:\\a\\b.c\\", L"create X:\\a\\b.c\\<probe>"}));
}

TEST_P(WriteCheck, FolderThatCannotBeMadeGivesZero) {
  Recorder recorder;
  recorder.refuseMakeFolder = true;
  EXPECT_EQ(Check(temp_ / L"new\\file.txt"), 0);
  EXPECT_EQ(temp_.Entries(), Calls{});
}

TEST_P(WriteCheck, FileInPlaceOfAFolderGivesZero) {
  temp_.File(L"file", "content");
  EXPECT_EQ(Check(temp_ / L"file\\deeper\\file.txt"), 0);
  EXPECT_EQ(temp_.Entries(), Calls{L"file"});
  EXPECT_EQ(test::ReadBytes(temp_ / L"file"), "content");
}

TEST_P(WriteCheck, LeadingBackslashAloneIsNoFolderToTry) {
  Recorder recorder;
  recorder.refuseCreate = [](const std::wstring&) { return true; };
  recorder.refuseMakeFolder = true;
  EXPECT_EQ(Check(L"\\\\server\\share\\"), 0);
  EXPECT_EQ(recorder.Take(),
            (Calls{L"create \\\\server\\share\\<probe>", L"create \\\\<probe>", L"mkdir \\\\",
                   L"create \\\\server\\<probe>", L"mkdir \\\\server\\", L"create \\\\server\\share\\<probe>",
                   L"mkdir \\\\server\\share\\", L"create \\\\server\\share\\<probe>"}));
}

TEST_P(WriteCheck, OnlyBackslashesPartTheFoldersThatAreMade) {
  std::wstring path = temp_ / L"new/file.txt";
  Recorder recorder;
  EXPECT_EQ(Check(path), 0);
  EXPECT_EQ(temp_.Entries(), Calls{});
  temp_.Folder(L"new");
  EXPECT_EQ(Check(path), 1);
}

TEST_P(WriteCheck, PathWithoutFolderMeansTheCurrentOne) {
  const test::CurrentFolder current(temp_.path());
  temp_.File(L"old.txt", "content");
  Recorder recorder;
  for (const wchar_t* const path : {L"", L"name", L"new.txt", L"old.txt", L".txt"}) {
    EXPECT_EQ(Check(path), 1) << test::Ansi(path);
    EXPECT_EQ(recorder.Take(), (Calls{L"create <probe>", L"delete <probe>"})) << test::Ansi(path);
  }
  EXPECT_EQ(Check(L"X:old.txt"), 1);
  EXPECT_EQ(recorder.Take(), Calls{L"open X:old.txt"});
  EXPECT_EQ(Check(L"X:new.txt"), 1);
  EXPECT_EQ(recorder.Take(), (Calls{L"create X:<probe>", L"delete X:<probe>"}));
  EXPECT_EQ(temp_.Entries(), Calls{L"old.txt"});
}

TEST_P(WriteCheck, ProbeNeedsRoomWithinThePathLimit) {
  for (const std::size_t probeLength : {259u, 260u, 261u}) {
    std::wstring folder = temp_.path();
    folder.append(probeLength - 20 - 1 - folder.size(), L'f');
    ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
    folder += L'\\';
    EXPECT_EQ(Check(folder), probeLength < 260) << probeLength;
    // The file itself may be short enough; its folder's probe is what counts.
    EXPECT_EQ(Check(folder + L"f.t"), probeLength < 260) << probeLength;
  }
  EXPECT_EQ(temp_.Entries().size(), 3u);
}

TEST_P(WriteCheck, PathsBeyondTheLimitsAreNotWritableAndTouchNothing) {
  Recorder recorder;
  const std::wstring tooLong[] = {
      L"X:\\" + std::wstring(254, L'd') + L"\\file.txt",
      temp_ / std::wstring(256, L'n') + L".txt",
      temp_ / L"name." + std::wstring(255, L'e'),
      std::wstring(32767, L'\\'),
      std::wstring(32767, L'n'),
  };
  for (const std::wstring& path : tooLong) EXPECT_EQ(Check(path), 0) << path.size();
  EXPECT_EQ(recorder.Take(), Calls{});
  EXPECT_EQ(temp_.Entries(), Calls{});
}

// The components' limits together are the longest path that is looked at: no probe fits into its folder,
// which is asked for all the same.
TEST_P(WriteCheck, AllComponentsAtTheirLimits) {
  const std::wstring folder = L"X:\\" + std::wstring(253, L'd') + L"\\";
  const std::wstring path = folder + std::wstring(255, L'n') + L"." + std::wstring(254, L'e');
  ASSERT_EQ(path.size(), 767u);
  Recorder recorder;
  recorder.refuseMakeFolder = true;
  EXPECT_EQ(Check(path), 0);
  EXPECT_EQ(recorder.Take(), (Calls{L"create X:\\<probe>", L"delete X:\\<probe>", L"mkdir " + folder}));
  EXPECT_EQ(Check(path + L"e"), 0);
  EXPECT_EQ(recorder.Take(), Calls{});
}

TEST_P(WriteCheck, PathBeyondTheLimitInAShortFolderIsJudgedByTheFolder) {
  EXPECT_EQ(Check(temp_ / std::wstring(250, L'n') + L".txt"), 1);
}

// A scanner that holds the probe after its close is waited for as by any deletion: 25 attempts more, and a
// result that tells of the creation alone.
int pauses;
void WINAPI CountedPause(DWORD milliseconds) {
  EXPECT_EQ(milliseconds, 10u);
  ++pauses;
}

TEST_P(WriteCheck, ProbeThatIsHeldIsDeletedInTheEnd) {
  for (const int refused : {0, 1, 2, 25, 26}) {
    const test::ImportHook sleep("Sleep", &CountedPause);
    pauses = 0;
    Recorder recorder;
    recorder.refuseDeletes = refused;
    EXPECT_EQ(Check(temp_.path()), 1);
    const bool held = refused == 26;
    EXPECT_EQ(recorder.Take().size(), static_cast<std::size_t>(held ? 27 : 2 + refused));
    EXPECT_EQ(pauses, held ? 25 : refused > 1 ? refused - 1 : 0);
    EXPECT_EQ(temp_.Entries().size(), held ? 1u : 0u);
  }
}

TEST_P(WriteCheck, TakesNothingFromTheHeap) {
  test::HeapWatch heap;
  GetParam()(temp_ / L"new\\deeper\\file.txt");
  EXPECT_EQ(heap.Allocations(), 0);
}

TEST_P(WriteCheck, ConcurrentChecksOfOneFolderDoNotDisturbEachOther) {
  Recorder recorder;
  std::atomic<int> succeeded = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) succeeded += GetParam()(temp_ / L"file.txt");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(succeeded, 80);
  EXPECT_EQ(recorder.probeNames.size(), 80u);
  EXPECT_EQ(recorder.Take().size(), 160u);
  EXPECT_EQ(temp_.Entries(), Calls{});
}

TEST_P(WriteCheck, NamesInTheCodePageArriveAsTheyAre) {
  const std::wstring name = test::Local().wide;
  EXPECT_EQ(Check(temp_ / name + L"\\file.txt"), 1);
  EXPECT_EQ(temp_.Entries(), Calls{name + L"\\"});
}

TEST(WriteCheckNull, PlainCountsAsEmptyAndWideIsNotWritable) {
  test::TempFolder temp;
  const test::CurrentFolder current(temp.path());
  Recorder recorder;
  EXPECT_EQ(Plain(nullptr), 1);
  EXPECT_EQ(recorder.Take(), (Calls{L"create <probe>", L"delete <probe>"}));
  EXPECT_EQ(Wide(nullptr), 0);
  EXPECT_EQ(recorder.Take(), Calls{});
}

// The name is made of an address on the stack, which nobody shall learn from it: not as it is, and not with
// the process's number laid over it.
TEST(WriteCheckProbe, NameTellsNoAddress) {
  test::TempFolder temp;
  Recorder recorder;
  for (int round = 0; round < 8; ++round) EXPECT_EQ(Wide(temp.path().c_str()), 1);
  EXPECT_EQ(recorder.probeNames.size(), 8u) << "the same call at the same depth has another name each time";
  int local = 0;
  const auto here = reinterpret_cast<unsigned long long>(&local);
  for (const std::wstring& name : recorder.probeNames) {
    const unsigned long long address = std::stoull(name.substr(0, 16), nullptr, 16) & 0xFFFFFFFFFFFF;
    EXPECT_GT(address > here ? address - here : here - address, 0x100000u);
  }
}

}  // namespace
