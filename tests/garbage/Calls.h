// SPDX-License-Identifier: MIT
// Calls.h: how each export is called with random arguments.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "Arguments.h"
#include "support/Library.h"

namespace garbage {

/// One call; gives what is wrong with its answer, or nothing.
using Call = std::function<std::string(Arguments&)>;
using Calls = std::map<unsigned, Call>;

void AddPaths(Calls& calls);
void AddFiles(Calls& calls);
void AddSettings(Calls& calls);
void AddTexts(Calls& calls);
void AddMachine(Calls& calls);

/// The ordinal of a twin: UTF-16 is 1000 further.
template <class Char>
constexpr unsigned Twin(unsigned plain) {
  return sizeof(Char) == 2 ? plain + 1000 : plain;
}

/// An export by ordinal with a written-out type, for both kinds of text.
template <class Function>
Function* Bound(unsigned ordinal) {
  return test::Export<Function>(ordinal);
}

inline std::string Expect(bool right, long long got) {
  return right ? "" : "the result is " + std::to_string(got);
}
inline std::string Truth(long long got) {
  return Expect(got == 0 || got == 1, got);
}

}  // namespace garbage
