// A function whose frame only its own DWARF entry can describe.
#include "TestHost.h"

// Saves a register 88 bytes below the canonical frame address, which the compact encodings cannot
// express. The escaped directive keeps the assembler from choosing one.
#if defined(__aarch64__)
asm(R"(
  .globl _oddFrame
  .p2align 4
_oddFrame:
  .cfi_startproc
  sub sp, sp, #96
  .cfi_def_cfa_offset 96
  stp x19, x30, [sp, #8]
  .cfi_escape 0x93, 0x0b
  .cfi_offset w30, -80
  mov x19, #-1
  blr x0
  ldp x19, x30, [sp, #8]
  add sp, sp, #96
  .cfi_def_cfa_offset 0
  ret
  .cfi_endproc
)");
#define KEPT_REGISTER "x19"
#else
asm(R"(
  .globl _oddFrame
  .p2align 4
_oddFrame:
  .cfi_startproc
  subq $88, %rsp
  .cfi_def_cfa_offset 96
  movq %rbx, 8(%rsp)
  .cfi_escape 0x83, 0x0b
  movq $-1, %rbx
  callq *%rdi
  movq 8(%rsp), %rbx
  addq $88, %rsp
  .cfi_def_cfa_offset 8
  retq
  .cfi_endproc
)");
#define KEPT_REGISTER "rbx"
#endif

extern "C" void oddFrame(void (*function)());

namespace {

void throwNine() { throw 9; }

volatile long seed = 77;

}  // namespace

// The value is kept in the register that `oddFrame` overwrites.
EXPORT long throwsThroughOddFrame() {
  register long kept asm(KEPT_REGISTER) = seed;
  asm volatile("" : "+r"(kept));
  try {
    oddFrame(&throwNine);
  } catch (int value) {
    asm volatile("" : "+r"(kept));
    return kept * 10 + value;
  }
  return -1;
}
