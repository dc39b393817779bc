// SPDX-License-Identifier: MIT
// void zera_call_in_module_state(AFX_MODULE_STATE* state, void (*work)(void*), void* argument)
//
// Calls work(argument) with the state current for the thread, and puts the one before back on every way
// out. A guard object of C++ would do for the library's own exceptions; one of a Microsoft-ABI host,
// raised by its invalid-parameter handler below an export, passes through our frames without running their
// destructors. The handler that is named here is called whatever it is that unwinds.

        .text
        .globl  zera_call_in_module_state
        .def    zera_call_in_module_state; .scl 2; .type 32; .endef
        .seh_proc zera_call_in_module_state
        .seh_handler zera_restore_module_state, @unwind
zera_call_in_module_state:
        subq    $40, %rsp
        .seh_stackalloc 40
        .seh_endprologue
        // The same way to the thread's storage as in thread_storage.h; the state is its first member.
        movl    _tls_index(%rip), %r9d
        movq    %gs:0x58, %rax
        movq    (%rax,%r9,8), %rax
        leaq    zera_thread_storage(%rip), %r10
        leaq    _tls_start(%rip), %r11
        subq    %r11, %r10
        movq    (%rax,%r10), %r9
        movq    %r9, 32(%rsp)           // kSavedModuleState
        movq    %rcx, (%rax,%r10)
        movq    %r8, %rcx
        call    *%rdx
        // The result stands in rax or xmm0.
        movl    _tls_index(%rip), %r9d
        movq    %gs:0x58, %rcx
        movq    (%rcx,%r9,8), %rcx
        leaq    zera_thread_storage(%rip), %r10
        leaq    _tls_start(%rip), %r11
        subq    %r11, %r10
        movq    32(%rsp), %r9
        movq    %r9, (%rcx,%r10)
        addq    $40, %rsp
        ret
        .seh_endproc
