#pragma once

// Loops over pixels that are compiled twice, for processors with 256-bit vectors and for all others; which one runs is
// found out when the program starts. Results are the same. Sanitizers, and compilers that know no such thing, get the
// plain one.

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)                  \
    && !defined(__SANITIZE_THREAD__)
#define TWCORE_WIDE_VECTORS __attribute__((target_clones("avx2", "default")))
#else
#define TWCORE_WIDE_VECTORS
#endif
