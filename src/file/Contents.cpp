// SPDX-License-Identifier: MIT
#include "Contents.h"

#include <afx.h>

#include <cwchar>

#include "Blocks.h"
#include "Files.h"
#include "Storage.h"

namespace file {
namespace {

constexpr UINT kRead = CFile::modeRead | CFile::shareDenyWrite;
constexpr UINT kWriteAlone = CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive;
constexpr UINT kWrite = CFile::modeCreate | CFile::modeWrite;
static_assert(kRead == 0x20 && kWriteAlone == 0x1011 && kWrite == 0x1001);

bool SameText(const wchar_t* first, const wchar_t* second) {
  return first == second || (first && second && std::wcscmp(first, second) == 0);
}

auto Reader(CFile& from) {
  return [&from](void* block, unsigned int most) { return from.Read(block, most); };
}

// Runs a transfer; a file exception counts as a failed one.
template <class Transfer>
bool Succeeds(Transfer transfer) {
  try {
    transfer();
    return true;
  } catch (CFileException* exception) {
    exception->Delete();
    return false;
  }
}

}  // namespace

int Copy(const wchar_t* source, const wchar_t* target) {
  if (SameText(source, target)) return 1;
  CFile from;
  if (!from.Open(source, kRead)) return 0;
  CFile to;
  // The write check makes missing folders, after which the target may be opened.
  if (!to.Open(target, kWriteAlone) && !(CheckWrite(target) && to.Open(target, kWriteAlone))) return 0;
  CopyBlocks(Reader(from), [&to](const void* block, unsigned int count) { to.Write(block, count); });
  to.Close();
  return 1;
}

bool CopySucceeds(const wchar_t* source, const wchar_t* target) {
  bool copied = false;
  return Succeeds([&] { copied = Copy(source, target) != 0; }) && copied;
}

int Compare(const wchar_t* first, const wchar_t* second) {
  if (SameText(first, second)) return 1;
  if (GetSize(first) != GetSize(second)) return 0;
  CFile one;
  CFile other;
  if (!one.Open(first, kRead) || !other.Open(second, kRead)) return 0;
  return SameBlocks(Reader(one), Reader(other));
}

int Create(const wchar_t* path) {
  if (Exist(path)) return 1;
  CFile made;
  return made.Open(path, kWrite);
}

int ToBuffer(const wchar_t* path, unsigned char* buffer, unsigned long long capacity,
             unsigned long long* count) {
  const unsigned int size = GetSize(path);
  if (size == 0 || size > capacity) return 0;
  CFile from;
  if (!from.Open(path, kRead)) return 0;
  unsigned int read = 0;
  Succeeds([&] { read = from.Read(buffer, size); });
  from.Abort();
  if (count) *count = read;
  return read == size;
}

int FromBuffer(const wchar_t* path, const unsigned char* buffer, unsigned long long count) {
  CFile to;
  if (!to.Open(path, kWrite)) return 0;
  // KEPT FOR HOSTS: one write request, whose count has 32 bits; 4 GiB and more are taken modulo 4 GiB.
  // Closing may be what tells of a failed write, on network drives for example.
  return Succeeds([&] {
    to.Write(buffer, static_cast<unsigned int>(count));
    to.Close();
  });
}

}  // namespace file
