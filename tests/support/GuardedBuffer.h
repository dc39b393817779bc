// SPDX-License-Identifier: MIT
// GuardedBuffer.h: a caller's buffer whose surroundings are watched.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace test {

/// A buffer of a given capacity, filled with a pattern, between two areas that must not change.
template <class Char>
class GuardedBuffer {
 public:
  static constexpr Char kFill = static_cast<Char>(0x5A);
  static constexpr std::size_t kGuard = 64;

  explicit GuardedBuffer(std::size_t capacity) : capacity_(capacity), cells_(capacity + 2 * kGuard, kFill) {}
  /// The buffer holds a text at first, which must fit.
  GuardedBuffer(std::size_t capacity, std::basic_string<Char> text) : GuardedBuffer(capacity) {
    std::copy(text.c_str(), text.c_str() + text.size() + 1, data());
  }

  Char* data() { return cells_.data() + kGuard; }
  std::size_t capacity() const { return capacity_; }

  /// The text up to the terminator; the whole capacity if there is none.
  std::basic_string<Char> text() { return {data(), std::find(data(), data() + capacity_, Char(0))}; }

  /// Whether the guard areas are as they were.
  bool Intact() const {
    const auto isFill = [](Char one) { return one == kFill; };
    return std::all_of(cells_.begin(), cells_.begin() + kGuard, isFill) &&
           std::all_of(cells_.end() - kGuard, cells_.end(), isFill);
  }

  /// Whether the buffer itself is as it was filled.
  bool Untouched() const { return UntouchedFrom(0); }
  /// The same from a position on, to check that nothing was written behind a result.
  bool UntouchedFrom(std::size_t position) const {
    return std::all_of(cells_.begin() + static_cast<std::ptrdiff_t>(kGuard + position), cells_.end() - kGuard,
                       [](Char one) { return one == kFill; });
  }

 private:
  std::size_t capacity_;
  std::vector<Char> cells_;
};

}  // namespace test
