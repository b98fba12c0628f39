// VXMath: scalar helpers of the engine's math library (angle conversion,
// trigonometry, powers of two, clamping and wrapping).
//
// Depends on: the C math library. Limits: single precision; the conversion
// constants are the engine's historical single-precision values, so a round
// trip degrees -> radians -> degrees is not exact in the last bits.
#include "VXMath.h"

#include <cmath>

// x degrees in radians.
float VXDegToRad(float x) {
    return x * 0.017453292f;
}

// x radians in degrees.
float VXRadToDeg(float x) {
    return x * 57.295784f;
}

// sin x in double precision, rounded to float.
float VXSin(float x) {
    return static_cast<float>(std::sin(static_cast<double>(x)));
}

// cos x in double precision, rounded to float.
float VXCos(float x) {
    return static_cast<float>(std::cos(static_cast<double>(x)));
}

// tan x in double precision, rounded to float.
float VXTan(float x) {
    return static_cast<float>(std::tan(static_cast<double>(x)));
}

// asin x in double precision, rounded to float.
float VXASin(float x) {
    return static_cast<float>(std::asin(static_cast<double>(x)));
}

// acos x in double precision, rounded to float.
float VXACos(float x) {
    return static_cast<float>(std::acos(static_cast<double>(x)));
}

// atan x in double precision, rounded to float.
float VXATan(float x) {
    return static_cast<float>(std::atan(static_cast<double>(x)));
}

// 1 when exactly one bit of x is set.
int VXIsPowOf2(unsigned x) {
    return (x != 0 && (x & (x - 1)) == 0) ? 1 : 0;
}

// Smear the highest set bit into every lower bit, then step to the next
// power; unsigned arithmetic makes 2^31 and above wrap to 0.
unsigned VXNextPowOf2(unsigned x) {
    x |= x >> 1;
    x |= x >> 2;
    x |= x >> 4;
    x |= x >> 8;
    x |= x >> 16;
    return x + 1u;
}

// Floor of log2 x; 0 for 0 and 1.
int VXLogBase2(unsigned x) {
    int bit = 0;
    while (x > 1u) {
        x >>= 1;
        ++bit;
    }
    return bit;
}

// lo takes precedence over hi when the bounds are swapped.
float VXClamp(float x, float lo, float hi) {
    if (lo > x) return lo;
    if (x > hi) return hi;
    return x;
}

// One step of one range length only: callers wrap values that stray by less
// than a range per frame, so a modulo is not needed.
float VXWrap(float x, float lo, float hi) {
    float range = hi - lo;
    if (lo > x) return x + range;
    if (x > hi) return x - range;
    return x;
}

// The comparison is written so that a NaN operand yields b.
float VXMin(float a, float b) {
    return (b > a) ? a : b;
}

// The comparison is written so that a NaN operand yields a.
float VXMax(float a, float b) {
    return (b > a) ? b : a;
}

// 1 when lo <= x <= hi.
int VXInRange(float x, float lo, float hi) {
    return (lo <= x && x <= hi) ? 1 : 0;
}
