// SPDX-License-Identifier: MIT
// Files that another process holds open, and closes while the library tries. The library's sleeps take no
// time; one of them, or one of its failed attempts to open, is the moment.
#include <functional>
#include <memory>

#include "Child.h"
#include "file/DirectoryApi.h"

namespace {

load::HeldFile* held;
int sleeps, failures;
int releaseAtSleep, releaseAtFailure;

void WINAPI Sleeping(DWORD) {
  if (++sleeps == releaseAtSleep) held->Release();
}
HANDLE WINAPI Opening(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                      DWORD creation, DWORD flags, HANDLE pattern) {
  const HANDLE file = ::CreateFileW(path, access, share, security, creation, flags, pattern);
  const DWORD error = ::GetLastError();
  if (file == INVALID_HANDLE_VALUE && ++failures == releaseAtFailure) held->Release();
  ::SetLastError(error);
  return file;
}

// Which sleep or failure lets go; the test's end, if the call makes less of them.
struct Moment {
  int sleep, failure;
};
constexpr Moment kNever = {0, 0};

class HeldFiles : public ::testing::TestWithParam<bool> {
 protected:
  // What the call answers with the file held until the moment.
  int During(const std::wstring& file, Moment moment, const std::function<int()>& call) {
    load::HeldFile now(file);
    held = &now;
    sleeps = failures = 0;
    releaseAtSleep = moment.sleep;
    releaseAtFailure = moment.failure;
    int result;
    {
      const test::ImportHook sleeping("Sleep", &Sleeping), opening("CreateFileW", &Opening);
      const DWORD handles = test::OpenHandles();
      result = call();
      EXPECT_EQ(test::OpenHandles(), handles);
    }
    now.Release();
    return result;
  }

  const test::TempFolder temp_;
  const test::FileApi files_{GetParam()};
  const test::DirectoryApi directories_{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Variant, HeldFiles, ::testing::Values(false, true),
                         [](const auto& one) { return one.param ? "wide" : "plain"; });

TEST_P(HeldFiles, DeletedWhenReleased) {
  const std::wstring file = temp_.File(L"file.txt", "bytes");
  EXPECT_EQ(During(file, kNever, [&] { return files_.Delete(file); }), 0);
  EXPECT_EQ(sleeps, 25);
  EXPECT_EQ(test::ReadBytes(file), "bytes");
  EXPECT_EQ(During(file, {25, 0}, [&] { return files_.Delete(file); }), 0) << "released after the last try";
  EXPECT_EQ(test::ReadBytes(file), "bytes");
  EXPECT_EQ(During(file, {24, 0}, [&] { return files_.Delete(file); }), 1);
  EXPECT_EQ(sleeps, 24);
  EXPECT_TRUE(temp_.Entries().empty());
}

TEST_P(HeldFiles, RenamedWhenReleased) {
  const std::wstring from = temp_.File(L"from.txt", "new"), to = temp_.File(L"to.txt", "old");
  const auto rename = [&] { return files_.Rename(from, to); };
  EXPECT_EQ(During(to, kNever, rename), 0);
  EXPECT_EQ(sleeps, 25);
  EXPECT_EQ(test::ReadBytes(from), "new");
  EXPECT_EQ(test::ReadBytes(to), "old");
  EXPECT_EQ(During(to, {3, 0}, rename), 1);
  EXPECT_EQ(sleeps, 3);
  EXPECT_EQ(temp_.Entries(), std::vector<std::wstring>{L"to.txt"});
  EXPECT_EQ(test::ReadBytes(to), "new");

  const std::wstring again = temp_ / L"again.txt";
  const auto back = [&] { return files_.Rename(to, again); };
  EXPECT_EQ(During(to, kNever, back), 0);
  EXPECT_EQ(sleeps, 10);
  EXPECT_EQ(temp_.Entries(), std::vector<std::wstring>{L"to.txt"});
  EXPECT_EQ(During(to, {9, 0}, back), 1);
  EXPECT_EQ(sleeps, 9);
  EXPECT_EQ(test::ReadBytes(again), "new");
}

// A copy tries its target twice, with the write check between; the source once.
TEST_P(HeldFiles, CopiedWhenReleased) {
  const std::wstring from = temp_.File(L"from.txt", "new"), to = temp_.File(L"to.txt", "older");
  const auto copy = [&] { return files_.Copy(from, to); };
  EXPECT_EQ(During(from, {0, 1}, copy), 0);
  EXPECT_EQ(test::ReadBytes(to), "older");
  EXPECT_EQ(During(to, kNever, copy), 0);
  EXPECT_EQ(failures, 2);
  EXPECT_EQ(During(to, {0, 2}, copy), 0) << "released after the write check";
  EXPECT_EQ(test::ReadBytes(to), "older");
  EXPECT_EQ(During(to, {0, 1}, copy), 1);
  EXPECT_EQ(test::ReadBytes(to), "new");
  EXPECT_EQ(test::ReadBytes(from), "new");
  EXPECT_EQ(temp_.Entries(), (std::vector<std::wstring>{L"from.txt", L"to.txt"})) << "no probe is left";
}

TEST_P(HeldFiles, TreesAreWalkedToTheEnd) {
  const std::vector<std::wstring> tree = {L"from\\", L"from\\a.log", L"from\\b.log", L"from\\sub\\",
                                          L"from\\sub\\c.log"};
  test::Plant(temp_, tree);
  const std::wstring inside = temp_ / L"from\\b.log";
  const auto remove = [&] { return directories_.DeleteAll(temp_ / L"from\\", L".log"); };
  EXPECT_EQ(During(inside, kNever, remove), 0);
  EXPECT_EQ(temp_.Entries(), (std::vector<std::wstring>{L"from\\", L"from\\b.log"}));
  EXPECT_EQ(During(inside, {5, 0}, remove), 1);
  EXPECT_EQ(sleeps, 5);
  EXPECT_EQ(temp_.Entries(), std::vector<std::wstring>{L"from\\"});

  temp_.File(L"from\\a.log", "a");
  temp_.File(L"from\\b.log", "b");
  temp_.Folder(L"to");
  const std::wstring target = temp_.File(L"to\\a.log", "old");
  const auto copy = [&] { return directories_.CopyAll(temp_ / L"from\\", temp_ / L"to\\", 1); };
  EXPECT_EQ(During(target, kNever, copy), 1);
  EXPECT_EQ(test::ReadBytes(target), "old");
  EXPECT_EQ(test::ReadBytes(temp_ / L"to\\b.log"), "b");
  EXPECT_EQ(During(target, {0, 1}, copy), 1);
  EXPECT_EQ(test::ReadBytes(target), "a");
}

}  // namespace
