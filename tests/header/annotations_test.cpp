// SPDX-License-Identifier: MIT
// What the header's annotations say of null, against what the exports do with it. Every pointer of every
// export is null once, with all other arguments as they should be: where the annotation allows it there is an
// answer, and elsewhere the C runtime's invalid-parameter handler runs, or the call faults.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "application/Installation.h"
#include "support/CurrentFolder.h"
#include "support/InvalidParameter.h"
#include "support/Library.h"

namespace {

// --- The header

// The parameters of a declaration, each with its annotation.
std::vector<std::string> Parameters(const std::string& header, const std::string& name) {
  std::vector<std::string> parameters;
  std::size_t at = header.find(name + "(");
  // (In the documentation a name has a # before it, and no parenthesis behind it.)
  if (at == header.npos) return parameters;
  int depth = 0;
  std::string one;
  for (at += name.size();; ++at) {
    const char c = header[at];
    depth += (c == '(' || c == '<') - (c == ')' || c == '>');
    if (depth == 0 || (depth == 1 && c == ',')) {
      parameters.push_back(std::move(one));
      one.clear();
      if (depth == 0) return parameters;
    } else if (depth > 1 || c != '(') {
      one += c;
    }
  }
}

bool IsOptional(const std::string& parameter) {
  return parameter.find("_opt_") != parameter.npos;
}
// Its last word.
std::string NameOf(const std::string& parameter) {
  return parameter.substr(parameter.find_last_of(" *&\n") + 1);
}

// Without a file the platform takes its own win.ini. The library promises nothing of it, and it is no place
// for a test to write to.
bool IsWinIni(const std::string& name, const std::string& parameter) {
  const bool settings = name.find("ZERA_TOOLS_READ_") == 0 || name.find("ZERA_TOOLS_WRITE_") == 0;
  return (settings && parameter == "file") || parameter == "settingsFile";
}

// --- One call

enum Outcome { kAnswers, kRefuses, kFaults };
const char* const kOutcomes[] = {"has an answer", "is an invalid parameter", "faults"};

DWORD callingThread;
LONG WINAPI EndThread(EXCEPTION_POINTERS* fault) {
  if (::GetCurrentThreadId() != callingThread) return EXCEPTION_CONTINUE_SEARCH;
  if (fault->ExceptionRecord->ExceptionCode != static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION))
    return EXCEPTION_CONTINUE_SEARCH;
  ::ExitThread(kFaults);
}
DWORD WINAPI Run(void* call) {
  callingThread = ::GetCurrentThreadId();
  (*static_cast<const std::function<void()>*>(call))();
  return kAnswers;
}

// In a thread of its own, which a fault ends.
Outcome Try(const std::function<void()>& call) {
  const test::InvalidParameter handler;
  void* const faults = ::AddVectoredExceptionHandler(1, &EndThread);
  const HANDLE thread =
      ::CreateThread(nullptr, 0, &Run, const_cast<std::function<void()>*>(&call), 0, nullptr);
  EXPECT_EQ(::WaitForSingleObject(thread, 60'000), WAIT_OBJECT_0);
  DWORD outcome = 0;
  ::GetExitCodeThread(thread, &outcome);
  ::CloseHandle(thread);
  ::RemoveVectoredExceptionHandler(faults);
  return handler.Count() > 0 ? kRefuses : static_cast<Outcome>(outcome);
}

using ByteArray = CArray<BYTE, const BYTE&>;

// Arguments as they should be, by their types.
class Arguments {
 public:
  explicit Arguments(const std::wstring& path) : path_(path), plain_(test::Ansi(path)) {}

  template <class Type>
  Type Make() {
    using Bare = std::remove_cv_t<std::remove_reference_t<Type>>;
    if constexpr (std::is_same_v<Type, const char*>) {
      return plain_.c_str();
    } else if constexpr (std::is_same_v<Type, const wchar_t*>) {
      return path_.c_str();
    } else if constexpr (std::is_same_v<Type, char*>) {
      return New<Room<char>>().text;
    } else if constexpr (std::is_same_v<Type, wchar_t*>) {
      return New<Room<wchar_t>>().text;
    } else if constexpr (std::is_same_v<Type, const BYTE*> || std::is_same_v<Type, BYTE*>) {
      return reinterpret_cast<BYTE*>(New<Room<char>>().text);
    } else if constexpr (std::is_same_v<Type, HMODULE>) {
      return ::GetModuleHandleW(nullptr);
    } else if constexpr (std::is_pointer_v<Type>) {
      return &New<std::remove_pointer_t<Type>>();
    } else if constexpr (std::is_reference_v<Type>) {
      return New<Bare>();
    } else if constexpr (std::is_unsigned_v<Type>) {
      // Room, or milliseconds and seconds to wait.
      return sizeof(Type) == sizeof(std::size_t) ? kRoom : 20;
    } else {
      return {};
    }
  }

 private:
  static constexpr std::size_t kRoom = 512;
  template <class Char>
  struct Room {
    Char text[kRoom] = {'C', ':', '\\', 'a', '\\', 'b', '.', 'c'};
  };
  template <class Type>
  Type& New() {
    auto made = std::make_shared<Type>();
    made_.push_back(made);
    return *made;
  }

  std::wstring path_;
  std::string plain_;
  std::list<std::shared_ptr<void>> made_;
};

template <class Type>
Type NullOr(bool null, Arguments& arguments) {
  if constexpr (std::is_pointer_v<Type>) {
    if (null) return nullptr;
  }
  return arguments.Make<Type>();
}

class Annotations : public ::testing::Test {
 protected:
  Annotations() { installation_.common = installation_.user = temp_.path(); }

  template <class Result, class... Types>
  void Check(const std::string& name, unsigned ordinal, Result (*)(Types...)) {
    ++exports_;
    const std::vector<std::string> declared = Parameters(header_, name);
    ASSERT_EQ(declared.size(), std::max<std::size_t>(sizeof...(Types), 1)) << name;
    CheckEach(name, test::Export<Result(Types...)>(ordinal), declared, std::index_sequence_for<Types...>());
  }

  template <class Result, class... Types, std::size_t... Places>
  void CheckEach(const std::string& name, Result (*function)(Types...),
                 const std::vector<std::string>& declared, std::index_sequence<Places...>) {
    const bool pointers[] = {std::is_pointer_v<Types>..., false};
    for (std::size_t null = 0; null < sizeof...(Types); ++null) {
      if (!pointers[null]) continue;
      const bool optional = IsOptional(declared[null]);
      const std::string parameter = NameOf(declared[null]);
      if (!optional && IsWinIni(name, parameter)) continue;
      const std::wstring path = temp_ / L"view.ini";
      test::WriteBytes(path, "[S]\r\nK=1\r\n");
      Arguments arguments(name.find("ZERA_TOOLS_DEC") == 0 ? L"4142" : path);
      const Outcome outcome = Try([&] { function(NullOr<Types>(Places == null, arguments)...); });
      ++tried_;
      optional_ += optional;
      EXPECT_EQ(outcome == kAnswers, optional)
          << declared[null] << "\n"
          << name << ": null for " << parameter << " " << kOutcomes[outcome];
    }
  }

  const std::string header_ = test::ReadBytes(L"ZERATools.h");
  const test::TempFolder temp_;
  test::Installation installation_{temp_ / L"view.exe"};
  // What is meant for a file without a name finds nothing but this folder.
  const test::CurrentFolder current_{temp_.path()};
  int exports_ = 0, tried_ = 0, optional_ = 0;
};

TEST_F(Annotations, AreTrueOfNull) {
#define EXPORT(name) Check(#name, name##_ORDINAL, static_cast<decltype(&name)>(nullptr));
#include "exports.inc"
  EXPECT_EQ(exports_, 142);
  std::printf("annotations: %d pointers, %d of them may be null\n", tried_, optional_);
}

}  // namespace
