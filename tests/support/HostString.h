// SPDX-License-Identifier: MIT
// HostString.h: a string object whose buffer belongs to a manager of the test, as a host's does.
#pragma once

#include <ZERATools.h>

#include <string>

namespace test {

/// A host's string manager that counts what it is asked for.
class CountingManager : public IAtlStringMgr {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    if (failing) return nullptr;
    ++allocations;
    lastChars = chars;
    auto* const data = static_cast<CStringData*>(
        std::malloc(sizeof(CStringData) + (static_cast<std::size_t>(chars) + 1) * charSize));
    *data = {this, 0, chars, 1};
    ++outstanding;
    return data;
  }
  void Free(CStringData* data) noexcept override {
    if (data == &nil_.header) {
      ++nilFreed;
      return;
    }
    --outstanding;
    std::free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    if (failing) return nullptr;
    ++reallocations;
    lastChars = chars;
    auto* const larger = static_cast<CStringData*>(
        std::realloc(data, sizeof(CStringData) + (static_cast<std::size_t>(chars) + 1) * charSize));
    larger->nAllocLength = chars;
    return larger;
  }
  CStringData* GetNilString() noexcept override {
    nil_.header.AddRef();
    return &nil_.header;
  }
  IAtlStringMgr* Clone() noexcept override { return this; }

  /// Whether the empty string is as it was.
  bool NilIntact() const {
    return nilFreed == 0 && nil_.header.nDataLength == 0 && nil_.header.nRefs >= 2 && nil_.terminator[0] == 0;
  }

  bool failing = false;
  int allocations = 0;
  int reallocations = 0;
  int lastChars = -1;
  int outstanding = 0;
  int nilFreed = 0;

 private:
  struct {
    CStringData header;
    wchar_t terminator[2];
  } nil_ = {{this, 0, 0, 2}, {}};
};

/// A host's string with a buffer of its own for short texts: handed out as the empty string, locked,
/// with its whole capacity.
template <class Char, int kCapacity>
class FixedManager final : public CountingManager {
 public:
  FixedManager() { fixed_.header = {this, 0, kCapacity, -1}; }
  CStringData* Allocate(int chars, int charSize) noexcept override {
    return chars <= kCapacity ? &fixed_.header : CountingManager::Allocate(chars, charSize);
  }
  void Free(CStringData* data) noexcept override {
    if (data != &fixed_.header) CountingManager::Free(data);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    if (data != &fixed_.header) return CountingManager::Reallocate(data, chars, charSize);
    CStringData* const larger = CountingManager::Allocate(chars, charSize);
    if (larger) {
      larger->nDataLength = data->nDataLength;
      std::memcpy(larger->data(), data->data(), (static_cast<std::size_t>(data->nDataLength) + 1) * charSize);
    }
    return larger;
  }
  CStringData* GetNilString() noexcept override { return &fixed_.header; }

  const Char* text() const { return fixed_.text; }

 private:
  struct {
    CStringData header;
    Char text[kCapacity + 1];
  } fixed_ = {};
};

/// A string object on a manager; the object itself is what a host passes by reference.
template <class Char>
class HostString {
 public:
  explicit HostString(IAtlStringMgr& manager, const Char* text = nullptr)
      : text_(static_cast<Char*>(manager.GetNilString()->data())) {
    if (text) object().SetString(text);
  }
  HostString(const HostString&) = delete;
  HostString& operator=(const HostString&) = delete;
  // A locked buffer is its manager's.
  ~HostString() {
    if (!header()->IsLocked()) header()->Release();
  }

  CStringT<Char>& object() { return reinterpret_cast<CStringT<Char>&>(text_); }
  CStringData* header() { return reinterpret_cast<CStringData*>(text_) - 1; }
  /// All characters of the text, NULs among them.
  std::basic_string<Char> text() const {
    return {text_, static_cast<std::size_t>((reinterpret_cast<const CStringData*>(text_) - 1)->nDataLength)};
  }

 private:
  Char* text_;
};

}  // namespace test
