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

void Stage(float x, float y, unsigned c, float u, float v) {
    // The list is sized for the largest mesh the game builds; past it a
    // vertex is dropped rather than written out of bounds.
    if (sStagedCount >= VX_GFX_MAX_VERTICES) return;
    sStaging[sStagedCount++] = VXGfxVertex{x, y, 0.0f, c, u, v};
}

// Uploads one attribute stream as a static buffer.
void Upload(GLuint buffer, const std::vector<float>& data) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, (GLsizeiptr)(data.size() * sizeof(float)),
                 data.empty() ? nullptr : data.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glFinish();
}

// Which generic attribute arrays are switched on. A draw switches on the
// two it reads and leaves them on for the next draw, which almost always
// reads the same two: switching arrays off and on around every draw costs
// more in the driver than the draw itself. The frame's end switches all off.
const GLuint kMaxArrays = 16;
bool sArrayOn[kMaxArrays];

void UseArrays(GLint a, GLint b) {
    for (GLuint i = 0; i < kMaxArrays; ++i) {
        bool wanted = (GLint)i == a || (GLint)i == b;
        if (wanted == sArrayOn[i]) continue;
        if (wanted)
            glEnableVertexAttribArray(i);
        else
            glDisableVertexAttribArray(i);
        sArrayOn[i] = wanted;
    }
}

// Points an attribute of the current program at a buffer; -1 when the
// program has no such attribute.
GLint BindAttribute(const char* name, GLuint buffer, int components) {
    GLint location = VXGfxAttribute(name);
    if (location < 0 || location >= (GLint)kMaxArrays) return -1;
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glVertexAttribPointer((GLuint)location, components, GL_FLOAT, GL_FALSE, 0, nullptr);
    return location;
}

} // namespace

void VXGfxMeshArraysOff(void) {
    UseArrays(-1, -1);
}

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
    return mesh;
}

void VXGfxMeshDraw(VXGfxMesh* mesh, unsigned mode) {
    static const GLenum kPrimitives[] = {GL_POINTS, GL_LINES, GL_LINE_STRIP, GL_TRIANGLES};
    if (mode > VX_GFX_DRAW_TRIANGLES) {
        std::printf("Mesh Draw Mode %u is invalid!\n", mode);
        return;
    }
    if (!mesh || gVXGfxCurrentProgram == VX_GFX_RENDER_NONE) return;
    GLint position = BindAttribute("aPosition", mesh->pBuffers[0], 3);
    GLint extra = -1;
    if (gVXGfxCurrentProgram == VX_GFX_RENDER_COLOR)
        extra = BindAttribute("aColor", mesh->pBuffers[1], 4);
    else
        extra = BindAttribute("aTextureCoordinate", mesh->pBuffers[2], 2);
    UseArrays(position, extra);
    glDrawArrays(kPrimitives[mode], 0, (GLsizei)mesh->vertexCount);
    VXSeamNoteDraw();
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void VXGfxMeshFree(VXGfxMesh* mesh) {
    if (!mesh) return;
    glDeleteBuffers(3, mesh->pBuffers);
    std::free(mesh->pBuffers);
    std::free(mesh);
}

void VXGfxTriListInitialize(VXGfxVertexList* list) {
    if (list) *list = VXGfxVertexList{nullptr, 0, 0};
}
