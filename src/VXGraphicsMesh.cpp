// VXGraphicsMesh: meshes. Vertices are staged in one global list and turned
// into three static vertex buffers (positions, colours, texture coordinates)
// so each program binds only the two streams it reads.
//
// Depends on: VXGraphics core (current program, error check).
// Limits: 24576 staged vertices (8192 triangles); further adds are dropped.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "VXGraphics.h"
#include "VXGraphicsInternal.h"

namespace {

VXGfxVertex sStaging[VX_GFX_MAX_VERTICES];
unsigned sStagedCount = 0;
int sLiveMeshes = 0;

void Stage(float x, float y, unsigned c, float u, float v) {
    // The list is sized for the largest mesh the game builds; past it a
    // vertex is dropped rather than written out of bounds.
    if (sStagedCount >= VX_GFX_MAX_VERTICES) return;
    sStaging[sStagedCount++] = VXGfxVertex{x, y, 0.0f, c, u, v};
}

// Uploads one attribute stream as a static buffer. No wait for the pipeline
// afterwards: glBufferData has copied the array before it returns, and every
// later draw from the buffer is ordered after the upload by OpenGL itself.
// (Towers build a projectile's two meshes in the middle of a frame, where a
// wait would stall the whole frame's drawing.)
void Upload(GLuint buffer, const std::vector<float>& data) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, (GLsizeiptr)(data.size() * sizeof(float)),
                 data.empty() ? nullptr : data.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

// Points an attribute of the current program at one of the mesh's buffers
// and switches its array on; -1 when the program has no such attribute.
GLint EnableAttribute(const char* name, GLuint buffer, int components) {
    GLint location = VXGfxAttribute(name);
    if (location < 0) return -1;
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glVertexAttribPointer((GLuint)location, components, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray((GLuint)location);
    return location;
}

} // namespace

void VXGfxReset(void) {
    sStagedCount = 0;
}

void VXGfxMeshStart(void) {
}

void VXGfxTriAdd(float x0, float y0, unsigned c0, float u0, float v0, float x1, float y1,
                 unsigned c1, float u1, float v1, float x2, float y2, unsigned c2, float u2,
                 float v2) {
    Stage(x0, y0, c0, u0, v0);
    Stage(x1, y1, c1, u1, v1);
    Stage(x2, y2, c2, u2, v2);
}

void VXGfxVertexAdd(float x, float y, unsigned c, float u, float v) {
    Stage(x, y, c, u, v);
}

unsigned VXGfxStagedVertexCount(void) {
    return sStagedCount;
}

VXGfxMesh* VXGfxMeshEnd(void) {
    VXGfxMesh* mesh = (VXGfxMesh*)std::calloc(1, sizeof(VXGfxMesh));
    unsigned* names = (unsigned*)std::calloc(3, sizeof(unsigned));
    if (!mesh || !names) {
        std::free(mesh);
        std::free(names);
        sStagedCount = 0;
        return nullptr;
    }
    mesh->pBuffers = names;
    mesh->vertexCount = sStagedCount;
    glGenBuffers(3, mesh->pBuffers);

    std::vector<float> positions, colors, coords;
    positions.reserve(sStagedCount * 3);
    colors.reserve(sStagedCount * 4);
    coords.reserve(sStagedCount * 2);
    for (unsigned i = 0; i < sStagedCount; ++i) {
        const VXGfxVertex& v = sStaging[i];
        positions.insert(positions.end(), {v.x, v.y, v.z});
        colors.insert(colors.end(),
                      {(float)((v.color >> 16) & 0xFF) / 255.0f,
                       (float)((v.color >> 8) & 0xFF) / 255.0f, (float)(v.color & 0xFF) / 255.0f,
                       (float)((v.color >> 24) & 0xFF) / 255.0f});
        coords.insert(coords.end(), {v.u, v.v});
    }
    Upload(mesh->pBuffers[0], positions);
    Upload(mesh->pBuffers[1], colors);
    Upload(mesh->pBuffers[2], coords);
    VX_GFX_CHECK("VXGfxMeshEnd");
    sStagedCount = 0;
    ++sLiveMeshes;
    return mesh;
}

// Leaves what it found: both arrays off and no buffer bound. Code outside
// the engine (and the engine's own line drawing) switches arrays on and off
// too, so a draw never relies on what an earlier draw left switched on.
void VXGfxMeshDraw(VXGfxMesh* mesh, unsigned mode) {
    static const GLenum kPrimitives[] = {GL_POINTS, GL_LINES, GL_LINE_STRIP, GL_TRIANGLES};
    if (mode > VX_GFX_DRAW_TRIANGLES) {
        std::printf("Mesh Draw Mode %u is invalid!\n", mode);
        return;
    }
    if (!mesh || gVXGfxCurrentProgram == VX_GFX_RENDER_NONE) return;
    GLint position = EnableAttribute("aPosition", mesh->pBuffers[0], 3);
    GLint extra = gVXGfxCurrentProgram == VX_GFX_RENDER_COLOR
                      ? EnableAttribute("aColor", mesh->pBuffers[1], 4)
                      : EnableAttribute("aTextureCoordinate", mesh->pBuffers[2], 2);
    glDrawArrays(kPrimitives[mode], 0, (GLsizei)mesh->vertexCount);
    VXSeamNoteDraw();
    if (extra >= 0) glDisableVertexAttribArray((GLuint)extra);
    if (position >= 0) glDisableVertexAttribArray((GLuint)position);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void VXGfxMeshFree(VXGfxMesh* mesh) {
    if (!mesh) return;
    glDeleteBuffers(3, mesh->pBuffers);
    std::free(mesh->pBuffers);
    std::free(mesh);
    --sLiveMeshes;
}

int VXGfxMeshLiveCount(void) {
    return sLiveMeshes;
}

void VXGfxTriListInitialize(VXGfxVertexList* list) {
    if (list) *list = VXGfxVertexList{nullptr, 0, 0};
}
