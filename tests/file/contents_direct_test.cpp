// SPDX-License-Identifier: MIT
// What leaves the file operations as an exception, and their loops without the platform. A host's side of
// such an exception is tested with the frame.
#include <afx.h>

#include <gtest/gtest.h>

#include <random>

#include "CallLog.h"
#include "file/Blocks.h"
#include "file/Contents.h"
#include "file/Extension.h"
#include "file/Files.h"
#include "support/TempFolder.h"

namespace {

using test::Answer;
using test::Call;
using test::CallLog;

const std::string kBytes(10000, 'x');

// The platform error and cause with which an operation leaves; {0, 0} if it does not.
struct Left {
  LONG error = 0;
  int cause = 0;
  bool operator==(const Left&) const = default;
};

template <class Operation>
Left LeavesWith(Operation operation) {
  try {
    operation();
  } catch (CFileException* exception) {
    const Left left = {exception->m_lOsError, exception->m_cause};
    exception->Delete();
    return left;
  }
  return {};
}

CallLog::Script FailAt(char kind, int nth, Answer answer) {
  return [=](const Call& call) { return call.kind == kind && call.nth == nth ? answer : Answer(); };
}

class Leaving : public ::testing::Test {
 protected:
  // The first exception of a program may keep some handles.
  static void SetUpTestSuite() {
    EXPECT_NE(LeavesWith([] { CFileException::ThrowOsError(ERROR_CRC); }), Left());
  }

  const test::TempFolder folder;
  const std::wstring source = folder.File(L"source.bin", kBytes);
  const std::wstring other = folder.File(L"other.bin", kBytes);
  const std::wstring target = folder / L"target.bin";
  const HMODULE self = ::GetModuleHandleW(nullptr);
};

TEST_F(Leaving, CopyThatFailsClosesBothFiles) {
  const struct {
    char kind;
    int nth;
    Answer answer;
    Left left;
    std::size_t written;
  } cases[] = {
      {'R', 1, {Answer::kFail, ERROR_CRC}, {ERROR_CRC, CFileException::hardIO}, 0},
      {'R',
       3,
       {Answer::kFail, ERROR_LOCK_VIOLATION},
       {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
       8192},
      {'R', 4, {Answer::kFail, ERROR_CRC}, {ERROR_CRC, CFileException::hardIO}, 10000},
      {'W', 1, {Answer::kFail, ERROR_DISK_FULL}, {ERROR_DISK_FULL, CFileException::diskFull}, 0},
      {'W', 2, {Answer::kPretend}, {-1, CFileException::diskFull}, 4096},  // fewer bytes than asked for
      {'C', 1, {Answer::kDoFail, ERROR_IO_DEVICE}, {ERROR_IO_DEVICE, CFileException::hardIO}, 10000},
  };
  for (const auto& one : cases) {
    const DWORD handles = test::OpenHandles();
    {
      const CallLog log(FailAt(one.kind, one.nth, one.answer), self);
      EXPECT_EQ(LeavesWith([&] { file::Copy(source.c_str(), target.c_str()); }), one.left);
      EXPECT_EQ(log.Sequence("C"), "CC") << one.kind << one.nth;
    }
    EXPECT_EQ(test::OpenHandles(), handles);
    EXPECT_EQ(test::ReadBytes(target).size(), one.written) << "a partly written target stays";
  }
}

TEST_F(Leaving, CompareThatFailsClosesBothFiles) {
  for (const int nth : {1, 2, 3, 4, 7, 8}) {
    const DWORD handles = test::OpenHandles();
    {
      const CallLog log(FailAt('R', nth, {Answer::kFail, ERROR_CRC}), self);
      EXPECT_EQ(LeavesWith([&] { file::Compare(source.c_str(), other.c_str()); }),
                (Left{ERROR_CRC, CFileException::hardIO}));
      EXPECT_EQ(log.Sequence("C"), "CC");
    }
    EXPECT_EQ(test::OpenHandles(), handles);
  }
}

TEST_F(Leaving, NothingElse) {
  // Each of these calls fails in turn; none of the other operations lets an exception out.
  unsigned char buffer[16];
  unsigned long long count;
  long long time;
  for (const char kind : {'?', 'F', 'N', 'D', 'M', 'O', 'R', 'W', 'C'}) {
    const CallLog log(
        [=](const Call& call) {
          return call.kind == kind ? Answer{kind == 'C' ? Answer::kDoFail : Answer::kFail} : Answer();
        },
        self);
    EXPECT_EQ(LeavesWith([&] {
                file::Exist(source.c_str());
                file::GetSize(source.c_str());
                file::WaitForFile(source.c_str(), 20);
                file::GetTimeModified(source.c_str(), &time);
                file::Create(target.c_str());
                file::ToBuffer(source.c_str(), buffer, sizeof buffer, &count);
                file::FromBuffer(target.c_str(), buffer, sizeof buffer);
                file::Rename(target.c_str(), other.c_str());
                file::Delete(target.c_str());
                file::Delete(other.c_str());
              }),
              Left())
        << kind;
    file::FromBuffer(other.c_str(), buffer, sizeof buffer);
  }
}

__time64_t FailingTime(struct tm*) {
  return -1;
}

TEST_F(Leaving, TimeThatTheRuntimeCannotConvert) {
  const test::ImportHook hook("_mktime64", &FailingTime, self);
  long long time = 42;
  SCODE code = S_OK;
  try {
    file::GetTimeModified(L"X:\\tmp\\missing", &time);
  } catch (COleException* exception) {
    code = exception->m_sc;
    exception->Delete();
  }
  EXPECT_EQ(code, E_INVALIDARG);
  EXPECT_EQ(time, 42);
  EXPECT_EQ(file::GetTimeModified(source.c_str(), &time), 1) << "only the stand-in needs the conversion";
}

// Gives a text in pieces of any length up to what is asked for.
class Pieces {
 public:
  Pieces(const std::string& bytes, unsigned seed) : bytes_(bytes), random_(seed) {}
  unsigned operator()(unsigned char* block, unsigned most) {
    const std::size_t rest = bytes_.size() - at_;
    std::size_t count = rest < most ? rest : most;
    if (count > 0) count = 1 + random_() % count;
    std::memcpy(block, bytes_.data() + at_, count);
    at_ += count;
    return static_cast<unsigned>(count);
  }

 private:
  const std::string& bytes_;
  std::size_t at_ = 0;
  std::mt19937 random_;
};

TEST(Blocks, ShortReadsAreCopiedAsTheyCome) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    std::string bytes(seed * 397, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 + seed);
    std::string copy;
    file::CopyBlocks(Pieces(bytes, seed), [&](const unsigned char* block, unsigned count) {
      copy.append(reinterpret_cast<const char*>(block), count);
    });
    EXPECT_EQ(copy, bytes);
  }
}

TEST(Blocks, DifferentCountsDiffer) {
  const std::string bytes(20000, 'x');
  int reads = 0;
  const auto five = [&](unsigned char* block, unsigned) {
    std::memset(block, 'x', 5);
    return ++reads, 5u;
  };
  const auto six = [&](unsigned char* block, unsigned) {
    std::memset(block, 'x', 6);
    return ++reads, 6u;
  };
  EXPECT_FALSE(file::SameBlocks(five, six));
  EXPECT_EQ(reads, 2);
  EXPECT_TRUE(file::SameBlocks(Pieces(bytes, 3), Pieces(bytes, 3)));
}

TEST(Occurring, AgreesWithSearchingFoldedTexts) {
  const auto fold = [](const char* from, char* to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) to[i] = static_cast<char>(std::toupper(from[i]));
  };
  std::mt19937 random(1);
  const auto text = [&](std::size_t most) {
    std::string made(random() % (most + 1), 'a');
    for (char& one : made) one = "aAbB."[random() % 5];
    return made;
  };
  int found = 0;
  for (int round = 0; round < 20000; ++round) {
    const std::string needle = text(3);
    const std::string within = text(12);
    std::string upperNeedle = needle, upperWithin = within;
    fold(needle.data(), upperNeedle.data(), needle.size());
    fold(within.data(), upperWithin.data(), within.size());
    const bool expected = upperWithin.find(upperNeedle) != std::string::npos;
    found += expected;
    EXPECT_EQ(file::OccursIgnoringCase<char>(needle, within, fold), expected) << needle << " in " << within;
  }
  EXPECT_GT(found, 1000);
  EXPECT_LT(found, 19000);
}

}  // namespace
