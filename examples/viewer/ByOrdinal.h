// SPDX-License-Identifier: MIT
// ByOrdinal.h: exports of the library that the viewer binds by their numbers instead of their names.
#pragma once

#include <ZERATools.h>

namespace viewer {

/// An export with the type that the header declares. The numbers never change.
template <class Function>
Function* ByOrdinal(unsigned ordinal) {
  const HMODULE library = ::GetModuleHandleW(L"ZERATools.dll");
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(::GetProcAddress(library, MAKEINTRESOURCEA(ordinal))));
}

inline const auto ReadString = ByOrdinal<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050);
inline const auto WriteString = ByOrdinal<decltype(ZERA_TOOLS_WRITE_STRING_UC)>(1060);
inline const auto Encrypt = ByOrdinal<decltype(ZERA_TOOLS_ENC_STRING_L_UC)>(1077);
inline const auto Decrypt = ByOrdinal<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076);
inline const auto DeleteOld = ByOrdinal<decltype(ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC)>(1008);
inline const auto CopyAll = ByOrdinal<decltype(ZERA_TOOLS_FILE_COPY_ALL_UC)>(1018);

}  // namespace viewer
