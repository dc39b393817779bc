// SPDX-License-Identifier: MIT
// On a console: text of any script, a sign of life on long walks, and Ctrl+C.
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

#include "Zt.h"
#include "support/StartProcess.h"
#include "support/TempFolder.h"

namespace {

// A console without a window: what its programs show arrives in a pipe.
class Console {
 public:
  explicit Console(const std::wstring& arguments) {
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    const auto bind = [&](const char* name) {
      return reinterpret_cast<void*>(::GetProcAddress(kernel, name));
    };
    const auto create =
        reinterpret_cast<HRESULT(WINAPI*)(COORD, HANDLE, HANDLE, DWORD, void**)>(bind("CreatePseudoConsole"));
    close_ = reinterpret_cast<void(WINAPI*)(void*)>(bind("ClosePseudoConsole"));
    HANDLE input, output;
    ::CreatePipe(&input, &keys_, nullptr, 0);
    ::CreatePipe(&screen_, &output, nullptr, 0);
    EXPECT_EQ(S_OK, create({120, 50}, input, output, 0, &console_));
    ::CloseHandle(input);
    ::CloseHandle(output);

    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    attributes_.resize(size);
    startup.lpAttributeList = reinterpret_cast<PPROC_THREAD_ATTRIBUTE_LIST>(attributes_.data());
    ::InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size);
    constexpr DWORD_PTR pseudoConsole = 0x00020016;
    ::UpdateProcThreadAttribute(startup.lpAttributeList, 0, pseudoConsole, console_, sizeof console_, nullptr,
                                nullptr);
    std::wstring line =
        L"\"" + test::Beside(L"on_console.exe") + L"\" \"" + test::Beside(L"zt.exe") + L"\" " + arguments;
    EXPECT_TRUE(test::StartProcess(nullptr, line.data(), nullptr, nullptr, FALSE,
                                   EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr, &startup.StartupInfo,
                                   &process_));
    reader_ = std::thread([this] {
      char block[4096];
      DWORD count = 0;
      while (::ReadFile(screen_, block, sizeof block, &count, nullptr) && count) {
        const std::lock_guard lock(mutex_);
        shown_.append(block, count);
      }
    });
  }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  ~Console() { Close(); }

  // What was shown so far, cursor movements included.
  std::string Shown() {
    const std::lock_guard lock(mutex_);
    return shown_;
  }
  bool WaitFor(const std::string& text) {
    for (int i = 0; i < 300; ++i) {
      if (Shown().find(text) != std::string::npos) return true;
      ::Sleep(50);
    }
    return false;
  }
  void ControlC() { ::SetEvent(controlC_); }
  DWORD Exit() {
    EXPECT_EQ(static_cast<DWORD>(WAIT_OBJECT_0), ::WaitForSingleObject(process_.hProcess, 60000));
    DWORD exit = 0xFFFFFFFF;
    ::GetExitCodeProcess(process_.hProcess, &exit);
    return exit;
  }
  // Everything that was shown; the console is gone afterwards.
  std::string Close() {
    if (console_) {
      close_(console_);
      ::CloseHandle(keys_);
      console_ = nullptr;
      reader_.join();
      ::CloseHandle(screen_);
      ::CloseHandle(controlC_);
      ::CloseHandle(process_.hProcess);
      ::CloseHandle(process_.hThread);
    }
    return Shown();
  }

 private:
  void(WINAPI* close_)(void*) = nullptr;
  void* console_ = nullptr;
  const HANDLE controlC_ = ::CreateEventW(nullptr, FALSE, FALSE, L"on_console");
  HANDLE keys_ = nullptr, screen_ = nullptr;
  PROCESS_INFORMATION process_ = {};
  std::vector<char> attributes_;
  std::thread reader_;
  std::mutex mutex_;
  std::string shown_;
};

TEST(ZtConsole, ShowsAnyScript) {
  Console console(L"path name C:\\Gr\u00FC\u00DFe-\u65E5\u672C-\u0416.txt");
  EXPECT_EQ(0u, console.Exit());
  const std::string shown = console.Close();
  EXPECT_NE(std::string::npos, shown.find("Gr\u00FC\u00DFe-\u65E5\u672C-\u0416")) << shown;
}

TEST(ZtConsole, ProgressOnLongWalksAndControlCStopsThem) {
  const test::TempFolder folder;
  // Each file that somebody holds open costs the walk a quarter of a second.
  std::vector<HANDLE> held;
  for (int i = 0; i < 60; ++i) {
    const std::wstring path = folder.File(std::to_wstring(i) + L".log", "x");
    FILETIME time = {0, 0x01D00000};
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ::SetFileTime(file, &time, nullptr, &time);
    held.push_back(file);
  }
  Console console(L"tree prune --yes " + folder.path() + L" .log 1d");
  EXPECT_TRUE(console.WaitFor("deleting (Ctrl+C stops) ... 1 s")) << console.Shown();
  console.ControlC();
  const ULONGLONG start = ::GetTickCount64();
  EXPECT_EQ(1u, console.Exit());
  EXPECT_LT(::GetTickCount64() - start, 5000u) << "the walk went on";
  const std::string shown = console.Close();
  EXPECT_NE(std::string::npos, shown.find("stopped on request")) << shown;
  for (const HANDLE file : held) ::CloseHandle(file);
  EXPECT_EQ(60u, folder.Entries().size());
}

TEST(ZtConsole, AsksBeforeDeleting) {
  const test::TempFolder folder;
  folder.File(L"a.log", "x");
  for (const wchar_t* answer : {L"n\r", L"\r", L"y\r"}) {
    const bool yes = answer[0] == L'y';
    ::SetEnvironmentVariableW(L"on_console_keys", answer);
    Console console(L"tree delete " + folder.path() + L" .log");
    EXPECT_EQ(yes ? 0u : 1u, console.Exit());
    EXPECT_EQ(yes, !test::Exists(folder / L"a.log"));
    const std::string shown = console.Close();
    EXPECT_NE(shown.npos, shown.find("[y/N]")) << shown;
  }
  ::SetEnvironmentVariableW(L"on_console_keys", nullptr);
}

// Asked for twice, since a mistyped phrase encrypts all the same; and never shown.
TEST(ZtConsole, PassPhraseFromPrompt) {
  const std::string cipher = test::Lines(test::ZtHere({L"crypt", L"encrypt", L"secret", L"Hello"}).out).at(0);
  ::SetEnvironmentVariableW(L"on_console_keys", L"secret\rsecret\r");
  Console same(L"crypt encrypt @prompt Hello");
  EXPECT_EQ(0u, same.Exit());
  const std::string shown = same.Close();
  EXPECT_NE(shown.npos, shown.find(cipher)) << shown;
  EXPECT_EQ(shown.npos, shown.find("secret")) << shown;
  ::SetEnvironmentVariableW(L"on_console_keys", L"secret\rother\r");
  Console other(L"crypt encrypt @prompt Hello");
  EXPECT_EQ(2u, other.Exit());
  ::SetEnvironmentVariableW(L"on_console_keys", nullptr);
}

TEST(ZtConsole, NoProgressInAFile) {
  const test::TempFolder folder;
  const test::Result result = test::Zt({L"file", L"wait", folder / L"never", L"1500"});
  EXPECT_EQ("no\r\n", result.out);
  EXPECT_EQ("", result.err);
}

}  // namespace
