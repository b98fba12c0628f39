// VXCollision: 2-D distance, overlap and swept-collision tests over points,
// circles, axis-aligned rectangles and line segments.
//
// Rectangles are given by centre, full width and full height. Swept tests
// take one frame's motion from ps to pe and return the time of contact along
// it (0 at ps, 1 at pe for segments) or -1 for no hit, writing the contact
// point through an out-pointer. Depends on: VXVec2.
// Limits: single precision; tolerances 1e-5 for parallel motion and
// degenerate segments; convex polygons are not supported (always -1).
#pragma once

#include "VXVec2.h"

// A segment with its caller-filled unit normal and normal . p0; the side the
// normal points to is the front.
struct VXLineSegment {
    VXVec2 p0;
    VXVec2 p1;
    VXVec2 normal;
    float nDotP0;
};

extern "C" {

// |p - centre| - radius.
float VXCalcDistPointToCircle(const VXVec2* pPos, const VXVec2* pCtr, float radius);
// Negative depth to the nearest edge inside, Euclidean distance outside.
float VXCalcDistPointToRect(const VXVec2* pPos, const VXVec2* pRect, float sizeX, float sizeY);
// Distance from p to the segment a-b.
float VXCalcDistPointToLineSeg(const VXVec2* pPos, const VXVec2* pLine0, const VXVec2* pLine1);
// Not supported: always -1.
float VXCalcDistPointToConvexPoly(const VXVec2* pPos, const VXVec2* pVtx, unsigned vtxNum);
// |c0 - c1| - r0 - r1.
float VXCalcDistCircleToCircle(const VXVec2* pCtr0, float radius0, const VXVec2* pCtr1,
                               float radius1);
// Point-to-rectangle distance of the centre minus the radius.
float VXCalcDistCircleToRect(const VXVec2* pCtr0, float radius0, const VXVec2* pRect0, float sizeX0,
                             float sizeY0);
// Negative penetration depth along the axis of least penetration, 0 when
// apart or touching; the normal (may be null) points from rect 1 to rect 0.
float VXCalcDistRectToRect(const VXVec2* pRect0, float sizeX0, float sizeY0, const VXVec2* pRect1,
                           float sizeX1, float sizeY1, VXVec2* pNormal);

// 1 when p lies in or on the circle.
int VXTestPointToCircle(const VXVec2* pPos, const VXVec2* pCtr, float radius);
// 1 when p lies in or on the rectangle.
int VXTestPointToRect(const VXVec2* pPos, const VXVec2* pRect, float sizeX, float sizeY);
// 1 when the circles overlap or touch.
int VXTestCircleToCircle(const VXVec2* pCtr0, float radius0, const VXVec2* pCtr1, float radius1);
// 1 when the circle reaches strictly past the rectangle's boundary distance.
int VXTestCircleToRect(const VXVec2* pCtr0, float radius0, const VXVec2* pRect0, float sizeX0,
                       float sizeY0);
// 1 when the rectangles overlap or touch.
int VXTestRectToRect(const VXVec2* pRect0, float sizeX0, float sizeY0, const VXVec2* pRect1,
                     float sizeX1, float sizeY1);

// Signed distance from p to the segment's line, positive in front.
float VXStaticPointToStaticLineSegment(const VXVec2* pPos, const VXLineSegment* pLine);
// Time the point moving ps -> pe crosses the segment, or -1.
float VXAnimatedPointToStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                         const VXLineSegment* pLine, VXVec2* pInter);
// Time the circle moving ps -> pe touches the segment's line within the
// segment's extent, or -1; the contact is the circle's centre then.
float VXAnimatedCircleToStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd, float radius,
                                          const VXLineSegment* pLine, VXVec2* pInter);
// As the point test; on a hit at t > 0 also writes the remaining motion
// mirrored about the line.
float VXReflectAnimatedPointOnStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                                const VXLineSegment* pLine, VXVec2* pInter,
                                                VXVec2* pReflect);
// As the circle test; on a hit at t > 0 also writes the reflection.
float VXReflectAnimatedCircleOnStaticLineSegment(const VXVec2* pStart, const VXVec2* pEnd,
                                                 float radius, const VXLineSegment* pLine,
                                                 VXVec2* pInter, VXVec2* pReflect);
// Time the point moving ps -> pe enters the circle, or -1.
float VXAnimatedPointToStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, const VXVec2* pCtr,
                                    float radius, VXVec2* pInter);
// The point test against the circle grown by the moving circle's radius.
float VXAnimatedCircleToStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, float radius0,
                                     const VXVec2* pCtr, float radius1, VXVec2* pInter);
// As the point test; on a hit at t > 0 also writes the reversed incoming
// motion mirrored about the contact normal.
float VXReflectAnimatedPointOnStaticCircle(const VXVec2* pStart, const VXVec2* pEnd,
                                           const VXVec2* pCtr, float radius, VXVec2* pInter,
                                           VXVec2* pReflect);
// As the circle test; on a hit at t > 0 also writes the reflection.
float VXReflectAnimatedCircleOnStaticCircle(const VXVec2* pStart, const VXVec2* pEnd, float radius0,
                                            const VXVec2* pCtr, float radius1, VXVec2* pInter,
                                            VXVec2* pReflect);

} // extern "C"
