// SPDX-License-Identifier: MIT
// Hexadecimal text of UTF-16 and of cipher bytes, and the texts that go into the code page sign by sign.
#include "Fuzz.h"
#include "convert/Conversions.h"
#include "crypt/CipherText.h"
#include "crypt/Encrypt.h"
#include "crypt/Texts.h"

namespace {

using Wide = fuzz::String<wchar_t>;

Wide Of(const CStringW& text) {
  return Wide(text.GetString(), static_cast<std::size_t>(text.GetLength()));
}
std::string Of(const CStringA& text) {
  return std::string(text.GetString(), static_cast<std::size_t>(text.GetLength()));
}
Wide Widened(const char* ascii) {
  return Wide(ascii, ascii + std::strlen(ascii));
}

Wide Hex(const Wide& text) {
  Wide hex;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%s%X", i ? " " : "", static_cast<unsigned>(std::uint16_t(text[i])));
    hex += Widened(digits);
  }
  return hex;
}

// Pieces are read by the platform's scanner, one by one, each as a text of its own.
Wide FromHex(const Wide& hex) {
  Wide text;
  std::size_t start = 0;
  while (start < hex.size()) {
    std::size_t end = hex.find(wchar_t(' '), start);
    if (end == Wide::npos) end = hex.size();
    if (end == start) break;
    const Wide piece = hex.substr(start, end - start);
    unsigned number = 0;
    const wchar_t format[] = {'%', 'X', 0};
    text += ::_snwscanf(piece.c_str(), piece.size(), format, &number) == 1 ? static_cast<wchar_t>(number) : 0;
    start = end + 1;
  }
  return text;
}

void HexText(fuzz::Input& input) {
  const Wide text = input.Text<wchar_t>();
  const bool inside = input.Bit();
  fuzz::Buffer<wchar_t> buffer(text);
  CStringW result;
  convert::UcToHex(buffer.data(), result);
  CHECK(Of(result) == Hex(text));
  CHECK(FromHex(Hex(text)) == text);
  convert::HexToUc(result, result);
  CHECK(Of(result) == text);

  // Any text is hexadecimal text as well; it may lie in the result.
  if (inside) result = buffer.data();
  convert::HexToUc(inside ? result.GetString() : buffer.data(), result);
  CHECK(Of(result) == FromHex(text));
  CHECK(buffer.GuardsAreWhole());
}

// One sign in the code page, as the table of the two signs has it; `utf16` tells the two columns apart that
// differ.
bool Sign(unsigned unit, bool utf16, std::string& to) {
  struct Row {
    int page;
    const char *micro, *degree;
  };
  static const Row kRows[] = {{0, "\xB5", "\xB0"},
                              {932, "\x83\xCA", "\x81\x8B"},
                              {936, "\xA6\xCC", "\xA1\xE3"},
                              {949, "\xA5\xEC", "\xA1\xC6"},
                              {950, "\xA3\x67", "\xA2\x58"}};
  if (unit != 0xB5 && unit != 0xB0) return false;
  for (const Row& row : kRows) {
    if (row.page != platform::state.multiBytePage) continue;
    if (unit == 0xB5) {
      to += row.micro;
    } else {
      if (row.page != 0) to.clear();
      to += row.degree;
    }
    return true;
  }
  if (unit == 0xB5) {
    to += "u";
  } else if (!(utf16 && platform::state.multiBytePage == 874)) {
    to += "deg";
  }
  return true;
}

void CodePage(fuzz::Input& input) {
  static const int kPages[] = {0, 932, 936, 949, 950, 874, 1252};
  platform::state.multiBytePage = kPages[input.Byte() % 7];
  platform::state.doubleByte = input.Bit();

  const Wide wide = input.Text<wchar_t>();
  std::string expected;
  for (const wchar_t one : wide) {
    if (Sign(std::uint16_t(one), true, expected)) continue;
    char bytes[4];
    const wchar_t alone[] = {one, 0};
    const int size = ::WideCharToMultiByte(CP_ACP, 0, alone, -1, bytes, 4, nullptr, nullptr);
    expected.append(bytes, static_cast<std::size_t>(size - 1));
  }
  fuzz::Buffer<wchar_t> wideBuffer(wide);
  CStringA narrowResult;
  convert::UcToMbc(wideBuffer.data(), narrowResult);
  CHECK(Of(narrowResult) == expected);

  const std::string bytes = input.Text<char>();
  expected.clear();
  Wide expectedWide;
  for (const char one : bytes) {
    const auto byte = static_cast<unsigned char>(one);
    if (!Sign(byte, false, expected)) expected += one;
    if (byte == 0xB0 || byte == 0xB5) {
      expectedWide += static_cast<wchar_t>(byte);
      continue;
    }
    wchar_t units[4];
    const char alone[] = {one, 0};
    const int size = ::MultiByteToWideChar(CP_ACP, 0, alone, -1, units, 4);
    expectedWide.append(units, static_cast<std::size_t>(size - 1));
  }
  fuzz::Buffer<char> buffer(bytes);
  convert::Char8ToMbc(buffer.data(), narrowResult);
  CHECK(Of(narrowResult) == expected);
  CStringW wideResult;
  convert::Char8ToUc(buffer.data(), wideResult);
  CHECK(Of(wideResult) == expectedWide);
  // In the result itself.
  narrowResult = buffer.data();
  convert::Char8ToMbc(narrowResult, narrowResult);
  CHECK(Of(narrowResult) == expected);
}

// The pair of units as the platform scans it; false if there is no number.
bool ReadPair(const Wide& pair, unsigned char& byte) {
  unsigned value = 0;
  const wchar_t format[] = {'%', 'X', 0};
  if (::_snwscanf(pair.c_str(), pair.size(), format, &value) != 1) return false;
  byte = static_cast<unsigned char>(value);
  return true;
}

void Cipher(fuzz::Input& input) {
  platform::state.doubleByte = input.Bit();
  platform::state.serviceFails = (input.Byte() & 0xF) == 0xF;
  const bool hex = (input.Byte() & 3) != 0;
  const Wide text = input.Text<wchar_t>();
  const std::string plain = input.Text<char>();

  // Decrypting any text.
  fuzz::Buffer<wchar_t> buffer(text);
  crypt::SecretBytes passPhrase("key");
  crypt::ByteArray bytes;
  std::string expected;
  bool readable = true;
  for (std::size_t i = 0; i + (hex ? 1 : 0) < text.size() && readable; i += hex ? 2 : 1) {
    unsigned char byte = static_cast<unsigned char>(text[i]);
    if (hex) readable = ReadPair(text.substr(i, 2), byte);
    expected += static_cast<char>(byte ^ 0x5A);
  }
  const int result = crypt::Decrypt(passPhrase, buffer.data(), hex, bytes);
  const bool done = readable && !platform::state.serviceFails;
  CHECK(result == (!readable ? -1 : platform::state.serviceFails ? 0 : static_cast<int>(expected.size())));
  CHECK(bytes.GetSize() == (done ? static_cast<INT_PTR>(expected.size()) : 0));
  if (done) CHECK(expected.empty() || std::memcmp(bytes.GetData(), expected.data(), expected.size()) == 0);

  // Encrypting, in both forms, and back.
  crypt::SecretBytes plainBytes(plain.data(), static_cast<INT_PTR>(plain.size()));
  Wide cipher, decimal;
  for (const char one : plain) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%.2X", (static_cast<unsigned char>(one) ^ 0x5A) & 0xFF);
    cipher += Widened(digits);
    std::snprintf(digits, sizeof digits, "%i", (static_cast<unsigned char>(one) ^ 0x5A) & 0xFF);
    decimal += Widened(digits);
  }
  CStringW out;
  const Wide& form = hex ? cipher : decimal;
  const int length = crypt::Encrypt(passPhrase, plainBytes, out, hex);
  CHECK(length == (platform::state.serviceFails ? -1 : static_cast<int>(form.size())));
  CHECK(Of(out) == (platform::state.serviceFails ? Wide() : form));

  CStringA shown;
  const std::string narrow(cipher.begin(), cipher.end());
  for (const crypt::Form wanted : {crypt::Form::whole, crypt::Form::short8}) {
    CHECK(crypt::EncryptString("key", CStringA(plain.c_str()), shown, wanted) ==
          (platform::state.serviceFails ? -1 : static_cast<int>(narrow.size())));
    const std::string part = wanted == crypt::Form::whole ? narrow : narrow.substr(0, 8);
    CHECK(Of(shown) == (platform::state.serviceFails ? std::string() : part));
  }

  // Back into a buffer of any size, and into a text of at most 99 bytes.
  const UINT capacity = input.Byte();
  fuzz::Buffer<char> back(capacity);
  const bool fits = !platform::state.serviceFails && plain.size() <= capacity;
  const int copied =
      crypt::DecryptToBuffer("key", narrow.c_str(), 1, reinterpret_cast<BYTE*>(back.data()), capacity);
  CHECK(copied == (platform::state.serviceFails ? 0 : fits ? static_cast<int>(plain.size()) : -1));
  CHECK(back.GuardsAreWhole());
  if (fits) CHECK(std::string(back.data(), plain.size()) == plain);

  const int read = crypt::DecryptString("key", CStringA(narrow.c_str()), shown);
  const bool readBack = !platform::state.serviceFails && plain.size() <= 99;
  CHECK(read == (platform::state.serviceFails ? 0 : readBack ? static_cast<int>(plain.size()) : -1));
  CHECK(Of(shown) == (readBack ? plain : std::string()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  platform::state.Reset();
  switch (input.Byte() % 3) {
    case 0:
      HexText(input);
      break;
    case 1:
      CodePage(input);
      break;
    default:
      Cipher(input);
  }
  return 0;
}
