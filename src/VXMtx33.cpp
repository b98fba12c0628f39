// VXMtx33: the 3x3 matrix functions of the engine's math library.
//
// Row-major m[row][column], points as columns (x, y, 1), translation in
// column 2. Functions read all inputs before writing, so the result may alias
// an input. Depends on: VXVec2, the C math library. Limits: single
// precision; rotations in degrees use 3.1415 rather than pi.
#include "VXMtx33.h"

#include <cmath>
#include <cstring>

// Identity.
void VXMtx33Identity(VXMtx33* pResult) {
    VXMtx33Scale(pResult, 1.0f, 1.0f);
}

// Transpose, safe in place.
void VXMtx33Transpose(VXMtx33* pResult, const VXMtx33* pMtx) {
    VXMtx33 t;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) t.m[i][j] = pMtx->m[j][i];
    *pResult = t;
}

// Adjugate over determinant. A determinant whose square is below the float
// 9.9999994e-11 (one step below 1e-10f) is treated as singular: the result
// is left alone and 0 is returned, so the caller can tell and keep its
// previous matrix. A square equal to the threshold (det 1e-5) still inverts.
float VXMtx33Inverse(VXMtx33* pResult, const VXMtx33* pMtx) {
    const float(*m)[3] = pMtx->m;
    float c00 = m[1][1] * m[2][2] - m[1][2] * m[2][1];
    float c01 = m[2][0] * m[1][2] - m[1][0] * m[2][2];
    float c02 = m[1][0] * m[2][1] - m[2][0] * m[1][1];
    float d = m[0][0] * c00 + m[0][1] * c01 + m[0][2] * c02;
    const float kSingular = 0x1.b7cdfcp-34f; // 9.9999994e-11
    if (d * d < kSingular) return 0.0f;

    VXMtx33 r;
    r.m[0][0] = c00 / d;
    r.m[0][1] = (m[0][2] * m[2][1] - m[0][1] * m[2][2]) / d;
    r.m[0][2] = (m[0][1] * m[1][2] - m[0][2] * m[1][1]) / d;
    r.m[1][0] = c01 / d;
    r.m[1][1] = (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / d;
    r.m[1][2] = (m[0][2] * m[1][0] - m[0][0] * m[1][2]) / d;
    r.m[2][0] = c02 / d;
    r.m[2][1] = (m[0][1] * m[2][0] - m[0][0] * m[2][1]) / d;
    r.m[2][2] = (m[0][0] * m[1][1] - m[0][1] * m[1][0]) / d;
    *pResult = r;
    return d;
}

// Inverse, then transpose whatever the result holds (for a singular m that is
// the caller's previous contents).
void VXMtx33InvTranspose(VXMtx33* pResult, const VXMtx33* pMtx) {
    VXMtx33Inverse(pResult, pMtx);
    VXMtx33Transpose(pResult, pResult);
}

// a x b through a temporary, so the result may be a or b.
void VXMtx33Concat(VXMtx33* pResult, const VXMtx33* pMtx0, const VXMtx33* pMtx1) {
    VXMtx33 t;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            t.m[i][j] = pMtx0->m[i][0] * pMtx1->m[0][j] + pMtx0->m[i][1] * pMtx1->m[1][j] +
                        pMtx0->m[i][2] * pMtx1->m[2][j];
    *pResult = t;
}

// Cofactor expansion along row 0.
float VXMtx33Determinant(const VXMtx33* pMtx) {
    const float(*m)[3] = pMtx->m;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// Column col = (v.x, v.y, 1 for the translation column else 0); an index
// past 2 is ignored rather than writing outside the matrix.
void VXMtx33SetCol(VXMtx33* pResult, unsigned col, const VXVec2* pVec) {
    if (col > 2) return;
    pResult->m[0][col] = pVec->x;
    pResult->m[1][col] = pVec->y;
    pResult->m[2][col] = (col == 2) ? 1.0f : 0.0f;
}

// Row row = (v.x, v.y, 1 for the last row else 0); an index past 2 is ignored.
void VXMtx33SetRow(VXMtx33* pResult, unsigned row, const VXVec2* pVec) {
    if (row > 2) return;
    pResult->m[row][0] = pVec->x;
    pResult->m[row][1] = pVec->y;
    pResult->m[row][2] = (row == 2) ? 1.0f : 0.0f;
}

// The first two elements of column col; an index past 2 leaves the result.
void VXMtx33GetCol(VXVec2* pResult, const VXMtx33* pMtx, unsigned col) {
    if (col > 2) return;
    pResult->x = pMtx->m[0][col];
    pResult->y = pMtx->m[1][col];
}

// The first two elements of row row; an index past 2 leaves the result.
void VXMtx33GetRow(VXVec2* pResult, const VXMtx33* pMtx, unsigned row) {
    if (row > 2) return;
    pResult->x = pMtx->m[row][0];
    pResult->y = pMtx->m[row][1];
}

// Translation by (x, y).
void VXMtx33Trans(VXMtx33* pResult, float x, float y) {
    VXMtx33Identity(pResult);
    pResult->m[0][2] = x;
    pResult->m[1][2] = y;
}

// m moved by (x, y) in world space.
void VXMtx33TransApply(VXMtx33* pResult, const VXMtx33* pMtx, float x, float y) {
    if (pResult != pMtx) *pResult = *pMtx;
    pResult->m[0][2] += x;
    pResult->m[1][2] += y;
}

// diag(x, y, 1).
void VXMtx33Scale(VXMtx33* pResult, float x, float y) {
    std::memset(pResult, 0, sizeof(*pResult));
    pResult->m[0][0] = x;
    pResult->m[1][1] = y;
    pResult->m[2][2] = 1.0f;
}

// diag(x, y, 1) x m: scales rows 0 and 1, including the translation.
void VXMtx33ScaleApply(VXMtx33* pResult, const VXMtx33* pMtx, float x, float y) {
    if (pResult != pMtx) *pResult = *pMtx;
    for (int j = 0; j < 3; ++j) {
        pResult->m[0][j] *= x;
        pResult->m[1][j] *= y;
    }
}

// Counter-clockwise rotation; sine and cosine in double precision.
void VXMtx33Rot(VXMtx33* pResult, float angle) {
    float c = static_cast<float>(std::cos(static_cast<double>(angle)));
    float s = static_cast<float>(std::sin(static_cast<double>(angle)));
    VXMtx33Identity(pResult);
    pResult->m[0][0] = c;
    pResult->m[0][1] = -s;
    pResult->m[1][0] = s;
    pResult->m[1][1] = c;
}

// Rotation in degrees. The engine has always converted with 3.1415, so 180
// degrees is a hair short of half a turn; existing content is tuned to that.
void VXMtx33RotDeg(VXMtx33* pResult, float angle) {
    VXMtx33Rot(pResult, angle * 3.1415f / 180.0f);
}

// m x (x, y, 1).
void VXMtx33MultVec(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec) {
    float x = pMtx->m[0][0] * pVec->x + pMtx->m[0][1] * pVec->y + pMtx->m[0][2];
    float y = pMtx->m[1][0] * pVec->x + pMtx->m[1][1] * pVec->y + pMtx->m[1][2];
    pResult->x = x;
    pResult->y = y;
}

// MultVec element by element.
void VXMtx33MultVecArray(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec, unsigned count) {
    for (unsigned i = 0; i < count; ++i) VXMtx33MultVec(&pResult[i], pMtx, &pVec[i]);
}

// m x (x, y, 0): directions ignore the translation.
void VXMtx33MultVecSR(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec) {
    float x = pMtx->m[0][0] * pVec->x + pMtx->m[0][1] * pVec->y;
    float y = pMtx->m[1][0] * pVec->x + pMtx->m[1][1] * pVec->y;
    pResult->x = x;
    pResult->y = y;
}

// MultVecSR element by element.
void VXMtx33MultVecArraySR(VXVec2* pResult, const VXMtx33* pMtx, const VXVec2* pVec,
                           unsigned count) {
    for (unsigned i = 0; i < count; ++i) VXMtx33MultVecSR(&pResult[i], pMtx, &pVec[i]);
}

// Does nothing: the engine never accumulated enough rotation drift to need it.
void VXMtx33Orthogonalize(VXMtx33* /*pResult*/, const VXMtx33* /*pMtx*/) {
}
