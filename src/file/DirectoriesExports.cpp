// SPDX-License-Identifier: MIT
// DirectoriesExports.cpp: the exports that work on whole directories.
#include <afx.h>

#include "Directories.h"
#include "ZERATools.h"
#include "frame/Frame.h"
#include "frame/WideText.h"

int ZERA_TOOLS_FILE_DELETE_ALL(const char* startPath, const char* filter) {
  return frame::Enter([&] { return file::DeleteAll(frame::WideText(startPath), frame::WideText(filter)); });
}

int ZERA_TOOLS_FILE_DELETE_ALL_UC(const wchar_t* startPath, const wchar_t* filter) {
  return frame::Enter([&] { return file::DeleteAll(startPath, filter); });
}

int ZERA_TOOLS_FILE_DELETE_ALL_OLD(const char* startPath, const char* filter, unsigned int ageSeconds) {
  return frame::Enter([&] {
    return file::DeleteAllOld(frame::WideText(startPath), frame::WideText(filter), ageSeconds, nullptr);
  });
}

int ZERA_TOOLS_FILE_DELETE_ALL_OLD_UC(const wchar_t* startPath, const wchar_t* filter,
                                      unsigned int ageSeconds) {
  return frame::Enter([&] { return file::DeleteAllOld(startPath, filter, ageSeconds, nullptr); });
}

// KEPT FOR HOSTS: without the abort flag of its UTF-16 partner; hosts call it with these three arguments.
int ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX(const char* startPath, const char* filter, unsigned int ageSeconds) {
  return frame::Enter([&] {
    return file::DeleteAllOld(frame::WideText(startPath), frame::WideText(filter), ageSeconds, nullptr);
  });
}

// KEPT FOR HOSTS: runs under the module state of its caller, unlike the other pruning exports. Hosts that
// call it from their own state have seen that state unswitched since the first version.
int ZERA_TOOLS_FILE_DELETE_ALL_OLD_EX_UC(const wchar_t* startPath, const wchar_t* filter,
                                         unsigned int ageSeconds, int* abortFlag) {
  return frame::EnterUnguarded([&] { return file::DeleteAllOld(startPath, filter, ageSeconds, abortFlag); });
}

int ZERA_TOOLS_FILE_COPY_ALL(const char* startPath, const char* destination, unsigned int overwrite) {
  return frame::Enter(
      [&] { return file::CopyAll(frame::WideText(startPath), frame::WideText(destination), overwrite); });
}

int ZERA_TOOLS_FILE_COPY_ALL_UC(const wchar_t* startPath, const wchar_t* destination,
                                unsigned int overwrite) {
  return frame::Enter([&] { return file::CopyAll(startPath, destination, overwrite); });
}
