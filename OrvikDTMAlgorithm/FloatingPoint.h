// Why every file of this library is compiled with -ffp-contract=off and without fast-math.
//
// A fused multiply-add keeps more digits of a product than two separate roundings do. In a test such as "on which side
// of this edge does the point lie?" the extra digits change the answer for points near the edge, and with it which
// edges flip: the same survey would give another TIN under another compiler. The build passes the flag on to users of
// the CMake target; this header catches builds that lost it.
#pragma once

#if defined(__clang__)
#pragma STDC FP_CONTRACT OFF
#endif

#if defined(__FAST_MATH__)
#error "OrvikDTMAlgorithm must not be compiled with -ffast-math: its results would depend on the compiler"
#endif
