// A function that keeps its frame in a way that only its own DWARF entry can tell.
#include "TestHost.h"

// Saves rbx at the far end of its frame (88 bytes below the caller's), where the compact encodings
// have no place for it; the directive is escaped so that no encoding is tried.
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

// The value stays in rbx, which the odd frame spoils.
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
