// SPDX-License-Identifier: MIT
// zt crypt: printable cipher texts.
#include <ZERATools.h>

#include <algorithm>

#include "arguments.h"
#include "console.h"
#include "failure.h"
#include "pass_phrase.h"
#include "settings.h"

namespace zt {
namespace {

using Bytes = CArray<BYTE, const BYTE&>;

// The exports for texts take one byte of each character and drop the rest without a word.
const std::wstring& Latin(const Arguments& arguments, std::size_t at, const std::wstring& text) {
  if (std::ranges::any_of(text, [](wchar_t one) { return one > 0xFF; })) {
    arguments.Reject(at, L"holds a character above U+00FF; --utf8 stores such texts");
  }
  return text;
}

void SetUtf8(Bytes& bytes, const std::wstring& text) {
  CStringA utf8;
  ZERA_TOOLS_STRING_UC_TO_UTF8(text.c_str(), utf8);
  bytes.SetSize(utf8.GetLength());
  std::copy_n(utf8.GetString(), utf8.GetLength(), bytes.GetData());
}

std::wstring View(const CStringW& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// The cipher text of the argument at `at`, under the pass phrase before it.
bool Encrypt(const Arguments& arguments, std::size_t at, std::wstring& cipher) {
  CStringW result;
  int length;
  const std::wstring phrase = PassPhrase(arguments, at - 1, true);
  if (arguments.Has(L"--utf8")) {
    Bytes pass, plain;
    SetUtf8(pass, phrase);
    SetUtf8(plain, arguments.Text(at));
    length = ZERA_TOOLS_ENC_UC(pass, plain, result, TRUE);
  } else {
    length = ZERA_TOOLS_ENC_STRING_L_UC(Latin(arguments, at - 1, phrase).c_str(),
                                        Latin(arguments, at, arguments.Text(at)).c_str(), result);
  }
  cipher = View(result);
  if (length < 0) Complain(L"the system's cryptographic service failed", ::GetLastError());
  return length >= 0;
}

// Pass phrase at `at`.
Exit Decrypt(const Arguments& arguments, std::size_t at, const std::wstring& cipher) {
  CStringW result;
  int length;
  const std::wstring phrase = PassPhrase(arguments, at);
  if (arguments.Has(L"--utf8")) {
    Bytes pass, plain;
    SetUtf8(pass, phrase);
    length = ZERA_TOOLS_DEC_UC(pass, cipher.c_str(), TRUE, plain);
    plain.Add(0);
    ZERA_TOOLS_STRING_UTF8_TO_UC(reinterpret_cast<const char*>(plain.GetData()), result);
  } else {
    length = ZERA_TOOLS_DEC_STRING_UC(Latin(arguments, at, phrase).c_str(), cipher.c_str(), result);
  }
  // 0 bytes of a text that is not empty: the service failed.
  if (length < 0 || (length == 0 && !cipher.empty())) {
    Complain(L"the text could not be decrypted");
    return no;
  }
  PrintLine(View(result));
  return done;
}

bool IsCipherText(const std::wstring& text) {
  return text.size() % 2 == 0 && text.find_first_not_of(L"0123456789ABCDEFabcdef") == text.npos;
}

Exit EncryptText(const Arguments& arguments) {
  std::wstring cipher;
  if (!Encrypt(arguments, 1, cipher)) return no;
  PrintLine(cipher);
  return done;
}

Exit EncryptShort(const Arguments& arguments) {
  CStringW result;
  const std::wstring phrase = PassPhrase(arguments, 0);
  if (ZERA_TOOLS_ENC_STRING_S_UC(Latin(arguments, 0, phrase).c_str(),
                                 Latin(arguments, 1, arguments.Text(1)).c_str(), result) < 0) {
    Complain(L"the system's cryptographic service failed", ::GetLastError());
    return no;
  }
  PrintLine(View(result));
  return done;
}

Exit DecryptText(const Arguments& arguments) {
  if (!IsCipherText(arguments.Text(1))) arguments.Reject(1, L"is not made of pairs of hexadecimal digits");
  return Decrypt(arguments, 0, arguments.Text(1));
}

Exit Store(const Arguments& arguments) {
  const Place place(arguments);
  if (arguments.Text(4).empty()) arguments.Reject(4, L"is empty");
  std::wstring cipher;
  if (!Encrypt(arguments, 4, cipher) || !WriteText(place, cipher)) return no;
  Confirm(place.key + L"=" + cipher);
  return done;
}

Exit Load(const Arguments& arguments) {
  const Place place(arguments);
  if (!CanRead(place.file)) return no;
  const std::wstring cipher = ReadText(place, L"");
  if (cipher.empty()) {
    ComplainOfNoValue(place);
    return no;
  }
  if (!IsCipherText(cipher)) {
    Complain(L"the value is no cipher text: " + cipher);
    return no;
  }
  return Decrypt(arguments, 3, cipher);
}

const Command commands[] = {
    {L"encrypt", L"[--utf8] PASSPHRASE TEXT", L"Encrypts a text", L"",
     L"zt crypt encrypt \"pass phrase\" Hello\nE6B3C987E5",
     L"ZERA_TOOLS_ENC_STRING_L_UC; with --utf8 ZERA_TOOLS_ENC_UC", EncryptText},
    {L"decrypt", L"[--utf8] PASSPHRASE CIPHERTEXT", L"Decrypts a text",
     L"CIPHERTEXT is made of pairs of hexadecimal digits. A wrong pass phrase is not noticed: it\n"
     L"gives another text.\n",
     L"zt crypt decrypt \"pass phrase\" E6B3C987E5\nHello",
     L"ZERA_TOOLS_DEC_STRING_UC; with --utf8 ZERA_TOOLS_DEC_UC", DecryptText},
    {L"short", L"PASSPHRASE TEXT", L"The first 8 characters of the cipher text, for comparing", L"",
     L"zt crypt short \"pass phrase\" Hello\nE6B3C987", L"ZERA_TOOLS_ENC_STRING_S_UC", EncryptShort},
    {L"store", L"[--utf8] FILE SECTION KEY PASSPHRASE TEXT", L"Encrypts a text into a settings file",
     L"FILE is created if it is missing; its folder must exist.\n",
     L"zt crypt store C:\\data\\view.ini Licence Text \"pass phrase\" Hello\nText=E6B3C987E5",
     L"ZERA_TOOLS_ENC_STRING_L_UC or ZERA_TOOLS_ENC_UC, ZERA_TOOLS_WRITE_STRING_UC", Store},
    {L"load", L"[--utf8] FILE SECTION KEY PASSPHRASE", L"Decrypts a text from a settings file",
     L"A wrong pass phrase is not noticed: it gives another text.\n",
     L"zt crypt load C:\\data\\view.ini Licence Text \"pass phrase\"\nHello",
     L"ZERA_TOOLS_READ_STRING_UC, ZERA_TOOLS_DEC_STRING_UC or ZERA_TOOLS_DEC_UC", Load},
};

}  // namespace

const Group cryptGroup = {
    L"crypt", L"Encrypt and decrypt texts, also in settings files",
    L"PASSPHRASE is the pass phrase itself, which others may see in the list of processes and in the\n"
    L"shell's history, or says where it is: @prompt asks for it without showing it, @file:PATH takes\n"
    L"the first line of a file in UTF-8, @env:NAME a variable of the environment. A pass phrase that\n"
    L"begins so is written @text:PASSPHRASE.\n"
    L"Pass phrase and text may hold characters up to U+00FF, as the applications store them; with\n"
    L"--utf8 any characters, for texts that are written and read that way. The cipher (RC4 with\n"
    L"MD5) is there for stored texts that exist; it does not protect against an attacker.\n",
    commands};

}  // namespace zt
