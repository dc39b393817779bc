// SPDX-License-Identifier: MIT
// Posting messages to threads.
#include <gtest/gtest.h>

#include <ZERATools.h>

#include <cstring>
#include <functional>
#include <vector>

#include "support/ImportHook.h"
#include "support/Library.h"

namespace {

const auto Post = test::Export<decltype(ZERA_TOOLS_POSTTHREADMESSAGE)>(92);

constexpr UINT kMessage = WM_APP + 5;
constexpr WPARAM kFirst = 0x1122334455667788;
constexpr LPARAM kSecond = -9;

// A thread of the test that gets its message queue when it is told to.
class Receiver {
 public:
  Receiver() { thread_ = ::CreateThread(nullptr, 0, &Run, this, 0, &id_); }
  ~Receiver() {
    ::SetEvent(listen_);
    ::SetEvent(stop_);
    ::WaitForSingleObject(thread_, 10000);
    for (const HANDLE handle : {thread_, listen_, listening_, stop_}) ::CloseHandle(handle);
  }

  DWORD id() const { return id_; }
  /// Makes the thread's message queue.
  void Listen() {
    ::SetEvent(listen_);
    ::WaitForSingleObject(listening_, 10000);
  }
  /// Ends the thread; gives the messages that it had.
  const std::vector<MSG>& Messages() {
    ::SetEvent(listen_);
    ::SetEvent(stop_);
    ::WaitForSingleObject(thread_, 10000);
    return messages_;
  }

 private:
  static DWORD WINAPI Run(void* self) {
    static_cast<Receiver*>(self)->Receive();
    return 0;
  }
  void Receive() {
    ::WaitForSingleObject(listen_, INFINITE);
    MSG message;
    ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    ::SetEvent(listening_);
    ::WaitForSingleObject(stop_, INFINITE);
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) messages_.push_back(message);
  }

  HANDLE listen_ = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE listening_ = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE stop_ = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::vector<MSG> messages_;
  DWORD id_ = 0;
  HANDLE thread_ = nullptr;
};

int posts;
std::vector<DWORD> sleeps;
std::function<void()> whileSleeping;

// Counts the library's attempts, and lets no time pass.
class PostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    posts = 0;
    sleeps.clear();
    whileSleeping = nullptr;
  }

  test::ImportHook post_{"PostThreadMessageW",
                         +[](DWORD id, UINT message, WPARAM first, LPARAM second) -> BOOL {
                           ++posts;
                           return ::PostThreadMessageW(id, message, first, second);
                         }};
  test::ImportHook sleep_{"Sleep", +[](DWORD milliseconds) {
                            sleeps.push_back(milliseconds);
                            if (whileSleeping) whileSleeping();
                          }};
};

// A host's thread object: what stands around the identifier is none of the library's business.
struct HostThread {
  explicit HostThread(DWORD id) {
    std::memset(bytes, 0xCD, sizeof bytes);
    std::memcpy(bytes + 96, &id, sizeof id);
  }
  CWinThread* object() { return reinterpret_cast<CWinThread*>(bytes); }
  alignas(16) unsigned char bytes[320];
};

TEST_F(PostTest, NoThreadObjectPostsNothing) {
  EXPECT_EQ(Post(nullptr, kMessage, kFirst, kSecond), 0);
  EXPECT_EQ(posts, 0);
  EXPECT_TRUE(sleeps.empty());
}

TEST_F(PostTest, ThreadWithAQueueGetsTheMessageAtOnce) {
  Receiver receiver;
  receiver.Listen();
  HostThread thread(receiver.id());
  EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 1);
  EXPECT_EQ(posts, 1);
  EXPECT_TRUE(sleeps.empty());
  const std::vector<MSG>& messages = receiver.Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0].hwnd, nullptr);
  EXPECT_EQ(messages[0].message, kMessage);
  EXPECT_EQ(messages[0].wParam, kFirst);
  EXPECT_EQ(messages[0].lParam, kSecond);
}

TEST_F(PostTest, ThreadWithoutAQueueIsTried201Times) {
  const Receiver receiver;
  HostThread thread(receiver.id());
  EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 0);
  EXPECT_EQ(posts, 201);
  EXPECT_EQ(sleeps, std::vector<DWORD>(201, 10));
}

TEST_F(PostTest, ThreadThatDoesNotExistIsTried201Times) {
  HostThread thread(0xFFFFFFF0);
  EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 0);
  EXPECT_EQ(posts, 201);
  EXPECT_EQ(sleeps, std::vector<DWORD>(201, 10));
}

TEST_F(PostTest, QueueThatComesLateIsReached) {
  for (const std::size_t when : {1u, 3u, 200u}) {
    SetUp();
    Receiver receiver;
    HostThread thread(receiver.id());
    whileSleeping = [&] {
      if (sleeps.size() == when) receiver.Listen();
    };
    EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 1);
    EXPECT_EQ(posts, static_cast<int>(when) + 1);
    EXPECT_EQ(sleeps.size(), when);
    EXPECT_EQ(receiver.Messages().size(), 1u);
  }
}

// A thread object may delete itself meanwhile.
TEST_F(PostTest, ThreadObjectIsReadOnce) {
  Receiver receiver;
  HostThread thread(receiver.id());
  whileSleeping = [&] {
    std::memset(thread.bytes, 0xDD, sizeof thread.bytes);
    receiver.Listen();
  };
  EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 1);
  EXPECT_EQ(posts, 2);
  EXPECT_EQ(receiver.Messages().size(), 1u);
}

TEST_F(PostTest, QueueThatComesWithTheLastSleepIsTooLate) {
  Receiver receiver;
  HostThread thread(receiver.id());
  whileSleeping = [&] {
    if (sleeps.size() == 201) receiver.Listen();
  };
  EXPECT_EQ(Post(thread.object(), kMessage, kFirst, kSecond), 0);
  EXPECT_EQ(posts, 201);
  EXPECT_TRUE(receiver.Messages().empty());
}

TEST(Post, GivesUpAfterTwoSeconds) {
  const Receiver receiver;
  HostThread thread(receiver.id());
  const ULONGLONG start = ::GetTickCount64();
  EXPECT_EQ(Post(thread.object(), kMessage, 0, 0), 0);
  EXPECT_GE(::GetTickCount64() - start, 1900u);
}

}  // namespace
