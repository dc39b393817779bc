// SPDX-License-Identifier: MIT
// Files and directories through the layer.
#include <gtest/gtest.h>

#include <ZERATools/zera.hpp>

#include <atomic>
#include <chrono>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace {

using namespace zera;  // NOLINT: as a host might
using namespace std::chrono_literals;

const std::byte kBytes[] = {std::byte{1}, std::byte{0}, std::byte{255}};
const std::vector<unsigned char> kSame = {1, 0, 255};

class ZeraFile : public ::testing::Test {
 protected:
  const test::TempFolder folder;
  const std::wstring wide = folder / L"one.bin";
  const std::wstring other = folder / L"two.bin";
  const std::string narrow = test::Ansi(wide);
  const std::string narrowOther = test::Ansi(other);
};

TEST_F(ZeraFile, WritesReadsAndMeasures) {
  EXPECT_FALSE(file::exists(wide));
  EXPECT_FALSE(file::read(wide));
  EXPECT_FALSE(file::modified(wide));
  EXPECT_TRUE(file::write(wide, {kBytes, sizeof kBytes}));
  EXPECT_EQ(kSame, file::read(wide));
  EXPECT_EQ(kSame, file::read(narrow));
  EXPECT_TRUE(file::write(wide, "a text"));
  EXPECT_EQ("a text", test::ReadBytes(wide));
  EXPECT_TRUE(file::write(wide, kSame));
  EXPECT_EQ(kSame, file::read(narrow));
  EXPECT_TRUE(file::write(narrow, std::span(kBytes).first(2)));
  EXPECT_EQ(2u, file::size(wide));
  EXPECT_EQ(2u, file::size(narrow));
  EXPECT_TRUE(file::exists(narrow));
  EXPECT_TRUE(file::has_extension(wide, L"BIN"));
  EXPECT_TRUE(file::has_extension(narrow, "BIN"));
  EXPECT_TRUE(file::wait_for(wide, 1s));
  EXPECT_TRUE(file::wait_for(narrow, 1s));
  const auto age = std::chrono::system_clock::now() - file::modified(wide).value();
  EXPECT_LT(age, 1h);
  EXPECT_GT(age, -1min);
  EXPECT_EQ(file::modified(wide), file::modified(narrow));
}

TEST_F(ZeraFile, ReadsIntoTheCallersRoom) {
  ASSERT_TRUE(file::write(wide, kSame));
  std::byte room[8] = {};
  const auto read = file::read(wide, std::span(room));
  ASSERT_TRUE(read);
  EXPECT_EQ(&room[0], read->data());
  EXPECT_EQ(sizeof kBytes, read->size());
  EXPECT_EQ(std::byte{255}, (*read)[2]);
  EXPECT_EQ(3u, file::read(narrow, std::span(room)).value().size());
  EXPECT_FALSE(file::read(wide, std::span(room).first(2))) << "larger than the room";
  EXPECT_FALSE(file::read(other, std::span(room)));
}

TEST_F(ZeraFile, CopiesComparesRenamesRemoves) {
  EXPECT_TRUE(file::create(wide));
  EXPECT_TRUE(file::create(narrow));
  EXPECT_FALSE(file::read(wide)) << "an empty file cannot be read so";
  ASSERT_TRUE(file::write(wide, kSame));
  EXPECT_TRUE(file::copy(wide, other));
  EXPECT_TRUE(file::copy(narrow, narrowOther));
  EXPECT_TRUE(file::equal(wide, other));
  EXPECT_TRUE(file::equal(narrow, narrowOther));
  EXPECT_TRUE(file::remove(other));
  EXPECT_FALSE(file::equal(wide, other));
  EXPECT_TRUE(file::rename(wide, other));
  EXPECT_TRUE(file::rename(narrowOther, narrow));
  EXPECT_TRUE(file::exists(wide));
  EXPECT_TRUE(file::remove(narrow));
  EXPECT_FALSE(file::exists(wide));
}

TEST_F(ZeraFile, AsksForStorage) {
  EXPECT_TRUE(file::can_write(folder / L"new\\deeper\\run.ini"));
  EXPECT_TRUE(file::can_write(narrow));
  EXPECT_TRUE(file::exists(folder / L"new\\deeper"));
  EXPECT_GT(file::free_gigabytes(L'C'), 0.0f);
  EXPECT_GT(file::free_gigabytes('C'), 0.0f);
  wchar_t library[MAX_PATH];
  ::GetModuleFileNameW(::GetModuleHandleW(L"ZERATools.dll"), library, MAX_PATH);
  EXPECT_EQ(L"" ZERATOOLS_VERSION_STRING ".0", file::version(library));
  EXPECT_EQ(ZERATOOLS_VERSION_STRING ".0", file::version(test::Ansi(library)));
  EXPECT_FALSE(file::version(wide));
}

TEST_F(ZeraFile, WorksOnWholeDirectories) {
  folder.Folder(L"tree");
  folder.File(L"tree\\a.log", "a");
  folder.File(L"tree\\b.txt", "b");
  const std::wstring tree = folder / L"tree\\";
  const std::string narrowTree = test::Ansi(tree);
  EXPECT_TRUE(directory::copy(tree, folder / L"copy\\"));
  EXPECT_TRUE(directory::copy(narrowTree, test::Ansi(folder / L"copy\\"), directory::existing::overwrite));
  EXPECT_EQ("a", test::ReadBytes(folder / L"copy\\a.log"));
  EXPECT_TRUE(directory::remove_older(tree, L".LOG", 24h)) << "too young";
  EXPECT_TRUE(directory::remove_older(narrowTree, ".LOG", 24h));
  std::atomic<int> stop = 0;
  EXPECT_TRUE(directory::remove_older(tree, L".LOG", 24h, stop));
  std::stop_source source;
  EXPECT_TRUE(directory::remove_older(tree, L".LOG", 24h, source.get_token()));
  EXPECT_TRUE(file::exists(tree + L"a.log"));
  EXPECT_TRUE(directory::remove_files(tree, L"*.log"));
  EXPECT_FALSE(file::exists(tree + L"a.log"));
  EXPECT_TRUE(directory::remove_files(narrowTree, ".txt"));
  EXPECT_FALSE(file::exists(tree + L"b.txt"));
  EXPECT_FALSE(directory::remove_files(L"", L"*.*")) << "refused as the export refuses it";
}

// An hour's age is nothing beside a file from the last century.
TEST_F(ZeraFile, AStopEndsAWalkBeforeItsFirstEntry) {
  folder.Folder(L"tree");
  const std::wstring old = folder.File(L"tree\\old.log", "a");
  const FILETIME time = {0, 0x01A00000};
  const HANDLE handle =
      ::CreateFileW(old.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_TRUE(::SetFileTime(handle, &time, nullptr, &time));
  ::CloseHandle(handle);
  std::stop_source source;
  source.request_stop();
  EXPECT_TRUE(directory::remove_older(folder / L"tree\\", L".LOG", 1h, source.get_token()));
  std::atomic<int> stop = 1;
  EXPECT_TRUE(directory::remove_older(folder / L"tree\\", L".LOG", 1h, stop));
  EXPECT_TRUE(file::exists(old));
  EXPECT_TRUE(directory::remove_older(folder / L"tree\\", L".LOG", 1h));
  EXPECT_FALSE(file::exists(old));
}

}  // namespace
