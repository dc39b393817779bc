// SPDX-License-Identifier: MIT
// ProcessExports.cpp: the exports for processes, thread messages and allocation.
#include "Processes.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

int ZERA_TOOLS_KILLPROCESS(const char* fileName) {
  return frame::Enter([&] { return process::Kill(frame::WideText(fileName)); });
}

int ZERA_TOOLS_KILLPROCESS_UC(const wchar_t* fileName) {
  return frame::Enter([&] { return process::Kill(fileName); });
}

unsigned int ZERA_TOOLS_GETNUM_APPRUNNING(const char* path) {
  return frame::Enter([&] { return process::CountRunning(frame::WideText(path)); });
}

unsigned int ZERA_TOOLS_GETNUM_APPRUNNING_UC(const wchar_t* path) {
  return frame::Enter([&] { return process::CountRunning(path); });
}

int ZERA_TOOLS_POSTTHREADMESSAGE(CWinThread* thread, UINT message, WPARAM wParam, LPARAM lParam) {
  return frame::Enter([&] { return process::Post(thread, message, wParam, lParam); });
}

void* ZERA_TOOLS_SAFE_NEW(unsigned int size) {
  return frame::Enter([&] { return process::SafeNew(size); });
}
