// SPDX-License-Identifier: MIT
// The C runtime's error number after an invalid parameter: what the runtime's own checked functions set.
#include "PathApi.h"
#include "support/InvalidParameter.h"

namespace {

using namespace test;

constexpr int kUntouched = 12345;

// The error number that a call leaves.
template <class Call>
int ErrorOf(Call call) {
  const InvalidParameter handler;
  ::_set_errno(kUntouched);
  call();
  const int error = errno;
  EXPECT_EQ(handler.Count(), error == kUntouched ? 0 : 1);
  return error;
}

// The runtime's own copy, asked with the same buffer.
int Copied(char* out, std::size_t capacity, const char* text) {
  return ErrorOf([&] { ::strcpy_s(out, capacity, text); });
}
int Copied(wchar_t* out, std::size_t capacity, const wchar_t* text) {
  return ErrorOf([&] { ::wcscpy_s(out, capacity, text); });
}

template <class Char>
class ErrorNumber : public ::testing::Test {};
TYPED_TEST_SUITE(ErrorNumber, BothCharacters);

TYPED_TEST(ErrorNumber, IsThatOfTheRuntimesCopy) {
  using Api = PathApi<TypeParam>;
  const auto path = Api::From("C:\\data\\run.ini"), extension = Api::From(".ini");
  TypeParam out[300];
  for (const std::size_t capacity : {0u, 1u, 4u, 5u, 300u}) {
    EXPECT_EQ(ErrorOf([&] { Api::Get(kGetExt, path.c_str(), out, capacity); }),
              Copied(out, capacity, extension.c_str()))
        << capacity;
    EXPECT_EQ(ErrorOf([&] { Api::Get(kGetExt, path.c_str(), nullptr, capacity); }),
              Copied(nullptr, capacity, extension.c_str()))
        << capacity;
  }
}

TYPED_TEST(ErrorNumber, TellsMissingArgumentsFromLongOnes) {
  using Api = PathApi<TypeParam>;
  TypeParam out[1000];
  const auto tooLong = Api::Repeat(256, 'n');
  EXPECT_EQ(ErrorOf([&] { Api::Get(kGetName, nullptr, out, 1000); }), EINVAL);
  EXPECT_EQ(ErrorOf([&] { Api::Get(kGetName, tooLong.c_str(), out, 1000); }), ERANGE);
  const auto reset = [&] { std::char_traits<TypeParam>::copy(out, Api::From("C:\\a\\b.c").c_str(), 9); };
  for (const PathMember member : {kAddDir, kAddName, kReplaceNameExt, kReplaceDriveDir}) {
    reset();
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 1000, nullptr); }), EINVAL) << member;
    reset();
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 1000, tooLong.c_str()); }), ERANGE) << member;
    reset();
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 3, Api::From("x").c_str()); }), ERANGE) << member;
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, nullptr, 9, Api::From("x").c_str()); }), EINVAL) << member;
  }
  // These take a missing text for an empty one.
  for (const PathMember member : {kReplaceDrive, kReplaceDir, kReplaceName, kReplaceExt}) {
    reset();
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 1000, nullptr); }), kUntouched) << member;
    reset();
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 3, Api::From("x").c_str()); }), ERANGE) << member;
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, nullptr, 9, Api::From("x").c_str()); }), EINVAL) << member;
  }
  reset();
  EXPECT_EQ(ErrorOf([&] { Api::AddIndex(out, 3, 1, 1); }), ERANGE);
  reset();
  EXPECT_EQ(ErrorOf([&] { Api::AddIndex(out, 1000, 1, 256); }), ERANGE);
  EXPECT_EQ(ErrorOf([&] { Api::AddIndex(nullptr, 9, 1, 1); }), EINVAL);
}

// Drive, directory, name and extension at their limits together: the longest path that is taken.
TYPED_TEST(ErrorNumber, NoneWithEveryComponentAtItsLimit) {
  using Api = PathApi<TypeParam>;
  const auto directory = Api::From("\\") + Api::Repeat(253, 'd') + Api::From("\\");
  const auto name = Api::Repeat(255, 'n'), extension = Api::From(".") + Api::Repeat(254, 'e');
  const auto path = Api::From("C:") + directory + name + extension;
  ASSERT_EQ(path.size(), 767u);
  TypeParam out[800];
  const std::pair<PathMember, typename Api::Text> rows[] = {{kGetDrive, Api::From("C:")},
                                                            {kGetDir, directory},
                                                            {kGetName, name},
                                                            {kGetExt, extension},
                                                            {kGetDriveDir, Api::From("C:") + directory},
                                                            {kGetNameExt, name + extension}};
  for (const auto& row : rows) {
    const PathMember member = row.first;
    EXPECT_EQ(ErrorOf([&] { Api::Get(member, path.c_str(), out, 800); }), kUntouched) << member;
    EXPECT_EQ(typename Api::Text(out), row.second) << member;
  }
  for (const PathMember member : {kReplaceNameExt, kReplaceDriveDir}) {
    std::char_traits<TypeParam>::copy(out, path.c_str(), path.size() + 1);
    EXPECT_EQ(ErrorOf([&] { Api::Rewrite(member, out, 768, path.c_str()); }), kUntouched) << member;
    EXPECT_EQ(typename Api::Text(out), path) << member;
  }
}

}  // namespace
