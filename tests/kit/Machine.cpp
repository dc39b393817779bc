// SPDX-License-Identifier: MIT
#include "Machine.h"

#include <windows.h>

#include <algorithm>

#include "support/Wine.h"

namespace kit {
namespace {

// A text or number of the machine's registry; empty if it is not there.
std::wstring Registry(const wchar_t* key, const wchar_t* name) {
  wchar_t text[256] = {};
  DWORD bytes = sizeof text - sizeof *text;
  if (::RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &bytes) == ERROR_SUCCESS) {
    return text;
  }
  DWORD number = 0;
  bytes = sizeof number;
  const LSTATUS status =
      ::RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_DWORD, nullptr, &number, &bytes);
  return status == ERROR_SUCCESS ? std::to_wstring(number) : L"";
}

// The numbers from the platform itself: GetVersionEx answers by the program's manifest.
std::wstring VersionNumbers() {
  using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof version;
  const FARPROC get = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
  if (!get || reinterpret_cast<GetVersion>(reinterpret_cast<void*>(get))(&version) != 0) return L"unknown";
  return std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion) + L"." +
         std::to_wstring(version.dwBuildNumber);
}

}  // namespace

bool IsElevated() {
  HANDLE token = nullptr;
  // Who cannot be asked counts as one.
  if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token)) return true;
  TOKEN_ELEVATION elevation = {};
  DWORD size = 0;
  const BOOL known = ::GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size);
  ::CloseHandle(token);
  return !known || elevation.TokenIsElevated;
}

std::string DescribeMachine() {
  const wchar_t kWindows[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  const wchar_t kProcessor[] = L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";
  std::wstring text = L"Windows:   " + VersionNumbers();
  const std::wstring revision = Registry(kWindows, L"UBR");
  if (!revision.empty()) text += L"." + revision;
  text += L", " + Registry(kWindows, L"ProductName") + L" " + Registry(kWindows, L"DisplayVersion");
  if (const char* const wine = test::WineVersion())
    text += L" (Wine " + std::wstring(wine, wine + strlen(wine)) + L")";
  // A machine that does not tell about its processors (Wine where /sys is missing) has one at least.
  const std::wstring name = Registry(kProcessor, L"ProcessorNameString");
  const DWORD count = std::max<DWORD>(1, ::GetActiveProcessorCount(ALL_PROCESSOR_GROUPS));
  text += L"\r\nCode page: " + std::to_wstring(::GetACP()) + L"\r\nProcessor: " +
          (name.empty() ? L"unknown" : name) + L", " + std::to_wstring(count) + L" at once\r\n";
  return Utf8(text);
}

std::string Utf8(const std::wstring& text) {
  const int chars = static_cast<int>(text.size());
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), chars, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace kit
