// SPDX-License-Identifier: MIT
// Fuzz.h: what every target uses. A target takes its arguments from the fuzzer's bytes, asks the library and
// the model below it in the same file, and stops the program where they differ. The models are written for
// plainness, not speed, and share nothing with the library but the platform that stands in for Windows.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#define CHECK(condition)                                                                           \
  do {                                                                                             \
    if (!(condition)) {                                                                            \
      std::fprintf(stderr, "%s:%d: differs from the model: %s\n", __FILE__, __LINE__, #condition); \
      std::abort();                                                                                \
    }                                                                                              \
  } while (false)

namespace fuzz {

template <class Char>
using String = std::basic_string<Char>;

// The fuzzer's bytes, taken from the front; nothing but zeros behind their end.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool empty() const { return size_ == 0; }
  std::uint8_t Byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }
  bool Bit() { return (Byte() & 1) != 0; }
  template <class Number>
  Number Raw() {
    std::uint8_t bytes[sizeof(Number)];
    for (std::uint8_t& one : bytes) one = Byte();
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }

  // A text without a terminator inside. Its first byte is the number of runs; a run is a byte below 0xF0 for
  // itself, or a count and what is repeated, so that short inputs reach the limits of 256 and more.
  // A wide character is one of the alphabet that code pages share, or any unit behind the byte 0xEF.
  template <class Char>
  String<Char> Text() {
    String<Char> text;
    for (unsigned runs = Byte(); runs > 0 && !empty(); --runs) {
      std::uint8_t one = Byte();
      std::size_t count = 1;
      if (one >= 0xF8) {
        count = std::size_t{Byte()} + (one - 0xF8) * 64;
        one = Byte();
      }
      Char unit = static_cast<Char>(one);
      if (sizeof(Char) > 1 && one == 0xEF) unit = static_cast<Char>(Raw<std::uint16_t>());
      if (unit != 0) text.append(count, unit);
    }
    return text;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

// A caller's buffer: the units before and behind it must not change. Its memory ends at a whole block of 64
// bytes: the library may look at the block in which a text ends, and the sanitizer stops it at the next.
template <class Char>
class Buffer {
 public:
  explicit Buffer(std::size_t capacity) : capacity_(capacity) {
    const std::size_t bytes = (capacity + kGuard) * sizeof(Char);
    size_ = (bytes + 63) / 64 * 64 / sizeof(Char);
    block_ = static_cast<Char*>(std::aligned_alloc(64, size_ * sizeof(Char)));
    std::memset(static_cast<void*>(block_), kFill, size_ * sizeof(Char));
  }
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  ~Buffer() { std::free(block_); }

  // The buffer of a text and `more` further units.
  explicit Buffer(const String<Char>& text, std::size_t more = 0) : Buffer(text.size() + 1 + more) {
    std::memcpy(static_cast<void*>(block_), text.c_str(), (text.size() + 1) * sizeof(Char));
  }

  Char* data() { return block_; }
  std::size_t capacity() const { return capacity_; }
  bool GuardsAreWhole() const {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(block_);
    for (std::size_t i = capacity_ * sizeof(Char); i < size_ * sizeof(Char); ++i) {
      if (bytes[i] != kFill) return false;
    }
    return true;
  }
  bool Untouched() const {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(block_);
    for (std::size_t i = 0; i < capacity_ * sizeof(Char); ++i) {
      if (bytes[i] != kFill) return false;
    }
    return true;
  }

 private:
  static constexpr std::size_t kGuard = 4;
  static constexpr int kFill = 0xCD;

  std::size_t capacity_;
  std::size_t size_;
  Char* block_;
};

}  // namespace fuzz
