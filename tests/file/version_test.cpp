// SPDX-License-Identifier: MIT
// The version of a module as a host asks for it. The modules are made by the build, each with the
// numbers that its name says.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <cstdlib>
#include <random>

#include "support/CodePage.h"
#include "support/GuardedBuffer.h"
#include "support/ImportHook.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

const auto Plain = test::Export<decltype(ZERA_TOOLS_FILE_GET_VERSION)>(34);
const auto Wide = test::Export<decltype(ZERA_TOOLS_FILE_GET_VERSION_UC)>(1034);

int Get(const std::wstring& path, char* version, std::size_t capacity) {
  return Plain(test::Ansi(path).c_str(), version, capacity);
}
int Get(const std::wstring& path, wchar_t* version, std::size_t capacity) {
  return Wide(path.c_str(), version, capacity);
}

// A module of the build, in the program's own folder.
std::wstring Module(const std::wstring& name) {
  wchar_t path[MAX_PATH];
  const std::wstring program(path, ::GetModuleFileNameW(nullptr, path, MAX_PATH));
  return program.substr(0, program.rfind(L'\\') + 1) + name;
}

// What a version resource begins with, behind three 16-bit numbers, in UTF-16.
const std::string kResourceKey("V\0S\0_\0V\0E\0R\0", 12);

template <class Char>
class Version : public ::testing::Test {
 protected:
  using Text = std::basic_string<Char>;

  static Text From(const std::string& text) { return Text(text.begin(), text.end()); }
};

using Characters = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(Version, Characters);

TYPED_TEST(Version, MajorNumberOfTheProductAndTheRestOfTheFile) {
  const struct {
    const wchar_t* module;
    const char* version;
  } rows[] = {
      {L"version_file-2.5.3.7_product-2.0.1.1.dll", "2.5.3.7"},
      {L"version_file-2.5.3.7_product-9.8.7.6.dll", "9.5.3.7"},
      {L"version_file-0.0.0.0_product-0.0.0.0.dll", "0.0.0.0"},
      {L"version_file-1.65535.65535.65535_product-65535.2.3.4.dll", "65535.65535.65535.65535"},
  };
  for (const auto& row : rows) {
    test::GuardedBuffer<TypeParam> out(40);
    test::HeapWatch heap;
    const DWORD handles = test::OpenHandles();
    EXPECT_EQ(Get(Module(row.module), out.data(), out.capacity()), 1) << row.version;
    EXPECT_EQ(heap.Outstanding(), 0);
    EXPECT_EQ(heap.Allocations(), 1) << "the resource";
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(out.text(), this->From(row.version));
    EXPECT_TRUE(out.UntouchedFrom(std::strlen(row.version) + 1));
    EXPECT_TRUE(out.Intact());
  }
}

TYPED_TEST(Version, ExactRoomIsEnough) {
  test::GuardedBuffer<TypeParam> out(8);
  EXPECT_EQ(Get(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"), out.data(), 8), 1);
  EXPECT_EQ(out.text(), this->From("2.5.3.7"));
  EXPECT_TRUE(out.Intact());
}

TYPED_TEST(Version, OneShortIsRejectedByWideAndRefusedByPlain) {
  constexpr bool kPlain = std::is_same_v<TypeParam, char>;
  for (std::size_t capacity = 0; capacity < 8; ++capacity) {
    test::GuardedBuffer<TypeParam> out(capacity);
    test::InvalidParameter handler;
    test::HeapWatch heap;
    EXPECT_EQ(Get(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"), out.data(), capacity), kPlain ? 0 : 1);
    EXPECT_EQ(handler.Count(), kPlain ? 0 : 1) << capacity;
    EXPECT_EQ(heap.Outstanding(), 0);
    EXPECT_EQ(out.text(), this->From(""));
    EXPECT_TRUE(out.UntouchedFrom(capacity > 0)) << capacity;
  }
}

TYPED_TEST(Version, NullBuffer) {
  constexpr bool kPlain = std::is_same_v<TypeParam, char>;
  test::InvalidParameter handler;
  TypeParam* const none = nullptr;
  EXPECT_EQ(Get(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"), none, 40), kPlain ? 0 : 1);
  EXPECT_EQ(handler.Count(), kPlain ? 0 : 1);
}

TYPED_TEST(Version, NoVersionIsZeroAndEmpty) {
  test::TempFolder temp;
  const std::wstring module = Module(L"version_file-2.5.3.7_product-2.0.1.1.dll");
  const std::string bytes = test::ReadBytes(module);
  const std::size_t resource = bytes.find(kResourceKey);
  ASSERT_NE(resource, bytes.npos);
  const std::wstring paths[] = {
      Module(L"version_none.dll"),
      temp.File(L"empty.dll", ""),
      temp.File(L"text.dll", "MZ, but only a text"),
      temp.File(L"cut-off.dll", bytes.substr(0, resource)),
      temp / L"missing.dll",
      temp.path(),
      L"",
      L"\\\\.\\nul",
      std::wstring(32767, L'a'),
  };
  for (const std::wstring& path : paths) {
    test::GuardedBuffer<TypeParam> out(40, this->From("before"));
    test::InvalidParameter handler;
    const DWORD handles = test::OpenHandles();
    test::HeapWatch heap;
    EXPECT_EQ(Get(path, out.data(), out.capacity()), 0) << test::Ansi(path.substr(0, 80));
    EXPECT_EQ(heap.Outstanding(), 0);
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(handler.Count(), 0);
    EXPECT_EQ(out.text(), this->From(""));
    EXPECT_EQ(out.data()[1], TypeParam('e')) << "nothing but the terminator is written";
  }
}

TYPED_TEST(Version, FailingPlatformCallsGiveZeroAndReleaseTheResource) {
  const std::wstring module = Module(L"version_file-2.5.3.7_product-2.0.1.1.dll");
  const struct {
    const char* name;
    void* replacement;
  } faults[] = {
      {"GetFileVersionInfoSizeW",
       reinterpret_cast<void*>(+[](const wchar_t*, DWORD*) -> DWORD { return 0; })},
      {"GetFileVersionInfoW",
       reinterpret_cast<void*>(+[](const wchar_t*, DWORD, DWORD, void*) -> BOOL { return FALSE; })},
      {"VerQueryValueW",
       reinterpret_cast<void*>(+[](const void*, const wchar_t*, void**, UINT*) -> BOOL { return FALSE; })},
      // Failures that leave what a success would.
      {"GetFileVersionInfoW",
       reinterpret_cast<void*>(+[](const wchar_t* path, DWORD unused, DWORD size, void* block) -> BOOL {
         ::GetFileVersionInfoW(path, unused, size, block);
         return FALSE;
       })},
      {"VerQueryValueW", reinterpret_cast<void*>(
                             +[](const void* block, const wchar_t* name, void** value, UINT* length) -> BOOL {
                               ::VerQueryValueW(block, name, value, length);
                               return FALSE;
                             })},
      {"VerQueryValueW", reinterpret_cast<void*>(
                             +[](const void* block, const wchar_t* name, void** value, UINT* length) -> BOOL {
                               const BOOL known = ::VerQueryValueW(block, name, value, length);
                               *length = sizeof(VS_FIXEDFILEINFO) - 1;
                               return known;
                             })},
      {"VerQueryValueW",
       reinterpret_cast<void*>(+[](const void*, const wchar_t*, void** value, UINT* length) {
         *value = nullptr;
         *length = sizeof(VS_FIXEDFILEINFO);
         return TRUE;
       })},
      // A version resource without its fixed part.
      {"VerQueryValueW",
       reinterpret_cast<void*>(+[](const void* block, const wchar_t*, void** value, UINT* length) {
         *value = const_cast<void*>(block);
         *length = 0;
         return TRUE;
       })},
  };
  for (const auto& fault : faults) {
    test::GuardedBuffer<TypeParam> out(40, this->From("before"));
    test::HeapWatch heap;
    const test::ImportHook hook(fault.name, fault.replacement);
    EXPECT_EQ(Get(module, out.data(), out.capacity()), 0) << fault.name;
    EXPECT_EQ(heap.Outstanding(), 0) << fault.name;
    EXPECT_EQ(out.text(), this->From("")) << fault.name;
  }
}

TYPED_TEST(Version, NothingIsReadWhereThereIsNoResource) {
  static int reads;
  reads = 0;
  const test::ImportHook size(
      "GetFileVersionInfoSizeW", +[](const wchar_t*, DWORD*) -> DWORD { return 0; });
  const test::ImportHook read(
      "GetFileVersionInfoW", +[](const wchar_t* path, DWORD unused, DWORD, void*) -> BOOL {
        ++reads;
        BYTE block[1];
        return ::GetFileVersionInfoW(path, unused, sizeof block, block);
      });
  const test::HeapWatch heap;
  TypeParam out[40];
  EXPECT_EQ(Get(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"), out, 40), 0);
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(heap.Allocations(), 0);
}

TYPED_TEST(Version, RootBlockIsAskedForOnce) {
  static std::wstring asked;
  asked.clear();
  const test::ImportHook hook(
      "VerQueryValueW", +[](const void* block, const wchar_t* name, void** value, UINT* length) -> BOOL {
        asked += name;
        return ::VerQueryValueW(block, name, value, length);
      });
  TypeParam out[40];
  EXPECT_EQ(Get(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"), out, 40), 1);
  EXPECT_EQ(asked, L"\\");
}

// Whatever the bytes of a module: an answer, and no damage.
TYPED_TEST(Version, DamagedModules) {
  test::TempFolder temp;
  const std::string whole = test::ReadBytes(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll"));
  std::mt19937 random(7);
  // The damage is done around the key.
  const std::size_t resource = whole.find(kResourceKey);
  ASSERT_NE(resource, whole.npos);
  const std::wstring path = temp / L"damaged.dll";
  int versions = 0;
  for (int i = 0; i < 60; ++i) {
    std::string bytes = whole;
    for (int change = 0; change < 4; ++change) {
      bytes[resource - 6 + random() % 120] = static_cast<char>(random());
    }
    test::WriteBytes(path, bytes);
    test::GuardedBuffer<TypeParam> out(24);
    test::HeapWatch heap;
    const int result = Get(path, out.data(), out.capacity());
    EXPECT_EQ(heap.Outstanding(), 0);
    EXPECT_TRUE(out.Intact());
    EXPECT_EQ(result != 0, !out.text().empty());
    versions += result;
  }
  EXPECT_GT(versions, 0) << "some damage is beside the numbers";
}

TYPED_TEST(Version, PathInTheCodePage) {
  test::TempFolder temp;
  const std::wstring name = test::Local().wide + L".dll";
  temp.File(name, test::ReadBytes(Module(L"version_file-2.5.3.7_product-2.0.1.1.dll")));
  TypeParam out[40];
  EXPECT_EQ(Get(temp / name, out, 40), 1);
  EXPECT_EQ(this->From("2.5.3.7"), out);
}

TEST(VersionNull, NullPathIsAModuleWithoutVersion) {
  char plain[8] = "before";
  EXPECT_EQ(Plain(nullptr, plain, sizeof plain), 0);
  EXPECT_STREQ(plain, "");
  wchar_t wide[8] = L"before";
  EXPECT_EQ(Wide(nullptr, wide, 8), 0);
  EXPECT_STREQ(wide, L"");
}

}  // namespace
