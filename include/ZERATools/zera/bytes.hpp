// SPDX-License-Identifier: MIT
// zera/bytes.hpp: bytes on their way into an export.
#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace zera {

/// Bytes that a function reads, for the length of a call: a text's, a container's (a vector, an array, a
/// span), or those behind a pointer.
struct bytes {
  bytes(const void* start, std::size_t count) noexcept : data(start), size(count) {}
  bytes(std::string_view text) noexcept : data(text.data()), size(text.size()) {}
  bytes(const char* text) noexcept : bytes(std::string_view(text)) {}
  template <class Container,
            class = decltype(static_cast<const void*>(std::declval<const Container&>().data()))>
  bytes(const Container& container) noexcept
      : data(container.data()), size(container.size() * sizeof(*container.data())) {
    static_assert(std::is_trivially_copyable_v<std::remove_reference_t<decltype(*container.data())>>,
                  "the container's elements are read as bytes");
  }

  const void* data;
  std::size_t size;
};

}  // namespace zera
