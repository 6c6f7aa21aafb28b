// Mathematical functions of the target's C library.
#pragma once

#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5

#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define INFINITY __builtin_huge_valf()
#define NAN __builtin_nanf("0x7fc00000")
#define M_PI 3.14159265358979323846

#ifdef __cplusplus
extern "C" {
#endif

typedef float float_t;
typedef double double_t;

// clang-format off
// Declare a function in its three precisions.
#define __MRV_MATH_1(name) \
  double name(double);     \
  float name##f(float);    \
  long double name##l(long double);
#define __MRV_MATH_2(name)     \
  double name(double, double); \
  float name##f(float, float); \
  long double name##l(long double, long double);

__MRV_MATH_1(acos) __MRV_MATH_1(acosh) __MRV_MATH_1(asin) __MRV_MATH_1(asinh)
__MRV_MATH_1(atan) __MRV_MATH_1(atanh) __MRV_MATH_1(cbrt) __MRV_MATH_1(ceil)
__MRV_MATH_1(cos) __MRV_MATH_1(cosh) __MRV_MATH_1(erf) __MRV_MATH_1(erfc)
__MRV_MATH_1(exp) __MRV_MATH_1(exp2) __MRV_MATH_1(expm1) __MRV_MATH_1(fabs)
__MRV_MATH_1(floor) __MRV_MATH_1(lgamma) __MRV_MATH_1(log) __MRV_MATH_1(log10)
__MRV_MATH_1(log1p) __MRV_MATH_1(log2) __MRV_MATH_1(logb) __MRV_MATH_1(nearbyint)
__MRV_MATH_1(rint) __MRV_MATH_1(round) __MRV_MATH_1(sin) __MRV_MATH_1(sinh)
__MRV_MATH_1(sqrt) __MRV_MATH_1(tan) __MRV_MATH_1(tanh) __MRV_MATH_1(tgamma)
__MRV_MATH_1(trunc)

__MRV_MATH_2(atan2) __MRV_MATH_2(copysign) __MRV_MATH_2(fdim) __MRV_MATH_2(fmax)
__MRV_MATH_2(fmin) __MRV_MATH_2(fmod) __MRV_MATH_2(hypot) __MRV_MATH_2(nextafter)
__MRV_MATH_2(pow) __MRV_MATH_2(remainder)

#undef __MRV_MATH_1
#undef __MRV_MATH_2
    // clang-format on

    double fma(double, double, double);
float fmaf(float, float, float);
long double fmal(long double, long double, long double);
double frexp(double, int*);
float frexpf(float, int*);
long double frexpl(long double, int*);
double ldexp(double, int);
float ldexpf(float, int);
long double ldexpl(long double, int);
double modf(double, double*);
float modff(float, float*);
long double modfl(long double, long double*);
long lround(double);
long lroundf(float);
long lroundl(long double);
long long llround(double);
long long llroundf(float);
long long llroundl(long double);
long lrint(double);
long lrintf(float);
long lrintl(long double);
long long llrint(double);
long long llrintf(float);
long long llrintl(long double);

#ifdef __cplusplus
}
#endif
