// SPDX-License-Identifier: MIT
// The path exports as a host calls them: what each member makes of a path. One table for both character
// types, and every result in a buffer of just its size, of one less, and of more.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "PathApi.h"
#include "support/GuardedBuffer.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"

namespace {

template <class Char>
class Path : public ::testing::Test, protected test::PathApi<Char> {
 protected:
  using Api = test::PathApi<Char>;
  using Text = typename Api::Text;
  using Buffer = test::GuardedBuffer<Char>;

  // `call` writes `expected` into a buffer of any sufficient capacity, which held `before` (null: nothing);
  // one that is too short is an invalid parameter and leaves an empty text.
  template <class Call>
  static void CheckCapacities(const Text* before, const Text& expected, Call call) {
    const Text held = before ? *before : Text();
    const std::size_t least = before ? held.size() + 1 : 0;
    for (const std::size_t capacity :
         {std::size_t{0}, std::size_t{1}, expected.size(), expected.size() + 1, expected.size() + 300}) {
      const test::InvalidParameter handler;
      test::HeapWatch heap;
      // The path itself must be in the buffer, whatever capacity the call is told.
      Buffer buffer(std::max(capacity, least));
      std::copy(held.c_str(), held.c_str() + least, buffer.data());
      EXPECT_EQ(call(buffer.data(), capacity), 1);
      const bool fits = capacity > expected.size();
      EXPECT_EQ(handler.Count(), fits ? 0 : 1) << capacity;
      EXPECT_EQ(heap.Allocations(), 0);
      EXPECT_TRUE(buffer.Intact());
      if (fits) {
        EXPECT_EQ(buffer.text(), expected);
        EXPECT_TRUE(buffer.UntouchedFrom(std::max(expected.size() + 1, least))) << capacity;
      } else if (capacity > 0) {
        EXPECT_EQ(buffer.data()[0], Char(0)) << capacity;
        EXPECT_TRUE(buffer.UntouchedFrom(std::max<std::size_t>(1, least))) << capacity;
      } else {
        EXPECT_EQ(Text(buffer.data(), buffer.data() + least), Text(held.c_str(), held.c_str() + least));
      }
    }
  }
};
TYPED_TEST_SUITE(Path, test::BothCharacters);

struct SplitRow {
  const char* path;
  const char* drive;
  const char* dir;
  const char* name;
  const char* ext;
};

const SplitRow kSplits[] = {
    {"C:\\data\\run.ini", "C:", "\\data\\", "run", ".ini"},
    {"C:\\data\\run\\x.ini", "C:", "\\data\\run\\", "x", ".ini"},
    {"C:\\data\\run", "C:", "\\data\\", "run", ""},
    {"C:\\data\\run\\", "C:", "\\data\\run\\", "", ""},
    {"C:/data/run.ini", "C:", "/data/", "run", ".ini"},
    {"C:\\data/run\\x/y.z", "C:", "\\data/run\\x/", "y", ".z"},
    {"", "", "", "", ""},
    {"run.ini", "", "", "run", ".ini"},
    {"run", "", "", "run", ""},
    {".ini", "", "", "", ".ini"},
    {"a.b.c", "", "", "a.b", ".c"},
    {"a.", "", "", "a", "."},
    {"..", "", "", ".", "."},
    {".", "", "", "", "."},
    {"x.y\\run", "", "x.y\\", "run", ""},
    {"x.y/", "", "x.y/", "", ""},
    {"\\", "", "\\", "", ""},
    {"C:", "C:", "", "", ""},
    {"C:run.ini", "C:", "", "run", ".ini"},
    {"C:\\", "C:", "\\", "", ""},
    {"1:\\x", "1:", "\\", "x", ""},
    {"::\\x", "::", "\\", "x", ""},
    {":x", "", "", ":x", ""},
    {"CD:\\x", "", "CD:\\", "x", ""},
    {"C:D:\\x", "C:", "D:\\", "x", ""},
    {"\\\\server\\share\\a.b", "", "\\\\server\\share\\", "a", ".b"},
    {"\\\\?\\C:\\a.b", "", "\\\\?\\C:\\", "a", ".b"},
    {"*.*", "", "", "*", ".*"},
    {"a b\\c d.e f", "", "a b\\", "c d", ".e f"},
    {"a\tb.\n", "", "", "a\tb", ".\n"},
};

TYPED_TEST(Path, Getters) {
  for (const SplitRow& row : kSplits) {
    SCOPED_TRACE(row.path);
    const auto path = this->From(row.path);
    const std::string results[] = {row.drive,
                                   row.dir,
                                   row.name,
                                   row.ext,
                                   std::string(row.drive) + row.dir,
                                   std::string(row.name) + row.ext};
    for (int i = 0; i < 6; ++i) {
      this->CheckCapacities(nullptr, this->From(results[i]), [&](TypeParam* out, std::size_t capacity) {
        return this->Get(test::kGetters[i], path.c_str(), out, capacity);
      });
      EXPECT_EQ(path, this->From(row.path)) << "the path is not changed";
    }
  }
}

struct RewriteRow {
  test::PathMember member;
  const char* path;
  const char* text;
  const char* result;
};

const RewriteRow kRewrites[] = {
    {test::kReplaceDrive, "C:\\data\\run.ini", "D", "D:\\data\\run.ini"},
    {test::kReplaceDrive, "C:\\data\\run.ini", "D:", "D:\\data\\run.ini"},
    {test::kReplaceDrive, "C:\\data\\run.ini", "D:\\x", "D:\\data\\run.ini"},
    {test::kReplaceDrive, "C:\\data\\run.ini", "", "\\data\\run.ini"},
    {test::kReplaceDrive, "run.ini", "D", "D:run.ini"},
    {test::kReplaceDrive, "", "D", "D:"},
    {test::kReplaceDir, "C:\\data\\run.ini", "\\x\\", "C:\\x\\run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "\\x", "C:\\x\\run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "\\x/", "C:\\x/run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "x\\", "C:x\\run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "D:\\x\\", "C:D:\\x\\run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "", "C:run.ini"},
    {test::kReplaceDir, "C:\\data\\run.ini", "\\", "C:\\run.ini"},
    {test::kReplaceDir, "", "x", "x\\"},
    {test::kReplaceName, "C:\\data\\run.ini", "walk", "C:\\data\\walk.ini"},
    {test::kReplaceName, "C:\\data\\run.ini", "a\\b.c", "C:\\data\\a\\b.c.ini"},
    {test::kReplaceName, "C:\\data\\run.ini", "", "C:\\data\\.ini"},
    {test::kReplaceName, "C:\\data\\", "walk", "C:\\data\\walk"},
    {test::kReplaceExt, "C:\\data\\run.ini", "bak", "C:\\data\\run.bak"},
    {test::kReplaceExt, "C:\\data\\run.ini", ".bak", "C:\\data\\run.bak"},
    {test::kReplaceExt, "C:\\data\\run.ini", "", "C:\\data\\run"},
    {test::kReplaceExt, "C:\\data\\run.ini", ".", "C:\\data\\run."},
    {test::kReplaceExt, "C:\\data\\run.ini", "..", "C:\\data\\run.."},
    {test::kReplaceExt, "C:\\data\\run.old.ini", "b.c", "C:\\data\\run.old.b.c"},
    {test::kReplaceExt, "C:\\data\\", "bak", "C:\\data\\.bak"},
    {test::kReplaceNameExt, "C:\\data\\run.ini", "D:\\other\\walk.txt", "C:\\data\\walk.txt"},
    {test::kReplaceNameExt, "C:\\data\\run.ini", "walk", "C:\\data\\walk"},
    {test::kReplaceNameExt, "C:\\data\\run.ini", "D:\\other\\", "C:\\data\\"},
    {test::kReplaceNameExt, "C:\\data\\run.ini", "*.*", "C:\\data\\*.*"},
    {test::kReplaceNameExt, "C:\\data\\run.ini", "", "C:\\data\\"},
    {test::kReplaceDriveDir, "C:\\data\\run.ini", "D:\\new\\place\\", "D:\\new\\place\\run.ini"},
    {test::kReplaceDriveDir, "C:\\data\\run.ini", "D:\\new\\place", "D:\\new\\run.ini"},
    {test::kReplaceDriveDir, "C:\\data\\run.ini", "x.y", "run.ini"},
    {test::kReplaceDriveDir, "C:\\data\\run.ini", "D:", "D:run.ini"},
    {test::kReplaceDriveDir, "C:\\data\\run.ini", "", "run.ini"},
    {test::kAddDir, "C:\\data\\run.ini", "old", "C:\\data\\old\\run.ini"},
    {test::kAddDir, "C:\\data\\run.ini", "old\\", "C:\\data\\old\\run.ini"},
    {test::kAddDir, "C:\\data\\run.ini", "old/", "C:\\data\\old/run.ini"},
    {test::kAddDir, "C:\\data\\run.ini", "\\old", "C:\\data\\\\old\\run.ini"},
    {test::kAddDir, "C:\\data\\run.ini", "", "C:\\data\\run.ini"},
    {test::kAddDir, "run.ini", "old", "old\\run.ini"},
    {test::kAddDir, "run.ini", "", "run.ini"},
    {test::kAddDir, "C:", "old", "C:old\\"},
    {test::kAddName, "C:\\data\\run.ini", "_bak", "C:\\data\\run_bak.ini"},
    {test::kAddName, "C:\\data\\run.ini", "", "C:\\data\\run.ini"},
    {test::kAddName, "C:\\data\\", "x", "C:\\data\\x"},
    {test::kAddName, ".ini", "x.y", "x.y.ini"},
};

TYPED_TEST(Path, Rewriters) {
  for (const RewriteRow& row : kRewrites) {
    SCOPED_TRACE(std::string(row.path) + " with " + row.text);
    const auto path = this->From(row.path);
    const auto text = this->From(row.text);
    this->CheckCapacities(&path, this->From(row.result), [&](TypeParam* to, std::size_t room) {
      return this->Rewrite(row.member, to, room, text.c_str());
    });
  }
}

TYPED_TEST(Path, IndexAgreesWithTheRuntimesFormat) {
  const auto path = this->From("C:\\log\\run.txt");
  for (const unsigned index :
       {0u, 1u, 7u, 9u, 10u, 12345u, 999999999u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    for (const unsigned digits : {0u, 1u, 2u, 4u, 5u, 9u, 10u, 11u, 100u, 240u, 0x80000000u, 0xFFFFFFFFu}) {
      char number[300];
      std::snprintf(number, sizeof number, "%.*i", static_cast<int>(digits), static_cast<int>(index));
      const std::string expected = "C:\\log\\run" + std::string(number) + ".txt";
      this->CheckCapacities(&path, this->From(expected), [&](TypeParam* to, std::size_t room) {
        return this->AddIndex(to, room, index, digits);
      });
    }
  }
}

// Nothing is asked of the file system, and nothing is converted.
TYPED_TEST(Path, NoPlatformCallOnTheWay) {
  static int calls;
  calls = 0;
  const test::ImportHook hooks[] = {
      {"CreateFileW",
       +[](const wchar_t*, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) {
         ++calls;
         return INVALID_HANDLE_VALUE;
       }},
      {"GetFileAttributesExW", +[](const wchar_t*, GET_FILEEX_INFO_LEVELS, void*) { return ++calls, FALSE; }},
      {"GetFullPathNameW", +[](const wchar_t*, DWORD, wchar_t*, wchar_t**) -> DWORD { return ++calls, 0; }},
      {"FindFirstFileW", +[](const wchar_t*, WIN32_FIND_DATAW*) { return ++calls, INVALID_HANDLE_VALUE; }},
      {"MultiByteToWideChar", +[](UINT, DWORD, const char*, int, wchar_t*, int) { return ++calls, 0; }},
      {"WideCharToMultiByte",
       +[](UINT, DWORD, const wchar_t*, int, char*, int, const char*, BOOL*) { return ++calls, 0; }},
  };
  const auto path = this->From("C:\\data\\run.ini");
  TypeParam buffer[300];
  for (const auto member : test::kGetters) this->Get(member, path.c_str(), buffer, 300);
  for (const auto member : test::kRewriters) {
    std::copy(path.c_str(), path.c_str() + path.size() + 1, buffer);
    this->Rewrite(member, buffer, 300, path.c_str());
  }
  this->AddIndex(buffer, 300, 1, 1);
  EXPECT_EQ(calls, 0);
}

}  // namespace
