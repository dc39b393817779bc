// SPDX-License-Identifier: MIT
// on_console PROGRAM [ARGUMENT ...]: runs a program with the handles of the console that this one is on.
// Wine gives a program that starts on a pseudo console no handles of it, and ends such a console when
// Ctrl+C is typed there; so the test sets the event "on_console" instead, and the key is sent from here.
#include <windows.h>

#include <string>

// Wine's pseudo consoles pass no keys on either: those of the variable "on_console_keys" are typed ahead.
void TypeAhead(HANDLE input) {
  wchar_t keys[256];
  const DWORD count = ::GetEnvironmentVariableW(L"on_console_keys", keys, 256);
  for (DWORD i = 0; i < count && count < 256; ++i) {
    INPUT_RECORD record = {};
    record.EventType = KEY_EVENT;
    record.Event.KeyEvent.wRepeatCount = 1;
    record.Event.KeyEvent.wVirtualKeyCode = keys[i] == L'\r' ? VK_RETURN : 0;
    record.Event.KeyEvent.uChar.UnicodeChar = keys[i];
    for (const BOOL down : {TRUE, FALSE}) {
      DWORD written;
      record.Event.KeyEvent.bKeyDown = down;
      ::WriteConsoleInputW(input, &record, 1, &written);
    }
  }
}

int main() {
  ::SetConsoleCtrlHandler([](DWORD) { return TRUE; }, TRUE);  // Ctrl+C is the program's matter
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const auto open = [&](const wchar_t* name) {
    return ::CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                         OPEN_EXISTING, 0, nullptr);
  };
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = open(L"CONIN$");
  startup.hStdOutput = startup.hStdError = open(L"CONOUT$");
  TypeAhead(startup.hStdInput);
  std::wstring line = ::GetCommandLineW();
  line.erase(0, line.find(L"\" ") + 2);  // the test quotes this program's name
  PROCESS_INFORMATION process;
  DWORD exit = 125;
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process)) {
    return 125;
  }
  const HANDLE events[] = {process.hProcess, ::OpenEventW(SYNCHRONIZE, FALSE, L"on_console")};
  if (::WaitForMultipleObjects(events[1] ? 2 : 1, events, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    ::WaitForSingleObject(process.hProcess, INFINITE);
  }
  ::GetExitCodeProcess(process.hProcess, &exit);
  return static_cast<int>(exit);
}
