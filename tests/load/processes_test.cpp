// SPDX-License-Identifier: MIT
// Processes that start together: of one application, which makes its settings file, and at one settings file.
#include <ZERATools.h>

#include <memory>

#include "Child.h"
#include "application/Installation.h"
#include "support/Library.h"
#include "support/Rounds.h"
#include "support/Wine.h"

namespace {

// Processes that wait for one another.
class Together {
 public:
  ~Together() { ::SetEvent(go_); }

  void Add(std::vector<std::wstring> arguments) {
    arguments.insert(arguments.begin() + 1, {readyName_, goName_});
    children_.push_back(std::make_unique<load::Child>(arguments));
  }
  /// Lets them go when all are ready; their exit codes.
  std::vector<DWORD> Go() {
    for (std::size_t i = 0; i < children_.size(); ++i) {
      EXPECT_EQ(::WaitForSingleObject(ready_, load::kPatience), WAIT_OBJECT_0);
    }
    ::SetEvent(go_);
    std::vector<DWORD> codes;
    for (const auto& child : children_) codes.push_back(child->ExitCode());
    return codes;
  }

 private:
  const std::wstring readyName_ = load::UniqueName(), goName_ = load::UniqueName();
  const load::Handle ready_{::CreateSemaphoreW(nullptr, 0, 1000, readyName_.c_str())};
  const load::Handle go_{::CreateEventW(nullptr, TRUE, FALSE, goName_.c_str())};
  std::vector<std::unique_ptr<load::Child>> children_;
};

TEST(Processes, FiftySeedOneApplication) {
  std::string seed = "[Vorgaben]\r\nLanguage=FRA\r\n";
  for (int i = 0; seed.size() < 50'000; ++i) seed += "Key" + std::to_string(i) + "=value\r\n";
  const test::TempFolder folder;
  for (const wchar_t* const name : {L"beside", L"app", L"common", L"common\\app", L"user"})
    folder.Folder(name);
  folder.File(L"beside\\view.ini", seed);
  folder.File(L"common\\app\\view.ini", seed);
  test::SetModified(folder / L"common\\app\\view.ini", 1'000'000'000);
  Together together;
  for (int i = 0; i < 50; ++i) {
    together.Add({L"seed", folder / L"beside\\view.exe", folder / L"app\\view.exe", folder / L"common",
                  folder / L"user"});
  }
  int copied = 0;
  for (const DWORD code : together.Go()) {
    EXPECT_LE(code, 1u) << "10: no file for the user, 11: none beside the module";
    copied += code == 1;
  }
  EXPECT_GE(copied, 1);
  EXPECT_EQ(folder.Entries(),
            (std::vector<std::wstring>{L"app\\", L"beside\\", L"beside\\view.ini", L"common\\",
                                       L"common\\app\\", L"common\\app\\view.ini", L"user\\", L"user\\app\\",
                                       L"user\\app\\view.ini"}))
      << "no probe is left";
  for (const wchar_t* const name : {L"beside\\view.ini", L"common\\app\\view.ini", L"user\\app\\view.ini"}) {
    EXPECT_EQ(test::ReadBytes(folder / name), seed) << test::Ansi(name);
  }
}

// Every number and text that the process of a section wrote is there.
void ExpectAll(const std::wstring& path, const wchar_t* section, int count) {
  const auto read = test::Export<decltype(ZERA_TOOLS_READ_INT_UC)>(1051);
  const auto text = test::Export<decltype(ZERA_TOOLS_READ_STRING_UC)>(1050);
  for (int i = 0; i < count; ++i) {
    const std::wstring which = std::to_wstring(i);
    EXPECT_EQ(read(section, (L"n" + which).c_str(), path.c_str(), 0, 0, 9999), 1000 + i);
    wchar_t back[16];
    text(section, (L"t" + which).c_str(), path.c_str(), L"", back, 16);
    EXPECT_EQ(back, L"\u00FC" + which);
  }
}

// The platform rereads and rewrites the whole file for each value. Windows keeps others out meanwhile. Under
// Wine two writers lose each other's values, and one's write may land within the other's; so all that is sure
// there is that both get through, and that the file is of use afterwards.
TEST(Processes, TwoWriteOneSettingsFile) {
  const int count = test::Rounds(500);
  const test::TempFolder folder;
  const std::wstring path = folder.File(L"view.ini", "");
  {
    Together alone;
    alone.Add({L"write", path, L"Alone", std::to_wstring(count)});
    EXPECT_EQ(alone.Go(), std::vector<DWORD>{0});
  }
  ExpectAll(path, L"Alone", count);
  Together together;
  for (const wchar_t* const section : {L"One", L"Two"}) {
    together.Add({L"write", path, section, std::to_wstring(count)});
  }
  const std::vector<DWORD> failed = together.Go();
  if (test::WineVersion()) {
    for (const DWORD one : failed) EXPECT_EQ(one % 1000, 0u) << "a crash, or no work: " << one;
  } else {
    EXPECT_EQ(failed, (std::vector<DWORD>{0, 0}));
    for (const wchar_t* const section : {L"Alone", L"One", L"Two"}) ExpectAll(path, section, count);
  }
  {
    Together again;
    again.Add({L"write", path, L"Last", std::to_wstring(count)});
    EXPECT_EQ(again.Go(), std::vector<DWORD>{0});
  }
  ExpectAll(path, L"Last", count);
  EXPECT_EQ(folder.Entries(), std::vector<std::wstring>{L"view.ini"});
}

}  // namespace
