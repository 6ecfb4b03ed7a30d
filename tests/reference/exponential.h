#pragma once

// The exponential and the hyperbolic functions of the transfer functions, our own so that a
// result does not depend on the machine or its C library. Double precision; additions,
// subtractions, multiplications, divisions (none in Exp) and operations on exponent bits only,
// no table, no fused operation. The kernels go another way in double, with a table and fused
// steps, to the same floats.
//
// Exp rests on the reduction
//   x = n ln 2 + r,  n = x / ln 2 to the nearest integer,  |r| <= ln 2 / 2,
// with ln 2 in two parts, the high one short enough that n times it is exact, and on
//   e^r = 1 + (r + r^2 q(r)),  e^x = 2^n e^r,
// q a polynomial of degree 10, off by less than 2^-61.
//
// A NaN gives a NaN. The errors below are the largest over all float arguments, in units in
// the last place of the double result. Rounded to float, the results are those of the exact
// values for every float argument, but for one argument of Sinh and its negative.

namespace tarn::reference {

// Error 0.93. Infinity above 709.79, zero below -745.14; subnormal results are rounded once.
double Exp(double x);

// |x| < 1: x + x^3 S(x^2), S of degree 6. Else H - 1 / (4 H) with H = e^|x| / 2, and the sign
// of x. Error 1.62. Infinity beyond 710.48.
double Sinh(double x);

// H + 1 / (4 H) with H = e^|x| / 2. Error 1.35. Infinity beyond 710.48.
double Cosh(double x);

// |x| < 0.55: x + x^3 T(x^2), T of degree 10. Else 1 - 2 / (e^(2|x|) + 1), and the sign of x.
// Error 1.44. 1 in magnitude beyond 19.07.
double Tanh(double x);

}  // namespace tarn::reference
