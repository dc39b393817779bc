// SPDX-License-Identifier: MIT
// A host in a language that is too old: it is told so once, and nothing else.
#include <ZERATools.h>

int host() {
  return ZERA_TOOLS_FILE_EXIST("run.ini") + ZERA_TOOLS_FILE_EXIST_ORDINAL;
}
