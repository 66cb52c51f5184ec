// The message functions, by hand: they pass on arguments that they know nothing of, so no compiled function will do.
#include "desktop/substrate/mach_messages.h"

#if !defined(__x86_64__)
#error "Mach-O images are executed on x86-64 alone"
#endif

// saveArguments keeps every register that can carry an argument, restoreArguments gives them back; between them the
// stack is aligned for a call. The count of vector registers of a variadic call travels in rax.
__asm__(R"(
    .text
    .macro saveArguments
    push %rdi
    push %rsi
    push %rdx
    push %rcx
    push %r8
    push %r9
    push %rax
    sub $128, %rsp
    movups %xmm0, (%rsp)
    movups %xmm1, 16(%rsp)
    movups %xmm2, 32(%rsp)
    movups %xmm3, 48(%rsp)
    movups %xmm4, 64(%rsp)
    movups %xmm5, 80(%rsp)
    movups %xmm6, 96(%rsp)
    movups %xmm7, 112(%rsp)
    .endm

    .macro restoreArguments
    movups (%rsp), %xmm0
    movups 16(%rsp), %xmm1
    movups 32(%rsp), %xmm2
    movups 48(%rsp), %xmm3
    movups 64(%rsp), %xmm4
    movups 80(%rsp), %xmm5
    movups 96(%rsp), %xmm6
    movups 112(%rsp), %xmm7
    add $128, %rsp
    pop %rax
    pop %r9
    pop %r8
    pop %rcx
    pop %rdx
    pop %rsi
    pop %rdi
    .endm

    .globl substrate_msgSend
    .type substrate_msgSend, @function
substrate_msgSend:
    test %rdi, %rdi
    jz 1f
    saveArguments
    call objc_msg_lookup@PLT
    mov %rax, %r11
    restoreArguments
    jmp *%r11
1:  xor %eax, %eax
    xor %edx, %edx
    xorps %xmm0, %xmm0
    xorps %xmm1, %xmm1
    ret
    .size substrate_msgSend, . - substrate_msgSend

    .globl substrate_msgSend_stret
    .type substrate_msgSend_stret, @function
substrate_msgSend_stret:
    test %rsi, %rsi
    jz 2f
    saveArguments
    mov %rsi, %rdi
    mov %rdx, %rsi
    call objc_msg_lookup@PLT
    mov %rax, %r11
    restoreArguments
    jmp *%r11
2:  mov %rdi, %rax
    ret
    .size substrate_msgSend_stret, . - substrate_msgSend_stret

    .globl substrate_msgSendSuper
    .type substrate_msgSendSuper, @function
substrate_msgSendSuper:
    saveArguments
    call objc_msg_lookup_super@PLT
    mov %rax, %r11
    restoreArguments
    mov (%rdi), %rdi
    jmp *%r11
    .size substrate_msgSendSuper, . - substrate_msgSendSuper

    .globl substrate_msgSendSuper_stret
    .type substrate_msgSendSuper_stret, @function
substrate_msgSendSuper_stret:
    saveArguments
    mov %rsi, %rdi
    mov %rdx, %rsi
    call objc_msg_lookup_super@PLT
    mov %rax, %r11
    restoreArguments
    mov (%rsi), %rsi
    jmp *%r11
    .size substrate_msgSendSuper_stret, . - substrate_msgSendSuper_stret
)");
