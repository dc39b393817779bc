# SPDX-License-Identifier: MIT
# What stands in the library's import table while it is profiled: each entry tells its number and the caller's
# address to ProfileBegin, runs the platform's function with the caller's own arguments and stack, and comes back
# by way of ProfileEnd.
  .text
  .globl profile_thunks
  .balign 16
profile_thunks:
  .set number, 0
  .rept 256
  pushq $number
  jmp 1f
  .balign 16
  .set number, number + 1
  .endr
1:
  pushq %rcx
  pushq %rdx
  pushq %r8
  pushq %r9
  subq $0x60, %rsp
  movups %xmm0, 0x20(%rsp)
  movups %xmm1, 0x30(%rsp)
  movups %xmm2, 0x40(%rsp)
  movups %xmm3, 0x50(%rsp)
  movq 0x80(%rsp), %rcx
  movq 0x88(%rsp), %rdx
  call ProfileBegin
  movups 0x20(%rsp), %xmm0
  movups 0x30(%rsp), %xmm1
  movups 0x40(%rsp), %xmm2
  movups 0x50(%rsp), %xmm3
  addq $0x60, %rsp
  popq %r9
  popq %r8
  popq %rdx
  popq %rcx
  addq $8, %rsp
  leaq 2f(%rip), %r11
  movq %r11, (%rsp)
  jmp *%rax
2:
  subq $0x40, %rsp
  movq %rax, 0x20(%rsp)
  movups %xmm0, 0x30(%rsp)
  call ProfileEnd
  movq %rax, %r11
  movq 0x20(%rsp), %rax
  movups 0x30(%rsp), %xmm0
  addq $0x40, %rsp
  jmp *%r11
