// VXMath4: Vector4, Point4 and Matrix4 members and the renderer's internal
// matrix builders.
//
// Every operation works on all four components (w included) unless stated;
// equality allows 1e-5 per component. Depends on: the C library.
// Limits: single precision; the look-at view does not re-orthogonalize up,
// so an up parallel to the view direction yields a degenerate matrix.
#include "VXMath4.h"

#include <cmath>
#include <cstdio>

namespace {

// Two values are equal when they differ by less than this in every component.
const float kEqualTolerance = 1e-5f;
// Vectors shorter than this are left alone by Normalize.
const float kNormalizeMin = 1e-5f;

// Component equality within the tolerance.
bool Near(float a, float b) {
    float d = a - b;
    return d < kEqualTolerance && d > -kEqualTolerance;
}

} // namespace

// (0, 0, 0, 0).
Vector4::Vector4() : x(0.0f), y(0.0f), z(0.0f), w(0.0f) {
}

// Copy of all four components.
Vector4::Vector4(const Vector4& rhs) : x(rhs.x), y(rhs.y), z(rhs.z), w(rhs.w) {
}

// (xx, yy, zz, ww).
Vector4::Vector4(float xx, float yy, float zz, float ww) : x(xx), y(yy), z(zz), w(ww) {
}

// Copy of all four components.
Vector4& Vector4::operator=(const Vector4& rhs) {
    x = rhs.x;
    y = rhs.y;
    z = rhs.z;
    w = rhs.w;
    return *this;
}

// All four negated.
Vector4 Vector4::operator-() const {
    return Vector4(-x, -y, -z, -w);
}

// Component-wise sum.
Vector4 Vector4::operator+(const Vector4& rhs) const {
    return Vector4(x + rhs.x, y + rhs.y, z + rhs.z, w + rhs.w);
}

// Component-wise difference.
Vector4 Vector4::operator-(const Vector4& rhs) const {
    return Vector4(x - rhs.x, y - rhs.y, z - rhs.z, w - rhs.w);
}

// All four times s.
Vector4 Vector4::operator*(float s) const {
    return Vector4(x * s, y * s, z * s, w * s);
}

// All four times 1/s, one division for the four.
Vector4 Vector4::operator/(float s) const {
    return *this * (1.0f / s);
}

// In-place sum.
Vector4& Vector4::operator+=(const Vector4& rhs) {
    return *this = *this + rhs;
}

// In-place difference.
Vector4& Vector4::operator-=(const Vector4& rhs) {
    return *this = *this - rhs;
}

// In-place scale.
Vector4& Vector4::operator*=(float s) {
    return *this = *this * s;
}

// In-place division by s.
Vector4& Vector4::operator/=(float s) {
    return *this = *this / s;
}

// Equal within 1e-5 on every component.
bool Vector4::operator==(const Vector4& rhs) const {
    return Near(x, rhs.x) && Near(y, rhs.y) && Near(z, rhs.z) && Near(w, rhs.w);
}

// Not equal within 1e-5.
bool Vector4::operator!=(const Vector4& rhs) const {
    return !(*this == rhs);
}

// The 3-D dot product: w does not take part.
float Vector4::Dot(const Vector4& rhs) const {
    return x * rhs.x + y * rhs.y + z * rhs.z;
}

// The 3-D cross product; the result is a direction (w = 0).
Vector4 Vector4::Cross(const Vector4& rhs) const {
    return Vector4(y * rhs.z - z * rhs.y, z * rhs.x - x * rhs.z, x * rhs.y - y * rhs.x, 0.0f);
}

// Length over all four components (w counts).
float Vector4::Length() const {
    return std::sqrt(LengthSq());
}

// Squared length over all four components.
float Vector4::LengthSq() const {
    return x * x + y * y + z * z + w * w;
}

// Divides by the length unless the vector is too short to have a direction.
void Vector4::Normalize() {
    float len = Length();
    if (len > -kNormalizeMin && len < kNormalizeMin) return;
    *this /= len;
}

// (0, 0, 0, 0).
void Vector4::Zero() {
    x = y = z = w = 0.0f;
}

// The four components on one line.
void Vector4::Print() const {
    std::printf("%5.3f, %5.3f, %5.3f, %5.3f\n", x, y, z, w);
}

// The origin (0, 0, 0, 1).
Point4::Point4() : x(0.0f), y(0.0f), z(0.0f), w(1.0f) {
}

// Copy of all four components.
Point4::Point4(const Point4& rhs) : x(rhs.x), y(rhs.y), z(rhs.z), w(rhs.w) {
}

// (xx, yy, zz, ww).
Point4::Point4(float xx, float yy, float zz, float ww) : x(xx), y(yy), z(zz), w(ww) {
}

// Copy of all four components.
Point4& Point4::operator=(const Point4& rhs) {
    x = rhs.x;
    y = rhs.y;
    z = rhs.z;
    w = rhs.w;
    return *this;
}

// All four negated, w too.
Point4 Point4::operator-() const {
    return Point4(-x, -y, -z, -w);
}

// The point moved by v.
Point4 Point4::operator+(const Vector4& rhs) const {
    return Point4(x + rhs.x, y + rhs.y, z + rhs.z, w + rhs.w);
}

// The point moved back by v.
Point4 Point4::operator-(const Vector4& rhs) const {
    return Point4(x - rhs.x, y - rhs.y, z - rhs.z, w - rhs.w);
}

// The direction from rhs to this point (w = 0 for two points with w = 1).
Vector4 Point4::operator-(const Point4& rhs) const {
    return Vector4(x - rhs.x, y - rhs.y, z - rhs.z, w - rhs.w);
}

// In-place move by v.
Point4& Point4::operator+=(const Vector4& rhs) {
    return *this = *this + rhs;
}

// In-place move back by v.
Point4& Point4::operator-=(const Vector4& rhs) {
    return *this = *this - rhs;
}

// Equal within 1e-5 on every component.
bool Point4::operator==(const Point4& rhs) const {
    return Near(x, rhs.x) && Near(y, rhs.y) && Near(z, rhs.z) && Near(w, rhs.w);
}

// Not equal within 1e-5.
bool Point4::operator!=(const Point4& rhs) const {
    return !(*this == rhs);
}

// The origin (0, 0, 0, 1).
void Point4::Zero() {
    x = y = z = 0.0f;
    w = 1.0f;
}

// The four components on one line, as for Vector4.
void Point4::Print() const {
    std::printf("%5.3f, %5.3f, %5.3f, %5.3f\n", x, y, z, w);
}

// All sixteen elements 0.
Matrix4::Matrix4() {
    Zero();
}

// Copy.
Matrix4::Matrix4(const Matrix4& rhs) {
    *this = rhs;
}

// The values in row-major order: the first four are row 0.
Matrix4::Matrix4(float mm00, float mm01, float mm02, float mm03, float mm10, float mm11, float mm12,
                 float mm13, float mm20, float mm21, float mm22, float mm23, float mm30, float mm31,
                 float mm32, float mm33)
    : m{{mm00, mm01, mm02, mm03},
        {mm10, mm11, mm12, mm13},
        {mm20, mm21, mm22, mm23},
        {mm30, mm31, mm32, mm33}} {
}

// Copy.
Matrix4& Matrix4::operator=(const Matrix4& rhs) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) m[i][j] = rhs.m[i][j];
    return *this;
}

// Element-wise sum.
Matrix4 Matrix4::operator+(const Matrix4& rhs) const {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = m[i][j] + rhs.m[i][j];
    return r;
}

// Element-wise difference.
Matrix4 Matrix4::operator-(const Matrix4& rhs) const {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = m[i][j] - rhs.m[i][j];
    return r;
}

// this x rhs.
Matrix4 Matrix4::operator*(const Matrix4& rhs) const {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            r.m[i][j] = m[i][0] * rhs.m[0][j] + m[i][1] * rhs.m[1][j] + m[i][2] * rhs.m[2][j] +
                        m[i][3] * rhs.m[3][j];
    return r;
}

// Every element times s.
Matrix4 Matrix4::operator*(float s) const {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = m[i][j] * s;
    return r;
}

// Every element times 1/s.
Matrix4 Matrix4::operator/(float s) const {
    return *this * (1.0f / s);
}

// M . v with v as a column; a direction (w = 0) ignores the translation.
Vector4 Matrix4::operator*(const Vector4& v) const {
    return Vector4(m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z + m[0][3] * v.w,
                   m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z + m[1][3] * v.w,
                   m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z + m[2][3] * v.w,
                   m[3][0] * v.x + m[3][1] * v.y + m[3][2] * v.z + m[3][3] * v.w);
}

// M . p with p as a column; w = 1 picks up the translation.
Point4 Matrix4::operator*(const Point4& p) const {
    Vector4 r = *this * Vector4(p.x, p.y, p.z, p.w);
    return Point4(r.x, r.y, r.z, r.w);
}

// In-place sum.
Matrix4& Matrix4::operator+=(const Matrix4& rhs) {
    return *this = *this + rhs;
}

// In-place difference.
Matrix4& Matrix4::operator-=(const Matrix4& rhs) {
    return *this = *this - rhs;
}

// this = this x rhs.
Matrix4& Matrix4::operator*=(const Matrix4& rhs) {
    return *this = *this * rhs;
}

// In-place scale.
Matrix4& Matrix4::operator*=(float s) {
    return *this = *this * s;
}

// In-place division by s.
Matrix4& Matrix4::operator/=(float s) {
    return *this = *this / s;
}

// Equal within 1e-5 on all sixteen elements.
bool Matrix4::operator==(const Matrix4& rhs) const {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            if (!Near(m[i][j], rhs.m[i][j])) return false;
    return true;
}

// Not equal within 1e-5.
bool Matrix4::operator!=(const Matrix4& rhs) const {
    return !(*this == rhs);
}

// All elements 0.
void Matrix4::Zero() {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) m[i][j] = 0.0f;
}

// 1 on the diagonal, 0 elsewhere.
void Matrix4::Identity() {
    Zero();
    m[0][0] = m[1][1] = m[2][2] = m[3][3] = 1.0f;
}

// The rows between two rules.
void Matrix4::Print() const {
    std::printf("--------------------------\n");
    for (int i = 0; i < 4; ++i)
        std::printf("%5.3f %5.3f %5.3f %5.3f\n", m[i][0], m[i][1], m[i][2], m[i][3]);
    std::printf("--------------------------\n");
}

// The identity moved by t.
Matrix4 Matrix4Translation(const Vector4& t) {
    Matrix4 r;
    r.Identity();
    r.m[0][3] = t.x;
    r.m[1][3] = t.y;
    r.m[2][3] = t.z;
    return r;
}

// a, b and c become the first three columns (their x, y, z rows).
Matrix4 Matrix4FromBasis(Vector4& a, Vector4& b, Vector4& c) {
    a.Normalize();
    b.Normalize();
    c.Normalize();
    Matrix4 r;
    r.Identity();
    const Vector4* cols[3] = {&a, &b, &c};
    for (int j = 0; j < 3; ++j) {
        r.m[0][j] = cols[j]->x;
        r.m[1][j] = cols[j]->y;
        r.m[2][j] = cols[j]->z;
    }
    return r;
}

// Rows become columns.
Matrix4 Matrix4Transpose(const Matrix4& mtx) {
    Matrix4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = mtx.m[j][i];
    return r;
}

// The camera basis as rows (the inverse of a rotation is its transpose)
// times the move of the eye to the origin.
Matrix4 Matrix4LookAt(const Point4& eye, const Point4& target, const Vector4& up) {
    Vector4 f = eye - target;
    f.Normalize();
    Vector4 u = up;
    u.Normalize();
    Vector4 r = u.Cross(f);
    r.Normalize();
    Matrix4 t = Matrix4Translation(Vector4(-eye.x, -eye.y, -eye.z, -eye.w));
    return Matrix4Transpose(Matrix4FromBasis(r, u, f)) * t;
}
