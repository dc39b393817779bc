// SPDX-License-Identifier: MIT
// PathExports.cpp: the exports that work on paths as text.
#include <afx.h>

#include "PathOperations.h"
#include "ZERATools.h"
#include "frame/Frame.h"

namespace {

using Plain = file::PathOperations<char>;
using Wide = file::PathOperations<wchar_t>;
using PlainParts = file::Parts<char>;
using WideParts = file::Parts<wchar_t>;

}  // namespace

int ZERA_TOOLS_FILE_GET_DRIVE(const char* path, char* out, size_t capacity) {
  return frame::Enter(
      [&] { return Plain::Get(&PlainParts::drive, &PlainParts::drive, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_DRIVE_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter([&] { return Wide::Get(&WideParts::drive, &WideParts::drive, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_DIR(const char* path, char* out, size_t capacity) {
  return frame::Enter(
      [&] { return Plain::Get(&PlainParts::directory, &PlainParts::directory, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_DIR_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter(
      [&] { return Wide::Get(&WideParts::directory, &WideParts::directory, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_NAME(const char* path, char* out, size_t capacity) {
  return frame::Enter([&] { return Plain::Get(&PlainParts::name, &PlainParts::name, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_NAME_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter([&] { return Wide::Get(&WideParts::name, &WideParts::name, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_EXT(const char* path, char* out, size_t capacity) {
  return frame::Enter(
      [&] { return Plain::Get(&PlainParts::extension, &PlainParts::extension, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_EXT_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter(
      [&] { return Wide::Get(&WideParts::extension, &WideParts::extension, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_DRIVE_DIR(const char* path, char* out, size_t capacity) {
  return frame::Enter(
      [&] { return Plain::Get(&PlainParts::drive, &PlainParts::directory, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_DRIVE_DIR_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter(
      [&] { return Wide::Get(&WideParts::drive, &WideParts::directory, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_NAME_EXT(const char* path, char* out, size_t capacity) {
  return frame::Enter(
      [&] { return Plain::Get(&PlainParts::name, &PlainParts::extension, path, out, capacity); });
}

int ZERA_TOOLS_FILE_GET_NAME_EXT_UC(const wchar_t* path, wchar_t* out, size_t capacity) {
  return frame::Enter(
      [&] { return Wide::Get(&WideParts::name, &WideParts::extension, path, out, capacity); });
}

int ZERA_TOOLS_FILE_REPLACE_DRIVE(char* path, size_t capacity, const char* drive) {
  return frame::Enter([&] { return Plain::ReplaceDrive(path, capacity, drive); });
}

int ZERA_TOOLS_FILE_REPLACE_DRIVE_UC(wchar_t* path, size_t capacity, const wchar_t* drive) {
  return frame::Enter([&] { return Wide::ReplaceDrive(path, capacity, drive); });
}

int ZERA_TOOLS_FILE_REPLACE_DIR(char* path, size_t capacity, const char* directory) {
  return frame::Enter([&] { return Plain::ReplaceDirectory(path, capacity, directory); });
}

// KEPT FOR HOSTS: runs under the module state of its caller, unlike its plain partner. Hosts that call it
// from their own state have seen that state unswitched since the first version.
int ZERA_TOOLS_FILE_REPLACE_DIR_UC(wchar_t* path, size_t capacity, const wchar_t* directory) {
  return frame::EnterUnguarded([&] { return Wide::ReplaceDirectory(path, capacity, directory); });
}

int ZERA_TOOLS_FILE_REPLACE_NAME(char* path, size_t capacity, const char* name) {
  return frame::Enter([&] { return Plain::ReplaceName(path, capacity, name); });
}

int ZERA_TOOLS_FILE_REPLACE_NAME_UC(wchar_t* path, size_t capacity, const wchar_t* name) {
  return frame::Enter([&] { return Wide::ReplaceName(path, capacity, name); });
}

int ZERA_TOOLS_FILE_REPLACE_EXT(char* path, size_t capacity, const char* extension) {
  return frame::Enter([&] { return Plain::ReplaceExtension(path, capacity, extension); });
}

int ZERA_TOOLS_FILE_REPLACE_EXT_UC(wchar_t* path, size_t capacity, const wchar_t* extension) {
  return frame::Enter([&] { return Wide::ReplaceExtension(path, capacity, extension); });
}

int ZERA_TOOLS_FILE_REPLACE_NAME_EXT(char* path, size_t capacity, const char* file) {
  return frame::Enter([&] { return Plain::TakeNameAndExtension(path, capacity, file); });
}

int ZERA_TOOLS_FILE_REPLACE_NAME_EXT_UC(wchar_t* path, size_t capacity, const wchar_t* file) {
  return frame::Enter([&] { return Wide::TakeNameAndExtension(path, capacity, file); });
}

int ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR(char* path, size_t capacity, const char* folder) {
  return frame::Enter([&] { return Plain::TakeDriveAndDirectory(path, capacity, folder); });
}

int ZERA_TOOLS_FILE_REPLACE_DRIVE_DIR_UC(wchar_t* path, size_t capacity, const wchar_t* folder) {
  return frame::Enter([&] { return Wide::TakeDriveAndDirectory(path, capacity, folder); });
}

int ZERA_TOOLS_FILE_ADD_DIR(char* path, size_t capacity, const char* text) {
  return frame::Enter([&] { return Plain::AddDirectory(path, capacity, text); });
}

int ZERA_TOOLS_FILE_ADD_DIR_UC(wchar_t* path, size_t capacity, const wchar_t* text) {
  return frame::Enter([&] { return Wide::AddDirectory(path, capacity, text); });
}

int ZERA_TOOLS_FILE_ADD_NAME(char* path, size_t capacity, const char* text) {
  return frame::Enter([&] { return Plain::AddName(path, capacity, text); });
}

int ZERA_TOOLS_FILE_ADD_NAME_UC(wchar_t* path, size_t capacity, const wchar_t* text) {
  return frame::Enter([&] { return Wide::AddName(path, capacity, text); });
}

int ZERA_TOOLS_FILE_ADD_IDX_NAME(char* path, size_t capacity, unsigned int index, unsigned int digits) {
  return frame::Enter([&] { return Plain::AddIndex(path, capacity, index, digits); });
}

int ZERA_TOOLS_FILE_ADD_IDX_NAME_UC(wchar_t* path, size_t capacity, unsigned int index, unsigned int digits) {
  return frame::Enter([&] { return Wide::AddIndex(path, capacity, index, digits); });
}
