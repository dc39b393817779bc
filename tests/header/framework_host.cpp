// SPDX-License-Identifier: MIT
// A host with a framework of its own. Its classes have other members than ours, so that a mixture of both
// cannot compile.
#include <windows.h>

template <class Char>
class HostString {
 public:
  int OnlyInTheHost() const { return 7; }

 private:
  Char* text_ = nullptr;
};
using CStringA = HostString<char>;
using CStringW = HostString<wchar_t>;
template <class Type, class Arg>
class CArray {
 public:
  int OnlyInTheHost() const { return 7; }
};
class CWinThread {};

#include <ZERATools.h>

int host(CStringW& text, const CArray<BYTE, const BYTE&>& bytes, CWinThread* thread);
int host(CStringW& text, const CArray<BYTE, const BYTE&>& bytes, CWinThread* thread) {
  ZERA_TOOLS_STRING_UTF8_TO_UC("text", text);
  return ZERA_TOOLS_ENC_UC(bytes, bytes, text, 1) + ZERA_TOOLS_POSTTHREADMESSAGE(thread, 0, 0, 0) +
         text.OnlyInTheHost() + bytes.OnlyInTheHost();
}
