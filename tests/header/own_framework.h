// SPDX-License-Identifier: MIT
// A framework of the host's own. Its classes have other members than ours, so that a mixture of both cannot
// compile.
#pragma once

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
