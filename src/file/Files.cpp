// SPDX-License-Identifier: MIT
#include "Files.h"

#include <afx.h>

#include "Extension.h"
#include "PathPlatform.h"
#include "base/QuietErrors.h"
#include "base/Retry.h"

namespace file {
namespace {

using base::Outcome;
using base::Retry;

constexpr unsigned int kDeleteAttempts = 25;
constexpr unsigned int kRenameAttempts = 10;
constexpr DWORD kRetryMs = 10;
constexpr DWORD kPollMs = 20;

void RetryPause() {
  ::Sleep(kRetryMs);
}

}  // namespace

int Exist(const wchar_t* path) {
  CFileStatus status;
  if (!CFile::GetStatus(path, status)) return 0;
  if (status.m_size > 0) return 1;
  // KEPT FOR HOSTS: what has no size (an empty file, a folder) is asked for once more, by its full
  // name. A host would notice by a file that vanishes between the two: it does not exist.
  CFileStatus again;
  return CFile::GetStatus(status.m_szFullName, again) ? 1 : 0;
}

int Delete(const wchar_t* path) {
  if (!Exist(path)) return 1;
  // What other processes hold is worth another attempt: what counts is whether it is there afterwards.
  const auto tryOnce = [path] {
    base::Quietly([path] { return ::DeleteFileW(path); });
    return Exist(path) ? Outcome::kAgain : Outcome::kDone;
  };
  return Retry(kDeleteAttempts, tryOnce, RetryPause);
}

int Rename(const wchar_t* oldPath, const wchar_t* newPath) {
  // Some platforms take a null target for the wish to delete.
  if (!newPath) return 0;
  if (Exist(newPath) && !Delete(newPath)) return 0;
  const auto tryOnce = [=] {
    if (!Exist(oldPath)) return Outcome::kHopeless;
    base::Quietly([=] { return ::MoveFileW(oldPath, newPath); });
    // KEPT FOR HOSTS: success is the old path's disappearance; the new path is not looked at. Hosts hand
    // files over by renaming, and the receiver may have taken the file away already.
    return Exist(oldPath) ? Outcome::kAgain : Outcome::kDone;
  };
  return Retry(kRenameAttempts, tryOnce, RetryPause);
}

unsigned int GetSize(const wchar_t* path) {
  CFileStatus status;
  // KEPT FOR HOSTS: 32 bits wide, so 4 GiB and more come out modulo 4 GiB; hosts bind to that result.
  return CFile::GetStatus(path, status) ? static_cast<unsigned int>(status.m_size) : 0;
}

int HasExtension(const wchar_t* path, const wchar_t* extension) {
  const Text<wchar_t> whole(path, path ? Length(path, kMostPath + 1) : 0);
  const Parts<wchar_t> parts = Split(whole, LeadBytes());
  // The splitter empties all components when one is beyond its limit.
  const Text<wchar_t> within = parts.Fit() ? parts.extension : Text<wchar_t>();
  const Text<wchar_t> text(extension, extension ? Length(extension, kMostComponent + 1) : 0);
  const auto fold = [](const wchar_t* from, wchar_t* to, std::size_t count) {
    std::char_traits<wchar_t>::copy(to, from, count);
    ::CharUpperBuffW(to, static_cast<DWORD>(count));
  };
  // KEPT FOR HOSTS: contained, not equal; hosts pass "ini", ".ini" and beginnings like "htm" alike.
  return OccursIgnoringCase(text, within, fold);
}

int WaitForFile(const wchar_t* path, unsigned int timeoutMs) {
  const auto poll = [path] {
    CFileStatus status;
    return CFile::GetStatus(path, status) && status.m_size > 0 ? Outcome::kDone : Outcome::kAgain;
  };
  // KEPT FOR HOSTS: less than one poll's time means no limit; hosts pass 0 to wait for ever.
  return Retry(timeoutMs / kPollMs, poll, [] { ::Sleep(kPollMs); });
}

int GetTimeModified(const wchar_t* path, long long* time) {
  CFileStatus status;
  const bool known = CFile::GetStatus(path, status);
  // The oldest time that hosts handle, 1 January 1980, 01:00 local standard time, stands for none.
  const CTime answer = known ? status.m_mtime : CTime(1980, 1, 1, 1, 0, 0, 0);
  if (time) *time = answer.GetTime();
  return known;
}

}  // namespace file
