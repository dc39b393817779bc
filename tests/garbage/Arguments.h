// SPDX-License-Identifier: MIT
// Arguments.h: the arguments of one random call, in memory whose surroundings are watched.
#pragma once

#include <ZERATools.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Fence.h"
#include "FencedManager.h"
#include "Garbage.h"
#include "support/HostString.h"
#include "support/Shown.h"

namespace garbage {

using ByteArray = CArray<BYTE, const BYTE&>;

/// A result buffer.
template <class Char>
struct Room {
  Char* data;
  std::size_t capacity;

  operator Char*() const { return data; }
  bool Terminated() const {
    return capacity == 0 || std::find(data, data + capacity, Char(0)) != data + capacity;
  }
};

/// An array whose bytes lie in fenced memory, for arguments that are only read.
class FencedBytes final : public ByteArray {
 public:
  FencedBytes(BYTE* data, INT_PTR size) {
    m_pData = data;
    m_nSize = m_nMaxSize = size;
  }
  ~FencedBytes() override { m_pData = nullptr; }
};

/// Makes arguments and keeps them until the call was judged, also when an exception cut it off.
class Arguments {
 public:
  Arguments(unsigned seed, unsigned call, std::wstring scratch)
      : random(seed, call), scratch_(std::move(scratch)) {}

  Garbage random;

  /// A folder that calls may change as they like.
  const std::wstring& scratch() const { return scratch_; }

  template <class Char>
  Char* Text(const std::basic_string<Char>& text) {
    Tell(test::Shown(text));
    return Copy(text, AnySide());
  }
  template <class Char>
  Char* Text() {
    return Text(random.Text<Char>());
  }
  /// Sometimes null.
  template <class Char>
  Char* TextOrNull() {
    return random.Chance(16) ? Null<Char>() : Text<Char>();
  }

  /// A path for the platform. Wine itself looks at the first eight units whatever the length, so a shorter
  /// UTF-16 text has the fence in front of it.
  template <class Char>
  Char* PathOrNull(std::basic_string<Char> path) {
    if (random.Chance(32)) return Null<Char>();
    Tell(test::Shown(path));
    constexpr std::size_t kLooked = 8;
    if (sizeof(Char) == 1 || path.size() >= kLooked) return Copy(path, AnySide());
    path.append(kLooked, Char(0));
    return Copy(path, Fence::Side::kBegin);
  }
  /// One that the call asks about. `devices`: it may name one; the call does not open it.
  template <class Char>
  Char* AnyPath(bool devices = true) {
    return PathOrNull(random.Path<Char>(devices));
  }
  /// One that the call may change: inside the folder.
  template <class Char>
  Char* OwnPath() {
    return PathOrNull(random.Inside<Char>(scratch_));
  }

  template <class Char>
  garbage::Room<Char> Room(std::size_t least = 0) {
    const std::size_t capacity = least + random.Length();
    Tell("room for " + std::to_string(capacity));
    return {reinterpret_cast<Char*>(NewFence(capacity * sizeof(Char), AnySide())), capacity};
  }

  /// A host's string, whose buffer is fenced.
  template <class Char>
  CStringT<Char>& String(const std::basic_string<Char>& text) {
    Tell("string " + test::Shown(text));
    auto string = std::make_shared<test::HostString<Char>>(manager_);
    string->object().SetString(text.data(), static_cast<int>(text.size()));
    owned_.push_back(string);
    return string->object();
  }
  template <class Char>
  CStringT<Char>& String() {
    return String(random.Text<Char>());
  }

  /// Bytes that the call only reads.
  const ByteArray& Bytes() {
    const std::string bytes = random.Noise<char>(random.Length());
    Tell("bytes " + test::Shown(bytes));
    auto* const data = NewFence(bytes.size(), AnySide());
    std::copy(bytes.begin(), bytes.end(), data);
    return Keep(
        std::make_shared<FencedBytes>(reinterpret_cast<BYTE*>(data), static_cast<INT_PTR>(bytes.size())));
  }
  /// An array for results, with something in it.
  ByteArray& Array() {
    auto array = std::make_shared<ByteArray>();
    for (std::size_t i = random.Length(); i > 0; --i) array->Add(static_cast<BYTE>(i));
    return Keep(array);
  }

  template <class Number>
  Number Told(Number number) {
    Tell(std::to_string(number));
    return number;
  }
  unsigned Number() { return Told(random.Number()); }
  template <class Object>
  Object& Keep(std::shared_ptr<Object> object) {
    owned_.push_back(object);
    return *object;
  }

  /// All of them, as far as they are short.
  std::string Shown() const {
    std::string shown;
    for (const std::string& one : told_) {
      constexpr std::size_t kMost = 400;
      shown += "\n    " + (one.size() > kMost ? one.substr(0, kMost) + "..." : one);
    }
    return shown;
  }
  /// What was written beside a buffer; empty if nothing.
  std::string Harm() const {
    for (const auto& fence : fences_) {
      if (!fence->Intact()) return "something was written beside a buffer";
    }
    return manager_.Intact() ? "" : "something was written beside a string's buffer";
  }

 private:
  void Tell(std::string what) { told_.push_back(std::move(what)); }
  Fence::Side AnySide() { return random.Chance(2) ? Fence::Side::kEnd : Fence::Side::kBegin; }
  char* NewFence(std::size_t size, Fence::Side side) {
    fences_.push_back(std::make_unique<Fence>(size, side));
    return fences_.back()->data();
  }
  template <class Char>
  Char* Copy(const std::basic_string<Char>& text, Fence::Side side) {
    auto* const data = reinterpret_cast<Char*>(NewFence((text.size() + 1) * sizeof(Char), side));
    std::copy(text.c_str(), text.c_str() + text.size() + 1, data);
    return data;
  }
  template <class Char>
  Char* Null() {
    Tell("null");
    return nullptr;
  }

  std::wstring scratch_;
  std::vector<std::string> told_;
  std::vector<std::unique_ptr<Fence>> fences_;
  FencedManager manager_;
  std::vector<std::shared_ptr<void>> owned_;  // behind the manager that its strings go back to
};

}  // namespace garbage
