// SPDX-License-Identifier: MIT
#include "Reference.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

namespace reference {
namespace {

using Block = std::array<std::uint32_t, 4>;

std::uint32_t WordAt(const std::string& bytes, std::size_t at) {
  std::uint32_t word = 0;
  for (std::size_t i = 4; i-- > 0;) word = word << 8 | static_cast<unsigned char>(bytes[at + i]);
  return word;
}

void Digest(Block& state, const std::string& bytes, std::size_t at) {
  static constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
  auto [a, b, c, d] = state;
  for (unsigned step = 0; step < 64; ++step) {
    const unsigned round = step / 16;
    std::uint32_t mixed = 0;
    unsigned word = 0;
    switch (round) {
      case 0:
        mixed = (b & c) | (~b & d);
        word = step;
        break;
      case 1:
        mixed = (b & d) | (c & ~d);
        word = 5 * step + 1;
        break;
      case 2:
        mixed = b ^ c ^ d;
        word = 3 * step + 5;
        break;
      default:
        mixed = c ^ (b | ~d);
        word = 7 * step;
        break;
    }
    const auto sine = static_cast<std::uint32_t>(std::floor(4294967296.0 * std::fabs(std::sin(step + 1.0))));
    const std::uint32_t sum = a + mixed + sine + WordAt(bytes, at + 4 * (word % 16));
    a = std::exchange(d, std::exchange(c, std::exchange(b, b + std::rotl(sum, kShifts[round][step % 4]))));
  }
  const Block mixed = {a, b, c, d};
  for (int i = 0; i < 4; ++i) state[i] += mixed[i];
}

}  // namespace

std::string Md5(const std::string& bytes) {
  std::string padded = bytes + '\x80';
  padded.resize((padded.size() + 8 + 63) / 64 * 64 - 8);
  const std::uint64_t bits = 8 * static_cast<std::uint64_t>(bytes.size());
  for (int i = 0; i < 8; ++i) padded += static_cast<char>(bits >> 8 * i);

  Block state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
  for (std::size_t at = 0; at < padded.size(); at += 64) Digest(state, padded, at);

  std::string digest;
  for (const std::uint32_t word : state) {
    for (int i = 0; i < 4; ++i) digest += static_cast<char>(word >> 8 * i);
  }
  return digest;
}

std::string Rc4(const std::string& key, std::string bytes) {
  std::array<unsigned char, 256> box;
  std::iota(box.begin(), box.end(), static_cast<unsigned char>(0));
  unsigned char j = 0;
  for (unsigned i = 0; i < 256; ++i) {
    j = static_cast<unsigned char>(j + box[i] + static_cast<unsigned char>(key[i % key.size()]));
    std::swap(box[i], box[j]);
  }
  unsigned char i = 0;
  j = 0;
  for (char& byte : bytes) {
    ++i;
    j = static_cast<unsigned char>(j + box[i]);
    std::swap(box[i], box[j]);
    byte = static_cast<char>(byte ^ box[static_cast<unsigned char>(box[i] + box[j])]);
  }
  return bytes;
}

std::string Hex(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    for (const int shift : {4, 0}) text += "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> shift & 15];
  }
  return text;
}

}  // namespace reference
