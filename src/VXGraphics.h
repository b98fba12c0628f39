// VXGraphics: the OpenGL 2.0 renderer. Two shader programs (vertex colour and
// texture), a fixed 2-D orthographic camera, meshes held in static vertex
// buffers, PNG textures, bitmap-font text and a few debug primitives.
//
// World units are logical pixels of the window; the camera position is the
// screen centre; x grows right, y up. In full screen the logical picture is
// stretched over the whole screen.
//
// Depends on: GLEW, OpenGL, VXPlatform (context, swap), VXImage (PNG decode),
// VXSystem (scale factors). Limits: one context; 24576 staged vertices.
#pragma once

#include <cstdint>

enum { VX_GFX_RENDER_NONE = 0, VX_GFX_RENDER_COLOR = 1, VX_GFX_RENDER_TEXTURE = 2 };
enum { VX_GFX_BLEND_NONE = 0, VX_GFX_BLEND_ALPHA = 1, VX_GFX_BLEND_ADDITIVE = 2 };
enum {
    VX_GFX_DRAW_POINTS = 0,
    VX_GFX_DRAW_LINES = 1,
    VX_GFX_DRAW_LINE_STRIP = 2,
    VX_GFX_DRAW_TRIANGLES = 3,
};
enum { VX_GFX_TEXTURE_NEAREST = 0, VX_GFX_TEXTURE_LINEAR = 1 };

#define VX_GFX_MAX_VERTICES 24576

struct VXGfxVertex {
    float x, y, z;
    uint32_t color; // 0xAARRGGBB
    float u, v;
};

// A list of staged vertices; the engine keeps one global staging list.
struct VXGfxVertexList {
    VXGfxVertex* pVertices;
    uint32_t count;
    uint32_t capacity;
};

struct VXGfxMesh {
    unsigned* pBuffers; // three buffer names: positions, colours, texture coordinates
    unsigned vertexCount;
};

struct VXGfxTexture {
    unsigned* pTextureName; // one OpenGL texture name
    char fileName[256];
};

extern "C" {

extern float gVXWinMinX, gVXWinMaxX, gVXWinMinY, gVXWinMaxY;

// Start and end.
int VXGfxInit(int width, int height);
void VXGfxExit(void);
void VXGfxReset(void);
void VXGfxStart(void);
void VXGfxEnd(void);
int VXGetWindowWidth(void);
int VXGetWindowHeight(void);
void VXGfxSetBackgroundColor(float r, float g, float b);
float VXGfxGetWinMinX(void);
float VXGfxGetWinMaxX(void);
float VXGfxGetWinMinY(void);
float VXGfxGetWinMaxY(void);
void VXGfxSetCamPosition(float x, float y);
void VXGfxGetCamPosition(float* x, float* y);

// Drawing state.
void VXGfxSetRenderMode(int mode);
int VXGfxGetRenderMode(void);
void VXGfxSetBlendMode(int mode);
void VXGfxSetTintColor(float r, float g, float b, float a);
void VXGfxSetTransparency(float alpha);
void VXGfxSetBlendColor(float r, float g, float b, float a);
void VXGfxSetTransform(float m[3][3]);
void VXGfxSetPosition(float x, float y);
void VXGfxSetTransform3D(float m[4][4]);

// Meshes.
void VXGfxMeshStart(void);
void VXGfxTriAdd(float x0, float y0, unsigned c0, float u0, float v0, float x1, float y1,
                 unsigned c1, float u1, float v1, float x2, float y2, unsigned c2, float u2,
                 float v2);
void VXGfxVertexAdd(float x, float y, unsigned c, float u, float v);
VXGfxMesh* VXGfxMeshEnd(void);
void VXGfxMeshDraw(VXGfxMesh* mesh, unsigned mode);
void VXGfxMeshFree(VXGfxMesh* mesh);
// How many vertices are staged (for tests and tools).
unsigned VXGfxStagedVertexCount(void);

// Textures.
VXGfxTexture* VXGfxTextureLoad(const char* path);
VXGfxTexture* VXGfxTextureLoadFromMemory(const unsigned char* pixels, int width, int height);
void VXGfxTextureSet(VXGfxTexture* texture, float offsetU, float offsetV);
void VXGfxSetTextureMode(int mode);
void VXGfxTextureUnload(VXGfxTexture* texture);
void VXGfxSaveTextureToFile(VXGfxTexture* texture, const char* path);
void VXGfxTextureInitialize(VXGfxTexture* texture);

// How many meshes and textures exist right now (made and not yet freed).
// Owners free what they made, so over a long session these come back to the
// same numbers each time the player is back on the same screen; a soak test
// reads them to catch an owner that forgets. Nothing in the game reads them.
int VXGfxMeshLiveCount(void);
int VXGfxTextureLiveCount(void);
void VXGfxTriListInitialize(VXGfxVertexList* list);

// Text and debug primitives.
unsigned VXGfxCreateFont(const char* face, int height, bool bold, bool italic);
void VXGfxDestroyFont(unsigned font);
void VXGfxPrint(unsigned font, const char* text, int x, int y, float r, float g, float b);
void VXGfxLine(float x0, float y0, float z0, float r0, float g0, float b0, float a0, float x1,
               float y1, float z1, float r1, float g1, float b1, float a1);
void VXGfxAxis(float scale);
unsigned VXGfxColInterp(unsigned c0, unsigned c1, float t);
void VXGfxPoint(float x, float y, float z, unsigned c);
void VXGfxTri(float x0, float y0, float z0, unsigned c0, float x1, float y1, float z1, unsigned c1,
              float x2, float y2, float z2, unsigned c2);
void VXGfxQuad(float x0, float y0, float z0, unsigned c0, float x1, float y1, float z1, unsigned c1,
               float x2, float y2, float z2, unsigned c2, float x3, float y3, float z3,
               unsigned c3);
void VXGfxBox(float x, float y, float z, float sx, float sy, float sz, unsigned c);
void VXGfxSphere(float x, float y, float z, float radius, unsigned c0, unsigned c1,
                 unsigned slices);
void VXGfxCone(void);

} // extern "C"
