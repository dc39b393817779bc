// SPDX-License-Identifier: MIT
// ZERATools/CheckedCalls.h: in a debug build of a C host, an object that was not made is seen before an
// export gets it. Part of ZERATools/Objects.h. In C++ zera_ref looks; the thread object needs no making.
#ifndef ZERATOOLS_CHECKED_CALLS_H
#define ZERATOOLS_CHECKED_CALLS_H

#include "ObjectChecks.h"
#include "Structures.h"

#if ZERATOOLS_CHECK_OBJECTS && !defined(__cplusplus)

static inline ZERA_WSTRING* zera_checked_w_(const ZERA_WSTRING* object, const char* function) {
  zera_check_used_(object, function);
  return (ZERA_WSTRING*)object;
}
static inline ZERA_ASTRING* zera_checked_a_(const ZERA_ASTRING* object, const char* function) {
  zera_check_used_(object, function);
  return (ZERA_ASTRING*)object;
}
static inline ZERA_BYTES* zera_checked_b_(const ZERA_BYTES* object, const char* function) {
  zera_check_used_(object, function);
  return (ZERA_BYTES*)object;
}

  // A name in brackets is the export itself.
  #define ZERA_TOOLS_UC_TO_MBC(text, result) \
    (ZERA_TOOLS_UC_TO_MBC)(text, zera_checked_a_(result, "ZERA_TOOLS_UC_TO_MBC"))
  #define ZERA_TOOLS_CHAR8_TO_MBC(text, result) \
    (ZERA_TOOLS_CHAR8_TO_MBC)(text, zera_checked_a_(result, "ZERA_TOOLS_CHAR8_TO_MBC"))
  #define ZERA_TOOLS_CHAR8_TO_UC(text, result) \
    (ZERA_TOOLS_CHAR8_TO_UC)(text, zera_checked_w_(result, "ZERA_TOOLS_CHAR8_TO_UC"))
  #define ZERA_TOOLS_STRING_MBC_TO_UTF8(text, result) \
    (ZERA_TOOLS_STRING_MBC_TO_UTF8)(text, zera_checked_a_(result, "ZERA_TOOLS_STRING_MBC_TO_UTF8"))
  #define ZERA_TOOLS_STRING_UC_TO_UTF8(text, result) \
    (ZERA_TOOLS_STRING_UC_TO_UTF8)(text, zera_checked_a_(result, "ZERA_TOOLS_STRING_UC_TO_UTF8"))
  #define ZERA_TOOLS_STRING_UTF8_TO_MBC(text, result) \
    (ZERA_TOOLS_STRING_UTF8_TO_MBC)(text, zera_checked_a_(result, "ZERA_TOOLS_STRING_UTF8_TO_MBC"))
  #define ZERA_TOOLS_STRING_UTF8_TO_UC(text, result) \
    (ZERA_TOOLS_STRING_UTF8_TO_UC)(text, zera_checked_w_(result, "ZERA_TOOLS_STRING_UTF8_TO_UC"))
  #define ZERA_TOOLS_STRING_UC_TO_HEX(text, result) \
    (ZERA_TOOLS_STRING_UC_TO_HEX)(text, zera_checked_w_(result, "ZERA_TOOLS_STRING_UC_TO_HEX"))
  #define ZERA_TOOLS_STRING_HEX_TO_UC(text, result) \
    (ZERA_TOOLS_STRING_HEX_TO_UC)(text, zera_checked_w_(result, "ZERA_TOOLS_STRING_HEX_TO_UC"))
  #define ZERA_TOOLS_ENC_UC(passPhrase, plain, text, hex)                 \
    (ZERA_TOOLS_ENC_UC)(zera_checked_b_(passPhrase, "ZERA_TOOLS_ENC_UC"), \
                        zera_checked_b_(plain, "ZERA_TOOLS_ENC_UC"),      \
                        zera_checked_w_(text, "ZERA_TOOLS_ENC_UC"), hex)
  #define ZERA_TOOLS_DEC_UC(passPhrase, text, hex, plain)                            \
    (ZERA_TOOLS_DEC_UC)(zera_checked_b_(passPhrase, "ZERA_TOOLS_DEC_UC"), text, hex, \
                        zera_checked_b_(plain, "ZERA_TOOLS_DEC_UC"))
  #define ZERA_TOOLS_ENC_STRING_S(passPhrase, plain, text)                                   \
    (ZERA_TOOLS_ENC_STRING_S)(passPhrase, zera_checked_a_(plain, "ZERA_TOOLS_ENC_STRING_S"), \
                              zera_checked_a_(text, "ZERA_TOOLS_ENC_STRING_S"))
  #define ZERA_TOOLS_ENC_STRING_S_UC(passPhrase, plain, text)                                      \
    (ZERA_TOOLS_ENC_STRING_S_UC)(passPhrase, zera_checked_w_(plain, "ZERA_TOOLS_ENC_STRING_S_UC"), \
                                 zera_checked_w_(text, "ZERA_TOOLS_ENC_STRING_S_UC"))
  #define ZERA_TOOLS_ENC_STRING_L(passPhrase, plain, text)                                   \
    (ZERA_TOOLS_ENC_STRING_L)(passPhrase, zera_checked_a_(plain, "ZERA_TOOLS_ENC_STRING_L"), \
                              zera_checked_a_(text, "ZERA_TOOLS_ENC_STRING_L"))
  #define ZERA_TOOLS_ENC_STRING_L_UC(passPhrase, plain, text)                                      \
    (ZERA_TOOLS_ENC_STRING_L_UC)(passPhrase, zera_checked_w_(plain, "ZERA_TOOLS_ENC_STRING_L_UC"), \
                                 zera_checked_w_(text, "ZERA_TOOLS_ENC_STRING_L_UC"))
  #define ZERA_TOOLS_DEC_STRING(passPhrase, text, plain)                                \
    (ZERA_TOOLS_DEC_STRING)(passPhrase, zera_checked_a_(text, "ZERA_TOOLS_DEC_STRING"), \
                            zera_checked_a_(plain, "ZERA_TOOLS_DEC_STRING"))
  #define ZERA_TOOLS_DEC_STRING_UC(passPhrase, text, plain) \
    (ZERA_TOOLS_DEC_STRING_UC)(passPhrase, text, zera_checked_w_(plain, "ZERA_TOOLS_DEC_STRING_UC"))
  #define ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC(module, file) \
    (ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC)(                  \
        module, zera_checked_a_(file, "ZERA_TOOLS_APPLICATION_GET_INIFILE_MBC"))
  #define ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(module, file) \
    (ZERA_TOOLS_APPLICATION_GET_INIFILE_UC)(module,           \
                                            zera_checked_w_(file, "ZERA_TOOLS_APPLICATION_GET_INIFILE_UC"))
  #define ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC(module, file, copied) \
    (ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC)(                          \
        module, zera_checked_a_(file, "ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_MBC"), copied)
  #define ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(module, file, copied) \
    (ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC)(                          \
        module, zera_checked_w_(file, "ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC"), copied)
  #define ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC(module, commonData, userData)         \
    (ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC)(                                          \
        module, zera_checked_w_(commonData, "ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC"), \
        zera_checked_w_(userData, "ZERA_TOOLS_APPLICATION_GET_APPDATAFILES_UC"))

#endif

#endif  // ZERATOOLS_CHECKED_CALLS_H
