// Tests of the engine's scalar helpers, VXVec2 and VXMtx33 against answers
// worked out by hand or with double-precision references.
#include "VXMath.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();

// Prints the matrix with its case name when an element differs.
void ExpectMtx(const char* name, const VXMtx33& got, const float (&want)[3][3], float tol) {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(got.m[i][j], want[i][j], tol)
                << name << " element [" << i << "][" << j << "]";
}

VXMtx33 Make(const float (&v)[3][3]) {
    VXMtx33 r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) r.m[i][j] = v[i][j];
    return r;
}

} // namespace

TEST(MathScalar, AngleConstantsAreTheSinglePrecisionValues) {
    // Nearest float to pi/180, worked out in double precision.
    EXPECT_EQ(VXDegToRad(1.0f), static_cast<float>(M_PI / 180.0));
    // One unit in the last place above the nearest float to 180/pi.
    float nearest = static_cast<float>(180.0 / M_PI);
    EXPECT_EQ(nearest, 57.29578f);
    EXPECT_EQ(VXRadToDeg(1.0f), std::nextafter(nearest, 100.0f));
    // The constants are not exact reciprocals: a round trip misses 90 in the
    // last bits but stays close.
    float back = VXRadToDeg(VXDegToRad(90.0f));
    EXPECT_NE(back, 90.0f);
    EXPECT_NEAR(back, 90.0f, 1e-4f);
}

// Each value is the double-precision result rounded to the nearest float,
// worked out independently (Python's double functions, then rounded).
TEST(MathScalar, TrigonometryIsDoubleRoundedToFloat) {
    struct Case {
        const char* name;
        float (*fn)(float);
        float x, expected;
    } cases[] = {
        {"sin 0.5", VXSin, 0.5f, 0.479425550f},    {"sin -2", VXSin, -2.0f, -0.909297407f},
        {"cos 1e4", VXCos, 1e4f, -0.952155352f},   {"cos 3", VXCos, 3.0f, -0.989992499f},
        {"tan 1.2", VXTan, 1.2f, 2.57215190f},     {"asin 0.3", VXASin, 0.3f, 0.304692656f},
        {"acos -0.7", VXACos, -0.7f, 2.34619379f}, {"atan 50", VXATan, 50.0f, 1.55079901f},
    };
    for (const Case& c : cases) EXPECT_EQ(c.fn(c.x), c.expected) << c.name;
}

TEST(MathScalar, PowersOfTwo) {
    struct Case {
        unsigned x;
        int isPow;
        unsigned next;
        int log2;
    } cases[] = {
        {0u, 0, 1u, 0},
        {1u, 1, 2u, 0},
        {2u, 1, 4u, 1},
        {3u, 0, 4u, 1},
        {4u, 1, 8u, 2},
        {5u, 0, 8u, 2},
        {8u, 1, 16u, 3},
        {9u, 0, 16u, 3},
        {1024u, 1, 2048u, 10},
        {0x40000000u, 1, 0x80000000u, 30},
        {0x7FFFFFFFu, 0, 0x80000000u, 30},
        {0x80000000u, 1, 0u, 31}, // wraps from 2^31 up
        {0xFFFFFFFFu, 0, 0u, 31},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(VXIsPowOf2(c.x), c.isPow) << "IsPowOf2 " << c.x;
        EXPECT_EQ(VXNextPowOf2(c.x), c.next) << "NextPowOf2 " << c.x;
        EXPECT_EQ(VXLogBase2(c.x), c.log2) << "LogBase2 " << c.x;
    }
}

TEST(MathScalar, ClampWrapRange) {
    struct Case {
        const char* name;
        float x, lo, hi, clamp, wrap;
        int inRange;
    } cases[] = {
        {"inside", 5, 0, 10, 5, 5, 1},
        {"on lo", 0, 0, 10, 0, 0, 1},
        {"on hi", 10, 0, 10, 10, 10, 1},
        {"one step above", 12, 0, 10, 10, 2, 0},
        {"more than a range above: one step only", 25, 0, 10, 10, 15, 0},
        {"below", -3, 0, 10, 0, 7, 0},
        {"far below: one step only", -25, 0, 10, 0, -15, 0},
        {"swapped bounds, x below lo", -1, 10, 0, 10, -11, 0},
        {"swapped bounds, x above both", 20, 10, 0, 0, 30, 0},
        {"swapped bounds, x between", 5, 10, 0, 10, -5, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(VXClamp(c.x, c.lo, c.hi), c.clamp) << "Clamp " << c.name;
        EXPECT_EQ(VXWrap(c.x, c.lo, c.hi), c.wrap) << "Wrap " << c.name;
        EXPECT_EQ(VXInRange(c.x, c.lo, c.hi), c.inRange) << "InRange " << c.name;
    }
    EXPECT_EQ(VXInRange(kNaN, 0, 10), 0);
}

TEST(MathScalar, MinMaxIncludingNaNAndSignedZero) {
    EXPECT_EQ(VXMin(1, 2), 1);
    EXPECT_EQ(VXMin(2, 1), 1);
    EXPECT_EQ(VXMax(1, 2), 2);
    EXPECT_EQ(VXMax(2, 1), 2);
    EXPECT_EQ(VXMin(-3, -3), -3);
    EXPECT_EQ(VXMax(7, 7), 7);
    // A NaN anywhere: Min gives its second operand, Max its first.
    EXPECT_EQ(VXMin(kNaN, 1), 1);
    EXPECT_TRUE(std::isnan(VXMin(1, kNaN)));
    EXPECT_TRUE(std::isnan(VXMax(kNaN, 1)));
    EXPECT_EQ(VXMax(1, kNaN), 1);
    // -0 and +0 compare equal, so the same operands are picked.
    EXPECT_FALSE(std::signbit(VXMin(-0.0f, 0.0f)));
    EXPECT_TRUE(std::signbit(VXMax(-0.0f, 0.0f)));
}

TEST(MathVec2, ResultsWorkedByHand) {
    VXVec2 a = {1, 2}, b = {3, -5}, r;
    struct Case {
        const char* name;
        void (*run)(VXVec2*, const VXVec2*, const VXVec2*);
        float x, y;
    } cases[] = {
        {"add", [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2Add(r, a, b); }, 4, -3},
        {"sub", [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2Sub(r, a, b); }, -2, 7},
        {"neg", [](VXVec2* r, const VXVec2* a, const VXVec2*) { VXVec2Neg(r, a); }, -1, -2},
        {"scale 3", [](VXVec2* r, const VXVec2* a, const VXVec2*) { VXVec2Scale(r, a, 3); }, 3, 6},
        {"a*3+b", [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2ScaleAdd(r, a, b, 3); },
         6, 1},
        {"a*3-b", [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2ScaleSub(r, a, b, 3); },
         0, 11},
        {"lerp 0.25",
         [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2Lerp(r, a, b, 0.25f); }, 1.5f,
         0.25f},
        {"lerp 2 is not clamped",
         [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2Lerp(r, a, b, 2); }, 5, -12},
        {"lerp -1 is not clamped",
         [](VXVec2* r, const VXVec2* a, const VXVec2* b) { VXVec2Lerp(r, a, b, -1); }, -1, 9},
        {"set", [](VXVec2* r, const VXVec2*, const VXVec2*) { VXVec2Set(r, 7, 8); }, 7, 8},
        {"zero", [](VXVec2* r, const VXVec2*, const VXVec2*) { VXVec2Zero(r); }, 0, 0},
    };
    for (const auto& c : cases) {
        r = {99, 99};
        c.run(&r, &a, &b);
        EXPECT_FLOAT_EQ(r.x, c.x) << c.name;
        EXPECT_FLOAT_EQ(r.y, c.y) << c.name;
        // The same operation written into its first input.
        VXVec2 alias = a;
        c.run(&alias, &alias, &b);
        EXPECT_FLOAT_EQ(alias.x, c.x) << c.name << " in place";
        EXPECT_FLOAT_EQ(alias.y, c.y) << c.name << " in place";
    }
}

TEST(MathVec2, LengthsProductsAndProjections) {
    VXVec2 v34 = {3, 4}, p = {1, 1}, q = {4, 5}, r;
    EXPECT_EQ(VXVec2Length(&v34), 5);
    EXPECT_EQ(VXVec2SquareLength(&v34), 25);
    EXPECT_EQ(VXVec2Distance(&p, &q), 5);
    EXPECT_EQ(VXVec2SquareDistance(&p, &q), 25);
    VXVec2 d1 = {1, 2}, d2 = {3, 4};
    EXPECT_EQ(VXVec2DotProduct(&d1, &d2), 11);
    VXVec2 ex = {1, 0}, ey = {0, 1};
    EXPECT_EQ(VXVec2CrossProductMag(&ex, &ey), 1); // y is counter-clockwise of x
    EXPECT_EQ(VXVec2CrossProductMag(&ey, &ex), -1);
    EXPECT_EQ(VXVec2CrossProductMag(&d1, &d2), -2);

    VXVec2Normalize(&r, &v34);
    EXPECT_FLOAT_EQ(r.x, 0.6f);
    EXPECT_FLOAT_EQ(r.y, 0.8f);

    VXVec2 a = {2, 3}, alongX = {5, 0}, downY = {0, -2}, diag = {1, 1};
    VXVec2Project(&r, &a, &alongX);
    EXPECT_FLOAT_EQ(r.x, 2);
    EXPECT_FLOAT_EQ(r.y, 0);
    VXVec2ProjectPerp(&r, &a, &alongX);
    EXPECT_FLOAT_EQ(r.x, 0);
    EXPECT_FLOAT_EQ(r.y, 3);
    VXVec2Project(&r, &a, &downY); // the direction's sign does not matter
    EXPECT_NEAR(r.x, 0, 1e-6f);
    EXPECT_FLOAT_EQ(r.y, 3);
    VXVec2Project(&r, &a, &diag); // (2.5, 2.5)
    EXPECT_FLOAT_EQ(r.x, 2.5f);
    EXPECT_FLOAT_EQ(r.y, 2.5f);
    VXVec2ProjectPerp(&a, &a, &diag); // in place: (-0.5, 0.5)
    EXPECT_FLOAT_EQ(a.x, -0.5f);
    EXPECT_FLOAT_EQ(a.y, 0.5f);

    VXVec2FromAngle(&r, static_cast<float>(M_PI / 6));
    EXPECT_FLOAT_EQ(r.x, static_cast<float>(std::sqrt(3.0) / 2));
    EXPECT_FLOAT_EQ(r.y, 0.5f);

    EXPECT_EQ(VXVec2Test(2, 3), 5);
    EXPECT_EQ(VXVec2Test(INT_MAX, 1), INT_MIN);
}

TEST(MathVec2, ZeroLengthHasNoGuard) {
    VXVec2 zero = {0, 0}, a = {1, 2}, r;
    VXVec2Normalize(&r, &zero);
    EXPECT_FALSE(std::isfinite(r.x));
    VXVec2Project(&r, &a, &zero);
    EXPECT_FALSE(std::isfinite(r.x));
    VXVec2ProjectPerp(&r, &a, &zero);
    EXPECT_FALSE(std::isfinite(r.y));
}

TEST(MathMtx33, InverseAndDeterminant) {
    // det 1, inverse by cofactors worked by hand.
    VXMtx33 m = Make({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}}), r;
    EXPECT_FLOAT_EQ(VXMtx33Determinant(&m), 1);
    EXPECT_FLOAT_EQ(VXMtx33Inverse(&r, &m), 1);
    ExpectMtx("general", r, {{-24, 18, 5}, {20, -15, -4}, {-5, 4, 1}}, 1e-4f);

    VXMtx33 affine = Make({{2, 0, 3}, {0, 4, 5}, {0, 0, 1}});
    EXPECT_FLOAT_EQ(VXMtx33Determinant(&affine), 8);
    EXPECT_FLOAT_EQ(VXMtx33Inverse(&affine, &affine), 8); // in place
    ExpectMtx("affine in place", affine, {{0.5f, 0, -1.5f}, {0, 0.25f, -1.25f}, {0, 0, 1}}, 1e-6f);

    VXMtx33 singular = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(VXMtx33Determinant(&singular), 0);

    // The square of the determinant is tested against the float 9.9999994e-11
    // (the float just below 1e-10f). 1e-5f squared in float is exactly that
    // value, so it inverts; the next float below 1e-5f (9.99999884e-06)
    // squares to 9.99999736e-11 and does not.
    struct Case {
        const char* name;
        float det;
        bool inverts;
    } cases[] = {
        {"det 1e-6", 1e-6f, false},
        {"det 9e-6", 9e-6f, false},
        {"det 9.99999884e-06, one float below 1e-5", 9.99999884e-06f, false},
        {"det 1e-5: d * d is the threshold itself", 1e-5f, true},
        {"det -1e-5", -1e-5f, true},
        {"det 1.1e-5", 1.1e-5f, true},
        {"det 1e-4", 1e-4f, true},
        {"det -1e-4", -1e-4f, true},
        {"det 0", 0, false},
    };
    for (const auto& c : cases) {
        VXMtx33 small = Make({{c.det, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        VXMtx33 out = Make({{7, 7, 7}, {7, 7, 7}, {7, 7, 7}});
        float d = VXMtx33Inverse(&out, &small);
        if (c.inverts) {
            EXPECT_EQ(d, c.det) << c.name;
            EXPECT_FLOAT_EQ(out.m[0][0], 1.0f / c.det) << c.name;
            EXPECT_EQ(out.m[1][1], 1) << c.name;
        } else {
            EXPECT_EQ(d, 0) << c.name;
            ExpectMtx(c.name, out, {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}, 0);
        }
    }
}

TEST(MathMtx33, InvTranspose) {
    VXMtx33 m = Make({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}}), r;
    VXMtx33InvTranspose(&r, &m);
    ExpectMtx("invertible", r, {{-24, 20, -5}, {18, -15, 4}, {5, -4, 1}}, 1e-4f);
    // Singular: the result keeps what it held, transposed.
    VXMtx33 zero = Make({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
    r = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    VXMtx33InvTranspose(&r, &zero);
    ExpectMtx("singular", r, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}, 0);
}

TEST(MathMtx33, ConcatAndTranspose) {
    const float want[3][3] = {{2, 1, 17}, {4, 3, 39}, {0, 0, 1}};
    VXMtx33 a = Make({{1, 2, 0}, {3, 4, 0}, {0, 0, 1}});
    VXMtx33 b = Make({{0, 1, 5}, {1, 0, 6}, {0, 0, 1}});
    VXMtx33 r;
    VXMtx33Concat(&r, &a, &b);
    ExpectMtx("separate", r, want, 0);
    VXMtx33 a2 = a;
    VXMtx33Concat(&a2, &a2, &b);
    ExpectMtx("into a", a2, want, 0);
    VXMtx33 b2 = b;
    VXMtx33Concat(&b2, &a, &b2);
    ExpectMtx("into b", b2, want, 0);
    VXMtx33 sq = a;
    VXMtx33Concat(&sq, &sq, &sq);
    ExpectMtx("a squared in place", sq, {{7, 10, 0}, {15, 22, 0}, {0, 0, 1}}, 0);

    VXMtx33 t = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    VXMtx33Transpose(&t, &t);
    ExpectMtx("transpose in place", t, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}, 0);
}

TEST(MathMtx33, RowsColumnsAndBuilders) {
    struct Case {
        const char* name;
        void (*run)(VXMtx33*);
        float want[3][3];
    } cases[] = {
        {"set col 0",
         [](VXMtx33* m) {
             VXVec2 v = {1, 2};
             VXMtx33SetCol(m, 0, &v);
         },
         {{1, 9, 9}, {2, 9, 9}, {0, 9, 9}}},
        {"set col 2 puts 1 below",
         [](VXMtx33* m) {
             VXVec2 v = {1, 2};
             VXMtx33SetCol(m, 2, &v);
         },
         {{9, 9, 1}, {9, 9, 2}, {9, 9, 1}}},
        {"set row 1",
         [](VXMtx33* m) {
             VXVec2 v = {1, 2};
             VXMtx33SetRow(m, 1, &v);
         },
         {{9, 9, 9}, {1, 2, 0}, {9, 9, 9}}},
        {"set row 2 puts 1 at the end",
         [](VXMtx33* m) {
             VXVec2 v = {1, 2};
             VXMtx33SetRow(m, 2, &v);
         },
         {{9, 9, 9}, {9, 9, 9}, {1, 2, 1}}},
        {"set col 3 is ignored",
         [](VXMtx33* m) {
             VXVec2 v = {1, 2};
             VXMtx33SetCol(m, 3, &v);
         },
         {{9, 9, 9}, {9, 9, 9}, {9, 9, 9}}},
        {"identity", [](VXMtx33* m) { VXMtx33Identity(m); }, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
        {"trans", [](VXMtx33* m) { VXMtx33Trans(m, 3, -4); }, {{1, 0, 3}, {0, 1, -4}, {0, 0, 1}}},
        {"scale", [](VXMtx33* m) { VXMtx33Scale(m, 2, -5); }, {{2, 0, 0}, {0, -5, 0}, {0, 0, 1}}},
        {"trans apply in place",
         [](VXMtx33* m) { VXMtx33TransApply(m, m, 1, 2); },
         {{9, 9, 10}, {9, 9, 11}, {9, 9, 9}}},
        {"scale apply in place",
         [](VXMtx33* m) { VXMtx33ScaleApply(m, m, 2, 3); },
         {{18, 18, 18}, {27, 27, 27}, {9, 9, 9}}},
        {"orthogonalize does nothing",
         [](VXMtx33* m) { VXMtx33Orthogonalize(m, m); },
         {{9, 9, 9}, {9, 9, 9}, {9, 9, 9}}},
    };
    for (const auto& c : cases) {
        VXMtx33 m = Make({{9, 9, 9}, {9, 9, 9}, {9, 9, 9}});
        c.run(&m);
        ExpectMtx(c.name, m, c.want, 0);
    }

    // Copying forms leave their source alone.
    VXMtx33 src = Make({{1, 0, 3}, {0, 1, 4}, {0, 0, 1}}), r;
    VXMtx33TransApply(&r, &src, 10, 20);
    ExpectMtx("trans apply copy", r, {{1, 0, 13}, {0, 1, 24}, {0, 0, 1}}, 0);
    VXMtx33ScaleApply(&r, &src, 2, 10);
    ExpectMtx("scale apply = diag x m", r, {{2, 0, 6}, {0, 10, 40}, {0, 0, 1}}, 0);
    EXPECT_EQ(src.m[0][2], 3);

    VXMtx33 g = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    VXVec2 v;
    VXMtx33GetCol(&v, &g, 2);
    EXPECT_EQ(v.x, 3);
    EXPECT_EQ(v.y, 6);
    VXMtx33GetRow(&v, &g, 2);
    EXPECT_EQ(v.x, 7);
    EXPECT_EQ(v.y, 8);
}

TEST(MathMtx33, RotationsAndTransformingPoints) {
    VXMtx33 r;
    VXVec2 ex = {1, 0}, out;
    VXMtx33Rot(&r, static_cast<float>(M_PI / 2));
    VXMtx33MultVec(&out, &r, &ex); // counter-clockwise: x goes to y
    EXPECT_NEAR(out.x, 0, 1e-7f);
    EXPECT_FLOAT_EQ(out.y, 1);
    EXPECT_FLOAT_EQ(r.m[0][1], -1);
    EXPECT_FLOAT_EQ(r.m[1][0], 1);

    // 3.1415 rather than pi: sin(pi - 3.1415f) is about 9.2648e-5, where a
    // true half turn would leave |sin| below 1e-7.
    VXMtx33RotDeg(&r, 180);
    EXPECT_NEAR(r.m[1][0], 9.2648e-5f, 5e-7f);
    EXPECT_NEAR(r.m[0][1], -9.2648e-5f, 5e-7f);
    EXPECT_FLOAT_EQ(r.m[0][0], -1);
    EXPECT_EQ(r.m[2][2], 1);
    VXMtx33RotDeg(&r, 90); // cos(1.57075) = sin(pi/2 - 1.57075) ~ 4.6327e-5
    EXPECT_NEAR(r.m[0][0], 4.6327e-5f, 5e-7f);

    VXMtx33 m = Make({{0, -2, 5}, {2, 0, 7}, {0, 0, 1}});
    VXVec2 src[3] = {{1, 3}, {0, 0}, {-1, 1}}, dst[3];
    VXMtx33MultVecArray(dst, &m, src, 3);
    const float wantPt[3][2] = {{-1, 9}, {5, 7}, {3, 5}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(dst[i].x, wantPt[i][0]) << "point " << i;
        EXPECT_EQ(dst[i].y, wantPt[i][1]) << "point " << i;
    }
    VXMtx33MultVecArraySR(dst, &m, src, 3);
    const float wantDir[3][2] = {{-6, 2}, {0, 0}, {-2, -2}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(dst[i].x, wantDir[i][0]) << "direction " << i;
        EXPECT_EQ(dst[i].y, wantDir[i][1]) << "direction " << i;
    }
    VXMtx33MultVec(&src[0], &m, &src[0]); // in place
    EXPECT_EQ(src[0].x, -1);
    EXPECT_EQ(src[0].y, 9);
}
