// A function whose frame only its own DWARF entry can describe.
#include "TestHost.h"

// Saves rbx 88 bytes below the canonical frame address, which the compact encodings cannot express.
// The escaped directive keeps the assembler from choosing one.
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

extern "C" void oddFrame(void (*function)());

namespace {

void throwNine() { throw 9; }

volatile long seed = 77;

}  // namespace

// The value is kept in rbx, which `oddFrame` overwrites.
EXPORT long throwsThroughOddFrame() {
  register long kept asm("rbx") = seed;
  asm volatile("" : "+r"(kept));
  try {
    oddFrame(&throwNine);
  } catch (int value) {
    asm volatile("" : "+r"(kept));
    return kept * 10 + value;
  }
  return -1;
}
