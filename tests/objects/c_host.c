// SPDX-License-Identifier: MIT
// A host in C11: every export that takes the framework's objects, with the plain structures in their place.
#include "c_host.h"

#include <ZERATools/Objects.h>
#include <string.h>

#define COPY_WIDE(to, object) wcsncpy(to, zera_wstring_text(object), sizeof(to) / sizeof *(to)-1)
#define COPY_ANSI(to, object) strncpy(to, zera_astring_text(object), sizeof(to) - 1)

static void Convert(struct CHostAnswers* answers) {
  ZERA_ASTRING narrow;
  ZERA_WSTRING wide;
  zera_astring_make(&narrow);
  zera_wstring_make(&wide);
  ZERA_TOOLS_UC_TO_MBC(L"text", &narrow);
  COPY_ANSI(answers->toAnsi, &narrow);
  ZERA_TOOLS_CHAR8_TO_MBC("signs", &narrow);
  COPY_ANSI(answers->signsToAnsi, &narrow);
  ZERA_TOOLS_CHAR8_TO_UC("signs", &wide);
  COPY_WIDE(answers->signsToWide, &wide);
  ZERA_TOOLS_STRING_MBC_TO_UTF8("ansi", &narrow);
  COPY_ANSI(answers->ansiToUtf8, &narrow);
  ZERA_TOOLS_STRING_UC_TO_UTF8(L"\u00e9\u20ac", &narrow);
  COPY_ANSI(answers->toUtf8, &narrow);
  ZERA_TOOLS_STRING_UTF8_TO_UC(zera_astring_text(&narrow), &wide);
  COPY_WIDE(answers->utf8ToWide, &wide);
  ZERA_TOOLS_STRING_UTF8_TO_MBC("plain", &narrow);
  COPY_ANSI(answers->utf8ToAnsi, &narrow);
  ZERA_TOOLS_STRING_UC_TO_HEX(L"Hello", &wide);
  COPY_WIDE(answers->toHex, &wide);
  ZERA_TOOLS_STRING_HEX_TO_UC(zera_wstring_text(&wide), &wide);
  COPY_WIDE(answers->fromHex, &wide);
  zera_wstring_free(&wide);
  zera_astring_free(&narrow);
}

static void EncryptBytes(struct CHostAnswers* answers) {
  static const unsigned char plain[] = {0, 1, 2, 0xFF};
  ZERA_BYTES passPhrase, bytes;
  ZERA_WSTRING text;
  zera_bytes_make(&passPhrase);
  zera_bytes_make(&bytes);
  zera_wstring_make(&text);
  if (zera_bytes_set(&passPhrase, "key", 3) && zera_bytes_set(&bytes, plain, sizeof plain)) {
    answers->cipherLength = ZERA_TOOLS_ENC_UC(&passPhrase, &bytes, &text, TRUE);
    COPY_WIDE(answers->cipher, &text);
    zera_bytes_empty(&bytes);
    answers->plainCount = ZERA_TOOLS_DEC_UC(&passPhrase, zera_wstring_text(&text), TRUE, &bytes);
    if (zera_bytes_size(&bytes) <= sizeof answers->plainBytes) {
      memcpy(answers->plainBytes, zera_bytes_data(&bytes), zera_bytes_size(&bytes));
    }
  }
  zera_wstring_free(&text);
  zera_bytes_free(&bytes);
  zera_bytes_free(&passPhrase);
}

static void EncryptTexts(struct CHostAnswers* answers) {
  ZERA_WSTRING plain, text;
  ZERA_ASTRING plainAnsi, textAnsi;
  zera_wstring_make(&plain);
  zera_wstring_make(&text);
  zera_astring_make(&plainAnsi);
  zera_astring_make(&textAnsi);
  if (zera_wstring_set(&plain, L"licence") && zera_astring_set(&plainAnsi, "licence")) {
    answers->shortLength = ZERA_TOOLS_ENC_STRING_S_UC(L"key", &plain, &text);
    COPY_WIDE(answers->shortText, &text);
    answers->longLength = ZERA_TOOLS_ENC_STRING_L_UC(L"key", &plain, &text);
    COPY_WIDE(answers->longText, &text);
    answers->decryptedLength = ZERA_TOOLS_DEC_STRING_UC(L"key", zera_wstring_text(&text), &plain);
    COPY_WIDE(answers->decrypted, &plain);
    answers->shortAnsiLength = ZERA_TOOLS_ENC_STRING_S("key", &plainAnsi, &textAnsi);
    COPY_ANSI(answers->shortAnsi, &textAnsi);
    answers->longAnsiLength = ZERA_TOOLS_ENC_STRING_L("key", &plainAnsi, &textAnsi);
    COPY_ANSI(answers->longAnsi, &textAnsi);
    answers->decryptedAnsiLength = ZERA_TOOLS_DEC_STRING("key", &textAnsi, &plainAnsi);
    COPY_ANSI(answers->decryptedAnsi, &plainAnsi);
  }
  zera_astring_free(&textAnsi);
  zera_astring_free(&plainAnsi);
  zera_wstring_free(&text);
  zera_wstring_free(&plain);
}

static void Locate(struct CHostAnswers* answers) {
  ZERA_WSTRING file, common, user;
  ZERA_ASTRING fileAnsi;
  zera_wstring_make(&file);
  zera_wstring_make(&common);
  zera_wstring_make(&user);
  zera_astring_make(&fileAnsi);
  answers->settingsFound[0] = ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(NULL, &file);
  COPY_WIDE(answers->settings[0], &file);
  answers->settingsFound[1] = ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(NULL, &file, &answers->copied[0]);
  COPY_WIDE(answers->settings[1], &file);
  answers->settingsFound[2] = ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC(NULL, &fileAnsi);
  COPY_ANSI(answers->settingsAnsi[0], &fileAnsi);
  answers->settingsFound[3] = ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC(NULL, &fileAnsi, &answers->copied[1]);
  COPY_ANSI(answers->settingsAnsi[1], &fileAnsi);
  answers->folders = ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(NULL, &common, &user);
  COPY_WIDE(answers->commonData, &common);
  COPY_WIDE(answers->userData, &user);
  zera_astring_free(&fileAnsi);
  zera_wstring_free(&user);
  zera_wstring_free(&common);
  zera_wstring_free(&file);
}

void CallFromC(struct CHostAnswers* answers, unsigned long threadId) {
  ZERA_THREAD thread;
  memset(answers, 0, sizeof *answers);
  Convert(answers);
  EncryptBytes(answers);
  EncryptTexts(answers);
  Locate(answers);
  zera_thread_make(&thread, threadId);
  answers->posted = ZERA_TOOLS_POSTTHREADMESSAGE(&thread, WM_APP, 1, 2);
}

long BuffersOfC(void) {
  return zera_string_buffers_in_use();
}
