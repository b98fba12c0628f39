// Tests of the engine's collision library: distances, overlap tests and swept
// tests, each checked against answers worked out by hand.
#include "VXCollision.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const float kTol = 1e-5f;
const VXVec2 kOrigin = {0, 0};
// The segment (0,0)-(10,0) whose front is +y.
const VXLineSegment kFloor = {{0, 0}, {10, 0}, {0, 1}, 0};
// The sentinel an untouched out-value keeps.
const VXVec2 kUnset = {-77, -77};

// A pointer to a temporary that lives until the end of the calling
// expression, for passing literal points.
const VXVec2* At(VXVec2&& v) {
    return &v;
}

void ExpectVec(const char* name, VXVec2 got, VXVec2 want, float tol = kTol) {
    EXPECT_NEAR(got.x, want.x, tol) << name << " x";
    EXPECT_NEAR(got.y, want.y, tol) << name << " y";
}

} // namespace

TEST(Collision, Distances) {
    const VXVec2 rect = {0, 0}; // 4 x 2: half sizes 2 and 1
    struct Case {
        const char* name;
        VXVec2 p;
        float want;
    } toRect[] = {
        {"centre: nearest edge is 1 away", {0, 0}, -1},
        {"inside near the right edge", {1.5f, 0}, -0.5f},
        {"outside right", {5, 0}, 3},
        {"outside below", {0, -3}, 2},
        {"outside past a corner", {5, 5}, 5},
    };
    for (const auto& c : toRect)
        EXPECT_NEAR(VXCalcDistPointToRect(&c.p, &rect, 4, 2), c.want, kTol) << c.name;
    VXVec2 onEdge = {2, 0.5f};
    float edge = VXCalcDistPointToRect(&onEdge, &rect, 4, 2);
    EXPECT_EQ(edge, 0.0f);
    EXPECT_TRUE(std::signbit(edge)) << "an edge point is -0";

    const VXVec2 a = {0, 0}, b = {4, 0};
    struct SegCase {
        const char* name;
        VXVec2 p, a, b;
        float want;
    } toSeg[] = {
        {"above the middle", {2, 3}, a, b, 3},
        {"before a", {-3, 4}, a, b, 5},
        {"beyond b", {7, 4}, a, b, 5},
        {"level with a", {0, 5}, a, b, 5},
        {"on the segment", {2, 0}, a, b, 0},
        {"a = b", {4, 5}, {1, 1}, {1, 1}, 5},
        {"shorter than 1e-5 uses a", {4, 5}, {1, 1}, {1, 1.000001f}, 5},
    };
    for (const auto& c : toSeg)
        EXPECT_NEAR(VXCalcDistPointToLineSeg(&c.p, &c.a, &c.b), c.want, kTol) << c.name;

    VXVec2 p34 = {3, 4}, c5 = {5, 0}, far = {5, 5};
    EXPECT_FLOAT_EQ(VXCalcDistPointToCircle(&p34, &kOrigin, 2), 3);
    EXPECT_FLOAT_EQ(VXCalcDistPointToCircle(&kOrigin, &kOrigin, 1), -1);
    EXPECT_FLOAT_EQ(VXCalcDistCircleToCircle(&kOrigin, 1, &c5, 2), 2);
    EXPECT_FLOAT_EQ(VXCalcDistCircleToCircle(&kOrigin, 4, &c5, 2), -1);
    EXPECT_FLOAT_EQ(VXCalcDistCircleToRect(&far, 1, &rect, 4, 2), 4);
    EXPECT_EQ(VXCalcDistPointToConvexPoly(&p34, &c5, 1), -1);
    EXPECT_EQ(VXCalcDistPointToConvexPoly(nullptr, nullptr, 0), -1);
}

TEST(Collision, RectToRectPenetration) {
    const VXVec2 r0 = {0, 0}; // both 4 x 2
    struct Case {
        const char* name;
        VXVec2 c1;
        float want;
        VXVec2 normal;
    } cases[] = {
        {"second to the right: x is shallower", {3, 0}, -1, {-1, 0}},
        {"second to the left", {-3, 0}, -1, {1, 0}},
        {"second above: y is shallower", {0, 1.5f}, -0.5f, {0, -1}},
        {"second below", {0, -1.5f}, -0.5f, {0, 1}},
        {"sharing the right edge", {4, 0}, 0, kUnset},
        {"sharing the top edge", {1, 2}, 0, kUnset},
        {"apart", {9, 9}, 0, kUnset},
    };
    for (const auto& c : cases) {
        VXVec2 n = kUnset;
        EXPECT_FLOAT_EQ(VXCalcDistRectToRect(&r0, 4, 2, &c.c1, 4, 2, &n), c.want) << c.name;
        ExpectVec(c.name, n, c.normal, 0);
        EXPECT_FLOAT_EQ(VXCalcDistRectToRect(&r0, 4, 2, &c.c1, 4, 2, nullptr), c.want) << c.name;
    }
}

TEST(Collision, OverlapTestsCountTouching) {
    const VXVec2 rect = {0, 0}; // 4 x 2
    struct Case {
        const char* name;
        int got, want;
    } cases[] = {
        {"point on the circle's rim", VXTestPointToCircle(At({3, 4}), &kOrigin, 5), 1},
        {"point just outside the rim", VXTestPointToCircle(At({3, 4}), &kOrigin, 4.999f), 0},
        {"point on a rect corner", VXTestPointToRect(At({2, -1}), &rect, 4, 2), 1},
        {"point just past an edge", VXTestPointToRect(At({2.001f, 0}), &rect, 4, 2), 0},
        {"touching circles", VXTestCircleToCircle(&kOrigin, 2, At({5, 0}), 3), 1},
        {"separate circles", VXTestCircleToCircle(&kOrigin, 2, At({5, 0}), 2.9f), 0},
        {"radius 0 centred on an edge", VXTestCircleToRect(At({2, 0}), 0, &rect, 4, 2), 0},
        {"tiny radius on an edge", VXTestCircleToRect(At({2, 0}), 0.001f, &rect, 4, 2), 1},
        {"radius 0 strictly inside", VXTestCircleToRect(At({0, 0}), 0, &rect, 4, 2), 1},
        {"rim exactly on the edge (strict)", VXTestCircleToRect(At({3, 0}), 1, &rect, 4, 2), 0},
        {"rim past the edge", VXTestCircleToRect(At({3, 0}), 1.001f, &rect, 4, 2), 1},
        {"rects sharing an edge", VXTestRectToRect(&rect, 4, 2, At({4, 0}), 4, 2), 1},
        {"rects touching at a corner", VXTestRectToRect(&rect, 4, 2, At({4, 2}), 4, 2), 1},
        {"rects apart", VXTestRectToRect(&rect, 4, 2, At({4.01f, 0}), 4, 2), 0},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.name;
}

TEST(Collision, SweptPointAndCircleAgainstSegment) {
    const float h = std::sqrt(0.5f);
    const VXLineSegment diagonal = {{0, 0}, {10, 10}, {-h, h}, 0}; // y = x, front is up-left
    // radius < 0: the point test.
    auto check = [](const char* name, const VXLineSegment& seg, VXVec2 ps, VXVec2 pe, float radius,
                    float t, VXVec2 want) {
        VXVec2 contact = kUnset;
        EXPECT_NEAR(radius < 0
                        ? VXAnimatedPointToStaticLineSegment(&ps, &pe, &seg, &contact)
                        : VXAnimatedCircleToStaticLineSegment(&ps, &pe, radius, &seg, &contact),
                    t, kTol)
            << name;
        ExpectVec(name, contact, want, 1e-4f);
    };
    check("point straight down through the middle", kFloor, {5, 2}, {5, -2}, -1, 0.5f, {5, 0});
    check("point oblique", kFloor, {0, 4}, {8, -4}, -1, 0.5f, {4, 0});
    check("point through end point p0 (inclusive)", kFloor, {0, 2}, {0, -2}, -1, 0.5f, {0, 0});
    check("point through end point p1 (inclusive)", kFloor, {10, 1}, {10, -1}, -1, 0.5f, {10, 0});
    check("point starting on the line", kFloor, {5, 0}, {5, -3}, -1, 0, {5, 0});
    check("point ending on the line", kFloor, {5, 4}, {5, 0}, -1, 1, {5, 0});
    check("point from behind", kFloor, {5, -1}, {5, 3}, -1, 0.25f, {5, 0});
    check("point past the extent", kFloor, {-1, 2}, {-1, -2}, -1, -1, kUnset);
    check("point staying in front", kFloor, {5, 2}, {5, 1}, -1, -1, kUnset);
    check("point running along the line", kFloor, {1, 0}, {9, 0}, -1, -1, kUnset);
    check("point across a sloped segment", diagonal, {6, 0}, {6, 10}, -1, 0.6f, {6, 6});
    check("circle from the front stops a radius short", kFloor, {5, 3}, {5, -3}, 1, 1.0f / 3,
          {5, 1});
    check("circle from behind", kFloor, {5, -3}, {5, 3}, 1, 1.0f / 3, {5, -1});
    check("circle oblique", kFloor, {0, 4}, {8, -4}, 1, 3.0f / 8, {3, 1});
    check("circle already touching reports when it began", kFloor, {5, 0.5f}, {5, -3}, 1, -1.0f / 7,
          {5, 1});
    check("circle staying more than a radius away", kFloor, {5, 3}, {5, 1.5f}, 1, -1, kUnset);
    check("circle whose rim only grazes the end point", kFloor, {10.5f, 3}, {10.5f, -3}, 1, -1,
          kUnset);
    check("circle moving parallel within a radius", kFloor, {1, 0.5f}, {9, 0.5f}, 1, -1, kUnset);
    VXVec2 p = {5, 3}, behind = {20, -2};
    EXPECT_FLOAT_EQ(VXStaticPointToStaticLineSegment(&p, &kFloor), 3);
    EXPECT_FLOAT_EQ(VXStaticPointToStaticLineSegment(&behind, &kFloor), -2); // the line
}

TEST(Collision, ReflectionOnSegmentHasTheRemainingLength) {
    VXVec2 ps = {0, 4}, pe = {8, -4}, contact, refl;
    EXPECT_FLOAT_EQ(VXReflectAnimatedPointOnStaticLineSegment(&ps, &pe, &kFloor, &contact, &refl),
                    0.5f);
    ExpectVec("point", refl, {4, 4}); // |pe - contact| = sqrt(32)
    EXPECT_FLOAT_EQ(
        VXReflectAnimatedCircleOnStaticLineSegment(&ps, &pe, 1, &kFloor, &contact, &refl),
        3.0f / 8);
    ExpectVec("circle", refl, {5, 5}); // |pe - (3, 1)| = sqrt(50)

    const float h = std::sqrt(0.5f);
    const VXLineSegment diagonal = {{0, 0}, {10, 10}, {-h, h}, 0};
    VXVec2 up0 = {6, 0}, up1 = {6, 10};
    VXReflectAnimatedPointOnStaticLineSegment(&up0, &up1, &diagonal, &contact, &refl);
    ExpectVec("mirrored about y = x", refl, {4, 0});

    // Contact exactly at the start: no reflection is written.
    VXVec2 onLine = {5, 0}, down = {5, -3};
    refl = kUnset;
    EXPECT_EQ(VXReflectAnimatedPointOnStaticLineSegment(&onLine, &down, &kFloor, &contact, &refl),
              0);
    ExpectVec("t = 0", refl, kUnset, 0);
    // A miss writes neither.
    VXVec2 a = {5, 2}, b = {5, 1};
    contact = kUnset;
    EXPECT_EQ(VXReflectAnimatedCircleOnStaticLineSegment(&a, &b, 0.5f, &kFloor, &contact, &refl),
              -1);
    ExpectVec("miss contact", contact, kUnset, 0);
    ExpectVec("miss reflection", refl, kUnset, 0);
}

TEST(Collision, SweptPointAgainstCircle) {
    struct Case {
        const char* name;
        VXVec2 ps, pe;
        float t;
        VXVec2 contact;
    } cases[] = {
        // unit circle at the origin
        {"head on", {-5, 0}, {5, 0}, 0.4f, {-1, 0}},
        {"off centre", {-5, 0.6f}, {5, 0.6f}, 0.42f, {-0.8f, 0.6f}},
        {"tangent counts", {-5, 1}, {5, 1}, 0.5f, {0, 1}},
        {"line misses", {-5, 1.01f}, {5, 1.01f}, -1, kUnset},
        {"ending exactly on the rim", {-5, 0}, {-1, 0}, 1, {-1, 0}},
        {"stopping short writes the contact anyway", {-5, 0}, {-3, 0}, -1, {-1, 0}},
        {"outside moving away is rejected early", {-3, 0}, {-5, 0}, -1, kUnset},
        {"inside moving away: time it entered", {0.5f, 0}, {3, 0}, -0.6f, {-1, 0}},
        {"inside moving towards the centre", {-0.5f, 0}, {0.5f, 0}, -0.5f, {-1, 0}},
    };
    for (const auto& c : cases) {
        VXVec2 contact = kUnset;
        EXPECT_NEAR(VXAnimatedPointToStaticCircle(&c.ps, &c.pe, &kOrigin, 1, &contact), c.t, kTol)
            << c.name;
        ExpectVec(c.name, contact, c.contact);
        // The circle form grows the static circle by the moving radius.
        contact = kUnset;
        EXPECT_NEAR(VXAnimatedCircleToStaticCircle(&c.ps, &c.pe, 0.25f, &kOrigin, 0.75f, &contact),
                    c.t, kTol)
            << c.name << " (circle)";
        ExpectVec(c.name, contact, c.contact);
    }
    // No motion: the direction is 0/0 and there is no time of contact.
    VXVec2 still = {-5, 0};
    EXPECT_FALSE(VXAnimatedPointToStaticCircle(&still, &still, &kOrigin, 1, nullptr) >= 0);
}

TEST(Collision, ReflectionOnCircleHasTheLengthAlreadyTravelled) {
    struct Case {
        const char* name;
        VXVec2 ps, pe;
        float t;
        VXVec2 reflection;
    } cases[] = {
        {"head on bounces straight back", {-5, 0}, {5, 0}, 0.4f, {-4, 0}},
        {"off centre", {-5, 0.6f}, {5, 0.6f}, 0.42f, {-1.176f, 4.032f}}, // length 4.2
        {"contact at the start writes nothing", {-1, 0}, {1, 0}, 0, kUnset},
        {"miss writes nothing", {-5, 2}, {5, 2}, -1, kUnset},
    };
    for (const auto& c : cases) {
        VXVec2 contact, refl = kUnset;
        EXPECT_NEAR(
            VXReflectAnimatedPointOnStaticCircle(&c.ps, &c.pe, &kOrigin, 1, &contact, &refl), c.t,
            kTol)
            << c.name;
        ExpectVec(c.name, refl, c.reflection, 1e-4f);
        refl = kUnset;
        VXReflectAnimatedCircleOnStaticCircle(&c.ps, &c.pe, 0.5f, &kOrigin, 0.5f, &contact, &refl);
        ExpectVec(c.name, refl, c.reflection, 1e-4f);
    }
}
