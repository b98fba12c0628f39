// VXCollision: distance, overlap and swept tests of the engine's 2-D
// collision library, in single precision.
//
// Sign conventions: distances are negative inside a shape; a swept test
// returns the contact time along the frame's motion or -1 for no hit.
// Out-pointers may be null. Depends on: VXVec2. Limits: circles, axis-aligned
// rectangles and segments only; a zero-length motion against a circle has no
// defined time (the direction is 0/0).
#include "VXCollision.h"

#include <cmath>

namespace {

// Below this a segment has no length and a motion counts as parallel.
const float kEpsilon = 1e-5f;

// Writes v through p when the caller asked for it.
void Store(VXVec2* p, const VXVec2& v) {
    if (p) *p = v;
}

// The caller's contact value, so that a test which does not write the
// contact leaves it as it was when passed through a local.
VXVec2 Seed(const VXVec2* p) {
    return p ? *p : VXVec2{0.0f, 0.0f};
}

// True when pi lies between the segment's end points (inclusive), judged
// along the segment from each end.
bool WithinSegment(const VXLineSegment* pLine, const VXVec2* pi) {
    VXVec2 along, back, fromP0, fromP1;
    VXVec2Sub(&along, &pLine->p1, &pLine->p0);
    VXVec2Sub(&back, &pLine->p0, &pLine->p1);
    VXVec2Sub(&fromP0, pi, &pLine->p0);
    VXVec2Sub(&fromP1, pi, &pLine->p1);
    return VXVec2DotProduct(&along, &fromP0) >= 0.0f && VXVec2DotProduct(&back, &fromP1) >= 0.0f;
}

// The motion left after contact, mirrored about the segment's line.
void ReflectOnLine(const VXVec2* pEnd, const VXLineSegment* pLine, const VXVec2* pi,
                   VXVec2* pReflect) {
    VXVec2 u;
    VXVec2Sub(&u, pEnd, pi);
    float un = VXVec2DotProduct(&u, &pLine->normal);
    VXVec2 r;
    VXVec2ScaleAdd(&r, &pLine->normal, &u, -2.0f * un);
    Store(pReflect, r);
}

// The reversed incoming motion mirrored about the circle's normal at pi.
void ReflectOnCircle(const VXVec2* pStart, const VXVec2* pCtr, const VXVec2* pi, VXVec2* pReflect) {
    VXVec2 n, m;
    VXVec2Sub(&n, pi, pCtr);
    VXVec2Normalize(&n, &n);
    VXVec2Sub(&m, pStart, pi);
    float mn = VXVec2DotProduct(&m, &n);
    VXVec2 r;
    VXVec2ScaleSub(&r, &n, &m, 2.0f * mn);
    Store(pReflect, r);
}

} // namespace

// |p - centre| - radius.
float VXCalcDistPointToCircle(const VXVec2* pPos, const VXVec2* pCtr, float radius) {
    return VXVec2Distance(pPos, pCtr) - radius;
}

// Inside (edges included) the depth to the nearest edge as a negative number,
// -0 on an edge; outside the distance to the clamped point.
float VXCalcDistPointToRect(const VXVec2* pPos, const VXVec2* pRect, float sizeX, float sizeY) {
    float hw = sizeX * 0.5f, hh = sizeY * 0.5f;
    float dx = pPos->x - pRect->x, dy = pPos->y - pRect->y;
    if (std::fabs(dx) <= hw && std::fabs(dy) <= hh) {
        float ex = hw - std::fabs(dx), ey = hh - std::fabs(dy);
        return -(ey < ex ? ey : ex);
    }
    float cx = dx < -hw ? -hw : (dx > hw ? hw : dx);
    float cy = dy < -hh ? -hh : (dy > hh ? hh : dy);
    VXVec2 out = {dx - cx, dy - cy};
    return VXVec2Length(&out);
}

// Distance to the nearer end point beyond the segment's extent, else the
// perpendicular distance (clamped to 0 against rounding).
float VXCalcDistPointToLineSeg(const VXVec2* pPos, const VXVec2* pLine0, const VXVec2* pLine1) {
    float len = VXVec2Distance(pLine1, pLine0);
    if (len < kEpsilon) return VXVec2Distance(pPos, pLine0);
    VXVec2 ap, ab;
    VXVec2Sub(&ap, pPos, pLine0);
    VXVec2Sub(&ab, pLine1, pLine0);
    float s = VXVec2DotProduct(&ap, &ab) / len;
    if (s <= 0.0f) return VXVec2Length(&ap);
    if (s >= len) return VXVec2Distance(pPos, pLine1);
    float q = VXVec2SquareLength(&ap) - s * s;
    return q <= 0.0f ? 0.0f : std::sqrt(q);
}

// The engine never had a polygon distance; -1 tells the caller so.
float VXCalcDistPointToConvexPoly(const VXVec2* /*pPos*/, const VXVec2* /*pVtx*/,
                                  unsigned /*vtxNum*/) {
    return -1.0f;
}

// Distance between the rims.
float VXCalcDistCircleToCircle(const VXVec2* pCtr0, float radius0, const VXVec2* pCtr1,
                               float radius1) {
    return VXVec2Distance(pCtr0, pCtr1) - radius0 - radius1;
}

// Rectangle distance of the centre minus the radius.
float VXCalcDistCircleToRect(const VXVec2* pCtr0, float radius0, const VXVec2* pRect0, float sizeX0,
                             float sizeY0) {
    return VXCalcDistPointToRect(pCtr0, pRect0, sizeX0, sizeY0) - radius0;
}

// Touching rectangles give 0 and no normal: only a real overlap needs
// pushing apart. Otherwise the shallower axis wins (x on a tie).
float VXCalcDistRectToRect(const VXVec2* pRect0, float sizeX0, float sizeY0, const VXVec2* pRect1,
                           float sizeX1, float sizeY1, VXVec2* pNormal) {
    float dx = pRect1->x - pRect0->x, dy = pRect1->y - pRect0->y;
    if (std::fabs(dx) >= (sizeX0 + sizeX1) * 0.5f || std::fabs(dy) >= (sizeY0 + sizeY1) * 0.5f)
        return 0.0f;
    float px = std::fabs(dx) - sizeX0 * 0.5f - sizeX1 * 0.5f;
    VXVec2 n = {dx >= 0.0f ? -1.0f : 1.0f, 0.0f};
    float py = std::fabs(dy) - sizeY0 * 0.5f - sizeY1 * 0.5f;
    float result = px;
    if (py > px) {
        result = py;
        n = {0.0f, dy >= 0.0f ? -1.0f : 1.0f};
    }
    Store(pNormal, n);
    return result;
}

// Points on the rim count.
int VXTestPointToCircle(const VXVec2* pPos, const VXVec2* pCtr, float radius) {
    return radius >= VXVec2Distance(pPos, pCtr) ? 1 : 0;
}

// Points on the edges count.
int VXTestPointToRect(const VXVec2* pPos, const VXVec2* pRect, float sizeX, float sizeY) {
    float hw = sizeX / 2.0f, hh = sizeY / 2.0f;
    float dx = pPos->x - pRect->x, dy = pPos->y - pRect->y;
    return (-hw <= dx && dx <= hw && -hh <= dy && dy <= hh) ? 1 : 0;
}

// Touching circles count.
int VXTestCircleToCircle(const VXVec2* pCtr0, float radius0, const VXVec2* pCtr1, float radius1) {
    return radius0 + radius1 >= VXVec2Distance(pCtr0, pCtr1) ? 1 : 0;
}

// Strict against the signed distance of the centre: inside that distance is
// minus the depth (so any positive radius overlaps), outside it is the gap.
// A zero radius on an edge compares 0 > -0 and so does not overlap.
int VXTestCircleToRect(const VXVec2* pCtr0, float radius0, const VXVec2* pRect0, float sizeX0,
                       float sizeY0) {
    return radius0 > VXCalcDistPointToRect(pCtr0, pRect0, sizeX0, sizeY0) ? 1 : 0;
}

// Touching rectangles count.
int VXTestRectToRect(const VXVec2* pRect0, float sizeX0, float sizeY0, const VXVec2* pRect1,
                     float sizeX1, float sizeY1) {
    return (std::fabs(pRect1->x - pRect0->x) <= (sizeX0 + sizeX1) / 2.0f &&
            std::fabs(pRect1->y - pRect0->y) <= (sizeY0 + sizeY1) / 2.0f)
               ? 1
               : 0;
}

// normal . p - nDotP0.
float VXStaticPointToStaticLineSegment(const VXVec2* pPos, const VXLineSegment* pLine) {
    return VXVec2DotProduct(&pLine->normal, pPos) - pLine->nDotP0;
}

// Crossing of the line between the end points; a motion entirely on one side
// or parallel to the line never hits, even when it runs along it.
float VXAnimatedPointToStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                         const VXLineSegment* pLine, VXVec2* pInter) {
    float ns = VXVec2DotProduct(&pLine->normal, pStart);
    float ne = VXVec2DotProduct(&pLine->normal, pEnd);
    if ((ns < pLine->nDotP0 && ne < pLine->nDotP0) || (ns > pLine->nDotP0 && ne > pLine->nDotP0))
        return -1.0f;
    VXVec2 v;
    VXVec2Sub(&v, pEnd, pStart);
    float nv = VXVec2DotProduct(&pLine->normal, &v);
    if (std::fabs(nv) < kEpsilon) return -1.0f;
    float t = (VXVec2DotProduct(&pLine->normal, &pLine->p0) - ns) / nv;
    VXVec2 pi;
    VXVec2ScaleAdd(&pi, &v, pStart, t);
    if (!WithinSegment(pLine, &pi)) return -1.0f;
    Store(pInter, pi);
    return t;
}

// The centre meets the line shifted by the radius towards the side the
// circle starts on; the end-point test uses the centre, so a rim grazing an
// end point beyond the segment's extent does not count.
float VXAnimatedCircleToStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd, float radius,
                                          const VXLineSegment* pLine, VXVec2* pInter) {
    float ds = VXVec2DotProduct(&pLine->normal, pStart) - pLine->nDotP0;
    float de = VXVec2DotProduct(&pLine->normal, pEnd) - pLine->nDotP0;
    if ((ds < -radius && de < -radius) || (ds > radius && de > radius)) return -1.0f;
    VXVec2 v;
    VXVec2Sub(&v, pEnd, pStart);
    float nv = VXVec2DotProduct(&pLine->normal, &v);
    if (std::fabs(nv) < kEpsilon) return -1.0f;
    float offset = ds >= 0.0f ? radius : -radius;
    float t = (VXVec2DotProduct(&pLine->normal, &pLine->p0) -
               VXVec2DotProduct(&pLine->normal, pStart) + offset) /
              nv;
    VXVec2 pi;
    VXVec2ScaleAdd(&pi, &v, pStart, t);
    if (!WithinSegment(pLine, &pi)) return -1.0f;
    Store(pInter, pi);
    return t;
}

// A contact exactly at the start (t = 0) leaves the reflection alone: the
// body has not moved towards the line, so there is nothing to mirror.
float VXReflectAnimatedPointOnStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                                const VXLineSegment* pLine, VXVec2* pInter,
                                                VXVec2* pReflect) {
    VXVec2 pi = Seed(pInter);
    float t = VXAnimatedPointToStaticLineSegment(pStart, pEnd, pLine, &pi);
    Store(pInter, pi);
    if (t > 0.0f) ReflectOnLine(pEnd, pLine, &pi, pReflect);
    return t;
}

// As the point form, for a circle's centre.
float VXReflectAnimatedCircleOnStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                                 float radius, const VXLineSegment* pLine,
                                                 VXVec2* pInter, VXVec2* pReflect) {
    VXVec2 pi = Seed(pInter);
    float t = VXAnimatedCircleToStaticLineSegment(pStart, pEnd, radius, pLine, &pi);
    Store(pInter, pi);
    if (t > 0.0f) ReflectOnLine(pEnd, pLine, &pi, pReflect);
    return t;
}

// Entry time of the ray ps -> pe into the circle, in units of the motion.
float VXAnimatedPointToStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, const VXVec2* pCtr,
                                    float radius, VXVec2* pInter) {
    VXVec2 v, dir, toCtr;
    VXVec2Sub(&v, pEnd, pStart);
    float len = VXVec2Length(&v);
    VXVec2Scale(&dir, &v, 1.0f / len);
    VXVec2Sub(&toCtr, pCtr, pStart);
    float m = VXVec2DotProduct(&dir, &toCtr);
    float s2 = VXVec2SquareDistance(pStart, pCtr);
    float r2 = radius * radius;
    // A body that starts clear of the circle and moves away from its centre
    // has already passed it: without this the circle behind it would be
    // reported at a negative time, and a body that has just bounced off would
    // keep hitting the circle it left. A start inside the circle is not
    // rejected here; it reports the (negative) time it entered.
    if (m < 0.0f && s2 > r2) return -1.0f;
    float n2 = s2 - m * m;
    if (n2 > r2) return -1.0f;
    float ti = (m - std::sqrt(r2 - n2)) / len;
    VXVec2 pi;
    VXVec2ScaleAdd(&pi, &v, pStart, ti);
    // The contact is written before the last check, as it always has been.
    Store(pInter, pi);
    VXVec2 back, endToPi;
    VXVec2Sub(&back, pStart, pEnd);
    VXVec2Sub(&endToPi, &pi, pEnd);
    if (VXVec2DotProduct(&back, &endToPi) < 0.0f) return -1.0f;
    return ti;
}

// The moving circle's centre against the static circle grown by its radius.
float VXAnimatedCircleToStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, float radius0,
                                     const VXVec2* pCtr, float radius1, VXVec2* pInter) {
    return VXAnimatedPointToStaticCircle(pStart, pEnd, pCtr, radius0 + radius1, pInter);
}

// The reflection has the length of the motion already made (ps to contact).
float VXReflectAnimatedPointOnStaticCircle(const VXVec2* pStart, const VXVec2* pEnd,
                                           const VXVec2* pCtr, float radius, VXVec2* pInter,
                                           VXVec2* pReflect) {
    VXVec2 pi = Seed(pInter);
    float t = VXAnimatedPointToStaticCircle(pStart, pEnd, pCtr, radius, &pi);
    Store(pInter, pi);
    if (t > 0.0f) ReflectOnCircle(pStart, pCtr, &pi, pReflect);
    return t;
}

// As the point form against the grown circle.
float VXReflectAnimatedCircleOnStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, float radius0,
                                            const VXVec2* pCtr, float radius1, VXVec2* pInter,
                                            VXVec2* pReflect) {
    return VXReflectAnimatedPointOnStaticCircle(pStart, pEnd, pCtr, radius0 + radius1, pInter,
                                                pReflect);
}
