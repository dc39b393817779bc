// SPDX-License-Identifier: MIT
// Disks that are full or read-only. What is read never suffers; what was begun stays as far as it came.
//
// ZERA_TEST_DISK names a small disk (mounted.sh). Without it there is none, and the platform's calls answer
// what such a disk makes them answer.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>

#include "application/Installation.h"
#include "file/DirectoryApi.h"
#include "support/HostException.h"
#include "support/HostString.h"

namespace {

constexpr char kFileException[] = ".PEAVCFileException@@";
constexpr long long kBlock = 4096;

const auto WritePlain = test::Export<decltype(ZERA_TOOLS_WRITE_STRING)>(60);
const auto WriteWide = test::Export<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060);
const auto ReadPlain = test::Export<decltype(ZERA_TOOLS_READ_STRING)>(50);
const auto IniFile = test::Export<decltype(ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)>(208);

const char* Disk() {
  return std::getenv("ZERA_TEST_DISK");
}

std::string Bytes(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + i % 23);
  return bytes;
}

// The calls of a disk without room: what fits is written.
long long room;
BOOL WINAPI WriteToFull(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* overlapped) {
  const DWORD fits = static_cast<DWORD>(std::min<long long>(room, count));
  room -= fits;
  if (fits > 0) ::WriteFile(file, bytes, fits, written, overlapped);
  if (fits == count) return TRUE;
  ::SetLastError(ERROR_DISK_FULL);
  return FALSE;
}
BOOL WINAPI NoSettings(const char*, const char*, const char*, const char*) {
  return ::SetLastError(ERROR_DISK_FULL), FALSE;
}
BOOL WINAPI NoSettingsWide(const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*) {
  return ::SetLastError(ERROR_DISK_FULL), FALSE;
}

class FullDisk : public ::testing::Test {
 protected:
  FullDisk() {
    if (Disk()) {
      disk_.emplace(test::Wide(Disk()));
    } else {
      disk_.emplace();
    }
  }

  // Leaves room for so many bytes.
  void Fill(long long left) {
    if (!Disk()) {
      room = left;
      filled_.emplace_back(std::make_unique<test::ImportHook>("WriteFile", &WriteToFull));
      filled_.emplace_back(std::make_unique<test::ImportHook>("WritePrivateProfileStringA", &NoSettings));
      filled_.emplace_back(std::make_unique<test::ImportHook>("WritePrivateProfileStringW", &NoSettingsWide));
      return;
    }
    ULARGE_INTEGER free;
    ASSERT_TRUE(::GetDiskFreeSpaceExW(disk_->path().c_str(), &free, nullptr, nullptr));
    ASSERT_LE(free.QuadPart, 4u << 20) << "this is not the small disk";
    test::WriteBytes(*disk_ / L"filler", Bytes(free.QuadPart - static_cast<ULONGLONG>(left)));
    ASSERT_TRUE(::GetDiskFreeSpaceExW(disk_->path().c_str(), &free, nullptr, nullptr));
    ASSERT_EQ(free.QuadPart, static_cast<ULONGLONG>(left));
  }
  void MakeRoom() {
    filled_.clear();
    if (Disk()) {
      ASSERT_TRUE(::DeleteFileW((*disk_ / L"filler").c_str()));
    }
  }

  // What was written is a beginning of it, and not all.
  static void ExpectBeginning(const std::wstring& path, const std::string& whole) {
    const std::string written = test::ReadBytes(path);
    EXPECT_LT(written.size(), whole.size());
    EXPECT_EQ(written, whole.substr(0, written.size()));
  }

  const test::TempFolder source_;
  std::optional<test::TempFolder> disk_;
  const test::FileApi files_{true};
  const test::DirectoryApi directories_{true};
  const std::string bytes_ = Bytes(100'000);

 private:
  std::vector<std::unique_ptr<test::ImportHook>> filled_;
};

TEST_F(FullDisk, Copy) {
  const std::wstring from = source_.File(L"from.bin", bytes_), to = *disk_ / L"to.bin";
  Fill(10 * kBlock);
  void* exception = nullptr;
  EXPECT_EQ(test::RaisedBy([&] { files_.Copy(from, to); }, &exception), kFileException);
  if (exception) test::DeleteException(exception);
  EXPECT_EQ(test::ReadBytes(from), bytes_);
  ExpectBeginning(to, bytes_);
  EXPECT_EQ(test::ReadBytes(to).size(), 10u * kBlock) << "as far as there was room";
  MakeRoom();
  EXPECT_EQ(files_.Copy(from, to), 1);
  EXPECT_EQ(test::ReadBytes(to), bytes_);
}

// From and to the same disk.
TEST_F(FullDisk, CopyWithin) {
  const std::wstring from = disk_->File(L"from.bin", bytes_), to = *disk_ / L"to.bin";
  Fill(kBlock);
  void* exception = nullptr;
  EXPECT_EQ(test::RaisedBy([&] { files_.Copy(from, to); }, &exception), kFileException);
  if (exception) test::DeleteException(exception);
  EXPECT_EQ(test::ReadBytes(from), bytes_);
  ExpectBeginning(to, bytes_);
  EXPECT_EQ(files_.Delete(to), 1);
  EXPECT_EQ(files_.Rename(from, to), 1) << "needs no room";
  EXPECT_EQ(test::ReadBytes(to), bytes_);
  MakeRoom();
}

TEST_F(FullDisk, BufferWrite) {
  const std::wstring to = *disk_ / L"to.bin";
  const auto* const buffer = reinterpret_cast<const unsigned char*>(bytes_.data());
  Fill(kBlock);
  EXPECT_EQ(files_.FromBuffer(to, buffer, bytes_.size()), 0);
  ExpectBeginning(to, bytes_);
  MakeRoom();
  EXPECT_EQ(files_.FromBuffer(to, buffer, bytes_.size()), 1);
  EXPECT_EQ(test::ReadBytes(to), bytes_);
}

// A probe takes no room.
TEST_F(FullDisk, WriteCheck) {
  Fill(0);
  const std::vector<std::wstring> before = disk_->Entries();
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_CHECK_WRITE_UC)>(1031)(disk_->path().c_str()), 1);
  EXPECT_EQ(disk_->Entries(), before);
  MakeRoom();
}

// How much of a settings file survives a write without room is the platform's to say. The calls return, and
// with room again settings are written as ever.
TEST_F(FullDisk, SettingsWrite) {
  const std::wstring file = disk_->File(L"view.ini", "[S]\r\nK=old\r\n");
  const std::string plain = test::Ansi(file), longer(3 * kBlock, 'v');
  Fill(0);
  const int written = WritePlain("S", "L", plain.c_str(), longer.c_str());
  EXPECT_TRUE(written == 0 || written == 1);
  EXPECT_EQ(WriteWide(L"S", L"U", file.c_str(), std::wstring(longer.begin(), longer.end()).c_str()), 1);
  if (!Disk()) {
    EXPECT_EQ(written, 0);
    EXPECT_EQ(test::ReadBytes(file), "[S]\r\nK=old\r\n");
  }
  EXPECT_LE(test::ReadBytes(file).size(), kBlock) << "there is no room for more";
  MakeRoom();
  EXPECT_EQ(WritePlain("S", "K", plain.c_str(), "new"), 1);
  char back[16];
  ReadPlain("S", "K", plain.c_str(), "", back, sizeof back);
  EXPECT_STREQ(back, "new");
}

TEST_F(FullDisk, TreeCopy) {
  source_.Folder(L"sub");
  for (const wchar_t* const name : {L"a.bin", L"b.bin", L"sub\\c.bin"}) source_.File(name, bytes_);
  const std::vector<std::wstring> tree = source_.Entries();
  disk_->Folder(L"to");
  Fill(40 * kBlock);
  const auto copy = [&] { return directories_.CopyAll(source_.path(), *disk_ / L"to\\", 1); };
  void* exception = nullptr;
  EXPECT_EQ(test::RaisedBy([&] { copy(); }, &exception), kFileException);
  if (exception) test::DeleteException(exception);
  EXPECT_EQ(source_.Entries(), tree);
  for (const wchar_t* const name : {L"a.bin", L"b.bin", L"sub\\c.bin"}) {
    EXPECT_EQ(test::ReadBytes(source_ / name), bytes_) << test::Ansi(name);
  }
  MakeRoom();
  EXPECT_EQ(copy(), 1);
  for (const wchar_t* const name : {L"to\\a.bin", L"to\\b.bin", L"to\\sub\\c.bin"}) {
    EXPECT_EQ(test::ReadBytes(*disk_ / name), bytes_) << test::Ansi(name);
  }
}

// A settings file beside a module whose disk has no room for a probe's copy is passed over; the machine-wide
// file that is to be copied to a full disk stays whole.
TEST_F(FullDisk, SettingsLocations) {
  const std::string seed = "[S]\r\nK=" + Bytes(5 * kBlock) + "\r\n";
  disk_->Folder(L"app");
  const std::wstring beside = disk_->File(L"app\\view.ini", seed);
  source_.Folder(L"common");
  source_.Folder(L"common\\app");
  const std::wstring machineWide = source_.File(L"common\\app\\view.ini", seed);
  test::Installation places(*disk_ / L"app\\view.exe");
  places.common = source_ / L"common";
  places.user = source_ / L"user";
  CStringW file;
  int copied = 7;
  if (Disk()) {
    // (With failing calls the user's disk would be full as well.)
    Fill(kBlock);
    EXPECT_EQ(IniFile(nullptr, file, &copied), 1);
    EXPECT_EQ(copied, 1);
    EXPECT_EQ(file.GetString(), source_ / L"user\\app\\view.ini");
    EXPECT_EQ(test::ReadBytes(file.GetString()), seed);
    MakeRoom();
  }
  places.user = *disk_ / L"user";
  EXPECT_TRUE(::MoveFileW(beside.c_str(), (*disk_ / L"app\\other.ini").c_str()));
  Fill(kBlock);
  EXPECT_EQ(IniFile(nullptr, file, &copied), 1) << "there is a file, whatever became of the copy";
  EXPECT_EQ(copied, 1);
  ExpectBeginning(*disk_ / L"user\\app\\view.ini", seed);
  MakeRoom();
  EXPECT_EQ(test::ReadBytes(*disk_ / L"app\\other.ini"), seed);
  EXPECT_EQ(test::ReadBytes(machineWide), seed);
  for (const std::wstring& entry : disk_->Entries()) EXPECT_EQ(entry.find(L"$$$"), entry.npos) << "a probe";
}

// The calls of a disk that cannot be written, for what lies on it.
std::wstring readOnly;
bool IsThere(const wchar_t* path) {
  const bool there =
      readOnly.compare(0, readOnly.size(), path, std::min(readOnly.size(), std::wcslen(path))) == 0;
  if (there) ::SetLastError(ERROR_WRITE_PROTECT);
  return there;
}
HANDLE WINAPI Open(const wchar_t* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                   DWORD creation, DWORD flags, HANDLE pattern) {
  if ((access & GENERIC_WRITE) && IsThere(path)) return INVALID_HANDLE_VALUE;
  return ::CreateFileW(path, access, share, security, creation, flags, pattern);
}
BOOL WINAPI Remove(const wchar_t* path) {
  return !IsThere(path) && ::DeleteFileW(path);
}
BOOL WINAPI Move(const wchar_t* from, const wchar_t* to) {
  return !IsThere(from) && !IsThere(to) && ::MoveFileW(from, to);
}
int MakeFolder(const wchar_t* path) {
  return IsThere(path) ? -1 : ::_wmkdir(path);
}
int RemoveFolder(const wchar_t* path) {
  return IsThere(path) ? -1 : ::_wrmdir(path);
}
int sleeps;
void WINAPI CountSleep(DWORD) {
  ++sleeps;
}

class ReadOnlyDisk : public ::testing::Test {
 protected:
  ReadOnlyDisk() {
    if (Disk()) {
      path_ = test::Wide(Disk());
      return;
    }
    stand_.emplace();
    path_ = readOnly = stand_->path();
    stand_->Folder(L"folder");
    stand_->File(L"view.ini", "[S]\r\nK=kept\r\n");
    stand_->File(L"keep.txt", "kept");
    stand_->File(L"folder\\a.log", "kept");
    const auto hook = [this](const char* name, auto* function) {
      hooks_.push_back(std::make_unique<test::ImportHook>(name, function));
    };
    hook("CreateFileW", &Open);
    hook("DeleteFileW", &Remove);
    hook("MoveFileW", &Move);
    hook("_wmkdir", &MakeFolder);
    hook("_wrmdir", &RemoveFolder);
    hook("WritePrivateProfileStringA", &NoSettings);
    hook("WritePrivateProfileStringW", &NoSettingsWide);
  }
  ~ReadOnlyDisk() override {
    hooks_.clear();
    EXPECT_EQ(test::ReadBytes(path_ + L"view.ini"), "[S]\r\nK=kept\r\n");
    EXPECT_EQ(test::ReadBytes(path_ + L"keep.txt"), "kept");
    EXPECT_EQ(test::ReadBytes(path_ + L"folder\\a.log"), "kept");
    WIN32_FIND_DATAW found;
    int entries = 0;
    const HANDLE search = ::FindFirstFileW((path_ + L"*").c_str(), &found);
    do ++entries;
    while (::FindNextFileW(search, &found));
    ::FindClose(search);
    EXPECT_EQ(entries, 2 + 3) << "dots, a folder and two files; no probe";
  }

  std::wstring path_;
  const test::TempFolder other_;
  const test::FileApi files_{true};
  const test::DirectoryApi directories_{true};

 private:
  std::optional<test::TempFolder> stand_;
  std::vector<std::unique_ptr<test::ImportHook>> hooks_;
};

TEST_F(ReadOnlyDisk, WriteCheck) {
  const auto check = test::Export<decltype(ZERA_TOOLS_FILE_CHECK_WRITE_UC)>(1031);
  for (const wchar_t* const name : {L"", L"keep.txt", L"new.txt", L"folder\\", L"new\\deeper\\new.txt"}) {
    EXPECT_EQ(check((path_ + name).c_str()), 0) << test::Ansi(name);
  }
}

TEST_F(ReadOnlyDisk, CopyAndBufferWrite) {
  const std::wstring other = other_.File(L"other.txt", "other");
  EXPECT_EQ(files_.Copy(other, path_ + L"keep.txt"), 0);
  EXPECT_EQ(files_.Copy(other, path_ + L"new.txt"), 0);
  EXPECT_EQ(files_.Create(path_ + L"new.txt"), 0);
  EXPECT_EQ(files_.FromBuffer(path_ + L"keep.txt", reinterpret_cast<const unsigned char*>("x"), 1), 0);
  EXPECT_EQ(files_.Copy(path_ + L"keep.txt", other), 1) << "reading needs no writing";
  EXPECT_EQ(test::ReadBytes(other), "kept");
  EXPECT_EQ(directories_.CopyAll(other_.path(), path_ + L"folder\\", 1), 1) << "a walk that started";
  EXPECT_EQ(directories_.CopyAll(path_ + L"folder\\", other_ / L"to\\", 1), 1);
  EXPECT_EQ(test::ReadBytes(other_ / L"to\\a.log"), "kept");
}

TEST_F(ReadOnlyDisk, DeleteAndRename) {
  const test::ImportHook hook("Sleep", &CountSleep);
  sleeps = 0;
  EXPECT_EQ(files_.Delete(path_ + L"keep.txt"), 0);
  EXPECT_EQ(sleeps, 25);
  sleeps = 0;
  EXPECT_EQ(files_.Rename(path_ + L"keep.txt", path_ + L"new.txt"), 0);
  EXPECT_EQ(sleeps, 10);
  EXPECT_EQ(files_.Rename(path_ + L"keep.txt", path_ + L"view.ini"), 0);
  EXPECT_EQ(directories_.DeleteAll(path_, L".*"), 0);
}

TEST_F(ReadOnlyDisk, Settings) {
  const std::wstring file = path_ + L"view.ini";
  EXPECT_EQ(WritePlain("S", "K", test::Ansi(file).c_str(), "new"), 0);
  EXPECT_EQ(WriteWide(L"S", L"K", file.c_str(), L"new"), 1) << "whatever the platform says";
  test::Installation places(path_ + L"view.exe");
  places.common = other_ / L"common";
  places.user = other_ / L"user";
  CStringW found;
  int copied = 7;
  EXPECT_EQ(IniFile(nullptr, found, &copied), 0) << "the one beside the module cannot be written";
  EXPECT_EQ(std::wstring(found.GetString()).find(places.user), 0u);
}

}  // namespace
