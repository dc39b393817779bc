// SPDX-License-Identifier: MIT
// wincrypt.h: a cryptographic service whose cipher is each byte and 0x5A, exclusively or'ed. What a key does
// to bytes is the real service's matter; here the texts round them are looked at.
#pragma once

#include <windows.h>

using HCRYPTPROV = std::uintptr_t;
using HCRYPTKEY = std::uintptr_t;
using HCRYPTHASH = std::uintptr_t;
#define PROV_RSA_FULL 1
#define CRYPT_NEWKEYSET 8
#define CRYPT_EXPORTABLE 1
#define CALG_MD5 0x8003
#define CALG_RC4 0x6801
#define NTE_BAD_KEYSET static_cast<HRESULT>(0x80090016)

inline BOOL CryptAcquireContextW(HCRYPTPROV* provider, const wchar_t*, const wchar_t*, DWORD, DWORD) {
  *provider = platform::state.serviceFails ? 0 : 1;
  return !platform::state.serviceFails;
}
inline BOOL CryptCreateHash(HCRYPTPROV provider, int, HCRYPTKEY, DWORD, HCRYPTHASH* hash) {
  *hash = provider;
  return provider != 0;
}
inline BOOL CryptHashData(HCRYPTHASH, const BYTE*, DWORD, DWORD) {
  return TRUE;
}
inline BOOL CryptDeriveKey(HCRYPTPROV, int, HCRYPTHASH, DWORD, HCRYPTKEY* key) {
  *key = 1;
  return TRUE;
}
inline BOOL CryptDestroyKey(HCRYPTKEY) {
  return TRUE;
}
inline BOOL CryptDestroyHash(HCRYPTHASH) {
  return TRUE;
}
inline BOOL CryptReleaseContext(HCRYPTPROV, DWORD) {
  return TRUE;
}
inline BOOL CryptDecrypt(HCRYPTKEY, HCRYPTHASH, BOOL, DWORD, BYTE* bytes, DWORD* count) {
  for (DWORD i = 0; i < *count; ++i) bytes[i] ^= 0x5A;
  return TRUE;
}
inline BOOL CryptEncrypt(HCRYPTKEY, HCRYPTHASH, BOOL, DWORD, BYTE* bytes, DWORD* count, DWORD) {
  for (DWORD i = 0; i < *count; ++i) bytes[i] ^= 0x5A;
  return TRUE;
}
