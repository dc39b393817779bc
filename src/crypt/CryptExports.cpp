// SPDX-License-Identifier: MIT
// CryptExports.cpp: the exports that encrypt and decrypt.
#include "Texts.h"
#include "ZERATools.h"
#include "frame/Frame.h"

int ZERA_TOOLS_ENC(const char* passPhrase, const BYTE*, int count, char* text, UINT capacity, BOOL hex) {
  return frame::Enter([&] { return crypt::EncryptToBuffer(passPhrase, count, text, capacity, hex); });
}

int ZERA_TOOLS_ENC_UC(const CArray<BYTE, const BYTE&>& passPhrase, const CArray<BYTE, const BYTE&>& plain,
                      CStringW& text, BOOL hex) {
  return frame::Enter([&] { return crypt::Encrypt(passPhrase, plain, text, hex); });
}

int ZERA_TOOLS_DEC(const char* passPhrase, const char* text, UINT hex, BYTE* plain, UINT capacity) {
  return frame::Enter([&] { return crypt::DecryptToBuffer(passPhrase, text, hex, plain, capacity); });
}

int ZERA_TOOLS_DEC_UC(const CArray<BYTE, const BYTE&>& passPhrase, const wchar_t* text, BOOL hex,
                      CArray<BYTE, const BYTE&>& plain) {
  return frame::Enter([&] { return crypt::Decrypt(passPhrase, text, hex, plain); });
}

int ZERA_TOOLS_ENC_STRING_S(const char* passPhrase, const CStringA& plain, CStringA& text) {
  return frame::Enter([&] { return crypt::EncryptString(passPhrase, plain, text, crypt::Form::short8); });
}

int ZERA_TOOLS_ENC_STRING_S_UC(const wchar_t* passPhrase, const CStringW& plain, CStringW& text) {
  return frame::Enter([&] { return crypt::EncryptString(passPhrase, plain, text, crypt::Form::short8); });
}

int ZERA_TOOLS_ENC_STRING_L(const char* passPhrase, const CStringA& plain, CStringA& text) {
  return frame::Enter([&] { return crypt::EncryptString(passPhrase, plain, text, crypt::Form::whole); });
}

int ZERA_TOOLS_ENC_STRING_L_UC(const wchar_t* passPhrase, const CStringW& plain, CStringW& text) {
  return frame::Enter([&] { return crypt::EncryptString(passPhrase, plain, text, crypt::Form::whole); });
}

int ZERA_TOOLS_DEC_STRING(const char* passPhrase, const CStringA& text, CStringA& plain) {
  return frame::Enter([&] { return crypt::DecryptString(passPhrase, text, plain); });
}

int ZERA_TOOLS_DEC_STRING_UC(const wchar_t* passPhrase, const wchar_t* text, CStringW& plain) {
  return frame::Enter([&] { return crypt::DecryptString(passPhrase, text, plain); });
}
