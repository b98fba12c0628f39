// VXMath4: the four-component vector and point and the 4x4 matrix the engine
// exports for homogeneous 3-D math, plus the internal matrix builders the
// renderer uses for its camera view.
//
// Vector4 is a direction (w = 0 by convention), Point4 a position (w = 1);
// Matrix4 is row-major m[row][column] and multiplies columns on its right,
// so a translation sits in column 3. Equality is within 1e-5 per component.
// Depends on: the C library (sqrt, printf). Limits: single precision; no
// inverse; Normalize leaves vectors shorter than 1e-5 alone.
#pragma once

struct Vector4 {
    float x, y, z, w;

    Vector4();
    Vector4(const Vector4& rhs);
    Vector4(float xx, float yy, float zz, float ww);
    Vector4& operator=(const Vector4& rhs);

    Vector4 operator-() const;
    Vector4 operator+(const Vector4& rhs) const;
    Vector4 operator-(const Vector4& rhs) const;
    Vector4 operator*(float s) const;
    Vector4 operator/(float s) const;
    Vector4& operator+=(const Vector4& rhs);
    Vector4& operator-=(const Vector4& rhs);
    Vector4& operator*=(float s);
    Vector4& operator/=(float s);
    bool operator==(const Vector4& rhs) const;
    bool operator!=(const Vector4& rhs) const;

    float Dot(const Vector4& rhs) const;
    Vector4 Cross(const Vector4& rhs) const;
    float Length() const;
    float LengthSq() const;
    void Normalize();
    void Zero();
    void Print() const;
};

struct Point4 {
    float x, y, z, w;

    Point4();
    Point4(const Point4& rhs);
    Point4(float xx, float yy, float zz, float ww);
    Point4& operator=(const Point4& rhs);

    Point4 operator-() const;
    Point4 operator+(const Vector4& rhs) const;
    Point4 operator-(const Vector4& rhs) const;
    Vector4 operator-(const Point4& rhs) const;
    Point4& operator+=(const Vector4& rhs);
    Point4& operator-=(const Vector4& rhs);
    bool operator==(const Point4& rhs) const;
    bool operator!=(const Point4& rhs) const;

    void Zero();
    void Print() const;
};

struct Matrix4 {
    float m[4][4];

    Matrix4();
    Matrix4(const Matrix4& rhs);
    Matrix4(float mm00, float mm01, float mm02, float mm03, float mm10, float mm11, float mm12,
            float mm13, float mm20, float mm21, float mm22, float mm23, float mm30, float mm31,
            float mm32, float mm33);
    Matrix4& operator=(const Matrix4& rhs);

    Matrix4 operator+(const Matrix4& rhs) const;
    Matrix4 operator-(const Matrix4& rhs) const;
    Matrix4 operator*(const Matrix4& rhs) const;
    Matrix4 operator*(float s) const;
    Matrix4 operator/(float s) const;
    Vector4 operator*(const Vector4& rhs) const;
    Point4 operator*(const Point4& rhs) const;
    Matrix4& operator+=(const Matrix4& rhs);
    Matrix4& operator-=(const Matrix4& rhs);
    Matrix4& operator*=(const Matrix4& rhs);
    Matrix4& operator*=(float s);
    Matrix4& operator/=(float s);
    bool operator==(const Matrix4& rhs) const;
    bool operator!=(const Matrix4& rhs) const;

    void Zero();
    void Identity();
    void Print() const;
};

// Internal builders of the engine (kept out of the executable's exports).
#define VX_MATH4_INTERNAL __attribute__((visibility("hidden")))

// The identity with t.x, t.y, t.z in column 3.
VX_MATH4_INTERNAL Matrix4 Matrix4Translation(const Vector4& t);
// Normalizes a, b and c in place and returns the identity with them as the
// x, y, z rows of columns 0, 1 and 2.
VX_MATH4_INTERNAL Matrix4 Matrix4FromBasis(Vector4& a, Vector4& b, Vector4& c);
// The transpose of mtx.
VX_MATH4_INTERNAL Matrix4 Matrix4Transpose(const Matrix4& mtx);
// The view from eye towards target with the given up direction: rows right,
// up, back, times the translation by -eye. Up is not re-orthogonalized.
VX_MATH4_INTERNAL Matrix4 Matrix4LookAt(const Point4& eye, const Point4& target, const Vector4& up);
