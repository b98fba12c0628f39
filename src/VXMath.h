// VXMath: the engine's scalar math helpers, and the one header that brings in
// the whole 2-D math library (VXVec2, VXMtx33).
//
// Depends on: the C math library. Limits: single precision throughout; the
// trigonometry runs in double precision and is rounded back to float.
#pragma once

#include "VXVec2.h"
#include "VXMtx33.h"

extern "C" {

// x degrees in radians (x * 0.017453292).
float VXDegToRad(float x);
// x radians in degrees (x * 57.295784).
float VXRadToDeg(float x);
// Double-precision trigonometry rounded to single precision.
float VXSin(float x);
float VXCos(float x);
float VXTan(float x);
float VXASin(float x);
float VXACos(float x);
float VXATan(float x);
// 1 when x has exactly one bit set, else 0 (0 for x = 0).
int VXIsPowOf2(unsigned x);
// The smallest power of two strictly greater than x; 0 from 2^31 up.
unsigned VXNextPowOf2(unsigned x);
// Index of the highest set bit of x; 0 for x < 2.
int VXLogBase2(unsigned x);
// lo if lo > x, else hi if x > hi, else x.
float VXClamp(float x, float lo, float hi);
// x moved by one range length back towards [lo, hi] (one step, not a modulo).
float VXWrap(float x, float lo, float hi);
// a if b > a, else b.
float VXMin(float a, float b);
// b if b > a, else a.
float VXMax(float a, float b);
// 1 if lo <= x <= hi, else 0.
int VXInRange(float x, float lo, float hi);

} // extern "C"
