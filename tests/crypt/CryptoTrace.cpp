// SPDX-License-Identifier: MIT
#include "CryptoTrace.h"

#include <wincrypt.h>

#include <map>

namespace test {
namespace {

std::vector<std::string> lines;
std::map<std::string, std::pair<int, DWORD>> faults;
int open;

// The platform's own function, whoever's import table is changed.
template <class Function>
Function* Platform(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"advapi32.dll"), name)));
}
#define PLATFORM(name) Platform<decltype(name)>(#name)

// Notes a call; true if it is the one to fail.
bool Faulty(const std::string& function, const std::string& arguments) {
  lines.push_back(function + "(" + arguments + ")");
  const auto fault = faults.find(function);
  if (fault == faults.end() || --fault->second.first != 0) return false;
  ::SetLastError(fault->second.second);
  return true;
}

std::string Text(const char* name, ULONG_PTR value) {
  char text[64];
  std::snprintf(text, sizeof text, "%s %llx", name, static_cast<unsigned long long>(value));
  return text;
}

BOOL WINAPI Acquire(HCRYPTPROV* provider, LPCWSTR container, LPCWSTR name, DWORD type, DWORD flags) {
  if (Faulty("CryptAcquireContextW", std::string(container || name ? "named, " : "") + Text("type", type) +
                                         ", " + Text("flags", flags))) {
    *provider = 0xBAD;  // what stands here after a failure means nothing
    return FALSE;
  }
  // The container of a test user exists; a new one is only pretended.
  BOOL done = PLATFORM(CryptAcquireContextW)(provider, container, name, type, flags & ~CRYPT_NEWKEYSET);
  if (!done && ::GetLastError() == static_cast<DWORD>(NTE_BAD_KEYSET)) {
    done = PLATFORM(CryptAcquireContextW)(provider, container, name, type, CRYPT_NEWKEYSET);
  }
  open += done;
  return done;
}

BOOL WINAPI CreateHash(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTKEY key, DWORD flags, HCRYPTHASH* hash) {
  if (Faulty("CryptCreateHash", std::string(provider ? "" : "no provider, ") + Text("algorithm", algorithm) +
                                    ", " + Text("key", key) + ", " + Text("flags", flags))) {
    *hash = 0xBAD;
    return FALSE;
  }
  const BOOL done = PLATFORM(CryptCreateHash)(provider, algorithm, key, flags, hash);
  open += done;
  return done;
}

BOOL WINAPI HashData(HCRYPTHASH hash, const BYTE* bytes, DWORD count, DWORD flags) {
  if (Faulty("CryptHashData",
             std::string(bytes ? "" : "null, ") + Text("count", count) + ", " + Text("flags", flags))) {
    return FALSE;
  }
  return PLATFORM(CryptHashData)(hash, bytes, count, flags);
}

BOOL WINAPI DeriveKey(HCRYPTPROV provider, ALG_ID algorithm, HCRYPTHASH hash, DWORD flags, HCRYPTKEY* key) {
  if (Faulty("CryptDeriveKey", Text("algorithm", algorithm) + ", " + Text("flags", flags))) {
    *key = 0xBAD;
    return FALSE;
  }
  const BOOL done = PLATFORM(CryptDeriveKey)(provider, algorithm, hash, flags, key);
  open += done;
  return done;
}

BOOL WINAPI Encrypt(HCRYPTKEY key, HCRYPTHASH hash, BOOL final, DWORD flags, BYTE* bytes, DWORD* count,
                    DWORD capacity) {
  if (Faulty("CryptEncrypt", Text("hash", hash) + ", " + Text("final", static_cast<ULONG_PTR>(final)) + ", " +
                                 Text("flags", flags) + ", " + Text("count", *count) + ", " +
                                 Text("capacity", capacity))) {
    return FALSE;
  }
  return PLATFORM(CryptEncrypt)(key, hash, final, flags, bytes, count, capacity);
}

BOOL WINAPI Decrypt(HCRYPTKEY key, HCRYPTHASH hash, BOOL final, DWORD flags, BYTE* bytes, DWORD* count) {
  if (Faulty("CryptDecrypt", Text("hash", hash) + ", " + Text("final", static_cast<ULONG_PTR>(final)) + ", " +
                                 Text("flags", flags) + ", " + Text("count", *count))) {
    return FALSE;
  }
  return PLATFORM(CryptDecrypt)(key, hash, final, flags, bytes, count);
}

BOOL WINAPI DestroyKey(HCRYPTKEY key) {
  Faulty("CryptDestroyKey", "");
  const BOOL done = PLATFORM(CryptDestroyKey)(key);
  open -= done;
  return done;
}

BOOL WINAPI DestroyHash(HCRYPTHASH hash) {
  Faulty("CryptDestroyHash", "");
  const BOOL done = PLATFORM(CryptDestroyHash)(hash);
  open -= done;
  return done;
}

BOOL WINAPI ReleaseContext(HCRYPTPROV provider, DWORD flags) {
  Faulty("CryptReleaseContext", Text("flags", flags));
  const BOOL done = PLATFORM(CryptReleaseContext)(provider, flags);
  open -= done;
  return done;
}

#undef PLATFORM

}  // namespace

CryptoTrace::CryptoTrace(HMODULE module) {
  Clear();
  open = 0;
  const auto hook = [&](const char* name, auto* function) {
    hooks_.push_back(std::make_unique<ImportHook>(name, reinterpret_cast<void*>(function), module));
  };
  hook("CryptAcquireContextW", &Acquire);
  hook("CryptCreateHash", &CreateHash);
  hook("CryptHashData", &HashData);
  hook("CryptDeriveKey", &DeriveKey);
  hook("CryptEncrypt", &Encrypt);
  hook("CryptDecrypt", &Decrypt);
  hook("CryptDestroyKey", &DestroyKey);
  hook("CryptDestroyHash", &DestroyHash);
  hook("CryptReleaseContext", &ReleaseContext);
}

CryptoTrace::~CryptoTrace() = default;

void CryptoTrace::Fail(const std::string& function, DWORD error, int nth) {
  faults[function] = {nth, error};
}

std::vector<std::string> CryptoTrace::Calls() const {
  return lines;
}

std::vector<std::string> CryptoTrace::Functions() const {
  std::vector<std::string> functions;
  for (const std::string& line : lines) functions.push_back(line.substr(0, line.find('(')));
  return functions;
}

int CryptoTrace::Open() const {
  return open;
}

void CryptoTrace::Clear() {
  lines.clear();
  faults.clear();
}

}  // namespace test
