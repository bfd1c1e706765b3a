@ setjmp and longjmp: what a called function keeps, in the order of the registers.

    .syntax unified
    .arm

    .section .text.setjmp, "ax", %progbits
    .global setjmp
    .type setjmp, %function
setjmp:
    stmia r0, {r4-r11, sp, lr}
    mov r0, #0
    mov pc, lr
    .size setjmp, . - setjmp

@ A value of 0 comes back as 1, so that the two returns of setjmp can be told apart.
    .section .text.longjmp, "ax", %progbits
    .global longjmp
    .type longjmp, %function
longjmp:
    mov r2, r0
    movs r0, r1
    moveq r0, #1
    ldmia r2, {r4-r11, sp, pc}
    .size longjmp, . - longjmp

    .section .note.GNU-stack, "", %progbits
