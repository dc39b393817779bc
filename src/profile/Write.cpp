// SPDX-License-Identifier: MIT
#include "Write.h"

#include "Companion.h"
#include "Platform.h"

namespace profile {
namespace {

// Whether a stale companion has a value is asked with a buffer of this size.
constexpr DWORD kProbeSize = 256;

// A companion that has a value would win over the key at the next reading. It is emptied, not removed,
// and not created if it is missing.
void EmptyCompanion(const wchar_t* section, const wchar_t* name, const wchar_t* file) {
  wchar_t value[kProbeSize] = {};
  if (Platform<wchar_t>::Read(section, name, nullptr, value, kProbeSize, file) == 0) return;
  Platform<wchar_t>::Write(section, name, L"", file);
}

}  // namespace

// KEPT FOR HOSTS: 1 even when nothing could be written. Hosts treat another result as a broken library
// and end.
int WriteString(const wchar_t* section, const wchar_t* key, const wchar_t* file, const wchar_t* value) {
  Platform<wchar_t>::Write(section, key, value, file);

  const CStringW utf8Key = CompanionKey(key, kUtf8Suffix);
  const CStringW companion = ToUtf8Companion(value);
  if (Differs(companion, value)) {
    Platform<wchar_t>::Write(section, utf8Key, companion, file);
  } else {
    EmptyCompanion(section, utf8Key, file);
  }
  EmptyCompanion(section, CompanionKey(key, kHexSuffix), file);
  return 1;
}

}  // namespace profile
