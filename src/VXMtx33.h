// VXMtx33: the engine's 3x3 matrix for 2-D affine transforms.
//
// Row-major, m[row][column]; a point (x, y) is the column (x, y, 1), so the
// translation sits in column 2. Every function takes its result through the
// first pointer; unless noted the result may be one of the inputs.
// Depends on: VXVec2. Limits: single precision; Orthogonalize does nothing.
#pragma once

#include "VXVec2.h"

struct VXMtx33 {
    float m[3][3];
};

extern "C" {

// result = identity.
void VXMtx33Identity(VXMtx33* pResult);
// result = transpose of m (in place when result is m).
void VXMtx33Transpose(VXMtx33* pResult, const VXMtx33* pMtx);
// result = inverse of m; returns the determinant, or 0 (result untouched)
// when m is too close to singular.
float VXMtx33Inverse(VXMtx33* pResult, const VXMtx33* pMtx);
// result = transpose of the inverse of m.
void VXMtx33InvTranspose(VXMtx33* pResult, const VXMtx33* pMtx);
// result = a x b.
void VXMtx33Concat(VXMtx33* pResult, const VXMtx33* pMtx0, const VXMtx33* pMtx1);
// Determinant of m.
float VXMtx33Determinant(const VXMtx33* pMtx);
// Column c (0..2) of result = (v.x, v.y, 1 for column 2 else 0).
void VXMtx33SetCol(VXMtx33* pResult, unsigned col, const VXVec2* pVec);
// Row r (0..2) of result = (v.x, v.y, 1 for row 2 else 0).
void VXMtx33SetRow(VXMtx33* pResult, unsigned row, const VXVec2* pVec);
// result = the first two elements of column c of m.
void VXMtx33GetCol(VXVec2* pResult, const VXMtx33* pMtx, unsigned col);
// result = the first two elements of row r of m.
void VXMtx33GetRow(VXVec2* pResult, const VXMtx33* pMtx, unsigned row);
// result = translation by (x, y).
void VXMtx33Trans(VXMtx33* pResult, float x, float y);
// result = m with (x, y) added to its translation.
void VXMtx33TransApply(VXMtx33* pResult, const VXMtx33* pMtx, float x, float y);
// result = scale by (x, y).
void VXMtx33Scale(VXMtx33* pResult, float x, float y);
// result = diag(x, y, 1) x m.
void VXMtx33ScaleApply(VXMtx33* pResult, const VXMtx33* pMtx, float x, float y);
// result = counter-clockwise rotation by angle radians.
void VXMtx33Rot(VXMtx33* pResult, float angle);
// result = rotation by angle degrees (converted with 3.1415, not pi).
void VXMtx33RotDeg(VXMtx33* pResult, float angle);
// result = m applied to the point v.
void VXMtx33MultVec(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec);
// MultVec on count points, source element i to result element i.
void VXMtx33MultVecArray(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec, unsigned count);
// result = m applied to v without the translation (scale and rotation only).
void VXMtx33MultVecSR(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec);
// MultVecSR on count vectors.
void VXMtx33MultVecArraySR(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec,
                           unsigned count);
// Does nothing (kept so callers written against the full interface link).
void VXMtx33Orthogonalize(VXMtx33* pResult, const VXMtx33* pMtx);

} // extern "C"
