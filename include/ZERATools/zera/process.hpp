// SPDX-License-Identifier: MIT
// zera/process.hpp: processes by name, thread messages, memory without an exception.
#pragma once

#include "../Objects.h"
#include "argument.hpp"

namespace zera::process {

/// Ends all processes of a name. As #ZERA_TOOLS_KILLPROCESS_UC.
inline int end(const argument& name) {
  return ZERA_TOOLS_KILLPROCESS_UC(name);
}
/// As #ZERA_TOOLS_KILLPROCESS.
inline int end(const ansi_argument& name) {
  return ZERA_TOOLS_KILLPROCESS(name);
}

/// Counts the processes of a name. As #ZERA_TOOLS_GETNUM_APPRUNNING_UC.
[[nodiscard]] inline unsigned int count(const argument& path) {
  return ZERA_TOOLS_GETNUM_APPRUNNING_UC(path);
}
/// As #ZERA_TOOLS_GETNUM_APPRUNNING.
[[nodiscard]] inline unsigned int count(const ansi_argument& path) {
  return ZERA_TOOLS_GETNUM_APPRUNNING(path);
}

/// Posts a message to a thread, with retries. As #ZERA_TOOLS_POSTTHREADMESSAGE.
[[nodiscard]] inline bool post(DWORD thread_id, UINT message, WPARAM w = 0, LPARAM l = 0) {
  ZERA_THREAD thread;
  zera_thread_make(&thread, thread_id);
  return ZERA_TOOLS_POSTTHREADMESSAGE(zera_ref(&thread), message, w, l) != 0;
}

/// Memory, or null. As #ZERA_TOOLS_SAFE_NEW.
[[nodiscard]] inline void* allocate(unsigned int size) {
  return ZERA_TOOLS_SAFE_NEW(size);
}

}  // namespace zera::process
