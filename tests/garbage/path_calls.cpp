// SPDX-License-Identifier: MIT
// Paths as text.
#include "Calls.h"

namespace garbage {
namespace {

template <class Char>
std::string Judged(int got, const Room<Char>& room) {
  return room.Terminated() ? Expect(got == 1, got) : "no terminator";
}

template <class Char>
void Add(Calls& calls) {
  for (const unsigned plain : {10u, 11u, 12u, 13u, 14u, 15u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      const Char* const path = arguments.TextOrNull<Char>();
      const auto out = arguments.Room<Char>();
      return Judged(Bound<int(const Char*, Char*, std::size_t)>(Twin<Char>(plain))(path, out, out.capacity),
                    out);
    };
  }
  // The text to change may be longer than it is now, and be its own argument.
  const auto changed = [](Arguments& arguments) {
    auto text = arguments.random.Text<Char>();
    text.resize(text.size() + arguments.random.Below(3) * arguments.random.Length());
    return Room<Char>{arguments.Text(text), text.size() + 1};
  };
  for (const unsigned plain : {20u, 21u, 22u, 23u, 24u, 28u, 30u, 32u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      const auto path = changed(arguments);
      const Char* const other = arguments.random.Chance(8) ? path.data : arguments.TextOrNull<Char>();
      return Judged(
          Bound<int(Char*, std::size_t, const Char*)>(Twin<Char>(plain))(path, path.capacity, other), path);
    };
  }
  calls[Twin<Char>(33)] = [=](Arguments& arguments) {
    const auto path = changed(arguments);
    const unsigned index = arguments.Number();
    const unsigned digits =
        arguments.Told(arguments.random.Chance(2) ? arguments.random.Below(12) : arguments.random.Number());
    return Judged(Bound<int(Char*, std::size_t, unsigned, unsigned)>(Twin<Char>(33))(path, path.capacity,
                                                                                     index, digits),
                  path);
  };
  calls[Twin<Char>(5)] = [](Arguments& arguments) {
    const Char* const path = arguments.TextOrNull<Char>();
    return Truth(Bound<int(const Char*, const Char*)>(Twin<Char>(5))(path, arguments.TextOrNull<Char>()));
  };
}

}  // namespace

void AddPaths(Calls& calls) {
  Add<char>(calls);
  Add<wchar_t>(calls);
}

}  // namespace garbage
