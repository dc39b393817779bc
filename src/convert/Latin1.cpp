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

// How often each sign occurs.
struct Occurrences {
  std::size_t micros = 0;
  std::size_t degrees = 0;
};

// The sum of sixteen bytes.
std::size_t Sum(__m128i lanes) {
  const __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
  return static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
         static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
}

Occurrences Count(const char* text, const char* end) {
  Occurrences count;
  const __m128i micro = _mm_set1_epi8(kMicroByte), degree = _mm_set1_epi8(kDegreeByte);
  while (end - text >= kBlock) {
    // A lane counts to 255 at most.
    const char* const stop = text + std::min<std::ptrdiff_t>((end - text) / kBlock, 255) * kBlock;
    __m128i micros = _mm_setzero_si128(), degrees = micros;
    for (; text < stop; text += kBlock) {
      micros = _mm_sub_epi8(micros, _mm_cmpeq_epi8(Load(text), micro));
      degrees = _mm_sub_epi8(degrees, _mm_cmpeq_epi8(Load(text), degree));
    }
    count.micros += Sum(micros);
    count.degrees += Sum(degrees);
  }
  for (; text < end; ++text) {
    count.micros += *text == kMicroByte;
    count.degrees += *text == kDegreeByte;
  }
  return count;
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
      signs.degree.dropsTextBefore ? Last(source.begin(), source.end(), kDegreeByte) : source.begin();
  const Written written(signs);
  const Occurrences count = Count(begin, source.end());
  const std::size_t length = static_cast<std::size_t>(source.end() - begin) - count.micros - count.degrees +
                             count.micros * written.LengthOf(kMicroByte) +
                             count.degrees * written.LengthOf(kDegreeByte);
  StoreExactly(result, length, [&](char* buffer) {
    if (count.micros + count.degrees == 0) {
      std::memcpy(buffer, begin, length);
    } else {
      Fill(begin, source.end(), written, buffer, buffer + length);
    }
  });
}

}  // namespace convert
