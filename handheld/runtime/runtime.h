// What the compiler calls for arithmetic that the processor has no instruction for, under the
// compiler's names. Of the doubles' arithmetic only comparing is here: handheld/names.S has the
// rest.
//
// Division by zero gives 0, and the dividend as the remainder; the least number by -1 gives itself,
// and 0. Nothing traps.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the compiler's.
#pragma once

#include <cstdint>

extern "C" {

// divide.S. __udivsi3 also leaves the remainder, in r1.
uint32_t __udivsi3(uint32_t n, uint32_t d);
uint32_t __umodsi3(uint32_t n, uint32_t d);
int32_t __divsi3(int32_t n, int32_t d);
int32_t __modsi3(int32_t n, int32_t d);

// divide_long.cpp
uint64_t __udivdi3(uint64_t n, uint64_t d);
uint64_t __umoddi3(uint64_t n, uint64_t d);
int64_t __divdi3(int64_t n, int64_t d);
int64_t __moddi3(int64_t n, int64_t d);

// compare.cpp: below 0, 0 or above 0 as a is less than, equal to or greater than b. The two zeros
// are equal. With a NaN each gives what makes its own comparison false.
int __eqdf2(double a, double b);
int __nedf2(double a, double b);
int __ltdf2(double a, double b);
int __ledf2(double a, double b);
int __gtdf2(double a, double b);
int __gedf2(double a, double b);
int __unorddf2(double a, double b);  // 1 with a NaN, else 0

// bits.cpp: the number of the lowest bit that is set; of 0 the number of bits.
int __ctzsi2(uint32_t bits);
int __ctzdi2(uint64_t bits);

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
