// SPDX-License-Identifier: MIT
// Files and folders. What is changed or deleted lies inside the folder of the calls; other paths are only
// asked about.
#include "Calls.h"

namespace garbage {
namespace {

template <class Char>
void AddAsking(Calls& calls) {
  calls[Twin<Char>(1)] = [](Arguments& arguments) {
    return Truth(Bound<int(const Char*)>(Twin<Char>(1))(arguments.AnyPath<Char>()));
  };
  calls[Twin<Char>(4)] = [](Arguments& arguments) {
    Bound<unsigned(const Char*)>(Twin<Char>(4))(arguments.AnyPath<Char>());
    return std::string();
  };
  calls[Twin<Char>(6)] = [](Arguments& arguments) {
    const Char* const path = arguments.AnyPath<Char>();
    // Less than 20 is no limit.
    return Truth(Bound<int(const Char*, unsigned)>(Twin<Char>(6))(path, 20 + arguments.random.Below(100)));
  };
  calls[Twin<Char>(27)] = [](Arguments& arguments) {
    const Char* const path = arguments.AnyPath<Char>();
    long long time = 0;
    return Truth(Bound<int(const Char*, long long*)>(Twin<Char>(27))(
        path, arguments.random.Chance(8) ? nullptr : &time));
  };
  calls[Twin<Char>(9)] = [](Arguments& arguments) {
    const float free = Bound<float(Char)>(Twin<Char>(9))(static_cast<Char>(arguments.Number()));
    return std::string(free >= 0 ? "" : "a negative room");
  };
  calls[Twin<Char>(34)] = [](Arguments& arguments) {
    const Char* const path = arguments.AnyPath<Char>(false);
    const auto out = arguments.Room<Char>();
    const int got = Bound<int(const Char*, Char*, std::size_t)>(Twin<Char>(34))(path, out, out.capacity);
    return out.Terminated() ? Truth(got) : "no terminator";
  };
  calls[Twin<Char>(17)] = [](Arguments& arguments) {
    const Char* const one =
        arguments.random.Chance(2) ? arguments.OwnPath<Char>() : arguments.AnyPath<Char>(false);
    const Char* const other = arguments.random.Chance(8) ? one : arguments.OwnPath<Char>();
    return Truth(Bound<int(const Char*, const Char*)>(Twin<Char>(17))(one, other));
  };
  calls[Twin<Char>(25)] = [](Arguments& arguments) {
    const Char* const path = arguments.OwnPath<Char>();
    const auto out = arguments.Room<unsigned char>();
    unsigned long long count = 0;
    const int got = Bound<int(const Char*, unsigned char*, unsigned long long, unsigned long long*)>(
        Twin<Char>(25))(path, out, out.capacity, arguments.random.Chance(9) ? nullptr : &count);
    return count <= out.capacity ? Truth(got) : "more than there is room for";
  };
}

template <class Char>
void AddChanging(Calls& calls) {
  for (const unsigned plain : {2u, 19u, 31u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      return Truth(Bound<int(const Char*)>(Twin<Char>(plain))(arguments.OwnPath<Char>()));
    };
  }
  for (const unsigned plain : {7u, 16u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      const Char* const from = arguments.OwnPath<Char>();
      const Char* const to = arguments.random.Chance(16) ? from : arguments.OwnPath<Char>();
      return Truth(Bound<int(const Char*, const Char*)>(Twin<Char>(plain))(from, to));
    };
  }
  calls[Twin<Char>(26)] = [](Arguments& arguments) {
    const Char* const path = arguments.OwnPath<Char>();
    const auto bytes = arguments.Room<unsigned char>();
    return Truth(Bound<int(const Char*, const unsigned char*, unsigned long long)>(Twin<Char>(26))(
        path, bytes, bytes.capacity));
  };
}

template <class Char>
void AddTrees(Calls& calls) {
  calls[Twin<Char>(3)] = [](Arguments& arguments) {
    const Char* const path = arguments.OwnPath<Char>();
    return Truth(Bound<int(const Char*, const Char*)>(Twin<Char>(3))(path, arguments.TextOrNull<Char>()));
  };
  for (const unsigned plain : {8u, 29u}) {
    calls[Twin<Char>(plain)] = [=](Arguments& arguments) {
      const Char* const path = arguments.OwnPath<Char>();
      const Char* const filter = arguments.TextOrNull<Char>();
      const unsigned age = arguments.Number();
      if constexpr (sizeof(Char) == 2) {
        int abort = static_cast<int>(arguments.random.Below(2));
        if (plain == 29) {
          return Truth(Bound<int(const Char*, const Char*, unsigned, int*)>(1029)(
              path, filter, age, arguments.random.Chance(2) ? &abort : nullptr));
        }
      }
      return Truth(Bound<int(const Char*, const Char*, unsigned)>(Twin<Char>(plain))(path, filter, age));
    };
  }
  calls[Twin<Char>(18)] = [](Arguments& arguments) {
    // A tree that is copied into itself grows with every call, so the target is another one.
    const Char* const from =
        arguments.PathOrNull(arguments.random.Inside<Char>(arguments.scratch() + L"tree\\"));
    auto to = arguments.random.Inside<Char>(arguments.scratch() + L"copy\\");
    to += '\\';
    return Truth(Bound<int(const Char*, Char*, unsigned)>(Twin<Char>(18))(from, arguments.Text(to),
                                                                          arguments.random.Below(2)));
  };
}

template <class Char>
void Add(Calls& calls) {
  AddAsking<Char>(calls);
  AddChanging<Char>(calls);
  AddTrees<Char>(calls);
}

}  // namespace

void AddFiles(Calls& calls) {
  Add<char>(calls);
  Add<wchar_t>(calls);
}

}  // namespace garbage
