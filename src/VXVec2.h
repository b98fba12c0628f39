// VXVec2: the engine's two-component vector and the plain functions over it.
//
// Every function takes its result through the first pointer and may write
// into one of its own inputs. Depends on: nothing but the C math library.
// Limits: single precision; Normalize, Project and ProjectPerp do not guard
// against a zero-length vector (the division gives non-finite components).
#pragma once

struct VXVec2 {
    float x, y;
};

extern "C" {

// result = (0, 0).
void VXVec2Zero(VXVec2* pResult);
// result = (x, y).
void VXVec2Set(VXVec2* pResult, float x, float y);
// result = -a.
void VXVec2Neg(VXVec2* pResult, const VXVec2* pVec0);
// result = a + b.
void VXVec2Add(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1);
// result = a - b.
void VXVec2Sub(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1);
// result = a * s.
void VXVec2Scale(VXVec2* pResult, const VXVec2* pVec0, float s);
// result = a * s + b.
void VXVec2ScaleAdd(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float s);
// result = a * s - b.
void VXVec2ScaleSub(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float s);
// result = a / |a|.
void VXVec2Normalize(VXVec2* pResult, const VXVec2* pVec0);
// result = the part of a along the direction of b.
void VXVec2Project(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1);
// result = the part of a across the direction of b.
void VXVec2ProjectPerp(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1);
// result = a + (b - a) * t, t not clamped.
void VXVec2Lerp(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float t);
// result = (cos angle, sin angle), angle in radians.
void VXVec2FromAngle(VXVec2* pResult, float angle);
// |a|.
float VXVec2Length(const VXVec2* pVec0);
// |a|^2.
float VXVec2SquareLength(const VXVec2* pVec0);
// |a - b|.
float VXVec2Distance(const VXVec2* pVec0, const VXVec2* pVec1);
// |a - b|^2.
float VXVec2SquareDistance(const VXVec2* pVec0, const VXVec2* pVec1);
// a . b.
float VXVec2DotProduct(const VXVec2* pVec0, const VXVec2* pVec1);
// The z component of the 3-D cross product of a and b.
float VXVec2CrossProductMag(const VXVec2* pVec0, const VXVec2* pVec1);
// a + b: a link check callers use to see the engine is there.
int VXVec2Test(int a, int b);

} // extern "C"
