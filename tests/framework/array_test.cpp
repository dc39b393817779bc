// SPDX-License-Identifier: MIT
// Byte arrays whose storage may be a host's.
#include <afxtempl.h>
#include <gtest/gtest.h>

#include "support/ImportHook.h"

namespace {

using ByteArray = CArray<BYTE, const BYTE&>;

// The fields as a host sees them.
struct Fields {
  void* table;
  BYTE* data;
  INT_PTR size, room, growBy;
};
Fields& FieldsOf(ByteArray& array) {
  return reinterpret_cast<Fields&>(array);
}

// The C++ runtime of this program reallocates as well when an exception is on its way.
decltype(&std::realloc) platformRealloc = nullptr;
void* __cdecl NotAThousand(void* old, std::size_t size) {
  return size == 1000 ? nullptr : platformRealloc(old, size);
}

TEST(Array, NewElementsAreZero) {
  ByteArray array;
  array.SetSize(3);
  array[0] = array[1] = array[2] = 7;
  array.SetSize(1);
  array.SetSize(5);
  EXPECT_EQ(array.GetSize(), 5);
  EXPECT_EQ(array[0], 7);
  for (int at = 1; at < 5; ++at) EXPECT_EQ(array[at], 0) << at;
}

TEST(Array, RoomThatIsThereIsUsed) {
  ByteArray array;
  FieldsOf(array) = {FieldsOf(array).table, static_cast<BYTE*>(std::malloc(100)), 10, 100, 5};
  BYTE* const storage = FieldsOf(array).data;
  array.SetSize(100);
  EXPECT_EQ(FieldsOf(array).data, storage);
  EXPECT_EQ(FieldsOf(array).room, 100);
  array.SetSize(101);
  EXPECT_EQ(array.GetSize(), 101);
  EXPECT_GE(FieldsOf(array).room, 101);
  EXPECT_EQ(FieldsOf(array).growBy, 5);
}

TEST(Array, SizeZeroGivesTheStorageBack) {
  ByteArray array;
  array.SetSize(10, 3);
  array.SetSize(0);
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetData(), nullptr);
  EXPECT_EQ(FieldsOf(array).room, 0);
  EXPECT_EQ(FieldsOf(array).growBy, 3);
}

TEST(Array, GrowthIsKeptUnlessItIsSaid) {
  ByteArray array;
  array.SetSize(1, 7);
  array.SetSize(2);
  EXPECT_EQ(FieldsOf(array).growBy, 7);
  array.SetSize(3, 0);
  EXPECT_EQ(FieldsOf(array).growBy, 0);
  EXPECT_EQ(array.GetCount(), 3);
}

TEST(Array, NegativeSizeGivesTheStorageBack) {
  ByteArray array;
  array.SetSize(10);
  array.SetSize(-1);
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetData(), nullptr);
  EXPECT_EQ(FieldsOf(array).room, 0);
}

TEST(Array, AddingGrowsAndMayTakeItsOwnElement) {
  ByteArray array;
  for (int i = 0; i < 1'000; ++i) EXPECT_EQ(array.Add(static_cast<BYTE>(i)), i);
  while (FieldsOf(array).size < FieldsOf(array).room) array.Add(array[1]);
  array.Add(array[255]);
  EXPECT_EQ(array[array.GetSize() - 1], 255);
  for (int i = 0; i < 1'000; ++i) EXPECT_EQ(array[i], static_cast<BYTE>(i));
}

TEST(Array, WithoutMemoryTheArrayIsAsItWas) {
  ByteArray array;
  array.SetSize(4);
  array[3] = 9;
  platformRealloc = reinterpret_cast<decltype(&std::realloc)>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ucrtbase.dll"), "realloc")));
  ASSERT_NE(platformRealloc, nullptr);
  const test::ImportHook hook("realloc", &NotAThousand, ::GetModuleHandleW(nullptr));
  int raised = 0;
  for (const INT_PTR size : {INT_PTR{1000}, INT_PTR{1} << 62}) {
    try {
      array.SetSize(size);
    } catch (CMemoryException* exception) {
      exception->Delete();
      ++raised;
    }
  }
  EXPECT_EQ(raised, 2);
  EXPECT_EQ(array.GetSize(), 4);
  EXPECT_EQ(array[3], 9);
}

}  // namespace
