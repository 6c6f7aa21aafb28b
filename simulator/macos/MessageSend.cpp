// `objc_msgSend` and, on 64-bit Intel, `objc_msgSend_stret`, with the platform's calling
// convention.
//
// They ask `simulatorFindMethod` for the method, so they serve any runtime that defines it:
//
//     extern "C" void* simulatorFindMethod(id receiver, SEL selector);
//
// The trampolines save every register that may hold an argument, look the method up, restore the
// registers and jump to the method, which returns directly to the sender. A message to null goes to
// `simulatorAnswerNothing`, which returns zero in every result register.

#if defined(__x86_64__)

// Six integer registers, eight vector registers and the number of vector registers in al. In
// `objc_msgSend_stret` the hidden pointer to the result comes first and the receiver second.
asm(R"(
.macro MRV_SEND receiver, selector
    pushq %rbp
    .cfi_adjust_cfa_offset 8
    .cfi_rel_offset %rbp, 0
    movq %rsp, %rbp
    .cfi_def_cfa_register %rbp
    subq $192, %rsp
    movq %rdi, -8(%rbp)
    movq %rsi, -16(%rbp)
    movq %rdx, -24(%rbp)
    movq %rcx, -32(%rbp)
    movq %r8, -40(%rbp)
    movq %r9, -48(%rbp)
    movq %rax, -56(%rbp)
    movaps %xmm0, -192(%rbp)
    movaps %xmm1, -176(%rbp)
    movaps %xmm2, -160(%rbp)
    movaps %xmm3, -144(%rbp)
    movaps %xmm4, -128(%rbp)
    movaps %xmm5, -112(%rbp)
    movaps %xmm6, -96(%rbp)
    movaps %xmm7, -80(%rbp)
    movq \receiver, %rdi
    movq \selector, %rsi
    call simulatorFindMethod@PLT
    movq %rax, %r11
    movaps -80(%rbp), %xmm7
    movaps -96(%rbp), %xmm6
    movaps -112(%rbp), %xmm5
    movaps -128(%rbp), %xmm4
    movaps -144(%rbp), %xmm3
    movaps -160(%rbp), %xmm2
    movaps -176(%rbp), %xmm1
    movaps -192(%rbp), %xmm0
    movq -56(%rbp), %rax
    movq -48(%rbp), %r9
    movq -40(%rbp), %r8
    movq -32(%rbp), %rcx
    movq -24(%rbp), %rdx
    movq -16(%rbp), %rsi
    movq -8(%rbp), %rdi
    leave
    .cfi_def_cfa %rsp, 8
    jmp *%r11
.endm

    .text
    .globl objc_msgSend
    .type objc_msgSend, @function
objc_msgSend:
    .cfi_startproc
    testq %rdi, %rdi
    jz simulatorAnswerNothing
    MRV_SEND -8(%rbp), -16(%rbp)
    .cfi_endproc
    .size objc_msgSend, . - objc_msgSend

    .globl objc_msgSend_stret
    .type objc_msgSend_stret, @function
objc_msgSend_stret:
    .cfi_startproc
    testq %rsi, %rsi
    jz simulatorAnswerNothing
    MRV_SEND -16(%rbp), -24(%rbp)
    .cfi_endproc
    .size objc_msgSend_stret, . - objc_msgSend_stret

    .globl simulatorAnswerNothing
    .hidden simulatorAnswerNothing
    .type simulatorAnswerNothing, @function
simulatorAnswerNothing:
    .cfi_startproc
    xorl %eax, %eax
    xorl %edx, %edx
    xorps %xmm0, %xmm0
    xorps %xmm1, %xmm1
    ret
    .cfi_endproc
    .size simulatorAnswerNothing, . - simulatorAnswerNothing
)");

#elif defined(__aarch64__)

// Eight integer registers, the one with the address of a result in memory, and eight vector
// registers.
asm(R"(
    .text
    .globl objc_msgSend
    .type objc_msgSend, %function
objc_msgSend:
    .cfi_startproc
    cbz x0, simulatorAnswerNothing
    stp x29, x30, [sp, #-16]!
    .cfi_def_cfa_offset 16
    .cfi_offset x29, -16
    .cfi_offset x30, -8
    mov x29, sp
    .cfi_def_cfa x29, 16
    sub sp, sp, #208
    stp x0, x1, [sp]
    stp x2, x3, [sp, #16]
    stp x4, x5, [sp, #32]
    stp x6, x7, [sp, #48]
    str x8, [sp, #64]
    stp q0, q1, [sp, #80]
    stp q2, q3, [sp, #112]
    stp q4, q5, [sp, #144]
    stp q6, q7, [sp, #176]
    bl simulatorFindMethod
    mov x16, x0
    ldp q6, q7, [sp, #176]
    ldp q4, q5, [sp, #144]
    ldp q2, q3, [sp, #112]
    ldp q0, q1, [sp, #80]
    ldr x8, [sp, #64]
    ldp x6, x7, [sp, #48]
    ldp x4, x5, [sp, #32]
    ldp x2, x3, [sp, #16]
    ldp x0, x1, [sp]
    mov sp, x29
    .cfi_def_cfa sp, 16
    ldp x29, x30, [sp], #16
    .cfi_def_cfa_offset 0
    .cfi_restore x29
    .cfi_restore x30
    br x16
    .cfi_endproc
    .size objc_msgSend, . - objc_msgSend

    .globl simulatorAnswerNothing
    .hidden simulatorAnswerNothing
    .type simulatorAnswerNothing, %function
simulatorAnswerNothing:
    .cfi_startproc
    mov x0, #0
    mov x1, #0
    movi d0, #0
    movi d1, #0
    movi d2, #0
    movi d3, #0
    ret
    .cfi_endproc
    .size simulatorAnswerNothing, . - simulatorAnswerNothing
)");

#endif
