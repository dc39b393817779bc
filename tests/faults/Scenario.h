// SPDX-License-Identifier: MIT
// Scenario.h: one way to call one export, and what it may answer when the platform fails.
#pragma once

#include <ZERATools.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Faults.h"
#include "support/GuardedBuffer.h"
#include "support/HostString.h"
#include "support/Library.h"
#include "support/Shown.h"
#include "support/TempFolder.h"

namespace faults {

/// What the host passes by reference and still has when an exception has cut the call off.
class HostObject {
 public:
  virtual ~HostObject() = default;
  /// How it came back, and what is wrong with it in capital letters.
  virtual std::string Shown() = 0;
};

/// A folder for the files of a scenario. What is there beside the sources is taken away before each call.
class World {
 public:
  const std::wstring& path() const { return folder_.path(); }
  template <class Char>
  std::basic_string<Char> Path(const std::string& name) const {
    const std::string text = test::Ansi(folder_.path()) + name;
    return {text.begin(), text.end()};
  }

  /// A file that the call may not harm; made again if it is not as it should be.
  void Source(const std::string& name, const std::string& bytes);
  /// A file that the call may change or delete.
  void File(const std::string& name, const std::string& bytes);
  void Folder(const std::string& name);
  /// Sets the time of a file's last change, which Wine takes for that of its creation as well.
  void Date(const std::string& name, long long seconds);
  bool Has(const std::string& name) const;
  std::string Bytes(const std::string& name) const;
  std::vector<std::wstring> Entries() const { return folder_.Entries(); }

  /// Takes away what is there.
  void Clear();
  /// What is wrong with the sources; empty if nothing.
  std::string Harm() const;

  /// Blocks of the library that are the host's when the call is over.
  std::vector<const void*> hosts;
  /// Objects of the host that live until the outcome was looked at.
  std::vector<std::unique_ptr<HostObject>> objects;
  template <class Object, class... Arguments>
  Object& New(Arguments... arguments) {
    objects.push_back(std::make_unique<Object>(arguments...));
    return static_cast<Object&>(*objects.back());
  }

 private:
  test::TempFolder folder_;
  std::map<std::string, std::string> sources_;
};

struct Scenario {
  unsigned ordinal;
  std::string what;
  /// Files that the call finds; none for a call that touches no file.
  std::function<void(World&)> prepare;
  /// Calls the export and gives result and outputs as one text.
  std::function<std::string(World&)> call;
  /// That text when nothing fails. Here and below a text may end in an asterisk: whatever follows.
  std::string clean;
  /// What else may come when something fails.
  std::vector<std::string> allowed;
  /// Classes of exceptions that may leave, beside the memory exception when memory was exhausted.
  std::vector<std::string> raises = {};
  /// What else must be true afterwards; an answer is a complaint.
  std::function<std::string(World&, const std::string& got, const Record&)> after = {};
};

inline constexpr char kFileException[] = ".PEAVCFileException@@";
inline constexpr char kOleException[] = ".PEAVCOleException@@";

/// A host's string manager whose allocations are among the calls that fail.
class FaultyManager final : public test::CountingManager {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    return armed && HostAllocationFails() ? nullptr : CountingManager::Allocate(chars, charSize);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    return armed && HostAllocationFails() ? nullptr : CountingManager::Reallocate(data, chars, charSize);
  }
  bool armed = false;
};

/// A host's string object; how it came back is part of the outcome.
template <class Char>
class Host final : public HostObject {
 public:
  explicit Host(const Char* text = nullptr) : text_(manager_, text) { manager_.armed = true; }
  CStringT<Char>& object() { return text_.object(); }
  std::string Shown() override;

 private:
  FaultyManager manager_;
  test::HostString<Char> text_;
};

template <class Char>
constexpr bool kWide = sizeof(Char) == 2;

/// The ordinal of a twin: UTF-16 is 1000 further.
template <class Char>
constexpr unsigned Twin(unsigned plain) {
  return kWide<Char> ? plain + 1000 : plain;
}

template <class Char>
std::basic_string<Char> Text(const std::string& text) {
  return {text.begin(), text.end()};
}

/// An export by ordinal with a written-out type, for tables over both kinds of text.
template <class Function>
Function* Bound(unsigned ordinal) {
  return test::Export<Function>(ordinal);
}

using test::Shown;

/// A result buffer in an outcome: its text, and whether something was written beside it.
template <class Char>
std::string Shown(test::GuardedBuffer<Char>& buffer) {
  return Shown(buffer.text()) + (buffer.Intact() ? "" : " SURROUNDINGS HARMED");
}

template <class Char>
std::string Host<Char>::Shown() {
  std::string shown = faults::Shown(text_.text());
  if (text_.header()->nDataLength > text_.header()->nAllocLength) shown += " LENGTH HARMED";
  if (text_.object().GetString()[text_.object().GetLength()] != 0) shown += " TERMINATOR HARMED";
  if (!manager_.NilIntact()) shown += " EMPTY STRING HARMED";
  return shown;
}

std::vector<Scenario> PathScenarios();
std::vector<Scenario> FileScenarios();
std::vector<Scenario> ProfileScenarios();
std::vector<Scenario> CryptScenarios();
std::vector<Scenario> ConvertScenarios();
std::vector<Scenario> ProcessScenarios();
std::vector<Scenario> ApplicationScenarios();

}  // namespace faults
