// GameObject: the base record of everything drawn in the game (tiles,
// monsters, towers, projectiles, the crystal, health bars, pictures and
// buttons), the per-screen draw context with its sprite-sheet clock, the one
// draw routine and the one box overlap test.
//
// Depends on: VXGraphics (meshes, textures, render state), VXFrameRateController
// (frame count for the animation clock), VXMtx33/VXVec2 (transform, velocities).
// Limits: objects are heap-allocated one by one and owned by whoever created
// them; destruction always goes through the virtual destructor.
#pragma once

#include "VXGraphics.h"
#include "VXMtx33.h"
#include "VXVec2.h"

// World-space axis-aligned box.
struct BoundingBox {
    float minX = 0.0f;
    float minY = 0.0f;
    float maxX = 0.0f;
    float maxY = 0.0f;
};

class GameObject {
  public:
    GameObject();
    // Frees the mesh; subclasses release the textures they loaded first.
    virtual ~GameObject();
    // Builds the default white 2 x 2 quad from (-1, -1) to (1, 1).
    virtual void SetMesh();
    // Uniform scale s at position (x, y).
    void SetTransform(float x, float y, float s);
    // Scale (sx, sy) at position (x, y): the picture covers x +- sx, y +- sy.
    void SetTransform(float x, float y, float sx, float sy);

    BoundingBox boundingBox;
    float tintColor[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    bool isAttacking = false;
    VXGfxMesh* pMesh = nullptr;
    VXGfxTexture* pTexture = nullptr;
    VXGfxTexture* pTextureAlt = nullptr;
    VXMtx33 transform;

    GameObject(const GameObject&) = delete;
    GameObject& operator=(const GameObject&) = delete;

  protected:
    // The one quad of every sprite: two white triangles over (-1, -1)..(1, 1)
    // whose texture coordinates run from 0 to uSpan across and 0 (top) to
    // vSpan (bottom), so one frame of a sheet of 1/uSpan x 1/vSpan frames
    // shows. A mesh that cannot be built ends the program with the report
    // of GameObjectMeshFailed under the given names.
    void BuildFrameQuad(float uSpan, float vSpan, const char* func, const char* file, int line);
};

// A screen's draw context: everything a screen draws goes through its own
// instance, so each screen has its own animation clock.
struct ObjectList {
    int animFrame = 0;

    // Draws one object; framesU/framesV are the sprite-sheet frame counts
    // (1, 1 for static pictures).
    void DrawObject(GameObject& obj, float framesU, float framesV);
};

// The six draw contexts of the game.
extern ObjectList gCreditsObjects;
extern ObjectList gHowToPlayObjects;
extern ObjectList gMainMenuObjects;
extern ObjectList gNextScreenObjects;
extern ObjectList gOverlayObjects;
extern ObjectList gLevelObjects;

// The glowing dot of the projectiles' sparks and the crystal's shards: a
// white disc of radius 0.5 around the origin in twelve slices, slice i from
// the angle i x 2 pi / 12 to (i + 1) x 2 pi / 12, with the caller's value of
// pi (the shards use 3.1415925). Angles in single precision, their cosines
// and sines in double rounded to single, as all of the game's trigonometry.
VXGfxMesh* BuildDiscMesh(float pi);

// Draws one glowing dot (a spark or a shard): the disc mesh in its vertex
// colour times the tint (r, g, b, a), added onto what lies below (additive
// blending, no texture). The blending is left additive: the next textured
// sprite sets its own.
void DrawGlowDot(VXGfxMesh* disc, VXMtx33& transform, float r, float g, float b, float a);

// True when the two boxes overlap now or would meet within this frame at
// the given velocities; boxes that only touch overlap. The game always
// passes zero velocities.
bool RectsOverlap(const BoundingBox& a, const VXVec2& velA, const BoundingBox& b,
                  const VXVec2& velB);

// The mouse in world units, as every screen and the level see it: the
// cursor's logical window pixel (cx, cy), full-screen scale divided out and
// truncated by the engine, becomes (cx - 400, 300 - cy).
void MousePoint(float* x, float* y);

// Ends the program the way a failed mesh creation does: the assertion
// report for the failed expression ("pMesh" for every game object) with
// the given function, source line and file names, then "Mesg: fail to
// create object!!", exit status 1.
[[noreturn]] void GameObjectMeshFailed(const char* func, const char* file, int line,
                                       const char* expression = "pMesh");
