// SPDX-License-Identifier: MIT
// Processes, threads, memory, and where an application keeps its files. The test opens no process to the
// library and posts no message.
#include <cstdlib>
#include <cstring>

#include "Calls.h"

namespace garbage {
namespace {

// The program itself, or what is no module.
HMODULE Module(Arguments& arguments) {
  if (arguments.random.Chance(2)) return nullptr;
  return reinterpret_cast<HMODULE>(static_cast<ULONG_PTR>(arguments.Number()) << 16);
}

template <class Char>
void AddProcesses(Calls& calls) {
  // No process has a name that begins so.
  calls[Twin<Char>(90)] = [](Arguments& arguments) {
    auto name = arguments.random.Path<Char>(true);
    name.insert(name.begin(), {'z', '-', 'g', '-'});
    const int got = Bound<int(const Char*)>(Twin<Char>(90))(arguments.Text(name));
    return Expect(got == 1, got);
  };
  calls[Twin<Char>(91)] = [](Arguments& arguments) {
    const unsigned got = Bound<unsigned(const Char*)>(Twin<Char>(91))(arguments.Text<Char>());
    return Expect(got == 0, got);
  };
}

template <class Char>
void AddLocation(Calls& calls, unsigned plain, unsigned withFlag) {
  calls[plain] = [=](Arguments& arguments) {
    auto& file = arguments.String<Char>();
    return Truth(Bound<int(HMODULE, CStringT<Char>&)>(plain)(Module(arguments), file));
  };
  calls[withFlag] = [=](Arguments& arguments) {
    auto& file = arguments.String<Char>();
    int copied = 77;
    const int got = Bound<int(HMODULE, CStringT<Char>&, int*)>(withFlag)(Module(arguments), file, &copied);
    return Truth(got) + Truth(copied);
  };
}

}  // namespace

void AddMachine(Calls& calls) {
  AddProcesses<char>(calls);
  AddProcesses<wchar_t>(calls);
  AddLocation<char>(calls, 200, 207);
  AddLocation<wchar_t>(calls, 201, 208);
  calls[209] = [](Arguments& arguments) {
    auto& common = arguments.String<wchar_t>();
    auto& user = arguments.String<wchar_t>();
    return Truth(Bound<int(HMODULE, CStringW&, CStringW&)>(209)(Module(arguments), common, user));
  };
  calls[204] = [](Arguments& arguments) {
    const HMODULE module = Module(arguments);
    const HMODULE got = Bound<HMODULE(HMODULE, unsigned)>(204)(module, arguments.Number());
    return std::string(got ? "a module" : "");
  };
  calls[92] = [](Arguments& arguments) {
    auto& thread = arguments.Keep(std::make_shared<CWinThread>(arguments.Number()));
    const int got = Bound<int(CWinThread*, UINT, WPARAM, LPARAM)>(92)(
        arguments.random.Chance(4) ? nullptr : &thread, arguments.Number(), arguments.random.Any(),
        arguments.random.Any());
    return Expect(got == 0, got);
  };
  calls[93] = [](Arguments& arguments) {
    const unsigned size = arguments.Told(arguments.random.Chance(2) ? arguments.random.Below(1u << 20)
                                                                    : arguments.random.Number());
    void* const block = Bound<void*(UINT)>(93)(size);
    constexpr unsigned kSmall = 1u << 20;
    if (!block) return std::string(size <= kSmall ? "null" : "");
    if (size <= kSmall) std::memset(block, 1, size);
    std::free(block);
    return std::string();
  };
}

}  // namespace garbage
