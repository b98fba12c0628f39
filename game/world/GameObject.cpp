// GameObject: base record, default quad, draw routine with the per-screen
// sprite-sheet clock, and the box overlap test shared by every interaction.
//
// Depends on: VXGraphics, VXFrameRateController, GameMain (gFrameTime for the
// swept part of the overlap test). Limits: the draw routine sets the tint and
// transparency every call; nothing is cached between calls.
#include "GameObject.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "GameMain.h"
#include "VXFrameRateController.h"
#include "VXInput.h"

ObjectList gCreditsObjects;
ObjectList gHowToPlayObjects;
ObjectList gMainMenuObjects;
ObjectList gNextScreenObjects;
ObjectList gOverlayObjects;
ObjectList gLevelObjects;

// Every object starts with a white tint and an identity transform.
GameObject::GameObject() {
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c) transform.m[r][c] = (r == c) ? 1.0f : 0.0f;
}

// The mesh is the only thing every object owns; textures belong to the subclass.
GameObject::~GameObject() {
    if (pMesh) {
        VXGfxMeshFree(pMesh);
        pMesh = nullptr;
    }
}

// A scale of s gives a sprite 2s wide showing the whole picture.
void GameObject::SetMesh() {
    BuildFrameQuad(1.0f, 1.0f, "GameObject::SetMesh", "GameObject", 64);
}

// Bottom-left, bottom-right, top-left; then bottom-right, top-right, top-left.
void GameObject::BuildFrameQuad(float uSpan, float vSpan, const char* func, const char* file,
                                int line) {
    VXGfxTriAdd(-1.0f, -1.0f, 0xFFFFFFFF, 0.0f, vSpan, 1.0f, -1.0f, 0xFFFFFFFF, uSpan, vSpan, -1.0f,
                1.0f, 0xFFFFFFFF, 0.0f, 0.0f);
    VXGfxTriAdd(1.0f, -1.0f, 0xFFFFFFFF, uSpan, vSpan, 1.0f, 1.0f, 0xFFFFFFFF, uSpan, 0.0f, -1.0f,
                1.0f, 0xFFFFFFFF, 0.0f, 0.0f);
    pMesh = VXGfxMeshEnd();
    if (!pMesh) GameObjectMeshFailed(func, file, line);
}

VXGfxMesh* BuildDiscMesh(float pi) {
    for (int i = 0; i < 12; ++i) {
        const float a0 = (float)i * 2.0f * pi / 12.0f;
        const float a1 = (float)(i + 1) * 2.0f * pi / 12.0f;
        VXGfxTriAdd(0.0f, 0.0f, 0xFFFFFFFF, 0.0f, 0.0f, (float)(0.5 * cos(a0)),
                    (float)(0.5 * sin(a0)), 0xFFFFFFFF, 0.0f, 0.0f, (float)(0.5 * cos(a1)),
                    (float)(0.5 * sin(a1)), 0xFFFFFFFF, 0.0f, 0.0f);
    }
    return VXGfxMeshEnd();
}

void DrawGlowDot(VXGfxMesh* disc, VXMtx33& transform, float r, float g, float b, float a) {
    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    VXGfxSetBlendMode(VX_GFX_BLEND_ADDITIVE);
    VXGfxTextureSet(nullptr, 0.0f, 0.0f);
    VXGfxSetTintColor(r, g, b, a);
    VXGfxSetTransform(transform.m);
    VXGfxMeshDraw(disc, VX_GFX_DRAW_TRIANGLES);
}

// Scale on the diagonal, position in the third column.
void GameObject::SetTransform(float x, float y, float s) {
    transform.m[0][0] = s;
    transform.m[0][1] = 0.0f;
    transform.m[0][2] = x;
    transform.m[1][0] = 0.0f;
    transform.m[1][1] = s;
    transform.m[1][2] = y;
    transform.m[2][0] = 0.0f;
    transform.m[2][1] = 0.0f;
    transform.m[2][2] = 1.0f;
}

// Non-uniform scale on the diagonal, position in the third column.
void GameObject::SetTransform(float x, float y, float sx, float sy) {
    SetTransform(x, y, 1.0f);
    transform.m[0][0] = sx;
    transform.m[1][1] = sy;
}

// Textured objects step the screen's clock on every 30th frame, once per
// call, so a screen with many sprites advances several steps in that frame.
void ObjectList::DrawObject(GameObject& obj, float framesU, float framesV) {
    if (!obj.pMesh) return;
    if (obj.pTexture) {
        if (VXFrameRateControllerGetFrameCount() % 30 == 0) {
            ++animFrame;
            if (animFrame == 10) animFrame = 0;
        }
        VXGfxSetRenderMode(VX_GFX_RENDER_TEXTURE);
        VXGfxSetBlendMode(VX_GFX_BLEND_ALPHA);
        VXGfxTexture* texture =
            (obj.isAttacking && obj.pTextureAlt) ? obj.pTextureAlt : obj.pTexture;
        VXGfxTextureSet(texture, (float)animFrame / framesU, (float)animFrame / framesV);
        VXGfxSetTransparency(1.0f);
    } else {
        // Untextured: the blending is left as the previous draw set it.
        VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    }
    VXGfxSetTransform(obj.transform.m);
    VXGfxSetTintColor(obj.tintColor[0], obj.tintColor[1], obj.tintColor[2], obj.tintColor[3]);
    VXGfxMeshDraw(obj.pMesh, VX_GFX_DRAW_TRIANGLES);
}

namespace {

// One axis of the sweep: when b, moving at v relative to a, enters and
// leaves a's extent within the frame; false when it moves away from a.
bool SweepAxis(float aMin, float aMax, float bMin, float bMax, float v, float& enter, float& exit) {
    if (v < 0.0f) {
        if (aMin > bMax) return false;
        if (bMin > aMax) enter = (aMax - bMin) / v;
        if (bMax > aMin) exit = (aMin - bMax) / v;
    } else if (v > 0.0f) {
        if (bMin > aMax) return false;
        if (aMin > bMax) enter = (aMin - bMax) / v;
        if (aMax > bMin) exit = (aMax - bMin) / v;
    }
    return true;
}

} // namespace

// Static test first; the swept part only matters for moving boxes, which
// the game never passes but the test keeps for callers that might.
bool RectsOverlap(const BoundingBox& a, const VXVec2& velA, const BoundingBox& b,
                  const VXVec2& velB) {
    if (!(b.minX > a.maxX || a.minX > b.maxX || b.minY > a.maxY || a.minY > b.maxY)) return true;

    const float dt = gFrameTime;
    const float vx = velB.x - velA.x;
    const float vy = velB.y - velA.y;
    float enterX = 0.0f, exitX = dt, enterY = 0.0f, exitY = dt;

    if (!SweepAxis(a.minX, a.maxX, b.minX, b.maxX, vx, enterX, exitX)) return false;
    if (!SweepAxis(a.minY, a.maxY, b.minY, b.maxY, vy, enterY, exitY)) return false;
    if (vy == 0.0f && (a.minY > b.maxY || b.minY > a.maxY)) return false;
    if (vx == 0.0f && (a.minX > b.maxX || b.minX > a.maxX)) return false;

    const float enter = enterX > enterY ? enterX : enterY;
    const float exit = exitX < exitY ? exitX : exitY;
    return !(enter > exit || enter > dt);
}

void MousePoint(float* x, float* y) {
    int cx = 0, cy = 0;
    VXInputGetCursorPosition(&cx, &cy);
    *x = (float)cx - 400.0f;
    *y = 300.0f - (float)cy;
}

// The assertion report of a mesh that could not be built; the game cannot
// draw without it, so it stops.
void GameObjectMeshFailed(const char* func, const char* file, int line, const char* expression) {
    GameFatalExit(
        1, "VX_ASSERT_MESG: %s\nLine: %d\nFunc: %s\nFile: %s\nMesg: fail to create object!!\n",
        expression, line, func, file);
}
