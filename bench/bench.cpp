// SPDX-License-Identifier: MIT
// What the library adds to the platform: each export, bound by ordinal as hosts do, beside the bare
// platform calls that its rules require, measured in the same run.
//
// Both of a pair run in turns, in batches; the fastest batch of each counts, which leaves out what other
// programs of the machine take.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>
#include <string>
#include <vector>

#include "ZERATools.h"

namespace {

HMODULE library;

template <class Function>
Function* Export(unsigned ordinal) {
  const FARPROC address =
      ::GetProcAddress(library, reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal)));
  if (!address) {
    std::fprintf(stderr, "no export of ordinal %u\n", ordinal);
    std::exit(125);
  }
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

double Now() {
  LARGE_INTEGER count, frequency;
  ::QueryPerformanceCounter(&count);
  ::QueryPerformanceFrequency(&frequency);
  return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Kept by the optimiser: what is measured is used.
volatile long long sink;

template <class Body>
double Batch(Body& body, int calls) {
  const double start = Now();
  for (int i = 0; i < calls; ++i) body();
  return (Now() - start) / calls * 1e9;
}

template <class Library, class Bare>
void Compare(const char* name, int calls, double aim, Library export_, Bare bare) {
  constexpr int kBatches = 50;
  double best = std::numeric_limits<double>::max(), bestBare = best;
  Batch(export_, calls / 10 + 1);
  Batch(bare, calls / 10 + 1);
  for (int i = 0; i < kBatches; ++i) {
    best = std::min(best, Batch(export_, calls));
    bestBare = std::min(bestBare, Batch(bare, calls));
  }
  std::printf("%-34s %12.1f %12.1f %8.2f %8.2f\n", name, best, bestBare, best / bestBare, aim);
}

// --- The frame

int __attribute__((noinline)) RoundHere(double value) {
  if (value >= 0) return value + 0.5 > 2147483647.0 ? 2147483647 : static_cast<int>(value + 0.5);
  return value - 0.5 < -2147483648.0 ? static_cast<int>(-2147483648.0) : static_cast<int>(value - 0.5);
}

void Frame() {
  const auto round = Export<decltype(ZERA_TOOLS_ROUND_INT)>(100);
  int (*volatile here)(double) = &RoundHere;
  constexpr int kCalls = 50'000;
  double best = std::numeric_limits<double>::max(), bestHere = best;
  for (int i = 0; i < 100; ++i) {
    auto withFrame = [&] { sink = round(2.5); };
    auto without = [&] { sink = here(2.5); };
    best = std::min(best, Batch(withFrame, kCalls));
    bestHere = std::min(bestHere, Batch(without, kCalls));
  }
  std::printf("frame of an export: %.1f ns a call, at most 5 wanted\n\n", best - bestHere);
}

// --- Paths

template <class Char>
struct PathCalls;
template <>
struct PathCalls<char> {
  static constexpr const char* kPath = "C:\\Program Files\\Maker\\TOOLS\\Viewer\\view.settings.ini";
  static constexpr const char* kNew = ".new";
  static constexpr unsigned kBase = 0;
  static void Split(const char* path, char* a, char* b, char* c, char* d) {
    ::_splitpath_s(path, a, _MAX_DRIVE, b, _MAX_DIR, c, _MAX_FNAME, d, _MAX_EXT);
  }
  static void Make(char* out, const char* a, const char* b, const char* c, const char* d) {
    ::_makepath_s(out, _MAX_PATH, a, b, c, d);
  }
};
template <>
struct PathCalls<wchar_t> {
  static constexpr const wchar_t* kPath = L"C:\\Program Files\\Maker\\TOOLS\\Viewer\\view.settings.ini";
  static constexpr const wchar_t* kNew = L".new";
  static constexpr unsigned kBase = 1000;
  static void Split(const wchar_t* path, wchar_t* a, wchar_t* b, wchar_t* c, wchar_t* d) {
    ::_wsplitpath_s(path, a, _MAX_DRIVE, b, _MAX_DIR, c, _MAX_FNAME, d, _MAX_EXT);
  }
  static void Make(wchar_t* out, const wchar_t* a, const wchar_t* b, const wchar_t* c, const wchar_t* d) {
    ::_wmakepath_s(out, _MAX_PATH, a, b, c, d);
  }
};

template <class Char>
void Paths(const char* form) {
  using Calls = PathCalls<Char>;
  Char out[_MAX_PATH], a[_MAX_DRIVE], b[_MAX_DIR], c[_MAX_FNAME], d[_MAX_EXT];
  const auto get = Export<int(const Char*, Char*, std::size_t)>(Calls::kBase + 15);
  const auto folder = Export<int(const Char*, Char*, std::size_t)>(Calls::kBase + 14);
  const auto replace = Export<int(Char*, std::size_t, const Char*)>(Calls::kBase + 23);
  const std::size_t bytes = (std::char_traits<Char>::length(Calls::kPath) + 1) * sizeof(Char);
  constexpr int kCalls = 10'000;
  const auto name = [&](const char* operation) { return std::string(operation) + form; };
  Compare(
      name("name and extension").c_str(), kCalls, 0.5, [&] { get(Calls::kPath, out, _MAX_PATH); },
      [&] {
        Calls::Split(Calls::kPath, a, b, c, d);
        Calls::Make(out, nullptr, nullptr, c, d);
      });
  Compare(
      name("drive and directory").c_str(), kCalls, 0.5, [&] { folder(Calls::kPath, out, _MAX_PATH); },
      [&] {
        Calls::Split(Calls::kPath, a, b, c, d);
        Calls::Make(out, a, b, nullptr, nullptr);
      });
  Compare(
      name("replace the extension").c_str(), kCalls, 0.5,
      [&] {
        std::memcpy(out, Calls::kPath, bytes);
        replace(out, _MAX_PATH, Calls::kNew);
      },
      [&] {
        std::memcpy(out, Calls::kPath, bytes);
        Calls::Split(out, a, b, c, d);
        Calls::Make(out, a, b, c, Calls::kNew);
      });
}

// --- Files

void Files(const std::wstring& folder) {
  const std::wstring source = folder + L"source.bin", target = folder + L"target.bin";
  std::vector<BYTE> bytes(1 << 20, 0x5A);
  DWORD count = 0;
  HANDLE made = ::CreateFileW(source.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  ::WriteFile(made, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
  ::CloseHandle(made);

  const auto copy = Export<decltype(ZERA_TOOLS_FILE_COPY_UC)>(1016);
  Compare(
      "copy 1 MB", 5, 1.05, [&] { copy(source.c_str(), target.c_str()); },
      [&] {
        BYTE block[4096];
        const HANDLE from = ::CreateFileW(source.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        const HANDLE to = ::CreateFileW(target.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD read = 0, written = 0;
        while (::ReadFile(from, block, sizeof block, &read, nullptr) && read > 0) {
          ::WriteFile(to, block, read, &written, nullptr);
        }
        ::CloseHandle(to);
        ::CloseHandle(from);
      });

  const auto toBuffer = Export<decltype(ZERA_TOOLS_FILE_TO_BUFFER_UC)>(1025);
  unsigned long long size = 0;
  wchar_t full[_MAX_PATH];
  WIN32_FILE_ATTRIBUTE_DATA data;
  Compare(
      "1 MB into a buffer", 20, 1.05, [&] { toBuffer(source.c_str(), bytes.data(), bytes.size(), &size); },
      [&] {
        ::GetFileAttributesExW(source.c_str(), GetFileExInfoStandard, &data);
        ::GetFullPathNameW(source.c_str(), _MAX_PATH, full, nullptr);
        const HANDLE from = ::CreateFileW(source.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        ::ReadFile(from, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        ::CloseHandle(from);
      });

  const auto exist = Export<decltype(ZERA_TOOLS_FILE_EXIST_UC)>(1001);
  Compare(
      "existence", 500, 1.05, [&] { sink = exist(source.c_str()); },
      [&] {
        ::GetFileAttributesExW(source.c_str(), GetFileExInfoStandard, &data);
        sink = ::GetFullPathNameW(source.c_str(), _MAX_PATH, full, nullptr);
      });
  ::DeleteFileW(source.c_str());
  ::DeleteFileW(target.c_str());
}

// --- Settings

void Settings(const std::wstring& folder) {
  const std::wstring file = folder + L"settings.ini";
  for (int i = 0; i < 50; ++i) {
    ::WritePrivateProfileStringW(L"Section", (L"Key" + std::to_wstring(i)).c_str(), L"1234", file.c_str());
  }
  const auto read = Export<decltype(ZERA_TOOLS_READ_INT_UC)>(1051);
  wchar_t text[64];
  Compare(
      "read a number", 200, 1.05, [&] { sink = read(L"Section", L"Key40", file.c_str(), 0, 0, 10'000); },
      [&] {
        ::GetPrivateProfileStringW(L"Section", L"Key40", L"", text, 64, file.c_str());
        sink = std::wcstol(text, nullptr, 10);
      });
  const auto write = Export<decltype(ZERA_TOOLS_WRITE_INT_UC)>(1061);
  int value = 0;
  Compare(
      "write a number", 5, 1.05, [&] { write(L"Section", L"Key40", file.c_str(), ++value); },
      [&] {
        std::swprintf(text, 64, L"%d", ++value);
        ::WritePrivateProfileStringW(L"Section", L"Key40", text, file.c_str());
      });
  ::DeleteFileW(file.c_str());
}

// --- Encryption

void Encryption() {
  const auto encrypt = Export<decltype(ZERA_TOOLS_ENC_STRING_L)>(77);
  const CStringA plain("a text of thirty-two characters!");
  CStringA cipher;
  Compare(
      "encrypt 32 bytes", 10, 1.05, [&] { sink = encrypt("pass phrase", plain, cipher); },
      [&] {
        HCRYPTPROV provider = 0;
        HCRYPTHASH hash = 0;
        HCRYPTKEY key = 0;
        BYTE buffer[256];
        DWORD length = static_cast<DWORD>(plain.GetLength());
        std::memcpy(buffer, plain, length);
        ::CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, 0);
        ::CryptCreateHash(provider, CALG_MD5, 0, 0, &hash);
        ::CryptHashData(hash, reinterpret_cast<const BYTE*>("pass phrase"), 11, 0);
        ::CryptDeriveKey(provider, CALG_RC4, hash, CRYPT_EXPORTABLE, &key);
        ::CryptEncrypt(key, 0, TRUE, 0, buffer, &length, sizeof buffer);
        ::CryptDestroyKey(key);
        ::CryptDestroyHash(hash);
        ::CryptReleaseContext(provider, 0);
        sink = buffer[0];
      });
}

}  // namespace

int main() {
  library = ::LoadLibraryW(L"ZERATools.dll");
  if (!library) {
    std::fprintf(stderr, "ZERATools.dll cannot be loaded\n");
    return 125;
  }
  const std::wstring folder = L"X:\\tmp\\bench-" + std::to_wstring(::GetCurrentProcessId()) + L"\\";
  ::CreateDirectoryW(L"X:\\tmp", nullptr);
  if (!::CreateDirectoryW(folder.c_str(), nullptr)) {
    std::fprintf(stderr, "a folder for the files cannot be made\n");
    return 125;
  }
  Frame();
  std::printf("%-34s %12s %12s %8s %8s\n", "", "export, ns", "bare, ns", "ratio", "aim");
  Paths<wchar_t>(", UTF-16");
  Paths<char>(", plain");
  Files(folder);
  Settings(folder);
  Encryption();
  ::RemoveDirectoryW(folder.c_str());
  return 0;
}
