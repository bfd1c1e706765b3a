// Taking and using a recovery point, from handheld/runtime/. The handheld's own longjmp looks for
// the frames between the two in tables that this program does not have.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef int jmp_buf[10];  // r4 to r11, sp, and where setjmp returns to

__attribute__((returns_twice)) int setjmp(jmp_buf context);
__attribute__((noreturn)) void longjmp(jmp_buf context, int value);

#ifdef __cplusplus
}
#endif
