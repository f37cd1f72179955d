// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Marks a function of the pixel paths whose loops the compiler turns into vector code: it is compiled twice,
// the second time for what x86-64 has since AVX2, with all that it calls, and the loader picks one. Both give
// the same to the bit: without fused multiplications, which neither has, the width of a vector changes no
// result.
#pragma once

// Sanitizers run before the loader's choice has been made; other compilers know the mark in part only.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) &&     \
    !defined(__SANITIZE_THREAD__)
#define LUMORA_VECTOR_CLONES __attribute__((target_clones("avx2", "default"), flatten))
#else
#define LUMORA_VECTOR_CLONES
#endif
