// SPDX-License-Identifier: MIT
// CodePage.cpp: text into and out of the ANSI code page, character by character. Runs of ASCII are moved in
// blocks.
#include <bit>
#include <cstring>
#include <type_traits>

#include "Block.h"
#include "Conversions.h"
#include "Exact.h"
#include "Signs.h"
#include "SingleUnits.h"

// Behind the others: it claims short names as macros.
#include <mbctype.h>

namespace convert {
namespace {

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

  // Makes room for at least `length` more characters than there are.
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
    end_ = begin_ + result_.GetAllocLength();
  }

  void Close() { result_.ReleaseBufferSetLength(static_cast<int>(at - begin_)); }

  CStringT<Char>& result_;
  Char* begin_ = nullptr;
  Char* end_ = nullptr;
};

// Converts a block as far as each character is known to become one; gives how many these are.
template <class From, class To, class Forms>
int ConvertBlock(const From* text, const Forms& forms, To* out) {
  constexpr int kSize = Block<From>::kSize;
  const auto convertOther = [&](int at) {
    const auto* const form = forms.Known(text[at]);
    if (!form || form->length != 1) return false;
    out[at] = *form->text;
    return true;
  };
  Block<From>::Convert(text, out);
  unsigned others = Block<From>::Others(text);
  // Where a text has no ASCII, the next one is not to be looked for.
  if (others == (1u << kSize) - 1) {
    for (int at = 0; at < kSize; ++at) {
      if (!convertOther(at)) return at;
    }
    return kSize;
  }
  for (; others != 0; others &= others - 1) {
    const int at = std::countr_zero(others);
    if (!convertOther(at)) return at;
  }
  return kSize;
}

// Converts characters as long as there is room for their forms; gives the first one that is left.
template <class From, class To, class Forms>
const From* FillByForms(const From* text, const From* end, Forms& forms, Growing<To>& result) {
  constexpr int kBlock = Block<From>::kSize;
  To* out = result.at;
  To* const outEnd = out + result.Room();
  while (text < end) {
    if (end - text >= kBlock && outEnd - out >= kBlock) {
      const int run = ConvertBlock(text, forms, out);
      text += run;
      out += run;
      if (run == kBlock) continue;
    } else if (IsAscii(*text)) {
      if (out == outEnd) break;
      *out++ = static_cast<To>(*text++);
      continue;
    }
    int length = 0;
    do {
      const auto& form = forms[*text];
      length = form.length;
      if (outEnd - out >= static_cast<int>(sizeof form / sizeof(To))) {
        std::memcpy(out, &form, sizeof form);
      } else {
        if (outEnd - out < length) {
          result.at = out;
          return text;
        }
        for (int i = 0; i < length; ++i) out[i] = form.text[i];
      }
      out += length;
      ++text;
    } while (length != 1 && text < end && !IsAscii(*text));
  }
  result.at = out;
  return text;
}

// Converts a text by the form that each character has in `forms`. Most code pages have one for one, and where
// a buffer has to be made there is `spare` room for signs that take more; where that is too little, what is
// left is measured.
template <class From, class To, class Forms>
void ByForms(const From* text, const From* end, std::size_t spare, Forms& forms, CStringT<To>& result) {
  if (text == end) {
    result.Empty();
    return;
  }
  auto room = static_cast<std::size_t>(end - text);
  if (room > static_cast<std::size_t>(result.GetAllocLength()) && room + spare <= kLongestText) room += spare;
  Growing<To> growing(result, room);
  while ((text = FillByForms(text, end, forms, growing)) != end) {
    growing.Grow(LengthByForms(text, end, forms));
  }
}

}  // namespace

void UcToMbc(const wchar_t* text, CStringA& result) {
  const Signs signs = SignsOfUtf16(::_getmbcp());
  const Source source(text, result);
  const wchar_t* const begin =
      signs.degree.dropsTextBefore ? Last(source.begin(), source.end(), kDegree) : source.begin();
  UnitsToAnsi ansi(signs);
  ByForms(begin, source.end(), static_cast<std::size_t>(source.end() - begin) / 8, ansi, result);
}

void Char8ToUc(const char* text, CStringW& result) {
  const Source source(text, result);
  BytesToUtf16 wide;
  ByForms(source.begin(), source.end(), 0, wide, result);
}

}  // namespace convert
