// SPDX-License-Identifier: MIT
// What the pages' fragments take from around them: names of a host's own.
#ifndef DOCUMENTS_FRAGMENTS_H
#define DOCUMENTS_FRAGMENTS_H

inline const wchar_t* const source = L"documents source.txt";
inline const wchar_t* const target = L"documents target.txt";

#endif
