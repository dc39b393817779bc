// SPDX-License-Identifier: MIT
#include "suggest.h"

#include <algorithm>
#include <vector>

namespace zt {
namespace {

std::wstring Lower(std::wstring_view text) {
  std::wstring lower(text);
  for (wchar_t& one : lower) {
    if (one >= L'A' && one <= L'Z') one = static_cast<wchar_t>(one + 32);
  }
  return lower;
}

}  // namespace

std::size_t EditDistance(std::wstring_view first, std::wstring_view second) {
  // The last three rows of the table: a swap looks two rows back.
  std::vector<std::size_t> older, old(second.size() + 1), now(second.size() + 1);
  for (std::size_t j = 0; j <= second.size(); ++j) now[j] = j;
  for (std::size_t i = 1; i <= first.size(); ++i) {
    older = old;
    old = now;
    now[0] = i;
    for (std::size_t j = 1; j <= second.size(); ++j) {
      const std::size_t replaced = old[j - 1] + (first[i - 1] != second[j - 1]);
      now[j] = std::min({old[j] + 1, now[j - 1] + 1, replaced});
      if (i > 1 && j > 1 && first[i - 1] == second[j - 2] && first[i - 2] == second[j - 1]) {
        now[j] = std::min(now[j], older[j - 2] + 1);
      }
    }
  }
  return now[second.size()];
}

std::wstring DidYouMean(std::wstring_view given, std::span<const std::wstring> words) {
  const std::wstring* nearest = nullptr;
  std::size_t least = 3;
  for (const std::wstring& word : words) {
    const std::size_t distance = EditDistance(Lower(given), Lower(word));
    if (distance < least && distance < std::max(given.size(), word.size()) / 2 + 1) {
      least = distance;
      nearest = &word;
    }
  }
  return nearest ? L"; did you mean " + *nearest + L"?" : L"";
}

}  // namespace zt
