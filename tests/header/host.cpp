// SPDX-License-Identifier: MIT
// A C++ host without a framework: the header brings the types, and they do what a host expects of them.
#include <ZERATools.h>
#include <windows.h>

#include <type_traits>

static_assert(!noexcept(ZERA_TOOLS_FILE_EXIST("")));
static_assert(
    std::is_same_v<decltype(ZERA_TOOLS_STRING_UC_TO_UTF8), void __cdecl(const wchar_t*, CStringA&)>);
static_assert(ZERA_TOOLS_FILE_EXIST_ORDINAL == 1 && ZERA_TOOLS_GETNUM_APPRUNNING_UC_ORDINAL == 1091);

int host();
int host() {
  CStringA utf8("text");
  CStringW wide;
  CArray<BYTE, const BYTE&> phrase;
  CArray<BYTE, const BYTE&> plain;
  CWinThread thread(::GetCurrentThreadId());
  phrase.Add(BYTE{1});
  plain.SetSize(4);
  ZERA_TOOLS_STRING_UTF8_TO_UC(utf8, wide);
  wide += L"more";
  return ZERA_TOOLS_ENC_UC(phrase, plain, wide, TRUE) + ZERA_TOOLS_POSTTHREADMESSAGE(&thread, WM_NULL, 0, 0) +
         wide.GetLength();
}
