// SPDX-License-Identifier: MIT
// zera/objects.hpp: the strings and arrays that exports fill, owned for the length of a call. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "../Objects.h"

namespace zera::detail {

/// A UTF-16 string object that frees itself.
class wide_object {
 public:
  wide_object() noexcept { zera_wstring_make(&object_); }
  wide_object(const wide_object&) = delete;
  wide_object& operator=(const wide_object&) = delete;
  ~wide_object() { zera_wstring_free(&object_); }

  bool set(std::wstring_view text) noexcept {
    return zera_wstring_set_length(&object_, text.data(), text.size()) != 0;
  }
  CStringW& ref() noexcept { return zera_ref(&object_); }
  std::wstring str() const { return {zera_wstring_text(&object_), zera_wstring_length(&object_)}; }

 private:
  ZERA_WSTRING object_;
};

/// A string object of bytes that frees itself.
class narrow_object {
 public:
  narrow_object() noexcept { zera_astring_make(&object_); }
  narrow_object(const narrow_object&) = delete;
  narrow_object& operator=(const narrow_object&) = delete;
  ~narrow_object() { zera_astring_free(&object_); }

  bool set(std::string_view text) noexcept {
    return zera_astring_set_length(&object_, text.data(), text.size()) != 0;
  }
  CStringA& ref() noexcept { return zera_ref(&object_); }
  std::string str() const { return {zera_astring_text(&object_), zera_astring_length(&object_)}; }

 private:
  ZERA_ASTRING object_;
};

/// A byte array that wipes and frees itself.
class bytes_object {
 public:
  bytes_object() noexcept { zera_bytes_make(&object_); }
  bytes_object(const bytes_object&) = delete;
  bytes_object& operator=(const bytes_object&) = delete;
  ~bytes_object() { zera_bytes_free(&object_); }

  bool set(const void* data, std::size_t size) noexcept { return zera_bytes_set(&object_, data, size) != 0; }
  CArray<BYTE, const BYTE&>& ref() noexcept { return zera_ref(&object_); }
  std::vector<unsigned char> vector() const {
    const BYTE* const data = zera_bytes_data(&object_);
    return {data, data + zera_bytes_size(&object_)};
  }

 private:
  ZERA_BYTES object_;
};

}  // namespace zera::detail
