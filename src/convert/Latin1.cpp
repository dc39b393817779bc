// SPDX-License-Identifier: MIT
// Latin1.cpp: Latin-1 text in the ANSI code page. Every byte stays as it is but for the two signs, so the
// length of the result is known once they are counted, and the text between them is moved in blocks.
#include <algorithm>
#include <bit>
#include <cstring>

#include "Block.h"
#include "Conversions.h"
#include "Exact.h"
#include "Signs.h"

// Behind the others: it claims short names as macros.
#include <mbctype.h>

namespace convert {
namespace {

constexpr char kMicroByte = static_cast<char>(kMicro);
constexpr char kDegreeByte = static_cast<char>(kDegree);
constexpr int kBlock = sizeof(__m128i);

bool IsSign(char byte) {
  return byte == kMicroByte || byte == kDegreeByte;
}

// What is written for the signs, each in one store of eight bytes.
class Written {
 public:
  explicit Written(const Signs& signs) {
    Set(kMicroByte, signs.micro.bytes);
    Set(kDegreeByte, signs.degree.bytes);
  }

  static constexpr int kStore = 8;
  // More than any code page has for a sign.
  static constexpr int kMost = 3;

  // Writes eight bytes, of which those behind the result are of no account.
  char* Put(char sign, char* out) const {
    std::memcpy(out, forms_[sign & 1].bytes, kStore);
    return out + forms_[sign & 1].length;
  }

  char* PutExactly(char sign, char* out) const {
    return std::copy_n(forms_[sign & 1].bytes, forms_[sign & 1].length, out);
  }

  std::size_t LengthOf(char sign) const { return forms_[sign & 1].length; }

 private:
  // The two bytes differ in their lowest bit.
  static_assert((kMicroByte & 1) != (kDegreeByte & 1));

  struct Form {
    char bytes[kStore];
    std::size_t length;
  };

  void Set(char sign, const char* bytes) {
    Form& form = forms_[sign & 1];
    form.length = std::strlen(bytes);
    std::memcpy(form.bytes, bytes, form.length);
  }

  Form forms_[2] = {};
};

// How often a byte occurs.
std::size_t Count(const char* text, const char* end, char byte) {
  std::size_t count = 0;
  const __m128i wanted = _mm_set1_epi8(byte);
  while (end - text >= kBlock) {
    // A lane counts to 255 at most.
    const char* const stop = text + std::min<std::ptrdiff_t>((end - text) / kBlock, 255) * kBlock;
    __m128i lanes = _mm_setzero_si128();
    for (; text < stop; text += kBlock) lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(Load(text), wanted));
    const __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
    count += static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
             static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
  }
  return count + static_cast<std::size_t>(std::count(text, end, byte));
}

// The last degree sign, or the begin of the text.
const char* LastDegree(const char* text, const char* end) {
  while (end - text >= kBlock) {
    const __m128i found = _mm_cmpeq_epi8(Load(end - kBlock), _mm_set1_epi8(kDegreeByte));
    const auto degrees = static_cast<unsigned>(_mm_movemask_epi8(found));
    if (degrees != 0) return end - kBlock + (std::bit_width(degrees) - 1);
    end -= kBlock;
  }
  while (end > text && *end != kDegreeByte) --end;
  return end;
}

// Writes a text with its signs replaced, into a buffer of exactly the result's length.
void Fill(const char* text, const char* end, const Written& written, char* out, const char* outEnd) {
  const __m128i micros = _mm_set1_epi8(kMicroByte), degrees = _mm_set1_epi8(kDegreeByte);
  // A block of nothing but signs, and what is written and read behind a block's last one.
  constexpr int kRoom = kBlock * Written::kMost + kBlock;
  while (end - text >= 2 * kBlock && outEnd - out >= kRoom) {
    const __m128i block = Load(text);
    Store(out, block);
    auto signs = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(block, micros), _mm_cmpeq_epi8(block, degrees))));
    int from = 0;
    for (; signs != 0; signs &= signs - 1) {
      const int at = std::countr_zero(signs);
      out = written.Put(text[at], out + (at - from));
      from = at + 1;
      Store(out, Load(text + from));
    }
    text += kBlock;
    out += kBlock - from;
  }
  for (; text < end; ++text) {
    if (IsSign(*text)) {
      out = written.PutExactly(*text, out);
    } else {
      *out++ = *text;
    }
  }
}

}  // namespace

void Char8ToMbc(const char* text, CStringA& result) {
  const Signs signs = SignsOfLatin1(::_getmbcp());
  const Source source(text, result);
  if (*signs.micro.bytes == kMicroByte && *signs.degree.bytes == kDegreeByte) {
    StoreExactly(result, source.length(),
                 [&](char* buffer) { std::memcpy(buffer, source.begin(), source.length()); });
    return;
  }

  const char* const begin =
      signs.degree.dropsTextBefore ? LastDegree(source.begin(), source.end()) : source.begin();
  const Written written(signs);
  const std::size_t micros = Count(begin, source.end(), kMicroByte);
  const std::size_t degrees = Count(begin, source.end(), kDegreeByte);
  const std::size_t length = static_cast<std::size_t>(source.end() - begin) - micros - degrees +
                             micros * written.LengthOf(kMicroByte) + degrees * written.LengthOf(kDegreeByte);
  StoreExactly(result, length,
               [&](char* buffer) { Fill(begin, source.end(), written, buffer, buffer + length); });
}

}  // namespace convert
