// SPDX-License-Identifier: MIT
// Uses an object wrongly, as its argument says; a debug build must end here with a message.
#include <ZERATools/Objects.h>
#include <stdio.h>

int main(int count, char** arguments) {
  const int what = count > 1 ? arguments[1][0] : 0;
  static ZERA_WSTRING wide;
  static ZERA_ASTRING narrow;
  static ZERA_BYTES bytes;
  // No window of the runtime or of the system: the message on the error output counts.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  switch (what) {
    case 'a':  // used before it is made
      zera_wstring_set(&wide, L"x");
      break;
    case 'b':  // made twice
      zera_wstring_make(&wide);
      zera_wstring_make(&wide);
      break;
    case 'c':  // used after it is freed
      zera_astring_make(&narrow);
      zera_astring_free(&narrow);
      zera_astring_set(&narrow, "x");
      break;
    case 'd':  // freed twice
      zera_bytes_make(&bytes);
      zera_bytes_free(&bytes);
      zera_bytes_free(&bytes);
      break;
    case 'e':  // handed to an export before it is made
      ZERA_TOOLS_STRING_UC_TO_HEX(L"x", &wide);
      break;
    case 'f':  // made twice, which a release build does not look for
      zera_bytes_make(&bytes);
      zera_bytes_make(&bytes);
      zera_bytes_free(&bytes);
      break;
    default:  // nothing wrong
      zera_wstring_make(&wide);
      zera_wstring_free(&wide);
      zera_wstring_make(&wide);
      ZERA_TOOLS_STRING_UC_TO_HEX(L"x", &wide);
      zera_wstring_free(&wide);
  }
  printf("reached the end, %ld buffers\n", zera_string_buffers_in_use());
  return 0;
}
