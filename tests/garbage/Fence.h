// SPDX-License-Identifier: MIT
// Fence.h: memory between two pages that nobody may touch.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace garbage {

/// Room that ends exactly where an inaccessible page begins, or begins exactly where one ends: a read or
/// write beside it on that side ends the program at that instruction. A write beside it on the other side is
/// seen afterwards.
class Fence {
 public:
  enum class Side { kEnd, kBegin };
  static constexpr char kFill = 'Z';

  Fence(std::size_t size, Side side) : size_(size) {
    constexpr std::size_t kPage = 4096;
    inside_ = std::max<std::size_t>(1, (size + kPage - 1) / kPage) * kPage;
    base_ = ::VirtualAlloc(nullptr, inside_ + 2 * kPage, MEM_RESERVE, PAGE_NOACCESS);
    first_ = static_cast<char*>(
        ::VirtualAlloc(static_cast<char*>(base_) + kPage, inside_, MEM_COMMIT, PAGE_READWRITE));
    std::fill(first_, first_ + inside_, kFill);
    data_ = side == Side::kBegin ? first_ : first_ + inside_ - size;
  }
  Fence(const Fence&) = delete;
  Fence& operator=(const Fence&) = delete;
  ~Fence() { ::VirtualFree(base_, 0, MEM_RELEASE); }

  char* data() const { return data_; }

  /// Whether nothing was written beside the room.
  bool Intact() const {
    const auto isFill = [](char one) { return one == kFill; };
    return std::all_of(first_, data_, isFill) && std::all_of(data_ + size_, first_ + inside_, isFill);
  }

 private:
  std::size_t size_, inside_;
  void* base_;
  char* first_;
  char* data_;
};

}  // namespace garbage
