// SPDX-License-Identifier: MIT
// The exports that ask for one file, as a host calls them: existence, size, time.
#include "CallLog.h"
#include "FileApi.h"
#include "support/CodePage.h"
#include "support/InvalidParameter.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;

// A path of this many characters in the folder.
std::wstring PathOfLength(const test::TempFolder& folder, std::size_t length) {
  return folder / std::wstring(length - folder.path().size(), L'n');
}

class Existing : public test::BothVariants {};
ZERA_BOTH_VARIANTS(Existing);

TEST_P(Existing, FileOrFolder) {
  const test::TempFolder folder;
  const std::wstring sub = folder.Folder(L"sub");
  EXPECT_EQ(api.Exist(folder.File(L"full.txt", "x")), 1);
  EXPECT_EQ(api.Exist(folder.File(L"empty.txt", "")), 1);
  EXPECT_EQ(api.Exist(sub), 1);
  EXPECT_EQ(api.Exist(sub.substr(0, sub.size() - 1)), 1);
  EXPECT_EQ(api.Exist(L"X:\\"), 1);
  EXPECT_EQ(api.Exist(folder / L"missing.txt"), 0);
  EXPECT_EQ(api.Exist(folder / L"missing\\full.txt"), 0);
  EXPECT_EQ(api.Exist(L"Q:\\full.txt"), 0);
  EXPECT_EQ(api.Exist(L""), 0);
  EXPECT_EQ(api.Exist(folder / L"*.txt"), 0);
  EXPECT_EQ(api.Exist(folder / L"f?ll.txt"), 0);
}

TEST_P(Existing, ContentIsAskedForOnce) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"full.txt", "x");
  const CallLog log;
  EXPECT_EQ(api.Exist(file), 1);
  EXPECT_EQ(log.Sequence(), "?");
  EXPECT_EQ(api.Exist(folder / L"missing.txt"), 0);
  EXPECT_EQ(log.Sequence(), "??");
}

TEST_P(Existing, EmptinessIsAskedForAgainByItsFullName) {
  const test::TempFolder folder;
  folder.File(L"empty.txt", "");
  folder.Folder(L"sub");
  const CallLog log;
  EXPECT_EQ(api.Exist(folder / L"sub\\..\\empty.txt"), 1);
  ASSERT_EQ(log.Sequence(), "??");
  EXPECT_EQ(log.Of('?')[0].path, folder / L"sub\\..\\empty.txt");
  EXPECT_EQ(log.Of('?')[1].path, folder / L"empty.txt");
  EXPECT_EQ(api.Exist(folder / L"sub"), 1);
  EXPECT_EQ(log.Sequence(), "????");
}

TEST_P(Existing, SecondAnswerDecidesForEmptiness) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"empty.txt", "");
  const CallLog log([](const Call& call) {
    return call.kind == '?' && call.nth == 2 ? Answer{Answer::kFail, ERROR_FILE_NOT_FOUND} : Answer();
  });
  EXPECT_EQ(api.Exist(file), 0);
  EXPECT_EQ(log.Sequence(), "??");
}

TEST_P(Existing, FailedQueryOrFullNameIsMissing) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"full.txt", "x");
  for (const char kind : {'?', 'N'}) {
    const CallLog log([=](const Call& call) {
      return call.kind == kind ? Answer{Answer::kFail, ERROR_NOT_READY} : Answer();
    });
    EXPECT_EQ(api.Exist(file), 0) << kind;
    EXPECT_EQ(log.Sequence(), "?") << kind;
  }
}

TEST_P(Existing, FileThatRefusesTheQueryIsFoundInItsFolder) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"full.txt", "x");
  const DWORD handles = test::OpenHandles();
  for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}) {
    const CallLog log([=](const Call& call) {
      return call.kind == '?' ? Answer{Answer::kFail, error} : Answer();
    });
    EXPECT_EQ(api.Exist(file), 1);
    EXPECT_EQ(api.Exist(folder / L"missing.txt"), 0);
    EXPECT_EQ(log.Sequence(), "?F?F");
  }
  EXPECT_EQ(test::OpenHandles(), handles);
}

TEST_P(Existing, PathsEndBefore260Characters) {
  const test::TempFolder folder;
  const std::wstring longest = PathOfLength(folder, 259);
  const std::wstring tooLong = PathOfLength(folder, 260);
  test::WriteBytes(longest, "x");
  test::WriteBytes(L"\\\\?\\" + tooLong, "x");
  EXPECT_EQ(api.Exist(longest), 1);
  EXPECT_EQ(api.GetSize(longest), 1u);
  EXPECT_EQ(api.Exist(tooLong), 0);
  EXPECT_EQ(api.GetSize(tooLong), 0u);
  EXPECT_EQ(api.Wait(tooLong, 20), 0);
  long long time = 0;
  EXPECT_EQ(api.GetTime(tooLong, &time), 0);
  EXPECT_EQ(api.Delete(tooLong), 1) << "missing, so nothing has to be deleted";
  EXPECT_TRUE(test::Exists(L"\\\\?\\" + tooLong));
  EXPECT_EQ(api.Delete(longest), 1);
  EXPECT_FALSE(test::Exists(longest));
  ::DeleteFileW((L"\\\\?\\" + tooLong).c_str());
}

class Sizes : public test::BothVariants {};
ZERA_BOTH_VARIANTS(Sizes);

TEST_P(Sizes, BytesOfFiles) {
  const test::TempFolder folder;
  EXPECT_EQ(api.GetSize(folder.File(L"1.txt", "x")), 1u);
  EXPECT_EQ(api.GetSize(folder.File(L"70000.txt", std::string(70000, 'x'))), 70000u);
  EXPECT_EQ(api.GetSize(folder.File(L"empty.txt", "")), 0u);
  EXPECT_EQ(api.GetSize(folder.Folder(L"sub")), 0u);
  EXPECT_EQ(api.GetSize(folder / L"missing.txt"), 0u);
}

TEST_P(Sizes, FourGigabytesAndMoreAreCutTo32Bits) {
  const std::pair<long long, unsigned> sizes[] = {
      {0xFFFFFFFFLL, 0xFFFFFFFFu}, {0x100000000LL, 0}, {0x100000001LL, 1}, {5LL << 30, 1u << 30}};
  for (const auto& [size, expected] : sizes) {
    const test::TempFolder folder;
    EXPECT_EQ(api.GetSize(test::SparseFile(folder, size)), expected) << size;
  }
}

TEST_P(Sizes, OneQuery) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"empty.txt", "");
  const CallLog log;
  EXPECT_EQ(api.GetSize(file), 0u);
  EXPECT_EQ(log.Sequence("?FDMsORWC"), "?");
}

TEST_P(Sizes, HugeEmptyLookingFileExistsAndIsNotWaitedFor) {
  const test::TempFolder folder;
  const std::wstring file = test::SparseFile(folder, 0x100000000LL);
  const CallLog log;
  EXPECT_EQ(api.Exist(file), 1);
  EXPECT_EQ(api.Wait(file, 100), 1);
  EXPECT_EQ(log.Sequence(), "??") << "64 bits of the size count here";
}

class Modified : public test::BothVariants {
 protected:
  // Sets the C runtime's time zone, which the library shares, and puts it back.
  class Zone {
   public:
    explicit Zone(const char* zone) { Set(zone); }
    ~Zone() { Set(""); }

   private:
    static void Set(const char* zone) {
      ::_putenv_s("TZ", zone);
      ::_tzset();
    }
  };
};
ZERA_BOTH_VARIANTS(Modified);

TEST_P(Modified, SecondsSince1970InUtc) {
  const test::TempFolder folder;
  const Zone zone("PST8PDT");
  const std::pair<SYSTEMTIME, long long> times[] = {{{2024, 2, 0, 29, 12, 30, 15, 999}, 1709209815},
                                                    {{1970, 1, 0, 1, 0, 0, 0, 0}, 0},
                                                    {{1999, 7, 0, 1, 0, 0, 1, 0}, 930787201},
                                                    {{2040, 1, 0, 1, 0, 0, 0, 0}, 2208988800}};
  for (const auto& [moment, seconds] : times) {
    const std::wstring path = folder.File(L"file.txt", "x");
    FILETIME modified;
    ASSERT_TRUE(::SystemTimeToFileTime(&moment, &modified));
    const HANDLE file =
        ::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(::SetFileTime(file, nullptr, nullptr, &modified));
    ::CloseHandle(file);
    const CallLog log;
    long long time = -1;
    EXPECT_EQ(api.GetTime(path, &time), 1);
    EXPECT_EQ(time, seconds);
    EXPECT_EQ(log.Sequence(), "?");
  }
}

TEST_P(Modified, FoldersHaveOneToo) {
  const test::TempFolder folder;
  const long long now = ::_time64(nullptr);
  long long time = 0;
  EXPECT_EQ(api.GetTime(folder.Folder(L"sub"), &time), 1);
  EXPECT_GE(time, now - 60);
  EXPECT_LE(time, now + 60);
}

TEST_P(Modified, MissingPathHasTheYear1980InLocalStandardTime) {
  const test::TempFolder folder;
  constexpr long long kUtc = 315536400;  // 1 January 1980, 01:00:00
  const std::pair<const char*, long long> zones[] = {
      {"UTC0", kUtc}, {"PST8PDT", kUtc + 8 * 3600}, {"JST-9", kUtc - 9 * 3600}, {"EST5EDT", kUtc + 5 * 3600}};
  for (const auto& [name, seconds] : zones) {
    const Zone zone(name);
    for (const std::wstring& path : {folder / L"missing.txt", std::wstring(), folder / L"*"}) {
      long long time = 0;
      EXPECT_EQ(api.GetTime(path, &time), 0) << name;
      EXPECT_EQ(time, seconds) << name;
    }
  }
}

TEST_P(Modified, NobodyHasToTakeIt) {
  const test::TempFolder folder;
  EXPECT_EQ(api.GetTime(folder.File(L"file.txt", "x"), nullptr), 1);
  EXPECT_EQ(api.GetTime(folder / L"missing.txt", nullptr), 0);
}

class BadPaths : public test::BothVariants {};
ZERA_BOTH_VARIANTS(BadPaths);

TEST_P(BadPaths, HarmNothing) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"kept.txt", "kept");
  test::InvalidParameter handler;
  const DWORD handles = test::OpenHandles();
  {
    const CallLog log;  // no sleep takes time
    const test::HeapWatch heap;
    for (const std::wstring& path :
         {std::wstring(L""), std::wstring(32767, L'x'), L"X:\\" + std::wstring(32764, L'\\'), file + L"\\x",
          std::wstring(L"X:\\tmp\\\x01<>|\""), std::wstring(L":::"), std::wstring(L"\\\\?\\"),
          std::wstring(L"*"), folder / L"*.txt", folder / L"????.txt"}) {
      long long time = 0;
      EXPECT_EQ(api.Exist(path), 0);
      EXPECT_EQ(api.GetSize(path), 0u);
      EXPECT_EQ(api.Wait(path, 20), 0);
      EXPECT_EQ(api.GetTime(path, &time), 0);
      EXPECT_EQ(api.Delete(path), 1);
      EXPECT_EQ(api.Rename(path, folder / L"other.txt"), 0);
      EXPECT_EQ(api.HasExtension(path, path.empty() ? L"x" : path), 0) << test::Ansi(path.substr(0, 20));
    }
    EXPECT_EQ(heap.Outstanding(), 0);
  }
  EXPECT_EQ(handler.Count(), 0);
  EXPECT_EQ(test::OpenHandles(), handles);
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>{L"kept.txt"});
  EXPECT_EQ(test::ReadBytes(file), "kept");
}

TEST_P(BadPaths, DevicesAreAnsweredWithoutWaiting) {
  for (const wchar_t* const device : {L"NUL", L"CON", L"X:\\NUL", L"\\\\.\\NUL"}) {
    const CallLog log;
    EXPECT_EQ(api.GetSize(device), 0u);
    EXPECT_EQ(api.Wait(device, 20), 0) << "no size, no content";
  }
}

TEST(BadPathsPlain, BytesThatTheCodePageDoesNotKnow) {
  for (const char* const path :
       {"X:\\tmp\\missing\x81", "X:\\tmp\\\xFF\xFE\x80", "\x81\x8D\x8F\x90\x9D", "\x83"}) {
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_EXIST)>(1)(path), 0);
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_DELETE)>(2)(path), 1);
    EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_HAS_EXTENSION)>(5)(path, path), 0);
  }
}

TEST(NullPaths, AreMissing) {
  const CallLog log;
  long long time = 0;
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_EXIST)>(1)(nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1001)(nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_DELETE)>(2)(nullptr), 1);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_DELETE_UC)>(1002)(nullptr), 1);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_GET_SIZE)>(4)(nullptr), 0u);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_GET_SIZE_UC)>(1004)(nullptr), 0u);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_HAS_EXTENSION)>(5)(nullptr, nullptr), 1);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_WAIT_FOR_FILE)>(6)(nullptr, 20), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC)>(1006)(nullptr, 20), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_RENAME)>(7)(nullptr, nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_RENAME_UC)>(1007)(nullptr, nullptr), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_GET_TIME_MODIFIED)>(27)(nullptr, &time), 0);
  EXPECT_EQ(test::Export<decltype(ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC)>(1027)(nullptr, &time), 0);
  EXPECT_EQ(log.Sequence("?FNDMORWC"), "") << "the disk is not asked";
}

class Names : public test::BothVariants {};
ZERA_BOTH_VARIANTS(Names);

TEST_P(Names, OfTheCodePage) {
  const test::TempFolder folder;
  const std::wstring name = test::Local().wide + L".txt";
  const std::wstring path = folder.File(name, "123");
  long long time = 0;
  EXPECT_EQ(api.Exist(path), 1);
  EXPECT_EQ(api.GetSize(path), 3u);
  EXPECT_EQ(api.Wait(path, 20), 1);
  EXPECT_EQ(api.GetTime(path, &time), 1);
  EXPECT_EQ(api.Rename(path, folder / (L"2" + name)), 1);
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>{L"2" + name});
  EXPECT_EQ(api.Delete(folder / (L"2" + name)), 1);
  EXPECT_TRUE(folder.Entries().empty());
}

TEST_P(Names, QuestionsTakeNoMemory) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"file.txt", "x");
  const std::wstring missing = folder / L"missing.txt";
  const test::HeapWatch heap;
  long long time = 0;
  EXPECT_EQ(api.Exist(file), 1);
  EXPECT_EQ(api.Exist(missing), 0);
  EXPECT_EQ(api.Exist(folder.path()), 1);
  EXPECT_EQ(api.GetSize(file), 1u);
  EXPECT_EQ(api.HasExtension(file, L"txt"), 1);
  EXPECT_EQ(api.Wait(file, 20), 1);
  EXPECT_EQ(api.Wait(missing, 20), 0);
  EXPECT_EQ(api.GetTime(file, &time), 1);
  EXPECT_EQ(api.GetTime(missing, &time), 0);
  EXPECT_EQ(api.Rename(file, missing), 1);
  EXPECT_EQ(api.Delete(missing), 1);
  EXPECT_EQ(heap.Allocations(), 0);
}

}  // namespace
