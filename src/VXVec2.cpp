// VXVec2: the two-component vector functions of the engine's math library.
//
// Every function reads its inputs into locals before writing, so the result
// may alias an input. Depends on: the C math library. Limits: single
// precision; no guard against normalising or projecting on a zero vector.
#include "VXVec2.h"

#include <cmath>

// (0, 0).
void VXVec2Zero(VXVec2* pResult) {
    pResult->x = 0.0f;
    pResult->y = 0.0f;
}

// (x, y).
void VXVec2Set(VXVec2* pResult, float x, float y) {
    pResult->x = x;
    pResult->y = y;
}

// -a.
void VXVec2Neg(VXVec2* pResult, const VXVec2* pVec0) {
    pResult->x = -pVec0->x;
    pResult->y = -pVec0->y;
}

// a + b.
void VXVec2Add(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1) {
    float x = pVec0->x + pVec1->x;
    float y = pVec0->y + pVec1->y;
    pResult->x = x;
    pResult->y = y;
}

// a - b.
void VXVec2Sub(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1) {
    float x = pVec0->x - pVec1->x;
    float y = pVec0->y - pVec1->y;
    pResult->x = x;
    pResult->y = y;
}

// a * s.
void VXVec2Scale(VXVec2* pResult, const VXVec2* pVec0, float s) {
    pResult->x = pVec0->x * s;
    pResult->y = pVec0->y * s;
}

// a * s + b.
void VXVec2ScaleAdd(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float s) {
    float x = pVec0->x * s + pVec1->x;
    float y = pVec0->y * s + pVec1->y;
    pResult->x = x;
    pResult->y = y;
}

// a * s - b.
void VXVec2ScaleSub(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float s) {
    float x = pVec0->x * s - pVec1->x;
    float y = pVec0->y * s - pVec1->y;
    pResult->x = x;
    pResult->y = y;
}

// a times the reciprocal of its length (one division for both components).
void VXVec2Normalize(VXVec2* pResult, const VXVec2* pVec0) {
    float inv = 1.0f / VXVec2Length(pVec0);
    pResult->x = pVec0->x * inv;
    pResult->y = pVec0->y * inv;
}

// The unit direction of b scaled by the length of a along it.
void VXVec2Project(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1) {
    VXVec2 dir;
    VXVec2Normalize(&dir, pVec1);
    VXVec2Scale(pResult, &dir, VXVec2DotProduct(pVec0, &dir));
}

// a minus its projection on b.
void VXVec2ProjectPerp(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1) {
    VXVec2 along;
    VXVec2Project(&along, pVec0, pVec1);
    VXVec2Sub(pResult, pVec0, &along);
}

// a + (b - a) * t.
void VXVec2Lerp(VXVec2* pResult, const VXVec2* pVec0, const VXVec2* pVec1, float t) {
    float x = pVec0->x + (pVec1->x - pVec0->x) * t;
    float y = pVec0->y + (pVec1->y - pVec0->y) * t;
    pResult->x = x;
    pResult->y = y;
}

// The unit vector at angle radians, trigonometry in double precision.
void VXVec2FromAngle(VXVec2* pResult, float angle) {
    pResult->x = static_cast<float>(std::cos(static_cast<double>(angle)));
    pResult->y = static_cast<float>(std::sin(static_cast<double>(angle)));
}

// |a|.
float VXVec2Length(const VXVec2* pVec0) {
    return std::sqrt(VXVec2SquareLength(pVec0));
}

// |a|^2.
float VXVec2SquareLength(const VXVec2* pVec0) {
    return pVec0->x * pVec0->x + pVec0->y * pVec0->y;
}

// |a - b|.
float VXVec2Distance(const VXVec2* pVec0, const VXVec2* pVec1) {
    return std::sqrt(VXVec2SquareDistance(pVec0, pVec1));
}

// |a - b|^2.
float VXVec2SquareDistance(const VXVec2* pVec0, const VXVec2* pVec1) {
    float dx = pVec0->x - pVec1->x;
    float dy = pVec0->y - pVec1->y;
    return dx * dx + dy * dy;
}

// a . b.
float VXVec2DotProduct(const VXVec2* pVec0, const VXVec2* pVec1) {
    return pVec0->x * pVec1->x + pVec0->y * pVec1->y;
}

// a.x * b.y - a.y * b.x: positive when b lies counter-clockwise of a.
float VXVec2CrossProductMag(const VXVec2* pVec0, const VXVec2* pVec1) {
    return pVec0->x * pVec1->y - pVec0->y * pVec1->x;
}

// a + b, wrapping on overflow like the 32-bit hardware add it stands for.
int VXVec2Test(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}
