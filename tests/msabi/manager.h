// SPDX-License-Identifier: MIT
// manager.h: the host's own string managers, which count what the library does with them.
#pragma once

#include "framework.h"
#include "support.h"

namespace host {

/// Buffers from the host's heap.
template <class Char>
class CountingManager : public IAtlStringMgr {
 public:
  CountingManager() { memset(nil_.text, 0, sizeof nil_.text); }

  CStringData* Allocate(int chars, int charSize) override {
    CHECK_EQUAL(charSize, sizeof(Char));
    if (refuse) return nullptr;
    auto* const data = static_cast<CStringData*>(malloc(Bytes(chars)));
    *data = {this, 0, chars, 1};
    ++allocated;
    ++outstanding;
    return data;
  }
  void Free(CStringData* data) override {
    CHECK(data != &nil_.header);
    CHECK(data->pStringMgr == this);
    CHECK(data->nRefs <= 0);
    --outstanding;
    free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) override {
    CHECK_EQUAL(charSize, sizeof(Char));
    CHECK(data != &nil_.header);
    CHECK_EQUAL(data->nRefs, 1);
    if (refuse) return nullptr;
    CStringData* const larger = Allocate(chars, charSize);
    CopyText(larger, data);
    data->nRefs = 0;
    Free(data);
    ++reallocated;
    return larger;
  }
  CStringData* GetNilString() override {
    ++nil_.header.nRefs;
    return &nil_.header;
  }
  IAtlStringMgr* Clone() override { return this; }

  /// The empty string is never written to, and each reference that was taken came back but `strings`.
  void CheckNil(int strings) {
    CHECK(nil_.header.pStringMgr == this);
    CHECK_EQUAL(nil_.header.nDataLength, 0);
    CHECK_EQUAL(nil_.header.nAllocLength, 0);
    CHECK_EQUAL(nil_.header.nRefs, 2 + strings);
    CHECK_EQUAL(nil_.text[0], 0);
    CHECK_EQUAL(nil_.text[1], 0);
  }

  static void CopyText(CStringData* to, const CStringData* from) {
    to->nDataLength = from->nDataLength;
    memcpy(to + 1, from + 1, (static_cast<size_t>(from->nDataLength) + 1) * sizeof(Char));
  }

  bool refuse = false;
  int allocated = 0;
  int reallocated = 0;
  int outstanding = 0;

 private:
  static size_t Bytes(int chars) {
    return sizeof(CStringData) + (static_cast<size_t>(chars) + 1) * sizeof(Char);
  }

  struct {
    CStringData header;
    Char text[2];
  } nil_ = {{this, 0, 0, 2}, {}};
};

/// A buffer of the string object's own, as the framework's fixed-size string class has it: the manager
/// gives it out as the empty string, locked and with its whole room. What outgrows it goes to the heap.
template <class Char, int Room>
class FixedManager : public IAtlStringMgr {
 public:
  explicit FixedManager(CountingManager<Char>& heap) : heap_(heap) {
    memset(fixed_.text, 0, sizeof fixed_.text);
  }

  CStringData* Allocate(int chars, int charSize) override {
    CStringData* const data = heap_.Allocate(chars, charSize);
    if (data) data->pStringMgr = this;
    return data;
  }
  void Free(CStringData* data) override {
    if (data == &fixed_.header) return;
    data->pStringMgr = &heap_;
    heap_.Free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) override {
    CStringData* const larger = Allocate(chars, charSize);
    if (!larger) return nullptr;
    heap_.CopyText(larger, data);
    Free(data);
    return larger;
  }
  CStringData* GetNilString() override {
    fixed_.header = {this, 0, Room, -1};
    fixed_.text[0] = 0;
    return &fixed_.header;
  }
  IAtlStringMgr* Clone() override { return &heap_; }

  bool Holds(const Char* text) const { return text == fixed_.text; }
  /// Whether what stands behind the room is as it was.
  bool Intact() const { return fixed_.text[Room + 1] == 0 && fixed_.text[Room + 2] == 0; }

 private:
  CountingManager<Char>& heap_;
  struct {
    CStringData header;
    Char text[Room + 3];
  } fixed_;
};

template <class Char>
HostString<Char> StringOf(CStringData* data) {
  return {reinterpret_cast<Char*>(data + 1)};
}

/// A string with room for `room` characters that holds a text.
template <class Char>
HostString<Char> NewString(IAtlStringMgr& manager, const Char* text, int room) {
  CStringData* const data = manager.Allocate(room, sizeof(Char));
  int length = 0;
  while (text[length]) ++length;
  data->nDataLength = length;
  memcpy(data + 1, text, (static_cast<size_t>(length) + 1) * sizeof(Char));
  return StringOf<Char>(data);
}

/// What the destructor of a string object does.
template <class Char>
void Release(HostString<Char> string) {
  CStringData& data = string.data();
  if (--data.nRefs <= 0) data.pStringMgr->Free(&data);
}

/// A string that the host releases whatever happens, as its string class does.
template <class Char>
class Owned {
 public:
  explicit Owned(HostString<Char> string) : string_(string) {}
  Owned(const Owned&) = delete;
  ~Owned() { Release(string_); }
  operator const HostString<Char>&() const { return string_; }
  const HostString<Char>* operator->() const { return &string_; }

 private:
  HostString<Char> string_;
};

}  // namespace host
