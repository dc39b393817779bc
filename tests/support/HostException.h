// SPDX-License-Identifier: MIT
// HostException.h: what the library raises to its host, seen without a host of the Microsoft ABI.
#pragma once

#include <functional>
#include <string>

namespace test {

/// Runs a call into the library and gives the decorated name of the class that it raised, as
/// ".PEAVCMemoryException@@"; empty if it returned. The exception is not dispatched: what the library
/// does behind its last destructor is cut off, which leaves nothing behind. The exception object itself is
/// the host's to delete; `object` receives it.
std::string RaisedBy(const std::function<void()>& call, void** object = nullptr);

/// Deletes an exception as a host of the Microsoft ABI does, by the object's own table.
void DeleteException(void* object);

inline constexpr char kMemoryException[] = ".PEAVCMemoryException@@";

}  // namespace test
