// SPDX-License-Identifier: MIT
// c_host.h: the exports that take objects, called from C through the header's C declarations.
#pragma once

#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What each call gave, for a C++ test to compare.
struct CHostAnswers {
  char toAnsi[16], signsToAnsi[16], ansiToUtf8[16], toUtf8[16], utf8ToAnsi[16];
  wchar_t signsToWide[16], utf8ToWide[16], toHex[32], fromHex[16];
  wchar_t cipher[64];
  int cipherLength;
  unsigned char plainBytes[16];
  int plainCount;
  wchar_t longText[64], shortText[64], decrypted[64];
  char longAnsi[64], shortAnsi[64], decryptedAnsi[64];
  int longLength, shortLength, decryptedLength, longAnsiLength, shortAnsiLength, decryptedAnsiLength;
  int settingsFound[4];
  wchar_t settings[2][260];
  char settingsAnsi[2][260];
  int copied[2];
  int folders;
  wchar_t commonData[260], userData[260];
  int posted;
};

/// Makes one call to each of them; objects are made and freed inside.
void CallFromC(struct CHostAnswers* answers, unsigned long threadId);

/// The string buffers that the C source's module has not given back.
long BuffersOfC(void);

#ifdef __cplusplus
}
#endif
