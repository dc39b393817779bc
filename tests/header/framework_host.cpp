// SPDX-License-Identifier: MIT
// A host with a framework of its own.
#include "own_framework.h"

#include <ZERATools.h>

int host(CStringW& text, const CArray<BYTE, const BYTE&>& bytes, CWinThread* thread);
int host(CStringW& text, const CArray<BYTE, const BYTE&>& bytes, CWinThread* thread) {
  ZERA_TOOLS_STRING_UTF8_TO_UC("text", text);
  return ZERA_TOOLS_ENC_UC(bytes, bytes, text, 1) + ZERA_TOOLS_POSTTHREADMESSAGE(thread, 0, 0, 0) +
         text.OnlyInTheHost() + bytes.OnlyInTheHost();
}
