// SPDX-License-Identifier: MIT
// NumericLocale.h: the process's numeric locale, and a record of how the library switches it.
#pragma once

#include <locale.h>

#include <string>
#include <vector>

#include "support/ImportHook.h"
#include "support/TempFolder.h"

namespace settings {

/// Sets LC_NUMERIC while it lives; a locale that the platform does not have is a failure of the test.
class NumericLocale {
 public:
  explicit NumericLocale(const char* name) : before_(::setlocale(LC_NUMERIC, nullptr)) {
    if (!::setlocale(LC_NUMERIC, name)) ADD_FAILURE() << "no locale " << name;
    now_ = ::setlocale(LC_NUMERIC, nullptr);
  }
  NumericLocale(const NumericLocale&) = delete;
  NumericLocale& operator=(const NumericLocale&) = delete;
  ~NumericLocale() { ::setlocale(LC_NUMERIC, before_.c_str()); }

  /// The platform's full name of it.
  const std::string& name() const { return now_; }
  /// Whether it is still the one that was set.
  bool Kept() const { return now_ == ::setlocale(LC_NUMERIC, nullptr); }

 private:
  std::string before_, now_;
};

/// Records the library's calls of setlocale ("a:name") and _wsetlocale ("w:name"); "?" asks for the name.
class LocaleRecorder {
 public:
  LocaleRecorder() : narrow_("setlocale", &Narrow), wide_("_wsetlocale", &Wide) {
    Calls().clear();
    FailAt() = 0;
  }

  static std::vector<std::string>& Calls() {
    static std::vector<std::string> calls;
    return calls;
  }
  /// Makes the nth call fail.
  static int& FailAt() {
    static int at;
    return at;
  }

 private:
  static char* __cdecl Narrow(int category, const char* name) {
    Record(category, "a:", name ? name : "?");
    return Fails() ? nullptr : ::setlocale(category, name);
  }
  static wchar_t* __cdecl Wide(int category, const wchar_t* name) {
    Record(category, "w:", name ? test::Ansi(name) : "?");
    return Fails() ? nullptr : ::_wsetlocale(category, name);
  }
  static void Record(int category, const std::string& form, const std::string& name) {
    Calls().push_back(category == LC_NUMERIC ? form + name : "category " + std::to_string(category));
  }
  static bool Fails() { return static_cast<int>(Calls().size()) == FailAt(); }

  test::ImportHook narrow_, wide_;
};

}  // namespace settings
