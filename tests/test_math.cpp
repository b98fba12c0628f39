// Tests of the engine's scalar helpers, VXVec2 and VXMtx33 against answers
// worked out by hand or with double-precision references.
#include "VXMath.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const VXVec2 kV12 = {1, 2};
using V = const VXVec2*;
using M = VXMtx33*;

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

void ExpectVec(const char* name, VXVec2 got, float x, float y) {
    EXPECT_FLOAT_EQ(got.x, x) << name;
    EXPECT_FLOAT_EQ(got.y, y) << name;
}

} // namespace

TEST(MathScalar, AngleConstantsAreTheSinglePrecisionValues) {
    // Nearest float to pi/180; one unit in the last place above the nearest
    // float to 180/pi (57.29578), both worked out in double precision.
    EXPECT_EQ(VXDegToRad(1.0f), static_cast<float>(M_PI / 180.0));
    EXPECT_EQ(VXRadToDeg(1.0f), std::nextafter(57.29578f, 100.0f));
}

// Each value is the double-precision result rounded to the nearest float,
// worked out independently (Python's double functions, then rounded).
TEST(MathScalar, TrigonometryIsDoubleRoundedToFloat) {
    struct Case {
        const char* name;
        float (*fn)(float);
        float x, expected;
    } cases[] = {
        {"sin -2", VXSin, -2.0f, -0.909297407f},   {"cos 1e4", VXCos, 1e4f, -0.952155352f},
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
        {3u, 0, 4u, 1},
        {4u, 1, 8u, 2},
        {9u, 0, 16u, 3},
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

TEST(MathScalar, ClampWrapRangeMinMax) {
    struct Case {
        const char* name;
        float x, lo, hi, clamp, wrap;
        int inRange;
    } cases[] = {
        {"inside", 5, 0, 10, 5, 5, 1},
        {"on lo", 0, 0, 10, 0, 0, 1},
        {"on hi", 10, 0, 10, 10, 10, 1},
        {"more than a range above: one step only", 25, 0, 10, 10, 15, 0},
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
    EXPECT_EQ(VXMin(2, 1), 1);
    EXPECT_EQ(VXMax(1, 2), 2);
    // A NaN anywhere: Min gives its second operand, Max its first; -0 and +0
    // compare equal, so the same operands are picked.
    EXPECT_EQ(VXMin(kNaN, 1), 1);
    EXPECT_TRUE(std::isnan(VXMin(1, kNaN)));
    EXPECT_TRUE(std::isnan(VXMax(kNaN, 1)));
    EXPECT_EQ(VXMax(1, kNaN), 1);
    EXPECT_FALSE(std::signbit(VXMin(-0.0f, 0.0f)));
    EXPECT_TRUE(std::signbit(VXMax(-0.0f, 0.0f)));
}

TEST(MathVec2, ResultsWorkedByHand) {
    using Op = void (*)(VXVec2*, V, V);
    struct Case {
        const char* name;
        Op run;
        float x, y;
    } cases[] = {
        {"add", [](VXVec2* r, V a, V b) { VXVec2Add(r, a, b); }, 4, -3},
        {"sub", [](VXVec2* r, V a, V b) { VXVec2Sub(r, a, b); }, -2, 7},
        {"neg", [](VXVec2* r, V a, V) { VXVec2Neg(r, a); }, -1, -2},
        {"scale 3", [](VXVec2* r, V a, V) { VXVec2Scale(r, a, 3); }, 3, 6},
        {"a*3+b", [](VXVec2* r, V a, V b) { VXVec2ScaleAdd(r, a, b, 3); }, 6, 1},
        {"a*3-b", [](VXVec2* r, V a, V b) { VXVec2ScaleSub(r, a, b, 3); }, 0, 11},
        {"lerp 2", [](VXVec2* r, V a, V b) { VXVec2Lerp(r, a, b, 2); }, 5, -12},
        {"lerp -1", [](VXVec2* r, V a, V b) { VXVec2Lerp(r, a, b, -1); }, -1, 9},
    };
    for (const auto& c : cases) {
        VXVec2 a = kV12, b = {3, -5}, r = {99, 99};
        c.run(&r, &a, &b);
        ExpectVec(c.name, r, c.x, c.y);
        c.run(&a, &a, &b); // the same operation written into its first input
        ExpectVec(c.name, a, c.x, c.y);
    }
}

TEST(MathVec2, LengthsProductsAndProjections) {
    VXVec2 v34 = {3, 4}, p = {1, 1}, q = {4, 5}, d2 = {3, 4}, ex = {1, 0}, ey = {0, 1}, r;
    EXPECT_EQ(VXVec2Length(&v34), 5);
    EXPECT_EQ(VXVec2SquareLength(&v34), 25);
    EXPECT_EQ(VXVec2Distance(&p, &q), 5);
    EXPECT_EQ(VXVec2DotProduct(&kV12, &d2), 11);
    EXPECT_EQ(VXVec2CrossProductMag(&ex, &ey), 1); // y is counter-clockwise of x
    EXPECT_EQ(VXVec2CrossProductMag(&kV12, &d2), -2);
    VXVec2Normalize(&r, &v34);
    ExpectVec("normalize", r, 0.6f, 0.8f);

    VXVec2 a = {2, 3}, downY = {0, -2}, diag = {1, 1};
    VXVec2Project(&r, &a, &downY); // the direction's sign does not matter
    EXPECT_NEAR(r.x, 0, 1e-6f);
    EXPECT_FLOAT_EQ(r.y, 3);
    VXVec2Project(&r, &a, &diag);
    ExpectVec("project on the diagonal", r, 2.5f, 2.5f);
    VXVec2ProjectPerp(&a, &a, &diag); // in place
    ExpectVec("perpendicular in place", a, -0.5f, 0.5f);
    VXVec2FromAngle(&r, static_cast<float>(M_PI / 6));
    ExpectVec("from angle", r, static_cast<float>(std::sqrt(3.0) / 2), 0.5f);

    EXPECT_EQ(VXVec2Test(2, 3), 5);
    EXPECT_EQ(VXVec2Test(INT_MAX, 1), INT_MIN);
    VXVec2 zero = {0, 0}; // no guard against a zero length
    VXVec2Normalize(&r, &zero);
    EXPECT_FALSE(std::isfinite(r.x));
}

TEST(MathMtx33, InverseAndDeterminant) {
    // det 1, inverse by cofactors worked by hand.
    VXMtx33 m = Make({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}}), r;
    EXPECT_FLOAT_EQ(VXMtx33Determinant(&m), 1);
    EXPECT_FLOAT_EQ(VXMtx33Inverse(&r, &m), 1);
    ExpectMtx("general", r, {{-24, 18, 5}, {20, -15, -4}, {-5, 4, 1}}, 1e-4f);
    VXMtx33InvTranspose(&r, &m);
    ExpectMtx("inverse transposed", r, {{-24, 20, -5}, {18, -15, 4}, {5, -4, 1}}, 1e-4f);

    VXMtx33 affine = Make({{2, 0, 3}, {0, 4, 5}, {0, 0, 1}});
    EXPECT_FLOAT_EQ(VXMtx33Inverse(&affine, &affine), 8); // in place
    ExpectMtx("affine in place", affine, {{0.5f, 0, -1.5f}, {0, 0.25f, -1.25f}, {0, 0, 1}}, 1e-6f);

    // Singular: the result keeps what it held (transposed by InvTranspose).
    VXMtx33 zero = Make({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
    r = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(VXMtx33Determinant(&r), 0);
    VXMtx33InvTranspose(&r, &zero);
    ExpectMtx("singular", r, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}, 0);

    // The square of the determinant is tested against the float 9.9999994e-11
    // (one float below 1e-10f): 1e-5f squared in float is exactly that value,
    // so it inverts; the next float below 1e-5f squares to 9.99999736e-11.
    struct Case {
        const char* name;
        float det;
        bool inverts;
    } cases[] = {
        {"one float below 1e-5", 9.99999884e-06f, false},
        {"det 1e-5: d * d is the threshold itself", 1e-5f, true},
        {"det -1e-5", -1e-5f, true},
        {"det 0", 0, false},
    };
    for (const auto& c : cases) {
        VXMtx33 small = Make({{c.det, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        VXMtx33 out = Make({{7, 7, 7}, {7, 7, 7}, {7, 7, 7}});
        EXPECT_EQ(VXMtx33Inverse(&out, &small), c.inverts ? c.det : 0) << c.name;
        if (c.inverts)
            ExpectMtx(c.name, out, {{1.0f / c.det, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 0);
        else
            ExpectMtx(c.name, out, {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}, 0);
    }
}

TEST(MathMtx33, ConcatAndTranspose) {
    const float want[3][3] = {{2, 1, 17}, {4, 3, 39}, {0, 0, 1}};
    const VXMtx33 a = Make({{1, 2, 0}, {3, 4, 0}, {0, 0, 1}});
    const VXMtx33 b = Make({{0, 1, 5}, {1, 0, 6}, {0, 0, 1}});
    VXMtx33 r, a2 = a, b2 = b, sq = a;
    VXMtx33Concat(&r, &a, &b);
    ExpectMtx("separate", r, want, 0);
    VXMtx33Concat(&a2, &a2, &b);
    ExpectMtx("into a", a2, want, 0);
    VXMtx33Concat(&b2, &a, &b2);
    ExpectMtx("into b", b2, want, 0);
    VXMtx33Concat(&sq, &sq, &sq);
    ExpectMtx("a squared in place", sq, {{7, 10, 0}, {15, 22, 0}, {0, 0, 1}}, 0);
    VXMtx33 t = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    VXMtx33Transpose(&t, &t);
    ExpectMtx("transpose in place", t, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}, 0);
}

TEST(MathMtx33, RowsColumnsAndBuilders) {
    struct Case {
        const char* name;
        void (*run)(M);
        float want[3][3];
    } cases[] = {
        {"col 0", [](M m) { VXMtx33SetCol(m, 0, &kV12); }, {{1, 9, 9}, {2, 9, 9}, {0, 9, 9}}},
        {"col 2, 1 below",
         [](M m) { VXMtx33SetCol(m, 2, &kV12); },
         {{9, 9, 1}, {9, 9, 2}, {9, 9, 1}}},
        {"row 1", [](M m) { VXMtx33SetRow(m, 1, &kV12); }, {{9, 9, 9}, {1, 2, 0}, {9, 9, 9}}},
        {"row 2, 1 last",
         [](M m) { VXMtx33SetRow(m, 2, &kV12); },
         {{9, 9, 9}, {9, 9, 9}, {1, 2, 1}}},
        {"col 3: none", [](M m) { VXMtx33SetCol(m, 3, &kV12); }, {{9, 9, 9}, {9, 9, 9}, {9, 9, 9}}},
        {"trans", [](M m) { VXMtx33Trans(m, 3, -4); }, {{1, 0, 3}, {0, 1, -4}, {0, 0, 1}}},
        {"scale", [](M m) { VXMtx33Scale(m, 2, -5); }, {{2, 0, 0}, {0, -5, 0}, {0, 0, 1}}},
        {"+(1, 2)",
         [](M m) { VXMtx33TransApply(m, m, 1, 2); },
         {{9, 9, 10}, {9, 9, 11}, {9, 9, 9}}},
        {"x(2, 3)",
         [](M m) { VXMtx33ScaleApply(m, m, 2, 3); },
         {{18, 18, 18}, {27, 27, 27}, {9, 9, 9}}},
        {"no-op", [](M m) { VXMtx33Orthogonalize(m, m); }, {{9, 9, 9}, {9, 9, 9}, {9, 9, 9}}},
    };
    for (const auto& c : cases) {
        VXMtx33 m = Make({{9, 9, 9}, {9, 9, 9}, {9, 9, 9}});
        c.run(&m);
        ExpectMtx(c.name, m, c.want, 0);
    }
    // Copying forms leave their source alone.
    const VXMtx33 src = Make({{1, 0, 3}, {0, 1, 4}, {0, 0, 1}});
    VXMtx33 r;
    VXMtx33TransApply(&r, &src, 10, 20);
    ExpectMtx("trans apply copy", r, {{1, 0, 13}, {0, 1, 24}, {0, 0, 1}}, 0);
    VXMtx33ScaleApply(&r, &src, 2, 10);
    ExpectMtx("scale apply = diag x m", r, {{2, 0, 6}, {0, 10, 40}, {0, 0, 1}}, 0);

    VXMtx33 g = Make({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    VXVec2 v;
    VXMtx33GetCol(&v, &g, 2);
    ExpectVec("get col 2", v, 3, 6);
    VXMtx33GetRow(&v, &g, 2);
    ExpectVec("get row 2", v, 7, 8);
}

TEST(MathMtx33, RotationsAndTransformingPoints) {
    VXMtx33 r;
    VXVec2 ex = {1, 0}, out;
    VXMtx33Rot(&r, static_cast<float>(M_PI / 2));
    VXMtx33MultVec(&out, &r, &ex); // counter-clockwise: x goes to y
    EXPECT_NEAR(out.x, 0, 1e-7f);
    EXPECT_FLOAT_EQ(out.y, 1);
    // 3.1415 rather than pi: sin(pi - 3.1415f) is about 9.2648e-5, where a
    // true half turn would leave |sin| below 1e-7.
    VXMtx33RotDeg(&r, 180);
    EXPECT_NEAR(r.m[1][0], 9.2648e-5f, 5e-7f);
    EXPECT_NEAR(r.m[0][1], -9.2648e-5f, 5e-7f);
    EXPECT_FLOAT_EQ(r.m[0][0], -1);
    EXPECT_EQ(r.m[2][2], 1);

    VXMtx33 m = Make({{0, -2, 5}, {2, 0, 7}, {0, 0, 1}});
    VXVec2 src[3] = {{1, 3}, {0, 0}, {-1, 1}}, pts[3], dirs[3];
    VXMtx33MultVecArray(pts, &m, src, 3);
    VXMtx33MultVecArraySR(dirs, &m, src, 3); // no translation
    const float want[3][4] = {{-1, 9, -6, 2}, {5, 7, 0, 0}, {3, 5, -2, -2}};
    for (int i = 0; i < 3; ++i) {
        ExpectVec("point", pts[i], want[i][0], want[i][1]);
        ExpectVec("direction", dirs[i], want[i][2], want[i][3]);
    }
    VXMtx33MultVec(&src[0], &m, &src[0]); // in place
    ExpectVec("in place", src[0], -1, 9);
}
