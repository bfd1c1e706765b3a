@ Division of words, which this processor has no instruction for. By zero it gives 0, with the
@ dividend as the remainder; the least number by -1 gives itself, with 0.

    .syntax unified
    .arm

    .macro function name
    .section .text.\name, "ax", %progbits
    .global \name
    .type \name, %function
\name:
    .endm

    .macro end name
    .size \name, . - \name
    .endm

@ r0 / r1: leaves the quotient in r0 and the remainder in r1, changes r2, r3 and the flags.
    .section .text.__udivsi3, "ax", %progbits
    .global __udivsi3
    .type __udivsi3, %function
__udivsi3:
    subs r2, r1, #1
    bls by_one_or_zero

@ r2: by how many places the divisor can go to the left and still not pass the dividend, less one
@ when it passes it as it stands. Halving the step finds it in five comparisons.
    mov r2, #0
    mov r3, r0
    .irp places, 16, 8, 4, 2, 1
    cmp r1, r3, lsr #\places
    movls r3, r3, lsr #\places
    addls r2, r2, #\places
    .endr

@ One step of three instructions for each place, from there down to 0. The comparison's carry is the
@ quotient's next bit.
    rsb r2, r2, #31
    add r2, r2, r2, lsl #1
    mov r3, #0
    add pc, pc, r2, lsl #2
    mov r0, r0  @ pc is two instructions ahead
    .set place, 31
    .rept 32
    cmp r0, r1, lsl #place
    adc r3, r3, r3
    subcs r0, r0, r1, lsl #place
    .set place, place - 1
    .endr
    mov r1, r0
    mov r0, r3
    mov pc, lr

by_one_or_zero:
    moveq r1, #0
    movne r1, r0
    movne r0, #0
    mov pc, lr
    end __udivsi3

    function __umodsi3
    str lr, [sp, #-4]!
    bl __udivsi3
    mov r0, r1
    ldr pc, [sp], #4
    end __umodsi3

@ Both operands without their signs; the quotient is negative when one of them was.
    function __divsi3
    stmfd sp!, {r4, lr}
    eor r4, r0, r1
    cmp r0, #0
    rsblt r0, r0, #0
    cmp r1, #0
    rsblt r1, r1, #0
    bl __udivsi3
    cmp r4, #0
    rsblt r0, r0, #0
    ldmfd sp!, {r4, pc}
    end __divsi3

@ The remainder has the dividend's sign.
    function __modsi3
    stmfd sp!, {r4, lr}
    movs r4, r0
    rsblt r0, r0, #0
    cmp r1, #0
    rsblt r1, r1, #0
    bl __udivsi3
    cmp r4, #0
    mov r0, r1
    rsblt r0, r0, #0
    ldmfd sp!, {r4, pc}
    end __modsi3

    .section .note.GNU-stack, "", %progbits
