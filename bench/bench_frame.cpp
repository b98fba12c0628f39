// Frame benchmark: the game's worst frame drawn through the engine, then the
// same meshes drawn by a minimal raw OpenGL loop of ours, in one process.
// Prints per-frame CPU time (frame start to present, no cap wait), median and
// p99, the engine/raw ratio (goal <= 1.15) and the time from process start to
// the game's first presented frame (goal < 0.3 s under Xvfb).
//
// Scene: a full-screen textured background, 100 hexagon tiles, 40 textured
// sprites and 1,500 small additive discs, each its own draw call.
#include <GL/glew.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <vector>

#include "BenchFigures.h"
#include "GameMain.h"
#include "VXGraphics.h"
#include "VXGraphicsInternal.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

using Clock = std::chrono::steady_clock;

const int kTiles = 100, kSprites = 40, kDiscs = 1500, kWarmUp = 30, kFrames = 500;

struct Scene {
    VXGfxMesh *background, *hexagon, *sprite, *disc;
    VXGfxTexture *backgroundTexture, *spriteTexture;
    float tiles[kTiles][2], sprites[kSprites][2], discs[kDiscs][2];
};

VXGfxTexture* MakeTexture(int w, int h, bool alpha) {
    std::vector<unsigned char> px((size_t)w * h * 4);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            unsigned char* p = &px[((size_t)y * w + x) * 4];
            p[0] = (unsigned char)(x * 255 / w), p[1] = (unsigned char)(y * 255 / h), p[2] = 90;
            float dx = x - w / 2.0f, dy = y - h / 2.0f;
            p[3] = alpha && dx * dx + dy * dy > w * w / 4.0f ? 0 : 255;
        }
    return VXGfxTextureLoadFromMemory(px.data(), w, h);
}

VXGfxMesh* Quad() {
    VXGfxTriAdd(-1, -1, 0xFFFFFFFF, 0, 1, 1, -1, 0xFFFFFFFF, 1, 1, -1, 1, 0xFFFFFFFF, 0, 0);
    VXGfxTriAdd(1, -1, 0xFFFFFFFF, 1, 1, 1, 1, 0xFFFFFFFF, 1, 0, -1, 1, 0xFFFFFFFF, 0, 0);
    return VXGfxMeshEnd();
}

// A fan of n triangles around the centre: n = 6 is a hexagon, more a disc.
VXGfxMesh* Fan(int n, unsigned color) {
    for (int i = 0; i < n; ++i) {
        float a0 = 6.2831853f * i / n, a1 = 6.2831853f * (i + 1) / n;
        VXGfxTriAdd(0, 0, color, 0.5f, 0.5f, std::cos(a0), std::sin(a0), color, 0, 0, std::cos(a1),
                    std::sin(a1), color, 0, 0);
    }
    return VXGfxMeshEnd();
}

Scene BuildScene() {
    Scene s;
    s.background = Quad();
    s.sprite = Quad();
    s.hexagon = Fan(6, 0xFF4C8C3C);
    s.disc = Fan(10, 0xFFFFC040);
    s.backgroundTexture = MakeTexture(1024, 768, false);
    s.spriteTexture = MakeTexture(64, 64, true);
    for (int i = 0; i < kTiles; ++i)
        s.tiles[i][0] = -270.0f + 60 * (i % 10), s.tiles[i][1] = -250.0f + 52 * (i / 10);
    for (int i = 0; i < kSprites; ++i)
        s.sprites[i][0] = -350.0f + 17 * i, s.sprites[i][1] = (float)(i % 7) * 60 - 180;
    for (int i = 0; i < kDiscs; ++i)
        s.discs[i][0] = -390.0f + (i * 37) % 780, s.discs[i][1] = -290.0f + (i * 53) % 580;
    return s;
}

void FreeScene(Scene& s) {
    for (VXGfxMesh* m : {s.background, s.hexagon, s.sprite, s.disc}) VXGfxMeshFree(m);
    VXGfxTextureUnload(s.backgroundTexture);
    VXGfxTextureUnload(s.spriteTexture);
}

// One object as the game draws it: mode, blend, picture, placement, tint, mesh.
void EngineDraw(VXGfxMesh* mesh, VXGfxTexture* texture, int blend, float x, float y, float scale) {
    float m[3][3] = {{scale, 0, x}, {0, scale, y}, {0, 0, 1}};
    if (texture) {
        VXGfxSetRenderMode(VX_GFX_RENDER_TEXTURE);
        VXGfxSetBlendMode(blend);
        VXGfxTextureSet(texture, 0, 0);
        VXGfxSetTransparency(1.0f);
    } else {
        VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
        VXGfxSetBlendMode(blend);
    }
    VXGfxSetTransform(m);
    VXGfxSetTintColor(1, 1, 1, 1);
    VXGfxMeshDraw(mesh, VX_GFX_DRAW_TRIANGLES);
}

void EngineFrame(Scene& s) {
    VXSysFrameStart();
    EngineDraw(s.background, s.backgroundTexture, VX_GFX_BLEND_NONE, 0, 0, 400);
    for (auto& t : s.tiles) EngineDraw(s.hexagon, nullptr, VX_GFX_BLEND_ALPHA, t[0], t[1], 28);
    for (auto& p : s.sprites)
        EngineDraw(s.sprite, s.spriteTexture, VX_GFX_BLEND_ALPHA, p[0], p[1], 24);
    for (auto& d : s.discs) EngineDraw(s.disc, nullptr, VX_GFX_BLEND_ADDITIVE, d[0], d[1], 3);
    VXSysFrameEnd(); // on the virtual clock the cap does not wait
}

// The raw loop: the engine's own two shader programs (so both loops pay for
// the same pixels), driven straight through OpenGL with every location looked
// up once and no state set twice.
struct RawProgram {
    GLuint id;
    GLint world, tint, transparency, position, extra;
};

RawProgram MakeRaw(bool textured) {
    RawProgram r;
    r.id = gVXGfxPrograms[textured ? VX_GFX_RENDER_TEXTURE : VX_GFX_RENDER_COLOR];
    r.world = glGetUniformLocation(r.id, "uWorldMatrix");
    r.tint = glGetUniformLocation(r.id, "uTintColor");
    r.transparency = glGetUniformLocation(r.id, "uTransparencyValue");
    r.position = glGetAttribLocation(r.id, "aPosition");
    r.extra = glGetAttribLocation(r.id, textured ? "aTextureCoordinate" : "aColor");
    glUseProgram(r.id);
    const float p[16] = {2.0f / 800, 0,           0, 0, 0, 2.0f / 600,     0, 0, 0,
                         0,          -2.0f / 999, 0, 0, 0, -1001.0f / 999, 1};
    const float v[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, -60, 1};
    glUniformMatrix4fv(glGetUniformLocation(r.id, "uPMatrix"), 1, GL_FALSE, p);
    glUniformMatrix4fv(glGetUniformLocation(r.id, "uVMatrix"), 1, GL_FALSE, v);
    glUniform4f(glGetUniformLocation(r.id, "uBlendColor"), 0, 0, 0, 0);
    glUniform1f(r.transparency, 1.0f);
    if (textured) {
        glUniform1i(glGetUniformLocation(r.id, "uTexture"), 0);
        glUniform2f(glGetUniformLocation(r.id, "uTextureOffset"), 0, 0);
    }
    glUseProgram(0);
    return r;
}

void RawDraw(const RawProgram& r, VXGfxMesh* mesh, bool textured, float x, float y, float scale) {
    const float w[16] = {scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, 1, 0, x, y, 0, 1};
    glUniformMatrix4fv(r.world, 1, GL_FALSE, w);
    glUniform4f(r.tint, 1, 1, 1, 1);
    glBindBuffer(GL_ARRAY_BUFFER, mesh->pBuffers[0]);
    glVertexAttribPointer(r.position, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray(r.position);
    glBindBuffer(GL_ARRAY_BUFFER, mesh->pBuffers[textured ? 2 : 1]);
    glVertexAttribPointer(r.extra, textured ? 2 : 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray(r.extra);
    glDrawArrays(GL_TRIANGLES, 0, (GLsizei)mesh->vertexCount);
}

void RawFrame(Scene& s, const RawProgram& color, const RawProgram& texture) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(0, 0, 800, 600);
    glUseProgram(texture.id);
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, *s.backgroundTexture->pTextureName);
    RawDraw(texture, s.background, true, 0, 0, 400);
    glUseProgram(color.id);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (auto& t : s.tiles) RawDraw(color, s.hexagon, false, t[0], t[1], 28);
    glUseProgram(texture.id);
    glBindTexture(GL_TEXTURE_2D, *s.spriteTexture->pTextureName);
    for (auto& p : s.sprites) RawDraw(texture, s.sprite, true, p[0], p[1], 24);
    glUseProgram(color.id);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    for (auto& d : s.discs) RawDraw(color, s.disc, false, d[0], d[1], 3);
    glUseProgram(0);
    glFinish();
    VXSysFrameEnd(); // the same present
}

// Times the two loops frame about, so that whatever else the machine is
// doing weighs on both alike.
template <typename A, typename B> std::pair<Figures, Figures> MeasureBoth(A a, B b) {
    for (int i = 0; i < kWarmUp; ++i) a(), b();
    std::vector<double> ma, mb;
    auto time = [](auto& frame, std::vector<double>& out) {
        Clock::time_point t0 = Clock::now();
        frame();
        out.push_back(std::chrono::duration<double, std::milli>(Clock::now() - t0).count());
    };
    for (int i = 0; i < kFrames; ++i) {
        time(a, ma);
        time(b, mb);
    }
    return {Summarise(ma), Summarise(mb)};
}

double gFirstFrame = -1;
void OnFirstFrame(unsigned long frame, void*) {
    if (frame == 0) {
        gFirstFrame = SecondsSinceProcessStart();
        VXSeamInjectClose();
    }
}

} // namespace

int main() {
    // The real game's start-up up to its first presented frame.
    VXSeamUseVirtualClock(true);
    VXSeamSetFrameHook(OnFirstFrame, nullptr);
    GameStartup();
    GameStateLoop();
    GameShutdown();
    VXSeamSetFrameHook(nullptr, nullptr);

    VXSysInit(nullptr, 0, 800, 600, 0, 60, nullptr);
    Scene scene = BuildScene();
    RawProgram color = MakeRaw(false), texture = MakeRaw(true);
    auto [engine, raw] =
        MeasureBoth([&] { EngineFrame(scene); }, [&] { RawFrame(scene, color, texture); });
    FreeScene(scene);
    VXSysExit();

    double ratio = engine.median / raw.median;
    std::printf(
        "frame benchmark: %d draw calls per frame (1 background, %d tiles, %d sprites, %d discs)\n",
        1 + kTiles + kSprites + kDiscs, kTiles, kSprites, kDiscs);
    std::printf("  engine: median %.3f ms, p99 %.3f ms\n", engine.median, engine.p99);
    std::printf("  raw GL: median %.3f ms, p99 %.3f ms\n", raw.median, raw.p99);
    std::printf("  engine/raw: %.3f (goal <= 1.15: %s)\n", ratio,
                ratio <= 1.15 ? "met" : "NOT met");
    std::printf("  process start to first frame: %.3f s (goal < 0.3 s: %s)\n", gFirstFrame,
                gFirstFrame >= 0 && gFirstFrame < 0.3 ? "met" : "NOT met");
    return 0;
}
