// SPDX-License-Identifier: MIT
// A C host that uses the header alone.
#include <ZERATools.h>
#include <windows.h>

#if ZERATOOLS_VERSION_MAJOR < 1
  #error "the version cannot be asked for"
#endif

typedef int(__cdecl* Exist)(const char* path);

int host(HMODULE library);
int host(HMODULE library) {
  wchar_t name[260];
  size_t count = 0;
  char line[80];
  const Exist exist = ZERA_TOOLS_FILE_EXIST;
  ZERA_TOOLS_FILE_GET_NAME_UC(L"C:\\data\\run.ini", name, 260);
  ZERA_TOOLS_BUFWRITE_SECTION("Section", line, sizeof line, &count);
#if defined(WRONG)
  ZERA_TOOLS_FILE_EXIST(L"run.ini");
#endif
  return exist("run.ini") + ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(1, L"run.ini") +
         (ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(library, 1) != NULL) + ZERA_TOOLS_ROUND_INT(1.5) +
         ZERA_TOOLS_FILE_EXIST_ORDINAL;
}
