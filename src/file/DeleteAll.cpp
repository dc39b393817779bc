// SPDX-License-Identifier: MIT
#include <afx.h>
#include <direct.h>

#include "Directories.h"
#include "DirectoryWalk.h"
#include "ExtensionFilter.h"
#include "Files.h"
#include "base/QuietErrors.h"

namespace {

using WideText = file::Text<wchar_t>;
using Filter = file::ExtensionFilter<wchar_t>;

void Fold(const wchar_t* from, wchar_t* to, std::size_t count) {
  std::char_traits<wchar_t>::copy(to, from, count);
  ::CharUpperBuffW(to, static_cast<DWORD>(count));
}

// As much of a filter as can matter: what is longer than any extension matches none.
WideText FilterText(const wchar_t* filter) {
  return {filter, filter ? file::Length(filter, file::kMostComponent + 2) : 0};
}

// Whether a file's extension passes; `known` is false if it cannot be taken.
bool Passes(const Filter& filter, const CStringW& path, bool& known) {
  const auto parts =
      file::Split(WideText(path, static_cast<std::size_t>(path.GetLength())), file::LeadBytes());
  known = parts.Fit();
  return known && filter.Matches(parts.extension, Fold);
}

// It stays if something is left in it.
void RemoveFolder(const CStringW& path) {
  base::Quietly([&] { return ::_wrmdir(path); });
}

class DeletingAll {
 public:
  explicit DeletingAll(const wchar_t* filter) : filter_(Filter::StarDropped(FilterText(filter), Fold)) {}

  bool Goes() const { return true; }

  bool Folder(const CStringW& path) {
    if (!file::Walk(file::SubSearch(path), *this)) return false;
    RemoveFolder(path);
    return true;
  }

  bool File(const CStringW& path) {
    bool known;
    return Passes(filter_, path, known) ? file::Delete(path) != 0 : known;
  }

 private:
  Filter filter_;
};

class DeletingOld {
 public:
  DeletingOld(const wchar_t* filter, unsigned int ageSeconds, const int* abortFlag)
      : filter_(Filter::AsItIs(FilterText(filter), Fold)), ageSeconds_(ageSeconds), abortFlag_(abortFlag) {}

  // A host sets the flag from another thread, as a plain number and without a lock.
  bool Goes() const { return !abortFlag_ || __atomic_load_n(abortFlag_, __ATOMIC_RELAXED) == 0; }

  bool Folder(const CStringW& path) {
    if (!file::Walk(file::SubSearch(path), *this)) return false;
    CFileStatus status;
    if (CFile::GetStatus(path, status) && IsOld(status)) RemoveFolder(path);
    return true;
  }

  bool File(const CStringW& path) {
    bool known;
    if (!Passes(filter_, path, known)) return known;
    CFileStatus status;
    if (!CFile::GetStatus(path, status)) return false;
    return !IsOld(status) || file::Delete(path);
  }

 private:
  bool IsOld(const CFileStatus& status) const {
    return ::_time64(nullptr) - status.m_ctime.GetTime() > static_cast<long long>(ageSeconds_);
  }

  Filter filter_;
  unsigned int ageSeconds_;
  const int* abortFlag_;
};

}  // namespace

namespace file {

int DeleteAll(const wchar_t* startPath, const wchar_t* filter) {
  const StartSearch start(startPath);
  DeletingAll deleting(filter);
  return start.Pattern() && Walk(start.Pattern(), deleting);
}

int DeleteAllOld(const wchar_t* startPath, const wchar_t* filter, unsigned int ageSeconds,
                 const int* abortFlag) {
  const StartSearch start(startPath);
  DeletingOld deleting(filter, ageSeconds, abortFlag);
  return start.Pattern() && Walk(start.Pattern(), deleting);
}

}  // namespace file
