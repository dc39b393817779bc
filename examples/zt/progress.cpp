// SPDX-License-Identifier: MIT
#include "progress.h"

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "console.h"

namespace zt {
namespace {

int abortFlag = 0;

BOOL WINAPI OnControl(DWORD event) {
  if (event != CTRL_C_EVENT) return FALSE;
  ::InterlockedExchange(reinterpret_cast<volatile LONG*>(&abortFlag), 1);
  return TRUE;
}

void Tick(const std::stop_token& stop, const std::wstring& what) {
  std::mutex mutex;
  std::condition_variable_any ended;
  std::unique_lock lock(mutex);
  const auto start = std::chrono::steady_clock::now();
  std::wstring line;
  while (!ended.wait_for(lock, stop, std::chrono::milliseconds(500), [&] { return stop.stop_requested(); })) {
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start).count();
    line = what + L" ... " + std::to_wstring(seconds) + L" s";
    PrintError(L"\r" + line);
  }
  if (!line.empty()) PrintError(L"\r" + std::wstring(line.size(), L' ') + L"\r");
}

}  // namespace

Progress::Progress(std::wstring what) {
  if (!ErrorsAreOnConsole()) return;
  thread_ = std::jthread([what = std::move(what)](const std::stop_token& stop) { Tick(stop, what); });
}

int* AbortFlag() {
  ::SetConsoleCtrlHandler(OnControl, TRUE);
  return &abortFlag;
}

}  // namespace zt
