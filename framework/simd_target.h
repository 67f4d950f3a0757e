// Marks a function as built for a wider instruction set than the bundle's baseline x86-64.
//
// The instruction set goes on the function rather than on a file's compiler flags: whichever
// copy of an inline function the linker keeps, it is then never one compiled for a CPU that
// its caller didn't check for. Such functions are only called from functions of the same
// instruction set, which callers reach after asking the CPU at run time.
#pragma once

#define VL1_AVX2 [[gnu::target("avx2"), gnu::always_inline]] inline
#define VL1_AVX512 [[gnu::target("avx512f"), gnu::always_inline]] inline
