// Tests of Vector4, Point4, Matrix4 and the look-at view the renderer uses,
// against values worked out by hand.
#include "VXMath4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

// Exact component check with the case name in the message.
void ExpectV(const char* name, const Vector4& v, float x, float y, float z, float w) {
    EXPECT_FLOAT_EQ(v.x, x) << name;
    EXPECT_FLOAT_EQ(v.y, y) << name;
    EXPECT_FLOAT_EQ(v.z, z) << name;
    EXPECT_FLOAT_EQ(v.w, w) << name;
}

void ExpectP(const char* name, const Point4& p, float x, float y, float z, float w) {
    ExpectV(name, Vector4(p.x, p.y, p.z, p.w), x, y, z, w);
}

} // namespace

TEST(Math4Vector, ArithmeticOnAllFourComponents) {
    const Vector4 a(1, 2, 3, 4), b(10, 20, 30, 40);
    Vector4 c = a;
    c += b;
    Vector4 d = b;
    d -= a;
    Vector4 e = a;
    e *= 2;
    Vector4 f = b;
    f /= 4;
    struct Case {
        const char* name;
        Vector4 got;
        float x, y, z, w;
    } cases[] = {
        {"default is all zero", Vector4(), 0, 0, 0, 0},
        {"negate", -a, -1, -2, -3, -4},
        {"sum", a + b, 11, 22, 33, 44},
        {"difference", b - a, 9, 18, 27, 36},
        {"times 2", a * 2, 2, 4, 6, 8},
        {"divided by 4", b / 4, 2.5f, 5, 7.5f, 10},
        {"+=", c, 11, 22, 33, 44},
        {"-=", d, 9, 18, 27, 36},
        {"*=", e, 2, 4, 6, 8},
        {"/=", f, 2.5f, 5, 7.5f, 10},
        {"cross ignores w and gives w = 0", Vector4(1, 0, 0, 5).Cross(Vector4(0, 1, 0, 7)), 0, 0, 1,
         0},
        {"cross of general vectors", Vector4(1, 2, 3, 0).Cross(Vector4(4, 5, 6, 0)), -3, 6, -3, 0},
    };
    for (const auto& k : cases) ExpectV(k.name, k.got, k.x, k.y, k.z, k.w);

    // w counts in the length but not in the dot product.
    const Vector4 xw(1, 0, 0, 1);
    EXPECT_FLOAT_EQ(xw.Dot(xw), 1);
    EXPECT_FLOAT_EQ(xw.LengthSq(), 2);
    EXPECT_FLOAT_EQ(xw.Length(), std::sqrt(2.0f));
    EXPECT_FLOAT_EQ(a.Dot(b), 140);
}

TEST(Math4Vector, NormalizeZeroAndEquality) {
    struct Case {
        const char* name;
        Vector4 in;
        float x, y, z, w;
    } cases[] = {
        {"3-4-5 in x and z", Vector4(3, 0, 4, 0), 0.6f, 0, 0.8f, 0},
        {"w is normalized too", Vector4(0, 0, 0, 2), 0, 0, 0, 1},
        {"length 5e-6 is left alone", Vector4(5e-6f, 0, 0, 0), 5e-6f, 0, 0, 0},
        {"zero stays zero", Vector4(), 0, 0, 0, 0},
    };
    for (auto& k : cases) {
        k.in.Normalize();
        ExpectV(k.name, k.in, k.x, k.y, k.z, k.w);
    }
    Vector4 z(1, 2, 3, 4);
    z.Zero();
    ExpectV("Zero", z, 0, 0, 0, 0);

    const Vector4 base(1, 2, 3, 4);
    EXPECT_TRUE(base == Vector4(1.000009f, 2, 3, 4));
    EXPECT_FALSE(base == Vector4(1.00002f, 2, 3, 4));
    EXPECT_TRUE(base != Vector4(1, 2, 3, 4.0001f)); // judged on every component, w last
    EXPECT_FALSE(base != Vector4(1, 2, 2.999991f, 4));
}

TEST(Math4Point, PointsKeepTheirW) {
    const Point4 p(1, 2, 3, 1), q(4, 6, 8, 1);
    const Vector4 v(10, 20, 30, 0);
    Point4 moved = p;
    moved += v;
    Point4 back = q;
    back -= v;
    Point4 zeroed(5, 5, 5, 5);
    zeroed.Zero();
    struct Case {
        const char* name;
        Point4 got;
        float x, y, z, w;
    } cases[] = {
        {"default is the origin with w = 1", Point4(), 0, 0, 0, 1},
        {"negation flips w", -p, -1, -2, -3, -1},
        {"plus a vector", p + v, 11, 22, 33, 1},
        {"minus a vector", q - v, -6, -14, -22, 1},
        {"+=", moved, 11, 22, 33, 1},
        {"-=", back, -6, -14, -22, 1},
        {"Zero is the origin", zeroed, 0, 0, 0, 1},
    };
    for (const auto& k : cases) ExpectP(k.name, k.got, k.x, k.y, k.z, k.w);
    ExpectV("point minus point is a direction", q - p, 3, 4, 5, 0);

    EXPECT_TRUE(Point4() == Point4(0, 0, 0, 1.000009f));
    EXPECT_FALSE(Point4() == Point4(0, 0, 0, 1.00002f));
    EXPECT_TRUE(Point4() != Point4(0, 0, 0, 1.00002f));
}

TEST(Math4Matrix, ProductsAndTransforms) {
    const Matrix4 a(1, 2, 0, 0, 3, 4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const Matrix4 b(0, 1, 0, 5, 1, 0, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1);
    const Matrix4 ab(2, 1, 0, 17, 4, 3, 0, 39, 0, 0, 1, 7, 0, 0, 0, 1);
    EXPECT_TRUE(a * b == ab);
    EXPECT_TRUE(b * a != ab); // order matters
    Matrix4 c = a;
    c *= b;
    EXPECT_TRUE(c == ab);
    EXPECT_EQ(a.m[1][0], 3) << "the first four values are row 0";

    Matrix4 id;
    id.Identity();
    EXPECT_TRUE(id * b == b);
    EXPECT_TRUE(a + id == Matrix4(2, 2, 0, 0, 3, 5, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2));
    EXPECT_TRUE(a - a == Matrix4());
    EXPECT_TRUE(a * 2 == a + a);
    EXPECT_TRUE((a * 4) / 4 == a);
    Matrix4 d = a;
    d += a;
    d -= id;
    d *= 3;
    d /= 3;
    EXPECT_TRUE(d == Matrix4(1, 4, 0, 0, 6, 7, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    d.Zero();
    EXPECT_TRUE(d == Matrix4());
    // Tolerance on every element.
    Matrix4 e = ab;
    e.m[3][3] += 0.000009f;
    EXPECT_TRUE(e == ab);
    e.m[3][3] += 0.00002f;
    EXPECT_TRUE(e != ab);

    // A point picks up the translation, a direction does not.
    ExpectP("point", b * Point4(1, 2, 3, 1), 7, 7, 10, 1);
    ExpectV("direction", b * Vector4(1, 2, 3, 0), 2, 1, 3, 0);
}

TEST(Math4Matrix, LookAtViews) {
    Matrix4 expected;
    // The renderer's camera: looking straight down from z = 60.
    Matrix4 view =
        Matrix4LookAt(Point4(120, -45, 60, 1), Point4(120, -45, 0, 1), Vector4(0, 1, 0, 0));
    expected = Matrix4(1, 0, 0, -120, 0, 1, 0, 45, 0, 0, 1, -60, 0, 0, 0, 1);
    EXPECT_TRUE(view == expected);
    ExpectP("world point seen from the camera", view * Point4(123, -47, 0, 1), 3, -2, -60, 1);

    // From +x towards the origin: right is -z, the target lies 5 ahead (-z).
    view = Matrix4LookAt(Point4(5, 0, 0, 1), Point4(0, 0, 0, 1), Vector4(0, 1, 0, 0));
    expected = Matrix4(0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, -5, 0, 0, 0, 1);
    EXPECT_TRUE(view == expected);
    ExpectP("target", view * Point4(0, 0, 0, 1), 0, 0, -5, 1);

    // Up is normalized but not made perpendicular to the view direction.
    const float h = std::sqrt(0.5f);
    view = Matrix4LookAt(Point4(0, 0, 10, 1), Point4(0, 0, 0, 1), Vector4(0, 1, 1, 0));
    expected = Matrix4(1, 0, 0, 0, 0, h, h, -10 * h, 0, 0, 1, -10, 0, 0, 0, 1);
    EXPECT_TRUE(view == expected);

    // Up along the view direction: no right vector, a degenerate matrix, no error.
    view = Matrix4LookAt(Point4(0, 0, 10, 1), Point4(0, 0, 0, 1), Vector4(0, 0, 1, 0));
    for (int j = 0; j < 4; ++j) EXPECT_EQ(view.m[0][j], 0) << "row 0 column " << j;
}

TEST(Math4, PrintFormats) {
    testing::internal::CaptureStdout();
    Vector4(1, 2.5f, -3, 0).Print();
    Point4().Print();
    Matrix4 id;
    id.Identity();
    id.Print();
    std::string out = testing::internal::GetCapturedStdout();
    const std::string rule = "--------------------------\n";
    EXPECT_EQ(out, "1.000, 2.500, -3.000, 0.000\n0.000, 0.000, 0.000, 1.000\n" + rule +
                       "1.000 0.000 0.000 0.000\n0.000 1.000 0.000 0.000\n"
                       "0.000 0.000 1.000 0.000\n0.000 0.000 0.000 1.000\n" +
                       rule);
}
