// SPDX-License-Identifier: MIT
// Texts.h: texts and buffers, encrypted and decrypted by an engine that lives for one call.
#pragma once

#include "afx.h"
#include "crypt/Secret.h"

namespace crypt {

int Encrypt(const ByteArray& passPhrase, const ByteArray& plain, CStringW& text, BOOL hex);
int Decrypt(const ByteArray& passPhrase, const wchar_t* text, BOOL hex, ByteArray& plain);

int EncryptToBuffer(const char* passPhrase, int count, char* text, UINT capacity, BOOL hex);
int DecryptToBuffer(const char* passPhrase, const char* text, UINT hex, BYTE* plain, UINT capacity);

/// How much of the cipher text a caller wants.
enum class Form { whole, short8 };

int EncryptString(const char* passPhrase, const CStringA& plain, CStringA& text, Form form);
int EncryptString(const wchar_t* passPhrase, const CStringW& plain, CStringW& text, Form form);

int DecryptString(const char* passPhrase, const CStringA& text, CStringA& plain);
int DecryptString(const wchar_t* passPhrase, const wchar_t* text, CStringW& plain);

}  // namespace crypt
