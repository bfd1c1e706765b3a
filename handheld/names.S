@ What the compiler or its headers call by another name than the handheld's library does. The
@ arguments and results are the same.

    .syntax unified
    .arm

    .macro other_name name, theirs
    .section .text.\name, "ax", %progbits
    .global \name
    .type \name, %function
\name:
    b \theirs
    .size \name, . - \name
    .endm

    other_name getc, fgetc
    other_name putc, fputc

@ Doubles lie in r0, r1 and r2, r3, the low word first. What comes to be called takes a row in
@ coredll.def as well.
    other_name __adddf3, __addd
    other_name __subdf3, __subd
    other_name __muldf3, __muld
    other_name __divdf3, __divd
    other_name __negdf2, __negd
    other_name __floatsidf, __itod
    other_name __floatunsidf, __utod
    other_name __fixdfsi, __dtoi
    other_name __fixunsdfsi, __dtou

    .section .note.GNU-stack, "", %progbits
