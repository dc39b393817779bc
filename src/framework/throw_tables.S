// SPDX-License-Identifier: MIT
// The type information that travels with an exception into a host of the Microsoft ABI.
//
// A host finds its catch block by comparing decorated type names. Every reference in these tables
// is a 32-bit offset from the image's base, which C++ cannot express; the assembler's .rva can.
//
// throwinfo:       attributes, destructor (none: a pointer is thrown), 0, offset of the type list
// type list:       count, offsets of catchable types, the thrown type first, then its bases
// catchable type:  properties (1: simple), offset of the descriptor, displacement 0/-1/0, size, copy
// descriptor:      table pointer (unused), scratch, name

.macro TYPE label, name
        .section .data$zt_\label, "w"
        .balign 8
descriptor_\label:
        .quad   0, 0
        .asciz  "\name"
        .section .rdata$zt_\label, "dr"
        .balign 4
catchable_\label:
        .long   1
        .rva    descriptor_\label
        .long   0, -1, 0
        .long   8
        .long   0
.endm

.macro THROWINFO label, count, types:vararg
        .section .rdata$zi_\label, "dr"
        .balign 4
types_\label:
        .long   \count
        .irp    one, \types
        .rva    catchable_\one
        .endr
        .globl  zera_throwinfo_\label
zera_throwinfo_\label:
        .long   0, 0, 0
        .rva    types_\label
.endm

        TYPE    any, ".PEAX"
        TYPE    object, ".PEAVCObject@@"
        TYPE    exception, ".PEAVCException@@"
        TYPE    simple, ".PEAVCSimpleException@@"
        TYPE    memory, ".PEAVCMemoryException@@"
        TYPE    invalidarg, ".PEAVCInvalidArgException@@"
        TYPE    file, ".PEAVCFileException@@"
        TYPE    ole, ".PEAVCOleException@@"

        THROWINFO memory, 5, memory, simple, exception, object, any
        THROWINFO invalidarg, 5, invalidarg, simple, exception, object, any
        THROWINFO file, 4, file, exception, object, any
        THROWINFO ole, 4, ole, exception, object, any
