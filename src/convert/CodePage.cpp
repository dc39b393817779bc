// SPDX-License-Identifier: MIT
// CodePage.cpp: text into and out of the ANSI code page, character by character. Runs of ASCII are moved in
// blocks.
#include <emmintrin.h>

#include <bit>
#include <cstring>
#include <type_traits>

#include "Conversions.h"
#include "Exact.h"
#include "Signs.h"
#include "SingleUnits.h"

// Behind the others: it claims short names as macros.
#include <mbctype.h>

namespace convert {
namespace {

__m128i Load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

void Store(void* to, __m128i block) {
  _mm_storeu_si128(static_cast<__m128i*>(to), block);
}

// Sixteen bytes of a text.
template <class Char>
struct Block;

template <>
struct Block<wchar_t> {
  static constexpr int kSize = 8;
  // A bit for each unit outside ASCII.
  static unsigned Others(const wchar_t* text) {
    const __m128i above = _mm_and_si128(Load(text), _mm_set1_epi16(static_cast<short>(0xFF80)));
    const __m128i ascii = _mm_cmpeq_epi16(above, _mm_setzero_si128());
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(ascii, _mm_set1_epi16(-1)))) ^ 0xFFFF;
  }
  // As bytes; those of units outside ASCII are of no account.
  static void Convert(const wchar_t* text, char* to) {
    const __m128i units = Load(text);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(units, units));
  }
};

template <>
struct Block<char> {
  static constexpr int kSize = 16;
  static unsigned Others(const char* text) { return static_cast<unsigned>(_mm_movemask_epi8(Load(text))); }
  static void Convert(const char* text, wchar_t* to) {
    Store(to, _mm_unpacklo_epi8(Load(text), _mm_setzero_si128()));
    Store(to + 8, _mm_unpackhi_epi8(Load(text), _mm_setzero_si128()));
  }
};

template <class Char>
bool IsAscii(Char one) {
  return static_cast<std::make_unsigned_t<Char>>(one) < 0x80;
}

// The length of what the forms of a text's characters make: one for each, and what the others than ASCII
// differ by.
template <class Char, class Forms>
std::size_t LengthByForms(const Char* text, const Char* end, Forms& forms) {
  auto length = static_cast<std::size_t>(end - text);
  for (; end - text >= Block<Char>::kSize; text += Block<Char>::kSize) {
    for (unsigned others = Block<Char>::Others(text); others != 0; others &= others - 1) {
      length += forms[text[std::countr_zero(others)]].length - std::size_t{1};
    }
  }
  for (; text < end; ++text) {
    if (!IsAscii(*text)) length += forms[*text].length - std::size_t{1};
  }
  return length;
}

// A result that grows. It is a whole text at the end, however that is reached.
template <class Char>
class Growing {
 public:
  Growing(CStringT<Char>& result, std::size_t length) : result_(result) { Take(length); }
  Growing(const Growing&) = delete;
  Growing& operator=(const Growing&) = delete;
  ~Growing() {
    Close();
    if (result_.IsEmpty()) result_.Empty();
  }

  // Makes room for `length` more characters than there are.
  void Grow(std::size_t length) {
    Close();
    Take(static_cast<std::size_t>(result_.GetLength()) + length);
  }

  std::ptrdiff_t Room() const { return end_ - at; }

  Char* at = nullptr;

 private:
  void Take(std::size_t length) {
    const std::size_t written = at ? static_cast<std::size_t>(at - begin_) : 0;
    if (length > kLongestText) AfxThrowMemoryException();
    begin_ = result_.GetBuffer(static_cast<int>(length));
    at = begin_ + written;
    end_ = begin_ + length;
  }

  void Close() { result_.ReleaseBufferSetLength(static_cast<int>(at - begin_)); }

  CStringT<Char>& result_;
  Char* begin_ = nullptr;
  Char* end_ = nullptr;
};

// Converts characters as long as there is room for their forms; gives the first one that is left.
template <class From, class To, class Forms>
const From* FillByForms(const From* text, const From* end, Forms& forms, Growing<To>& result) {
  constexpr int kBlock = Block<From>::kSize;
  To* out = result.at;
  To* const outEnd = out + result.Room();
  while (text < end) {
    if (end - text >= kBlock && outEnd - out >= kBlock) {
      Block<From>::Convert(text, out);
      const unsigned others = Block<From>::Others(text);
      if (others == 0) {
        text += kBlock;
        out += kBlock;
        continue;
      }
      const int run = std::countr_zero(others);
      text += run;
      out += run;
    } else if (IsAscii(*text)) {
      if (out == outEnd) break;
      *out++ = static_cast<To>(*text++);
      continue;
    }
    do {
      const auto& form = forms[*text];
      if (outEnd - out >= static_cast<int>(sizeof form / sizeof(To))) {
        std::memcpy(out, &form, sizeof form);
      } else {
        if (outEnd - out < form.length) {
          result.at = out;
          return text;
        }
        for (int i = 0; i < form.length; ++i) out[i] = form.text[i];
      }
      out += form.length;
      ++text;
    } while (text < end && !IsAscii(*text));
  }
  result.at = out;
  return text;
}

// Converts a text by the form that each character has in `forms`. Most code pages have one for one; where
// that is too little room, what is left is measured.
template <class From, class To, class Forms>
void ByForms(const From* text, const From* end, Forms& forms, CStringT<To>& result) {
  if (text == end) {
    result.Empty();
    return;
  }
  Growing<To> growing(result, static_cast<std::size_t>(end - text));
  while ((text = FillByForms(text, end, forms, growing)) != end) {
    growing.Grow(LengthByForms(text, end, forms));
  }
}

constexpr char kMicroByte = static_cast<char>(kMicro);
constexpr char kDegreeByte = static_cast<char>(kDegree);

// Calls `visit` with the place of each sign in a Latin-1 text.
template <class Visit>
void ForEachSign(const char* text, const char* end, Visit visit) {
  for (; end - text >= 16; text += 16) {
    const __m128i block = Load(text);
    const __m128i micros = _mm_cmpeq_epi8(block, _mm_set1_epi8(kMicroByte));
    const __m128i degrees = _mm_cmpeq_epi8(block, _mm_set1_epi8(kDegreeByte));
    auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(micros, degrees)));
    for (; found != 0; found &= found - 1) visit(text + std::countr_zero(found));
  }
  for (; text < end; ++text) {
    if (*text == kMicroByte || *text == kDegreeByte) visit(text);
  }
}

// Bytes on their way into a buffer of their exact number.
class Writing {
 public:
  Writing(char* to, std::size_t size) : to_(to), end_(to + size) {}

  // `readable` is where what can be read ends.
  void Copy(const char* from, const char* end, const char* readable) {
    const auto size = static_cast<std::size_t>(end - from);
    // A call for each short run between two signs would take longer than the copying.
    constexpr int kShort = 32;
    if (size <= kShort && end_ - to_ >= kShort && readable - from >= kShort) {
      Store(to_, Load(from));
      Store(to_ + kShort / 2, Load(from + kShort / 2));
    } else {
      std::memcpy(to_, from, size);
    }
    to_ += size;
  }

  void Put(const char* bytes) {
    while (*bytes) *to_++ = *bytes++;
  }

 private:
  char* to_;
  char* end_;
};

}  // namespace

void UcToMbc(const wchar_t* text, CStringA& result) {
  const Signs signs = SignsOfUtf16(::_getmbcp());
  const Source source(text, result);
  const wchar_t* begin = source.begin();
  if (signs.degree.dropsTextBefore) {
    begin = source.end();
    while (begin > source.begin() && *begin != kDegree) --begin;
  }
  UnitsToAnsi ansi(signs);
  ByForms(begin, source.end(), ansi, result);
}

void Char8ToMbc(const char* text, CStringA& result) {
  const Signs signs = SignsOfLatin1(::_getmbcp());
  const Source source(text, result);
  if (*signs.micro.bytes == kMicroByte && *signs.degree.bytes == kDegreeByte) {
    StoreExactly(result, source.length(),
                 [&](char* buffer) { std::memcpy(buffer, source.begin(), source.length()); });
    return;
  }

  const char* begin = source.begin();
  std::size_t micros = 0, degrees = 0;
  ForEachSign(begin, source.end(), [&](const char* sign) {
    if (*sign == kMicroByte) {
      ++micros;
    } else if (signs.degree.dropsTextBefore) {
      begin = sign;
      micros = 0;
      degrees = 1;
    } else {
      ++degrees;
    }
  });
  const std::size_t others = static_cast<std::size_t>(source.end() - begin) - micros - degrees;
  const std::size_t length =
      others + micros * std::strlen(signs.micro.bytes) + degrees * std::strlen(signs.degree.bytes);

  StoreExactly(result, length, [&](char* buffer) {
    Writing out(buffer, length);
    const char* rest = begin;
    if (micros + degrees > 0) {
      ForEachSign(begin, source.end(), [&](const char* sign) {
        out.Copy(rest, sign, source.end());
        out.Put(*sign == kMicroByte ? signs.micro.bytes : signs.degree.bytes);
        rest = sign + 1;
      });
    }
    out.Copy(rest, source.end(), source.end());
  });
}

void Char8ToUc(const char* text, CStringW& result) {
  const Source source(text, result);
  BytesToUtf16 wide;
  ByForms(source.begin(), source.end(), wide, result);
}

}  // namespace convert
