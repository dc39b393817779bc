// SPDX-License-Identifier: MIT
// suggest.h: what a mistyped word was probably meant to be. Text only.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zt {

/// How many letters have to be put in, left out, replaced or swapped with their
/// neighbour.
std::size_t EditDistance(std::wstring_view first, std::wstring_view second);

/// "; did you mean WORD?" for the nearest of the words, or nothing if none is
/// near. Case is ignored.
std::wstring DidYouMean(std::wstring_view given, std::span<const std::wstring> words);

}  // namespace zt
