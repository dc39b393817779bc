// SPDX-License-Identifier: MIT
// FileApi.h: both variants of the exports for one file behind one interface, bound by ordinal.
#pragma once

#include <ZERATools.h>

#include <gtest/gtest.h>

#include <string>

#include "support/Library.h"
#include "support/TempFolder.h"

namespace test {

/// Texts go through the ANSI code page for the plain variants.
class FileApi {
 private:
  template <class Plain, class Wide, class... Rest>
  auto One(unsigned ordinal, const std::wstring& text, Rest... rest) const {
    if (wide_) return Export<Wide>(ordinal + 1000)(text.c_str(), rest...);
    return Export<Plain>(ordinal)(Ansi(text).c_str(), rest...);
  }
  template <class Plain, class Wide>
  auto Two(unsigned ordinal, const std::wstring& first, const std::wstring& second) const {
    if (wide_) return Export<Wide>(ordinal + 1000)(first.c_str(), second.c_str());
    return Export<Plain>(ordinal)(Ansi(first).c_str(), Ansi(second).c_str());
  }

 public:
  explicit FileApi(bool wide) : wide_(wide) {}

  int Exist(const std::wstring& path) const {
    return One<decltype(ZERA_TOOLS_FILE_EXIST), decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1, path);
  }
  int Delete(const std::wstring& path) const {
    return One<decltype(ZERA_TOOLS_FILE_DELETE), decltype(ZERA_TOOLS_FILE_DELETE_UC)>(2, path);
  }
  unsigned GetSize(const std::wstring& path) const {
    return One<decltype(ZERA_TOOLS_FILE_GET_SIZE), decltype(ZERA_TOOLS_FILE_GET_SIZE_UC)>(4, path);
  }
  int HasExtension(const std::wstring& path, const std::wstring& text) const {
    return Two<decltype(ZERA_TOOLS_FILE_HAS_EXTENSION), decltype(ZERA_TOOLS_FILE_HAS_EXTENSION_UC)>(5, path,
                                                                                                    text);
  }
  int Wait(const std::wstring& path, unsigned timeoutMs) const {
    return One<decltype(ZERA_TOOLS_FILE_WAIT_FOR_FILE), decltype(ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC)>(
        6, path, timeoutMs);
  }
  int Rename(const std::wstring& from, const std::wstring& to) const {
    return Two<decltype(ZERA_TOOLS_FILE_RENAME), decltype(ZERA_TOOLS_FILE_RENAME_UC)>(7, from, to);
  }
  int Copy(const std::wstring& from, const std::wstring& to) const {
    return Two<decltype(ZERA_TOOLS_FILE_COPY), decltype(ZERA_TOOLS_FILE_COPY_UC)>(16, from, to);
  }
  int Compare(const std::wstring& one, const std::wstring& other) const {
    return Two<decltype(ZERA_TOOLS_FILE_COMPARE), decltype(ZERA_TOOLS_FILE_COMPARE_UC)>(17, one, other);
  }
  int Create(const std::wstring& path) const {
    return One<decltype(ZERA_TOOLS_FILE_CREATE), decltype(ZERA_TOOLS_FILE_CREATE_UC)>(19, path);
  }
  int ToBuffer(const std::wstring& path, unsigned char* buffer, unsigned long long capacity,
               unsigned long long* count) const {
    return One<decltype(ZERA_TOOLS_FILE_TO_BUFFER), decltype(ZERA_TOOLS_FILE_TO_BUFFER_UC)>(25, path, buffer,
                                                                                            capacity, count);
  }
  int FromBuffer(const std::wstring& path, const unsigned char* buffer, unsigned long long count) const {
    return One<decltype(ZERA_TOOLS_FILE_FROM_BUFFER), decltype(ZERA_TOOLS_FILE_FROM_BUFFER_UC)>(
        26, path, buffer, count);
  }
  int GetTime(const std::wstring& path, long long* time) const {
    return One<decltype(ZERA_TOOLS_FILE_GET_TIME_MODIFIED), decltype(ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC)>(
        27, path, time);
  }

 private:
  bool wide_;
};

/// Makes a file of a given size without writing its bytes.
inline std::wstring SparseFile(const TempFolder& folder, long long size) {
  const std::wstring path = folder.File(L"sparse.bin", "");
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  LARGE_INTEGER end;
  end.QuadPart = size;
  EXPECT_TRUE(::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && ::SetEndOfFile(file));
  ::CloseHandle(file);
  return path;
}

/// Runs each test for both variants:
///   class Deleting : public test::BothVariants {};
///   ZERA_BOTH_VARIANTS(Deleting);
class BothVariants : public ::testing::TestWithParam<bool> {
 protected:
  const FileApi api{GetParam()};
};

#define ZERA_BOTH_VARIANTS(suite)                                          \
  INSTANTIATE_TEST_SUITE_P(Variant, suite, ::testing::Values(false, true), \
                           [](const auto& one) { return one.param ? "wide" : "plain"; })

}  // namespace test
