// SPDX-License-Identifier: MIT
// Licence.cpp: a text that nobody reads in the settings file by chance.
#include <ZERATools.h>

#include "ByOrdinal.h"
#include "Console.h"
#include "Viewer.h"

namespace viewer {
namespace {

const wchar_t kSection[] = L"Licence";
const wchar_t kKey[] = L"Text";
const wchar_t kPassPhrase[] = L"a phrase of the viewer's own";

}  // namespace

int StoreLicence(const std::wstring& text) {
  CStringW cipher;
  const int count = Encrypt(kPassPhrase, CStringW(text.c_str()), cipher);
  if (count < 0) return 1;
  WriteString(kSection, kKey, SettingsFile().c_str(), cipher);
  Print(L"licence", text);
  Print(L"stored as", cipher.GetString());
  return 0;
}

int ShowLicence() {
  wchar_t cipher[500];
  ReadString(kSection, kKey, SettingsFile().c_str(), L"", cipher, 500);
  CStringW text;
  if (Decrypt(kPassPhrase, cipher, text) <= 0) {
    Print(L"licence", L"none");
    return 1;
  }
  Print(L"licence", text.GetString());
  return 0;
}

}  // namespace viewer
