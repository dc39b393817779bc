// SPDX-License-Identifier: MIT
// Hands an object to an export as C++ does, before it is made; a debug build must end here with a message.
#include <ZERATools/Objects.h>

#include <cstdio>

int main() {
  static ZERA_WSTRING wide;
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  ZERA_TOOLS_STRING_UC_TO_HEX(L"x", zera_ref(&wide));
  std::printf("reached the end\n");
  return 0;
}
