// SPDX-License-Identifier: MIT
// Null wherever the exports have an answer to it. Compiled with annotations that refuse it elsewhere.
#include <ZERATools.h>

int host(CStringA& narrow, CStringW& wide, CArray<BYTE, const BYTE&>& bytes);
int host(CStringA& narrow, CStringW& wide, CArray<BYTE, const BYTE&>& bytes) {
  char text[24];
  wchar_t wideText[24];
  BYTE byte;
  size_t count;
#if defined(WRONG)
  return WRONG;
#endif
  // A path that cannot be asked for is missing; results that nobody wants.
  ZERA_TOOLS_FILE_EXIST(nullptr);
  ZERA_TOOLS_FILE_EXIST_UC(nullptr);
  ZERA_TOOLS_FILE_DELETE(nullptr);
  ZERA_TOOLS_FILE_DELETE_UC(nullptr);
  ZERA_TOOLS_FILE_GET_SIZE(nullptr);
  ZERA_TOOLS_FILE_GET_SIZE_UC(nullptr);
  ZERA_TOOLS_FILE_HAS_EXTENSION(nullptr, nullptr);
  ZERA_TOOLS_FILE_HAS_EXTENSION_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_WAIT_FOR_FILE(nullptr, 20);
  ZERA_TOOLS_FILE_WAIT_FOR_FILE_UC(nullptr, 20);
  ZERA_TOOLS_FILE_RENAME(nullptr, nullptr);
  ZERA_TOOLS_FILE_RENAME_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_GET_TIME_MODIFIED(nullptr, nullptr);
  ZERA_TOOLS_FILE_GET_TIME_MODIFIED_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_COPY(nullptr, nullptr);
  ZERA_TOOLS_FILE_COPY_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_COMPARE(nullptr, nullptr);
  ZERA_TOOLS_FILE_COMPARE_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_CREATE(nullptr);
  ZERA_TOOLS_FILE_CREATE_UC(nullptr);
  ZERA_TOOLS_FILE_TO_BUFFER(nullptr, nullptr, 0, nullptr);
  ZERA_TOOLS_FILE_TO_BUFFER_UC(nullptr, nullptr, 0, nullptr);
  ZERA_TOOLS_FILE_FROM_BUFFER(nullptr, nullptr, 0);
  ZERA_TOOLS_FILE_FROM_BUFFER_UC(nullptr, nullptr, 0);
  ZERA_TOOLS_FILE_CHECK_WRITE(nullptr);
  ZERA_TOOLS_FILE_CHECK_WRITE_UC(nullptr);
  ZERA_TOOLS_FILE_GET_VERSION(nullptr, nullptr, 0);
  ZERA_TOOLS_FILE_GET_VERSION_UC(nullptr, wideText, 24);
  // A component that goes.
  ZERA_TOOLS_FILE_REPLACE_DRIVE(text, 24, nullptr);
  ZERA_TOOLS_FILE_REPLACE_DIR_UC(wideText, 24, nullptr);
  ZERA_TOOLS_FILE_REPLACE_NAME(text, 24, nullptr);
  ZERA_TOOLS_FILE_REPLACE_EXT_UC(wideText, 24, nullptr);
  // A refused start path, a filter that is empty, no flag.
  ZERA_TOOLS_FILE_DELETE_ALL(nullptr, nullptr);
  ZERA_TOOLS_FILE_DELETE_ALL_UC(nullptr, nullptr);
  ZERA_TOOLS_FILE_DELETE_ALL_OLD(nullptr, nullptr, 1);
  ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC(nullptr, nullptr, 1);
  ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX(nullptr, nullptr, 1);
  ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(nullptr, nullptr, 1, nullptr);
  ZERA_TOOLS_FILE_COPY_ALL(nullptr, nullptr, 1);
  ZERA_TOOLS_FILE_COPY_ALL_UC(nullptr, nullptr, 1);
  // Null names mean to the platform what they mean; a null value removes the key.
  ZERA_TOOLS_READ_STRING(nullptr, nullptr, "", nullptr, text, 24);
  ZERA_TOOLS_READ_STRING_UC(nullptr, nullptr, L"", nullptr, wideText, 24);
  ZERA_TOOLS_READ_INT(nullptr, nullptr, "", 0, 0, 1);
  ZERA_TOOLS_READ_DOUBLE_UC(nullptr, nullptr, L"", 0, 0, 1);
  ZERA_TOOLS_READ_FLOAT(nullptr, nullptr, nullptr, 0, 0, 1);
  ZERA_TOOLS_WRITE_STRING("Start", nullptr, "", nullptr);
  ZERA_TOOLS_WRITE_STRING_UC(L"Start", nullptr, L"", nullptr);
  ZERA_TOOLS_WRITE_INT(nullptr, nullptr, "", 1);
  ZERA_TOOLS_WRITE_DOUBLE(nullptr, nullptr, nullptr, 1);
  ZERA_TOOLS_BUFWRITE_SECTION(nullptr, text, 24, &count);
  ZERA_TOOLS_BUFWRITE_STRING_UC(nullptr, wideText, 24, nullptr, &count);
  ZERA_TOOLS_BUFWRITE_FLOAT(nullptr, text, 24, 1, &count);
  // Names, objects and modules.
  ZERA_TOOLS_KILLPROCESS(nullptr);
  ZERA_TOOLS_GETNUM_APPRUNNING(nullptr);
  ZERA_TOOLS_POSTTHREADMESSAGE(nullptr, WM_NULL, 0, 0);
  ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(nullptr, wide);
  ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_MBC(nullptr);
  ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(nullptr, 1);
  // An empty text, pass phrases too.
  ZERA_TOOLS_ENC(nullptr, nullptr, 0, text, 24, 1);
  ZERA_TOOLS_DEC(nullptr, nullptr, 1, &byte, 1);
  ZERA_TOOLS_DEC_UC(bytes, nullptr, 1, bytes);
  ZERA_TOOLS_ENC_STRING_S(nullptr, narrow, narrow);
  ZERA_TOOLS_ENC_STRING_L_UC(nullptr, wide, wide);
  ZERA_TOOLS_DEC_STRING_UC(nullptr, nullptr, wide);
  ZERA_TOOLS_UC_TO_MBC(nullptr, narrow);
  ZERA_TOOLS_STRING_HEX_TO_UC(nullptr, wide);
  return 0;
}
