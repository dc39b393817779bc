// SPDX-License-Identifier: MIT
// The limits of the path exports: component sizes, null pointers, texts inside the buffer that is rewritten.
#include <algorithm>

#include "PathApi.h"
#include "support/GuardedBuffer.h"
#include "support/InvalidParameter.h"

namespace {

template <class Char>
class PathLimits : public ::testing::Test, protected test::PathApi<Char> {
 protected:
  using Text = typename test::PathApi<Char>::Text;

  // Whether the call took the path: else the handler ran once, and the buffer is empty. The result is
  // 1 either way, and nothing is written beside the buffer.
  template <class Call>
  static bool Takes(const Text& path, Call call) {
    const test::InvalidParameter handler;
    test::GuardedBuffer<Char> buffer(std::max<std::size_t>(path.size() + 1, 1024), path);
    EXPECT_EQ(call(buffer.data(), buffer.capacity()), 1);
    EXPECT_TRUE(buffer.Intact());
    EXPECT_LE(handler.Count(), 1);
    EXPECT_EQ(handler.Count() == 1, buffer.text().empty());
    return handler.Count() == 0;
  }
  // The same for all members with a harmless text, the getters writing into the buffer of the path.
  static int MembersThatTake(const Text& path) {
    int count = 0;
    const Char x[] = {Char('x'), Char(0)};
    for (const auto member : test::kRewriters) {
      count +=
          Takes(path, [&](Char* to, std::size_t room) { return PathLimits::Rewrite(member, to, room, x); });
    }
    count += Takes(path, [&](Char* to, std::size_t room) { return PathLimits::AddIndex(to, room, 1, 1); });
    for (const auto member : test::kGetters) {
      const test::InvalidParameter handler;
      test::GuardedBuffer<Char> out(1024);
      EXPECT_EQ(PathLimits::Get(member, path.c_str(), out.data(), out.capacity()), 1);
      EXPECT_LE(handler.Count(), 1);
      EXPECT_TRUE(out.Intact());
      EXPECT_TRUE(handler.Count() == 0 || out.text().empty());
      count += handler.Count() == 0;
    }
    return count;
  }
};
TYPED_TEST_SUITE(PathLimits, test::BothCharacters);

constexpr int kAllMembers = 15;

TYPED_TEST(PathLimits, ComponentsOfThePath) {
  const auto make = [&](std::size_t dir, std::size_t name, std::size_t ext) {
    return this->From("C:\\") + this->Repeat(dir - 2, 'd') + this->From("\\") + this->Repeat(name, 'n') +
           this->From(".") + this->Repeat(ext - 1, 'e');
  };
  // One short of the limit for the members that append a character.
  EXPECT_EQ(this->MembersThatTake(make(254, 254, 255)), kAllMembers);
  EXPECT_EQ(this->MembersThatTake(make(255, 254, 255)), kAllMembers - 1)
      << "the directory has no room for more";
  EXPECT_EQ(this->MembersThatTake(make(254, 255, 255)), kAllMembers - 2) << "the name has no room for more";
  EXPECT_EQ(this->MembersThatTake(make(255, 255, 255)), kAllMembers - 3);
  EXPECT_EQ(this->MembersThatTake(make(255, 255, 256)), 0);
  EXPECT_EQ(this->MembersThatTake(make(256, 5, 5)), 0);
  EXPECT_EQ(this->MembersThatTake(make(5, 256, 5)), 0);
  EXPECT_EQ(this->MembersThatTake(make(5, 5, 256)), 0);
  EXPECT_EQ(this->MembersThatTake(make(256, 256, 256)), 0);
}

TYPED_TEST(PathLimits, VeryLongTexts) {
  for (const char one : {'x', '\\', '.', ':'}) {
    EXPECT_EQ(this->MembersThatTake(this->Repeat(32767, one)), 0) << one;
    const auto text = this->Repeat(32767, one);
    for (const auto member : test::kRewriters) {
      const bool taken = this->Takes(this->From("C:\\data\\run.ini"), [&](TypeParam* to, std::size_t room) {
        return this->Rewrite(member, to, room, text.c_str());
      });
      EXPECT_EQ(taken, member == test::kReplaceDrive) << member;
    }
  }
}

// What lies behind the terminator is no part of the path, however short that is.
TYPED_TEST(PathLimits, NothingBehindTheTerminatorCounts) {
  const auto behind = this->From("\\./.\\./.\\./.\\./.");
  for (const char* const drive : {"", "C:"}) {
    for (std::size_t length = 0; length < 20; ++length) {
      const auto name = this->Repeat(length, 'n');
      const auto path = this->From(drive) + name;
      test::GuardedBuffer<TypeParam> buffer(100, path);
      std::copy(behind.begin(), behind.end(), buffer.data() + path.size() + 1);
      const std::basic_string<TypeParam> expected[] = {this->From(drive), {},  name, {},
                                                       this->From(drive), name};
      for (std::size_t i = 0; i < 6; ++i) {
        TypeParam out[100];
        EXPECT_EQ(this->Get(test::kGetters[i], buffer.data(), out, 100), 1);
        EXPECT_EQ(std::basic_string<TypeParam>(out), expected[i]) << drive << length;
      }
    }
  }
}

// Texts taken as given go to the composer whole: only the result's capacity limits them.
TYPED_TEST(PathLimits, ReplacementsTakenAsGivenMayBeLong) {
  const auto text = this->Repeat(900, 'x');
  for (const auto member : {test::kReplaceDir, test::kReplaceName, test::kReplaceExt}) {
    EXPECT_TRUE(this->Takes(this->From("C:\\data\\run.ini"), [&](TypeParam* to, std::size_t room) {
      return this->Rewrite(member, to, room, text.c_str());
    })) << member;
  }
}

TYPED_TEST(PathLimits, ComponentsOfTheOtherPath) {
  const auto taken = [&](test::PathMember member, const std::basic_string<TypeParam>& other) {
    return this->Takes(this->From("C:\\data\\run.ini"), [&](TypeParam* to, std::size_t room) {
      return this->Rewrite(member, to, room, other.c_str());
    });
  };
  for (const auto member : {test::kReplaceNameExt, test::kReplaceDriveDir}) {
    EXPECT_TRUE(taken(member, this->Repeat(255, 'n') + this->From(".x")));
    EXPECT_FALSE(taken(member, this->Repeat(256, 'n') + this->From(".x")));
    EXPECT_TRUE(taken(member, this->From("D:") + this->Repeat(254, 'd') + this->From("\\x")));
    EXPECT_FALSE(taken(member, this->From("D:") + this->Repeat(255, 'd') + this->From("\\x")));
    EXPECT_FALSE(taken(member, this->From("x.") + this->Repeat(255, 'e')));
    const auto longest = this->From("D:") + this->Repeat(254, 'd') + this->From("\\") +
                         this->Repeat(255, 'n') + this->From(".") + this->Repeat(254, 'e');
    EXPECT_TRUE(taken(member, longest));
    EXPECT_FALSE(taken(member, longest + this->From("e")));
  }
}

TYPED_TEST(PathLimits, AppendedTexts) {
  const auto path = this->From("C:\\data\\run.ini");
  for (const std::size_t length : {249u, 250u}) {  // "\data\" has 6 characters
    const auto text = this->Repeat(length, 'x');
    EXPECT_EQ(this->Takes(path,
                          [&](TypeParam* to, std::size_t room) {
                            return this->Rewrite(test::kAddDir, to, room, text.c_str());
                          }),
              length == 249);
  }
  for (const std::size_t length : {252u, 253u}) {  // "run" has 3
    const auto text = this->Repeat(length, 'x');
    EXPECT_EQ(this->Takes(path,
                          [&](TypeParam* to, std::size_t room) {
                            return this->Rewrite(test::kAddName, to, room, text.c_str());
                          }),
              length == 252);
    EXPECT_EQ(this->Takes(path,
                          [&](TypeParam* to, std::size_t room) {
                            return this->AddIndex(to, room, 7, static_cast<unsigned>(length));
                          }),
              length == 252);
    EXPECT_EQ(this->Takes(path,
                          [&](TypeParam* to, std::size_t room) {
                            return this->AddIndex(to, room, 0xFFFFFFFF, static_cast<unsigned>(length - 1));
                          }),
              length == 252)
        << "the sign counts";
  }
  // A name of digits alone.
  for (const unsigned digits : {255u, 256u}) {
    EXPECT_EQ(
        this->Takes(this->From("C:\\data\\.ini"),
                    [&](TypeParam* to, std::size_t room) { return this->AddIndex(to, room, 7, digits); }),
        digits == 255);
  }
  for (const unsigned digits : {256u, 1000u, 0x7FFFFFFFu}) {
    EXPECT_FALSE(this->Takes(path, [&](TypeParam* to, std::size_t room) {
      return this->AddIndex(to, room, 7, digits);
    })) << digits;
  }
}

TYPED_TEST(PathLimits, NullPathsAndBuffers) {
  const auto path = this->From("C:\\data\\run.ini");
  TypeParam* const none = nullptr;
  for (const auto member : test::kGetters) {
    const test::InvalidParameter handler;
    test::GuardedBuffer<TypeParam> out(20);
    EXPECT_EQ(this->Get(member, nullptr, out.data(), 20), 1);
    EXPECT_EQ(handler.Count(), 1);
    EXPECT_EQ(out.text(), this->From(""));
    EXPECT_EQ(this->Get(member, path.c_str(), none, 20), 1);
    EXPECT_EQ(handler.Count(), 2);
    EXPECT_EQ(this->Get(member, nullptr, none, 0), 1);
    EXPECT_EQ(handler.Count(), 3);
  }
  for (const auto member : test::kRewriters) {
    const test::InvalidParameter handler;
    EXPECT_EQ(this->Rewrite(member, none, 20, path.c_str()), 1);
    EXPECT_EQ(handler.Count(), 1);
  }
  const test::InvalidParameter handler;
  EXPECT_EQ(this->AddIndex(none, 20, 1, 1), 1);
  EXPECT_EQ(handler.Count(), 1);
}

// A null component is an empty one to the composer; it cannot be split or appended.
TYPED_TEST(PathLimits, NullTexts) {
  const auto path = this->From("C:\\data\\run.ini");
  for (const auto member : test::kRewriters) {
    const bool given = member >= test::kReplaceDrive && member <= test::kReplaceExt;
    EXPECT_EQ(this->Takes(path, [&](TypeParam* to,
                                    std::size_t room) { return this->Rewrite(member, to, room, nullptr); }),
              given)
        << member;
    if (!given) continue;
    test::GuardedBuffer<TypeParam> none(100, path), empty(100, path);
    EXPECT_EQ(this->Rewrite(member, none.data(), 100, nullptr), 1);
    EXPECT_EQ(this->Rewrite(member, empty.data(), 100, this->From("").c_str()), 1);
    EXPECT_EQ(none.text(), empty.text()) << member;
  }
}

// Each text lies in the path's own buffer: at its start, inside it, at its terminator, or behind it.
TYPED_TEST(PathLimits, TextsInsideThePathsOwnBuffer) {
  const auto path = this->From("C:\\data\\run.ini");
  for (const auto member : test::kRewriters) {
    for (std::size_t at = 0; at <= path.size() + 4; ++at) {
      test::GuardedBuffer<TypeParam> apart(100, path);
      test::GuardedBuffer<TypeParam> inside(100, path);
      const auto behind = this->From("x.y");
      for (auto* const buffer : {&apart, &inside}) {
        std::copy(behind.c_str(), behind.c_str() + 4, buffer->data() + path.size() + 1);
      }
      const std::basic_string<TypeParam> text(inside.data() + at);
      EXPECT_EQ(this->Rewrite(member, apart.data(), 100, text.c_str()), 1);
      EXPECT_EQ(this->Rewrite(member, inside.data(), 100, inside.data() + at), 1);
      EXPECT_EQ(inside.text(), apart.text()) << member << " at " << at;
      EXPECT_TRUE(inside.Intact());
    }
  }
}

// The same before the longest rest that a path can have.
TYPED_TEST(PathLimits, TextsInsideTheLongestPathsOwnBuffer) {
  const auto path = this->From("\\") + this->Repeat(240, 'd') + this->From("\\") + this->Repeat(250, 'n') +
                    this->From(".") + this->Repeat(250, 'e') + this->From("xyz");
  for (const auto member : {test::kReplaceDir, test::kAddDir, test::kAddName}) {
    test::GuardedBuffer<TypeParam> apart(800, path);
    test::GuardedBuffer<TypeParam> inside(800, path);
    EXPECT_EQ(this->Rewrite(member, apart.data(), 800, this->From("xyz").c_str()), 1);
    EXPECT_EQ(this->Rewrite(member, inside.data(), 800, inside.data() + path.size() - 3), 1);
    EXPECT_EQ(inside.text(), apart.text()) << member;
    EXPECT_FALSE(apart.text().empty()) << "taken";
    EXPECT_TRUE(inside.Intact());
  }
}

TYPED_TEST(PathLimits, GettersInPlace) {
  for (const auto member : test::kGetters) {
    const auto path = this->From("C:\\data\\run.ini");
    for (std::size_t at = 0; at <= path.size(); ++at) {
      test::GuardedBuffer<TypeParam> apart(60);
      test::GuardedBuffer<TypeParam> inside(60, path);
      EXPECT_EQ(this->Get(member, path.c_str(), apart.data(), 60), 1);
      EXPECT_EQ(this->Get(member, inside.data(), inside.data() + at, 60 - at), 1);
      EXPECT_EQ(std::basic_string<TypeParam>(inside.data() + at), apart.text()) << member << " at " << at;
      EXPECT_TRUE(inside.Intact());
    }
  }
}

}  // namespace
