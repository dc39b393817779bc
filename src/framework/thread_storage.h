// SPDX-License-Identifier: MIT
// thread_storage.h: what the library keeps for each thread.
//
// This toolchain's thread_local is emulated: it allocates at a thread's first use, takes one of the
// process's 1,088 thread-local-storage indexes for good, and is slow. The loader's own storage has
// none of that: each thread has a zeroed copy of this module's .tls section, also a thread that was
// there before the library, and the loader frees it when the thread or the library goes. The compiler
// cannot address it, so a few instructions do.
#pragma once

struct AFX_MODULE_STATE;

namespace framework {

struct ThreadStorage {
  AFX_MODULE_STATE* moduleState;  // the current one; null when no module's is
  // The C++ runtime's account of the exceptions in flight, as its ABI lays it out.
  struct {
    void* caught;
    unsigned uncaught;
  } exceptions;
};

/// The calling thread's storage.
///
/// Its place in the section is the difference of two addresses: for an operand relative to a section,
/// the linker writes a relocation as for an address, which spoils it wherever the library does not lie
/// at its preferred address.
inline ThreadStorage& CurrentThread() noexcept {
  ThreadStorage* storage;
  asm("movl _tls_index(%%rip), %%ecx\n\t"
      "movq %%gs:0x58, %0\n\t"
      "movq (%0,%%rcx,8), %0\n\t"
      "leaq zera_thread_storage(%%rip), %%rcx\n\t"
      "addq %%rcx, %0\n\t"
      "leaq _tls_start(%%rip), %%rcx\n\t"
      "subq %%rcx, %0"
      : "=&r"(storage)
      :
      : "rcx", "cc");
  return *storage;
}

}  // namespace framework
